// Nested one-pixel rings round a block of a pixel store: the pattern of the inset frame,
// the swatch highlight and the quadrant box, each with its own colours.
#pragma once

#include <cstdint>

#include "controls/pixel_word.h"

namespace tessellum {

// Within the block of `blockWidth` by `blockHeight` pixels whose top left corner is at
// (left, top), a pixel at distance d from the block's nearest edge takes rings[d / line]
// for d 0 to 4 * line - 1; deeper pixels keep theirs. Each ring is `line` pixels wide
// (the line width at the dialog's DPI). The block must lie inside the store of `width`
// words a row; the caller makes sure of that.
void PaintRings(PixelWord* bits, uint32_t width, uint32_t left, uint32_t top, uint32_t blockWidth,
                uint32_t blockHeight, const PixelWord (&rings)[4], uint32_t line = 1);

}  // namespace tessellum
