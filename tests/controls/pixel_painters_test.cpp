// The painters of the off-screen bitmap, pixel by pixel, on plain memory.
#include "controls/pixel_painters.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace tessellum {
namespace {

constexpr PixelWord kSentinel = 0x00123456;

// A store of `width` by `height` sentinel words between two guard words that no
// painter may touch.
struct Store {
    Store(uint32_t width, uint32_t height)
        : width(width), height(height), words(width * height + 2, kSentinel) {
        words.front() = words.back() = 0xDEADBEEF;
    }
    PixelWord* bits() { return words.data() + 1; }
    PixelWord At(uint32_t x, uint32_t y) const { return words[1 + y * width + x]; }
    // One character a pixel: # black, o white, . the sentinel, x anything else; and the
    // guards, which must stay.
    std::string Picture() const {
        std::string out;
        for (uint32_t y = 0; y < height; ++y) {
            for (uint32_t x = 0; x < width; ++x) {
                const PixelWord p = At(x, y);
                out += p == kBlackPixel ? '#' : p == kWhitePixel ? 'o' : p == kSentinel ? '.' : 'x';
            }
            out += '\n';
        }
        EXPECT_TRUE(words.front() == 0xDEADBEEF && words.back() == 0xDEADBEEF) << "guard hit";
        return out;
    }
    uint32_t width, height;
    std::vector<PixelWord> words;
};

TEST(PixelWord, IsRedGreenBlueFromTheHighByteDownAndBlueFirstInMemory) {
    EXPECT_EQ(MakePixelWord(0x12, 0x34, 0x56), 0x00123456u);
    EXPECT_EQ(kWhitePixel, 0x00FFFFFFu);
    EXPECT_EQ(kBlackPixel, 0u);
    Store store(7, 3);
    FillPixels(store.bits(), 7, 3, 0xA1, 0xB2, 0xC3);
    EXPECT_EQ(store.Picture(), "xxxxxxx\nxxxxxxx\nxxxxxxx\n");
    const uint8_t bytes[4] = {0xC3, 0xB2, 0xA1, 0};
    EXPECT_EQ(std::memcmp(store.bits() + 20, bytes, 4), 0) << "blue at the lowest address";
    const PixelWord p = store.At(0, 0);
    EXPECT_EQ(RedOf(p) << 16 | GreenOf(p) << 8 | BlueOf(p), 0xA1B2C3);
}

TEST(PixelPainters, InsetFrameIsBlackWhiteWhiteBlackAroundAnUntouchedInside) {
    Store store(11, 10);
    PaintInsetFrame(store.bits(), 11, 10);
    EXPECT_EQ(store.Picture(),
              "###########\n"
              "#ooooooooo#\n"
              "#ooooooooo#\n"
              "#oo#####oo#\n"
              "#oo#...#oo#\n"
              "#oo#...#oo#\n"
              "#oo#####oo#\n"
              "#ooooooooo#\n"
              "#ooooooooo#\n"
              "###########\n");
    // Too small for an inside: the rings meet, nearest edge first.
    Store narrow(3, 5);
    PaintInsetFrame(narrow.bits(), 3, 5);
    EXPECT_EQ(narrow.Picture(), "###\n#o#\n#o#\n#o#\n###\n");
}

TEST(PixelPainters, FillInsideFillsExactlyWhatTheFrameLeaves) {
    for (uint32_t width = 9; width <= 14; ++width) {
        for (uint32_t height = 9; height <= 12; ++height) {
            SCOPED_TRACE(std::to_string(width) + " by " + std::to_string(height));
            Store framed(width, height);
            PaintInsetFrame(framed.bits(), width, height);
            Store both = framed;
            FillInside(both.bits(), width, height, 0x11, 0x22, 0x33);
            std::string expected = framed.Picture();
            std::replace(expected.begin(), expected.end(), '.', 'x');
            EXPECT_EQ(both.Picture(), expected);
            EXPECT_EQ(both.At(4, 4), 0x00112233u);
            EXPECT_EQ(both.At(width - 5, height - 5), 0x00112233u);
        }
    }
}

TEST(PixelPainters, ThinFrameBordersAFillInBlack) {
    Store store(5, 4);
    FillPixels(store.bits(), 5, 4, 255, 255, 255);
    PaintThinFrame(store.bits(), 5, 4);
    EXPECT_EQ(store.Picture(), "#####\n#ooo#\n#ooo#\n#####\n");
    Store row(4, 1), column(1, 3);
    PaintThinFrame(row.bits(), 4, 1);
    PaintThinFrame(column.bits(), 1, 3);
    EXPECT_EQ(row.Picture() + column.Picture(), "####\n#\n#\n#\n");
}

// Eight or less either way leaves FillInside no inside; a failed resize leaves a
// bitmap with no memory and no size, which every painter must leave alone.
TEST(PixelPainters, StoresWithNoInsideOrNoMemoryAreLeftAlone) {
    const uint32_t sizes[][2] = {{8, 20}, {20, 8}, {6, 20}, {0, 0}, {1, 30}};
    for (const auto& size : sizes) {
        Store store(size[0], size[1]);
        const std::string before = store.Picture();
        FillInside(store.bits(), size[0], size[1], 0, 0, 0);
        EXPECT_EQ(store.Picture(), before) << size[0] << " by " << size[1];
    }
    Store empty(0, 0);
    PaintThinFrame(empty.bits(), 0, 0);
    PaintInsetFrame(empty.bits(), 0, 0);
    empty.Picture();
    FillPixels(nullptr, 0, 0, 1, 2, 3);
    PaintInsetFrame(nullptr, 0, 0);
    FillInside(nullptr, 0, 0, 1, 2, 3);
    PaintThinFrame(nullptr, 0, 0);
}

}  // namespace
}  // namespace tessellum
