// The controls without windows (the real dialog, tests/dialog, clicks their middles): the
// painters as small pictures of the pixels that matter, the hit arithmetic at its edges,
// the slider panel's painting and bars; and the art, read through the tests' own reader.
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <string>
#include <tuple>
#include <vector>

#include "color/palette.h"
#include "controls/color_box_painters.h"
#include "controls/color_pair_layout.h"
#include "controls/color_text.h"
#include "controls/dpi_scale.h"
#include "controls/grid_geometry.h"
#include "controls/grid_painter.h"
#include "controls/pattern_painters.h"
#include "controls/pixel_painters.h"
#include "controls/rgb_slider_logic.h"
#include "controls/swatch_layout.h"
#include "controls/swatch_painter.h"
#include "tests/support/art_file_reader.h"
#include "tools/art/art_files.h"

namespace tessellum {
namespace {

constexpr PixelWord kSentinel = 0x00123456, kGuard = 0xDEADBEEF;

// One character a pixel: # black, - white, + grey, * the highlight's red, . not written,
// '0' + k for the colour (1, 2, k) of cell or swatch k, ! anything else.
char Glyph(PixelWord p) {
    const std::pair<PixelWord, char> named[] = {
        {kBlackPixel, '#'}, {kWhitePixel, '-'}, {0x808080, '+'}, {0xFF0000, '*'}, {kSentinel, '.'}};
    for (const auto& [word, glyph] : named)
        if (p == word) return glyph;
    return p >> 8 == 0x0102 ? char('0' + (p & 0xFF)) : '!';
}

std::vector<uint32_t> Span(uint32_t from, uint32_t count) {
    std::vector<uint32_t> span(count);
    std::iota(span.begin(), span.end(), from);
    return span;
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
    uint32_t width, height;
    std::vector<PixelWord> words;
};

// Cell (r, c) shows as '0' + 8r + c.
Pattern Cells() {
    Pattern cells;
    for (int k = 0; k < 64; ++k) cells.Cell(k / 8, k % 8) = {1, 2, uint8_t(k)};
    return cells;
}

TEST(ColorBoxPainters, FramesFillsAndTheSplitBoxsWhiteLineUnderTheNewColour) {
    Store split(11, 13, true);
    PaintBoxColor(split.bits(), 11, 13, kFramedColorBox, 1, 2, 9);
    PaintSplitColor(split.bits(), 11, 13, 1, 2, 5);  // half (13 - 8) / 2 = 2 rows
    EXPECT_EQ(split.Picture(Span(0, 11), Span(0, 13)),
              "###########\n#---------#\n#---------#\n#--#####--#\n#--#555#--#\n#--#555#--#\n"
              "#--#---#--#\n#--#999#--#\n#--#999#--#\n#--#####--#\n#---------#\n#---------#\n"
              "###########\n");
    Store one(9, 9), narrow(3, 5, true), flat(5, 4), line(4, 1);
    PaintSplitColor(one.bits(), 9, 9, 1, 2, 5);  // one row inside: the white line alone
    PaintBoxColor(flat.bits(), 5, 4, kFlatColorBox, 1, 2, 7);
    PaintBoxColor(line.bits(), 4, 1, kFlatColorBox, 1, 2, 7);
    EXPECT_EQ(one.Picture(Span(3, 3), Span(3, 3)) + narrow.Picture(Span(0, 3), Span(0, 5)) +
                  flat.Picture(Span(0, 5), Span(0, 4)) + line.Picture(Span(0, 4), Span(0, 1)),
              "...\n.-.\n...\n###\n#-#\n#-#\n#-#\n###\n#####\n#777#\n#777#\n#####\n####\n");
}

TEST(GridPainter, LinesEveryPitchRepaintedWholeAndClicksOnALineGoToTheCellBefore) {
    const Pattern cells = Cells();
    Store grid(127, 127), once(127, 127);
    PaintPatternGrid(grid.bits(), 127, 127, &cells, 8);
    PaintPatternGrid(grid.bits(), 127, 127, &cells, 3);  // pitch 40: lines at 43 and 83
    PaintPatternGrid(once.bits(), 127, 127, &cells, 3);
    EXPECT_EQ(grid.words, once.words) << "nothing of the 8 by 8 grid stays";
    const std::vector<uint32_t> at = {3, 4, 42, 43, 44, 82, 83, 84, 122, 123, 124};
    EXPECT_EQ(grid.Picture(at, at),
              "...........\n#00#11#22..\n#00#11#22..\n#########..\n#88#99#::..\n#88#99#::..\n"
              "#########..\n#@@#AA#BB..\n#@@#AA#BB..\n#########..\n...........\n");

    // Offsets x, y from the first cell pixel, GridSize: the row and column hit.
    const int hits[][5] = {
        {39, 40, 3, 1, 0}, {40, 79, 3, 1, 1}, {119, 80, 3, 2, 2}, {14, 105, 8, 7, 0}};
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
    EXPECT_EQ(tile(3).Picture(Span(3, 10), Span(3, 6)),
              "##########\n#01201201#\n#89:89:89#\n#@AB@AB@A#\n#01201201#\n##########\n");
    EXPECT_EQ(tile(7).words, tile(6).words);
}

TEST(QuadrantBox, RingsAndGreyCrossRoundTheFourCornerCellsAndWhiteOnBlackWhenSolid) {
    Pattern cells = Cells();
    Store box(127, 127, true);
    DrawQuadrantBox(box.bits(), 127, 127, &cells);
    const std::vector<uint32_t> at = {69, 70, 71, 73, 74, 89, 90, 105, 107, 108, 109};
    EXPECT_EQ(box.Picture(at, at),
              "...........\n.#########.\n.#-------#.\n.#-#####-#.\n.#-#0+1#-#.\n.#-#+++#-#.\n"
              ".#-#8+9#-#.\n.#-#####-#.\n.#-------#.\n.#########.\n...........\n");
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
    EXPECT_EQ(store.Picture(Span(3, 7), Span(3, 6)),
              "#######\n##----#\n#-#--##\n#--##-#\n#--##-#\n#######\n");
}

// Colour k of a palette is (1, 2, k).
Palette Swatches(uint32_t count) {
    Palette palette(count);
    for (uint32_t i = 0; i < 3 * count; ++i) palette.Colors()[i] = i % 3 < 2 ? 1 + i % 3 : i / 3;
    return palette;
}

TEST(SwatchPainter, CellsLinesAndFrameBlackPastThePaletteAndTheHighlightOverThem) {
    // Cells of 8 by 10: column j at 4 + 9j, its line at 12 + 9j; band b at 4 + 11b, its
    // line at 14 + 11b; the last ones on the frame's inner ring. 40 colours, 33 marked.
    const Palette forty = Swatches(40), full = Swatches(256);
    Store store(295, 95), none(295, 95), last(295, 95);
    PaintSwatchGrid(store.bits(), 295, 95, 8, 10, &forty, 33, true);
    EXPECT_EQ(
        store.Picture({3, 4, 11, 12, 13, 20, 21, 290, 291}, {3, 4, 13, 14, 15, 24, 25, 90, 91}),
        "#########\n#00#11#O#\n#0-----O#\n##-****##\n#P-*QQ*##\n#P-*QQ*##\n##-****##\n"
        "#########\n#########\n");
    // No palette: grey, and no highlight even when it is on.
    PaintSwatchGrid(none.bits(), 295, 95, 8, 10, nullptr, 0, true);
    EXPECT_EQ(none.Picture({0, 3, 4}, {0, 3, 4}), "###\n###\n##+\n");
    // The highlight of 255 covers the frame's corner and ends on the last pixel.
    PaintSwatchGrid(last.bits(), 295, 95, 8, 10, &forty, 255, true);
    EXPECT_EQ(last.Picture({278, 279, 293, 294}, {76, 77, 93, 94}), "##-#\n#***\n-*-*\n#***\n");
    PaintSwatchGrid(none.bits(), 295, 95, 8, 10, &full, 0, false);
    EXPECT_EQ(none.At(283, 81), MakePixelWord(1, 2, 255)) << "the last cell";
}

TEST(SwatchLayout, TheLineRightOfACellAndTheLineUnderItBelongToIt) {
    // Point and the index hit or -1: the lines right of and under cell 0, the frame's
    // margin, the last cell to the frame's inner ring; then a grid at (10, 150).
    const int32_t cases[][3] = {{12, 4, 0},    {13, 4, 1},   {4, 14, 0},     {4, 15, 32},
                                {3, 4, -1},    {4, 3, -1},   {291, 91, 255}, {292, 91, -1},
                                {291, 92, -1}, {14, 154, 0}, {13, 154, -1},  {-32768, 160, -1}};
    for (size_t i = 0; i < std::size(cases); ++i) {
        const int32_t* c = cases[i];
        const int32_t gridX = i < 9 ? 0 : 10, gridY = i < 9 ? 0 : 150;
        uint32_t index = 0;
        const bool over =
            SwatchIndexAt(SwatchOffset(c[0], gridX), SwatchOffset(c[1], gridY), 8, 10, &index);
        EXPECT_EQ(over ? int(index) : -1, c[2]) << c[0] << "," << c[1];
    }
}

// What no painter may write into: a store without an inside or of another size, or no
// pattern; and the cross in stores of odd shapes stays in them.
TEST(Painters, LeaveAStoreWithoutRoomOrPatternAlone) {
    const Pattern cells = Cells();
    const Palette palette = Swatches(256);
    Store narrow(8, 20), low(20, 8), tiny(8, 8), box1(108, 127), box2(127, 108), grid1(123, 127),
        grid2(127, 123), swatches1(294, 95), swatches2(296, 96), none(127, 127);
    FillInside(narrow.bits(), 8, 20, 1, 2, 3);
    FillInside(low.bits(), 20, 8, 1, 2, 3);
    PaintSplitColor(narrow.bits(), 8, 20, 1, 2, 3);
    DrawTilePreview(tiny.bits(), 8, 8, &cells, 2);
    DrawQuadrantBox(box1.bits(), 108, 127, &cells);
    DrawQuadrantBox(box2.bits(), 127, 108, &cells);
    PaintPatternGrid(grid1.bits(), 123, 127, &cells, 2);
    PaintPatternGrid(grid2.bits(), 127, 123, &cells, 2);
    PaintSwatchGrid(swatches1.bits(), 294, 95, 8, 10, &palette, 255, true);
    PaintSwatchGrid(swatches2.bits(), 296, 96, 8, 10, &palette, 255, true);
    DrawTilePreview(none.bits(), 127, 127, nullptr, 2);
    DrawQuadrantBox(none.bits(), 127, 127, nullptr);
    PaintPatternGrid(none.bits(), 127, 127, nullptr, 2);
    for (const Store* store :
         {&narrow, &low, &tiny, &box1, &box2, &grid1, &grid2, &swatches1, &swatches2, &none})
        EXPECT_EQ(store->words, Store(store->width, store->height).words) << store->width;
    for (const auto& [w, h] : {std::pair<uint32_t, uint32_t>{10, 30}, {3, 12}, {12, 5}}) {
        Store store(w, h);
        DrawNoColorCross(store.bits(), w, h);
        store.Picture({}, {});  // checks the guards
    }
}

intptr_t LParam(int x, int y) {
    return intptr_t(uint32_t(uint16_t(y)) << 16 | uint16_t(x));
}

TEST(ColorPairRegion, ResetThenSwapThenForeOverBackThenNothingAtEachEdge) {
    using R = ColorPairRegion;
    const ColorPairParts parts = LayoutColorPair(0, 0, 80, 40, 12, 10, 10);  // the dialog's
    // Small boxes' corners, the arrow's, the square both large boxes share, the back box's.
    const std::tuple<int, int, R> points[] = {
        {12, 52, R::kReset},   {27, 67, R::kReset},   {11, 52, R::kNone},    {63, 23, R::kSwap},
        {64, 14, R::kNone},    {32, 32, R::kForeBox}, {47, 47, R::kForeBox}, {48, 47, R::kBackBox},
        {71, 71, R::kBackBox}, {72, 60, R::kNone},    {0, 0, R::kNone}};
    for (const auto& [x, y, region] : points)
        EXPECT_EQ(FindColorPairRegion(parts, x, y), region) << x << "," << y;
}

// Writes down every drawing call, and keeps the bars in plain memory; placed with the
// dialog's numbers: bars at x 100 and y 50, 75, 100.
struct Panel : RgbSliderLogic<Panel> {
    Panel() : RgbSliderLogic(11) {
        for (auto& bar : bars) bar.assign(kSliderBarWidth * 11, kSentinel);
        Start();
        SetPosition(100, 50, 25);
        SetEnabled(true, true);
        log.clear();
    }
    std::vector<PixelWord> Bar(int row, uint32_t memoryRow) const {
        const PixelWord* line = bars[row].data() + memoryRow * kSliderBarWidth;
        return {line[0], line[1], line[128], line[129]};
    }
    void Note(const std::string& what, int32_t px, int32_t py) {
        log += what + " " + std::to_string(px) + "," + std::to_string(py) + "; ";
    }
    SliderBarPixels BarPixels(int row) { return {bars[row].data(), kSliderBarWidth, 11}; }
    void BlitBar(int row, int32_t px, int32_t py) { Note("bar" + std::to_string(row), px, py); }
    bool HasBackground() const { return true; }
    void BlitBackground(int32_t px, int32_t py) { Note("backdrop", px, py); }
    void DrawPicture(int32_t px, int32_t py, uint32_t id) { Note(std::to_string(id), px, py); }
    bool BeginText() { return textPossible; }
    void Text(int32_t px, int32_t py, const char* text, int n) {
        Note("'" + std::string(text, n) + "'", px, py);
    }
    void EndText() {}
    void CaptureMouse() {}
    void ReleaseMouse() {}
    void StartRepeatTimer() {}
    void StopRepeatTimer() {}
    using RgbSliderLogic::dragRow;

