#include "host/band_fill.h"

#include <cstring>

namespace tessellum {
namespace {

// One row is the tile row's first `periodBytes` bytes repeated. The first period comes
// from the tile; after that the row copies its own finished prefix forward, doubling
// each time, so the work is a handful of memcpy calls that run at memcpy's speed and
// every copy keeps the phase (the prefix is always a whole number of periods).
inline void FillRow(uint8_t* dst, size_t total, const uint8_t* period, size_t periodBytes) {
    if (total <= periodBytes) {
        std::memcpy(dst, period, total);
        return;
    }
    std::memcpy(dst, period, periodBytes);
    size_t filled = periodBytes;
    while (filled < total) {
        const size_t n = filled < total - filled ? filled : total - filled;
        std::memcpy(dst + filled, dst, n);
        filled += n;
    }
}

}  // namespace

void FillBand(uint8_t* out, ptrdiff_t rowBytes, int rows, int width, const Pattern& tile,
              int gridSize) {
    if (rows <= 0 || width <= 0) return;
    const size_t total = static_cast<size_t>(width) * 3;
    const size_t periodBytes = static_cast<size_t>(gridSize) * 3;
    for (int i = 0; i < rows; ++i) {
        // A band is never taller than the GridSize, but the modulus keeps a host that
        // hands back a taller band inside the tile.
        const int tileRow = i < gridSize ? i : i % gridSize;
        FillRow(out + i * rowBytes, total, tile.RowBytes(tileRow), periodBytes);
    }
}

}  // namespace tessellum
