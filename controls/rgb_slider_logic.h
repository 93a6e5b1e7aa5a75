// What the RGB slider panel decides and in which order it paints, apart from how it
// paints: the values, the mouse states, the hit rectangles, the bar gradients and the
// sequence of repaints. `Panel` derives from this class and does the drawing:
//
//   SliderBarPixels BarPixels(int row)      the pixel store of bar `row`
//   void BlitBar(int row, int32_t x, int32_t y)
//   bool HasBackground()
//   void BlitBackground(int32_t x, int32_t y)
//   void DrawPicture(int32_t x, int32_t y, uint32_t id)   one of the small bitmaps
//   bool BeginText()                        false: no text can be drawn now
//   void Text(int32_t x, int32_t y, const char* text, int count)
//   void EndText()
//   void CaptureMouse(), void ReleaseMouse()     release only what the panel holds
//   void StartRepeatTimer(), void StopRepeatTimer()
//
// Every size and offset is taken at the panel's DPI (SetDpi); the panel's side makes its
// bars, pictures and font for the same DPI.
#pragma once

#include <cstdint>
#include <initializer_list>

#include "controls/mouse_point.h"
#include "controls/pixel_word.h"
#include "controls/slider_geometry.h"
#include "controls/slider_gradient.h"
#include "controls/slider_readout.h"
#include "resources/resource_ids.h"

namespace tessellum {

struct SliderBarPixels {
    PixelWord* bits;
    uint32_t width;
    uint32_t height;
};

template <class Panel>
class RgbSliderLogic {
public:
    static constexpr int32_t kRowCount = 3;  // 0 red, 1 green, 2 blue
    static constexpr int32_t kNoRow = 3;
    static constexpr int32_t kStepDown = 4;  // left arrow
    static constexpr int32_t kStepUp = 5;    // right arrow
    static constexpr uint32_t kRepeatTimerId = 965;
    static constexpr uint32_t kRepeatPeriod = 150;                 // milliseconds
    static constexpr int32_t kBackdropLeft = kSliderBackdropLeft;  // from x, at 96 DPI
    static constexpr int32_t kBackdropTop = kSliderBackdropTop;    // from y

    // Stores the place only; the page repaints when it is ready. The backdrop's top is
    // its own (22 pixels at 96 DPI above the first bar) until the page moves it.
    void SetPosition(int32_t left, int32_t top, int32_t spacing) {
        x = left;
        y = top;
        rowSpacing = spacing;
        backdropTop = y + ScaleToDpi(kBackdropTop, dpi);
    }

    // Where the page wants the backdrop's top edge: below what stands above the panel.
    void SetBackdropTop(int32_t top) { backdropTop = top; }
    int32_t BackdropTop() const { return backdropTop; }

    bool IsEnabled() const { return enabled != 0; }
    int32_t Dpi() const { return dpi; }
    int32_t X() const { return x; }
    int32_t Y() const { return y; }
    int32_t RowSpacing() const { return rowSpacing; }
    int32_t BarHeight() const { return barHeight; }
    uint8_t Red() const { return red; }
    uint8_t Green() const { return green; }
    uint8_t Blue() const { return blue; }

    bool SetRed(uint8_t value) { return SetChannel(0, value); }
    bool SetGreen(uint8_t value) { return SetChannel(1, value); }
    bool SetBlue(uint8_t value) { return SetChannel(2, value); }

    // A disabled panel only refills its bars white and draws nothing: the page has
    // covered it before. Re-enabling draws the rows, after a reset to black if asked.
    void SetEnabled(bool flag, bool reset) {
        if (flag == IsEnabled()) return;
        enabled = flag ? 1 : 0;
        for (int32_t row = 0; row < kRowCount; ++row) RefillBar(row);
        if (!flag) return;
        if (reset) {
            SetRed(0);
            SetGreen(0);
            SetBlue(0);
        }
        for (int32_t row = 0; row < kRowCount; ++row) DrawRow(row);
    }

