// The 16 custom colours of the system colour dialog, kept as "Custom Color 0" to
// "Custom Color 15" in the user's settings key, each a COLORREF of 4 bytes.
#pragma once

#include <windows.h>

#include "storage/registry_key.h"

namespace tessellum {

constexpr int kCustomColorCount = 16;

// A colour that is missing or unreadable repeats the one before it; before the first
// readable one, black.
void LoadCustomColors(RegistryKey& key, COLORREF (&colors)[kCustomColorCount]);

// Writes all 16, each failure ignored.
void SaveCustomColors(RegistryKey& key, const COLORREF (&colors)[kCustomColorCount]);

}  // namespace tessellum
