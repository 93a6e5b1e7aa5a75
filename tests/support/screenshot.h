// Saves what a window shows on the screen as a PNG, for a person to look at.
#pragma once

#include <windows.h>

#include <string>

namespace tessellum::test {

// Saves into the build tree's screenshots folder; gives the path, or empty on failure.
std::string SaveScreenshot(HWND window, const std::string& name);

}  // namespace tessellum::test
