// find-control TITLE [--shot FILE.png] ID...: where the controls of a window stand on the
// screen, so that the demo can point real mouse clicks at them. For each ID (0: the window
// itself) it prints "ID left top right bottom" in screen pixels; the first visible control
// with that id among the window's descendants counts. --shot first saves the window as the
// screen shows it. Exit 1 while the window is not shown, or when an ID is not there; 2 on
// bad usage or a shot that cannot be saved.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tools/host/image.h"

namespace {

struct Search {
    int id;
    HWND found;
};

BOOL CALLBACK Visit(HWND child, LPARAM context) {
    Search& search = *reinterpret_cast<Search*>(context);
    if (GetDlgCtrlID(child) == search.id && IsWindowVisible(child)) {
        search.found = child;
        return FALSE;
    }
    return TRUE;
}

// The window's rectangle as the screen shows it, with whatever covers it.
bool SaveShot(HWND window, const char* path) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    tessellum::host::Image image;
    image.width = rect.right - rect.left;
    image.height = rect.bottom - rect.top;
    image.planes = 3;
    if (image.width <= 0 || image.height <= 0) return false;
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = image.width;
    info.bmiHeader.biHeight = -image.height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    HDC screen = GetDC(nullptr);
    HDC memory = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    bool copied = false;
    if (memory && bitmap) {
        HGDIOBJ old = SelectObject(memory, bitmap);
        copied = BitBlt(memory, 0, 0, image.width, image.height, screen, rect.left, rect.top,
                        SRCCOPY) != 0;
        GdiFlush();
        SelectObject(memory, old);
    }
    if (copied) {
        const auto* bgrx = static_cast<const uint8_t*>(bits);
        const size_t count = static_cast<size_t>(image.width) * image.height;
        image.pixels.resize(count * 3);
        for (size_t i = 0; i < count; ++i)
            for (int c = 0; c < 3; ++c) image.pixels[i * 3 + c] = bgrx[i * 4 + 2 - c];
    }
    if (bitmap) DeleteObject(bitmap);
    if (memory) DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    std::string error;
    if (copied && tessellum::host::SavePng(path, image, error)) return true;
    std::fprintf(stderr, "find-control: cannot save %s %s\n", path, error.c_str());
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: find-control TITLE [--shot FILE.png] ID...\n");
        return 2;
    }
    HWND window = FindWindowA(nullptr, argv[1]);
    if (window == nullptr || !IsWindowVisible(window)) return 1;
    int first = 2;
    if (std::strcmp(argv[2], "--shot") == 0) {
        if (argc < 4 || !SaveShot(window, argv[3])) return 2;
        first = 4;
    }
    for (int i = first; i < argc; ++i) {
        Search search = {std::atoi(argv[i]), nullptr};
        if (search.id == 0)
            search.found = window;
        else
            EnumChildWindows(window, Visit, reinterpret_cast<LPARAM>(&search));
        if (search.found == nullptr) return 1;
        RECT rect = {};
        GetWindowRect(search.found, &rect);
        std::printf("%d %ld %ld %ld %ld\n", search.id, rect.left, rect.top, rect.right,
                    rect.bottom);
    }
    return 0;
}
