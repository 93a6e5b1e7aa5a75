// The colour controls' decisions without a window: where the parts of the colour pair
// lie, which part a click belongs to, and the pixels of the split display. (The order of
// painting in the reset and the swap shows in the overlap of the boxes under Wine.)
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "controls/color_box_painters.h"
#include "controls/color_pair_layout.h"
#include "controls/pixel_painters.h"

namespace tessellum {
namespace {

// Every part's bounds, left,top-right,bottom: back, fore, small back, small fore, swap.
std::string Bounds(const ColorPairParts& p) {
    std::string out;
    for (const ControlBounds& b :
         {p.backBox, p.foreBox, p.miniBackBox, p.miniForeBox, p.swapButton}) {
        out += std::to_string(b.left) + "," + std::to_string(b.top) + "-" +
               std::to_string(b.right) + "," + std::to_string(b.bottom) + " ";
    }
    return out;
}

TEST(ColorPairLayout, TheDialogsSizesPlaceEveryPartAndOtherSizesFollowTheRule) {
    // S 80, B 40, M 12 and the 10 by 10 arrow, at x 200, y 100.
    EXPECT_EQ(Bounds(LayoutColorPair(200, 100, 80, 40, 12, 10, 10)),
              "232,132-272,172 208,108-248,148 216,156-228,168 212,152-224,164 254,114-264,124 ");
    // S 100, B 50, M 10: V = 100 - 50 - 16 = 34, W = 0 + 50 + 8 = 58.
    EXPECT_EQ(Bounds(LayoutColorPair(0, 0, 100, 50, 10, 7, 9)),
              "42,42-92,92 8,8-58,58 28,78-38,88 12,62-22,72 64,14-71,23 ");
}

TEST(ColorPairRegion, ResetThenSwapThenForeOverBackThenNothing) {
    using R = ColorPairRegion;
    const ColorPairParts parts = LayoutColorPair(0, 0, 80, 40, 12, 10, 10);
    // The small fore and back boxes, the arrow and just right of it, the square the two
    // large boxes share (the fore box lies on top), the back box, the outline, a gap.
    const struct {
        int32_t x, y;
        ColorPairRegion region;
    } points[] = {{12, 52, R::kReset},   {27, 67, R::kReset},   {63, 23, R::kSwap},
                  {64, 14, R::kNone},    {32, 32, R::kForeBox}, {47, 47, R::kForeBox},
                  {48, 47, R::kBackBox}, {71, 71, R::kBackBox}, {72, 60, R::kNone},
                  {0, 0, R::kNone},      {11, 52, R::kNone}};
    for (const auto& p : points)
        EXPECT_EQ(FindColorPairRegion(parts, p.x, p.y), p.region) << p.x << "," << p.y;

    // Where the reset sign lies over a large box (other sizes), the reset wins.
    ColorPairParts crowded = parts;
    crowded.miniForeBox = {10, 10, 20, 20};
    crowded.swapButton = {15, 15, 25, 25};
    EXPECT_EQ(FindColorPairRegion(crowded, 16, 16), R::kReset);
    EXPECT_EQ(FindColorPairRegion(crowded, 22, 22), R::kSwap);
}

std::vector<PixelWord> Store(uint32_t width, uint32_t height, PixelWord word) {
    return std::vector<PixelWord>(static_cast<size_t>(width) * height, word);
}

TEST(ColorBoxPainters, SplitColourFillsTheUpperHalfDrawsAWhiteLineAndKeepsTheRest) {
    // 30 by 21: the inside is rows 4 to 16; H = (21 - 8) / 2 = 6, so rows 4 to 9 take
    // the colour, row 10 is white, rows 11 to 16 keep the old colour.
    std::vector<PixelWord> bits = Store(30, 21, 0x00777777);
    PaintInsetFrame(bits.data(), 30, 21);
    FillInside(bits.data(), 30, 21, 0, 0, 255);
    const std::vector<PixelWord> before = bits;
    PaintSplitColor(bits.data(), 30, 21, 255, 0, 0);
    for (uint32_t y = 0; y < 21; ++y) {
        for (uint32_t x = 0; x < 30; ++x) {
            PixelWord expected = before[y * 30 + x];
            if (x >= 4 && x <= 25 && y >= 4 && y <= 9) expected = 0x00FF0000;
            if (x >= 4 && x <= 25 && y == 10) expected = kWhitePixel;
            ASSERT_EQ(bits[y * 30 + x], expected) << x << "," << y;
        }
    }
    // The smallest inside, one row: no coloured rows, the row is the white line.
    std::vector<PixelWord> small = Store(9, 9, 0x00777777);
    PaintSplitColor(small.data(), 9, 9, 1, 1, 1);
    EXPECT_EQ(small[4 * 9 + 4], kWhitePixel);
    EXPECT_EQ(small[3 * 9 + 4], 0x00777777u);
    // No inside: nothing is written.
    std::vector<PixelWord> none = Store(8, 20, 0x00777777);
    PaintSplitColor(none.data(), 8, 20, 1, 1, 1);
    EXPECT_EQ(none, Store(8, 20, 0x00777777));
}

}  // namespace
}  // namespace tessellum