    // The backdrop, and with `full` the rows, arrows and labels on it.
    void Repaint(bool full) {
        if (!panel().HasBackground() || !enabled) return;
        panel().BlitBackground(x + ScaleToDpi(kBackdropLeft, dpi), backdropTop);
        if (!full) return;
        for (int32_t row = 0; row < kRowCount; ++row) DrawRow(row);
        DrawStatics();
    }

    // A press on a thumb starts a drag (the value moves only with the mouse); a press on
    // an arrow steps at once and then on every tick of the repeat timer until release.
    bool HandleMouseDown(intptr_t lParam) {
        if (!enabled) return false;
        const MousePoint point = PointFromLParam(lParam);
        for (int32_t row = 0; row < kRowCount; ++row) {
            if (BoundsContain(ThumbHitBounds(x, RowTop(row), barHeight, Value(row), dpi), point.x,
                              point.y)) {
                dragRow = row;
                panel().CaptureMouse();
            }
        }
        for (int32_t row = 0; row < kRowCount; ++row) {
            for (int32_t direction : {kStepDown, kStepUp}) {
                const ControlBounds arrow = direction == kStepDown
                                                ? LeftArrowBounds(x, RowTop(row), dpi)
                                                : RightArrowBounds(x, RowTop(row), dpi);
                if (!BoundsContain(arrow, point.x, point.y)) continue;
                repeatDirection = direction;
                repeatRow = row;
                panel().CaptureMouse();
                panel().StartRepeatTimer();
                return Step();
            }
        }
        return false;
    }

    // Only the horizontal position counts while a thumb is held.
    bool HandleMouseMove(intptr_t lParam) {
        if (!enabled || dragRow == kNoRow) return false;
        return SetChannel(dragRow, DragValue(PointFromLParam(lParam).x, x, dpi));
    }

    // Ends a drag or a repeat, even on a disabled panel.
    void HandleMouseUp() {
        dragRow = kNoRow;
        if (repeatRow != kNoRow) {
            repeatRow = kNoRow;
            panel().StopRepeatTimer();
        }
        panel().ReleaseMouse();
    }

    bool HandleTimer() { return Step(); }

protected:
    explicit RgbSliderLogic(int32_t barHeight) : barHeight(barHeight), baseBarHeight(barHeight) {}

    // The sizes for another DPI; the panel's side remakes its bars and pictures after.
    void ApplyDpi(int32_t value) {
        dpi = SaneDpi(value);
        barHeight = ScaleToDpi(baseBarHeight, dpi);
    }

    // The last step of construction, once the bars exist: the values start at 0 and the
    // panel waits disabled until the page places and enables it.
    void Start() {
        SetRed(0);
        SetGreen(0);
        SetBlue(0);
        SetEnabled(false, true);
    }

    int32_t RowTop(int32_t row) const { return y + row * rowSpacing; }

    uint8_t Value(int32_t row) const { return row == 0 ? red : row == 1 ? green : blue; }

    void RefillBar(int32_t row) {
        const SliderBarPixels bar = panel().BarPixels(row);
        FillSliderBar(
            bar.bits, bar.width, bar.height, GradientOfRow(row, red, green, blue, enabled != 0),
            static_cast<uint32_t>(LineWidth(dpi)), static_cast<uint32_t>(SliderBarColumns(dpi)));
    }

    void DrawRow(int32_t row) {
        panel().BlitBar(row, x, RowTop(row));
        DrawReadout(row, false);
    }

