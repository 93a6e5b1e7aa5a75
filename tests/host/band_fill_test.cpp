// The band fill against the plain rule: pixel (j, i) of a band takes tile cell
// (i mod GridSize, j mod GridSize); bytes past a row's pixels are never touched.
#include "host/band_fill.h"

#include <gtest/gtest.h>

#include <vector>

namespace tessellum {
namespace {

// Every cell different, those outside the square in force too, so a wrong cell shows.
Pattern DistinctTile() {
    Pattern tile;
    for (int r = 0; r < 8; ++r)
        for (int c = 0; c < 8; ++c)
            tile.Cell(r, c) = {static_cast<uint8_t>(r * 8 + c), static_cast<uint8_t>(100 + r),
                               static_cast<uint8_t>(200 + c)};
    return tile;
}

// Rows `stride` bytes apart, the first at the top or (upward, a bottom-up buffer) at the
// bottom; one spare row and some bytes after the band catch writes past it.
void ExpectBand(const Pattern& tile, int grid, int rows, int width, int padding, bool upward) {
    const ptrdiff_t stride = 3 * width + padding;
    std::vector<uint8_t> actual(stride * (rows + 1) + 16, 0xEE), expected = actual;
    auto rowAt = [&](std::vector<uint8_t>& v, int i) {
        return v.data() + (upward ? rows - 1 - i : i) * stride;
    };
    for (int i = 0; i < rows; ++i)
        for (int j = 0; j < width; ++j) {
            const Rgb8& cell = tile.Cell(i % grid, j % grid);
            uint8_t* p = rowAt(expected, i) + 3 * j;
            p[0] = cell.red, p[1] = cell.green, p[2] = cell.blue;
        }
    FillBand(rows ? rowAt(actual, 0) : actual.data(), upward ? -stride : stride, rows, width, tile,
             grid);
    ASSERT_EQ(actual, expected) << "GridSize " << grid << ", " << rows << " rows of " << width
                                << " pixels, padding " << padding << (upward ? ", upward" : "");
}

TEST(BandFill, MatchesTheRuleForEveryGridSizeWidthHeightAndStride) {
    // Bands taller than the tile come from a host that hands back more rows than asked:
    // they must wrap inside the tile.
    const Pattern tile = DistinctTile();
    for (int grid : {2, 3, 4, 5, 6, 8})
        for (int rows = 0; rows <= 2 * grid + 1; ++rows) {
            for (int width = 0; width <= 26; ++width) ExpectBand(tile, grid, rows, width, 0, false);
            for (int width : {97, 161, 640, 1000, 4099})
                for (int padding : {0, 5}) ExpectBand(tile, grid, rows, width, padding, rows % 2);
            for (int padding : {1, 13}) ExpectBand(tile, grid, rows, 7, padding, rows % 2 == 0);
        }
}

TEST(BandFill, ATileChangedBetweenBandsIsLaidAsItNowIs) {
    // Ready-made rows are kept from band to band; a change to any cell in force, or to the
    // GridSize, must show in the very next band.
    Pattern tile = DistinctTile();
    for (int grid : {2, 3, 4, 5, 6, 8})
        for (int cell = 0; cell < grid * grid; ++cell) {
            ExpectBand(tile, grid, grid, 50, 0, false);
            tile.Cell(cell / grid, cell % grid).blue ^= 0x5A;
            ExpectBand(tile, grid, grid, 50, 0, false);
        }
}

}  // namespace
}  // namespace tessellum
