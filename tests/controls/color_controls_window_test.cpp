// The colour controls in a real page window, driven by the messages its window procedure
// hands on as the dialog's pages do, and what reaches the screen: the colour boxes, which
// of two overlapping boxes lies on top, the split display, the fore/back pair, the colour
// pair control's reset, swap and pick through the colour dialog, and the slider panel.
#include <windows.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "controls/color_box.h"
#include "controls/color_pair_control.h"
#include "controls/fore_back_box.h"
#include "controls/rgb_slider_panel.h"
#include "controls/small_bitmap_table.h"
#include "controls/split_color_box.h"
#include "host/dll_instance.h"
#include "tests/controls/color_dialog_driver.h"
#include "tests/controls/control_page.h"
#include "tests/support/window_pixels.h"

namespace tessellum {

HINSTANCE hDllInstance = nullptr;

namespace {

using test::DialogWatch;
using test::ReadClient;

constexpr uint32_t kGrey = 0xC0C0C0;

// The page keeps one device context for its life, so what a control leaves selected in
// it stays visible to the test.
class ColorControlsTest : public ::testing::Test {
protected:
    void SetUp() override {
        hDllInstance = test::LoadPluginModule();
        ASSERT_NE(hDllInstance, nullptr) << "the plug-in beside the test";
        page = std::make_unique<test::ControlPage>("ColorControls", 420, 200, true);
    }
    void TearDown() override {
        page.reset();
        FreeLibrary(hDllInstance);
        hDllInstance = nullptr;
    }
    HWND Page() const { return page->Page(); }
    uint32_t Pixel(int x, int y) { return ReadClient(Page(), x, y, 1, 1)[0]; }