    std::string log;
    std::vector<PixelWord> bars[kRowCount];
    bool textPossible = true;
};

TEST(RgbSliderLogic, PaintsRowsArrowsAndLabelsInPlaceAndASetRefillsTheOtherBars) {
    Panel panel;
    panel.Repaint(false);
    panel.Repaint(true);
    // The backdrop, alone and then with the rest: each bar, its thumb 11 below its top at
    // x + v/2 - 4, and 3 above it the decimal at x + 160, letter at x - 28, hex at x + 210;
    // the arrows 8 before and 132 after each bar; the letters and column heads.
    EXPECT_EQ(panel.log,
              "backdrop -15,28; backdrop -15,28; bar0 100,50; 327 96,61; '0    ' 260,47; 'R: ' "
              "72,47; '00 ' 310,47; bar1 100,75; 327 96,86; '0    ' 260,72; 'G: ' 72,72; '00 ' "
              "310,72; bar2 100,100; 327 96,111; '0    ' 260,97; 'B: ' 72,97; '00 ' 310,97; 335 "
              "92,50; 330 232,50; 335 92,75; 330 232,75; 335 92,100; 330 232,100; 'R:' 72,47; "
              "'G:' 72,72; 'B:' 72,97; 'Dec' 260,30; 'Hex' 310,30; ");
    // A set wipes the thumb (328) and draws it anew, then the other rows, then its own.
    panel.log.clear();
    EXPECT_TRUE(panel.SetRed(200));
    EXPECT_EQ(panel.log,
              "328 96,61; 327 196,61; '200  ' 260,47; 'R: ' 72,47; 'C8 ' 310,47; bar1 100,75; "
              "327 96,86; '0    ' 260,72; 'G: ' 72,72; '00 ' 310,72; bar2 100,100; 327 96,111; "
              "'0    ' 260,97; 'B: ' 72,97; '00 ' 310,97; bar0 100,50; 327 196,61; '200  ' "
              "260,47; 'R: ' 72,47; 'C8 ' 310,47; ");
    // Each bar shows its channel from 0 in steps of 2 over columns 1 to 128, the others
    // as they stand; its border is never written.
    panel.SetGreen(100);
    panel.SetBlue(7);
    EXPECT_EQ(panel.Bar(0, 5), (std::vector<PixelWord>{kSentinel, 0x006407, 0xFE6407, kSentinel}));
    EXPECT_EQ(panel.Bar(1, 9), (std::vector<PixelWord>{kSentinel, 0xC80007, 0xC8FE07, kSentinel}));
    EXPECT_EQ(panel.Bar(2, 1), (std::vector<PixelWord>{kSentinel, 0xC86400, 0xC864FE, kSentinel}));
    EXPECT_EQ(panel.Bar(2, 10), std::vector<PixelWord>(4, kSentinel));

    // Without a device context the texts are skipped; the same value reports no change.
    panel.textPossible = false;
    panel.log.clear();
    EXPECT_FALSE(panel.SetRed(200));
    EXPECT_EQ(panel.log.find('\''), std::string::npos) << panel.log;
    // Disabled: white bars; a set stores and draws nothing, though it reports the change.
    panel.SetEnabled(false, true);
    panel.log.clear();
    EXPECT_TRUE(panel.SetGreen(10));
    panel.Repaint(true);
    EXPECT_EQ(panel.Green(), 100);
    EXPECT_EQ(panel.log, "");
    EXPECT_EQ(panel.Bar(0, 5),
              (std::vector<PixelWord>{kSentinel, kWhitePixel, kWhitePixel, kSentinel}));
}

TEST(RgbSliderLogic, ThumbsHitTenBySixAndDragToEvenValuesThen255ArrowsHitSixByEleven) {
    Panel panel;
    panel.SetBlue(255);   // blue's thumb: left 100 + 127 - 4 = 223, top 100 + 11 = 111
    panel.SetGreen(100);  // green's: left 100 + 50 - 4 = 146, top 75 + 11 = 86
    const int thumbs[][3] = {{145, 86, 3},  {156, 86, 3}, {150, 85, 3},  {150, 92, 3},
                             {222, 111, 3}, {146, 86, 1}, {223, 111, 2}, {155, 91, 1}};
    for (const auto& [px, py, row] : thumbs) {
        panel.HandleMouseUp();
        EXPECT_FALSE(panel.HandleMouseDown(LParam(px, py))) << "a hit changes no value";
        EXPECT_EQ(panel.dragRow, row) << px << "," << py;
    }
    // Only x counts: even values from the bar's left edge, 252 one short of its right
    // end, then 255.
    const int drags[][3] = {{101, -300, 2},  {-2000, 900, 0}, {163, 0, 126}, {226, 0, 252},
                            {227, 900, 255}, {4100, 0, 255},  {99, 0, 0}};
    for (const auto& [px, py, value] : drags) {
        panel.HandleMouseMove(LParam(px, py));
        EXPECT_EQ(panel.Green(), value) << "dragged to " << px << "," << py;
    }
    panel.HandleMouseUp();
    EXPECT_FALSE(panel.HandleMouseMove(LParam(150, 0))) << "the drag has ended";

    // Blue's right arrow: x + 132 to x + 138 across, y + 50 to y + 61 down; a step up to
    // the end. Green's left arrow from x - 8, a step at the press and one on each tick.
    panel.SetBlue(254);
    for (const auto& [px, py] : {std::pair{238, 100}, {235, 111}, {231, 105}, {98, 105}})
        EXPECT_FALSE(panel.HandleMouseDown(LParam(px, py)) || panel.HandleTimer()) << px;
    EXPECT_TRUE(panel.HandleMouseDown(LParam(237, 110)));
    EXPECT_EQ(panel.Blue(), 255);
    EXPECT_FALSE(panel.HandleTimer()) << "255 is the end";
    panel.HandleMouseUp();
    panel.SetGreen(10);
    EXPECT_TRUE(panel.HandleMouseDown(LParam(92, 75)) && panel.HandleTimer());
    EXPECT_EQ(panel.Green(), 8);
}

// Typed and pasted text: each case is a text, whether it is a whole colour (and which),
// and whether the whole colour's field may hold it while it is typed.
TEST(ColorText, TheFiveFormsOfAColourAndWhatTypingMayLeadTo) {
    const struct {
        const char* text;
        int64_t color;  // 0xRRGGBB, or -1: not a colour
        bool typable;
    } cases[] = {
        {"#3C78B4", 0x3C78B4, true},
        {"3c78b4", 0x3C78B4, true},
        {"#FFF", 0xFFFFFF, true},
        {"#0a5", 0x00AA55, true},
        {"rgb(60, 120, 180)", 0x3C78B4, true},
        {"RGB ( 0,0,255 )", 0x0000FF, true},
        {"60,120,180", 0x3C78B4, true},
        {" 1 , 2 , 3 ", 0x010203, true},
        {"  #3C78B4\r\n", 0x3C78B4, true},
        {"007,0,255", 0x0700FF, true},
        {"255,255,255", 0xFFFFFF, true},  // beginnings that more typing can finish
        {"", -1, true},
        {"  ", -1, true},
        {"#", -1, true},
        {"#3C78B", -1, true},
        {"123", -1, true},
        {"rg", -1, true},
        {"rgb(1,2,3", -1, true},
        {"12, 3", -1, true},
        {"rgb(1, 2,", -1, true},  // and texts that nothing can finish
        {"#GG0000", -1, false},
        {"rgb(256,0,0)", -1, false},
        {"256,0,0", -1, false},
        {"1000,0,0", -1, false},
        {"#3C78B45", -1, false},
        {"#3C78 ", -1, false},
        {"# 3C78B4", -1, false},
        {"0x3C78B4", -1, false},
        {"1,2,3,", -1, false},
        {"1 2 3", -1, false},
        {"rgb(1,,2,3)", -1, false},
        {"rgb(1,2,3))", -1, false},
        {"-1,0,0", -1, false},
        {"r,", -1, false},
        {"rgb(1\t2,3)", -1, false},
    };
    for (const auto& c : cases) {
        Rgb8 color = {7, 7, 7};
        const bool parsed = ParseColorText(c.text, &color);
        EXPECT_EQ(parsed ? (color.red << 16) | (color.green << 8) | color.blue : -1, c.color)
            << "\"" << c.text << "\"";
        EXPECT_EQ(ColorTextTypable(c.text), c.typable) << "\"" << c.text << "\"";
    }
    // One channel in its column: digits only, in range; the empty field may be typed on.
    const struct {
        const char* text;
        bool hex;
        int value;  // -1: refused
    } channels[] = {{"0", false, 0},     {"255", false, 255}, {"007", false, 7}, {"256", false, -1},
                    {"1000", false, -1}, {"ff", false, -1},   {" 1", false, -1}, {"-1", false, -1},
                    {"3c", true, 60},    {"Ff", true, 255},   {"0", true, 0},    {"100", true, -1},
                    {"g", true, -1},     {"", true, -1},      {"", false, -1}};
    for (const auto& [text, hex, value] : channels) {
        uint8_t read = 99;
        EXPECT_EQ(ParseChannelText(text, hex, &read) ? read : -1, value) << text << " " << hex;
        EXPECT_EQ(ChannelTextTypable(text, hex), value >= 0 || *text == '\0') << text;
    }
}

// The read-outs' boxes stand 3 left of and 2 above the texts that the panel draws, scaled
// from 96 DPI; a click finds a box at its edges, and Tab goes round the rows.
TEST(ReadoutBounds, OverTheTextsAtEveryScaleAndHitAtTheirEdges) {
    using C = ReadoutColumn;
    const auto box = [](int32_t row, C column, int32_t dpi) {
        const ControlBounds b = ReadoutBounds(100, 50, ScaleToDpi(25, dpi), row, column, dpi);
        return std::vector<int32_t>{b.left, b.top, b.right, b.bottom};
    };
    Panel panel;  // bars at x 100, y 50
    panel.Repaint(true);
    for (int32_t row = kSliderHeadRow; row < 3; ++row) {
        for (C column : {C::kDecimal, C::kHex}) {
            const std::vector<int32_t> b = box(row, column, 96);
            const std::string at = " " + std::to_string(b[0] + 3) + "," + std::to_string(b[1] + 2);
            EXPECT_NE(panel.log.find(at + ";"), std::string::npos) << row << at << panel.log;
        }
    }
    EXPECT_EQ(box(0, C::kDecimal, 96), (std::vector<int32_t>{257, 45, 287, 62}));
    EXPECT_EQ(box(kSliderHeadRow, C::kHex, 96), (std::vector<int32_t>{307, 28, 379, 45}));
    // 150%: each offset scaled on its own, halves away from zero as MulDiv rounds: the
    // text 160 x 1.5 = 240 right of the bar, the box 3 x 1.5 = 4.5, so 5, left of it.
    EXPECT_EQ(box(1, C::kDecimal, 144), (std::vector<int32_t>{335, 80, 381, 106}));
    EXPECT_EQ(box(kSliderHeadRow, C::kHex, 144), (std::vector<int32_t>{410, 17, 519, 43}));
    EXPECT_EQ(box(2, C::kHex, 192), (std::vector<int32_t>{514, 140, 562, 174}));
    const struct {
        int32_t x, y, row;
        C column;
    } points[] = {{257, 45, 0, C::kDecimal},
                  {286, 61, 0, C::kDecimal},
                  {287, 50, kNoReadout, C::kDecimal},
                  {256, 50, kNoReadout, C::kDecimal},
                  {307, 70, 1, C::kHex},
                  {330, 111, 2, C::kHex},
                  {320, 44, kSliderHeadRow, C::kHex},
                  {378, 28, kSliderHeadRow, C::kHex},
                  {270, 30, kNoReadout, C::kDecimal},
                  {300, 80, kNoReadout, C::kDecimal}};
    for (const auto& p : points) {
        const ReadoutHit hit = FindReadout(100, 50, 25, p.x, p.y, 96);
        EXPECT_EQ(hit.row, p.row) << p.x << "," << p.y;
        if (hit.row != kNoReadout) {
            EXPECT_EQ(hit.column, p.column) << p.x << "," << p.y;
        }
    }
    EXPECT_EQ(FindReadout(100, 50, 38, 336, 80, 144).row, 1);
    EXPECT_EQ(NextReadoutRow(0, false), 1);
    EXPECT_EQ(NextReadoutRow(2, false), 0);
    EXPECT_EQ(NextReadoutRow(0, true), 2);
    EXPECT_EQ(NextReadoutRow(2, true), 1);
}

// Every 96-DPI size at the common display scales, by hand: lines stay whole pixels, the
// cells of the grid and the swatches stay uniform, and a place where a thing is drawn
// still hits it, as at 96 DPI.
TEST(DisplayScale, SizesAtEachDpiAndClicksWhereThingsAreDrawn) {
    struct Row {
        int32_t dpi, line, bar, barHeight, box, gridSide, pitch8, cellW, cellH, swatchW;
    };
    const Row rows[] = {
        {96, 1, 130, 11, 39, 127, 15, 8, 10, 295},   {120, 1, 163, 14, 49, 157, 18, 10, 12, 359},
        {144, 2, 195, 17, 58, 194, 22, 11, 14, 430}, {168, 2, 228, 19, 68, 224, 26, 13, 17, 494},
        {192, 2, 260, 22, 78, 254, 30, 16, 20, 590}, {288, 3, 390, 33, 117, 381, 45, 24, 30, 885}};
    EXPECT_EQ(ScaleToDpi(-115, 144), -173) << "halves away from zero, as MulDiv";
    for (const Row& r : rows) {
        SCOPED_TRACE(r.dpi);
        const int32_t dpi = r.dpi;
        const QuadrantBoxGeometry box = QuadrantBoxAt(dpi);
        const SwatchCells cells = SwatchCellsAt(8, 10, dpi);
        EXPECT_EQ(std::vector<int64_t>(
                      {LineWidth(dpi), SliderBarWidth(dpi), ScaleToDpi(kSliderBarHeight, dpi),
                       box.side, GridLayoutAt(2, dpi).side, GridLayoutAt(8, dpi).pitch, cells.width,
                       cells.height, int64_t(SwatchBitmapWidth(cells.width, cells.line))}),
                  std::vector<int64_t>({r.line, r.bar, r.barHeight, r.box, r.gridSide, r.pitch8,
                                        r.cellW, r.cellH, r.swatchW}));
        EXPECT_EQ(box.side, 9 * box.line + 2 * box.quadrant) << "two equal quadrants";
        EXPECT_EQ(UnscaleFromDpi(ScaleToDpi(64, dpi), dpi), 64);

        // A drag to the place of 64 at 96 DPI gives 128; the thumb's middle column stands
        // over the column that shows its value; the arrows are hit where they are drawn.
        const int32_t barX = 100;
        EXPECT_EQ(DragValue(barX + ScaleToDpi(64, dpi), barX, dpi), 128);
        EXPECT_EQ(DragValue(barX + SliderBarWidth(dpi), barX, dpi), 255);
        for (int value : {0, 1, 128, 254, 255}) {
            const int32_t apex = ThumbLeft(barX, uint8_t(value), dpi) + SliderThumbWidth(dpi) / 2;
            const int32_t column = apex - barX - LineWidth(dpi);  // inside the border
            EXPECT_EQ(2 * (column * 128 / SliderBarColumns(dpi)), value & ~1) << value;
            EXPECT_LT(column - 1, SliderBarColumns(dpi));
        }
        const ControlBounds right = RightArrowBounds(barX, 50, dpi);
        EXPECT_EQ(right.bottom - right.top, ArtSize(11, dpi));
        EXPECT_GE(right.left, barX + SliderBarWidth(dpi)) << "after the bar";

        // Every cell of every GridSize as wide as the others, the grid in its picture, and
        // cell (r, c) hit at its middle and on the line after it.
        for (uint8_t size : {2, 3, 4, 5, 6, 8}) {
            const GridLayout grid = GridLayoutAt(size, dpi);
            EXPECT_EQ(grid.span, size * grid.pitch);
            EXPECT_LE(grid.origin + grid.span + 3 * grid.line, grid.side);
            for (int k = 0; k < size; ++k) {
                GridCell cell = {-1, -1}, onLine = {-1, -1};
                const int64_t middle = grid.origin + k * grid.pitch + grid.pitch / 2;
                const int64_t line = grid.origin + (k + 1) * grid.pitch - 1;
                ASSERT_TRUE(GridCellAtPoint(middle, line, grid, &cell) &&
                            GridCellAtPoint(line, middle, grid, &onLine));
                EXPECT_EQ(cell.row * 10 + cell.column, k * 10 + k);
                EXPECT_EQ(onLine.row * 10 + onLine.column, k * 10 + k);
            }
            GridCell none;
            EXPECT_FALSE(GridCellAtPoint(grid.origin - 1, grid.origin, grid, &none));
            EXPECT_FALSE(GridCellAtPoint(grid.origin, grid.origin + grid.span, grid, &none));
        }
        // Swatch n at the middle of where it is drawn.
        for (uint32_t n : {0u, 5u, 37u, 255u}) {
            const int32_t x = 10 + int32_t(cells.line * 4 + (n % 32) * (cells.width + cells.line) +
                                           cells.width / 2);
            const int32_t y =
                150 +
                int32_t(cells.line * 4 + (n / 32) * (cells.height + cells.line) + cells.height / 2);
            uint32_t index = 999;
            EXPECT_TRUE(SwatchIndexAt(SwatchOffset(x, 10, cells.line),
                                      SwatchOffset(y, 150, cells.line), cells.width, cells.height,
                                      &index, cells.line));
            EXPECT_EQ(index, n);
        }
    }
    // Swatches in a room narrower than their scaled grid: the largest pitch that fits,
    // still one for all; at 96 DPI the dialog's room gives the dialog's cells.
    const SwatchCells narrow = SwatchCellsAt(8, 10, 120, 340, 110);
    EXPECT_EQ(std::vector<uint32_t>({narrow.width, narrow.height}), std::vector<uint32_t>({9, 11}));
    EXPECT_LE(SwatchBitmapWidth(narrow.width, 1), 340u);
    EXPECT_EQ(
        SwatchCellsAt(8, 10, 96, 299, 97).width * 100 + SwatchCellsAt(8, 10, 96, 299, 97).height,
        810u);
    // The pictures: a step per 25% up to 300%, the one below for a DPI between.
    EXPECT_EQ(ArtResourceId(330, 96) + ArtResourceId(330, 130) + ArtResourceId(330, 400),
              330u + 1330 + 8330);
    EXPECT_EQ(ArtSize(6, 130), ScaleToDpi(6, 120));
}

// The scaled grid, swatches and quadrant box at 144 DPI: lines two pixels wide, the slack
// round an 8x8 grid grey, the frame's rings two pixels each.
TEST(DisplayScale, PaintersDrawTwoPixelLinesAt144) {
    const Pattern cells = Cells();
    const GridLayout grid = GridLayoutAt(8, 144);  // pitch 22, slack 4: frame at 2
    Store picture(194, 194);
    PaintPatternGridFrame(picture.bits(), 194, 194, 8, 144);
    PaintPatternGrid(picture.bits(), 194, 194, &cells, 8, 144);
    EXPECT_EQ(grid.offset, 2);
    // Grey slack, the frame's rings of 2 from column 2, cell 0 from 10 to 29, its line 30
    // and 31, cell 1 from 32.
    const std::vector<uint32_t> at = {1, 2, 3, 4, 5, 8, 9, 10, 11, 29, 30, 31, 32, 33};
    EXPECT_EQ(picture.Picture(at, {1, 2, 9, 10, 11}),
              "!!!!!!!!!!!!!!\n!#############\n!##--#########\n!##--##000##11\n!##--##000##11\n");
    const Palette palette = Swatches(40);
    const SwatchCells swatch = SwatchCellsAt(8, 10, 144);  // 11 by 14, lines of 2
    Store swatches(430, 142);
    PaintSwatchGrid(swatches.bits(), 430, 142, swatch.width, swatch.height, &palette, 1, true,
                    swatch.line);
    // Cell 0 from 8 to 18, its line 19 and 20, cell 1 from 21; the highlight of 1 from
    // column 13 down to row 29, rings of 2; row 29 is in cell 32.
    EXPECT_EQ(swatches.Picture({0, 2, 7, 8, 12, 13, 18, 19, 21, 30}, {8, 29}),
              "#-#00*-*11\n#-#PP*****\n");
    Store box(200, 200);
    // At 105, side 58: rings of 2, quadrants of 20 from 113 and 135, the cross at 133.
    DrawQuadrantBox(box.bits(), 200, 200, &cells, 144);
    EXPECT_EQ(box.Picture({104, 105, 106, 107, 112, 113, 132, 133, 135, 162, 163},
                          {105, 107, 113, 133, 135}),
              ".#########.\n.##------#.\n.##-#00+1#.\n.##-#++++#.\n.##-#88+9#.\n");
}

using namespace art;
using namespace test;

ArtImage Load(const std::string& file) {
    ArtImage image;
    std::string error;
    const std::vector<uint8_t> bytes = ReadFileBytes(TESSELLUM_ART_DIR "/" + file);
    EXPECT_TRUE(file.find(".cur") != std::string::npos ? DecodeCursorFile(bytes, image, error)
                                                       : DecodeBitmapFile(bytes, image, error))
        << file << ": " << error;
    return image;
}

TEST(ArtText, RefusesDamagedTextAndSaysWhere) {
    const std::pair<const char*, const char*> cases[] = {
        {"#.\n", "line 1"},                                     // rows before the size
        {"bitmap 2 2\n#.\n#\n", "line 3"},                      // a short row
        {"bitmap 2 2\n#.\n#.#\n", "line 3"},                    // a long row
        {"bitmap 2 2\n#x\n##\n", "line 2"},                     // an unknown pixel
        {"bitmap 2 2\n##\n", "line 2"},                         // too few rows
        {"bitmap 2 1\n##\n##\n", "line 3"},                     // too many rows
        {"bitmap 0 4\n", "line 1"},                             // no size
        {"bitmap 2\n", "line 1"},                               // half a size line
        {"cursor 2 2 2 0\n##\n##\n", "line 1"},                 // hot spot outside
        {"cursor 2 2 0 0\nselected x\n##\n##\n", "line 4"},     // a cursor has no selected form
        {"bitmap 3 3\nselected x\n###\n#.#\n#..\n", "line 5"},  // frame not black
        {"// nothing\n", "line 1"},
    };
    for (const auto& [text, where] : cases) {
        ArtPicture picture;
        std::string error;
        EXPECT_FALSE(ParseArtText(text, picture, error)) << text;
        EXPECT_EQ(error.rfind(where, 0), 0u) << text << " gave: " << error;
    }
}

TEST(ArtFiles, BitmapFileIsFourBitsWithPaddedRowsBottomUp) {
    ArtPicture picture;
    std::string error;
    ASSERT_TRUE(ParseArtText("// a comment\n\nbitmap 3 2\r\n#.-\n..#\n", picture, error)) << error;
    const std::vector<uint8_t> bytes = BitmapFileBytes(picture);
    // 14 + 40 + 16 colours, then two rows of 3 pixels at 4 bits, each padded to 4 bytes.
    ASSERT_EQ(bytes.size(), 14u + 40 + 64 + 8);
    EXPECT_EQ(bytes[10], 118) << "the pixels' offset";
    EXPECT_EQ(bytes[14 + 14], 4) << "bits per pixel";
    // The bottom row (". . #") comes first: white, white, black, padding.
    EXPECT_EQ(std::vector<uint8_t>(bytes.begin() + 118, bytes.begin() + 122),
              (std::vector<uint8_t>{(kWhiteIndex << 4) | kWhiteIndex, kBlackIndex << 4, 0, 0}));
    ArtImage image;
    ASSERT_TRUE(DecodeBitmapFile(bytes, image, error)) << error;
    EXPECT_EQ(image.pixels, (std::vector<uint32_t>{kArtBlack, kArtWhite, kArtGrey, kArtWhite,
                                                   kArtWhite, kArtBlack}));
}

// Bitmaps: four bits of black, white and dialog grey. Cursors: monochrome, mostly see-
// through, a white body in a black outline, the hot spot on the drawing. The tool buttons
// are black line drawings on white; selected (331 to 333), inverted inside the frame.
TEST(PluginArt, EveryPictureHasItsSizeDepthColoursAndHotSpot) {
    for (const ArtFile& e : kArtFiles) {
        SCOPED_TRACE(e.file);
        const ArtImage image = Load(e.file);
        EXPECT_EQ(std::vector<int>({image.width, image.height, image.hotX, image.hotY}),
                  std::vector<int>({e.width, e.height, e.hotX, e.hotY}));
        const auto count = [&](uint32_t colour) {
            return int(std::count(image.pixels.begin(), image.pixels.end(), colour));
        };
        const int black = count(kArtBlack), white = count(kArtWhite);
        if (e.hotX < 0) {
            EXPECT_EQ(image.bitCount, 4);
            EXPECT_EQ(black + white + count(kArtGrey), e.width * e.height);
        } else {
            EXPECT_EQ(image.bitCount, 1);
            EXPECT_TRUE(count(kArtInverted) == 0 && count(kArtTransparent) > 32 * 32 / 2 &&
                        white > 10 && black > 20);
            EXPECT_EQ(image.At(e.hotX, e.hotY), kArtBlack);
        }
        if (e.id < 104 || e.id > 106) continue;
        const ArtImage selected = Load(kArtFiles[e.id - 104 + 3].file);
        ASSERT_EQ(selected.pixels.size(), image.pixels.size());
        for (int y = 0; y < image.height; ++y) {
            for (int x = 0; x < image.width; ++x) {
                const bool frame = x % (image.width - 1) == 0 || y % (image.height - 1) == 0;
                const uint32_t p = image.At(x, y);
                ASSERT_TRUE(p == kArtBlack || (!frame && p == kArtWhite)) << x << "," << y;
                ASSERT_EQ(selected.At(x, y), frame || p == kArtWhite ? kArtBlack : kArtWhite)
                    << x << "," << y;
            }
        }
        const int drawn = black - 2 * (image.width + image.height - 2);  // the frame's
        EXPECT_TRUE(drawn > 40 && drawn < (image.width - 2) * (image.height - 2) / 3) << drawn;
    }
}

// The pictures for the larger scales: each side scaled as the controls scale sizes, each
// pixel the 100% picture's nearest pixel (no blend, only its own colours: at 200% each
// pixel a 2 by 2 block); a pointer's hot spot on the first pixel drawn from its own.
TEST(PluginArt, EveryScaleOfEveryPictureIsTheNearestPixelsOfThe100PercentOne) {
    for (const ArtFile& e : kArtFiles) {
        const ArtImage base = Load(e.file);
        const std::string name(e.file), stem = name.substr(0, name.rfind('.'));
        for (int dpi : {120, 144, 192, 288}) {
            SCOPED_TRACE(name + " at " + std::to_string(dpi));
            const ArtImage image =
                Load(stem + "@" + std::to_string(dpi) + name.substr(stem.size()));
            ASSERT_EQ(
                std::vector<int>({image.width, image.height, image.bitCount}),
                std::vector<int>({ArtSize(e.width, dpi), ArtSize(e.height, dpi), base.bitCount}));
            for (int y = 0; y < image.height; ++y)
                for (int x = 0; x < image.width; ++x)
                    ASSERT_EQ(image.At(x, y),
                              base.At(x * base.width / image.width, y * base.height / image.height))
                        << x << "," << y;
            if (e.hotX < 0) continue;
            EXPECT_EQ(image.hotX, (e.hotX * image.width + base.width - 1) / base.width);
            EXPECT_EQ(image.At(image.hotX, image.hotY), kArtBlack);
        }
    }
}

}  // namespace
}  // namespace tessellum
