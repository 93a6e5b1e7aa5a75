// Pictures of a Pattern in other bitmaps: the tile at true size, the magnified 2x2 tile
// with its frame, and the cross that stands for no single colour. They write straight
// into a store of `width` by `height` words that carries the 4-pixel inset frame.
#pragma once

#include <cstdint>

#include "color/pattern.h"
#include "controls/pixel_word.h"

namespace tessellum {

// The tile repeated inside the frame, one pixel a cell, anchored at the frame's inner
// corner (4, 4): pixel (4 + j, 4 + i) takes cell (i mod G, j mod G).
void DrawTilePreview(PixelWord* bits, uint32_t width, uint32_t height, const Pattern* cells,
                     uint8_t gridSize);

// The 39 by 39 box at (70, 70), whatever the store's size: rings of line and field
// colour round four 15 by 15 quadrants showing cells (0,0), (0,1), (1,0), (1,1) in their
// places, a grey cross between them. Black lines on white for a two-colour tile, white
// on black for a solid one. A store under 109 pixels either way is left alone.
void DrawQuadrantBox(PixelWord* bits, uint32_t width, uint32_t height, const Pattern* cells);

constexpr uint32_t kQuadrantBoxCorner = 70;
constexpr uint32_t kQuadrantBoxSide = 39;
constexpr PixelWord kQuadrantCrossGrey = 0x00808080;

// White inside the frame, with two black diagonals: one from (4, 4) down to the right,
// one from (width - 4, 4) down to the left, one pixel right of the first's mirror image.
// On a store taller than it is wide the pixels that would fall outside are not written.
void DrawNoColorCross(PixelWord* bits, uint32_t width, uint32_t height);

}  // namespace tessellum
