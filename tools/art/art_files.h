// The pictures as the files the resource compiler reads: a 4-bit BMP, a CUR.
#pragma once

#include <cstdint>
#include <vector>

#include "tools/art/art_text.h"

namespace tessellum::art {

// Palette indexes of the three colours in the standard 16-colour palette we write.
constexpr uint8_t kBlackIndex = 0;
constexpr uint8_t kGreyIndex = 7;  // 192, 192, 192
constexpr uint8_t kWhiteIndex = 15;

// A bitmap file of 4 bits a pixel, rows bottom-up.
std::vector<uint8_t> BitmapFileBytes(const ArtPicture& picture);

// A cursor file of one 1-bit image with its mask and the picture's hot spot.
std::vector<uint8_t> CursorFileBytes(const ArtPicture& picture);

}  // namespace tessellum::art
