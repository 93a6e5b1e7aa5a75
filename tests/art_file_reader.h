// Reads back the art files the build draws (4-bit BMP, monochrome CUR), written here
// from the published file layouts and independently of the generator, so that the
// tests can say what the files really hold.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessellum::test {

constexpr uint32_t kArtBlack = 0x000000;
constexpr uint32_t kArtWhite = 0xFFFFFF;
constexpr uint32_t kArtGrey = 0xC0C0C0;
constexpr uint32_t kArtTransparent = 0xFF000000;  // a cursor pixel that shows the screen
constexpr uint32_t kArtInverted = 0xFF000001;     // a cursor pixel that inverts the screen

struct ArtImage {
    int width = 0;
    int height = 0;
    int bitCount = 0;
    int hotX = -1;  // cursors only
    int hotY = -1;
    std::vector<uint32_t> pixels;  // 0x00RRGGBB or one of the two cursor marks; top row first

    uint32_t At(int x, int y) const { return pixels[static_cast<size_t>(y) * width + x]; }
};

std::vector<uint8_t> ReadFileBytes(const std::string& path);

// Both give false with a reason for a file they cannot read.
bool DecodeBitmapFile(const std::vector<uint8_t>& bytes, ArtImage& image, std::string& error);
bool DecodeCursorFile(const std::vector<uint8_t>& bytes, ArtImage& image, std::string& error);

}  // namespace tessellum::test
