#include "tests/support/screenshot.h"

#include <vector>

#include "tests/support/plugin_path.h"

#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb_image_write.h>

namespace tessellum::test {

std::vector<uint32_t> CapturePixels(HDC dc, int x, int y, int width, int height) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;  // top-down
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    HDC memory = CreateCompatibleDC(dc);
    HBITMAP section = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ old = SelectObject(memory, section);
    std::vector<uint32_t> pixels;
    if (BitBlt(memory, 0, 0, width, height, dc, x, y, SRCCOPY)) {
        GdiFlush();
        const auto* words = static_cast<const uint32_t*>(bits);
        pixels.assign(words, words + static_cast<size_t>(width) * height);
        for (uint32_t& word : pixels) word &= 0x00FFFFFF;
    }
    SelectObject(memory, old);
    DeleteObject(section);
    DeleteDC(memory);
    return pixels;
}

std::string SaveScreenshot(HWND window, const std::string& name) {
    RECT area;
    if (!GetWindowRect(window, &area) || area.right <= area.left || area.bottom <= area.top)
        return {};
    const int width = area.right - area.left, height = area.bottom - area.top;
    HDC screen = GetDC(nullptr);
    const std::vector<uint32_t> pixels = CapturePixels(screen, area.left, area.top, width, height);
    ReleaseDC(nullptr, screen);
    std::vector<unsigned char> rgb;
    for (uint32_t pixel : pixels)
        rgb.insert(rgb.end(), {uint8_t(pixel >> 16), uint8_t(pixel >> 8), uint8_t(pixel)});
    const std::string folder = BuildDirectory() + "..\\screenshots";
    CreateDirectoryA(folder.c_str(), nullptr);
    const std::string path = folder + "\\" + name + (sizeof(void*) == 8 ? "-x64" : "-x86") + ".png";
    return !rgb.empty() && stbi_write_png(path.c_str(), width, height, 3, rgb.data(), width * 3)
               ? path
               : "";
}

}  // namespace tessellum::test
