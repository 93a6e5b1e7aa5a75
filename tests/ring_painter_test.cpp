// The nested rings round a block, for blocks of every small size: each pixel takes the
// ring of its distance from the block's nearest edge, deeper pixels and everything outside
// the block keep theirs.
#include "controls/ring_painter.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/pixel_store.h"

namespace tessellum {
namespace {

using test::kSentinel;
using test::PixelStore;

TEST(RingPainter, EveryPixelOfTheBlockTakesTheRingOfItsDistance) {
    const PixelWord rings[4] = {0x00000001, 0x00000002, 0x00000003, 0x00000004};
    constexpr uint32_t kLeft = 3, kTop = 2;
    for (uint32_t blockWidth = 1; blockWidth <= 12; ++blockWidth) {
        for (uint32_t blockHeight = 1; blockHeight <= 12; ++blockHeight) {
            PixelStore store(blockWidth + 6, blockHeight + 5);
            PaintRings(store.bits(), store.width, kLeft, kTop, blockWidth, blockHeight, rings);
            for (uint32_t y = 0; y < store.height; ++y) {
                for (uint32_t x = 0; x < store.width; ++x) {
                    PixelWord expected = kSentinel;
                    if (x >= kLeft && x < kLeft + blockWidth && y >= kTop &&
                        y < kTop + blockHeight) {
                        const uint32_t d =
                            std::min({x - kLeft, y - kTop, kLeft + blockWidth - 1 - x,
                                      kTop + blockHeight - 1 - y});
                        if (d < 4) expected = rings[d];
                    }
                    ASSERT_EQ(store.At(x, y), expected)
                        << "block " << blockWidth << " by " << blockHeight << ", pixel " << x << ","
                        << y;
                }
            }
            ASSERT_TRUE(store.GuardsIntact());
        }
    }
}

}  // namespace
}  // namespace tessellum
