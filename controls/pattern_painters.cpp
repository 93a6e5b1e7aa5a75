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
                     uint8_t gridSize, uint32_t line) {
    const uint32_t margin = kMargin * line;
    if (!bits || !cells || width <= 2 * margin || height <= 2 * margin) return;
    const int size = EffectiveGridSize(gridSize);
    const uint32_t inside = width - 2 * margin;
    for (uint32_t i = 0; i < height - 2 * margin; ++i) {
        PixelWord* row = bits + static_cast<size_t>(margin + i) * width + margin;
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

void DrawQuadrantBox(PixelWord* bits, uint32_t width, uint32_t height, const Pattern* cells,
                     int32_t dpi) {
    const QuadrantBoxGeometry box = QuadrantBoxAt(dpi);
    const uint32_t end = box.corner + box.side;
    if (!bits || !cells || width < end || height < end) return;
    const Rgb8& a = cells->Cell(0, 0);
    const Rgb8& b = cells->Cell(0, 1);
    const Rgb8& c = cells->Cell(1, 0);
    const Rgb8& d = cells->Cell(1, 1);
    const bool solid = WordOf(a) == WordOf(b) && WordOf(a) == WordOf(c) && WordOf(a) == WordOf(d);
    const PixelWord line = solid ? kWhitePixel : kBlackPixel;
    const PixelWord field = solid ? kBlackPixel : kWhitePixel;
    const PixelWord rings[4] = {line, field, field, line};
    PaintRings(bits, width, box.corner, box.corner, box.side, box.side, rings, box.line);

    // Inside the inner ring (at 96 DPI box rows and columns 4 to 34): quadrants of 15
    // round the grey cross at 19.
    const uint32_t quadrant = box.quadrant;
    const uint32_t near = box.corner + 4 * box.line;
    const uint32_t cross = near + quadrant;
    const uint32_t far = cross + box.line;
    FillBlock(bits, width, near, near, quadrant, WordOf(a));
    FillBlock(bits, width, far, near, quadrant, WordOf(b));
    FillBlock(bits, width, near, far, quadrant, WordOf(c));
    FillBlock(bits, width, far, far, quadrant, WordOf(d));
    const uint32_t across = 2 * quadrant + box.line;
    for (uint32_t y = cross; y < cross + box.line; ++y)
        std::fill_n(bits + static_cast<size_t>(y) * width + near, across, kQuadrantCrossGrey);
    for (uint32_t y = near; y < near + across; ++y) {
        std::fill_n(bits + static_cast<size_t>(y) * width + cross, box.line, kQuadrantCrossGrey);
    }
}

void DrawNoColorCross(PixelWord* bits, uint32_t width, uint32_t height, uint32_t line) {
    if (!bits) return;
    FillInside(bits, width, height, 255, 255, 255, line);
    const uint32_t margin = kMargin * line;
    if (height <= 2 * margin) return;
    for (uint32_t i = 0; i < height - 2 * margin; ++i) {
        PixelWord* row = bits + static_cast<size_t>(margin + i) * width;
        for (uint32_t k = 0; k < line; ++k) {  // each diagonal a line wide
            if (margin + i + k < width) row[margin + i + k] = kBlackPixel;
            if (i + k + margin <= width) row[width - margin - i - k] = kBlackPixel;
        }
    }
}

}  // namespace tessellum