    // The thumb (or the patch that wipes it), then the three texts of the row.
    void DrawReadout(int32_t row, bool wipe) {
        const uint8_t value = Value(row);
        const int32_t top = RowTop(row);
        panel().DrawPicture(ThumbLeft(x, value, dpi), top + barHeight,
                            wipe ? IDB_THUMB_WIPE : IDB_SLIDER_THUMB);
        if (wipe || !panel().BeginText()) return;
        const SliderReadout text = FormatReadout(value, kLetters[row]);
        const ReadoutPlace decimal = Readout(row, ReadoutColumn::kDecimal);
        const ReadoutPlace label = Readout(row, ReadoutColumn::kLabel);
        const ReadoutPlace hex = Readout(row, ReadoutColumn::kHex);
        panel().Text(decimal.x, decimal.y, text.decimal, 5);
        panel().Text(label.x, label.y, text.label, 3);
        panel().Text(hex.x, hex.y, text.hex, 3);
        panel().EndText();
    }

    // The parts that never change: arrows, letters and column heads.
    void DrawStatics() {
        for (int32_t row = 0; row < kRowCount; ++row) {
            panel().DrawPicture(LeftArrowLeft(x, dpi), RowTop(row), IDB_ARROW_LEFT);
            panel().DrawPicture(RightArrowLeft(x, dpi), RowTop(row), IDB_ARROW_RIGHT);
        }
        if (!panel().BeginText()) return;
        static const char* const kLabels[kRowCount] = {"R:  ", "G:  ", "B:  "};
        for (int32_t row = 0; row < kRowCount; ++row) {
            const ReadoutPlace label = Readout(row, ReadoutColumn::kLabel);
            panel().Text(label.x, label.y, kLabels[row], 2);
        }
        const ReadoutPlace dec = Readout(kSliderHeadRow, ReadoutColumn::kDecimal);
        const ReadoutPlace hex = Readout(kSliderHeadRow, ReadoutColumn::kHex);
        panel().Text(dec.x, dec.y, "Dec ", 3);
        panel().Text(hex.x, hex.y, "Hex ", 3);
        panel().EndText();
    }

    ReadoutPlace Readout(int32_t row, ReadoutColumn column) const {
        return SliderReadoutPlace(x, y, rowSpacing, row, column, dpi);
    }

    uint8_t red = 1;  // 1, so that construction's setting to 0 is a change
    uint8_t green = 1;
    uint8_t blue = 1;
    int32_t x = 0;
    int32_t y = 0;
    int32_t rowSpacing = 20;
    int32_t dragRow = kNoRow;
    int32_t repeatRow = kNoRow;
    int32_t repeatDirection = kStepDown;
    uint8_t enabled = 1;
    int32_t textColumn = kSliderTextColumn;  // at 96 DPI
    int32_t barHeight;                       // pixels at the panel's DPI
    int32_t baseBarHeight;                   // at 96 DPI, as the page gave it
    int32_t dpi = kBaseDpi;
    int32_t backdropTop = kBackdropTop;  // in the owner's client area

private:
    static constexpr char kLetters[kRowCount] = {'R', 'G', 'B'};

    Panel& panel() { return static_cast<Panel&>(*this); }

    // The thumb and read-out move first; then the two other bars, which show this
    // channel, are refilled and drawn; the row's own bar does not depend on its value
    // and is only drawn again. A disabled panel neither stores nor paints.
    bool SetChannel(int32_t row, uint8_t value) {
        const bool changed = value != Value(row);
        if (!enabled) return changed;
        DrawReadout(row, true);
        (row == 0 ? red : row == 1 ? green : blue) = value;
        DrawReadout(row, false);
        for (int32_t other = 0; other < kRowCount; ++other) {
            if (other == row) continue;
            RefillBar(other);
            DrawRow(other);
        }
        DrawRow(row);
        return changed;
    }

    // One step of the held arrow; nothing at the end of the range.
    bool Step() {
        if (repeatRow < 0 || repeatRow >= kRowCount) return false;
        const uint8_t value = Value(repeatRow);
        if (repeatDirection == kStepDown) {
            if (value > 0) return SetChannel(repeatRow, static_cast<uint8_t>(value - 1));
        } else if (value < 255) {
            return SetChannel(repeatRow, static_cast<uint8_t>(value + 1));
        }
        return false;
    }
};

}  // namespace tessellum
