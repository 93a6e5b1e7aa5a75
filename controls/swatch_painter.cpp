#include "controls/swatch_painter.h"

#include <algorithm>

#include "controls/pixel_painters.h"
#include "controls/ring_painter.h"
#include "controls/swatch_layout.h"

namespace tessellum {
namespace {

void PaintCells(PixelWord* bits, uint32_t width, uint32_t cellWidth, uint32_t cellHeight,
                const Palette& palette, uint32_t line) {
    const uint32_t count = std::min(palette.Count(), kSwatchCells);
    const uint8_t* colors = palette.Colors();
    const uint32_t margin = line * kSwatchMargin;
    // The last column's line is the frame's inner ring.
    const uint32_t rowWords = (cellWidth + line) * kSwatchColumns;
    uint32_t k = 0;
    for (uint32_t band = 0; band < kSwatchRows; ++band) {
        const uint32_t top = margin + band * (cellHeight + line);
        PixelWord* first = bits + static_cast<size_t>(top) * width + margin;
        if (cellHeight > 0) {
            // Only the band's first row is worked out; its other cell rows copy it.
            PixelWord* out = first;
            for (uint32_t column = 0; column < kSwatchColumns; ++column, ++k) {
                // A cell past the palette's end is black, like the lines.
                PixelWord color = kBlackPixel;
                if (k < count) {
                    const uint8_t* rgb = colors + 3 * k;
                    color = MakePixelWord(rgb[0], rgb[1], rgb[2]);
                }
                out = std::fill_n(out, cellWidth, color);
                out = std::fill_n(out, line, kBlackPixel);
            }
            for (uint32_t y = top + 1; y < top + cellHeight; ++y) {
                std::copy_n(first, rowWords, bits + static_cast<size_t>(y) * width + margin);
            }
        }
        for (uint32_t y = 0; band + 1 < kSwatchRows && y < line; ++y) {
            std::fill_n(bits + static_cast<size_t>(top + cellHeight + y) * width + margin, rowWords,
                        kBlackPixel);
        }
    }
}

}  // namespace

void PaintSwatchGrid(PixelWord* bits, uint32_t width, uint32_t height, uint32_t cellWidth,
                     uint32_t cellHeight, const Palette* palette, uint8_t selected,
                     bool selectionVisible, uint32_t line) {
    if (!bits || line == 0 || width != SwatchBitmapWidth(cellWidth, line) ||
        height != SwatchBitmapHeight(cellHeight, line)) {
        return;
    }
    // The inset frame, black, white, white, black, round the whole picture.
    constexpr PixelWord kFrame[4] = {kBlackPixel, kWhitePixel, kWhitePixel, kBlackPixel};
    if (!palette) {
        FillPixels(bits, width, height, kNoPaletteGrey, kNoPaletteGrey, kNoPaletteGrey);
        PaintRings(bits, width, 0, 0, width, height, kFrame, line);
        return;
    }
    PaintRings(bits, width, 0, 0, width, height, kFrame, line);
    PaintCells(bits, width, cellWidth, cellHeight, *palette, line);
    if (selectionVisible) {
        // Four pixels beyond the cell on every side, over the lines, the neighbours'
        // edges and, at the grid's edge, the frame; the bitmap's sizes leave room for it.
        const uint32_t column = selected % kSwatchColumns;
        const uint32_t row = selected / kSwatchColumns;
        constexpr PixelWord kRings[4] = {kSwatchHighlightRed, kWhitePixel, kWhitePixel,
                                         kSwatchHighlightRed};
        PaintRings(bits, width, column * (cellWidth + line), row * (cellHeight + line),
                   cellWidth + 8 * line, cellHeight + 8 * line, kRings, line);
    }
}

}  // namespace tessellum
