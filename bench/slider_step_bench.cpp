// The cost of one slider step, the part that is plain memory work: refilling the two
// bars whose gradients show the moving channel (128 by 9 pixels each with the dialog's
// bar height), as a ratio to memset of the same number of pixels in the same run: once
// row by row in stores of the same shape, once as one call over all the bytes.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <vector>

#include "bench/best_time.h"
#include "controls/slider_gradient.h"

namespace {

constexpr uint32_t kBarHeight = 11;
constexpr int kSteps = 200000;
constexpr int kRepeats = 7;

template <typename Work>
double BestSeconds(Work&& work) {
    return tessellum::bench::BestSeconds(kRepeats, work);
}

}  // namespace

int main() {
    using namespace tessellum;
    const size_t barWords = static_cast<size_t>(tessellum::kSliderBarWidth) * kBarHeight;
    std::vector<PixelWord> green(barWords), blue(barWords);
    // The baseline writes as many pixels as the two refills do, in two stores of the
    // same shape: 128 words per row, 9 rows each.
    const size_t rowBytes = kSliderBarColumns * sizeof(PixelWord);
    uint64_t sink = 0;

    const double refill = BestSeconds([&] {
        for (int step = 0; step < kSteps; ++step) {
            const uint8_t red = static_cast<uint8_t>(step);
            FillSliderBar(green.data(), kSliderBarWidth, kBarHeight,
                          GradientOfRow(1, red, 9, 200, true));
            FillSliderBar(blue.data(), kSliderBarWidth, kBarHeight,
                          GradientOfRow(2, red, 9, 200, true));
            sink += green[barWords / 2] + blue[barWords / 2];
        }
    });
    const double baseline = BestSeconds([&] {
        for (int step = 0; step < kSteps; ++step) {
            const int value = step & 0xFF;
            for (PixelWord* bar : {green.data(), blue.data()}) {
                for (uint32_t y = 1; y + 1 < kBarHeight; ++y) {
                    std::memset(bar + y * kSliderBarWidth + 1, value, rowBytes);
                }
            }
            sink += green[barWords / 2] + blue[barWords / 2];
        }
    });
    std::vector<PixelWord> flat(2 * kSliderBarColumns * (kBarHeight - 2));
    const double bulk = BestSeconds([&] {
        for (int step = 0; step < kSteps; ++step) {
            std::memset(flat.data(), step & 0xFF, flat.size() * sizeof(PixelWord));
            sink += flat[flat.size() / 2];
        }
    });

    const double pixels = 2.0 * kSliderBarColumns * (kBarHeight - 2);
    std::printf("slider step: two bar refills against memset of the same %.0f pixels\n", pixels);
    std::printf("%14s %14s %14s %15s %15s\n", "refill ns/step", "rows ns/step", "bulk ns/step",
                "refill/rows", "refill/bulk");
    std::printf("%14.1f %14.1f %14.1f %15.2f %15.2f\n", refill / kSteps * 1e9,
                baseline / kSteps * 1e9, bulk / kSteps * 1e9, refill / baseline, refill / bulk);
    std::printf("(lower is better; 1.00 is the cost of memset)  [checksum %llu]\n",
                static_cast<unsigned long long>(sink));
    return 0;
}
