// Mouse coordinates as a mouse message carries them in its lParam: x in the low word,
// y in the high word, each a signed 16-bit number. A captured mouse to the left of or
// above the window gives negative values, and they stay negative.
#pragma once

#include <cstdint>

namespace tessellum {

struct MousePoint {
    int32_t x;
    int32_t y;
};

constexpr MousePoint PointFromLParam(intptr_t lParam) {
    return {static_cast<int16_t>(static_cast<uint16_t>(lParam & 0xFFFF)),
            static_cast<int16_t>(static_cast<uint16_t>((lParam >> 16) & 0xFFFF))};
}

}  // namespace tessellum
