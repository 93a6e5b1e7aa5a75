// The swatch grid's picture: the colours of a palette in 32 by 8 cells with black lines
// between them, and the red and white highlight round the chosen cell.
#pragma once

#include <cstdint>

#include "color/palette.h"
#include "controls/pixel_word.h"

namespace tessellum {

constexpr PixelWord kSwatchHighlightRed = 0x00FF0000;
constexpr uint8_t kNoPaletteGrey = 128;

// Repaints the whole store, which must be exactly the grid's size for these cells (any
// other store is left alone). Without a palette: grey 128 inside the frame, no highlight.
// With one: the frame, cell k in colour k of the palette, black past its end, and the
// highlight of `selected` when `selectionVisible`.
// Lines, frame rings and highlight rings are `line` pixels wide.
void PaintSwatchGrid(PixelWord* bits, uint32_t width, uint32_t height, uint32_t cellWidth,
                     uint32_t cellHeight, const Palette* palette, uint8_t selected,
                     bool selectionVisible, uint32_t line = 1);

}  // namespace tessellum
