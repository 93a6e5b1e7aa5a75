#include "tools/art/art_text.h"

#include <sstream>

#include "controls/dpi_scale.h"

namespace tessellum::art {
namespace {

bool Fail(std::string& error, int line, const std::string& what) {
    error = "line " + std::to_string(line) + ": " + what;
    return false;
}

bool ReadPixel(char c, ArtPixel& pixel) {
    switch (c) {
        case '#': pixel = ArtPixel::Black; return true;
        case '.': pixel = ArtPixel::White; return true;
        case '-': pixel = ArtPixel::Background; return true;
        default: return false;
    }
}

}  // namespace

bool ParseArtText(const std::string& text, ArtPicture& picture, std::string& error) {
    picture = ArtPicture();
    std::istringstream lines(text);
    std::string line;
    bool sized = false;
    int number = 0;
    while (std::getline(lines, line)) {
        ++number;
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty() || line.rfind("//", 0) == 0) continue;
        std::istringstream words(line);
        std::string word;
        words >> word;
        if (word == "bitmap" || word == "cursor") {
            if (sized) return Fail(error, number, "a second size line");
            picture.cursor = word == "cursor";
            words >> picture.width >> picture.height;
            if (picture.cursor) words >> picture.hotX >> picture.hotY;
            std::string rest;
            if (!words || (words >> rest)) return Fail(error, number, "unreadable size line");
            if (picture.width < 1 || picture.height < 1 || picture.width > 256 ||
                picture.height > 256) {
                return Fail(error, number, "size out of range");
            }
            if (picture.cursor && (picture.hotX < 0 || picture.hotX >= picture.width ||
                                   picture.hotY < 0 || picture.hotY >= picture.height)) {
                return Fail(error, number, "hot spot outside the cursor");
            }
            sized = true;
            continue;
        }
        if (word == "selected") {
            if (!(words >> picture.selectedName)) return Fail(error, number, "selected: no name");
            continue;
        }
        if (!sized) return Fail(error, number, "pixels before the size line");
        if (static_cast<int>(line.size()) != picture.width) {
            return Fail(error, number,
                        "row of " + std::to_string(line.size()) + " pixels, expected " +
                            std::to_string(picture.width));
        }
        for (char c : line) {
            ArtPixel pixel;
            if (!ReadPixel(c, pixel))
                return Fail(error, number, std::string("unknown pixel '") + c + "'");
            picture.pixels.push_back(pixel);
        }
        if (static_cast<int>(picture.pixels.size()) > picture.width * picture.height) {
            return Fail(error, number, "more rows than the height");
        }
    }
    if (!sized) return Fail(error, number, "no size line");
    if (static_cast<int>(picture.pixels.size()) != picture.width * picture.height) {
        return Fail(error, number,
                    std::to_string(picture.pixels.size() / picture.width) + " rows, expected " +
                        std::to_string(picture.height));
    }
    if (!picture.selectedName.empty()) {
        if (picture.cursor) return Fail(error, number, "a cursor has no selected form");
        for (int y = 0; y < picture.height; ++y) {
            for (int x = 0; x < picture.width; ++x) {
                const bool frame =
                    x == 0 || y == 0 || x == picture.width - 1 || y == picture.height - 1;
                if (frame && picture.At(x, y) != ArtPixel::Black) {
                    return Fail(error, number,
                                "a picture with a selected form needs a black frame");
                }
            }
        }
    }
    return true;
}

ArtPicture ScaledArt(const ArtPicture& picture, int dpi) {
    ArtPicture scaled = picture;
    scaled.width = ScaleToDpi(picture.width, dpi);
    scaled.height = ScaleToDpi(picture.height, dpi);
    scaled.pixels.assign(static_cast<size_t>(scaled.width) * scaled.height, ArtPixel::Background);
    for (int y = 0; y < scaled.height; ++y) {
        for (int x = 0; x < scaled.width; ++x) {
            scaled.pixels[static_cast<size_t>(y) * scaled.width + x] =
                picture.At(x * picture.width / scaled.width, y * picture.height / scaled.height);
        }
    }
    // Pixel d comes from d * width / scaled width: the first that comes from h is the
    // rounded-up h * scaled width / width.
    scaled.hotX = (picture.hotX * scaled.width + picture.width - 1) / picture.width;
    scaled.hotY = (picture.hotY * scaled.height + picture.height - 1) / picture.height;
    return scaled;
}

ArtPicture SelectedForm(const ArtPicture& picture) {
    ArtPicture selected = picture;
    selected.selectedName.clear();
    for (int y = 1; y < picture.height - 1; ++y) {
        for (int x = 1; x < picture.width - 1; ++x) {
            ArtPixel& pixel = selected.pixels[static_cast<size_t>(y) * picture.width + x];
            if (pixel == ArtPixel::Black) {
                pixel = ArtPixel::White;
            } else if (pixel == ArtPixel::White) {
                pixel = ArtPixel::Black;
            }
        }
    }
    return selected;
}

}  // namespace tessellum::art
