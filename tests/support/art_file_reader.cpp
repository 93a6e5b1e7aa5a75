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

// A BITMAPINFOHEADER at `at` with its colour table, and `rows` of bits at `bitsAt` (0:
// after the table), stored bottom-up: gives the colour table and each pixel's index.
bool DecodeDib(const std::vector<uint8_t>& b, size_t at, size_t bitsAt, int rows, ArtImage& image,
               std::vector<uint32_t>& indexes, std::vector<uint32_t>& table, std::string& error) {
    if (b.size() < at + 40 || U32(b, at) != 40) return error = "no 40-byte info header", false;
    image.width = static_cast<int32_t>(U32(b, at + 4));
    image.bitCount = U16(b, at + 14);
    if (U16(b, at + 12) != 1 || U32(b, at + 16) != 0) return error = "not one plane, BI_RGB", false;
    if (image.width <= 0 || rows <= 0 || image.bitCount > 8) return error = "bad size", false;
    const uint32_t colours = U32(b, at + 32) ? U32(b, at + 32) : 1u << image.bitCount;
    if (b.size() < at + 40 + 4 * colours) return error = "cut colour table", false;
    table.clear();
    for (size_t entry = at + 40; entry < at + 40 + 4 * colours; entry += 4)
        table.push_back((b[entry + 2] << 16) | (b[entry + 1] << 8) | b[entry]);
    if (bitsAt == 0) bitsAt = at + 40 + 4 * colours;
    const size_t stride = ((size_t(image.width) * image.bitCount + 31) / 32) * 4;
    if (b.size() < bitsAt + stride * rows) return error = "cut pixel rows", false;
    indexes.clear();
    for (int y = 0; y < rows; ++y) {
        for (int x = 0; x < image.width; ++x) {
            const size_t bit = size_t(x) * image.bitCount;
            const uint8_t byte = b[bitsAt + (rows - 1 - y) * stride + bit / 8];
            indexes.push_back((byte >> (8 - image.bitCount - bit % 8)) &
                              ((1u << image.bitCount) - 1));
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
    image.height = static_cast<int32_t>(U32(b, 14 + 8));
    std::vector<uint32_t> indexes, table;
    if (!DecodeDib(b, 14, U32(b, 10), image.height, image, indexes, table, error)) return false;
    for (uint32_t index : indexes) {
        if (index >= table.size()) return error = "index past the colour table", false;
        image.pixels.push_back(table[index]);
    }
    return true;
}

bool DecodeCursorFile(const std::vector<uint8_t>& b, ArtImage& image, std::string& error) {
    image = ArtImage();
    if (b.size() < 22 || U16(b, 0) != 0 || U16(b, 2) != 2 || U16(b, 4) != 1)
        return error = "not a cursor file of one image", false;
    image.hotX = int(U16(b, 10));
    image.hotY = int(U16(b, 12));
    const size_t at = U32(b, 18);
    if (at + U32(b, 14) > b.size() || b.size() < at + 40)
        return error = "image past the end", false;
    image.height = static_cast<int32_t>(U32(b, at + 8)) / 2;  // colour rows, then mask rows
    std::vector<uint32_t> colours, table;
    if (!DecodeDib(b, at, 0, image.height, image, colours, table, error)) return false;
    if (image.bitCount != 1 || table.size() != 2) return error = "not monochrome", false;
    if (b[6] != image.width || b[7] != image.height) return error = "entry size disagrees", false;
    // The mask follows the colour rows, 1 bit a pixel, bottom-up: set shows the screen,
    // which a black pixel leaves as it is and a white one inverts.
    const size_t stride = ((size_t(image.width) + 31) / 32) * 4;
    const size_t maskAt = at + 40 + 8 + stride * image.height;
    if (b.size() < maskAt + stride * image.height) return error = "cut mask", false;
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            const size_t row = maskAt + (image.height - 1 - y) * stride;
            const uint32_t colour = table[colours[size_t(y) * image.width + x]];
            image.pixels.push_back(!((b[row + x / 8] >> (7 - x % 8)) & 1) ? colour
                                   : colour == kArtBlack                  ? kArtTransparent
                                                                          : kArtInverted);
        }
    }
    return true;
}

}  // namespace tessellum::test
