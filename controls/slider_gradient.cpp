#include "controls/slider_gradient.h"

#include <algorithm>

namespace tessellum {

SliderGradient GradientOfRow(int row, uint8_t red, uint8_t green, uint8_t blue, bool enabled) {
    if (!enabled) return {kWhitePixel, 0};
    switch (row) {
        case 0: return {MakePixelWord(0, green, blue), 0x020000};
        case 1: return {MakePixelWord(red, 0, blue), 0x000200};
        default: return {MakePixelWord(red, green, 0), 0x000002};
    }
}

void FillSliderBar(PixelWord* bits, uint32_t width, uint32_t height, SliderGradient gradient,
                   uint32_t line, uint32_t columns) {
    if (!bits || line == 0 || columns == 0 || width <= 2 * line || height <= 2 * line) return;
    // The moving channel ends at 254, so adding steps never carries into the next one.
    const uint32_t written = std::min(width - 2 * line, columns);
    PixelWord* first = bits + static_cast<size_t>(line) * width + line;
    if (columns == kSliderBarColumns) {
        PixelWord word = gradient.start;
        for (uint32_t i = 0; i < written; ++i, word += gradient.step) first[i] = word;
    } else {
        for (uint32_t i = 0; i < written; ++i)
            first[i] = gradient.start + (i * kSliderBarColumns / columns) * gradient.step;
    }
    // The bar's other rows are the same.
    for (uint32_t y = line + 1; y + line < height; ++y)
        std::copy_n(first, written, bits + static_cast<size_t>(y) * width + line);
}

}  // namespace tessellum
