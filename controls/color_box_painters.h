// What the colour boxes write into their pictures when they take a colour.
#pragma once

#include <cstdint>

#include "controls/pixel_word.h"

namespace tessellum {

enum ColorBoxKind : int32_t {
    kFlatColorBox = 0,    // the colour over the whole box, a black one-pixel border
    kFramedColorBox = 1,  // the colour inside the 4-pixel inset frame, which is kept
};

// `line` is the width of a one-pixel line at the dialog's DPI.
void PaintBoxColor(PixelWord* bits, uint32_t width, uint32_t height, int32_t kind, uint8_t red,
                   uint8_t green, uint8_t blue, uint32_t line = 1);

// New over old: the upper half of the inside takes the colour, a white line follows,
// and the rows below keep the colour they showed. With H = (height - 8) / 2, memory rows
// 4 to 3 + H are coloured and row 4 + H is white, over columns 4 to width - 5. A box with
// no inside (under 9 pixels either way) is left as it is. At another DPI the margin is
// 4 * line and the white line `line` rows: H = (height - 8 * line) / 2.
void PaintSplitColor(PixelWord* bits, uint32_t width, uint32_t height, uint8_t red, uint8_t green,
                     uint8_t blue, uint32_t line = 1);

}  // namespace tessellum
