// The colour controls' decisions without a window: where the parts of the colour pair
// lie, which part a click belongs to, the order of painting in the reset and the swap,
// and the pixels of the split display.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "controls/color_box_painters.h"
#include "controls/color_pair_layout.h"
#include "controls/pixel_painters.h"

namespace tessellum {
namespace {

bool SameBounds(const ControlBounds& a, int32_t left, int32_t top, int32_t right, int32_t bottom) {
    return a.left == left && a.top == top && a.right == right && a.bottom == bottom;
}

TEST(ColorPairLayout, TheDialogsSizesPlaceEveryPart) {
    // S 80, B 40, M 12 and the 10 by 10 arrow, at x 200, y 100.
    const ColorPairParts parts = LayoutColorPair(200, 100, 80, 40, 12, 10, 10);
    EXPECT_TRUE(SameBounds(parts.backBox, 232, 132, 272, 172));
    EXPECT_TRUE(SameBounds(parts.foreBox, 208, 108, 248, 148));
    EXPECT_TRUE(SameBounds(parts.miniBackBox, 216, 156, 228, 168));
    EXPECT_TRUE(SameBounds(parts.miniForeBox, 212, 152, 224, 164));
    EXPECT_TRUE(SameBounds(parts.swapButton, 254, 114, 264, 124));

    // Other sizes follow the rule, not the dialog's numbers: S 100, B 50, M 10.
    const ColorPairParts other = LayoutColorPair(0, 0, 100, 50, 10, 7, 9);
    EXPECT_TRUE(SameBounds(other.backBox, 42, 42, 92, 92));
    EXPECT_TRUE(SameBounds(other.foreBox, 8, 8, 58, 58));
    // V = 100 - 50 - 16 = 34, W = 0 + 50 + 8 = 58.
    EXPECT_TRUE(SameBounds(other.miniBackBox, 28, 78, 38, 88));
    EXPECT_TRUE(SameBounds(other.miniForeBox, 12, 62, 22, 72));
    EXPECT_TRUE(SameBounds(other.swapButton, 64, 14, 71, 23));
}

TEST(ColorPairRegion, ResetThenSwapThenForeOverBackThenNothing) {
    const ColorPairParts parts = LayoutColorPair(0, 0, 80, 40, 12, 10, 10);
    EXPECT_EQ(FindColorPairRegion(parts, 12, 52), ColorPairRegion::kReset) << "small fore box";
    EXPECT_EQ(FindColorPairRegion(parts, 27, 67), ColorPairRegion::kReset) << "small back box";
    EXPECT_EQ(FindColorPairRegion(parts, 63, 23), ColorPairRegion::kSwap);
    EXPECT_EQ(FindColorPairRegion(parts, 64, 14), ColorPairRegion::kNone) << "right of the arrow";
    EXPECT_EQ(FindColorPairRegion(parts, 32, 32), ColorPairRegion::kForeBox)
        << "the shared square belongs to the fore box, which lies on top";
    EXPECT_EQ(FindColorPairRegion(parts, 47, 47), ColorPairRegion::kForeBox);
    EXPECT_EQ(FindColorPairRegion(parts, 48, 47), ColorPairRegion::kBackBox);
    EXPECT_EQ(FindColorPairRegion(parts, 71, 71), ColorPairRegion::kBackBox);
    EXPECT_EQ(FindColorPairRegion(parts, 72, 60), ColorPairRegion::kNone);
    EXPECT_EQ(FindColorPairRegion(parts, 0, 0), ColorPairRegion::kNone) << "the outline";
    EXPECT_EQ(FindColorPairRegion(parts, 11, 52), ColorPairRegion::kNone);

    // Where the reset sign lies over a large box (other sizes), the reset wins.
    ColorPairParts crowded = parts;
    crowded.miniForeBox = {10, 10, 20, 20};
    crowded.swapButton = {15, 15, 25, 25};
    EXPECT_EQ(FindColorPairRegion(crowded, 16, 16), ColorPairRegion::kReset);
    EXPECT_EQ(FindColorPairRegion(crowded, 22, 22), ColorPairRegion::kSwap);
}

// A box that writes down each colour it is given.
struct LoggingBox {
    const char* name;
    std::vector<std::string>* log;
    uint8_t red, green, blue;

    void SetColor(uint8_t r, uint8_t g, uint8_t b) {
        red = r;
        green = g;
        blue = b;
        log->push_back(std::string(name) + " " + std::to_string(r) + "," + std::to_string(g) + "," +
                       std::to_string(b));
    }
    void GetColor(uint8_t& r, uint8_t& g, uint8_t& b) const {
        r = red;
        g = green;
        b = blue;
    }
};

TEST(ColorPairActions, BackBoxIsPaintedFirstSoTheForeBoxEndsOnTop) {
    std::vector<std::string> log;
    LoggingBox fore{"fore", &log, 10, 20, 30};
    LoggingBox back{"back", &log, 40, 50, 60};
    SwapColorPair(fore, back);
    EXPECT_EQ(log, (std::vector<std::string>{"back 10,20,30", "fore 40,50,60"}));
    SwapColorPair(fore, back);
    EXPECT_EQ(fore.red, 10) << "two swaps give the starting colours back";
    EXPECT_EQ(back.blue, 60);

    log.clear();
    ResetColorPair(fore, back);
    EXPECT_EQ(log, (std::vector<std::string>{"back 255,255,255", "fore 0,0,0"}));
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
