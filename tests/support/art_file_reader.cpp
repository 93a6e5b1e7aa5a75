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

// A BITMAPINFOHEADER with its colour table and bits at `at`; `rows` as stored.
bool DecodeDib(const std::vector<uint8_t>& b, size_t at, size_t bitsAt, int rows, ArtImage& image,
               std::vector<uint32_t>& indexes, std::vector<uint32_t>& table, std::string& error) {
    if (b.size() < at + 40 || U32(b, at) != 40) return error = "no 40-byte info header", false;
    image.width = static_cast<int32_t>(U32(b, at + 4));
    image.bitCount = U16(b, at + 14);
    if (U16(b, at + 12) != 1 || U32(b, at + 16) != 0) return error = "not one plane, BI_RGB", false;
    if (image.width <= 0 || rows <= 0 || image.bitCount > 8)
        return error = "bad size or depth", false;
    uint32_t colours = U32(b, at + 32);
    if (colours == 0) colours = 1u << image.bitCount;
    table.clear();
    for (uint32_t i = 0; i < colours; ++i) {
        const size_t entry = at + 40 + 4 * i;
        if (b.size() < entry + 4) return error = "cut colour table", false;
        table.push_back((b[entry + 2] << 16) | (b[entry + 1] << 8) | b[entry]);
    }
    if (bitsAt == 0) bitsAt = at + 40 + 4 * colours;
    const size_t stride = ((static_cast<size_t>(image.width) * image.bitCount + 31) / 32) * 4;
    if (b.size() < bitsAt + stride * rows) return error = "cut pixel rows", false;
    indexes.assign(static_cast<size_t>(image.width) * rows, 0);
    for (int row = 0; row < rows; ++row) {
        const int y = rows - 1 - row;  // stored bottom-up
        for (int x = 0; x < image.width; ++x) {
            const size_t bit = static_cast<size_t>(x) * image.bitCount;
            const uint8_t byte = b[bitsAt + row * stride + bit / 8];
            const int shift = 8 - image.bitCount - static_cast<int>(bit % 8);
            indexes[static_cast<size_t>(y) * image.width + x] =
                (byte >> shift) & ((1u << image.bitCount) - 1);
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
    if (b.size() < 14 || b[0] != 'B' || b[1] != 'M') return error = "no BM signature", false;
    if (U32(b, 2) != b.size()) return error = "file size field disagrees", false;
    const int rows = static_cast<int32_t>(U32(b, 14 + 8));
    std::vector<uint32_t> indexes, table;
    if (!DecodeDib(b, 14, U32(b, 10), rows, image, indexes, table, error)) return false;
    image.height = rows;
    for (uint32_t index : indexes) {
        if (index >= table.size()) return error = "index past the colour table", false;
        image.pixels.push_back(table[index]);
    }
    return true;
}

bool DecodeCursorFile(const std::vector<uint8_t>& b, ArtImage& image, std::string& error) {
    image = ArtImage();
    if (b.size() < 22 || U16(b, 0) != 0 || U16(b, 2) != 2 || U16(b, 4) != 1) {
        return error = "not a cursor file of one image", false;
    }
    image.hotX = static_cast<int>(U16(b, 6 + 4));
    image.hotY = static_cast<int>(U16(b, 6 + 6));
    const size_t at = U32(b, 6 + 12);
    if (at + U32(b, 6 + 8) > b.size()) return error = "image past the end", false;
    if (b.size() < at + 40) return error = "cut info header", false;
    const int rows = static_cast<int32_t>(U32(b, at + 8));  // colour rows and mask rows
    std::vector<uint32_t> colours, table;
    if (!DecodeDib(b, at, 0, rows / 2, image, colours, table, error)) return false;
    if (image.bitCount != 1 || table.size() != 2) return error = "not monochrome", false;
    image.height = rows / 2;
    if (b[6] != image.width || b[7] != image.height) return error = "entry size disagrees", false;
    // The mask follows the colour rows, 1 bit a pixel, bottom-up.
    const size_t stride = ((static_cast<size_t>(image.width) + 31) / 32) * 4;
    const size_t maskAt = at + 40 + 8 + stride * image.height;
    if (b.size() < maskAt + stride * image.height) return error = "cut mask", false;
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            const size_t row = maskAt + (image.height - 1 - y) * stride;
            const bool screen = (b[row + x / 8] >> (7 - x % 8)) & 1;
            const uint32_t colour = table[colours[static_cast<size_t>(y) * image.width + x]];
            image.pixels.push_back(!screen               ? colour
                                   : colour == kArtBlack ? kArtTransparent
                                                         : kArtInverted);
        }
    }
    return true;
}

}  // namespace tessellum::test
