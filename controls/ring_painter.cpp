#include "controls/ring_painter.h"

#include <algorithm>

namespace tessellum {

void PaintRings(PixelWord* bits, uint32_t width, uint32_t left, uint32_t top, uint32_t blockWidth,
                uint32_t blockHeight, const PixelWord (&rings)[4], uint32_t line) {
    if (!bits || blockWidth == 0 || blockHeight == 0 || line == 0) return;
    const uint32_t depth = 4 * line;
    for (uint32_t y = 0; y < blockHeight; ++y) {
        PixelWord* row = bits + static_cast<size_t>(top + y) * width + left;
        const uint32_t rowDistance = std::min(y, blockHeight - 1 - y);
        // Pixels this near a side are nearer to it than to the top or bottom edge.
        const uint32_t side = std::min<uint32_t>(rowDistance, depth);
        if (2 * side >= blockWidth) {
            // A block too narrow for a middle: every pixel by its own distance.
            for (uint32_t x = 0; x < blockWidth; ++x) {
                const uint32_t d = std::min({rowDistance, x, blockWidth - 1 - x});
                if (d < depth) row[x] = rings[d / line];
            }
            continue;
        }
        for (uint32_t x = 0; x < side; ++x) {
            row[x] = rings[x / line];
            row[blockWidth - 1 - x] = rings[x / line];
        }
        // The top and bottom bands run their ring across; deeper rows keep their middle.
        if (rowDistance < depth)
            std::fill_n(row + side, blockWidth - 2 * side, rings[rowDistance / line]);
    }
}

}  // namespace tessellum
