#include "controls/pattern_painters.h"

#include <algorithm>

#include "controls/pixel_painters.h"
#include "controls/ring_painter.h"

namespace tessellum {
namespace {

constexpr uint32_t kMargin = 4;  // the inset frame

PixelWord WordOf(const Rgb8& color) {
    return MakePixelWord(color.red, color.green, color.blue);
}

void FillBlock(PixelWord* bits, uint32_t width, uint32_t left, uint32_t top, uint32_t side,
               PixelWord color) {
    for (uint32_t y = top; y < top + side; ++y) {
        std::fill_n(bits + static_cast<size_t>(y) * width + left, side, color);
    }
}

}  // namespace

void DrawTilePreview(PixelWord* bits, uint32_t width, uint32_t height, const Pattern* cells,
                     uint8_t gridSize) {
    if (!bits || !cells || width <= 2 * kMargin || height <= 2 * kMargin) return;
    const int size = EffectiveGridSize(gridSize);
    const uint32_t inside = width - 2 * kMargin;
    for (uint32_t i = 0; i < height - 2 * kMargin; ++i) {
        PixelWord* row = bits + static_cast<size_t>(kMargin + i) * width + kMargin;
        const int tileRow = static_cast<int>(i % size);
        if (i >= static_cast<uint32_t>(size)) {
            // The tile's rows repeat: copy the row one tile above.
            std::copy_n(row - static_cast<size_t>(size) * width, inside, row);
            continue;
        }
        int column = 0;
        for (uint32_t j = 0; j < inside; ++j) {
            row[j] = WordOf(cells->Cell(tileRow, column));
            if (++column == size) column = 0;
        }
    }
}

void DrawQuadrantBox(PixelWord* bits, uint32_t width, uint32_t height, const Pattern* cells) {
    constexpr uint32_t kEnd = kQuadrantBoxCorner + kQuadrantBoxSide;
    if (!bits || !cells || width < kEnd || height < kEnd) return;
    const Rgb8& a = cells->Cell(0, 0);
    const Rgb8& b = cells->Cell(0, 1);
    const Rgb8& c = cells->Cell(1, 0);
    const Rgb8& d = cells->Cell(1, 1);
    const bool solid = WordOf(a) == WordOf(b) && WordOf(a) == WordOf(c) && WordOf(a) == WordOf(d);
    const PixelWord line = solid ? kWhitePixel : kBlackPixel;
    const PixelWord field = solid ? kBlackPixel : kWhitePixel;
    const PixelWord rings[4] = {line, field, field, line};
    PaintRings(bits, width, kQuadrantBoxCorner, kQuadrantBoxCorner, kQuadrantBoxSide,
               kQuadrantBoxSide, rings);

    // Inside the inner ring: box rows and columns 4 to 34, quadrants of 15 round the
    // grey cross at 19.
    constexpr uint32_t kQuadrant = 15;
    constexpr uint32_t kNear = kQuadrantBoxCorner + 4;
    constexpr uint32_t kCross = kNear + kQuadrant;
    constexpr uint32_t kFar = kCross + 1;
    FillBlock(bits, width, kNear, kNear, kQuadrant, WordOf(a));
    FillBlock(bits, width, kFar, kNear, kQuadrant, WordOf(b));
    FillBlock(bits, width, kNear, kFar, kQuadrant, WordOf(c));
    FillBlock(bits, width, kFar, kFar, kQuadrant, WordOf(d));
    std::fill_n(bits + static_cast<size_t>(kCross) * width + kNear, 2 * kQuadrant + 1,
                kQuadrantCrossGrey);
    for (uint32_t y = kNear; y < kNear + 2 * kQuadrant + 1; ++y) {
        bits[static_cast<size_t>(y) * width + kCross] = kQuadrantCrossGrey;
    }
}

void DrawNoColorCross(PixelWord* bits, uint32_t width, uint32_t height) {
    if (!bits) return;
    FillInside(bits, width, height, 255, 255, 255);
    if (height <= 2 * kMargin) return;
    for (uint32_t i = 0; i < height - 2 * kMargin; ++i) {
        PixelWord* row = bits + static_cast<size_t>(kMargin + i) * width;
        if (kMargin + i < width) row[kMargin + i] = kBlackPixel;
        if (i + kMargin <= width) row[width - kMargin - i] = kBlackPixel;
    }
}

}  // namespace tessellum
