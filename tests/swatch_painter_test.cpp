// The swatch grid's picture and hit arithmetic on plain memory: cells, lines and frame for
// full and short palettes, the highlight's rings at the corners, the edges of the cells.
#include "controls/swatch_painter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "color/palette.h"
#include "color/web_safe.h"
#include "controls/pixel_painters.h"
#include "controls/swatch_layout.h"
#include "tests/pixel_store.h"

namespace tessellum {
namespace {

using test::kSentinel;
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

// The picture without highlight as the grid's geometry describes it: the inset frame, then
// columns of a cell and its line, rows of a cell and its line, from pixel 4.
PixelWord ExpectedPixel(Grid grid, const Palette& palette, uint32_t x, uint32_t y) {
    const uint32_t w = grid.Width(), h = grid.Height();
    const uint32_t d = std::min({x, y, w - 1 - x, h - 1 - y});
    if (d < 4) return d == 1 || d == 2 ? kWhitePixel : kBlackPixel;
    const uint32_t dx = x - 4, dy = y - 4;
    if (dx % (grid.cellWidth + 1) == grid.cellWidth) return kBlackPixel;
    if (dy % (grid.cellHeight + 1) == grid.cellHeight) return kBlackPixel;
    const uint32_t k = dy / (grid.cellHeight + 1) * 32 + dx / (grid.cellWidth + 1);
    if (k >= palette.Count()) return kBlackPixel;
    const uint8_t* rgb = palette.Colors() + 3 * k;
    return MakePixelWord(rgb[0], rgb[1], rgb[2]);
}

void ExpectPictureOf(Grid grid, const Palette& palette, const PixelStore& store) {
    for (uint32_t y = 0; y < store.height; ++y)
        for (uint32_t x = 0; x < store.width; ++x)
            ASSERT_EQ(store.At(x, y), ExpectedPixel(grid, palette, x, y))
                << "cells " << grid.cellWidth << "x" << grid.cellHeight << ", " << palette.Count()
                << " colours, pixel " << x << "," << y;
    EXPECT_TRUE(store.GuardsIntact());
}

// The highlight of `index` against the same picture without it: rings red, white, white,
// red on the block 4 pixels beyond the cell, everything else unchanged.
void ExpectHighlight(Grid grid, const Palette* palette, uint8_t index) {
    const PixelStore plain = Painted(grid, palette, index, false);
    const PixelStore marked = Painted(grid, palette, index, true);
    const uint32_t left = index % 32 * (grid.cellWidth + 1);
    const uint32_t top = index / 32 * (grid.cellHeight + 1);
    const uint32_t right = left + grid.cellWidth + 7, bottom = top + grid.cellHeight + 7;
    ASSERT_LT(right, marked.width);
    ASSERT_LT(bottom, marked.height);
    for (uint32_t y = 0; y < marked.height; ++y) {
        for (uint32_t x = 0; x < marked.width; ++x) {
            PixelWord expected = plain.At(x, y);
            if (x >= left && x <= right && y >= top && y <= bottom) {
                const uint32_t d = std::min({x - left, y - top, right - x, bottom - y});
                if (d == 0 || d == 3) expected = kRed;
                if (d == 1 || d == 2) expected = kWhitePixel;
            }
            ASSERT_EQ(marked.At(x, y), expected)
                << "index " << int(index) << " pixel " << x << "," << y;
        }
    }
    EXPECT_TRUE(marked.GuardsIntact());
}

TEST(SwatchLayout, CellsOfEightByTenMakeAPictureOf295By95) {
    EXPECT_EQ(SwatchBitmapWidth(8), 295u);
    EXPECT_EQ(SwatchBitmapHeight(10), 95u);
    EXPECT_EQ(SwatchBitmapWidth(0), 39u);
    EXPECT_EQ(SwatchBitmapHeight(0), 15u);
    EXPECT_EQ(SwatchBitmapWidth(0xFFFFFFFF), 0xFFFFFFFFull * 32 + 39) << "no wrap";
}

TEST(SwatchLayout, TheLineRightOfACellAndTheLineUnderItBelongToIt) {
    const auto at = [](int32_t x, int32_t y, int32_t gridX = 0, int32_t gridY = 0) {
        uint32_t index = 0;
        const bool over =
            SwatchIndexAt(SwatchOffset(x, gridX), SwatchOffset(y, gridY), 8, 10, &index);
        return over ? int(index) : -1;
    };
    EXPECT_EQ(at(4, 4), 0) << "the first pixel of index 0";
    EXPECT_EQ(at(12, 4), 0) << "the line right of cell 0";
    EXPECT_EQ(at(13, 4), 1);
    EXPECT_EQ(at(4, 14), 0) << "the line under cell 0";
    EXPECT_EQ(at(4, 15), 32);
    EXPECT_EQ(at(3, 4), -1) << "the frame's margin hits nothing";
    EXPECT_EQ(at(4, 3), -1);
    EXPECT_EQ(at(0, 0), -1);
    EXPECT_EQ(at(3, 3), -1);
    EXPECT_EQ(at(291, 91), 255) << "the last column and row end on the frame's inner ring";
    EXPECT_EQ(at(292, 91), -1);
    EXPECT_EQ(at(291, 92), -1);
    EXPECT_EQ(at(290, 4), 31);
    EXPECT_EQ(at(4, 90), 224);
    // In client coordinates of a grid standing elsewhere, and points far off.
    EXPECT_EQ(at(14, 154, 10, 150), 0);
    EXPECT_EQ(at(13, 154, 10, 150), -1);
    EXPECT_EQ(at(301, 241, 10, 150), 255);
    EXPECT_EQ(at(-32768, 160, 10, 150), -1);
    EXPECT_EQ(at(32767, 32767, -2147483647 - 1, 2147483647), -1);
    uint32_t index = 99;
    EXPECT_TRUE(SwatchIndexAt(0, 0, 0xFFFFFFFF, 0xFFFFFFFF, &index)) << "no division by zero";
    EXPECT_EQ(index, 0u);
}

TEST(SwatchPainter, AFullPaletteFillsEveryCellTheLastAtColumn31Row7) {
    const Palette palette = DistinctPalette(256);
    const Grid grid = {8, 10};
    const PixelStore store = Painted(grid, &palette, 0, false);
    ExpectPictureOf(grid, palette, store);
    // Cell 255: columns 283 to 290, rows 81 to 90; its lines are the frame's inner ring.
    EXPECT_EQ(store.At(283, 81), MakePixelWord(255, 0, 56));
    EXPECT_EQ(store.At(290, 90), MakePixelWord(255, 0, 56));
    EXPECT_EQ(store.At(291, 90), kBlackPixel);
    EXPECT_EQ(store.At(290, 91), kBlackPixel);
    EXPECT_EQ(store.At(292, 90), kWhitePixel);
}

TEST(SwatchPainter, TheWebSafePaletteLeavesItsLast40CellsWhiteAndA216PaletteBlack) {
    Palette webSafe(256);
    FillWebSafeTable(webSafe.Colors());
    Palette first216(216);
    std::memcpy(first216.Colors(), webSafe.Colors(), 216 * 3);
    const Grid grid = {8, 10};
    const PixelStore full = Painted(grid, &webSafe, 0, false);
    const PixelStore short216 = Painted(grid, &first216, 0, false);
    ExpectPictureOf(grid, webSafe, full);
    ExpectPictureOf(grid, first216, short216);
    // Cell 1 is (0, 0, 51); cell 216 (column 24, row 6) is past the end of 216 colours.
    EXPECT_EQ(full.At(13, 4), 0x00000033u);
    EXPECT_EQ(full.At(4 + 24 * 9, 4 + 6 * 11), kWhitePixel);
    EXPECT_EQ(short216.At(4 + 24 * 9, 4 + 6 * 11), kBlackPixel);
    EXPECT_EQ(short216.At(4 + 23 * 9, 4 + 6 * 11), kWhitePixel) << "cell 215 is white";
    EXPECT_EQ(short216.At(290, 90), kBlackPixel);
}

TEST(SwatchPainter, OtherCellSizesAndPalettesOfNoneOrMoreThan256Colours) {
    const Palette many = DistinctPalette(300);
    const Palette none;
    const Palette few = DistinctPalette(33);
    for (const Grid grid : {Grid{1, 1}, Grid{3, 2}, Grid{12, 5}}) {
        ExpectPictureOf(grid, many, Painted(grid, &many, 0, false));
        ExpectPictureOf(grid, none, Painted(grid, &none, 0, false));
        ExpectPictureOf(grid, few, Painted(grid, &few, 0, false));
    }
}

TEST(SwatchPainter, TheHighlightOfZeroCoversTheFramesCornerAnd255EndsOnTheLastPixel) {
    const Palette palette = DistinctPalette(256);
    const Grid grid = {8, 10};
    ExpectHighlight(grid, &palette, 0);
    ExpectHighlight(grid, &palette, 255);
    ExpectHighlight(grid, &palette, 45);
    ExpectHighlight(Grid{3, 2}, &palette, 33);
    ExpectHighlight(Grid{1, 1}, &palette, 255);

    const PixelStore zero = Painted(grid, &palette, 0, true);
    EXPECT_EQ(zero.At(0, 0), kRed) << "block corner at 0, 0";
    EXPECT_EQ(zero.At(15, 17), kRed) << "its last pixel";
    EXPECT_EQ(zero.At(16, 0), kBlackPixel) << "the frame goes on beyond it";
    EXPECT_EQ(zero.At(4, 4), MakePixelWord(0, 255, 1)) << "the cell shows through";
    const PixelStore last = Painted(grid, &palette, 255, true);
    EXPECT_EQ(last.At(279, 77), kRed) << "block corner at 279, 77";
    EXPECT_EQ(last.At(294, 94), kRed) << "last pixel at 294, 94";
    EXPECT_EQ(last.At(280, 78), kWhitePixel);
    EXPECT_EQ(last.At(282, 80), kRed);
    EXPECT_EQ(last.At(283, 81), MakePixelWord(255, 0, 56));

    // A selection past the palette's end stands on a black cell.
    const Palette short216 = DistinctPalette(216);
    ExpectHighlight(grid, &short216, 240);
}

TEST(SwatchPainter, WithoutAPaletteTheGridIsGreyInsideItsFrameAndUnmarked) {
    const Grid grid = {8, 10};
    const PixelStore store = Painted(grid, nullptr, 0, true);
    PixelStore frame(grid.Width(), grid.Height());
    PaintInsetFrame(frame.bits(), frame.width, frame.height);
    for (uint32_t y = 0; y < store.height; ++y) {
        for (uint32_t x = 0; x < store.width; ++x) {
            const bool inside = x >= 4 && y >= 4 && x < store.width - 4 && y < store.height - 4;
            ASSERT_EQ(store.At(x, y), inside ? 0x00808080u : frame.At(x, y)) << x << "," << y;
        }
    }
}

TEST(SwatchPainter, AStoreOfAnotherSizeIsLeftAlone) {
    const Palette palette = DistinctPalette(256);
    for (const auto& [width, height] :
         std::initializer_list<std::pair<uint32_t, uint32_t>>{{294, 95}, {295, 94}, {296, 96}}) {
        PixelStore store(width, height);
        PaintSwatchGrid(store.bits(), width, height, 8, 10, &palette, 255, true);
        const auto pixels = store.Pixels();
        EXPECT_TRUE(
            std::all_of(pixels.begin(), pixels.end(), [](PixelWord p) { return p == kSentinel; }))
            << width << " by " << height;
    }
    PaintSwatchGrid(nullptr, 295, 95, 8, 10, &palette, 0, true);  // no store: nothing happens
}

}  // namespace
}  // namespace tessellum
