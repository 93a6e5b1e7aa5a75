// make-sample: draws the demo's input image, a smooth colour field, as a PNG.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "tools/host/image.h"

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "Usage: make-sample WIDTH HEIGHT OUTPUT.png\n");
        return 2;
    }
    tessellum::host::Image image;
    image.width = std::atoi(argv[1]);
    image.height = std::atoi(argv[2]);
    image.planes = 3;
    if (image.width < 1 || image.height < 1 || image.width > 30000 || image.height > 30000) {
        std::fprintf(stderr, "make-sample: sizes run from 1 to 30000\n");
        return 2;
    }
    image.pixels.resize(static_cast<size_t>(image.width) * image.height * 3);
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            uint8_t* p = image.At(x, y);
            p[0] = static_cast<uint8_t>(255 * x / image.width);
            p[1] = static_cast<uint8_t>(255 * y / image.height);
            p[2] = static_cast<uint8_t>(255 - 255 * (x + y) / (image.width + image.height));
        }
    }
    std::string error;
    if (!tessellum::host::SavePng(argv[3], image, error)) {
        std::fprintf(stderr, "make-sample: %s\n", error.c_str());
        return 2;
    }
    return 0;
}
