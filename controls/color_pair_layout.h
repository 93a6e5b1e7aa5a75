// Where the parts of the foreground and background control lie, and which part a click
// belongs to. The control is a square of side `size`; the two large boxes of side
// `boxSize` overlap at its centre, and the small black and white boxes of the reset
// sign, of side `smallBoxSize`, sit under the fore box.
#pragma once

#include <cstdint>

#include "controls/control.h"
#include "controls/dpi_scale.h"

namespace tessellum {

struct ColorPairParts {
    ControlBounds backBox;
    ControlBounds foreBox;
    ControlBounds miniBackBox;
    ControlBounds miniForeBox;
    ControlBounds swapButton;
};

// The swap arrow's size comes from its picture. Sizes are pixels at the dialog's DPI;
// the fixed offsets between the parts are scaled to it.
ColorPairParts LayoutColorPair(int32_t x, int32_t y, int32_t size, int32_t boxSize,
                               int32_t smallBoxSize, int32_t swapWidth, int32_t swapHeight,
                               int32_t dpi = kBaseDpi);

enum class ColorPairRegion { kReset, kSwap, kForeBox, kBackBox, kNone };

// The reset sign first, then the swap arrow, then the fore box, which lies on top of the
// back box where they overlap, then the back box.
ColorPairRegion FindColorPairRegion(const ColorPairParts& parts, int32_t x, int32_t y);

// The reset: the back box turns white before the fore box turns black, so that the fore
// box, painted last, stays on top where they overlap. `Box` has SetColor and GetColor.
template <class Box>
void ResetColorPair(Box& foreBox, Box& backBox) {
    backBox.SetColor(255, 255, 255);
    foreBox.SetColor(0, 0, 0);
}

// The swap, in the same order of painting.
template <class Box>
void SwapColorPair(Box& foreBox, Box& backBox) {
    uint8_t foreRed, foreGreen, foreBlue, backRed, backGreen, backBlue;
    foreBox.GetColor(foreRed, foreGreen, foreBlue);
    backBox.GetColor(backRed, backGreen, backBlue);
    backBox.SetColor(foreRed, foreGreen, foreBlue);
    foreBox.SetColor(backRed, backGreen, backBlue);
}

}  // namespace tessellum