    std::unique_ptr<test::ControlPage> page;
};

TEST_F(ColorControlsTest, AFlatColorBoxShowsItsColourAtOnceInItsBlackBorder) {
    // The flat box of side 15: a black border round the colour.
    const auto flatBox = [](uint32_t inside) {
        std::vector<uint32_t> box(15 * 15, 0);
        for (int row = 1; row < 14; ++row) std::fill_n(box.begin() + row * 15 + 1, 13, inside);
        return box;
    };
    ColorBox flat(Page(), 10, 10, 15, 15, kFlatColorBox, 200, 100, 50);
    EXPECT_EQ(ReadClient(Page(), 10, 10, 15, 15), flatBox(0xC86432));
    EXPECT_EQ(Pixel(25, 24), kGrey);
    flat.SetColor(1, 2, 3);
    EXPECT_EQ(ReadClient(Page(), 10, 10, 15, 15), flatBox(0x010203));
}

TEST_F(ColorControlsTest, TheSplitBoxShowsNewOverOldWhileSplitAndWholeAfter) {
    // 40 by 31: inside rows 4 to 26, H = 11, so rows 4 to 14 new, row 15 white.
    SplitColorBox box(Page(), 100, 20, 40, 31, 0, 0, 255);
    box.Bitmap().PaintInsetFrame();
    EXPECT_FALSE(box.IsSplit());
    box.SetSplit(true);
    EXPECT_TRUE(box.IsSplit());
    box.SetColor(255, 0, 0);
    box.SetColor(0, 255, 0);  // a further move: only the upper half follows
    std::vector<uint32_t> expected(11, 0x00FF00);
    expected.push_back(0xFFFFFF);
    expected.insert(expected.end(), 11, 0x0000FF);
    expected.push_back(0);  // the frame is kept
    EXPECT_EQ(ReadClient(Page(), 120, 24, 1, 24), expected);
    box.SetSplit(false);
    expected.assign(23, 0x00FF00);
    expected.push_back(0);
    EXPECT_EQ(ReadClient(Page(), 120, 24, 1, 24), expected);
}

TEST_F(ColorControlsTest, ForeBackBoxKeepsTheFrontOnTopAndTheFrontOwnsTheOverlap) {
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

    // The bottom right pixel of the front box, the back box's first outside it, the
    // overlap, the back box's last; inside the control on no box a miss keeps the choice.
    const std::vector<uint32_t> before = ReadClient(Page(), 20, 60, 22, 22);
    const int clicks[][4] = {
        {34, 74, 1, 1}, {35, 75, 1, 0}, {27, 67, 1, 1}, {41, 81, 1, 0}, {40, 62, 0, 0}};
    for (const auto& [x, y, taken, front] : clicks) {
        EXPECT_EQ(pair.HandleClick(x, y), taken != 0) << x << "," << y;
        EXPECT_EQ(pair.IsFrontActive(), front != 0) << x << "," << y;
    }
    EXPECT_EQ(ReadClient(Page(), 20, 60, 22, 22), before) << "clicks repaint nothing";
}

TEST_F(ColorControlsTest, TheColorPairDrawsItsPartsWithTheForeBoxOnTopAndResetsAndSwapsAtOnce) {
    constexpr int kX = 150, kY = 60, kS = 80;
    ColorPairControl pair(Page(), hDllInstance, kX, kY, kS, 40, 12);
    // The colours of the fore box (where it lies over the back box) and the back box.
    const auto shown = [&] {
        return std::vector<uint32_t>{Pixel(kX + 40, kY + 40), Pixel(kX + 60, kY + 60)};
    };
    // Built in order back, fore, small back, small fore: the fore boxes lie on top.
    EXPECT_EQ(Pixel(kX + 40, kY + 40), 0u) << "fore box over the back box";
    EXPECT_EQ(Pixel(kX + 60, kY + 60), 0xFFFFFFu) << "back box";
    EXPECT_EQ(Pixel(kX + 20, kY + 60), 0u) << "small fore box over the small back box";
    EXPECT_EQ(Pixel(kX + 26, kY + 66), 0xFFFFFFu);

    // The outline: the top and left lines from x, y, the right line from row y, the
    // bottom line to x + S - 1; the corner x + S, y + S stays unpainted.
    pair.Draw();
    const std::vector<uint32_t> square = ReadClient(Page(), kX, kY, kS + 1, kS + 1);
    const auto at = [&](int x, int y) { return square[y * (kS + 1) + x]; };
    for (int i = 0; i < kS; ++i) ASSERT_EQ(at(i, 0) | at(i, kS) | at(0, i) | at(kS, i), 0u) << i;
    EXPECT_EQ(at(kS, kS), kGrey);
    EXPECT_EQ(at(7, 30), kGrey) << "nothing is filled inside the outline";

    // The swap arrow is the plug-in's picture 336, drawn at x + 54, y + 14.
    EXPECT_EQ(pair.swapButton->Width(), 10);
    std::vector<uint32_t> picture(pair.swapButton->bitmap->bits,
                                  pair.swapButton->bitmap->bits + 100);
    for (uint32_t& word : picture) word &= 0xFFFFFF;
    EXPECT_EQ(ReadClient(Page(), kX + 54, kY + 14, 10, 10), picture);

    // Swap, at the arrow's first and last pixels: both colours change, and the shared
    // square shows the fore colour, so the back box was painted first.
    pair.SetFore(10, 20, 30);
    pair.SetBack(200, 100, 50);
    EXPECT_TRUE(pair.HandleClick(kX + 54, kY + 14));
    EXPECT_EQ(shown(), (std::vector<uint32_t>{0xC86432, 0x0A141E}));
    EXPECT_TRUE(pair.HandleClick(kX + 63, kY + 23));
    EXPECT_EQ(shown(), (std::vector<uint32_t>{0x0A141E, 0xC86432}));
    uint8_t r, g, b;
    pair.GetFore(r, g, b);
    EXPECT_TRUE(r == 10 && g == 20 && b == 30);

    // Reset, from the small back box, shown at once in the same order.
    EXPECT_TRUE(pair.HandleClick(kX + 27, kY + 67));
    EXPECT_EQ(shown(), (std::vector<uint32_t>{0, 0xFFFFFF}));
    pair.GetBack(r, g, b);
    EXPECT_EQ(r & g & b, 255);

    // The outline and the gaps between the parts do nothing.
    pair.SetBack(9, 9, 9);
    const std::vector<uint32_t> before = ReadClient(Page(), kX, kY, kS + 1, kS + 1);
    EXPECT_FALSE(pair.HandleClick(kX, kY + 40));
    EXPECT_FALSE(pair.HandleClick(kX + 4, kY + 4));
    EXPECT_EQ(ReadClient(Page(), kX, kY, kS + 1, kS + 1), before);
}

const char kKey[] = "Software\\Quarry\\Tessellum\\1.x";

std::string ValueName(int index) {
    return "Custom Color " + std::to_string(index);
}

void Store(int index, DWORD type, uint32_t value) {
    RegSetKeyValueA(HKEY_CURRENT_USER, kKey, ValueName(index).c_str(), type, &value, 4);
}

// The 16 custom colours as the registry holds them: type, size and value, or "missing".
std::vector<std::string> StoredColors() {
    std::vector<std::string> out;
    for (int i = 0; i < 16; ++i) {
        DWORD type = 0, size = 8;
        uint32_t value[2] = {};
        char text[64] = "missing";
        if (RegGetValueA(HKEY_CURRENT_USER, kKey, ValueName(i).c_str(), RRF_RT_ANY, &type, value,
                         &size) == ERROR_SUCCESS) {
            std::snprintf(text, sizeof text, "type %lu, %lu bytes, %06X",
                          static_cast<unsigned long>(type), static_cast<unsigned long>(size),
                          value[0]);
        }
        out.push_back(text);
    }
    return out;
}

// The pick through the real system colour dialog: a second thread finds the modal dialog,
// reads what it shows and presses its buttons while this thread sits in its loop. The
// custom colours go to the test prefix's own user settings.
class ColorDialogTest : public ColorControlsTest {
protected:
    static constexpr int kX = 20, kY = 20;

