#include "controls/color_box_painters.h"

#include <algorithm>

#include "controls/pixel_painters.h"

namespace tessellum {

void PaintBoxColor(PixelWord* bits, uint32_t width, uint32_t height, int32_t kind, uint8_t red,
                   uint8_t green, uint8_t blue, uint32_t line) {
    if (kind == kFramedColorBox) {
        FillInside(bits, width, height, red, green, blue, line);
    } else {
        FillPixels(bits, width, height, red, green, blue);
        PaintThinFrame(bits, width, height, line);
    }
}

void PaintSplitColor(PixelWord* bits, uint32_t width, uint32_t height, uint8_t red, uint8_t green,
                     uint8_t blue, uint32_t line) {
    const uint32_t margin = 4 * line;
    if (!bits || line == 0 || width <= 2 * margin || height <= 2 * margin) return;
    const uint32_t half = (height - 2 * margin) / 2;
    const PixelWord colour = MakePixelWord(red, green, blue);
    const uint32_t end = std::min(margin + half + line, height - margin);
    for (uint32_t y = margin; y < end; ++y) {
        PixelWord* row = bits + static_cast<size_t>(y) * width;
        std::fill(row + margin, row + width - margin, y < margin + half ? colour : kWhitePixel);
    }
}

}  // namespace tessellum
