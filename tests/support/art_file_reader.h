// Reads back the art files the build draws (4-bit BMP, monochrome CUR), from the
// published file layouts and apart from the generator, to say what the files hold.
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
    int width = 0, height = 0, bitCount = 0;
    int hotX = -1, hotY = -1;      // cursors only
    std::vector<uint32_t> pixels;  // 0x00RRGGBB or one of the two cursor marks; top row first
    uint32_t At(int x, int y) const { return pixels[static_cast<size_t>(y) * width + x]; }
};

// Every picture the build draws: file, resource number, size, and a cursor's hot spot.
struct ArtFile {
    const char* file;
    int id, width, height, hotX = -1, hotY = -1;
};
inline const ArtFile kArtFiles[] = {{"pencil_button.bmp", 104, 26, 22},
                                    {"dropper_button.bmp", 105, 26, 22},
                                    {"eraser_button.bmp", 106, 26, 22},
                                    {"pencil_button_selected.bmp", 331, 26, 22},
                                    {"dropper_button_selected.bmp", 332, 26, 22},
                                    {"eraser_button_selected.bmp", 333, 26, 22},
                                    {"slider_thumb.bmp", 327, 11, 6},
                                    {"thumb_wipe.bmp", 328, 11, 11},
                                    {"arrow_right.bmp", 330, 6, 11},
                                    {"arrow_left.bmp", 335, 6, 11},
                                    {"swap_sign.bmp", 336, 10, 10},
                                    {"eraser_cursor.cur", 107, 32, 32, 14, 18},
                                    {"pencil_cursor.cur", 108, 32, 32, 12, 21},
                                    {"dropper_cursor.cur", 109, 32, 32, 11, 21}};

std::vector<uint8_t> ReadFileBytes(const std::string& path);

// Both give false with a reason for a file they cannot read.
bool DecodeBitmapFile(const std::vector<uint8_t>& bytes, ArtImage& image, std::string& error);
bool DecodeCursorFile(const std::vector<uint8_t>& bytes, ArtImage& image, std::string& error);

}  // namespace tessellum::test
