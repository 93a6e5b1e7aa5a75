// How every benchmark times its work: the best of several rounds, the figure least
// disturbed by whatever else the machine is doing at the time.
#pragma once

#include <algorithm>
#include <chrono>

namespace tessellum::bench {

template <typename Work>
double BestSeconds(int rounds, Work&& work) {
    using Clock = std::chrono::steady_clock;
    double best = 1e9;
    for (int i = 0; i < rounds; ++i) {
        const auto start = Clock::now();
        work();
        best = std::min(best, std::chrono::duration<double>(Clock::now() - start).count());
    }
    return best;
}

}  // namespace tessellum::bench
