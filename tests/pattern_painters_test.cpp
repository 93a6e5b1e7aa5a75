// The pictures of a Pattern in the preview bitmaps, pixel by pixel: the tile at true size,
// the magnified 2x2 box with its rings and cross, and the no-colour cross.
#include "controls/pattern_painters.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "controls/pixel_painters.h"
#include "tests/pixel_store.h"

namespace tessellum {
namespace {

using test::DistinctCells;
using test::kSentinel;
using test::PixelStore;
using test::WordOf;

constexpr PixelWord kGrey = 0x00808080;

PixelStore FramedStore(uint32_t width, uint32_t height) {
    PixelStore store(width, height);
    PaintInsetFrame(store.bits(), width, height);
    return store;
}

bool InFrame(const PixelStore& store, uint32_t x, uint32_t y) {
    return std::min({x, y, store.width - 1 - x, store.height - 1 - y}) < 4;
}

TEST(TilePreview, RepeatsEveryThirdPixelWithThePhaseStartingAtTheFrame) {
    const Pattern cells = DistinctCells();
    const uint32_t width = 23, height = 17;
    PixelStore store = FramedStore(width, height);
    const PixelStore frame = FramedStore(width, height);
    DrawTilePreview(store.bits(), width, height, &cells, 3);
    EXPECT_EQ(store.At(4, 4), WordOf(cells.Cell(0, 0))) << "the tile starts at (4, 4)";
    EXPECT_EQ(store.At(6, 4), WordOf(cells.Cell(0, 2)));
    EXPECT_EQ(store.At(7, 4), WordOf(cells.Cell(0, 0))) << "and repeats every third pixel";
    EXPECT_EQ(store.At(5, 7), WordOf(cells.Cell(0, 1)));
    EXPECT_EQ(store.At(18, 12), WordOf(cells.Cell(2, 2)));
    for (uint32_t y = 0; y < height; ++y) {
        for (uint32_t x = 0; x < width; ++x) {
            const PixelWord expected = InFrame(store, x, y)
                                           ? frame.At(x, y)
                                           : WordOf(cells.Cell((y - 4) % 3, (x - 4) % 3));
            ASSERT_EQ(store.At(x, y), expected) << x << "," << y;
        }
    }
    EXPECT_TRUE(store.GuardsIntact());
}

TEST(TilePreview, ShowsOnlyTheSquareInForceAndTakesAnOddSizeAsValid) {
    const Pattern cells = DistinctCells();
    for (const auto& [stored, shown] :
         std::initializer_list<std::pair<uint8_t, int>>{{2, 2}, {8, 8}, {7, 6}, {0, 2}, {50, 8}}) {
        PixelStore store = FramedStore(40, 30);
        DrawTilePreview(store.bits(), 40, 30, &cells, stored);
        for (uint32_t y = 4; y < 26; ++y)
            for (uint32_t x = 4; x < 36; ++x)
                ASSERT_EQ(store.At(x, y), WordOf(cells.Cell((y - 4) % shown, (x - 4) % shown)))
                    << "GridSize " << int(stored) << " at " << x << "," << y;
    }
    // No inside, no pattern, no store: nothing written.
    PixelStore tiny(8, 8);
    DrawTilePreview(tiny.bits(), 8, 8, &cells, 2);
    PixelStore noPattern(20, 20);
    DrawTilePreview(noPattern.bits(), 20, 20, nullptr, 2);
    DrawTilePreview(nullptr, 20, 20, &cells, 2);
    for (const PixelStore* store : {&tiny, &noPattern}) {
        const auto pixels = store->Pixels();
        EXPECT_TRUE(
            std::all_of(pixels.begin(), pixels.end(), [](PixelWord p) { return p == kSentinel; }));
    }
}

// The box's 39 by 39 pixels as characters, one row per line: # black, o white, + grey,
// a b c d the four cells, . anything else.
std::string BoxPicture(const PixelStore& store, const Pattern& cells) {
    std::string out;
    for (uint32_t y = 70; y < 109; ++y) {
        for (uint32_t x = 70; x < 109; ++x) {
            const PixelWord p = store.At(x, y);
            out += p == kBlackPixel                ? '#'
                   : p == kWhitePixel              ? 'o'
                   : p == kGrey                    ? '+'
                   : p == WordOf(cells.Cell(0, 0)) ? 'a'
                   : p == WordOf(cells.Cell(0, 1)) ? 'b'
                   : p == WordOf(cells.Cell(1, 0)) ? 'c'
                   : p == WordOf(cells.Cell(1, 1)) ? 'd'
                                                   : '.';
        }
        out += '\n';
    }
    return out;
}

// The box as its layout describes it, with `l` for the line colour and `f` the field.
std::string ExpectedBox(char l, char f) {
    std::string out;
    for (int y = 0; y < 39; ++y) {
        for (int x = 0; x < 39; ++x) {
            const int d = std::min({x, y, 38 - x, 38 - y});
            char c;
            if (d == 0 || d == 3)
                c = l;
            else if (d < 3)
                c = f;
            else if (x == 19 || y == 19)
                c = '+';
            else
                c = y < 19 ? (x < 19 ? 'a' : 'b') : (x < 19 ? 'c' : 'd');
            out += c;
        }
        out += '\n';
    }
    return out;
}

TEST(QuadrantBox, ATileOfSeveralColoursHasBlackRingsOnWhiteAndItsCellsInTheirPlaces) {
    Pattern cells = DistinctCells();  // four different cells, so each place is told apart
    cells.Cell(0, 0) = {255, 0, 0};
    cells.Cell(0, 1) = {0, 0, 255};
    cells.Cell(2, 2) = {255, 255, 255};  // beyond the 2x2 corner: plays no part
    PixelStore store = FramedStore(127, 127);
    const PixelStore before = store;
    DrawQuadrantBox(store.bits(), 127, 127, &cells);
    EXPECT_EQ(BoxPicture(store, cells), ExpectedBox('#', 'o'));
    for (uint32_t y = 0; y < 127; ++y) {
        for (uint32_t x = 0; x < 127; ++x) {
            if (x < 70 || x > 108 || y < 70 || y > 108) {
                ASSERT_EQ(store.At(x, y), before.At(x, y)) << "outside the box " << x << "," << y;
            }
        }
    }
    EXPECT_EQ(store.At(74, 74), 0x00FF0000u) << "a at rows and columns 4 to 18";
    EXPECT_EQ(store.At(104, 74), 0x000000FFu) << "b at the top right";
}

TEST(QuadrantBox, ABlackAndWhiteCheckerStillHasBlackLinesOnWhite) {
    Pattern cells = DistinctCells();
    cells.Cell(0, 0) = cells.Cell(1, 1) = {0, 0, 0};
    cells.Cell(0, 1) = cells.Cell(1, 0) = {255, 255, 255};
    PixelStore store(120, 115);
    DrawQuadrantBox(store.bits(), 120, 115, &cells);
    // a and d are black and b and c white, so the picture reads in those characters.
    std::string expected = ExpectedBox('#', 'o');
    std::replace(expected.begin(), expected.end(), 'a', '#');
    std::replace(expected.begin(), expected.end(), 'd', '#');
    std::replace(expected.begin(), expected.end(), 'b', 'o');
    std::replace(expected.begin(), expected.end(), 'c', 'o');
    EXPECT_EQ(BoxPicture(store, cells), expected);
    EXPECT_TRUE(store.GuardsIntact());
}

TEST(QuadrantBox, ASolidTileHasWhiteRingsOnBlackAndTheGreyCrossStill) {
    Pattern cells = DistinctCells();
    cells.Cell(0, 0) = cells.Cell(0, 1) = cells.Cell(1, 0) = cells.Cell(1, 1) = {51, 102, 153};
    PixelStore store(109, 109);  // the smallest store that holds it
    DrawQuadrantBox(store.bits(), 109, 109, &cells);
    std::string expected = ExpectedBox('o', '#');
    for (char& c : expected)
        if (c >= 'a' && c <= 'd') c = 'a';  // all four are the one colour
    EXPECT_EQ(BoxPicture(store, cells), expected);
    EXPECT_EQ(store.At(108, 108), kWhitePixel) << "the outer ring's last pixel";
    EXPECT_EQ(store.At(70 + 19, 70 + 19), kGrey) << "the cross's centre";
    EXPECT_TRUE(store.GuardsIntact());

    // Three equal cells and one a single byte off make a two-colour tile.
    cells.Cell(1, 1).blue = 154;
    DrawQuadrantBox(store.bits(), 109, 109, &cells);
    EXPECT_EQ(store.At(70, 70), kBlackPixel);
    EXPECT_EQ(store.At(71, 71), kWhitePixel);
}

TEST(QuadrantBox, LeavesAStoreTooSmallForItAlone) {
    const Pattern cells = DistinctCells();
    PixelStore narrow(108, 127), low(127, 108);
    DrawQuadrantBox(narrow.bits(), 108, 127, &cells);
    DrawQuadrantBox(low.bits(), 127, 108, &cells);
    DrawQuadrantBox(nullptr, 127, 127, &cells);
    PixelStore noPattern(127, 127);
    DrawQuadrantBox(noPattern.bits(), 127, 127, nullptr);
    for (const PixelStore* store : {&narrow, &low, &noPattern}) {
        const auto pixels = store->Pixels();
        EXPECT_TRUE(
            std::all_of(pixels.begin(), pixels.end(), [](PixelWord p) { return p == kSentinel; }));
        EXPECT_TRUE(store->GuardsIntact());
    }
}

TEST(NoColorCross, TwoDiagonalsTheSecondOnePixelRightOfTheMirror) {
    const uint32_t side = 20;
    PixelStore store = FramedStore(side, side);
    const PixelStore frame = FramedStore(side, side);
    DrawNoColorCross(store.bits(), side, side);
    for (uint32_t y = 0; y < side; ++y) {
        for (uint32_t x = 0; x < side; ++x) {
            PixelWord expected = InFrame(store, x, y) ? frame.At(x, y) : kWhitePixel;
            if (y >= 4 && y <= 15 && (x == y || x == side - y)) expected = kBlackPixel;
            ASSERT_EQ(store.At(x, y), expected) << x << "," << y;
        }
    }
    // The first runs (4, 4) to (15, 15); the second from the ring at (16, 4) to (5, 15).
    EXPECT_EQ(store.At(15, 15), kBlackPixel);
    EXPECT_EQ(store.At(5, 15), kBlackPixel);
    EXPECT_EQ(store.At(4, 15), kWhitePixel);
    EXPECT_TRUE(store.GuardsIntact());
}

TEST(NoColorCross, WritesNoPixelOutsideAStoreTallerThanItIsWide) {
    for (const auto& [width, height] :
         std::initializer_list<std::pair<uint32_t, uint32_t>>{{10, 30}, {3, 12}, {12, 5}}) {
        PixelStore store(width, height);
        DrawNoColorCross(store.bits(), width, height);
        EXPECT_TRUE(store.GuardsIntact()) << width << " by " << height;
        // What it writes inside the store is still the diagonals' pixels.
        for (uint32_t y = 4; y + 4 < height && y < width; ++y) {
            EXPECT_EQ(store.At(y, y), kBlackPixel) << width << "x" << height;
        }
    }
}

}  // namespace
}  // namespace tessellum
