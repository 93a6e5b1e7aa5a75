// The deciding part of the controls, without windows: mouse coordinates, the colour
// pair's regions at their edges, and the slider panel's painting, bars and hit rectangles.
// (Clicks in the middle of each part are driven in the real dialog, tests/dialog.)
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "controls/color_pair_layout.h"
#include "controls/mouse_point.h"
#include "controls/rgb_slider_logic.h"

namespace tessellum {
namespace {

intptr_t LParam(int x, int y) {
    return static_cast<intptr_t>(
        static_cast<uint32_t>((static_cast<uint16_t>(y) << 16) | static_cast<uint16_t>(x)));
}

TEST(PointFromLParam, SignExtendsEachWord) {
    for (const auto& [x, y] : {std::pair{12, 34}, {-5, 7}, {3, -1}, {-32768, 32767}}) {
        const MousePoint point = PointFromLParam(LParam(x, y));
        EXPECT_EQ(std::pair(point.x, point.y), std::pair(x, y));
    }
}

TEST(ColorPairRegion, ResetThenSwapThenForeOverBackThenNothingAtEachEdge) {
    using R = ColorPairRegion;
    const ColorPairParts parts = LayoutColorPair(0, 0, 80, 40, 12, 10, 10);  // the dialog's
    // The small boxes' corners, the arrow's and just right of it, the square the large
    // boxes share, the back box's own corners, just beyond it, a gap.
    const std::tuple<int, int, R> points[] = {
        {12, 52, R::kReset},   {27, 67, R::kReset},   {11, 52, R::kNone},    {63, 23, R::kSwap},
        {64, 14, R::kNone},    {32, 32, R::kForeBox}, {47, 47, R::kForeBox}, {48, 47, R::kBackBox},
        {71, 71, R::kBackBox}, {72, 60, R::kNone},    {0, 0, R::kNone}};
    for (const auto& [x, y, region] : points)
        EXPECT_EQ(FindColorPairRegion(parts, x, y), region) << x << "," << y;
}

constexpr PixelWord kSentinel = 0x00ABCDEF;  // what a bar holds where nothing was written

// Writes down every drawing call, and keeps the bars in plain memory; placed with the
// dialog's numbers: bars at x 100 and y 50, 75, 100.
class Panel : public RgbSliderLogic<Panel> {
public:
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
    std::string log;
    std::vector<PixelWord> bars[kRowCount];
    bool textPossible = true;
    using RgbSliderLogic::dragRow;

private:
    friend class RgbSliderLogic<Panel>;
    void Note(const std::string& what, int32_t px, int32_t py) {
        log += (log.empty() ? "" : "; ") + what + " at " + std::to_string(px) + "," +
               std::to_string(py);
    }
    SliderBarPixels BarPixels(int row) { return {bars[row].data(), kSliderBarWidth, 11}; }
    void BlitBar(int row, int32_t px, int32_t py) { Note("bar " + std::to_string(row), px, py); }
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
};

TEST(RgbSliderLogic, ASetMovesTheThumbThenRedrawsTheOtherRowsWithNewBarsThenItsOwn) {
    Panel panel;
    EXPECT_TRUE(panel.SetRed(200));
    // The thumb (328 wipes it) 11 below a bar's top at x + v/2 - 4; the texts 3 above it:
    // decimal at x + 160, letter at x - 28, hex at x + 210.
    EXPECT_EQ(panel.log,
              "328 at 96,61; 327 at 196,61; '200  ' at 260,47; 'R: ' at 72,47; 'C8 ' at 310,47; "
              "bar 1 at 100,75; 327 at 96,86; '0    ' at 260,72; 'G: ' at 72,72; '00 ' at 310,72; "
              "bar 2 at 100,100; 327 at 96,111; '0    ' at 260,97; 'B: ' at 72,97; '00 ' at "
              "310,97; bar 0 at 100,50; 327 at 196,61; '200  ' at 260,47; 'R: ' at 72,47; "
              "'C8 ' at 310,47");
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

TEST(RgbSliderLogic, RepaintDrawsTheBackdropThenRowsThenArrowsAndLabels) {
    Panel panel;
    panel.Repaint(false);
    EXPECT_EQ(panel.log, "backdrop at -15,28");
    panel.log.clear();
    panel.Repaint(true);
    // The arrows 8 before and 132 after each bar, then the letters and column heads.
    const std::string statics =
        "; 335 at 92,50; 330 at 232,50; 335 at 92,75; 330 at 232,75; 335 at 92,100; 330 at "
        "232,100; 'R:' at 72,47; 'G:' at 72,72; 'B:' at 72,97; 'Dec' at 260,30; 'Hex' at 310,30";
    EXPECT_EQ(panel.log.substr(0, 37), "backdrop at -15,28; bar 0 at 100,50; ");
    ASSERT_GT(panel.log.size(), statics.size());
    EXPECT_EQ(panel.log.substr(panel.log.size() - statics.size()), statics);
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

}  // namespace
}  // namespace tessellum
