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
void PaintInsetFrame(PixelWord* bits, uint32_t width, uint32_t height);

// Everything inside the 4-pixel margin of the frame. A store under 9 pixels either way
// has no inside, so nothing is written.
void FillInside(PixelWord* bits, uint32_t width, uint32_t height, uint8_t red, uint8_t green,
                uint8_t blue);

// A black one-pixel border, painted over a fill.
void PaintThinFrame(PixelWord* bits, uint32_t width, uint32_t height);

}  // namespace tessellum