    void SetUp() override {
        test::DeleteCustomColors();
        Store(0, REG_NONE, 0x00112233);
        Store(1, REG_NONE, 0x00445566);
        Store(3, REG_DWORD, 0x00778899);  // any type is read; 2 is missing
        ColorControlsTest::SetUp();
        if (HasFatalFailure()) return;
        pair = std::make_unique<ColorPairControl>(Page(), hDllInstance, kX, kY, 80, 40, 12);
        pair->SetRegistryKey("Tessellum", "1.x");
        pair->Draw();
        // The page paints the control again when the colour dialog has uncovered it.
        page->onMessage = [this](UINT message, WPARAM, LPARAM) {
            if (message == WM_PAINT) pair->Draw();
        };
    }
    void TearDown() override {
        pair.reset();
        test::DeleteCustomColors();
        ColorControlsTest::TearDown();
    }

    // Clicks at x, y while the second thread deals with whatever dialog comes up.
    bool ClickWithWatch(int x, int y, DialogWatch& watch) {
        return test::ClickWithDialogWatch([&] { return pair->HandleClick(x, y); }, watch);
    }
    std::vector<uint32_t> Screen() { return ReadClient(Page(), 0, 0, 420, 200); }

    std::unique_ptr<ColorPairControl> pair;
};

TEST_F(ColorDialogTest, OkTakesTheColourAndStoresAllSixteenCustomColours) {
    pair->SetFore(1, 2, 3);
    DialogWatch watch(DialogWatch::kPressOk, 10000);
    EXPECT_TRUE(ClickWithWatch(kX + 20, kY + 20, watch));
    ASSERT_TRUE(watch.found) << "no colour dialog came up; found: '" << watch.title << "'";
    EXPECT_EQ(watch.owner, page->Dialog()) << "owned by the page's dialog, two levels up";
    EXPECT_EQ(watch.shownRed + "," + watch.shownGreen + "," + watch.shownBlue, "1,2,3")
        << "the dialog starts on the box's colour";

    uint8_t r, g, b;
    pair->GetFore(r, g, b);
    EXPECT_TRUE(r == 10 && g == 20 && b == 30);
    pair->GetBack(r, g, b);
    EXPECT_EQ(r, 255) << "the other box is untouched";
    test::PumpFor(100);
    EXPECT_EQ(Pixel(kX + 20, kY + 20), 0x0A141Eu);

    // Loaded: 0x112233, 0x445566, then 2 repeats 1, 3 as stored, 4 to 15 repeat 3; the
    // dialog put the new colour into the first; all 16 are written with type 0.
    std::vector<std::string> expected(16, "type 0, 4 bytes, 778899");
    expected[0] = "type 0, 4 bytes, 1E140A";
    expected[1] = expected[2] = "type 0, 4 bytes, 445566";
    EXPECT_EQ(StoredColors(), expected);
}

TEST_F(ColorDialogTest, TheControlKeyGivesNoDialogAndCancelKeepsNothing) {
    pair->SetBack(4, 5, 6);
    const std::vector<std::string> before = StoredColors();
    ASSERT_EQ(before[2], "missing");
    const std::vector<uint32_t> shown = Screen();

    // With the Control key held a click on the back box brings up no dialog at all.
    INPUT key = {};
    key.type = INPUT_KEYBOARD;
    key.ki.wVk = VK_CONTROL;
    ASSERT_EQ(SendInput(1, &key, sizeof key), 1u);
    test::PumpFor(100);
    ASSERT_TRUE(GetAsyncKeyState(VK_CONTROL) & 0x8000) << "the key reads as held";
    DialogWatch none(DialogWatch::kPressCancel, 1500);
    EXPECT_FALSE(ClickWithWatch(kX + 60, kY + 60, none));
    key.ki.dwFlags = KEYEVENTF_KEYUP;
    SendInput(1, &key, sizeof key);
    test::PumpFor(100);
    EXPECT_FALSE(none.found) << "a colour dialog came up";
    EXPECT_FALSE(none.strayDialog) << "a dialog came up: '" << none.title << "'";

    // Without it the dialog comes up on the box's colour; a colour typed in and added to
    // the custom colours, then Cancel: nothing is kept, nothing changes.
    ASSERT_FALSE(GetAsyncKeyState(VK_CONTROL) & 0x8000);
    DialogWatch cancel(DialogWatch::kPressCancel, 10000);
    cancel.red = 50;
    EXPECT_FALSE(ClickWithWatch(kX + 60, kY + 60, cancel));
    ASSERT_TRUE(cancel.found) << "no colour dialog came up; found: '" << cancel.title << "'";
    EXPECT_EQ(cancel.shownRed + "," + cancel.shownGreen + "," + cancel.shownBlue, "4,5,6");
    uint8_t r, g, b;
    pair->GetBack(r, g, b);
    EXPECT_TRUE(r == 4 && g == 5 && b == 6);
    pair->GetFore(r, g, b);
    EXPECT_EQ(r | g | b, 0);
    EXPECT_EQ(StoredColors(), before) << "not even the edited custom colours are kept";
    test::PumpFor(100);
    EXPECT_EQ(Screen(), shown);
}

// The dialog's numbers: bars 11 high, 25 apart; the panel's left edge well inside.
constexpr int kBarX = 130, kBarY = 40, kSpacing = 25;
constexpr uint32_t kBackdrop = 0xBFBFBF;

int RowTop(int row) {
    return kBarY + row * kSpacing;
}

class RgbSliderPanelTest : public ColorControlsTest {
protected:
    void SetUp() override {
        ColorControlsTest::SetUp();
        if (HasFatalFailure()) return;
        LoadSmallBitmaps(Page());
        panel = std::make_unique<RgbSliderPanel>(Page(), 11);
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
                    if (panel->IsEnabled()) panel->HandleTimer();
                    break;
                case WM_PAINT: panel->Repaint(true); break;
            }
        };
    }
    void TearDown() override {
        panel.reset();
        FreeSmallBitmaps();
        ColorControlsTest::TearDown();
    }

