// One pixel of an off-screen bitmap as the controls write it: the 32-bit word 0x00RRGGBB,
// so in memory blue, green, red and a zero byte. (A COLORREF runs the other way.)
#pragma once

#include <cstdint>

namespace tessellum {

using PixelWord = uint32_t;

constexpr PixelWord kBlackPixel = 0x00000000;
constexpr PixelWord kWhitePixel = 0x00FFFFFF;

constexpr PixelWord MakePixelWord(uint8_t red, uint8_t green, uint8_t blue) {
    return (static_cast<PixelWord>(red) << 16) + (static_cast<PixelWord>(green) << 8) + blue;
}

constexpr uint8_t RedOf(PixelWord word) {
    return static_cast<uint8_t>(word >> 16);
}
constexpr uint8_t GreenOf(PixelWord word) {
    return static_cast<uint8_t>(word >> 8);
}
constexpr uint8_t BlueOf(PixelWord word) {
    return static_cast<uint8_t>(word);
}

}  // namespace tessellum
