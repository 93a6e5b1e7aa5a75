// PNG reading and writing for our host, through stb.
#include <cstdlib>

#include "tools/host/image.h"

#define STB_IMAGE_IMPLEMENTATION
#define STBI_ONLY_PNG
#define STB_IMAGE_WRITE_IMPLEMENTATION
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"
#pragma GCC diagnostic ignored "-Wunused-function"
#pragma GCC diagnostic ignored "-Wsign-compare"
#endif
#include <stb_image.h>
#include <stb_image_write.h>
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

namespace tessellum::host {

bool LoadPng(const std::string& path, int planes, Image& image, std::string& error) {
    int width = 0, height = 0, filePlanes = 0;
    stbi_uc* data = stbi_load(path.c_str(), &width, &height, &filePlanes, planes);
    if (!data) {
        error = std::string("cannot read ") + path + " as a PNG image: " + stbi_failure_reason();
        return false;
    }
    // Filter rectangles are 16-bit: a host of this interface cannot address more.
    if (width > 30000 || height > 30000) {
        stbi_image_free(data);
        error = path + " is larger than 30000 pixels on a side";
        return false;
    }
    image.width = width;
    image.height = height;
    image.planes = planes ? planes : filePlanes;
    image.pixels.assign(data, data + static_cast<size_t>(width) * height * image.planes);
    stbi_image_free(data);
    return true;
}

bool SavePng(const std::string& path, const Image& image, std::string& error) {
    if (!stbi_write_png(path.c_str(), image.width, image.height, image.planes, image.pixels.data(),
                        image.width * image.planes)) {
        error = "cannot write " + path;
        return false;
    }
    return true;
}

}  // namespace tessellum::host
