#include "controls/grid_painter.h"

#include <algorithm>

#include "controls/grid_geometry.h"

namespace tessellum {
namespace {

constexpr uint32_t kFirstLine = 3;   // column and row of the first grid line
constexpr uint32_t kLastLine = 123;  // the frame's black ring, never written here

PixelWord WordOf(const Rgb8& color) {
    return MakePixelWord(color.red, color.green, color.blue);
}

}  // namespace

void PaintPatternGrid(PixelWord* bits, uint32_t width, uint32_t height, const Pattern* cells,
                      uint8_t gridSize) {
    if (!bits || !cells || width <= kLastLine || height <= kLastLine) return;
    const int32_t size = EffectiveGridSize(gridSize);
    const uint32_t pitch = static_cast<uint32_t>(GridPitch(gridSize));
    const uint32_t rowWords = kLastLine - kFirstLine;  // columns 3 to 122
    for (int32_t r = 0; r < size; ++r) {
        const uint32_t top = kGridCellOrigin + r * pitch;
        // Only the first pixel row of a cell row is worked out; the others copy it.
        PixelWord* first = bits + static_cast<size_t>(top) * width + kFirstLine;
        PixelWord* out = first;
        *out++ = kBlackPixel;
        for (int32_t c = 0; c < size; ++c) {
            out = std::fill_n(out, pitch - 1, WordOf(cells->Cell(r, c)));
            if (c + 1 < size) *out++ = kBlackPixel;
        }
        for (uint32_t y = top + 1; y < top + pitch - 1; ++y) {
            std::copy_n(first, rowWords, bits + static_cast<size_t>(y) * width + kFirstLine);
        }
        // The line under the cell row; under the last one it is the frame's ring again.
        std::fill_n(bits + static_cast<size_t>(top + pitch - 1) * width + kFirstLine, rowWords,
                    kBlackPixel);
    }
}

}  // namespace tessellum
