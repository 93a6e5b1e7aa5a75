// The grid editor's picture and clicks on plain memory: where the lines and cells of each
// GridSize stand, which cell a point and a line belong to, and what each tool does.
#include "controls/grid_painter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <vector>

#include "controls/editor_tool.h"
#include "controls/grid_geometry.h"
#include "controls/pixel_painters.h"
#include "tests/pixel_store.h"

namespace tessellum {
namespace {

using test::DistinctCells;
using test::kSentinel;
using test::PixelStore;
using test::WordOf;

constexpr uint32_t kSide = 127;
constexpr PixelWord kRed = 0x00FF0000;
constexpr PixelWord kGreen = 0x0000FF00;

// The inner grid lines of each GridSize, as the editor's layout lists them.
const std::map<int, std::vector<uint32_t>> kInnerLines = {
    {2, {63}},
    {3, {43, 83}},
    {4, {33, 63, 93}},
    {5, {27, 51, 75, 99}},
    {6, {23, 43, 63, 83, 103}},
    {8, {18, 33, 48, 63, 78, 93, 108}},
};

PixelStore FramedStore() {
    PixelStore store(kSide, kSide);
    PaintInsetFrame(store.bits(), kSide, kSide);
    return store;
}

void Paint(PixelStore& store, const Pattern& cells, uint8_t gridSize) {
    PaintPatternGrid(store.bits(), store.width, store.height, &cells, gridSize);
}

TEST(GridPainter, TwoByTwoRedAndGreenSplitAtColumnAndRowSixtyThree) {
    Pattern cells = DistinctCells();
    cells.Cell(0, 0) = {255, 0, 0};
    cells.Cell(0, 1) = {0, 255, 0};
    PixelStore store = FramedStore();
    Paint(store, cells, 2);
    for (uint32_t y = 4; y <= 62; ++y) {
        for (uint32_t x = 4; x <= 62; ++x) ASSERT_EQ(store.At(x, y), kRed) << x << "," << y;
        for (uint32_t x = 64; x <= 122; ++x) ASSERT_EQ(store.At(x, y), kGreen) << x << "," << y;
    }
    for (uint32_t y = 4; y <= 123; ++y) EXPECT_EQ(store.At(63, y), kBlackPixel) << "row " << y;
    for (uint32_t x = 3; x <= 122; ++x) EXPECT_EQ(store.At(x, 63), kBlackPixel) << "column " << x;
    EXPECT_EQ(store.At(4, 64), WordOf(cells.Cell(1, 0)));
    EXPECT_EQ(store.At(122, 122), WordOf(cells.Cell(1, 1)));
}

TEST(GridPainter, EveryGridSizeHasItsLinesAndCellsWhereTheLayoutSays) {
    const Pattern cells = DistinctCells();
    const PixelStore frameOnly = FramedStore();
    for (const auto& [size, inner] : kInnerLines) {
        SCOPED_TRACE(testing::Message() << "GridSize " << size);
        // Boundaries of the cells: the frame's ring at 3, the inner lines, the ring at 123.
        std::vector<uint32_t> lines = {3};
        lines.insert(lines.end(), inner.begin(), inner.end());
        lines.push_back(123);
        const auto cellOf = [&](uint32_t at) {
            return int(std::upper_bound(lines.begin(), lines.end(), at) - lines.begin()) - 1;
        };
        const auto isLine = [&](uint32_t at) {
            return std::find(lines.begin(), lines.end(), at) != lines.end();
        };
        EXPECT_EQ(GridPitch(uint8_t(size)), int32_t(lines[1] - lines[0]));

        PixelStore store = FramedStore();
        Paint(store, cells, uint8_t(size));
        for (uint32_t y = 0; y < kSide; ++y) {
            for (uint32_t x = 0; x < kSide; ++x) {
                const bool inArea = x >= 3 && x <= 122 && y >= 4 && y <= 123;
                PixelWord expected = frameOnly.At(x, y);
                if (inArea && !isLine(x) && !isLine(y)) {
                    expected = WordOf(cells.Cell(cellOf(y), cellOf(x)));
                } else if (inArea) {
                    expected = kBlackPixel;
                }
                ASSERT_EQ(store.At(x, y), expected) << "pixel " << x << "," << y;
            }
        }
        EXPECT_TRUE(store.GuardsIntact());
    }
}

TEST(GridPainter, WritesOnlyColumnsThreeTo122OfRowsFourTo123) {
    const Pattern cells = DistinctCells();
    for (uint8_t size : {2, 3, 4, 5, 6, 8}) {
        PixelStore store(kSide, kSide);  // no frame: every pixel left alone stays the sentinel
        Paint(store, cells, size);
        for (uint32_t y = 0; y < kSide; ++y) {
            for (uint32_t x = 0; x < kSide; ++x) {
                const bool written = x >= 3 && x <= 122 && y >= 4 && y <= 123;
                ASSERT_EQ(store.At(x, y) != kSentinel, written)
                    << "GridSize " << int(size) << " pixel " << x << "," << y;
            }
        }
        EXPECT_TRUE(store.GuardsIntact());
    }
}

TEST(GridPainter, ASmallerSizeRepaintsTheWholeAreaAndShowsOnlyTheCorner) {
    const Pattern cells = DistinctCells();
    PixelStore fromEight = FramedStore();
    Paint(fromEight, cells, 8);
    Paint(fromEight, cells, 2);
    PixelStore direct = FramedStore();
    Paint(direct, cells, 2);
    EXPECT_EQ(fromEight.Pixels(), direct.Pixels()) << "nothing of the 8 by 8 grid stays";
    // Only the corner's four colours (and black) appear.
    for (uint32_t y = 4; y <= 122; ++y) {
        for (uint32_t x = 4; x <= 122; ++x) {
            const PixelWord p = direct.At(x, y);
            ASSERT_TRUE(p == kBlackPixel || p == WordOf(cells.Cell(0, 0)) ||
                        p == WordOf(cells.Cell(0, 1)) || p == WordOf(cells.Cell(1, 0)) ||
                        p == WordOf(cells.Cell(1, 1)))
                << x << "," << y;
        }
    }
}

TEST(GridPainter, AGridSizeOutsideTheValidSetPaintsAsTheSizeItIsMadeInto) {
    const Pattern cells = DistinctCells();
    const std::pair<uint8_t, uint8_t> cases[] = {{0, 2}, {1, 2}, {7, 6}, {9, 8}, {255, 8}};
    for (const auto& [stored, shown] : cases) {
        PixelStore odd = FramedStore();
        Paint(odd, cells, stored);
        PixelStore valid = FramedStore();
        Paint(valid, cells, shown);
        EXPECT_EQ(odd.Pixels(), valid.Pixels()) << "GridSize " << int(stored);
    }
}

TEST(GridPainter, LeavesASmallStoreOrAMissingPatternAlone) {
    const Pattern cells = DistinctCells();
    PixelStore narrow(123, kSide);
    PaintPatternGrid(narrow.bits(), 123, kSide, &cells, 2);
    PixelStore low(kSide, 123);
    PaintPatternGrid(low.bits(), kSide, 123, &cells, 2);
    PixelStore noPattern(kSide, kSide);
    PaintPatternGrid(noPattern.bits(), kSide, kSide, nullptr, 2);
    PaintPatternGrid(nullptr, kSide, kSide, &cells, 2);
    for (const PixelStore* store : {&narrow, &low, &noPattern}) {
        const auto pixels = store->Pixels();
        EXPECT_TRUE(
            std::all_of(pixels.begin(), pixels.end(), [](PixelWord p) { return p == kSentinel; }));
        EXPECT_TRUE(store->GuardsIntact());
    }
}

TEST(GridHit, TheAreaIsBitmapColumnsAndRowsFourTo123) {
    // Offsets count from bitmap column and row 4.
    EXPECT_FALSE(InGridArea(-1, 0)) << "column 3, the first grid line, is outside";
    EXPECT_FALSE(InGridArea(0, -1));
    EXPECT_TRUE(InGridArea(0, 0));
    EXPECT_TRUE(InGridArea(119, 119)) << "column 123, the frame's black ring, is inside";
    EXPECT_FALSE(InGridArea(120, 0)) << "column 124 is outside";
    EXPECT_FALSE(InGridArea(0, 120));
    EXPECT_FALSE(InGridArea(-40000, 5));
    for (uint8_t size : {2, 3, 4, 5, 6, 8}) {
        const GridCell last = GridCellAt(119, 119, size);
        EXPECT_EQ(last.column, size - 1) << "the ring belongs to the last cell column";
        EXPECT_EQ(last.row, size - 1);
    }
}

TEST(GridHit, AtEightAPointFourteenInIsColumnZeroAndFifteenIsColumnOne) {
    EXPECT_EQ(GridCellAt(14, 0, 8).column, 0) << "px 14 is the line at bitmap column 18";
    EXPECT_EQ(GridCellAt(15, 0, 8).column, 1);
    EXPECT_EQ(GridCellAt(119, 0, 8).column, 7);
    EXPECT_EQ(GridCellAt(0, 14, 8).row, 0);
    EXPECT_EQ(GridCellAt(0, 15, 8).row, 1);
    EXPECT_EQ(GridCellAt(58, 59, 2).column, 0);
    EXPECT_EQ(GridCellAt(59, 59, 2).column, 0) << "the line at bitmap column 63";
    EXPECT_EQ(GridCellAt(60, 59, 2).column, 1);
    EXPECT_EQ(GridCellAt(0, 59, 2).row, 0);
    EXPECT_EQ(GridCellAt(0, 60, 2).row, 1);
    EXPECT_EQ(GridCellAt(119, 119, 7).column, 5) << "7 is taken as 6";
}

TEST(GridHit, APointOnACellHitsThatCellAndALineHitsTheCellBeforeIt) {
    // Read against the painted picture: along the first pixel row of cell row 0.
    const Pattern cells = DistinctCells();
    for (uint8_t size : {2, 3, 4, 5, 6, 8}) {
        PixelStore store = FramedStore();
        Paint(store, cells, size);
        for (int px = 0; px < 120; ++px) {
            const GridCell hit = GridCellAt(px, 0, size);
            const PixelWord shown = store.At(uint32_t(4 + px), 4);
            if (shown == kBlackPixel) {
                // A line: its cell is the one just left of it, and the next pixel starts
                // the next cell (or the frame's ring closes the last one).
                ASSERT_EQ(hit.column, GridCellAt(px - 1, 0, size).column) << int(size) << " " << px;
                if (px < 119)
                    ASSERT_EQ(GridCellAt(px + 1, 0, size).column, hit.column + 1);
                else
                    ASSERT_EQ(hit.column, size - 1);
            } else {
                ASSERT_EQ(shown, WordOf(cells.Cell(0, hit.column))) << int(size) << " " << px;
            }
        }
    }
}

TEST(EditorTool, PencilAndEraserPaintTheCellAndTheDropperTakesItsColour) {
    const Rgb8 black = {0, 0, 0}, white = {255, 255, 255}, teal = {0, 128, 128};
    Rgb8 cell = teal, fore = black;
    EXPECT_EQ(ApplyEditorTool(kToolPencil, cell, fore, white), ToolEffect::kCellPainted);
    EXPECT_TRUE(SameColor(cell, black));
    EXPECT_EQ(ApplyEditorTool(kToolPencil, cell, fore, white), ToolEffect::kNone)
        << "the cell has the fore colour already";

    EXPECT_EQ(ApplyEditorTool(kToolEraser, cell, fore, white), ToolEffect::kCellPainted);
    EXPECT_TRUE(SameColor(cell, white));
    EXPECT_TRUE(SameColor(fore, black)) << "the eraser leaves the fore colour";
    EXPECT_EQ(ApplyEditorTool(kToolEraser, cell, fore, white), ToolEffect::kNone);

    cell = teal;
    EXPECT_EQ(ApplyEditorTool(kToolEyedropper, cell, fore, white), ToolEffect::kForeColorSet);
    EXPECT_TRUE(SameColor(fore, teal));
    EXPECT_TRUE(SameColor(cell, teal)) << "the dropper leaves the cell";
    EXPECT_EQ(ApplyEditorTool(kToolEyedropper, cell, fore, white), ToolEffect::kNone);

    // One byte apart is another colour, in each of the three bytes.
    for (int byte = 0; byte < 3; ++byte) {
        Rgb8 near = teal;
        reinterpret_cast<uint8_t*>(&near)[byte] ^= 1;
        Rgb8 target = teal;
        EXPECT_EQ(ApplyEditorTool(kToolPencil, target, near, white), ToolEffect::kCellPainted);
    }
    for (int32_t odd : {-1, 3, 1000}) {
        Rgb8 oddCell = teal, oddFore = black;
        EXPECT_EQ(ApplyEditorTool(odd, oddCell, oddFore, white), ToolEffect::kNone);
        EXPECT_TRUE(SameColor(oddCell, teal) && SameColor(oddFore, black));
    }
}

}  // namespace
}  // namespace tessellum
