#include "controls/pixel_painters.h"

#include <algorithm>

#include "controls/ring_painter.h"

namespace tessellum {

void FillPixels(PixelWord* bits, uint32_t width, uint32_t height, uint8_t red, uint8_t green,
                uint8_t blue) {
    if (!bits) return;
    std::fill(bits, bits + static_cast<size_t>(width) * height, MakePixelWord(red, green, blue));
}

void PaintInsetFrame(PixelWord* bits, uint32_t width, uint32_t height, uint32_t line) {
    if (!bits) return;
    // Ring d (its distance from the nearest edge) is black for 0 and 3, white for 1 and 2.
    constexpr PixelWord kRing[4] = {kBlackPixel, kWhitePixel, kWhitePixel, kBlackPixel};
    if (line != 1) return PaintRings(bits, width, 0, 0, width, height, kRing, line);
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
                uint8_t blue, uint32_t line) {
    const uint32_t margin = 4 * line;
    if (!bits || width <= 2 * margin || height <= 2 * margin) return;
    const PixelWord colour = MakePixelWord(red, green, blue);
    for (uint32_t y = margin; y < height - margin; ++y) {
        PixelWord* row = bits + static_cast<size_t>(y) * width;
        std::fill(row + margin, row + width - margin, colour);
    }
}

void PaintThinFrame(PixelWord* bits, uint32_t width, uint32_t height, uint32_t line) {
    if (!bits || width == 0 || height == 0) return;
    if (line != 1) {  // rows and columns within `line` of an edge
        for (uint32_t y = 0; y < height; ++y) {
            PixelWord* row = bits + static_cast<size_t>(y) * width;
            if (y < line || y + line >= height) {
                std::fill_n(row, width, kBlackPixel);
                continue;
            }
            std::fill_n(row, std::min(line, width), kBlackPixel);
            std::fill(row + (width > line ? width - line : 0), row + width, kBlackPixel);
        }
        return;
    }
    std::fill(bits, bits + width, kBlackPixel);
    PixelWord* last = bits + static_cast<size_t>(height - 1) * width;
    std::fill(last, last + width, kBlackPixel);
    for (uint32_t y = 0; y < height; ++y) {
        bits[static_cast<size_t>(y) * width] = kBlackPixel;
        bits[static_cast<size_t>(y) * width + width - 1] = kBlackPixel;
    }
}

}  // namespace tessellum
