#include "tools/art/art_files.h"

namespace tessellum::art {
namespace {

void Put16(std::vector<uint8_t>& out, uint32_t value) {
    out.push_back(static_cast<uint8_t>(value));
    out.push_back(static_cast<uint8_t>(value >> 8));
}

void Put32(std::vector<uint8_t>& out, uint32_t value) {
    Put16(out, value & 0xFFFF);
    Put16(out, value >> 16);
}

// The info header shared by both files; `rows` counts the cursor's mask too.
void PutInfoHeader(std::vector<uint8_t>& out, int width, int rows, int bitCount, uint32_t imageSize,
                   uint32_t colours) {
    Put32(out, 40);
    Put32(out, static_cast<uint32_t>(width));
    Put32(out, static_cast<uint32_t>(rows));
    Put16(out, 1);
    Put16(out, static_cast<uint32_t>(bitCount));
    Put32(out, 0);  // BI_RGB
    Put32(out, imageSize);
    Put32(out, 0);
    Put32(out, 0);
    Put32(out, colours);
    Put32(out, 0);
}

void PutColour(std::vector<uint8_t>& out, uint8_t red, uint8_t green, uint8_t blue) {
    out.insert(out.end(), {blue, green, red, 0});
}

size_t Stride(int width, int bitCount) {
    return ((static_cast<size_t>(width) * bitCount + 31) / 32) * 4;
}

uint8_t IndexOf(ArtPixel pixel) {
    switch (pixel) {
        case ArtPixel::Black: return kBlackIndex;
        case ArtPixel::White: return kWhiteIndex;
        default: return kGreyIndex;
    }
}

}  // namespace

std::vector<uint8_t> BitmapFileBytes(const ArtPicture& picture) {
    // The usual 16 colours; only black, grey 192 and white are used.
    static const uint8_t kPalette[16][3] = {
        {0, 0, 0},     {128, 0, 0},     {0, 128, 0},     {128, 128, 0},  {0, 0, 128}, {128, 0, 128},
        {0, 128, 128}, {192, 192, 192}, {128, 128, 128}, {255, 0, 0},    {0, 255, 0}, {255, 255, 0},
        {0, 0, 255},   {255, 0, 255},   {0, 255, 255},   {255, 255, 255}};
    const size_t stride = Stride(picture.width, 4);
    const uint32_t imageSize = static_cast<uint32_t>(stride * picture.height);
    const uint32_t offset = 14 + 40 + 16 * 4;
    std::vector<uint8_t> out = {'B', 'M'};
    Put32(out, offset + imageSize);
    Put32(out, 0);
    Put32(out, offset);
    PutInfoHeader(out, picture.width, picture.height, 4, imageSize, 16);
    for (const auto& colour : kPalette) PutColour(out, colour[0], colour[1], colour[2]);
    for (int y = picture.height - 1; y >= 0; --y) {
        std::vector<uint8_t> row(stride, 0);
        for (int x = 0; x < picture.width; ++x) {
            row[x / 2] |= static_cast<uint8_t>(IndexOf(picture.At(x, y)) << (x % 2 ? 0 : 4));
        }
        out.insert(out.end(), row.begin(), row.end());
    }
    return out;
}

std::vector<uint8_t> CursorFileBytes(const ArtPicture& picture) {
    // Colour bit 0 black, 1 white; a mask bit of 1 lets the screen through.
    const size_t stride = Stride(picture.width, 1);
    const uint32_t imageSize = static_cast<uint32_t>(2 * stride * picture.height);
    const uint32_t resourceSize = 40 + 2 * 4 + imageSize;
    std::vector<uint8_t> out;
    Put16(out, 0);
    Put16(out, 2);  // a cursor file
    Put16(out, 1);  // of one image
    out.push_back(static_cast<uint8_t>(picture.width));
    out.push_back(static_cast<uint8_t>(picture.height));
    out.push_back(2);  // colours
    out.push_back(0);
    Put16(out, static_cast<uint32_t>(picture.hotX));
    Put16(out, static_cast<uint32_t>(picture.hotY));
    Put32(out, resourceSize);
    Put32(out, 6 + 16);
    PutInfoHeader(out, picture.width, 2 * picture.height, 1, imageSize, 2);
    PutColour(out, 0, 0, 0);
    PutColour(out, 255, 255, 255);
    for (int plane = 0; plane < 2; ++plane) {  // the colour bits, then the mask
        for (int y = picture.height - 1; y >= 0; --y) {
            std::vector<uint8_t> row(stride, 0);
            for (int x = 0; x < picture.width; ++x) {
                const ArtPixel pixel = picture.At(x, y);
                const bool set =
                    plane == 0 ? pixel == ArtPixel::White : pixel == ArtPixel::Background;
                if (set) row[x / 8] |= static_cast<uint8_t>(0x80 >> (x % 8));
            }
            out.insert(out.end(), row.begin(), row.end());
        }
    }
    return out;
}

}  // namespace tessellum::art
