// A real window for the Windows tests of the controls, and what reached it read back.
#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

namespace tessellum::test {

// A visible top-level window with a client area of that size at the top left of the
// screen, its own device context kept (CS_OWNDC), painted white.
HWND MakeTestWindow(const char* title, int clientWidth, int clientHeight);

// The client pixels of the rectangle as 0x00RRGGBB, top row first.
std::vector<uint32_t> ReadClient(HWND window, int x, int y, int width, int height);

}  // namespace tessellum::test
