// A whole run through our host on a 100-megapixel RGB image, 10,000 by 10,000, with a
// stored tile: Prepare, Start, every Continue, Finish, with the host handing over and
// taking back every band. Printed as a ratio to the raw fill of the same image in the
// same run (target: at most 2). Runs under Wine beside the plug-in it loads.
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "bench/best_time.h"
#include "bench/program_folder.h"
#include "host/band_fill.h"
#include "host/filter_parameters.h"
#include "tools/host/filter_host.h"

namespace {

constexpr int kSide = 10000;
constexpr int kRounds = 3;

}  // namespace

int main() {
    using namespace tessellum;
    using namespace tessellum::host;
    FilterParameters parameters;
    std::memset(&parameters, 0, sizeof parameters);
    parameters.gridSize = 2;
    for (int i = 0; i < 64; ++i) parameters.tile.cells[i] = {uint8_t(i * 3), 102, 153};
    const auto* bytes = reinterpret_cast<const uint8_t*>(&parameters);

    Image image;
    image.width = image.height = kSide;
    image.planes = 3;
    image.pixels.assign(static_cast<size_t>(kSide) * kSide * 3, 0);
    const ptrdiff_t rowBytes = kSide * 3;
    const double raw = bench::BestSeconds(kRounds, [&] {
        for (int top = 0; top < kSide; top += 2)
            FillBand(&image.pixels[top * rowBytes], rowBytes, 2, kSide, parameters.tile, 2);
    });

    try {
        // The bench lives one folder below the plug-in.
        PluginLibrary plugin(bench::FolderOfThisProgram() + "..\\Tessellum.8bf");
        FilterSession session(plugin);
        session.SetParametersBlock(std::vector<uint8_t>(bytes, bytes + sizeof parameters));
        RunOptions options;
        options.repeat = true;
        int16_t result = 0;
        const double hosted =
            bench::BestSeconds(kRounds, [&] { result = session.Run(image, options).result; });
        std::printf(
            "host run on %d x %d RGB: %.1f ms; raw fill %.1f ms; ratio %.2f (target <= 2.00)"
            "%s\n",
            kSide, kSide, hosted * 1e3, raw * 1e3, hosted / raw,
            result == 0 ? "" : "  [the run did not end with result 0]");
        return result == 0 ? 0 : 1;
    } catch (const HostError& e) {
        std::fprintf(stderr, "host_run_bench: %s\n", e.what());
        return 1;
    }
}
