#include "controls/pixel_painters.h"

#include <algorithm>

namespace tessellum {

void FillPixels(PixelWord* bits, uint32_t width, uint32_t height, uint8_t red, uint8_t green,
                uint8_t blue) {
    if (!bits) return;
    std::fill(bits, bits + static_cast<size_t>(width) * height, MakePixelWord(red, green, blue));
}

void PaintInsetFrame(PixelWord* bits, uint32_t width, uint32_t height) {
    if (!bits) return;
    // Ring d (its distance from the nearest edge) is black for 0 and 3, white for 1 and 2.
    constexpr PixelWord kRing[4] = {kBlackPixel, kWhitePixel, kWhitePixel, kBlackPixel};
    for (uint32_t y = 0; y < height; ++y) {
        PixelWord* row = bits + static_cast<size_t>(y) * width;
        const uint32_t rowDistance = std::min(y, height - 1 - y);
        for (uint32_t x = 0; x < width; ++x) {
            const uint32_t d = std::min({rowDistance, x, width - 1 - x});
            if (d < 4) {
                row[x] = kRing[d];
            } else {
                x = width - 5;  // the inside of this row keeps its pixels; on to the right band
            }
        }
    }
}

void FillInside(PixelWord* bits, uint32_t width, uint32_t height, uint8_t red, uint8_t green,
                uint8_t blue) {
    if (!bits || width <= 8 || height <= 8) return;
    const PixelWord colour = MakePixelWord(red, green, blue);
    for (uint32_t y = 4; y < height - 4; ++y) {
        PixelWord* row = bits + static_cast<size_t>(y) * width;
        std::fill(row + 4, row + width - 4, colour);
    }
}

void PaintThinFrame(PixelWord* bits, uint32_t width, uint32_t height) {
    if (!bits || width == 0 || height == 0) return;
    std::fill(bits, bits + width, kBlackPixel);
    PixelWord* last = bits + static_cast<size_t>(height - 1) * width;
    std::fill(last, last + width, kBlackPixel);
    for (uint32_t y = 0; y < height; ++y) {
        bits[static_cast<size_t>(y) * width] = kBlackPixel;
        bits[static_cast<size_t>(y) * width + width - 1] = kBlackPixel;
    }
}

}  // namespace tessellum
