// The band fill against the plain rule: pixel (j, i) of a band takes tile cell
// (i, j mod GridSize), bytes beyond the row's pixels are untouched.
#include "host/band_fill.h"

#include <gtest/gtest.h>

#include <vector>

namespace tessellum {
namespace {

constexpr int kGridSizes[] = {2, 3, 4, 5, 6, 8};
constexpr uint8_t kUntouched = 0xEE;

// Every cell different, including those outside the square in force, so reading a
// wrong cell shows.
Pattern DistinctTile() {
    Pattern tile;
    for (int r = 0; r < 8; ++r)
        for (int c = 0; c < 8; ++c)
            tile.Cell(r, c) = {static_cast<uint8_t>(r * 8 + c), static_cast<uint8_t>(100 + r),
                               static_cast<uint8_t>(200 + c)};
    return tile;
}

std::vector<uint8_t> ReferenceBand(const std::vector<uint8_t>& before, ptrdiff_t rowBytes, int rows,
                                   int width, const Pattern& tile, int grid) {
    std::vector<uint8_t> after = before;
    for (int i = 0; i < rows; ++i) {
        for (int j = 0; j < width; ++j) {
            const Rgb8& cell = tile.Cell(i % grid, j % grid);
            uint8_t* p = &after[i * rowBytes + 3 * j];
            p[0] = cell.red;
            p[1] = cell.green;
            p[2] = cell.blue;
        }
    }
    return after;
}

void ExpectBand(int grid, int rows, int width, int padding) {
    const Pattern tile = DistinctTile();
    const ptrdiff_t rowBytes = 3 * width + padding;
    // One spare row after the band catches writes past the last row.
    const std::vector<uint8_t> before(rowBytes * (rows + 1) + 16, kUntouched);
    std::vector<uint8_t> actual = before;
    FillBand(actual.data(), rowBytes, rows, width, tile, grid);
    EXPECT_EQ(actual, ReferenceBand(before, rowBytes, rows, width, tile, grid))
        << "GridSize " << grid << ", " << rows << " rows of " << width << " pixels, padding "
        << padding;
}

TEST(BandFill, MatchesTheRuleForEveryGridSizeWidthAndHeight) {
    for (int grid : kGridSizes) {
        for (int rows = 0; rows <= grid; ++rows) {
            for (int width = 0; width <= 3 * 8 + 2; ++width) ExpectBand(grid, rows, width, 0);
            for (int width : {97, 640, 641, 1000, 4099}) ExpectBand(grid, rows, width, 0);
        }
    }
}

TEST(BandFill, LeavesRowPaddingAlone) {
    for (int grid : kGridSizes)
        for (int padding : {1, 2, 5, 13})
            for (int width : {1, 7, 8, 33, 250}) ExpectBand(grid, grid, width, padding);
}

TEST(BandFill, RowsRunUpwardWithANegativeStride) {
    // Bottom-up buffers have a negative row stride; the rule is the same.
    const Pattern tile = DistinctTile();
    const int width = 11, rows = 3, grid = 3;
    std::vector<uint8_t> buffer(3 * width * rows, kUntouched);
    uint8_t* lastRow = buffer.data() + 3 * width * (rows - 1);
    FillBand(lastRow, -3 * width, rows, width, tile, grid);
    for (int i = 0; i < rows; ++i)
        for (int j = 0; j < width; ++j)
            EXPECT_EQ(lastRow[-i * 3 * width + 3 * j], tile.Cell(i, j % grid).red)
                << "row " << i << " column " << j;
}

TEST(BandFill, ATallerBandThanTheTileWrapsInsideTheTile) {
    // A host that hands back more rows than asked must not make the fill read past
    // the tile.
    ExpectBand(2, 7, 9, 0);
    ExpectBand(3, 20, 4, 3);
}

}  // namespace
}  // namespace tessellum

namespace tessellum {
namespace {

TEST(BandFill, ATileChangedBetweenBandsIsLaidAsItNowIs) {
    // Ready-made rows are kept from band to band; any change to a cell in force, or to
    // the GridSize, must show in the very next band.
    Pattern tile = DistinctTile();
    std::vector<uint8_t> row(3 * 50);
    for (int grid : kGridSizes) {
        for (int r = 0; r < grid; ++r) {
            for (int c = 0; c < grid; ++c) {
                FillBand(row.data(), 0, 1, 50, tile, grid);  // make the rows ready
                tile.Cell(r, c).blue ^= 0x5A;
                std::vector<uint8_t> band(3 * 50 * grid);
                FillBand(band.data(), 3 * 50, grid, 50, tile, grid);
                for (int j = 0; j < 50; ++j)
                    ASSERT_EQ(band[r * 150 + 3 * j + 2], tile.Cell(r, j % grid).blue)
                        << "GridSize " << grid << ", cell (" << r << ", " << c << ") changed";
            }
        }
    }
}

}  // namespace
}  // namespace tessellum
