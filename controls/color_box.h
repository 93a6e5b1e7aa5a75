// A colour in a box: flat with a black border, or inside the inset frame.
#pragma once

#include <windows.h>

#include <memory>

#include "controls/color_box_painters.h"
#include "controls/control.h"
#include "controls/offscreen_bitmap.h"

namespace tessellum {

class ColorBox : public Control {
public:
    // Builds the picture (a framed box gets its frame) and shows the colour at once.
    // Throws ErrNoMemory.
    // `line`: the width of a one-pixel line at the dialog's DPI.
    ColorBox(HWND owner, int32_t x, int32_t y, int32_t width, int32_t height, int32_t kind,
             uint8_t red, uint8_t green, uint8_t blue, int32_t line = 1);

    void SetColor(uint8_t newRed, uint8_t newGreen, uint8_t newBlue);  // and shows it
    void GetColor(uint8_t& outRed, uint8_t& outGreen, uint8_t& outBlue) const;
    void Draw();

    std::unique_ptr<OffscreenBitmap> bitmap;
    uint8_t red = 0;
    uint8_t green = 0;
    uint8_t blue = 0;
    int32_t kind;
    int32_t line;
};

// A flat square box of one grey (0 black, 255 white), shown at once. Throws ErrNoMemory.
std::unique_ptr<ColorBox> MakeGreyBox(HWND owner, int32_t x, int32_t y, int32_t side, uint8_t grey,
                                      int32_t line = 1);

// A top-down picture of a control's size. Throws ErrNoMemory.
std::unique_ptr<OffscreenBitmap> MakeControlPicture(HWND owner, int32_t width, int32_t height);

}  // namespace tessellum
