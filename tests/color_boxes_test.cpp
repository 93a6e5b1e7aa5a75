// The colour boxes in a real page window: what each one puts on the screen, in which
// order overlapping boxes are painted, the split display of the large colour, the clicks
// of the fore/back pair and the reset and swap of the colour pair control.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <memory>
#include <vector>

#include "controls/color_box.h"
#include "controls/color_pair_control.h"
#include "controls/fore_back_box.h"
#include "controls/split_color_box.h"
#include "host/dll_instance.h"
#include "tests/control_page.h"
#include "tests/window_pixels.h"

namespace tessellum {

HINSTANCE hDllInstance = nullptr;

namespace {

using test::ReadClient;

constexpr uint32_t kGrey = 0xC0C0C0;

class ColorBoxesTest : public ::testing::Test {
protected:
    void SetUp() override {
        hDllInstance = test::LoadPluginModule();
        ASSERT_NE(hDllInstance, nullptr);
        page = std::make_unique<test::ControlPage>("ColorBoxes", 300, 200);
    }
    void TearDown() override {
        page.reset();
        FreeLibrary(hDllInstance);
        hDllInstance = nullptr;
    }
    HWND Page() const { return page->Page(); }
    uint32_t Pixel(int x, int y) { return ReadClient(Page(), x, y, 1, 1)[0]; }

    // Every pixel of the square of side `side` at x, y: a black border round `inside`.
    void ExpectFlatBox(int x, int y, int side, uint32_t inside) {
        const std::vector<uint32_t> shown = ReadClient(Page(), x, y, side, side);
        for (int row = 0; row < side; ++row) {
            for (int column = 0; column < side; ++column) {
                const bool edge = row == 0 || column == 0 || row == side - 1 || column == side - 1;
                ASSERT_EQ(shown[row * side + column], edge ? 0u : inside)
                    << "box at " << x << "," << y << ": pixel " << column << "," << row;
            }
        }
    }

