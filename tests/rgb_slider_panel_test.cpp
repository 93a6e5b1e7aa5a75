// The slider panel in a real page window, driven by real mouse messages that the page's
// window procedure hands on, as the Color Picker page does: the repeat timer and the
// mouse capture of the arrows, a drag across a bar, and what reaches the screen (bars,
// thumbs and the read-outs as text pixels).
#include "controls/rgb_slider_panel.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "controls/small_bitmap_table.h"
#include "host/dll_instance.h"
#include "tests/control_page.h"
#include "tests/window_pixels.h"

namespace tessellum {

HINSTANCE hDllInstance = nullptr;

namespace {

using test::ReadClient;

// The dialog's numbers: bars 11 high, 25 apart; the panel's left edge well inside.
constexpr int kBarX = 130;
constexpr int kBarY = 40;
constexpr int kSpacing = 25;
constexpr uint32_t kGrey = 0xC0C0C0;
constexpr uint32_t kBackdrop = 0xBFBFBF;

int RowTop(int row) {
    return kBarY + row * kSpacing;
}

class RgbSliderPanelTest : public ::testing::Test {
protected:
    void SetUp() override {
        hDllInstance = test::LoadPluginModule();
        ASSERT_NE(hDllInstance, nullptr) << "the plug-in beside the test";
        page = std::make_unique<test::ControlPage>("Sliders", 420, 160, true);
        LoadSmallBitmaps(page->Page());
        panel = std::make_unique<RgbSliderPanel>(page->Page(), 11);
        panel->SetPosition(kBarX, kBarY, kSpacing);
        panel->SetEnabled(true, true);
        panel->SetBackground(191, 191, 191, 355, 100);
        panel->Repaint(true);
        page->onMessage = [this](UINT message, WPARAM wParam, LPARAM lParam) {
            switch (message) {
                case WM_LBUTTONDOWN: results.push_back(panel->HandleMouseDown(lParam)); break;
                case WM_MOUSEMOVE: results.push_back(panel->HandleMouseMove(lParam)); break;
                case WM_LBUTTONUP: panel->HandleMouseUp(); break;
                case WM_TIMER:
                    timerIds.push_back(static_cast<UINT_PTR>(wParam));
                    if (panel->IsEnabled()) tickResults.push_back(panel->HandleTimer());
                    break;
                case WM_PAINT: panel->Repaint(true); break;
            }
        };
    }
    void TearDown() override {
        panel.reset();
        page.reset();
        FreeSmallBitmaps();
        FreeLibrary(hDllInstance);
        hDllInstance = nullptr;
    }

    HWND Page() const { return page->Page(); }

    // The text TextOutA would print there on the panel's grey, compared pixel for pixel.
    void ExpectTextAt(int x, int y, const std::string& text) {
        SIZE size;
        const std::vector<uint32_t> expected = test::ExpectedText(Page(), text, kGrey, &size);
        ASSERT_GT(size.cx, 0);
        EXPECT_EQ(ReadClient(Page(), x, y, size.cx, size.cy), expected)
            << "'" << text << "' at " << x << "," << y;
    }

    // Bar `row` on the screen, one pixel row across its inside.
    std::vector<uint32_t> BarOnScreen(int row) {
        return ReadClient(Page(), kBarX + 1, RowTop(row) + 5, 128, 1);
    }

