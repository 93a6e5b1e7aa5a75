// What one repaint of the grid editor (each GridSize) and of the swatch grid (256
// colours, cells 8 by 10, a cell highlighted) costs, as a ratio to memset filling the
// same number of pixels in the same run. A ratio of 1 is as cheap as a flat fill.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <vector>

#include "bench/best_time.h"
#include "color/palette.h"
#include "color/pattern.h"
#include "controls/grid_painter.h"
#include "controls/pixel_painters.h"
#include "controls/swatch_layout.h"
#include "controls/swatch_painter.h"

namespace {

constexpr int kRounds = 9;
constexpr int kPaintsPerRound = 4000;

// Seconds of one call of `work`, the best of several rounds of many calls.
template <typename Work>
double SecondsPerCall(Work&& work) {
    return tessellum::bench::BestSeconds(kRounds,
                                         [&] {
                                             for (int i = 0; i < kPaintsPerRound; ++i) work(i);
                                         }) /
           kPaintsPerRound;
}

volatile uint32_t sink;

// memset of `pixels` words, a different byte each call so that no call can be skipped.
double MemsetSeconds(size_t pixels) {
    std::vector<tessellum::PixelWord> buffer(pixels);
    return SecondsPerCall([&](int i) {
        std::memset(buffer.data(), i & 0xFF, pixels * sizeof(tessellum::PixelWord));
        sink = buffer[static_cast<size_t>(i) % pixels];
    });
}

}  // namespace

int main() {
    using namespace tessellum;
    std::printf("repaint cost as a ratio to memset of the same pixels (lower is better)\n");
    std::printf("%-28s %8s %12s %12s %8s\n", "picture", "pixels", "paint us", "memset us", "ratio");

    // The grid editor writes columns 3 to 122 of rows 4 to 123: 120 by 120 pixels.
    Pattern cells;
    for (int i = 0; i < 64; ++i) cells.cells[i] = {uint8_t(i * 3), uint8_t(i * 5), uint8_t(i * 7)};
    constexpr uint32_t kSide = 127;
    std::vector<PixelWord> editor(kSide * kSide);
    PaintInsetFrame(editor.data(), kSide, kSide);
    const size_t gridPixels = 120 * 120;
    const double gridMemset = MemsetSeconds(gridPixels);
    for (uint8_t size : {2, 3, 4, 5, 6, 8}) {
        const double paint = SecondsPerCall([&](int i) {
            cells.cells[0].red = uint8_t(i);
            PaintPatternGrid(editor.data(), kSide, kSide, &cells, size);
            sink = editor[4 * kSide + 4];
        });
        char name[32];
        std::snprintf(name, sizeof name, "grid editor, GridSize %d", size);
        std::printf("%-28s %8zu %12.2f %12.2f %8.2f\n", name, gridPixels, paint * 1e6,
                    gridMemset * 1e6, paint / gridMemset);
    }

    // The swatch grid repaints its whole picture: frame, cells, lines and highlight.
    Palette palette(256);
    for (uint32_t k = 0; k < 768; ++k) palette.Colors()[k] = uint8_t(k * 7);
    const uint32_t width = static_cast<uint32_t>(SwatchBitmapWidth(8));
    const uint32_t height = static_cast<uint32_t>(SwatchBitmapHeight(10));
    std::vector<PixelWord> swatches(static_cast<size_t>(width) * height);
    const double swatchMemset = MemsetSeconds(swatches.size());
    const double paint = SecondsPerCall([&](int i) {
        PaintSwatchGrid(swatches.data(), width, height, 8, 10, &palette, uint8_t(i), true);
        sink = swatches[static_cast<size_t>(i) % swatches.size()];
    });
    std::printf("%-28s %8zu %12.2f %12.2f %8.2f\n", "swatch grid, 256 colours", swatches.size(),
                paint * 1e6, swatchMemset * 1e6, paint / swatchMemset);
    return 0;
}
