#include "controls/offscreen_bitmap.h"

#include <cstdlib>

#include "controls/pixel_painters.h"
#include "storage/error_code.h"

namespace tessellum {

OffscreenBitmap::OffscreenBitmap(HWND owner, uint32_t width, uint32_t height, bool topDown)
    : owner(owner),
      memoryDC(nullptr),
      bits(nullptr),
      width(width),
      height(height),
      previousBitmap(nullptr),
      bitmap(nullptr),
      topDown(topDown ? 1 : 0) {
    HDC windowDC = GetDC(owner);
    if (!windowDC) throw ErrNoMemory;
    memoryDC = CreateCompatibleDC(windowDC);
    if (!memoryDC) {
        ReleaseDC(owner, windowDC);
        throw ErrNoMemory;
    }
    if (!CreateSection()) {
        DeleteDC(memoryDC);
        ReleaseDC(owner, windowDC);
        throw ErrNoMemory;
    }
    previousBitmap = SelectObject(memoryDC, bitmap);
    ReleaseDC(owner, windowDC);
}

OffscreenBitmap::~OffscreenBitmap() {
    if (memoryDC) {
        SelectObject(memoryDC, previousBitmap);
        DeleteDC(memoryDC);
    }
    if (bitmap) DeleteObject(bitmap);
}

bool OffscreenBitmap::CreateSection() {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = static_cast<LONG>(width);
    info.bmiHeader.biHeight = topDown ? -static_cast<LONG>(height) : static_cast<LONG>(height);
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* memory = nullptr;
    bitmap = CreateDIBSection(memoryDC, &info, DIB_RGB_COLORS, &memory, nullptr, 0);
    if (!bitmap) {
        bits = nullptr;
        width = 0;
        height = 0;
        return false;
    }
    bits = static_cast<PixelWord*>(memory);
    return true;
}

void OffscreenBitmap::Blit(int32_t destX, int32_t destY, int32_t srcX, int32_t srcY,
                           int32_t blitWidth, int32_t blitHeight) {
    HDC dc = GetDC(owner);
    if (!dc) return;
    if (!bitmap) {
        ReleaseDC(owner, dc);
        return;
    }
    // A device with a colour table gets a halftone palette for the length of this copy.
    HPALETTE halftone = nullptr;
    HPALETTE previous = nullptr;
    if (GetDeviceCaps(dc, NUMCOLORS) > 0) {
        SetStretchBltMode(dc, HALFTONE);
        halftone = CreateHalftonePalette(dc);
        previous = SelectPalette(dc, halftone, TRUE);
        RealizePalette(dc);
    }
    BitBlt(dc, destX, destY, blitWidth, blitHeight, memoryDC, srcX, srcY, SRCCOPY);
    if (GetDeviceCaps(dc, NUMCOLORS) > 0) {
        SelectPalette(dc, previous, TRUE);
        if (halftone) DeleteObject(halftone);
    }
    ReleaseDC(owner, dc);
}

void OffscreenBitmap::Fill(uint8_t red, uint8_t green, uint8_t blue) {
    FillPixels(bits, width, height, red, green, blue);
}

void OffscreenBitmap::PaintInsetFrame(uint32_t line) {
    tessellum::PaintInsetFrame(bits, width, height, line);
}

void OffscreenBitmap::FillInside(uint8_t red, uint8_t green, uint8_t blue, uint32_t line) {
    tessellum::FillInside(bits, width, height, red, green, blue, line);
}

void OffscreenBitmap::PaintThinFrame() {
    tessellum::PaintThinFrame(bits, width, height);
}

bool OffscreenBitmap::Resize(uint32_t newWidth, int32_t newHeight) {
    if (newWidth == width && newHeight >= 0 && static_cast<uint32_t>(newHeight) == height) {
        return false;
    }
    width = newWidth;
    height = static_cast<uint32_t>(std::abs(newHeight));
    SelectObject(memoryDC, previousBitmap);
    if (bitmap) DeleteObject(bitmap);
    bitmap = nullptr;
    if (!CreateSection()) throw ErrNoMemory;
    previousBitmap = SelectObject(memoryDC, bitmap);
    return true;
}

void OffscreenBitmap::LoadBitmapResource(uint32_t id, HINSTANCE instance) {
    HBITMAP loaded = LoadBitmapA(instance, MAKEINTRESOURCEA(id & 0xFFFF));
    if (!loaded) throw ErrNoMemory;
    BITMAP description = {};
    if (!GetObjectA(loaded, sizeof description, &description)) {
        DeleteObject(loaded);
        throw ErrNoMemory;
    }
    try {
        Resize(static_cast<uint32_t>(description.bmWidth), description.bmHeight);
    } catch (ErrorCode) {
        DeleteObject(loaded);
        throw;
    }
    HDC sourceDC = CreateCompatibleDC(memoryDC);
    if (!sourceDC) {
        DeleteObject(loaded);
        throw ErrNoMemory;
    }
    HGDIOBJ old = SelectObject(sourceDC, loaded);
    BitBlt(memoryDC, 0, 0, static_cast<int>(width), static_cast<int>(height), sourceDC, 0, 0,
           SRCCOPY);
    SelectObject(sourceDC, old);
    DeleteDC(sourceDC);
    DeleteObject(loaded);
}

}  // namespace tessellum
