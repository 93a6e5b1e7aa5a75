// How fast the band fill writes, as a ratio to memcpy moving the same output in the
// same run: for every GridSize and for images 1, 7, 640 and 30,000 pixels wide, each
// about 64 MB. The baseline copies each finished row from a prepared row of the same
// bytes (the cheapest a fill of that layout can be); one bulk memcpy of the whole
// image is printed beside it. Target: a ratio of at least 0.5 everywhere.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <vector>

#include "bench/best_time.h"
#include "host/band_fill.h"

namespace {

constexpr size_t kImageBytes = 64u << 20;
constexpr int kRepeats = 5;

template <typename Work>
double BestSeconds(Work&& work) {
    return tessellum::bench::BestSeconds(kRepeats, work);
}

uint64_t Checksum(const std::vector<uint8_t>& bytes) {
    uint64_t sum = 0;
    for (size_t i = 0; i < bytes.size(); i += 4093) sum = sum * 31 + bytes[i];
    return sum;
}

}  // namespace

int main() {
    using namespace tessellum;
    Pattern tile;
    for (int i = 0; i < 64; ++i) tile.cells[i] = {uint8_t(i * 3), uint8_t(i * 5), uint8_t(i * 7)};
    std::vector<uint8_t> image(kImageBytes), source(kImageBytes, 1);
    uint64_t sink = 0;

    std::printf("band fill against memcpy of the same output (higher is better; target >= 0.50)\n");
    std::printf("%7s %4s %10s %12s %12s %14s %14s\n", "width", "grid", "rows", "fill GB/s",
                "memcpy GB/s", "fill/memcpy", "fill/bulk");
    double worst = 1e9;
    for (int width : {1, 7, 640, 30000}) {
        const size_t rowBytes = 3 * static_cast<size_t>(width);
        const size_t rows = kImageBytes / rowBytes;
        const double bytes = static_cast<double>(rows * rowBytes);
        const double bulk =
            BestSeconds([&] { std::memcpy(image.data(), source.data(), rows * rowBytes); });
        for (int grid : {2, 3, 4, 5, 6, 8}) {
            // The rows the fill would write, prepared once, for the baseline to copy.
            std::vector<std::vector<uint8_t>> prepared(grid, std::vector<uint8_t>(rowBytes));
            for (int r = 0; r < grid; ++r) FillBand(prepared[r].data(), 0, 1, width, tile, grid);
            for (int r = 0; r < grid; ++r)
                for (size_t j = 0; j < rowBytes; ++j)
                    prepared[r][j] =
                        reinterpret_cast<const uint8_t*>(&tile.Cell(r, (j / 3) % grid))[j % 3];

            const double copy = BestSeconds([&] {
                for (size_t r = 0; r < rows; ++r)
                    std::memcpy(&image[r * rowBytes], prepared[r % grid].data(), rowBytes);
            });
            sink += Checksum(image);
            const double fill = BestSeconds([&] {
                for (size_t r = 0; r < rows; r += grid) {
                    const int band = static_cast<int>(std::min<size_t>(grid, rows - r));
                    FillBand(&image[r * rowBytes], static_cast<ptrdiff_t>(rowBytes), band, width,
                             tile, grid);
                }
            });
            sink += Checksum(image);
            const double ratio = copy / fill;
            worst = std::min(worst, ratio);
            std::printf("%7d %4d %10zu %12.2f %12.2f %14.2f %14.2f\n", width, grid, rows,
                        bytes / fill / 1e9, bytes / copy / 1e9, ratio, bulk / fill);
        }
    }
    std::printf("worst fill/memcpy ratio: %.2f (target 0.50)  [checksum %llu]\n", worst,
                static_cast<unsigned long long>(sink));
    return 0;
}
