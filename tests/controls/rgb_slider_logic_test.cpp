// The slider panel's decisions without a window: the order in which it repaints, the
// gradient words of its bars, the read-out texts, the hit rectangles of thumbs and
// arrows, drag values, and when it captures the mouse and runs its repeat timer.
#include "controls/rgb_slider_logic.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace tessellum {
namespace {

constexpr PixelWord kSentinel = 0x00ABCDEF;  // what a bar holds where nothing was written

// Writes down every drawing call, and keeps the bars in plain memory.
class RecordingPanel : public RgbSliderLogic<RecordingPanel> {
public:
    explicit RecordingPanel(int32_t barHeight) : RgbSliderLogic(barHeight) {
        for (auto& bar : bars) bar.assign(kSliderBarWidth * barHeight, kSentinel);
        Start();
    }

    // The page's start-up sequence with the dialog's numbers, then a clean log.
    void PlaceAsTheDialogDoes() {
        SetPosition(100, 50, 25);
        SetEnabled(true, true);
        hasBackground = true;
        log.clear();
    }

    PixelWord BarPixel(int row, uint32_t column, uint32_t memoryRow) const {
        return bars[row][memoryRow * kSliderBarWidth + column];
    }

    // The calls logged whose text starts with `prefix`, joined by "; ".
    std::string Only(const std::string& prefix = "") const {
        std::string out;
        for (const std::string& line : log)
            if (line.compare(0, prefix.size(), prefix) == 0)
                out += (out.empty() ? "" : "; ") + line;
        return out;
    }

    std::vector<std::string> log;
    std::vector<PixelWord> bars[kRowCount];
    bool hasBackground = false;
    bool textPossible = true;
    bool captured = false;
    bool timerRunning = false;

    using RgbSliderLogic::dragRow;

private:
    friend class RgbSliderLogic<RecordingPanel>;

