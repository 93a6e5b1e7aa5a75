#include "controls/grid_painter.h"

#include <algorithm>

#include "controls/grid_geometry.h"
#include "controls/pixel_painters.h"
#include "controls/ring_painter.h"

namespace tessellum {
namespace {

PixelWord WordOf(const Rgb8& color) {
    return MakePixelWord(color.red, color.green, color.blue);
}

}  // namespace

void PaintPatternGrid(PixelWord* bits, uint32_t width, uint32_t height, const Pattern* cells,
                      uint8_t gridSize, int32_t dpi) {
    const GridLayout layout = GridLayoutAt(gridSize, dpi);
    const uint32_t line = static_cast<uint32_t>(layout.line);
    const uint32_t firstLine = static_cast<uint32_t>(layout.origin) - line;
    // The frame's inner ring closes the grid after the last cell; it is never written.
    const uint32_t lastLine = static_cast<uint32_t>(layout.origin + layout.span) - line;
    if (!bits || !cells || width < lastLine + line || height < lastLine + line) return;
    const int32_t size = layout.size;
    const uint32_t pitch = static_cast<uint32_t>(layout.pitch);
    const uint32_t rowWords = lastLine - firstLine;  // at 96 DPI columns 3 to 122
    for (int32_t r = 0; r < size; ++r) {
        const uint32_t top = static_cast<uint32_t>(layout.origin) + r * pitch;
        // Only the first pixel row of a cell row is worked out; the others copy it.
        PixelWord* first = bits + static_cast<size_t>(top) * width + firstLine;
        PixelWord* out = std::fill_n(first, line, kBlackPixel);
        for (int32_t c = 0; c < size; ++c) {
            out = std::fill_n(out, pitch - line, WordOf(cells->Cell(r, c)));
            if (c + 1 < size) out = std::fill_n(out, line, kBlackPixel);
        }
        for (uint32_t y = top + 1; y < top + pitch - line; ++y) {
            std::copy_n(first, rowWords, bits + static_cast<size_t>(y) * width + firstLine);
        }
        // The line under the cell row; under the last one it is the frame's ring again.
        for (uint32_t y = top + pitch - line; y < top + pitch; ++y)
            std::fill_n(bits + static_cast<size_t>(y) * width + firstLine, rowWords, kBlackPixel);
    }
}

void PaintPatternGridFrame(PixelWord* bits, uint32_t width, uint32_t height, uint8_t gridSize,
                           int32_t dpi) {
    const GridLayout layout = GridLayoutAt(gridSize, dpi);
    const uint32_t side = static_cast<uint32_t>(layout.side);
    if (!bits || width != side || height != side) return;
    const uint32_t framed = static_cast<uint32_t>(layout.span + 7 * layout.line);
    // The slack round a grid that does not fill the picture takes the dialog's grey.
    if (framed != side) FillPixels(bits, width, height, 0xC0, 0xC0, 0xC0);
    constexpr PixelWord kRing[4] = {kBlackPixel, kWhitePixel, kWhitePixel, kBlackPixel};
    const uint32_t offset = static_cast<uint32_t>(layout.offset);
    PaintRings(bits, width, offset, offset, framed, framed, kRing,
               static_cast<uint32_t>(layout.line));
}

}  // namespace tessellum
