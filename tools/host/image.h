// An image as our host keeps it: interleaved planes, 8 bits each, rows packed.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessellum::host {

struct Image {
    int width = 0;
    int height = 0;
    int planes = 0;  // 1 grey, 2 grey and alpha, 3 RGB, 4 RGBA
    std::vector<uint8_t> pixels;

    uint8_t* At(int x, int y) {
        return pixels.data() + (static_cast<size_t>(y) * width + x) * planes;
    }
    const uint8_t* At(int x, int y) const {
        return pixels.data() + (static_cast<size_t>(y) * width + x) * planes;
    }
};

// Reads a PNG. `planes` 0 keeps the file's own planes, 1 to 4 converts. On failure
// gives false and says why in `error`.
bool LoadPng(const std::string& path, int planes, Image& image, std::string& error);
bool SavePng(const std::string& path, const Image& image, std::string& error);

}  // namespace tessellum::host
