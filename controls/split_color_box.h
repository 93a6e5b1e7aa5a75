// The large framed colour of the Color Picker tab. While a slider moves it shows the new
// colour above the colour it had when the press began, with a white line between.
#pragma once

#include <windows.h>

#include <memory>

#include "controls/control.h"
#include "controls/offscreen_bitmap.h"

namespace tessellum {

class SplitColorBox : public Control {
public:
    // Fills the inside with the colour and shows it; the owner paints the frame through
    // Bitmap once. Throws ErrNoMemory.
    // `line`: the width of a one-pixel line at the dialog's DPI.
    SplitColorBox(HWND owner, int32_t x, int32_t y, int32_t width, int32_t height, uint8_t red,
                  uint8_t green, uint8_t blue, int32_t line = 1);

    // Split: only the upper half of the inside takes the colour; the lower half keeps
    // what it showed. Otherwise the whole inside does. Shown at once.
    void SetColor(uint8_t newRed, uint8_t newGreen, uint8_t newBlue);
    void SetSplit(bool flag);  // and shows the colour held in the new way
    bool IsSplit() const { return split != 0; }
    OffscreenBitmap& Bitmap() { return *bitmap; }
    void Draw();

    std::unique_ptr<OffscreenBitmap> bitmap;
    uint8_t red = 0;
    uint8_t green = 0;
    uint8_t blue = 0;
    uint8_t split = 0;
    int32_t line = 1;
};

}  // namespace tessellum
