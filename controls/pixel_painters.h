// The painters every self-drawn control shares. They write words straight into a pixel
// store of `width` by `height` words, row after row, addressing memory rows; a bitmap
// stored bottom-up shows them upside down, which the symmetric frames do not notice.
#pragma once

#include <cstdint>

#include "controls/pixel_word.h"

namespace tessellum {

// Every pixel becomes the colour.
void FillPixels(PixelWord* bits, uint32_t width, uint32_t height, uint8_t red, uint8_t green,
                uint8_t blue);

// The 4-pixel frame: black ring, two white rings, black ring; the inside is untouched.
// At another DPI each ring is `line` pixels wide (LineWidth), the margin 4 * line.
void PaintInsetFrame(PixelWord* bits, uint32_t width, uint32_t height, uint32_t line = 1);

// Everything inside the frame's margin of 4 * line pixels. A store with no pixel inside
// the margin either way (under 9 pixels at 96 DPI) has no inside: nothing is written.
void FillInside(PixelWord* bits, uint32_t width, uint32_t height, uint8_t red, uint8_t green,
                uint8_t blue, uint32_t line = 1);

// A black border `line` pixels wide, painted over a fill.
void PaintThinFrame(PixelWord* bits, uint32_t width, uint32_t height, uint32_t line = 1);

}  // namespace tessellum
