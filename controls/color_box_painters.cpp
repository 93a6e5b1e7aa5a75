#include "controls/color_box_painters.h"

#include <algorithm>

#include "controls/pixel_painters.h"

namespace tessellum {

void PaintBoxColor(PixelWord* bits, uint32_t width, uint32_t height, int32_t kind, uint8_t red,
                   uint8_t green, uint8_t blue) {
    if (kind == kFramedColorBox) {
        FillInside(bits, width, height, red, green, blue);
    } else {
        FillPixels(bits, width, height, red, green, blue);
        PaintThinFrame(bits, width, height);
    }
}

void PaintSplitColor(PixelWord* bits, uint32_t width, uint32_t height, uint8_t red, uint8_t green,
                     uint8_t blue) {
    if (!bits || width <= 8 || height <= 8) return;
    const uint32_t half = (height - 8) / 2;
    const PixelWord colour = MakePixelWord(red, green, blue);
    for (uint32_t y = 4; y <= 4 + half; ++y) {
        PixelWord* row = bits + static_cast<size_t>(y) * width;
        std::fill(row + 4, row + width - 4, y < 4 + half ? colour : kWhitePixel);
    }
}

}  // namespace tessellum