    std::unique_ptr<test::ControlPage> page;
    std::unique_ptr<RgbSliderPanel> panel;
    std::vector<bool> results;
    std::vector<UINT_PTR> timerIds;
    std::vector<bool> tickResults;
};

TEST_F(RgbSliderPanelTest, AHeldArrowStepsOnEveryTickAndStopsAtButtonUp) {
    panel->SetGreen(100);
    results.clear();
    // The right arrow of green: x + 132 to x + 138, its row's 11 pixels.
    page->Mouse(WM_LBUTTONDOWN, kBarX + 134, RowTop(1) + 5);
    ASSERT_EQ(results, std::vector<bool>{true}) << "one step at the press";
    EXPECT_EQ(panel->Green(), 101);
    EXPECT_EQ(GetCapture(), Page());

    test::PumpFor(1000);
    const size_t ticks = timerIds.size();
    EXPECT_GE(ticks, 3u) << "the timer ticks while the arrow is held";
    for (UINT_PTR id : timerIds) EXPECT_EQ(id, 965u);
    EXPECT_EQ(tickResults, std::vector<bool>(ticks, true));
    EXPECT_EQ(panel->Green(), 101 + ticks) << "one step per tick";
    EXPECT_EQ(panel->Red(), 0);
    EXPECT_EQ(GetCapture(), Page()) << "held for the whole press";

    page->Mouse(WM_LBUTTONUP, kBarX + 134, RowTop(1) + 5);
    EXPECT_EQ(GetCapture(), nullptr);
    const uint8_t released = panel->Green();
    test::PumpFor(500);
    EXPECT_EQ(timerIds.size(), ticks) << "no tick after the button-up";
    EXPECT_EQ(panel->Green(), released);

    // The screen: green's read-out and the bars of the other two rows, which show green.
    char decimal[8];
    std::snprintf(decimal, sizeof decimal, "%-5d", released);
    ExpectTextAt(kBarX + 160, RowTop(1) - 3, decimal);
    char hex[8];
    std::snprintf(hex, sizeof hex, "%02X ", released);
    ExpectTextAt(kBarX + 210, RowTop(1) - 3, hex);
    const std::vector<uint32_t> red = BarOnScreen(0);
    EXPECT_EQ(red[0], uint32_t(released) << 8);
    EXPECT_EQ(red[127], (254u << 16) | (uint32_t(released) << 8));
}

TEST_F(RgbSliderPanelTest, AnArrowAtZeroRunsTheTimerWithNoChange) {
    page->Mouse(WM_LBUTTONDOWN, kBarX - 8, RowTop(0));  // the left arrow's corner
    ASSERT_EQ(results, std::vector<bool>{false});
    EXPECT_EQ(GetCapture(), Page());
    test::PumpFor(700);
    EXPECT_GE(timerIds.size(), 2u);
    EXPECT_EQ(tickResults, std::vector<bool>(timerIds.size(), false));
    EXPECT_EQ(panel->Red(), 0);
    page->Mouse(WM_LBUTTONUP, kBarX - 8, RowTop(0));
    const size_t ticks = timerIds.size();
    test::PumpFor(400);
    EXPECT_EQ(timerIds.size(), ticks);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(RgbSliderPanelTest, ADisabledPanelDoesNothingAndStartsNoTimer) {
    panel->SetRed(40);
    panel->Repaint(false);  // the page covers the panel first, then disables it
    panel->SetEnabled(false, true);
    const std::vector<uint32_t> before = ReadClient(Page(), 0, 0, 420, 160);
    EXPECT_EQ(before[RowTop(0) * 420 + kBarX], kBackdrop) << "the rows were covered";

    page->Mouse(WM_LBUTTONDOWN, kBarX + 134, RowTop(0) + 5);
    page->Mouse(WM_MOUSEMOVE, kBarX + 100, RowTop(0) + 5);
    EXPECT_EQ(GetCapture(), nullptr);
    test::PumpFor(500);
    EXPECT_TRUE(timerIds.empty()) << "no timer was started";
    page->Mouse(WM_LBUTTONUP, kBarX + 134, RowTop(0) + 5);
    EXPECT_EQ(results, (std::vector<bool>{false, false}));
    EXPECT_EQ(panel->Red(), 40);
    panel->Repaint(true);
    EXPECT_EQ(ReadClient(Page(), 0, 0, 420, 160), before) << "nothing was drawn";
}

TEST_F(RgbSliderPanelTest, ADragReaches252ThenFullAndMovesTheThumb) {
    const int thumbTop = RowTop(2) + 11;
    // Blue's thumb at 0 spans x - 4 to x + 6 under the bar.
    page->Mouse(WM_LBUTTONDOWN, kBarX + 5, thumbTop + 5);
    EXPECT_EQ(GetCapture(), Page());
    page->Mouse(WM_MOUSEMOVE, kBarX + 126, thumbTop + 40);
    EXPECT_EQ(panel->Blue(), 252);
    page->Mouse(WM_MOUSEMOVE, kBarX + 127, thumbTop - 60);
    EXPECT_EQ(panel->Blue(), 255);
    ExpectTextAt(kBarX + 160, RowTop(2) - 3, "255  ");
    ExpectTextAt(kBarX + 210, RowTop(2) - 3, "FF ");
    ExpectTextAt(kBarX - 28, RowTop(2) - 3, "B: ");

    // The thumb's apex (column 5 of its top row) under x + 255/2 + 1, the old place wiped.
    EXPECT_EQ(ReadClient(Page(), kBarX + 127 + 1, thumbTop, 1, 1)[0], 0u);
    EXPECT_EQ(ReadClient(Page(), kBarX + 1, thumbTop, 1, 1)[0], kGrey) << "the old thumb";
    // The bars of red and green now show blue at full.
    const std::vector<uint32_t> red = BarOnScreen(0);
    for (int i = 0; i < 128; ++i) ASSERT_EQ(red[i], (uint32_t(2 * i) << 16) | 0xFF) << i;
    EXPECT_EQ(BarOnScreen(1)[64], (128u << 8) | 0xFF);
    EXPECT_EQ(ReadClient(Page(), kBarX + 129, RowTop(0) + 10, 1, 1)[0], 0u) << "black border";

    page->Mouse(WM_MOUSEMOVE, kBarX - 30, thumbTop);
    EXPECT_EQ(panel->Blue(), 0);
    ExpectTextAt(kBarX + 160, RowTop(2) - 3, "0    ");
    page->Mouse(WM_LBUTTONUP, kBarX - 30, thumbTop);
    EXPECT_EQ(GetCapture(), nullptr);
    page->Mouse(WM_MOUSEMOVE, kBarX + 60, thumbTop);
    EXPECT_EQ(panel->Blue(), 0) << "no drag after the button-up";
}

TEST_F(RgbSliderPanelTest, ReadOutsPrintDecimalAndTwoHexDigitsOnTheGreyAndRestoreTheContext) {
    panel->SetRed(7);
    ExpectTextAt(kBarX + 160, RowTop(0) - 3, "7    ");
    ExpectTextAt(kBarX + 210, RowTop(0) - 3, "07 ");
    ExpectTextAt(kBarX - 28, RowTop(0) - 3, "R: ");
    ExpectTextAt(kBarX + 160, -20 + kBarY, "Dec");
    ExpectTextAt(kBarX + 210, -20 + kBarY, "Hex");

    // The page keeps one context: the panel must hand it back with its own grey undone.
    HDC dc = GetDC(Page());
    EXPECT_EQ(GetBkColor(dc), RGB(255, 255, 255));
    ReleaseDC(Page(), dc);
    // The backdrop around the rows is the flat 191 grey.
    EXPECT_EQ(ReadClient(Page(), kBarX + 239, kBarY + 77, 1, 1)[0], kBackdrop);
    EXPECT_EQ(ReadClient(Page(), kBarX + 240, kBarY + 78, 1, 1)[0], kGrey) << "page beyond it";
}

}  // namespace
}  // namespace tessellum
