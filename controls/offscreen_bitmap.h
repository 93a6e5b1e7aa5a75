// The picture of a self-drawn control: a 32-bit section with a memory device context
// bound to it for its whole life. Controls write PixelWords straight through `bits`
// and copy the wanted rectangle to their window with one Blit.
#pragma once

#include <windows.h>

#include <cstdint>

#include "controls/pixel_word.h"

namespace tessellum {

class OffscreenBitmap {
public:
    // Makes the context and the section (pixels not initialised). Throws ErrNoMemory.
    OffscreenBitmap(HWND owner, uint32_t width, uint32_t height, bool topDown);
    ~OffscreenBitmap();
    OffscreenBitmap(const OffscreenBitmap&) = delete;
    OffscreenBitmap& operator=(const OffscreenBitmap&) = delete;

    // Copies a rectangle to the owner's client area. Takes and gives back the window's
    // context within the call; never throws, and does nothing on an empty bitmap.
    void Blit(int32_t destX, int32_t destY, int32_t srcX, int32_t srcY, int32_t width,
              int32_t height);

    void Fill(uint8_t red, uint8_t green, uint8_t blue);
    // `line`: the width of each ring at the dialog's DPI.
    void PaintInsetFrame(uint32_t line = 1);
    void FillInside(uint8_t red, uint8_t green, uint8_t blue, uint32_t line = 1);
    void PaintThinFrame();

    // Takes the size of the bitmap resource and its picture. Throws ErrNoMemory.
    void LoadBitmapResource(uint32_t id, HINSTANCE instance);

    // A new, unpainted store of that size; false (picture kept) if the size is already
    // that. Throws ErrNoMemory, leaving the bitmap empty.
    bool Resize(uint32_t newWidth, int32_t newHeight);

    HWND owner;
    HDC memoryDC;
    PixelWord* bits;
    uint32_t width;
    uint32_t height;
    HGDIOBJ previousBitmap;
    HBITMAP bitmap;
    int32_t topDown;

private:
    bool CreateSection();  // into `bitmap` and `bits` at the stored size; false on failure
};

}  // namespace tessellum