    std::unique_ptr<test::ControlPage> page;
};

TEST_F(ColorBoxesTest, AColorBoxShowsItsColourAtOnceFlatOrInsideItsFrame) {
    ColorBox flat(Page(), 10, 10, 15, 15, kFlatColorBox, 200, 100, 50);
    ExpectFlatBox(10, 10, 15, 0xC86432);
    EXPECT_EQ(Pixel(25, 24), kGrey);
    flat.SetColor(1, 2, 3);
    ExpectFlatBox(10, 10, 15, 0x010203);

    ColorBox framed(Page(), 40, 10, 20, 16, kFramedColorBox, 0, 0, 255);
    const std::vector<uint32_t> shown = ReadClient(Page(), 40, 10, 20, 16);
    EXPECT_EQ(shown[1 * 20 + 5], 0xFFFFFFu) << "white band of the frame";
    EXPECT_EQ(shown[4 * 20 + 4], 0x0000FFu);
    EXPECT_EQ(shown[11 * 20 + 15], 0x0000FFu);
    EXPECT_EQ(shown[12 * 20 + 15], 0u) << "inner black ring";
}

TEST_F(ColorBoxesTest, TheSplitBoxShowsNewOverOldWhileSplitAndWholeAfter) {
    // 40 by 31: inside rows 4 to 26, H = 11, so rows 4 to 14 new, row 15 white.
    SplitColorBox box(Page(), 100, 20, 40, 31, 0, 0, 255);
    box.Bitmap().PaintInsetFrame();
    box.Draw();
    EXPECT_EQ(Pixel(100, 20), 0u);
    EXPECT_EQ(Pixel(104, 24), 0x0000FFu);
    EXPECT_FALSE(box.IsSplit());

    box.SetSplit(true);
    EXPECT_TRUE(box.IsSplit());
    box.SetColor(255, 0, 0);
    const std::vector<uint32_t> column = ReadClient(Page(), 120, 20, 1, 31);
    for (int row = 4; row <= 14; ++row) EXPECT_EQ(column[row], 0xFF0000u) << row;
    EXPECT_EQ(column[15], 0xFFFFFFu);
    for (int row = 16; row <= 26; ++row) EXPECT_EQ(column[row], 0x0000FFu) << row;
    EXPECT_EQ(column[27], 0u) << "the frame is kept";
    box.SetColor(0, 255, 0);  // a further move: only the upper half follows
    EXPECT_EQ(Pixel(120, 30), 0x00FF00u);
    EXPECT_EQ(Pixel(120, 40), 0x0000FFu);

    box.SetSplit(false);
    const std::vector<uint32_t> whole = ReadClient(Page(), 120, 20, 1, 31);
    for (int row = 4; row <= 26; ++row) EXPECT_EQ(whole[row], 0x00FF00u) << row;
    EXPECT_EQ(whole[3], 0u);
}

TEST_F(ColorBoxesTest, ForeBackBoxKeepsTheFrontOnTopAndTheFrontOwnsTheOverlap) {
    ForeBackBox pair(Page(), 20, 60, 22, 15);
    // Back box at 27, 67, white; front at 20, 60, black, over the square they share.
    EXPECT_EQ(Pixel(28, 68), 0u) << "front box over the overlap";
    EXPECT_EQ(Pixel(40, 80), 0xFFFFFFu);
    EXPECT_EQ(Pixel(41, 81), 0u) << "the back box's border";
    EXPECT_TRUE(pair.IsFrontActive());

    pair.SetBack(255, 0, 0);
    EXPECT_EQ(Pixel(40, 80), 0xFF0000u);
    EXPECT_EQ(Pixel(30, 70), 0u) << "the back colour stays behind the front box";
    pair.SetFront(0, 255, 0);
    EXPECT_EQ(Pixel(30, 70), 0x00FF00u);

    const std::vector<uint32_t> before = ReadClient(Page(), 20, 60, 22, 22);
    EXPECT_TRUE(pair.HandleClick(34, 74)) << "bottom right pixel of the front box";
    EXPECT_TRUE(pair.IsFrontActive());
    EXPECT_TRUE(pair.HandleClick(35, 75));
    EXPECT_FALSE(pair.IsFrontActive());
    EXPECT_TRUE(pair.HandleClick(27, 67)) << "in the overlap";
    EXPECT_TRUE(pair.IsFrontActive());
    EXPECT_TRUE(pair.HandleClick(41, 81));
    EXPECT_FALSE(pair.IsFrontActive());
    EXPECT_FALSE(pair.HandleClick(40, 62)) << "inside the control, on no box";
    EXPECT_FALSE(pair.IsFrontActive()) << "a miss keeps the last choice";
    EXPECT_EQ(ReadClient(Page(), 20, 60, 22, 22), before) << "clicks repaint nothing";
}

class ColorPairTest : public ColorBoxesTest {
protected:
    static constexpr int kX = 150, kY = 60, kS = 80;
};

TEST_F(ColorPairTest, DrawsTheOutlineTheBoxesAndTheArrowWithTheForeBoxOnTop) {
    ColorPairControl pair(Page(), hDllInstance, kX, kY, kS, 40, 12);
    // Built in order back, fore, small back, small fore: the fore boxes lie on top.
    EXPECT_EQ(Pixel(kX + 40, kY + 40), 0u) << "fore box over the back box";
    EXPECT_EQ(Pixel(kX + 60, kY + 60), 0xFFFFFFu) << "back box";
    EXPECT_EQ(Pixel(kX + 20, kY + 60), 0u) << "small fore box over the small back box";
    EXPECT_EQ(Pixel(kX + 26, kY + 66), 0xFFFFFFu);

    pair.Draw();
    const std::vector<uint32_t> top = ReadClient(Page(), kX, kY, kS + 2, 1);
    const std::vector<uint32_t> bottom = ReadClient(Page(), kX, kY + kS, kS + 2, 1);
    for (int i = 0; i < kS; ++i) {
        ASSERT_EQ(top[i], 0u) << i;
        ASSERT_EQ(bottom[i], 0u) << i;
    }
    EXPECT_EQ(top[kS], 0u) << "the right line starts on row y";
    EXPECT_EQ(bottom[kS], kGrey) << "the corner x + S, y + S stays unpainted";
    const std::vector<uint32_t> left = ReadClient(Page(), kX, kY, 1, kS + 1);
    const std::vector<uint32_t> right = ReadClient(Page(), kX + kS, kY, 1, kS + 1);
    for (int i = 0; i < kS; ++i) {
        ASSERT_EQ(left[i], 0u) << i;
        ASSERT_EQ(right[i], 0u) << i;
    }
    EXPECT_EQ(Pixel(kX + 7, kY + 30), kGrey) << "nothing is filled inside the outline";

    // The swap arrow is the plug-in's picture 336, drawn at x + 54, y + 14.
    const std::vector<uint32_t> arrow = ReadClient(Page(), kX + 54, kY + 14, 10, 10);
    const std::vector<uint32_t> picture(pair.swapButton->bitmap->bits,
                                        pair.swapButton->bitmap->bits + 100);
    std::vector<uint32_t> pictureColours;
    for (uint32_t word : picture) pictureColours.push_back(word & 0xFFFFFF);
    EXPECT_EQ(arrow, pictureColours);
    EXPECT_EQ(pair.swapButton->Width(), 10);
}

TEST_F(ColorPairTest, ResetAndSwapChangeTheColoursAtOnceAndTheOutlineDoesNothing) {
    ColorPairControl pair(Page(), hDllInstance, kX, kY, kS, 40, 12);
    pair.SetFore(10, 20, 30);
    pair.SetBack(200, 100, 50);
    EXPECT_EQ(Pixel(kX + 40, kY + 40), 0x0A141Eu);
    EXPECT_EQ(Pixel(kX + 60, kY + 60), 0xC86432u);

    // Swap: both colours change; the shared square still shows the fore colour.
    EXPECT_TRUE(pair.HandleClick(kX + 54, kY + 14));
    uint8_t r, g, b;
    pair.GetFore(r, g, b);
    EXPECT_EQ(r, 200);
    EXPECT_EQ(g, 100);
    EXPECT_EQ(b, 50);
    EXPECT_EQ(Pixel(kX + 40, kY + 40), 0xC86432u) << "fore colour on top in the overlap";
    EXPECT_EQ(Pixel(kX + 60, kY + 60), 0x0A141Eu);
    EXPECT_TRUE(pair.HandleClick(kX + 63, kY + 23));
    pair.GetFore(r, g, b);
    EXPECT_EQ(r, 10) << "two swaps give the starting colours back";

    // Reset, from either small box.
    EXPECT_TRUE(pair.HandleClick(kX + 27, kY + 67));
    pair.GetFore(r, g, b);
    EXPECT_EQ(r | g | b, 0);
    pair.GetBack(r, g, b);
    EXPECT_EQ(r & g & b, 255);
    EXPECT_EQ(Pixel(kX + 40, kY + 40), 0u);
    EXPECT_EQ(Pixel(kX + 60, kY + 60), 0xFFFFFFu);

    // The outline and the gaps between the parts do nothing.
    pair.SetBack(9, 9, 9);
    const std::vector<uint32_t> before = ReadClient(Page(), kX, kY, kS + 1, kS + 1);
    EXPECT_FALSE(pair.HandleClick(kX, kY + 40));
    EXPECT_FALSE(pair.HandleClick(kX + 4, kY + 4));
    EXPECT_EQ(ReadClient(Page(), kX, kY, kS + 1, kS + 1), before);
    pair.GetBack(r, g, b);
    EXPECT_EQ(r, 9);
}

// A pointer to a virtual member function holds, in this compiler's ABI, one plus the
// byte offset of its slot in the table.
template <class Method>
ptrdiff_t SlotOf(Method method) {
    struct {
        ptrdiff_t pointer;
        ptrdiff_t adjustment;
    } parts;
    static_assert(sizeof(method) == sizeof(parts), "two words");
    std::memcpy(&parts, &method, sizeof parts);
    return (parts.pointer - 1) / static_cast<ptrdiff_t>(sizeof(void*));
}

TEST_F(ColorPairTest, HasTheVirtualOperationsInTheirOrderAndTheSettingsKeyPath) {
    EXPECT_EQ(SlotOf(&ColorPairControl::LoadCustomColors), 0);
    EXPECT_EQ(SlotOf(&ColorPairControl::SaveCustomColors), 1);
    EXPECT_EQ(SlotOf(&ColorPairControl::PickColor), 2);
    EXPECT_EQ(SlotOf(&ColorPairControl::PickColorAlternate), 3);

    ColorPairControl pair(Page(), hDllInstance, kX, kY, kS, 40, 12);
    const Control& base = pair;
    EXPECT_EQ(reinterpret_cast<const char*>(&base) - reinterpret_cast<const char*>(&pair),
              static_cast<ptrdiff_t>(sizeof(void*)))
        << "the table of operations comes first, then the Control base";

    pair.SetRegistryKey("Tessellum", "1.x");
    EXPECT_STREQ(pair.keyPath, "Software\\Quarry\\Tessellum\\1.x");
    EXPECT_STREQ(pair.registryKey.path, "Software\\Quarry\\Tessellum\\1.x");
    EXPECT_FALSE(pair.registryKey.opened);
    uint8_t r = 1, g = 2, b = 3;
    EXPECT_FALSE(pair.PickColorAlternate(r, g, b));
    EXPECT_EQ(r + g + b, 6) << "the alternate pick changes nothing";
}

}  // namespace
}  // namespace tessellum
