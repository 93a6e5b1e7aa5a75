// Saves what a window shows on the screen as a PNG, for a person to look at.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace tessellum::test {

// The pixels of a rectangle of a device context as 0x00RRGGBB, top row first; empty if
// they cannot be copied.
std::vector<uint32_t> CapturePixels(HDC dc, int x, int y, int width, int height);

// Saves into the build tree's screenshots folder; gives the path, or empty on failure.
std::string SaveScreenshot(HWND window, const std::string& name);

}  // namespace tessellum::test
