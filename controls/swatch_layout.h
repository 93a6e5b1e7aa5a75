// The geometry of the swatch grid: 32 columns by 8 rows of cells, each followed by a
// one-pixel black line to its right and under it, inside a 4-pixel inset frame.
#pragma once

#include <cstdint>

#include "controls/dpi_scale.h"

namespace tessellum {

constexpr uint32_t kSwatchColumns = 32;
constexpr uint32_t kSwatchRows = 8;
constexpr uint32_t kSwatchCells = kSwatchColumns * kSwatchRows;
constexpr uint32_t kSwatchMargin = 4;

// 32 cells, 31 lines and two margins across; 8 cells, 7 lines and two margins down.
// Worked out wide so that no cell size can wrap it round. At another DPI the lines are
// `line` pixels wide and the margins 4 lines.
constexpr uint64_t SwatchBitmapWidth(uint32_t cellWidth, uint32_t line = 1) {
    return uint64_t{cellWidth} * kSwatchColumns + uint64_t{line} * (kSwatchColumns - 1) +
           uint64_t{line} * 2 * kSwatchMargin;
}
constexpr uint64_t SwatchBitmapHeight(uint32_t cellHeight, uint32_t line = 1) {
    return uint64_t{cellHeight} * kSwatchRows + uint64_t{line} * (kSwatchRows - 1) +
           uint64_t{line} * 2 * kSwatchMargin;
}

// The palette index under a point, or false when the point is not over the grid. dx and
// dy count from the first cell pixel (bitmap column and row 4) and are taken unsigned,
// so a point on the margin, left of or above it, is far beyond the last column or row.
// A column is a cell and the line to its right, so the line belongs to the cell; the last
// column and row end on the frame's inner ring.
constexpr bool SwatchIndexAt(uint32_t dx, uint32_t dy, uint32_t cellWidth, uint32_t cellHeight,
                             uint32_t* index, uint32_t line = 1) {
    const uint64_t column = dx / (uint64_t{cellWidth} + line);
    const uint64_t row = dy / (uint64_t{cellHeight} + line);
    if (column >= kSwatchColumns || row >= kSwatchRows) return false;
    *index = static_cast<uint32_t>(row * kSwatchColumns + column);
    return true;
}

// The offsets of a point in client coordinates from the first cell pixel of a grid whose
// bitmap stands at (gridX, gridY), as the hit arithmetic takes them: modulo 2^32.
constexpr uint32_t SwatchOffset(int32_t point, int32_t gridEdge, uint32_t line = 1) {
    return static_cast<uint32_t>(point) - static_cast<uint32_t>(gridEdge) - line * kSwatchMargin;
}

// The dialog's cells (8 by 10 pixels at 96 DPI) and the width of a line, at a DPI: the
// same for every cell, worked out once. The pitch, a cell and its line, is the 96-DPI
// one scaled and rounded down, so that 32 of them never outgrow the scaled grid; and
// where the page has less room than that (its dialog units grow less than the DPI at
// some scales), the largest pitch whose grid fits the room, so no cell is lost.
struct SwatchCells {
    uint32_t width;
    uint32_t height;
    uint32_t line;
};
constexpr uint32_t SwatchPitch(uint32_t cell, int32_t dpi, uint32_t count, uint32_t room,
                               uint32_t line) {
    const uint32_t scaled = (cell + 1) * static_cast<uint32_t>(SaneDpi(dpi)) / kBaseDpi;
    // count pitches, less the last line, plus two margins of 4 lines
    const uint32_t fits = room > 7 * line ? (room - 7 * line) / count : 0;
    return fits < scaled ? (fits > line ? fits : line + 1) : scaled;
}
constexpr SwatchCells SwatchCellsAt(uint32_t cellWidth, uint32_t cellHeight, int32_t dpi,
                                    uint32_t roomWidth = UINT32_MAX,
                                    uint32_t roomHeight = UINT32_MAX) {
    const uint32_t line = static_cast<uint32_t>(LineWidth(dpi));
    return {SwatchPitch(cellWidth, dpi, kSwatchColumns, roomWidth, line) - line,
            SwatchPitch(cellHeight, dpi, kSwatchRows, roomHeight, line) - line, line};
}

}  // namespace tessellum
