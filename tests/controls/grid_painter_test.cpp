// The grid editor's picture and clicks on plain memory: where the lines and cells of each
// GridSize stand, which cell a point and a line belong to, and what each tool does.
#include "controls/grid_painter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <vector>

#include "controls/editor_tool.h"
#include "controls/grid_geometry.h"
#include "controls/grid_stroke.h"
#include "tests/controls/pixel_store.h"

namespace tessellum {
namespace {

using test::DistinctCells;
using test::Framed;
using test::kSentinel;
using test::PixelStore;
using test::WordOf;

constexpr uint32_t kSide = 127;

// The inner grid lines of each GridSize, as the editor's layout lists them; 7, outside
// the valid set, is taken as 6.
const std::map<int, std::vector<uint32_t>> kInnerLines = {
    {2, {63}},
    {3, {43, 83}},
    {4, {33, 63, 93}},
    {5, {27, 51, 75, 99}},
    {6, {23, 43, 63, 83, 103}},
    {7, {23, 43, 63, 83, 103}},
    {8, {18, 33, 48, 63, 78, 93, 108}},
};

PixelStore Painted(PixelStore store, const Pattern& cells, uint8_t gridSize) {
    PaintPatternGrid(store.bits(), store.width, store.height, &cells, gridSize);
    return store;
}

TEST(GridPainter, EveryGridSizeHasItsLinesAndCellsWhereTheLayoutSaysAndClicksHitThem) {
    const Pattern cells = DistinctCells();
    const PixelStore frameOnly = Framed(kSide, kSide);
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

        const PixelStore store = Painted(Framed(kSide, kSide), cells, uint8_t(size));
        // Unframed, every pixel left alone stays the sentinel: only columns 3 to 122 of
        // rows 4 to 123 are written.
        const PixelStore bare = Painted(PixelStore(kSide, kSide), cells, uint8_t(size));
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
                ASSERT_EQ(bare.At(x, y) != kSentinel, inArea) << "pixel " << x << "," << y;
            }
        }
        EXPECT_TRUE(store.GuardsIntact() && bare.GuardsIntact());

        // A point hits the cell it shows; a line belongs to the cell before it, the
        // frame's ring at 123 to the last. Offsets count from bitmap column and row 4.
        const auto hitCell = [&](uint32_t at) { return cellOf(at) - (isLine(at) ? 1 : 0); };
        for (uint32_t p = 0; p < 120; ++p) {
            const GridCell hit = GridCellAt(p, 119 - p, uint8_t(size));
            ASSERT_EQ(hit.column, hitCell(4 + p)) << "offset " << p;
            ASSERT_EQ(hit.row, hitCell(123 - p)) << "offset " << 119 - p;
        }
    }
}

TEST(GridPainter, RepaintsTheWholeAreaAndPaintsAnOddSizeAsTheSizeItIsMadeInto) {
    const Pattern cells = DistinctCells();
    EXPECT_EQ(Painted(Painted(Framed(kSide, kSide), cells, 8), cells, 2).Pixels(),
              Painted(Framed(kSide, kSide), cells, 2).Pixels())
        << "nothing of the 8 by 8 grid stays";
    const std::pair<uint8_t, uint8_t> cases[] = {{0, 2}, {1, 2}, {9, 8}, {255, 8}};
    for (const auto& [stored, shown] : cases) {
        EXPECT_EQ(Painted(Framed(kSide, kSide), cells, stored).Pixels(),
                  Painted(Framed(kSide, kSide), cells, shown).Pixels())
            << "GridSize " << int(stored);
    }
}

// The tools through real clicks are tried under Wine; here what a click cannot show.
TEST(EditorTool, TheDropperLeavesTheCellAndEveryByteOfAColourCounts) {
    const Rgb8 black = {0, 0, 0}, white = {255, 255, 255}, teal = {0, 128, 128};
    Rgb8 cell = teal, fore = black;
    EXPECT_EQ(ApplyEditorTool(kToolEyedropper, cell, fore, white), ToolEffect::kForeColorSet);
    EXPECT_TRUE(SameColor(fore, teal) && SameColor(cell, teal));
    EXPECT_EQ(ApplyEditorTool(kToolEraser, cell, fore, white), ToolEffect::kCellPainted);
    EXPECT_EQ(ApplyEditorTool(kToolEraser, cell, fore, white), ToolEffect::kNone);
    // One byte apart is another colour, in each of the three bytes.
    for (int byte = 0; byte < 3; ++byte) {
        Rgb8 near = teal, target = teal;
        reinterpret_cast<uint8_t*>(&near)[byte] ^= 1;
        EXPECT_EQ(ApplyEditorTool(kToolPencil, target, near, white), ToolEffect::kCellPainted);
    }
    for (int32_t odd : {-1, 3, 1000}) {
        Rgb8 oddCell = teal, oddFore = black;
        EXPECT_EQ(ApplyEditorTool(odd, oddCell, oddFore, white), ToolEffect::kNone);
        EXPECT_TRUE(SameColor(oddCell, teal) && SameColor(oddFore, black));
    }
}

// A drag paints each cell it enters while held, once per entry, with the painting tools
// only; a stroke starts only on a cell and ends with the button.
TEST(GridStroke, PaintsEachCellEnteredWhileTheButtonIsHeld) {
    const struct {
        bool held, over;
        GridCell cell;
        bool paints;
    } moves[] = {{true, true, {0, 0}, false},  {true, true, {0, 1}, true},
                 {true, false, {0, 1}, false}, {true, true, {0, 1}, true},
                 {false, true, {1, 2}, false}, {true, true, {1, 3}, false}};
    GridStroke pencil, dropper, offGrid;
    pencil.Begin(kToolPencil, true, {0, 0});
    for (const auto& m : moves)
        EXPECT_EQ(pencil.Enter(m.held, m.over, m.cell), m.paints) << m.cell.row << m.cell.column;
    dropper.Begin(kToolEyedropper, true, {0, 0});
    offGrid.Begin(kToolPencil, false, {0, 0});
    EXPECT_FALSE(dropper.Enter(true, true, {1, 0}) || offGrid.Enter(true, true, {1, 0}));
}

}  // namespace
}  // namespace tessellum
