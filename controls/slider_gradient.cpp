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

void FillSliderBar(PixelWord* bits, uint32_t width, uint32_t height, SliderGradient gradient) {
    if (!bits || width < 3 || height < 3) return;
    // The moving channel ends at 254, so adding the step never carries into the next one.
    const uint32_t columns = std::min(width - 2, kSliderBarColumns);
    for (uint32_t y = 1; y + 1 < height; ++y) {
        PixelWord* pixel = bits + static_cast<size_t>(y) * width + 1;
        PixelWord word = gradient.start;
        for (uint32_t i = 0; i < columns; ++i) {
            pixel[i] = word;
            word += gradient.step;
        }
    }
}

}  // namespace tessellum