    // The text TextOutA prints there on the panel's grey: printing it again, with the
    // page's own font and text colour, changes no pixel.
    void ExpectTextAt(int x, int y, const std::string& text) {
        HDC dc = GetDC(Page());
        SIZE size = {};
        GetTextExtentPoint32A(dc, text.data(), int(text.size()), &size);
        const std::vector<uint32_t> shown = ReadClient(Page(), x, y, size.cx, size.cy);
        const int saved = SaveDC(dc);
        SetBkMode(dc, OPAQUE);
        SetBkColor(dc, kGrey);
        TextOutA(dc, x, y, text.data(), int(text.size()));
        RestoreDC(dc, saved);
        ReleaseDC(Page(), dc);
        GdiFlush();
        ASSERT_GT(size.cx, 0);
        EXPECT_EQ(ReadClient(Page(), x, y, size.cx, size.cy), shown)
            << "'" << text << "' at " << x << "," << y;
    }

    // Bar `row` on the screen, one pixel row across its inside.
    std::vector<uint32_t> BarOnScreen(int row) {
        return ReadClient(Page(), kBarX + 1, RowTop(row) + 5, 128, 1);
    }

    std::unique_ptr<RgbSliderPanel> panel;
    std::vector<bool> results;
    std::vector<UINT_PTR> timerIds;
};

