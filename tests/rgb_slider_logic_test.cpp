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

    std::vector<std::string> log;
    std::vector<PixelWord> bars[kRowCount];
    bool hasBackground = false;
    bool textPossible = true;
    bool captured = false;
    bool timerRunning = false;
    int timerStarts = 0;
    int timerStops = 0;

    using RgbSliderLogic::dragRow;
    using RgbSliderLogic::repeatDirection;
    using RgbSliderLogic::repeatRow;

private:
    friend class RgbSliderLogic<RecordingPanel>;

    static std::string At(int32_t px, int32_t py) {
        return " at " + std::to_string(px) + "," + std::to_string(py);
    }

    SliderBarPixels BarPixels(int row) {
        log.push_back("refill " + std::to_string(row));
        return {bars[row].data(), kSliderBarWidth,
                static_cast<uint32_t>(bars[row].size() / kSliderBarWidth)};
    }
    void BlitBar(int row, int32_t px, int32_t py) {
        log.push_back("bar " + std::to_string(row) + At(px, py));
    }
    bool HasBackground() const { return hasBackground; }
    void BlitBackground(int32_t px, int32_t py) { log.push_back("backdrop" + At(px, py)); }
    void DrawPicture(int32_t px, int32_t py, uint32_t id) {
        log.push_back("picture " + std::to_string(id) + At(px, py));
    }
    bool BeginText() {
        if (textPossible) log.push_back("begin text");
        return textPossible;
    }
    void Text(int32_t px, int32_t py, const char* text, int count) {
        log.push_back("text '" + std::string(text, count) + "'" + At(px, py));
    }
    void EndText() { log.push_back("end text"); }
    void CaptureMouse() {
        captured = true;
        log.push_back("capture");
    }
    void ReleaseMouse() {
        if (captured) log.push_back("release");
        captured = false;
    }
    void StartRepeatTimer() {
        timerRunning = true;
        ++timerStarts;
    }
    void StopRepeatTimer() {
        timerRunning = false;
        ++timerStops;
    }
};

intptr_t LParam(int x, int y) {
    return static_cast<intptr_t>(
        static_cast<uint32_t>((static_cast<uint16_t>(y) << 16) | static_cast<uint16_t>(x)));
}

std::vector<std::string> Only(const std::vector<std::string>& log, const std::string& prefix) {
    std::vector<std::string> out;
    for (const std::string& line : log)
        if (line.compare(0, prefix.size(), prefix) == 0) out.push_back(line);
    return out;
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
        EXPECT_EQ(panel.BarPixel(row, 0, 5), kSentinel);
        EXPECT_EQ(panel.BarPixel(row, 129, 5), kSentinel);
        EXPECT_EQ(panel.BarPixel(row, 1, 0), kSentinel);
        EXPECT_EQ(panel.BarPixel(row, 1, 10), kSentinel);
    }

    // A row's own bar does not depend on its value and is not refilled for it.
    panel.bars[0][5 * kSliderBarWidth + 40] = kSentinel;
    panel.SetRed(3);
    EXPECT_EQ(panel.BarPixel(0, 40, 5), kSentinel);
    EXPECT_EQ(panel.BarPixel(1, 1, 5), (3u << 16) | 7) << "the others show the new red";

    // Disabled, every bar is white inside; re-enabled without a reset, the values stay.
    panel.SetEnabled(false, true);
    EXPECT_EQ(panel.BarPixel(0, 40, 5), kWhitePixel);
    EXPECT_EQ(panel.BarPixel(1, 1, 5), kWhitePixel);
    panel.SetEnabled(true, false);
    EXPECT_EQ(panel.Green(), 100);
    EXPECT_EQ(panel.BarPixel(2, 2, 5), (3u << 16) | (100 << 8) | 2);
}

