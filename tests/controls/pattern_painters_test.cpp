// The pictures of a Pattern in the preview bitmaps, pixel by pixel: the tile at true size,
// the magnified 2x2 box with its rings and cross, and the no-colour cross; and that no
// painter of the editor's bitmaps writes into a store it does not fit.
#include "controls/pattern_painters.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "color/palette.h"
#include "controls/grid_painter.h"
#include "controls/swatch_painter.h"
#include "tests/controls/pixel_store.h"

namespace tessellum {
namespace {

using test::DistinctCells;
using test::Framed;
using test::PixelStore;
using test::WordOf;

constexpr PixelWord kGrey = 0x00808080;

bool InFrame(const PixelStore& store, uint32_t x, uint32_t y) {
    return std::min({x, y, store.width - 1 - x, store.height - 1 - y}) < 4;
}

TEST(TilePreview, RepeatsTheSquareInForceWithThePhaseStartingAtTheFrame) {
    const Pattern cells = DistinctCells();
    // The stored GridSize and the square shown; an odd size is taken as a valid one.
    for (const auto& [stored, shown] : std::initializer_list<std::pair<uint8_t, uint32_t>>{
             {3, 3}, {2, 2}, {8, 8}, {7, 6}, {0, 2}, {50, 8}}) {
        const uint32_t width = 23 + shown, height = 17 + 2 * shown;
        const PixelStore frame = Framed(width, height);
        PixelStore store = Framed(width, height);
        DrawTilePreview(store.bits(), width, height, &cells, stored);
        for (uint32_t y = 0; y < height; ++y) {
            for (uint32_t x = 0; x < width; ++x) {
                const PixelWord expected =
                    InFrame(store, x, y) ? frame.At(x, y)
                                         : WordOf(cells.Cell((y - 4) % shown, (x - 4) % shown));
                ASSERT_EQ(store.At(x, y), expected)
                    << "GridSize " << int(stored) << " at " << x << "," << y;
            }
        }
        EXPECT_TRUE(store.GuardsIntact());
    }
}

// The quadrant box as its layout describes it, pixel (x, y) of its 39 by 39 at (70, 70):
// rings of the line colour 0 and 3 from its edge on the field colour, the grey cross at
// 19, the four cells of the tile's corner in their quadrants.
void ExpectBox(const PixelStore& store, const Pattern& cells, PixelWord line, PixelWord field) {
    for (uint32_t y = 0; y < 39; ++y) {
        for (uint32_t x = 0; x < 39; ++x) {
            const uint32_t d = std::min({x, y, 38 - x, 38 - y});
            const PixelWord expected = d == 0 || d == 3     ? line
                                       : d < 3              ? field
                                       : x == 19 || y == 19 ? kGrey
                                                            : WordOf(cells.Cell(y > 19, x > 19));
            ASSERT_EQ(store.At(70 + x, 70 + y), expected) << "box pixel " << x << "," << y;
        }
    }
}

TEST(QuadrantBox, BlackRingsOnWhiteButWhiteOnBlackForASolidTileAndTheCellsInTheirPlaces) {
    Pattern cells = DistinctCells();     // four different cells, so each place is told apart
    cells.Cell(2, 2) = {255, 255, 255};  // beyond the 2x2 corner: plays no part
    PixelStore store = Framed(127, 127);
    const PixelStore before = store;
    DrawQuadrantBox(store.bits(), 127, 127, &cells);
    ExpectBox(store, cells, kBlackPixel, kWhitePixel);
    for (uint32_t y = 0; y < 127; ++y) {
        for (uint32_t x = 0; x < 127; ++x) {
            if (x < 70 || x > 108 || y < 70 || y > 108) {
                ASSERT_EQ(store.At(x, y), before.At(x, y)) << "outside the box " << x << "," << y;
            }
        }
    }

    // A solid tile: white rings on black; three equal cells and one a single byte off
    // make a two-colour tile again. The smallest store that holds the box will do.
    cells.Cell(0, 0) = cells.Cell(0, 1) = cells.Cell(1, 0) = cells.Cell(1, 1) = {51, 102, 153};
    PixelStore small(109, 109);
    DrawQuadrantBox(small.bits(), 109, 109, &cells);
    ExpectBox(small, cells, kWhitePixel, kBlackPixel);
    EXPECT_TRUE(small.GuardsIntact());
    cells.Cell(1, 1).blue = 154;
    DrawQuadrantBox(small.bits(), 109, 109, &cells);
    ExpectBox(small, cells, kBlackPixel, kWhitePixel);
}

TEST(NoColorCross, TwoDiagonalsTheSecondOnePixelRightOfTheMirror) {
    // The first runs (4, 4) to (15, 15); the second from the ring at (16, 4) to (5, 15).
    const uint32_t side = 20;
    const PixelStore frame = Framed(side, side);
    PixelStore store = Framed(side, side);
    DrawNoColorCross(store.bits(), side, side);
    for (uint32_t y = 0; y < side; ++y) {
        for (uint32_t x = 0; x < side; ++x) {
            PixelWord expected = InFrame(store, x, y) ? frame.At(x, y) : kWhitePixel;
            if (y >= 4 && y <= 15 && (x == y || x == side - y)) expected = kBlackPixel;
            ASSERT_EQ(store.At(x, y), expected) << x << "," << y;
        }
    }
    EXPECT_TRUE(store.GuardsIntact());
}

TEST(Painters, LeaveAStoreTooSmallOrOfAnotherSizeOrWithoutAPatternAlone) {
    const Pattern cells = DistinctCells();
    PixelStore tiny(8, 8), narrow(108, 127), low(127, 108), noPattern(127, 127);
    PixelStore narrowGrid(123, 127), lowGrid(127, 123), narrowSwatches(294, 95),
        wideSwatches(296, 96);
    const Palette palette(256);
    PaintSwatchGrid(narrowSwatches.bits(), 294, 95, 8, 10, &palette, 255, true);
    PaintSwatchGrid(wideSwatches.bits(), 296, 96, 8, 10, &palette, 255, true);
    PaintSwatchGrid(nullptr, 295, 95, 8, 10, &palette, 0, true);
    DrawTilePreview(tiny.bits(), 8, 8, &cells, 2);  // no inside
    DrawQuadrantBox(narrow.bits(), 108, 127, &cells);
    DrawQuadrantBox(low.bits(), 127, 108, &cells);
    PaintPatternGrid(narrowGrid.bits(), 123, 127, &cells, 2);
    PaintPatternGrid(lowGrid.bits(), 127, 123, &cells, 2);
    DrawTilePreview(noPattern.bits(), 127, 127, nullptr, 2);
    DrawQuadrantBox(noPattern.bits(), 127, 127, nullptr);
    PaintPatternGrid(noPattern.bits(), 127, 127, nullptr, 2);
    DrawTilePreview(nullptr, 127, 127, &cells, 2);  // no store: nothing happens
    DrawQuadrantBox(nullptr, 127, 127, &cells);
    PaintPatternGrid(nullptr, 127, 127, &cells, 2);
    for (const PixelStore* store :
         {&tiny, &narrow, &low, &noPattern, &narrowGrid, &lowGrid, &narrowSwatches, &wideSwatches})
        EXPECT_TRUE(store->Untouched()) << store->width << " by " << store->height;
    // The cross in a store taller than it is wide, or too small: nothing beyond it.
    for (const auto& [width, height] :
         std::initializer_list<std::pair<uint32_t, uint32_t>>{{10, 30}, {3, 12}, {12, 5}}) {
        PixelStore store(width, height);
        DrawNoColorCross(store.bits(), width, height);
        EXPECT_TRUE(store.GuardsIntact()) << width << " by " << height;
    }
}

}  // namespace
}  // namespace tessellum
