#include "host/band_fill.h"

#include <cstring>

namespace tessellum {
namespace {

// The longest row prefix kept ready: a whole number of periods, at most this long.
constexpr size_t kPrefixLimit = 480;

// The rows of the tile in force, each already repeated to a whole number of periods.
// Every band of a run starts at tile row 0 and column 0, so the same prefixes serve
// all its bands; they are kept here (no allocation) and made again only when the
// tile's rows in force or the GridSize change.
struct ExpandedTile {
    int grid = 0;
    size_t length = 0;                            // bytes of each prefix
    uint8_t key[kPatternSide][kPatternRowBytes];  // the tile rows it was made from
    uint8_t rows[kPatternSide][kPrefixLimit];
};

ExpandedTile expanded;

// Compares one 24-byte tile row as three words: cheap enough to do for every band.
inline bool SameRow(const uint8_t* a, const uint8_t* b) {
    uint64_t x[3], y[3];
    std::memcpy(x, a, sizeof x);
    std::memcpy(y, b, sizeof y);
    return ((x[0] ^ y[0]) | (x[1] ^ y[1]) | (x[2] ^ y[2])) == 0;
}

inline bool IsCurrent(const Pattern& tile, int grid) {
    if (expanded.grid != grid) return false;
    for (int r = 0; r < grid; ++r)
        if (!SameRow(expanded.key[r], tile.RowBytes(r))) return false;
    return true;
}

inline const ExpandedTile& Expand(const Pattern& tile, int grid) {
    if (IsCurrent(tile, grid)) return expanded;
    const size_t period = static_cast<size_t>(grid) * 3;
    expanded.length = kPrefixLimit / period * period;
    for (int r = 0; r < grid; ++r) {
        uint8_t* row = expanded.rows[r];
        for (size_t at = 0; at < expanded.length; at += period)
            std::memcpy(row + at, tile.RowBytes(r), period);
    }
    for (int r = 0; r < grid; ++r) std::memcpy(expanded.key[r], tile.RowBytes(r), kPatternRowBytes);
    expanded.grid = grid;
    return expanded;
}

// A row is its prefix, then the row's own finished part copied forward, doubling each
// time; every copy keeps the phase, as the copied part is a whole number of periods.
inline void FillRow(uint8_t* dst, size_t total, const uint8_t* prefix, size_t prefixBytes) {
    if (total <= prefixBytes) {
        std::memcpy(dst, prefix, total);
        return;
    }
    std::memcpy(dst, prefix, prefixBytes);
    size_t filled = prefixBytes;
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
    if (width <= gridSize) {  // a row shorter than one period is a piece of a tile row
        for (int i = 0; i < rows; ++i)
            std::memcpy(out + i * rowBytes, tile.RowBytes(i < gridSize ? i : i % gridSize), total);
        return;
    }
    const ExpandedTile& ready = Expand(tile, gridSize);
    if (total <= ready.length && rows <= gridSize) {  // short rows: one copy each
        for (int i = 0; i < rows; ++i) std::memcpy(out + i * rowBytes, ready.rows[i], total);
        return;
    }
    for (int i = 0; i < rows; ++i) {
        // A band is never taller than the GridSize, but the modulus keeps a host that
        // hands back a taller band inside the tile.
        const int tileRow = i < gridSize ? i : i % gridSize;
        FillRow(out + i * rowBytes, total, ready.rows[tileRow], ready.length);
    }
}

}  // namespace tessellum