    void Log(const std::string& what, int32_t px, int32_t py) {
        log.push_back(what + " at " + std::to_string(px) + "," + std::to_string(py));
    }
    SliderBarPixels BarPixels(int row) {
        log.push_back("refill " + std::to_string(row));
        return {bars[row].data(), kSliderBarWidth, uint32_t(bars[row].size() / kSliderBarWidth)};
    }
    void BlitBar(int row, int32_t px, int32_t py) { Log("bar " + std::to_string(row), px, py); }
    bool HasBackground() const { return hasBackground; }
    void BlitBackground(int32_t px, int32_t py) { Log("backdrop", px, py); }
    void DrawPicture(int32_t px, int32_t py, uint32_t id) {
        Log("picture " + std::to_string(id), px, py);
    }
    bool BeginText() {
        if (textPossible) log.push_back("begin text");
        return textPossible;
    }
    void Text(int32_t px, int32_t py, const char* text, int n) {
        Log("text '" + std::string(text, n) + "'", px, py);
    }
    void EndText() { log.push_back("end text"); }
    void CaptureMouse() { captured = true; }
    void ReleaseMouse() { captured = false; }
    void StartRepeatTimer() { timerRunning = true; }
    void StopRepeatTimer() { timerRunning = false; }
};

intptr_t LParam(int x, int y) {
    return static_cast<intptr_t>(
        static_cast<uint32_t>((static_cast<uint16_t>(y) << 16) | static_cast<uint16_t>(x)));
}

TEST(RgbSliderLogic, BarsShowTheirChannelFromZeroInStepsOfTwoWithTheOthersKept) {
    RecordingPanel panel(11);
    EXPECT_FALSE(panel.IsEnabled()) << "built disabled, values 0, bars white inside";
    EXPECT_EQ(panel.Red() + panel.Green() + panel.Blue(), 0);
    EXPECT_EQ(panel.BarPixel(2, 128, 9), kWhitePixel);
    panel.PlaceAsTheDialogDoes();
    panel.SetGreen(100);
    panel.SetBlue(7);
    panel.SetRed(255);
    for (uint32_t memoryRow = 1; memoryRow <= 9; ++memoryRow) {
        for (uint32_t column = 1; column <= 128; ++column) {
            const uint32_t v = 2 * (column - 1);
            ASSERT_EQ(panel.BarPixel(0, column, memoryRow), (v << 16) | (100 << 8) | 7) << column;
            ASSERT_EQ(panel.BarPixel(1, column, memoryRow), (255u << 16) | (v << 8) | 7) << column;
            ASSERT_EQ(panel.BarPixel(2, column, memoryRow), (255u << 16) | (100 << 8) | v)
                << column;
        }
    }
    for (int row = 0; row < 3; ++row) {  // the border is never written
        EXPECT_EQ((std::vector<PixelWord>{panel.BarPixel(row, 0, 5), panel.BarPixel(row, 129, 5),
                                          panel.BarPixel(row, 1, 0), panel.BarPixel(row, 1, 10)}),
                  std::vector<PixelWord>(4, kSentinel));
    }
    panel.SetEnabled(false, true);  // disabled, every bar is white inside
    EXPECT_EQ(panel.BarPixel(0, 40, 5), kWhitePixel);
    EXPECT_EQ(panel.BarPixel(1, 1, 5), kWhitePixel);
}

TEST(RgbSliderLogic, ASetWipesAndDrawsTheThumbThenRefillsAndDrawsTheOtherRowsThenItsOwn) {
    RecordingPanel panel(11);
    panel.PlaceAsTheDialogDoes();
    EXPECT_TRUE(panel.SetRed(200));
    // Bars at x 100 and y 50, 75, 100; thumbs 11 below a bar's top, at x + v/2 - 4;
    // texts 3 above a bar's top: decimal at x + 160, letter at x - 28, hex at x + 210.
    EXPECT_EQ(panel.Only(),
              "picture 328 at 96,61; picture 327 at 196,61; begin text; "
              "text '200  ' at 260,47; text 'R: ' at 72,47; text 'C8 ' at 310,47; end text; "
              "refill 1; bar 1 at 100,75; picture 327 at 96,86; begin text; "
              "text '0    ' at 260,72; text 'G: ' at 72,72; text '00 ' at 310,72; end text; "
              "refill 2; bar 2 at 100,100; picture 327 at 96,111; begin text; "
              "text '0    ' at 260,97; text 'B: ' at 72,97; text '00 ' at 310,97; end text; "
              "bar 0 at 100,50; picture 327 at 196,61; begin text; "
              "text '200  ' at 260,47; text 'R: ' at 72,47; text 'C8 ' at 310,47; end text");

    // Green refills the other two in row order and draws its own row last.
    panel.log.clear();
    panel.SetGreen(9);
    EXPECT_EQ(panel.Only("refill"), "refill 0; refill 2");
    EXPECT_EQ(panel.Only("bar"), "bar 0 at 100,50; bar 2 at 100,100; bar 1 at 100,75");
    panel.SetBlue(7);

    // The same value again still repaints, and reports no change; without a device
    // context the texts are skipped and the rest drawn: thumbs of 200, 9 and 7.
    panel.textPossible = false;
    panel.log.clear();
    EXPECT_FALSE(panel.SetRed(200));
    EXPECT_EQ(panel.Only("text"), "");
    EXPECT_EQ(panel.Only("bar"), "bar 1 at 100,75; bar 2 at 100,100; bar 0 at 100,50");
    EXPECT_EQ(panel.Only("picture"),
              "picture 328 at 196,61; picture 327 at 196,61; picture 327 at 100,86; "
              "picture 327 at 99,111; picture 327 at 196,61");
}

TEST(RgbSliderLogic, RepaintNeedsABackdropAndAnEnabledPanelAndDrawsRowsThenArrowsAndLabels) {
    RecordingPanel panel(11);
    panel.SetPosition(100, 50, 25);
    panel.SetEnabled(true, true);
    panel.log.clear();
    panel.Repaint(true);
    EXPECT_TRUE(panel.log.empty()) << "no backdrop yet";

    panel.hasBackground = true;
    panel.Repaint(false);
    EXPECT_EQ(panel.Only(), "backdrop at -15,28");
    panel.log.clear();
    panel.Repaint(true);
    EXPECT_EQ(panel.Only("bar"), "bar 0 at 100,50; bar 1 at 100,75; bar 2 at 100,100");
    // The arrows 8 before and 132 after each bar, then the letters and column heads.
    const std::string statics =
        "picture 335 at 92,50; picture 330 at 232,50; picture 335 at 92,75; "
        "picture 330 at 232,75; picture 335 at 92,100; picture 330 at 232,100; begin text; "
        "text 'R:' at 72,47; text 'G:' at 72,72; text 'B:' at 72,97; text 'Dec' at 260,30; "
        "text 'Hex' at 310,30; end text";
    const std::string all = panel.Only();
    EXPECT_EQ(all.substr(0, 20), "backdrop at -15,28; ");
    ASSERT_GE(all.size(), statics.size());
    EXPECT_EQ(all.substr(all.size() - statics.size()), statics);

    // Disabled, it stores nothing (though it reports the difference) and draws nothing.
    panel.SetEnabled(false, true);
    panel.log.clear();
    EXPECT_TRUE(panel.SetGreen(10));
    EXPECT_EQ(panel.Green(), 0);
    panel.Repaint(true);
    panel.SetEnabled(false, true);  // already disabled: nothing at all
    EXPECT_TRUE(panel.log.empty());
}

TEST(RgbSliderLogic, ThumbsHitTenBySixAndDragHorizontallyArrowsHitSixByElevenAndStep) {
    RecordingPanel panel(11);
    panel.PlaceAsTheDialogDoes();
    panel.SetGreen(100);  // green's thumb: left 100 + 50 - 4 = 146, top 75 + 11 = 86
    for (auto [px, py] : {std::pair{145, 86}, {146, 92}, {156, 86}, {150, 84}}) {
        EXPECT_FALSE(panel.HandleMouseDown(LParam(px, py)));
        EXPECT_EQ(panel.dragRow, 3) << px << "," << py << " is outside";
    }
    EXPECT_FALSE(panel.captured);
    EXPECT_FALSE(panel.HandleMouseDown(LParam(155, 91))) << "a hit changes no value";
    EXPECT_EQ(panel.dragRow, 1);
    EXPECT_TRUE(panel.captured);
    EXPECT_FALSE(panel.timerRunning);
    // Even values from the bar's left edge, 252 one short of its right end, then 255.
    const int drags[][3] = {{101, -300, 2},  {-2000, 900, 0}, {163, 0, 126}, {226, 0, 252},
                            {227, 900, 255}, {4100, 0, 255},  {99, 0, 0}};
    for (const auto& [px, py, value] : drags) {
        panel.HandleMouseMove(LParam(px, py));
        EXPECT_EQ(panel.Green(), value) << "dragged to " << px << "," << py;
    }
    EXPECT_FALSE(panel.HandleMouseMove(LParam(99, 0))) << "no change, no report";
    EXPECT_EQ(panel.Red() + panel.Blue(), 0);
    panel.HandleMouseUp();
    EXPECT_FALSE(panel.captured);
    EXPECT_FALSE(panel.HandleMouseMove(LParam(150, 0))) << "the drag has ended";

    // At 255 the thumb's left is x + 127 - 4.
    panel.SetBlue(255);
    EXPECT_FALSE(panel.HandleMouseDown(LParam(222, 111)));
    EXPECT_EQ(panel.dragRow, 3);
    EXPECT_FALSE(panel.HandleMouseDown(LParam(223, 111)));
    EXPECT_EQ(panel.dragRow, 2);
    panel.HandleMouseUp();

    // The arrows hit six by eleven and step by one up to the ends.
    panel.SetBlue(254);
    // Blue's right arrow: x + 132 to x + 138 across, y + 50 to y + 61 down.
    for (auto [px, py] : {std::pair{238, 100}, {235, 111}, {231, 105}, {98, 105}}) {
        EXPECT_FALSE(panel.HandleMouseDown(LParam(px, py))) << px << "," << py;
    }
    EXPECT_FALSE(panel.timerRunning);
    EXPECT_TRUE(panel.HandleMouseDown(LParam(237, 110)));
    EXPECT_EQ(panel.Blue(), 255);
    EXPECT_TRUE(panel.captured && panel.timerRunning);
    EXPECT_FALSE(panel.HandleTimer()) << "255 is the end";
    panel.HandleMouseUp();
    EXPECT_FALSE(panel.timerRunning);
    EXPECT_FALSE(panel.HandleTimer()) << "a tick after release steps nothing";

    panel.SetGreen(10);  // green's left arrow: x - 8 to x - 2
    EXPECT_TRUE(panel.HandleMouseDown(LParam(92, 75)));
    EXPECT_TRUE(panel.HandleTimer());
    EXPECT_EQ(panel.Green(), 8);
    panel.HandleMouseUp();
    EXPECT_FALSE(panel.timerRunning || panel.captured);
}

}  // namespace
}  // namespace tessellum