TEST_F(RgbSliderPanelTest, AHeldArrowStepsOnEveryTickAndStopsAtButtonUp) {
    // The right arrow of green: x + 132 to x + 138, its row's 11 pixels.
    page->Mouse(WM_LBUTTONDOWN, kBarX + 134, RowTop(1) + 5);
    ASSERT_EQ(results, std::vector<bool>{true}) << "one step at the press";
    EXPECT_EQ(panel->Green(), 1);
    EXPECT_EQ(GetCapture(), Page());

    test::PumpFor(1000);
    const size_t ticks = timerIds.size();
    EXPECT_GE(ticks, 3u) << "the timer ticks while the arrow is held";
    for (UINT_PTR id : timerIds) EXPECT_EQ(id, 965u);
    EXPECT_EQ(panel->Green(), 1 + ticks) << "one step per tick";
    EXPECT_EQ(panel->Red(), 0);
    EXPECT_EQ(GetCapture(), Page()) << "held for the whole press";

    page->Mouse(WM_LBUTTONUP, kBarX + 134, RowTop(1) + 5);
    EXPECT_EQ(GetCapture(), nullptr);
    const uint8_t released = panel->Green();
    test::PumpFor(500);
    EXPECT_EQ(timerIds.size(), ticks) << "no tick after the button-up";
    EXPECT_EQ(panel->Green(), released);

    // The screen: green's read-out (a small value, so the hex has its leading 0) and the
    // bars of the other two rows, which show green.
    char text[8];
    std::snprintf(text, sizeof text, "%-5d", released);
    ExpectTextAt(kBarX + 160, RowTop(1) - 3, text);
    std::snprintf(text, sizeof text, "%02X ", released);
    ExpectTextAt(kBarX + 210, RowTop(1) - 3, text);
    EXPECT_EQ(Pixel(kBarX + released / 2 + 1, RowTop(1) + 11), 0u)
        << "the thumb's apex, column 5 of its top row";
    const std::vector<uint32_t> red = BarOnScreen(0);
    EXPECT_EQ(red[0], uint32_t(released) << 8);
    EXPECT_EQ(red[127], (254u << 16) | (uint32_t(released) << 8));
    ExpectTextAt(kBarX + 160, kBarY - 20, "Dec");
    ExpectTextAt(kBarX + 210, kBarY - 20, "Hex");
    // The page keeps one context: the panel must hand it back with its own grey undone.
    HDC dc = GetDC(Page());
    EXPECT_EQ(GetBkColor(dc), RGB(255, 255, 255));
    ReleaseDC(Page(), dc);
}

TEST_F(RgbSliderPanelTest, ADisabledPanelDoesNothingAndReEnabledShowsItsValuesOrBlack) {
    panel->SetRed(40);
    panel->Repaint(false);  // the page covers the panel first, then disables it
    panel->SetEnabled(false, true);
    const std::vector<uint32_t> before = ReadClient(Page(), 0, 0, 420, 200);
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
    EXPECT_EQ(ReadClient(Page(), 0, 0, 420, 200), before) << "nothing was drawn";

    // Enabled again without a reset the rows come back with their values; with one, black.
    panel->SetEnabled(true, false);
    ExpectTextAt(kBarX + 160, RowTop(0) - 3, "40   ");
    EXPECT_EQ(BarOnScreen(1)[0], 40u << 16) << "green's bar shows the red";
    panel->SetEnabled(false, false);
    panel->SetEnabled(true, true);
    EXPECT_EQ(panel->Red(), 0);
    ExpectTextAt(kBarX + 160, RowTop(0) - 3, "0    ");
    EXPECT_EQ(BarOnScreen(1)[0], 0u);
}

}  // namespace
}  // namespace tessellum
