// Where the parts of one slider row lie, relative to the left edge of its bar (barX)
// and the top of its row (rowTop), and what a drag to a point means.
#pragma once

#include <cstdint>
#include <initializer_list>

#include "controls/control.h"

namespace tessellum {

// The thumb hangs under the bar with its apex (column 5 of the picture) under the column
// that shows the value rounded down to even. Its hit rectangle is one pixel narrower
// than the picture.
constexpr int32_t ThumbLeft(int32_t barX, uint8_t value) {
    return barX + value / 2 - 4;
}

constexpr ControlBounds ThumbHitBounds(int32_t barX, int32_t rowTop, int32_t barHeight,
                                       uint8_t value) {
    return {ThumbLeft(barX, value), rowTop + barHeight, ThumbLeft(barX, value) + 10,
            rowTop + barHeight + 6};
}

constexpr int32_t kLeftArrowOffset = -8;    // the left arrow stands 8 pixels before the bar
constexpr int32_t kRightArrowOffset = 132;  // the right one 2 pixels after it

constexpr ControlBounds LeftArrowBounds(int32_t barX, int32_t rowTop) {
    return {barX + kLeftArrowOffset, rowTop, barX + kLeftArrowOffset + 6, rowTop + 11};
}

constexpr ControlBounds RightArrowBounds(int32_t barX, int32_t rowTop) {
    return {barX + kRightArrowOffset, rowTop, barX + kRightArrowOffset + 6, rowTop + 11};
}

// A drag reaches the even values up to 252 and then 255: the right end of the bar must
// give the full channel, which no even value does.
constexpr uint8_t DragValue(int32_t pointX, int32_t barX) {
    const int32_t d = pointX - barX;
    if (d < 0) return 0;
    if (d >= 127) return 255;
    return static_cast<uint8_t>(2 * d);
}

// A length of the panel at the standard 96 DPI, at `dpi`: rounded to the nearest pixel,
// halves away from zero, as the platform's MulDiv rounds.
constexpr int32_t ScaleFrom96(int32_t length, int32_t dpi) {
    const int64_t product = static_cast<int64_t>(length) * dpi;
    return static_cast<int32_t>(product >= 0 ? (product + 48) / 96 : -((-product + 48) / 96));
}

enum class ReadoutColumn { kDecimal, kHex };
constexpr int32_t kColumnHeadRow = -1;  // the "Dec" and "Hex" heads above row 0

// The box of a read-out that a click hits and its edit field covers: the value of row 0
// to 2 in its column, or a column head. barX and firstBarTop are the panel's own, in
// the page's pixels; the offsets from them are those at 96 DPI, scaled to `dpi`. A row's
// text stands 160 (decimal) or 210 (hex) right of the bar and 3 above it, rows 25 apart,
// the heads 20 above the first bar; the box reaches 3 left and 2 up from the text. The
// head's box is wide enough for "#RRGGBB" and more.
constexpr ControlBounds ReadoutBounds(int32_t barX, int32_t firstBarTop, int32_t row,
                                      ReadoutColumn column, int32_t dpi) {
    const int32_t left = column == ReadoutColumn::kDecimal ? 157 : 207;
    const int32_t width = row == kColumnHeadRow ? 72 : column == ReadoutColumn::kDecimal ? 30 : 24;
    const int32_t top = row == kColumnHeadRow ? -22 : 25 * row - 5;
    return {barX + ScaleFrom96(left, dpi), firstBarTop + ScaleFrom96(top, dpi),
            barX + ScaleFrom96(left + width, dpi), firstBarTop + ScaleFrom96(top + 17, dpi)};
}

// The read-out under a point: a row's value (row 0 to 2), the "Hex" head (the whole
// colour, kColumnHeadRow), or none (kNoReadout). The "Dec" head opens nothing.
constexpr int32_t kNoReadout = 3;
struct ReadoutHit {
    int32_t row;
    ReadoutColumn column;
};

constexpr ReadoutHit FindReadout(int32_t barX, int32_t firstBarTop, int32_t pointX, int32_t pointY,
                                 int32_t dpi) {
    for (int32_t row = kColumnHeadRow; row < 3; ++row) {
        for (ReadoutColumn column : {ReadoutColumn::kDecimal, ReadoutColumn::kHex}) {
            if (row == kColumnHeadRow && column == ReadoutColumn::kDecimal) continue;
            if (BoundsContain(ReadoutBounds(barX, firstBarTop, row, column, dpi), pointX, pointY))
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
