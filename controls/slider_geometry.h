// Where the parts of one slider row lie, relative to the left edge of its bar (barX)
// and the top of its row (rowTop), and what a drag to a point means, at the panel's DPI.
// Every number below is the 96-DPI one; the functions scale it (controls/dpi_scale.h),
// and the sizes of the small pictures are those the build drew for that DPI.
#pragma once

#include <cstdint>
#include <initializer_list>

#include "controls/control.h"
#include "controls/dpi_scale.h"

namespace tessellum {

// A bar is 130 pixels wide at 96 DPI: a one-pixel border around 128 columns, which show
// the channel values 0, 2, ... 254 (255 is never shown).
constexpr uint32_t kSliderBarWidth = 130;
constexpr uint32_t kSliderBarColumns = 128;

constexpr int32_t SliderBarWidth(int32_t dpi) {
    return ScaleToDpi(static_cast<int32_t>(kSliderBarWidth), dpi);
}
// The columns inside the bar's border, which show the values.
constexpr int32_t SliderBarColumns(int32_t dpi) {
    return SliderBarWidth(dpi) - 2 * LineWidth(dpi);
}

// The first inside column (from 0) that shows `value` rounded down to even: inside column
// j shows 2 * (j * 128 / columns).
constexpr int32_t SliderColumnOfValue(uint8_t value, int32_t dpi) {
    const int32_t columns = SliderBarColumns(dpi);
    const int32_t half = value / 2;
    return (half * columns + static_cast<int32_t>(kSliderBarColumns) - 1) /
           static_cast<int32_t>(kSliderBarColumns);
}

// The pictures' sizes: thumb 11 by 6, step arrows 6 by 11, the thumb's wipe 11 by 11.
constexpr int32_t SliderThumbWidth(int32_t dpi) {
    return ArtSize(11, dpi);
}
constexpr int32_t SliderThumbHeight(int32_t dpi) {
    return ArtSize(6, dpi);
}
constexpr int32_t SliderArrowWidth(int32_t dpi) {
    return ArtSize(6, dpi);
}
constexpr int32_t SliderArrowHeight(int32_t dpi) {
    return ArtSize(11, dpi);
}

// The thumb hangs under the bar with its apex (the middle column of the picture) under
// the column that shows the value rounded down to even. Its hit rectangle is one line
// narrower than the picture.
constexpr int32_t ThumbLeft(int32_t barX, uint8_t value, int32_t dpi = kBaseDpi) {
    return barX + LineWidth(dpi) + SliderColumnOfValue(value, dpi) - SliderThumbWidth(dpi) / 2;
}

constexpr ControlBounds ThumbHitBounds(int32_t barX, int32_t rowTop, int32_t barHeight,
                                       uint8_t value, int32_t dpi = kBaseDpi) {
    return {ThumbLeft(barX, value, dpi), rowTop + barHeight,
            ThumbLeft(barX, value, dpi) + SliderThumbWidth(dpi) - LineWidth(dpi),
            rowTop + barHeight + SliderThumbHeight(dpi)};
}

constexpr int32_t kLeftArrowOffset = -8;    // the left arrow stands 8 pixels before the bar
constexpr int32_t kRightArrowOffset = 132;  // the right one 2 pixels after it

constexpr int32_t LeftArrowLeft(int32_t barX, int32_t dpi = kBaseDpi) {
    return barX + ScaleToDpi(kLeftArrowOffset, dpi);
}
constexpr int32_t RightArrowLeft(int32_t barX, int32_t dpi = kBaseDpi) {
    return barX + ScaleToDpi(kRightArrowOffset, dpi);
}

constexpr ControlBounds LeftArrowBounds(int32_t barX, int32_t rowTop, int32_t dpi = kBaseDpi) {
    return {LeftArrowLeft(barX, dpi), rowTop, LeftArrowLeft(barX, dpi) + SliderArrowWidth(dpi),
            rowTop + SliderArrowHeight(dpi)};
}

constexpr ControlBounds RightArrowBounds(int32_t barX, int32_t rowTop, int32_t dpi = kBaseDpi) {
    return {RightArrowLeft(barX, dpi), rowTop, RightArrowLeft(barX, dpi) + SliderArrowWidth(dpi),
            rowTop + SliderArrowHeight(dpi)};
}

// A drag reaches the even values up to 252 and then 255: the right end of the bar must
// give the full channel, which no even value does. The distance from the bar's edge is
// taken back to 96 DPI first, so the same place on the bar gives the same value.
constexpr uint8_t DragValue(int32_t pointX, int32_t barX, int32_t dpi = kBaseDpi) {
    const int32_t d = UnscaleFromDpi(pointX - barX, dpi);
    if (d < 0) return 0;
    if (d >= 127) return 255;
    return static_cast<uint8_t>(2 * d);
}

// The texts of the panel. Row 0 to 2 stand 3 pixels above their bar's top; the column
// heads (kSliderHeadRow) 20 above the first bar's. The label stands 28 before the bar,
// the decimal value 160 after its left edge, the hexadecimal one 50 after that.
enum class ReadoutColumn { kLabel, kDecimal, kHex };
constexpr int32_t kSliderHeadRow = -1;
constexpr int32_t kSliderTextColumn = 160;

struct ReadoutPlace {
    int32_t x;
    int32_t y;
};

// Where the text of `row` in `column` starts, for a panel whose first bar stands at
// (barX, firstRowTop) with `rowSpacing` pixels from one bar's top to the next.
constexpr ReadoutPlace SliderReadoutPlace(int32_t barX, int32_t firstRowTop, int32_t rowSpacing,
                                          int32_t row, ReadoutColumn column,
                                          int32_t dpi = kBaseDpi) {
    const int32_t x = column == ReadoutColumn::kLabel ? barX + ScaleToDpi(-28, dpi)
                      : column == ReadoutColumn::kDecimal
                          ? barX + ScaleToDpi(kSliderTextColumn, dpi)
                          : barX + ScaleToDpi(kSliderTextColumn + 50, dpi);
    const int32_t y = row == kSliderHeadRow ? firstRowTop - ScaleToDpi(20, dpi)
                                            : firstRowTop + row * rowSpacing - ScaleToDpi(3, dpi);
    return {x, y};
}

// The flat backdrop behind the panel: 355 by 100 from 115 before the bars and 22 above
// the first. The dialog places the first bar 38 right of and 20 under its placeholder's
// corner, and the bars 25 apart; the bars are 11 high.
constexpr int32_t kSliderBackdropLeft = -115;
constexpr int32_t kSliderBackdropTop = -22;
constexpr int32_t kSliderBackdropWidth = 355;
constexpr int32_t kSliderBackdropHeight = 100;
constexpr int32_t kSliderPlaceLeft = 38;
constexpr int32_t kSliderPlaceTop = 20;
constexpr int32_t kSliderRowSpacing = 25;
constexpr int32_t kSliderBarHeight = 11;

// The box of a read-out that a click hits and its edit field covers: the value of row 0 to
// 2 in its column, or a column head. It reaches 3 pixels (at 96 DPI) left of the text and 2
// above it, 17 high; wide enough for three digits, two, or (the "Hex" head, which stands
// for the whole colour) "#RRGGBB" and more.
constexpr ControlBounds ReadoutBounds(int32_t barX, int32_t firstRowTop, int32_t rowSpacing,
                                      int32_t row, ReadoutColumn column, int32_t dpi) {
    const ReadoutPlace text = SliderReadoutPlace(barX, firstRowTop, rowSpacing, row, column, dpi);
    const int32_t width = row == kSliderHeadRow ? 72 : column == ReadoutColumn::kDecimal ? 30 : 24;
    return {text.x - ScaleToDpi(3, dpi), text.y - ScaleToDpi(2, dpi),
            text.x + ScaleToDpi(width - 3, dpi), text.y + ScaleToDpi(15, dpi)};
}

// The read-out under a point: a row's value (row 0 to 2), the "Hex" head (the whole
// colour, kSliderHeadRow), or none (kNoReadout). The "Dec" head opens nothing.
constexpr int32_t kNoReadout = 3;
struct ReadoutHit {
    int32_t row;
    ReadoutColumn column;
};

constexpr ReadoutHit FindReadout(int32_t barX, int32_t firstRowTop, int32_t rowSpacing,
                                 int32_t pointX, int32_t pointY, int32_t dpi) {
    for (int32_t row = kSliderHeadRow; row < 3; ++row) {
        for (ReadoutColumn column : {ReadoutColumn::kDecimal, ReadoutColumn::kHex}) {
            if (row == kSliderHeadRow && column == ReadoutColumn::kDecimal) continue;
            if (BoundsContain(ReadoutBounds(barX, firstRowTop, rowSpacing, row, column, dpi),
                              pointX, pointY))
                return {row, column};
        }
    }
    return {kNoReadout, ReadoutColumn::kDecimal};
}

// Tab moves a row's field down a row, Shift+Tab up, round from the last to the first.
constexpr int32_t NextReadoutRow(int32_t row, bool backwards) {
    return (row + (backwards ? 2 : 1)) % 3;
}

}  // namespace tessellum
