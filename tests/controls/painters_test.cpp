// The painters of the controls' pictures on plain memory, as small pictures of the pixels
// that matter, and the hit arithmetic of the grid editor and the swatches at its bounds.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "color/palette.h"
#include "controls/color_box_painters.h"
#include "controls/grid_geometry.h"
#include "controls/grid_painter.h"
#include "controls/pattern_painters.h"
#include "controls/pixel_painters.h"
#include "controls/swatch_layout.h"
#include "controls/swatch_painter.h"

namespace tessellum {
namespace {

constexpr PixelWord kSentinel = 0x00123456, kGuard = 0xDEADBEEF;

// One character a pixel: # black, - white, + grey, * the highlight's red, . not written,
// '0' + k for the colour (1, 2, k) of cell or swatch k, ! anything else.
char Glyph(PixelWord p) {
    if (p >> 8 == 0x0102) return char('0' + (p & 0xFF));
    switch (p) {
        case kBlackPixel: return '#';
        case kWhitePixel: return '-';
        case 0x808080: return '+';
        case 0xFF0000: return '*';
        case kSentinel: return '.';
    }
    return '!';
}

// `width` by `height` sentinel words between two guard words that no painter may touch.
struct Store {
    Store(uint32_t width, uint32_t height, bool framed = false)
        : width(width), height(height), words(size_t(width) * height + 2, kSentinel) {
        words.front() = words.back() = kGuard;
        if (framed) PaintInsetFrame(bits(), width, height);
    }
    PixelWord* bits() { return words.data() + 1; }
    PixelWord At(uint32_t x, uint32_t y) const { return words[1 + size_t(y) * width + x]; }
    bool Untouched() const { return words == Store(width, height).words; }
    // The pixels where the columns `xs` cross the rows `ys`, a row a line.
    std::string Picture(const std::vector<uint32_t>& xs, const std::vector<uint32_t>& ys) const {
        EXPECT_TRUE(words.front() == kGuard && words.back() == kGuard) << "a guard was hit";
        std::string out;
        for (uint32_t y : ys) {
            for (uint32_t x : xs) out += Glyph(At(x, y));
            out += '\n';
        }
        return out;
    }
    std::string Picture(uint32_t left, uint32_t top, uint32_t w, uint32_t h) const {
        std::vector<uint32_t> xs, ys;
        for (uint32_t i = 0; i < w; ++i) xs.push_back(left + i);
        for (uint32_t i = 0; i < h; ++i) ys.push_back(top + i);
        return Picture(xs, ys);
    }
    uint32_t width, height;
    std::vector<PixelWord> words;
};

// Cell (r, c) shows as '0' + 8r + c.
Pattern Cells() {
    Pattern cells;
    for (int k = 0; k < 64; ++k) cells.Cell(k / 8, k % 8) = {1, 2, uint8_t(k)};
    return cells;
}

TEST(PixelWord, IsRedGreenBlueFromTheHighByteDownSoBlueFirstInMemory) {
    Store store(3, 1);
    FillPixels(store.bits(), 3, 1, 0xA1, 0xB2, 0xC3);
    const std::vector<uint8_t> bytes(reinterpret_cast<uint8_t*>(store.bits() + 2),
                                     reinterpret_cast<uint8_t*>(store.bits() + 3));
    EXPECT_EQ(bytes, (std::vector<uint8_t>{0xC3, 0xB2, 0xA1, 0}));
}

TEST(ColorBoxPainters, FramesFillsAndTheSplitBoxsWhiteLineUnderTheNewColour) {
    Store split(11, 13, true);
    PaintBoxColor(split.bits(), 11, 13, kFramedColorBox, 1, 2, 9);
    PaintSplitColor(split.bits(), 11, 13, 1, 2, 5);  // half (13 - 8) / 2 = 2 rows
    EXPECT_EQ(split.Picture(0, 0, 11, 13),
              "###########\n#---------#\n#---------#\n#--#####--#\n#--#555#--#\n#--#555#--#\n"
              "#--#---#--#\n#--#999#--#\n#--#999#--#\n#--#####--#\n#---------#\n#---------#\n"
              "###########\n");
    Store one(9, 9), narrow(3, 5, true), flat(5, 4), line(4, 1);
    PaintSplitColor(one.bits(), 9, 9, 1, 2, 5);  // one row inside: the white line alone
    PaintBoxColor(flat.bits(), 5, 4, kFlatColorBox, 1, 2, 7);
    PaintBoxColor(line.bits(), 4, 1, kFlatColorBox, 1, 2, 7);
    EXPECT_EQ(one.Picture(3, 3, 3, 3) + narrow.Picture(0, 0, 3, 5) + flat.Picture(0, 0, 5, 4) +
                  line.Picture(0, 0, 4, 1),
              "...\n.-.\n...\n"
              "###\n#-#\n#-#\n#-#\n###\n"
              "#####\n#777#\n#777#\n#####\n"
              "####\n");
}

TEST(GridPainter, LinesEveryPitchRepaintedWholeAndClicksOnALineGoToTheCellBefore) {
    const Pattern cells = Cells();
    Store grid(127, 127), twice(127, 127, true), once(127, 127, true);
    PaintPatternGrid(grid.bits(), 127, 127, &cells, 3);  // pitch 40: lines at 43 and 83
    const std::vector<uint32_t> at = {3, 4, 42, 43, 44, 82, 83, 84, 122, 123, 124};
    EXPECT_EQ(grid.Picture(at, at),
              "...........\n#00#11#22..\n#00#11#22..\n#########..\n#88#99#::..\n#88#99#::..\n"
              "#########..\n#@@#AA#BB..\n#@@#AA#BB..\n#########..\n...........\n");
    PaintPatternGrid(twice.bits(), 127, 127, &cells, 8);
    PaintPatternGrid(twice.bits(), 127, 127, &cells, 7);  // shown as 6
    PaintPatternGrid(once.bits(), 127, 127, &cells, 6);
    EXPECT_EQ(twice.words, once.words) << "nothing of the 8 by 8 grid stays";

    // Offsets from the first cell pixel: row, column.
    const int hits[][5] = {{39, 40, 3, 1, 0},
                           {40, 79, 3, 1, 1},
                           {119, 80, 3, 2, 2},
                           {14, 105, 8, 7, 0},
                           {0, 59, 2, 0, 0}};
    for (const auto& h : hits) {
        const GridCell cell = GridCellAt(h[0], h[1], uint8_t(h[2]));
        EXPECT_EQ(cell.row * 10 + cell.column, h[3] * 10 + h[4]) << h[0] << "," << h[1];
    }
}

TEST(TilePreview, RepeatsTheSquareInForceFromTheFramesInnerCorner) {
    const Pattern cells = Cells();
    const auto tile = [&](uint8_t gridSize) {
        Store store(16, 12, true);
        DrawTilePreview(store.bits(), 16, 12, &cells, gridSize);
        return store;
    };
    EXPECT_EQ(tile(3).Picture(3, 3, 10, 6),
              "##########\n#01201201#\n#89:89:89#\n#@AB@AB@A#\n#01201201#\n##########\n");
    EXPECT_EQ(tile(7).words, tile(6).words);
    EXPECT_EQ(tile(0).words, tile(2).words);
}

TEST(QuadrantBox, RingsAndGreyCrossRoundTheFourCornerCellsAndWhiteOnBlackWhenSolid) {
    Pattern cells = Cells();
    Store box(127, 127, true);
    DrawQuadrantBox(box.bits(), 127, 127, &cells);
    const std::vector<uint32_t> at = {69, 70, 71, 73, 74, 88, 89, 90, 104, 105, 107, 108, 109};
    EXPECT_EQ(box.Picture(at, at),
              ".............\n.###########.\n.#---------#.\n.#-#######-#.\n.#-#00+11#-#.\n"
              ".#-#00+11#-#.\n.#-#+++++#-#.\n.#-#88+99#-#.\n.#-#88+99#-#.\n.#-#######-#.\n"
              ".#---------#.\n.###########.\n.............\n");
    // A solid tile, in the smallest store that holds the box; one byte off is two colours.
    cells.Cell(0, 1) = cells.Cell(1, 0) = cells.Cell(1, 1) = cells.Cell(0, 0);
    Store small(109, 109);
    DrawQuadrantBox(small.bits(), 109, 109, &cells);
    EXPECT_EQ(small.Picture({70, 71, 73, 74}, {70, 71, 73, 74}), "----\n-###\n-#--\n-#-0\n");
    cells.Cell(1, 1).blue = 1;
    DrawQuadrantBox(small.bits(), 109, 109, &cells);
    EXPECT_EQ(small.Picture({70, 71, 73, 74}, {70, 71, 73, 74}), "####\n#---\n#-##\n#-#0\n");
}

TEST(NoColorCross, TwoDiagonalsTheSecondOnePixelRightOfTheMirror) {
    Store store(13, 12, true);
    DrawNoColorCross(store.bits(), 13, 12);
    EXPECT_EQ(store.Picture(3, 3, 7, 6), "#######\n##----#\n#-#--##\n#--##-#\n#--##-#\n#######\n");
}

// Colour k of a palette is (1, 2, k).
Palette Swatches(uint32_t count) {
    Palette palette(count);
    for (uint32_t k = 0; k < count; ++k) {
        uint8_t* rgb = palette.Colors() + 3 * k;
        rgb[0] = 1, rgb[1] = 2, rgb[2] = uint8_t(k);
    }
    return palette;
}

TEST(SwatchPainter, CellsLinesAndFrameBlackPastThePaletteAndTheHighlightOverThem) {
    // Cells of 8 by 10: column j at 4 + 9j, its line at 12 + 9j; band b at 4 + 11b, its
    // line at 14 + 11b; the last ones on the frame's inner ring. 40 colours, 33 marked.
    const Palette forty = Swatches(40), full = Swatches(256);
    Store store(295, 95), none(295, 95), first(295, 95), last(295, 95);
    PaintSwatchGrid(store.bits(), 295, 95, 8, 10, &forty, 33, true);
    EXPECT_EQ(
        store.Picture({3, 4, 11, 12, 13, 20, 21, 290, 291}, {3, 4, 13, 14, 15, 24, 25, 90, 91}),
        "#########\n#00#11#O#\n#0-----O#\n##-****##\n#P-*QQ*##\n#P-*QQ*##\n##-****##\n"
        "#########\n#########\n");
    // No palette: grey, and no highlight even when it is on.
    PaintSwatchGrid(none.bits(), 295, 95, 8, 10, nullptr, 0, true);
    EXPECT_EQ(none.Picture({0, 3, 4}, {0, 3, 4}), "###\n###\n##+\n");
    // The highlight of 0 covers the frame's corner; that of 255 ends on the last pixel.
    PaintSwatchGrid(first.bits(), 295, 95, 8, 10, &forty, 0, true);
    PaintSwatchGrid(last.bits(), 295, 95, 8, 10, &forty, 255, true);
    EXPECT_EQ(first.Picture({0, 1, 15, 16}, {0, 1, 17, 18}), "***#\n*-*-\n***Q\n#-QQ\n");
    EXPECT_EQ(last.Picture({278, 279, 293, 294}, {76, 77, 93, 94}), "##-#\n#***\n-*-*\n#***\n");
    PaintSwatchGrid(none.bits(), 295, 95, 8, 10, &full, 0, false);
    EXPECT_EQ(none.At(283, 81), MakePixelWord(1, 2, 255)) << "the last cell";
}

TEST(SwatchLayout, TheLineRightOfACellAndTheLineUnderItBelongToIt) {
    // Point, the grid's place, the index hit or -1: the lines right of and under cell 0,
    // the frame's margin, the last cell to the frame's inner ring, a grid elsewhere, far off.
    const int32_t cases[][5] = {{12, 4, 0, 0, 0},
                                {13, 4, 0, 0, 1},
                                {4, 14, 0, 0, 0},
                                {4, 15, 0, 0, 32},
                                {3, 4, 0, 0, -1},
                                {4, 3, 0, 0, -1},
                                {291, 91, 0, 0, 255},
                                {292, 91, 0, 0, -1},
                                {291, 92, 0, 0, -1},
                                {14, 154, 10, 150, 0},
                                {13, 154, 10, 150, -1},
                                {-32768, 160, 10, 150, -1},
                                {32767, 32767, INT32_MIN, INT32_MAX, -1}};
    for (const auto& c : cases) {
        uint32_t index = 0;
        const bool over =
            SwatchIndexAt(SwatchOffset(c[0], c[2]), SwatchOffset(c[1], c[3]), 8, 10, &index);
        EXPECT_EQ(over ? int(index) : -1, c[4]) << c[0] << "," << c[1];
    }
    uint32_t index = 99;
    EXPECT_TRUE(SwatchIndexAt(0, 0, 0xFFFFFFFF, 0xFFFFFFFF, &index)) << "no division by zero";
    EXPECT_EQ(index, 0u);
    EXPECT_EQ(SwatchBitmapWidth(0xFFFFFFFF), 0xFFFFFFFFull * 32 + 39) << "no wrap";
}

// What no painter may write into: a store without an inside or of another size, or no
// pattern or no store at all; and the cross in stores of odd shapes stays in them.
TEST(Painters, LeaveAStoreWithoutRoomOrPatternAlone) {
    const Pattern cells = Cells();
    const Palette palette = Swatches(256);
    const auto paint = [&](int painter, PixelWord* b, uint32_t w, uint32_t h, bool pattern) {
        const Pattern* p = pattern ? &cells : nullptr;
        switch (painter) {
            case 0: return FillInside(b, w, h, 1, 2, 3);
            case 1: return PaintSplitColor(b, w, h, 1, 2, 3);
            case 2: return DrawTilePreview(b, w, h, p, 2);
            case 3: return DrawQuadrantBox(b, w, h, p);
            case 4: return PaintPatternGrid(b, w, h, p, 2);
            case 5: return PaintSwatchGrid(b, w, h, 8, 10, &palette, 255, true);
            case 6: return PaintInsetFrame(b, w, h);
            case 7: return PaintThinFrame(b, w, h);
            default: return FillPixels(b, w, h, 1, 2, 3);
        }
    };
    const uint32_t cases[][4] = {
        {0, 8, 20, 1},    {0, 20, 8, 1},    {1, 8, 20, 1},    {2, 8, 8, 1},
        {2, 127, 127, 0}, {3, 108, 127, 1}, {3, 127, 108, 1}, {3, 127, 127, 0},
        {4, 123, 127, 1}, {4, 127, 123, 1}, {4, 127, 127, 0}, {5, 294, 95, 1},
        {5, 296, 96, 1},  {6, 0, 0, 1},     {7, 0, 0, 1},     {8, 0, 0, 1}};
    for (const auto& c : cases) {
        Store store(c[1], c[2]);
        paint(int(c[0]), store.bits(), c[1], c[2], c[3]);
        EXPECT_TRUE(store.Untouched()) << "painter " << c[0] << ", " << c[1] << " by " << c[2];
    }
    for (int painter = 0; painter <= 8; ++painter) paint(painter, nullptr, 295, 95, true);
    for (int painter = 0; painter <= 8; ++painter) paint(painter, nullptr, 127, 127, true);
    for (const auto& [w, h] : {std::pair<uint32_t, uint32_t>{10, 30}, {3, 12}, {12, 5}}) {
        Store store(w, h);
        DrawNoColorCross(store.bits(), w, h);
        store.Picture({}, {});  // checks the guards
    }
    DrawNoColorCross(nullptr, 20, 20);
}

}  // namespace
}  // namespace tessellum
