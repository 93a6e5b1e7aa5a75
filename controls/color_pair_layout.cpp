#include "controls/color_pair_layout.h"

namespace tessellum {
namespace {

ControlBounds Square(int32_t left, int32_t top, int32_t side) {
    return {left, top, left + side, top + side};
}

}  // namespace

ColorPairParts LayoutColorPair(int32_t x, int32_t y, int32_t size, int32_t boxSize,
                               int32_t smallBoxSize, int32_t swapWidth, int32_t swapHeight,
                               int32_t dpi) {
    const auto px = [dpi](int32_t value) { return ScaleToDpi(value, dpi); };
    // The reset sign lies in the square of side V below the fore box, from row W.
    const int32_t v = size - boxSize - px(16);
    const int32_t w = y + boxSize + px(8);
    ColorPairParts parts;
    parts.backBox = Square(x + size - boxSize - px(8), y + size - boxSize - px(8), boxSize);
    parts.foreBox = Square(x + px(8), y + px(8), boxSize);
    parts.miniBackBox =
        Square(x + v - smallBoxSize + px(4), w + v - smallBoxSize - px(4), smallBoxSize);
    parts.miniForeBox = Square(x + px(12), w + px(4), smallBoxSize);
    parts.swapButton = {x + boxSize + px(14), y + px(14), x + boxSize + px(14) + swapWidth,
                        y + px(14) + swapHeight};
    return parts;
}

ColorPairRegion FindColorPairRegion(const ColorPairParts& parts, int32_t x, int32_t y) {
    if (BoundsContain(parts.miniBackBox, x, y) || BoundsContain(parts.miniForeBox, x, y)) {
        return ColorPairRegion::kReset;
    }
    if (BoundsContain(parts.swapButton, x, y)) return ColorPairRegion::kSwap;
    if (BoundsContain(parts.foreBox, x, y)) return ColorPairRegion::kForeBox;
    if (BoundsContain(parts.backBox, x, y)) return ColorPairRegion::kBackBox;
    return ColorPairRegion::kNone;
}

}  // namespace tessellum
