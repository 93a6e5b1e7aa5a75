// The two settings kept outside the library file: whether the main dialog is expanded,
// and where the library file lies. Reads fall back to a default and writes may fail
// unnoticed: a setting never stops anything.
#pragma once

#include <cstddef>

namespace tessellum {

// Under HKEY_CURRENT_USER for the user's settings, HKEY_LOCAL_MACHINE for "path".
constexpr char kSettingsKeyPath[] = "Software\\Quarry\\Tessellum\\1.x";
constexpr char kDefaultPluginPath[] = "C:\\PHOTOSHP\\PLUGINS\\";
constexpr size_t kPluginPathSize = 260;

// The stored "Sizing" flag, or true.
bool ReadSizing();
void WriteSizing(bool sizing);

// The directory of the library file, ending in a backslash, into a buffer of at least
// kPluginPathSize bytes; the default when the machine-wide value cannot be read.
void ReadPluginPath(char* buffer);

}  // namespace tessellum
