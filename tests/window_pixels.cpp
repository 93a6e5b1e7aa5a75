#include "tests/window_pixels.h"

#include "tests/support/plugin_path.h"

namespace tessellum::test {

HWND MakeTestWindow(const char* title, int clientWidth, int clientHeight, WNDPROC procedure) {
    const std::string className = std::string("TessellumControls") + title;
    WNDCLASSA windowClass = {};
    windowClass.style = CS_OWNDC;
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    windowClass.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));
    windowClass.lpszClassName = className.c_str();
    RegisterClassA(&windowClass);
    RECT frame = {0, 0, clientWidth, clientHeight};
    const DWORD style = WS_OVERLAPPED | WS_CAPTION | WS_VISIBLE;
    AdjustWindowRect(&frame, style, FALSE);
    HWND window = CreateWindowA(className.c_str(), title, style, 0, 0, frame.right - frame.left,
                                frame.bottom - frame.top, nullptr, nullptr,
                                GetModuleHandleA(nullptr), nullptr);
    UpdateWindow(window);
    PumpMessages();
    return window;
}

void PumpMessages() {
    for (int round = 0; round < 3; ++round) {
        // A message to fetch makes the queue pass the window's picture on to the screen.
        PostThreadMessageA(GetCurrentThreadId(), WM_NULL, 0, 0);
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
    }
}

std::vector<uint32_t> ReadClient(HWND window, int x, int y, int width, int height) {
    std::vector<uint32_t> pixels(static_cast<size_t>(width) * height, 0xFFFFFFFF);
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    HDC dc = GetDC(window);
    HDC memory = CreateCompatibleDC(dc);
    HBITMAP section = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ old = SelectObject(memory, section);
    if (BitBlt(memory, 0, 0, width, height, dc, x, y, SRCCOPY)) {
        GdiFlush();
        const auto* words = static_cast<const uint32_t*>(bits);
        for (size_t i = 0; i < pixels.size(); ++i) pixels[i] = words[i] & 0x00FFFFFF;
    }
    SelectObject(memory, old);
    DeleteObject(section);
    DeleteDC(memory);
    ReleaseDC(window, dc);
    return pixels;
}

HMODULE LoadPluginModule() {
    return LoadLibraryA(PluginPath().c_str());
}

std::string GeneratedArtPath(const std::string& file) {
    return BuildDirectory() + "generated_art\\" + file;
}

}  // namespace tessellum::test