TEST(RgbSliderLogic, SetRedWipesTheThumbThenDrawsItThenTheOtherBarsThenItsOwnRow) {
    RecordingPanel panel(11);
    panel.PlaceAsTheDialogDoes();
    EXPECT_TRUE(panel.SetRed(200));
    // Bars at x 100 and y 50, 75, 100; thumbs 11 below a bar's top, at x + v/2 - 4;
    // texts 3 above a bar's top: decimal at x + 160, letter at x - 28, hex at x + 210.
    const std::vector<std::string> readout0 = {"begin text", "text '200  ' at 260,47",
                                               "text 'R: ' at 72,47", "text 'C8 ' at 310,47",
                                               "end text"};
    std::vector<std::string> expected = {"picture 328 at 96,61", "picture 327 at 196,61"};
    expected.insert(expected.end(), readout0.begin(), readout0.end());
    for (const char* line :
         {"refill 1", "bar 1 at 100,75", "picture 327 at 96,86", "begin text",
          "text '0    ' at 260,72", "text 'G: ' at 72,72", "text '00 ' at 310,72", "end text",
          "refill 2", "bar 2 at 100,100", "picture 327 at 96,111", "begin text",
          "text '0    ' at 260,97", "text 'B: ' at 72,97", "text '00 ' at 310,97", "end text",
          "bar 0 at 100,50", "picture 327 at 196,61"}) {
        expected.push_back(line);
    }
    expected.insert(expected.end(), readout0.begin(), readout0.end());
    EXPECT_EQ(panel.log, expected);
}

TEST(RgbSliderLogic, SetGreenAndSetBlueRefillTheOtherTwoInRowOrderAndDrawTheirOwnLast) {
    RecordingPanel panel(11);
    panel.PlaceAsTheDialogDoes();
    panel.SetGreen(9);
    EXPECT_EQ(Only(panel.log, "refill"), (std::vector<std::string>{"refill 0", "refill 2"}));
    EXPECT_EQ(Only(panel.log, "bar"),
              (std::vector<std::string>{"bar 0 at 100,50", "bar 2 at 100,100", "bar 1 at 100,75"}));
    EXPECT_EQ(panel.log[0], "picture 328 at 96,86");
    EXPECT_EQ(panel.log[1], "picture 327 at 100,86") << "thumb of 9 at x + 4 - 4";

    panel.log.clear();
    panel.SetBlue(7);
    EXPECT_EQ(Only(panel.log, "refill"), (std::vector<std::string>{"refill 0", "refill 1"}));
    EXPECT_EQ(Only(panel.log, "bar"),
              (std::vector<std::string>{"bar 0 at 100,50", "bar 1 at 100,75", "bar 2 at 100,100"}));

    // The same value again still repaints everything, and reports no change.
    panel.log.clear();
    EXPECT_FALSE(panel.SetGreen(9));
    EXPECT_EQ(Only(panel.log, "bar").size(), 3u);

    // Without a device context the texts are skipped, the rest is drawn.
    panel.textPossible = false;
    panel.log.clear();
    panel.SetRed(1);
    EXPECT_TRUE(Only(panel.log, "text").empty());
    EXPECT_EQ(Only(panel.log, "bar").size(), 3u);
    EXPECT_EQ(Only(panel.log, "picture").size(), 5u);
}

TEST(RgbSliderLogic, ADisabledPanelStoresNothingAndDrawsNothing) {
    RecordingPanel panel(11);
    panel.PlaceAsTheDialogDoes();
    panel.SetEnabled(false, true);
    panel.log.clear();
    EXPECT_TRUE(panel.SetGreen(10)) << "reports the difference";
    EXPECT_EQ(panel.Green(), 0) << "but keeps the value";
    panel.Repaint(true);
    panel.SetEnabled(false, true);  // already disabled: nothing at all
    EXPECT_TRUE(panel.log.empty());
}

TEST(RgbSliderLogic, RepaintNeedsABackdropAndWithFullDrawsRowsThenArrowsAndLabels) {
    RecordingPanel panel(11);
    panel.SetPosition(100, 50, 25);
    panel.SetEnabled(true, true);
    panel.log.clear();
    panel.Repaint(true);
    EXPECT_TRUE(panel.log.empty()) << "no backdrop yet";

    panel.hasBackground = true;
    panel.Repaint(false);
    EXPECT_EQ(panel.log, (std::vector<std::string>{"backdrop at -15,28"}));
    panel.log.clear();
    panel.Repaint(true);
    EXPECT_EQ(Only(panel.log, "bar"),
              (std::vector<std::string>{"bar 0 at 100,50", "bar 1 at 100,75", "bar 2 at 100,100"}));
    const std::vector<std::string> statics = {"picture 335 at 92,50",
                                              "picture 330 at 232,50",
                                              "picture 335 at 92,75",
                                              "picture 330 at 232,75",
                                              "picture 335 at 92,100",
                                              "picture 330 at 232,100",
                                              "begin text",
                                              "text 'R:' at 72,47",
                                              "text 'G:' at 72,72",
                                              "text 'B:' at 72,97",
                                              "text 'Dec' at 260,30",
                                              "text 'Hex' at 310,30",
                                              "end text"};
    ASSERT_GE(panel.log.size(), statics.size());
    EXPECT_EQ(panel.log.front(), "backdrop at -15,28");
    EXPECT_EQ(std::vector<std::string>(panel.log.end() - statics.size(), panel.log.end()), statics);
}

