// A pixel store for painter tests: `width` by `height` words preset to a sentinel, with a
// guard word before and after it that no painter may touch.
#pragma once

#include <cstdint>
#include <vector>

#include "color/pattern.h"
#include "controls/pixel_painters.h"
#include "controls/pixel_word.h"

namespace tessellum::test {

constexpr PixelWord kSentinel = 0x00123456;
constexpr PixelWord kGuard = 0xDEADBEEF;

class PixelStore {
public:
    PixelStore(uint32_t width, uint32_t height)
        : width(width), height(height), words(static_cast<size_t>(width) * height + 2, kSentinel) {
        words.front() = words.back() = kGuard;
    }
    PixelWord* bits() { return words.data() + 1; }
    PixelWord At(uint32_t x, uint32_t y) const { return words[1 + y * width + x]; }
    bool GuardsIntact() const { return words.front() == kGuard && words.back() == kGuard; }
    // The pixels alone, without the guards, for comparing two stores.
    std::vector<PixelWord> Pixels() const { return {words.begin() + 1, words.end() - 1}; }
    // Nothing at all was written, guards included.
    bool Untouched() const { return words == PixelStore(width, height).words; }

    const uint32_t width;
    const uint32_t height;

private:
    std::vector<PixelWord> words;
};

// A store holding the 4-pixel inset frame round its inside, as the controls' bitmaps do.
inline PixelStore Framed(uint32_t width, uint32_t height) {
    PixelStore store(width, height);
    PaintInsetFrame(store.bits(), width, height);
    return store;
}

// Every cell its own colour, none of them black: red carries the row, green the column.
inline Pattern DistinctCells() {
    Pattern cells;
    for (int r = 0; r < 8; ++r)
        for (int c = 0; c < 8; ++c)
            cells.Cell(r, c) = {uint8_t(10 + r), uint8_t(20 + c), uint8_t(200)};
    return cells;
}

inline PixelWord WordOf(const Rgb8& color) {
    return MakePixelWord(color.red, color.green, color.blue);
}

}  // namespace tessellum::test
