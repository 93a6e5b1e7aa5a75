// Where things stand in the grid editor's 127 by 127 picture, and which cell a point
// falls in. The frame takes the outer 4 pixels; the grid area runs from column and row
// 3 to 123, its outer lines being the frame's inner black ring.
#pragma once

#include <cstdint>

#include "color/pattern.h"
#include "controls/dpi_scale.h"

namespace tessellum {

constexpr uint32_t kGridEditorSide = 127;  // the picture's width and height
constexpr int32_t kGridCellOrigin = 4;     // bitmap column and row of the first cell pixel
constexpr int32_t kGridSpan = 120;         // pixels from the first grid line to the last

// Pixels from one grid line to the next; exact for every valid GridSize.
constexpr int32_t GridPitch(uint8_t gridSize) {
    return kGridSpan / EffectiveGridSize(gridSize);
}

struct GridCell {
    int32_t row;
    int32_t column;
};

// px and py count from the first cell pixel. The area is 120 pixels either way: from the
// first cell pixel to the frame's black ring at column and row 123, which closes the
// last cell as its own grid line.
constexpr bool InGridArea(int64_t px, int64_t py) {
    return px >= 0 && px < kGridSpan && py >= 0 && py < kGridSpan;
}

// The cell under a point of the area. A grid line belongs to the cell before it: the line
// of column k stands at offset k * pitch - 1.
constexpr GridCell GridCellAt(int64_t px, int64_t py, uint8_t gridSize) {
    const int32_t pitch = GridPitch(gridSize);
    return {static_cast<int32_t>(py / pitch), static_cast<int32_t>(px / pitch)};
}

// The picture at a DPI. Lines are `line` pixels wide; the 120 pixels between the first
// and the last grid line become ScaleToDpi(120), and the pitch is that divided by the
// GridSize, rounded down, so every cell is as wide as every other. What the rounding
// leaves over (`slack`, at most GridSize - 1 pixels) goes half before and half after the
// framed grid, in the dialog's grey; the picture's side stays that of the DPI.
struct GridLayout {
    int32_t line;    // width of a grid line and of each ring of the frame
    int32_t side;    // the picture's width and height: 7 lines and the scaled 120
    int32_t pitch;   // from one grid line to the next: a cell and its line
    int32_t size;    // the GridSize in force, made valid
    int32_t offset;  // column and row of the frame's corner: half the slack
    int32_t origin;  // column and row of the first cell pixel: offset + 4 lines
    int32_t span;    // size * pitch: from the first cell pixel to the frame's end of the grid
};

constexpr GridLayout GridLayoutAt(uint8_t gridSize, int32_t dpi) {
    const int32_t line = LineWidth(dpi);
    const int32_t scaledSpan = ScaleToDpi(kGridSpan, dpi);
    const int32_t size = EffectiveGridSize(gridSize);
    const int32_t pitch = scaledSpan / size;
    const int32_t offset = (scaledSpan - size * pitch) / 2;
    return {line, 7 * line + scaledSpan, pitch, size, offset, offset + 4 * line, size * pitch};
}

// The cell under a point given from the picture's corner, false off the cells. A grid
// line belongs to the cell before it, the frame's inner ring to the last cell.
constexpr bool GridCellAtPoint(int64_t x, int64_t y, const GridLayout& layout, GridCell* cell) {
    const int64_t px = x - layout.origin, py = y - layout.origin;
    if (px < 0 || py < 0 || px >= layout.span || py >= layout.span) return false;
    *cell = {static_cast<int32_t>(py / layout.pitch), static_cast<int32_t>(px / layout.pitch)};
    return true;
}

}  // namespace tessellum
