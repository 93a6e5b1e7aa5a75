#include "tests/support/window_pixels.h"

#include <string>

#include "tests/support/screenshot.h"

namespace tessellum::test {

HWND MakeTestWindow(const char* title, int clientWidth, int clientHeight) {
    const std::string className = std::string("TessellumControls") + title;
    WNDCLASSA windowClass = {};
    windowClass.style = CS_OWNDC;
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    windowClass.lpszClassName = className.c_str();
    RegisterClassA(&windowClass);
    RECT frame = {0, 0, clientWidth, clientHeight};
    const DWORD style = WS_OVERLAPPED | WS_CAPTION | WS_VISIBLE;
    AdjustWindowRect(&frame, style, FALSE);
    HWND window = CreateWindowA(className.c_str(), title, style, 0, 0, frame.right - frame.left,
                                frame.bottom - frame.top, nullptr, nullptr,
                                GetModuleHandleA(nullptr), nullptr);
    for (int round = 0; round < 3; ++round) {
        // A message to fetch makes the queue pass the window's picture on to the screen.
        PostThreadMessageA(GetCurrentThreadId(), WM_NULL, 0, 0);
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&message);
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
    }
    return window;
}

std::vector<uint32_t> ReadClient(HWND window, int x, int y, int width, int height) {
    HDC dc = GetDC(window);
    std::vector<uint32_t> pixels = CapturePixels(dc, x, y, width, height);
    ReleaseDC(window, dc);
    // A copy that failed reads as no colour at all, so every comparison fails.
    if (pixels.empty()) pixels.assign(static_cast<size_t>(width) * height, 0xFFFFFFFF);
    return pixels;
}

}  // namespace tessellum::test
