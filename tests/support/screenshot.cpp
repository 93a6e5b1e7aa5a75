#include "tests/support/screenshot.h"

#include <vector>

#include "tests/support/plugin_path.h"

#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb_image_write.h>

namespace tessellum::test {

std::string SaveScreenshot(HWND window, const std::string& name) {
    RECT area;
    if (!GetWindowRect(window, &area)) return {};
    const int width = area.right - area.left, height = area.bottom - area.top;
    if (width <= 0 || height <= 0) return {};
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;  // top-down
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    HDC screen = GetDC(nullptr);
    HDC memory = CreateCompatibleDC(screen);
    HBITMAP section = CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ old = SelectObject(memory, section);
    const BOOL copied = BitBlt(memory, 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    GdiFlush();
    std::vector<unsigned char> rgb(static_cast<size_t>(width) * height * 3);
    const auto* pixels = static_cast<const unsigned char*>(bits);
    for (size_t i = 0; copied && i < rgb.size() / 3; ++i) {
        rgb[3 * i] = pixels[4 * i + 2];
        rgb[3 * i + 1] = pixels[4 * i + 1];
        rgb[3 * i + 2] = pixels[4 * i];
    }
    SelectObject(memory, old);
    DeleteObject(section);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    if (!copied) return {};
    CreateDirectoryA((BuildDirectory() + "..\\screenshots").c_str(), nullptr);
    const std::string path = BuildDirectory() + "..\\screenshots\\" + name +
                             (sizeof(void*) == 8 ? "-x64" : "-x86") + ".png";
    return stbi_write_png(path.c_str(), width, height, 3, rgb.data(), width * 3) ? path : "";
}

}  // namespace tessellum::test
