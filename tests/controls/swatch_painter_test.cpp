// The swatch grid's picture and hit arithmetic on plain memory: cells, lines and frame for
// full and short palettes, the highlight's rings at the corners, the edges of the cells.
#include "controls/swatch_painter.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "color/palette.h"
#include "controls/swatch_layout.h"
#include "tests/controls/pixel_store.h"

namespace tessellum {
namespace {

using test::PixelStore;

constexpr PixelWord kRed = 0x00FF0000;

// Colour k of a palette whose every entry differs and none is black.
Palette DistinctPalette(uint32_t count) {
    Palette palette(count);
    for (uint32_t k = 0; k < count; ++k) {
        palette.Colors()[3 * k] = uint8_t(k);
        palette.Colors()[3 * k + 1] = uint8_t(255 - k);
        palette.Colors()[3 * k + 2] = uint8_t(1 + k % 200);
    }
    return palette;
}

struct Grid {
    uint32_t cellWidth;
    uint32_t cellHeight;
    uint32_t Width() const { return uint32_t(SwatchBitmapWidth(cellWidth)); }
    uint32_t Height() const { return uint32_t(SwatchBitmapHeight(cellHeight)); }
};

PixelStore Painted(Grid grid, const Palette* palette, uint8_t selected, bool visible) {
    PixelStore store(grid.Width(), grid.Height());
    PaintSwatchGrid(store.bits(), store.width, store.height, grid.cellWidth, grid.cellHeight,
                    palette, selected, visible);
    return store;
}

// The picture as the grid's geometry describes it: the inset frame, then columns of a
// cell and its line, rows of a cell and its line, from pixel 4; without a palette, grey
// inside the frame. The highlight of `marked` (none if negative) lies over it: rings red,
// white, white, red on the block 4 pixels beyond the cell.
PixelWord ExpectedPixel(Grid grid, const Palette* palette, int marked, uint32_t x, uint32_t y) {
    const uint32_t cw = grid.cellWidth + 1, ch = grid.cellHeight + 1;
    if (palette && marked >= 0) {
        const uint32_t left = marked % 32 * cw, top = marked / 32 * ch;
        const uint32_t right = left + cw + 6, bottom = top + ch + 6;
        if (x >= left && x <= right && y >= top && y <= bottom) {
            const uint32_t d = std::min({x - left, y - top, right - x, bottom - y});
            if (d < 4) return d == 1 || d == 2 ? kWhitePixel : kRed;
        }
    }
    const uint32_t d = std::min({x, y, grid.Width() - 1 - x, grid.Height() - 1 - y});
    if (d < 4) return d == 1 || d == 2 ? kWhitePixel : kBlackPixel;
    if (!palette) return 0x00808080;
    const uint32_t dx = x - 4, dy = y - 4;
    if (dx % cw == grid.cellWidth || dy % ch == grid.cellHeight) return kBlackPixel;
    const uint32_t k = dy / ch * 32 + dx / cw;
    if (k >= palette->Count()) return kBlackPixel;
    const uint8_t* rgb = palette->Colors() + 3 * k;
    return MakePixelWord(rgb[0], rgb[1], rgb[2]);
}

// Paints the grid with `marked` selected and shown (none shown if negative) and compares
// every pixel.
void ExpectPicture(Grid grid, const Palette* palette, int marked) {
    const PixelStore store = Painted(grid, palette, uint8_t(marked < 0 ? 0 : marked), marked >= 0);
    for (uint32_t y = 0; y < store.height; ++y)
        for (uint32_t x = 0; x < store.width; ++x)
            ASSERT_EQ(store.At(x, y), ExpectedPixel(grid, palette, marked, x, y))
                << "cells " << grid.cellWidth << "x" << grid.cellHeight << ", "
                << (palette ? int(palette->Count()) : -1) << " colours, " << marked
                << " marked, pixel " << x << "," << y;
    EXPECT_TRUE(store.GuardsIntact());
}

TEST(SwatchLayout, TheLineRightOfACellAndTheLineUnderItBelongToIt) {
    const auto at = [](int32_t x, int32_t y, int32_t gridX = 0, int32_t gridY = 0) {
        uint32_t index = 0;
        const bool over =
            SwatchIndexAt(SwatchOffset(x, gridX), SwatchOffset(y, gridY), 8, 10, &index);
        return over ? int(index) : -1;
    };
    // The lines right of and under cell 0 are its own; the frame's margin hits nothing;
    // the last column and row end on the frame's inner ring; then a grid standing
    // elsewhere, and points far off.
    EXPECT_EQ(at(12, 4), 0);
    EXPECT_EQ(at(13, 4), 1);
    EXPECT_EQ(at(4, 14), 0);
    EXPECT_EQ(at(4, 15), 32);
    EXPECT_EQ(at(3, 4), -1);
    EXPECT_EQ(at(4, 3), -1);
    EXPECT_EQ(at(291, 91), 255);
    EXPECT_EQ(at(292, 91), -1);
    EXPECT_EQ(at(291, 92), -1);
    EXPECT_EQ(at(14, 154, 10, 150), 0);
    EXPECT_EQ(at(13, 154, 10, 150), -1);
    EXPECT_EQ(at(-32768, 160, 10, 150), -1);
    EXPECT_EQ(at(32767, 32767, INT32_MIN, INT32_MAX), -1);
    uint32_t index = 99;
    EXPECT_TRUE(SwatchIndexAt(0, 0, 0xFFFFFFFF, 0xFFFFFFFF, &index)) << "no division by zero";
    EXPECT_EQ(index, 0u);
    EXPECT_EQ(SwatchBitmapWidth(0xFFFFFFFF), 0xFFFFFFFFull * 32 + 39) << "no wrap";
}

TEST(SwatchPainter, CellsLinesAndFrameForPalettesOfAnyLengthAndCellsOfAnySize) {
    // Past a short palette's end the cells are black like the lines; past 256 nothing
    // shows; without a palette the grid is grey, and unmarked even with the highlight on.
    const Palette palettes[] = {DistinctPalette(256), DistinctPalette(216), DistinctPalette(33),
                                DistinctPalette(300), Palette()};
    for (const Grid grid : {Grid{8, 10}, Grid{1, 1}, Grid{3, 2}, Grid{12, 5}}) {
        for (const Palette& palette : palettes) ExpectPicture(grid, &palette, -1);
        ExpectPicture(grid, nullptr, 0);
    }

    // Cell 255 from column 283, row 81; cell 216, at column 24 of row 6, past 216 colours.
    EXPECT_EQ(Painted({8, 10}, &palettes[0], 0, false).At(283, 81), MakePixelWord(255, 0, 56));
    EXPECT_EQ(Painted({8, 10}, &palettes[1], 0, false).At(4 + 24 * 9, 4 + 6 * 11), kBlackPixel);
}

TEST(SwatchPainter, TheHighlightOfZeroCoversTheFramesCornerAnd255EndsOnTheLastPixel) {
    const Palette palette = DistinctPalette(256), short216 = DistinctPalette(216);
    for (int marked : {0, 255, 45}) ExpectPicture({8, 10}, &palette, marked);
    ExpectPicture({3, 2}, &palette, 33);
    ExpectPicture({1, 1}, &palette, 255);
    ExpectPicture({8, 10}, &short216, 240);  // past the palette's end: on black
    const PixelStore zero = Painted({8, 10}, &palette, 0, true);
    EXPECT_EQ(zero.At(0, 0), kRed) << "block corner at 0, 0";
    EXPECT_EQ(zero.At(15, 17), kRed) << "its last pixel";
    EXPECT_EQ(Painted({8, 10}, &palette, 255, true).At(294, 94), kRed) << "the picture's last";
}

}  // namespace
}  // namespace tessellum
