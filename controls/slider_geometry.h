// Where the parts of one slider row lie, relative to the left edge of its bar (barX)
// and the top of its row (rowTop), and what a drag to a point means.
#pragma once

#include <cstdint>

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

}  // namespace tessellum
