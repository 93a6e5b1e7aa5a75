// The host's foreground and background colours on the Color Picker tab: two overlapping
// boxes, the front one at the upper left. A click on one tells the page which colour to
// load into the sliders.
#pragma once

#include <windows.h>

#include <memory>

#include "controls/color_box.h"
#include "controls/control.h"

namespace tessellum {

class ForeBackBox : public Control {
public:
    // A square of side `size`; the boxes of side `boxSize` lie in its opposite corners,
    // black in front and white behind; their borders `line` pixels wide. Throws
    // ErrNoMemory.
    ForeBackBox(HWND owner, int32_t x, int32_t y, int32_t size, int32_t boxSize, int32_t line = 1);

    void Draw();  // back, then front on top of it

    // The front box owns the square they share. Repaints nothing; a miss keeps the
    // choice made before.
    bool HandleClick(int32_t pointX, int32_t pointY);

    void GetFront(uint8_t& red, uint8_t& green, uint8_t& blue) const;
    void GetBack(uint8_t& red, uint8_t& green, uint8_t& blue) const;
    void SetFront(uint8_t red, uint8_t green, uint8_t blue);  // and draws both
    void SetBack(uint8_t red, uint8_t green, uint8_t blue);
    bool IsFrontActive() const { return frontActive != 0; }

    std::unique_ptr<ColorBox> frontBox;
    std::unique_ptr<ColorBox> backBox;
    uint8_t frontActive = 1;
};

}  // namespace tessellum
