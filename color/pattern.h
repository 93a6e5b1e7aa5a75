// A colour of this program is a small tile: up to 8 by 8 cells of RGB bytes, of
// which the top-left GridSize by GridSize square is in force.
#pragma once

#include <cstdint>

namespace tessellum {

struct Rgb8 {
    uint8_t red;
    uint8_t green;
    uint8_t blue;
};

constexpr int kPatternSide = 8;
constexpr int kPatternBytes = kPatternSide * kPatternSide * 3;
constexpr int kPatternRowBytes = kPatternSide * 3;

// 64 cells, 8 rows of 8, whatever the GridSize; cell (row, column) starts at
// byte (row * 8 + column) * 3.
struct Pattern {
    Rgb8 cells[kPatternSide * kPatternSide];

    Rgb8& Cell(int row, int column) { return cells[row * kPatternSide + column]; }
    const Rgb8& Cell(int row, int column) const { return cells[row * kPatternSide + column]; }
    const uint8_t* RowBytes(int row) const {
        return reinterpret_cast<const uint8_t*>(&cells[row * kPatternSide]);
    }
};

static_assert(sizeof(Rgb8) == 3, "Rgb8 is three bytes");
static_assert(sizeof(Pattern) == kPatternBytes, "Pattern is 192 bytes");

// Only a damaged or hand-made file holds a GridSize outside 2, 3, 4, 5, 6, 8. It is
// stored as it stands and made valid here, where it comes into force: every division
// or modulus by a GridSize goes through this.
constexpr int EffectiveGridSize(uint8_t gridSize) {
    return gridSize < 2 ? 2 : gridSize == 7 ? 6 : gridSize > 8 ? 8 : gridSize;
}

}  // namespace tessellum