TEST(RgbSliderLogic, ThumbsHitTenByTenUnderTheBarAndDragsUseOnlyTheHorizontal) {
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
    EXPECT_EQ(panel.timerStarts, 0);
    EXPECT_TRUE(panel.HandleMouseMove(LParam(100 + 1, -300)));
    EXPECT_EQ(panel.Green(), 2);
    EXPECT_TRUE(panel.HandleMouseMove(LParam(-2000, 900)));
    EXPECT_FALSE(panel.HandleMouseMove(LParam(100 - 1, 0))) << "left of the bar is 0 again";
    EXPECT_TRUE(panel.HandleMouseMove(LParam(100 + 4000, 0)));
    EXPECT_EQ(panel.Green(), 255);
    EXPECT_EQ(panel.Red() + panel.Blue(), 0);
    panel.HandleMouseUp();
    EXPECT_FALSE(panel.captured);
    EXPECT_EQ(panel.timerStops, 0) << "no timer was running";
    EXPECT_FALSE(panel.HandleMouseMove(LParam(150, 0))) << "the drag has ended";

    // At 255 the thumb's left is x + 127 - 4.
    panel.SetBlue(255);
    EXPECT_FALSE(panel.HandleMouseDown(LParam(222, 111)));
    EXPECT_EQ(panel.dragRow, 3);
    EXPECT_FALSE(panel.HandleMouseDown(LParam(223, 111)));
    EXPECT_EQ(panel.dragRow, 2);
}

TEST(RgbSliderLogic, ArrowsHitSixByElevenAndStepByOneUpToTheEnds) {
    RecordingPanel panel(11);
    panel.PlaceAsTheDialogDoes();
    panel.SetBlue(254);
    // Blue's right arrow: x + 132 to x + 138 across, y + 50 to y + 61 down.
    for (auto [px, py] : {std::pair{238, 100}, {235, 111}, {231, 105}, {98, 105}}) {
        EXPECT_FALSE(panel.HandleMouseDown(LParam(px, py))) << px << "," << py;
    }
    EXPECT_EQ(panel.timerStarts, 0);
    EXPECT_TRUE(panel.HandleMouseDown(LParam(237, 110)));
    EXPECT_EQ(panel.Blue(), 255);
    EXPECT_EQ(panel.repeatRow, 2);
    EXPECT_EQ(panel.repeatDirection, 5);
    EXPECT_TRUE(panel.captured);
    EXPECT_TRUE(panel.timerRunning);
    EXPECT_FALSE(panel.HandleTimer()) << "255 is the end";
    panel.HandleMouseUp();
    EXPECT_FALSE(panel.timerRunning);
    EXPECT_FALSE(panel.HandleTimer()) << "a tick after release steps nothing";

    panel.SetGreen(10);  // green's left arrow: x - 8 to x - 2
    EXPECT_TRUE(panel.HandleMouseDown(LParam(92, 75)));
    EXPECT_TRUE(panel.HandleTimer());
    EXPECT_EQ(panel.Green(), 8);
    EXPECT_EQ(panel.repeatDirection, 4);
    panel.HandleMouseUp();
    const int stops = panel.timerStops;
    panel.HandleMouseUp();
    EXPECT_EQ(panel.timerStops, stops) << "releasing with nothing held stops no timer";
}

TEST(FillSliderBar, WritesAtMost128ColumnsSoNoChannelCarriesIntoTheNext) {
    std::vector<PixelWord> wide(200 * 4, kSentinel);
    FillSliderBar(wide.data(), 200, 4, GradientOfRow(1, 0x12, 0, 0x34, true));
    EXPECT_EQ(wide[200 + 128], 0x0012FE34u);
    EXPECT_EQ(wide[200 + 129], kSentinel) << "column 129 would hold green 256";
    EXPECT_EQ(wide[3 * 200 + 1], kSentinel) << "the last memory row is border";
    std::vector<PixelWord> thin(130 * 2, kSentinel);  // no inside: left alone
    FillSliderBar(thin.data(), 130, 2, GradientOfRow(0, 0, 0, 0, true));
    EXPECT_EQ(thin, std::vector<PixelWord>(130 * 2, kSentinel));
}

}  // namespace
}  // namespace tessellum
