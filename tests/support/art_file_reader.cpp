#include "tests/support/art_file_reader.h"

#include <fstream>
#include <iterator>

namespace tessellum::test {
namespace {

uint32_t U16(const std::vector<uint8_t>& b, size_t at) {
    return b[at] | (b[at + 1] << 8);
}
uint32_t U32(const std::vector<uint8_t>& b, size_t at) {
    return U16(b, at) | (U16(b, at + 2) << 16);
}

// The DIB at `at`: a BITMAPINFOHEADER, its colour table, and `rows` of bits, stored
// bottom-up, at `bitsAt` (0: right after the table). Gives the colours, top row first.
bool DecodeDib(const std::vector<uint8_t>& b, size_t at, size_t bitsAt, int rows, ArtImage& image,
               std::string& error) {
    if (b.size() < at + 40 || U32(b, at) != 40) return error = "no 40-byte info header", false;
    image.width = static_cast<int32_t>(U32(b, at + 4));
    image.bitCount = U16(b, at + 14);
    if (U16(b, at + 12) != 1 || U32(b, at + 16) != 0) return error = "not one plane, BI_RGB", false;
    if (image.width <= 0 || rows <= 0 || image.bitCount > 8) return error = "bad size", false;
    const size_t colours = U32(b, at + 32) ? U32(b, at + 32) : 1u << image.bitCount;
    const size_t table = at + 40, stride = (size_t(image.width) * image.bitCount + 31) / 32 * 4;
    if (bitsAt == 0) bitsAt = table + 4 * colours;
    if (b.size() < bitsAt + stride * rows) return error = "cut pixel rows", false;
    for (int row = rows - 1; row >= 0; --row) {
        for (int x = 0; x < image.width; ++x) {
            const size_t bit = size_t(x) * image.bitCount;
            const size_t index =
                (b[bitsAt + row * stride + bit / 8] >> (8 - image.bitCount - bit % 8)) &
                ((1u << image.bitCount) - 1);
            if (index >= colours) return error = "index past the colour table", false;
            const size_t entry = table + 4 * index;
            image.pixels.push_back((b[entry + 2] << 16) | (b[entry + 1] << 8) | b[entry]);
        }
    }
    return true;
}

}  // namespace

std::vector<uint8_t> ReadFileBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

bool DecodeBitmapFile(const std::vector<uint8_t>& b, ArtImage& image, std::string& error) {
    image = ArtImage();
    if (b.size() < 26 || b[0] != 'B' || b[1] != 'M') return error = "no BM signature", false;
    if (U32(b, 2) != b.size()) return error = "file size field disagrees", false;
    image.height = static_cast<int32_t>(U32(b, 22));
    return DecodeDib(b, 14, U32(b, 10), image.height, image, error);
}

bool DecodeCursorFile(const std::vector<uint8_t>& b, ArtImage& image, std::string& error) {
    image = ArtImage();
    if (b.size() < 22 || U16(b, 0) != 0 || U16(b, 2) != 2 || U16(b, 4) != 1)
        return error = "not a cursor file of one image", false;
    image.hotX = static_cast<int>(U16(b, 10));
    image.hotY = static_cast<int>(U16(b, 12));
    const size_t at = U32(b, 18);
    if (b.size() < at + 40 || at + U32(b, 14) > b.size()) return error = "cut image", false;
    image.height = static_cast<int32_t>(U32(b, at + 8)) / 2;  // colour rows, then mask rows
    if (!DecodeDib(b, at, 0, image.height, image, error)) return false;
    if (image.bitCount != 1 || b[6] != image.width || b[7] != image.height)
        return error = "not a monochrome image of the entry's size", false;
    // The mask follows, 1 bit a pixel, bottom-up: a set bit shows the screen, which a
    // black pixel leaves as it is and a white one inverts.
    const size_t stride = (size_t(image.width) + 31) / 32 * 4;
    const size_t mask = at + 40 + 8 + stride * image.height;
    if (b.size() < mask + stride * image.height) return error = "cut mask", false;
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            uint32_t& p = image.pixels[size_t(y) * image.width + x];
            if ((b[mask + (image.height - 1 - y) * stride + x / 8] >> (7 - x % 8)) & 1)
                p = p == kArtBlack ? kArtTransparent : kArtInverted;
        }
    }
    return true;
}

}  // namespace tessellum::test
