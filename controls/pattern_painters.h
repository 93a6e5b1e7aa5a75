// Pictures of a Pattern in other bitmaps: the tile at true size, the magnified 2x2 tile
// with its frame, and the cross that stands for no single colour. They write straight
// into a store of `width` by `height` words that carries the 4-pixel inset frame.
#pragma once

#include <cstdint>

#include "color/pattern.h"
#include "controls/dpi_scale.h"
#include "controls/pixel_word.h"

namespace tessellum {

// The tile repeated inside the frame, one pixel a cell, anchored at the frame's inner
// corner (4, 4): pixel (4 + j, 4 + i) takes cell (i mod G, j mod G). The tile stays one
// pixel a cell at every DPI, as it will stand in the image; the frame's margin is 4 *
// line.
void DrawTilePreview(PixelWord* bits, uint32_t width, uint32_t height, const Pattern* cells,
                     uint8_t gridSize, uint32_t line = 1);

// The 39 by 39 box at (70, 70), whatever the store's size: rings of line and field
// colour round four 15 by 15 quadrants showing cells (0,0), (0,1), (1,0), (1,1) in their
// places, a grey cross between them. Black lines on white for a two-colour tile, white
// on black for a solid one. A store under 109 pixels either way is left alone. At
// another DPI the box is QuadrantBoxAt(dpi).
void DrawQuadrantBox(PixelWord* bits, uint32_t width, uint32_t height, const Pattern* cells,
                     int32_t dpi = kBaseDpi);

constexpr uint32_t kQuadrantBoxCorner = 70;
constexpr uint32_t kQuadrantBoxSide = 39;
constexpr PixelWord kQuadrantCrossGrey = 0x00808080;

// The box at a DPI: its corner (column and row) in the picture, its side, the width of
// its rings and cross, and the side of a quadrant. Four rings and the cross are lines;
// the two quadrants take the rest of the scaled side, so they are equal.
struct QuadrantBoxGeometry {
    uint32_t corner;
    uint32_t side;
    uint32_t line;
    uint32_t quadrant;
};
constexpr QuadrantBoxGeometry QuadrantBoxAt(int32_t dpi) {
    const uint32_t line = static_cast<uint32_t>(LineWidth(dpi));
    const uint32_t quadrant =
        (static_cast<uint32_t>(ScaleToDpi(kQuadrantBoxSide, dpi)) - 9 * line) / 2;
    return {static_cast<uint32_t>(ScaleToDpi(kQuadrantBoxCorner, dpi)), 9 * line + 2 * quadrant,
            line, quadrant};
}

// White inside the frame, with two black diagonals: one from (4, 4) down to the right,
// one from (width - 4, 4) down to the left, one pixel right of the first's mirror image.
// On a store taller than it is wide the pixels that would fall outside are not written.
// At another DPI the margin is 4 * line and each diagonal `line` pixels wide.
void DrawNoColorCross(PixelWord* bits, uint32_t width, uint32_t height, uint32_t line = 1);

}  // namespace tessellum
