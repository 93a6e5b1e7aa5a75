// Where things stand in the grid editor's 127 by 127 picture, and which cell a point
// falls in. The frame takes the outer 4 pixels; the grid area runs from column and row
// 3 to 123, its outer lines being the frame's inner black ring.
#pragma once

#include <cstdint>

#include "color/pattern.h"

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

}  // namespace tessellum
