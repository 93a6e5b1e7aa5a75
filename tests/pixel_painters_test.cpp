// The painters of the off-screen bitmap, pixel by pixel, on plain memory.
#include "controls/pixel_painters.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace tessellum {
namespace {

constexpr PixelWord kSentinel = 0x00123456;

// A store of `width` by `height` words, all the sentinel, with guard words around it
// that no painter may touch.
struct Store {
    Store(uint32_t width, uint32_t height)
        : width(width), height(height), words(width * height + 2, kSentinel) {
        words.front() = words.back() = 0xDEADBEEF;
    }
    PixelWord* bits() { return words.data() + 1; }
    PixelWord At(uint32_t x, uint32_t y) const { return words[1 + y * width + x]; }
    bool GuardsIntact() const { return words.front() == 0xDEADBEEF && words.back() == 0xDEADBEEF; }
    // One character a pixel: # black, o white, . the sentinel, x anything else.
    std::string Picture() const {
        std::string out;
        for (uint32_t y = 0; y < height; ++y) {
            for (uint32_t x = 0; x < width; ++x) {
                const PixelWord p = At(x, y);
                out += p == kBlackPixel ? '#' : p == kWhitePixel ? 'o' : p == kSentinel ? '.' : 'x';
            }
            out += '\n';
        }
        return out;
    }
    uint32_t width, height;
    std::vector<PixelWord> words;
};

TEST(PixelWord, IsRedGreenBlueFromTheHighByteDownAndBlueFirstInMemory) {
    EXPECT_EQ(MakePixelWord(255, 0, 0), 0x00FF0000u);
    EXPECT_EQ(MakePixelWord(0x12, 0x34, 0x56), 0x00123456u);
    EXPECT_EQ(kWhitePixel, MakePixelWord(255, 255, 255));
    Store store(1, 1);
    FillPixels(store.bits(), 1, 1, 255, 0, 0);
    uint8_t bytes[4];
    std::memcpy(bytes, store.bits(), 4);
    EXPECT_EQ(bytes[0], 0) << "blue at the lowest address";
    EXPECT_EQ(bytes[1], 0);
    EXPECT_EQ(bytes[2], 0xFF);
    EXPECT_EQ(bytes[3], 0);
    EXPECT_EQ(RedOf(0x00A1B2C3), 0xA1);
    EXPECT_EQ(GreenOf(0x00A1B2C3), 0xB2);
    EXPECT_EQ(BlueOf(0x00A1B2C3), 0xC3);
}

TEST(PixelPainters, FillCoversEveryPixelAndNothingElse) {
    Store store(7, 3);
    FillPixels(store.bits(), 7, 3, 1, 2, 3);
    for (uint32_t y = 0; y < 3; ++y)
        for (uint32_t x = 0; x < 7; ++x) ASSERT_EQ(store.At(x, y), 0x00010203u);
    EXPECT_TRUE(store.GuardsIntact());
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
    EXPECT_TRUE(store.GuardsIntact());

    // Too small for an inside: the rings meet, nearest edge first.
    Store narrow(3, 5);
    PaintInsetFrame(narrow.bits(), 3, 5);
    EXPECT_EQ(narrow.Picture(), "###\n#o#\n#o#\n#o#\n###\n");
    Store dot(1, 1);
    PaintInsetFrame(dot.bits(), 1, 1);
    EXPECT_EQ(dot.Picture(), "#\n");
}

TEST(PixelPainters, FillInsideFillsExactlyWhatTheFrameLeaves) {
    for (uint32_t width = 9; width <= 14; ++width) {
        for (uint32_t height = 9; height <= 12; ++height) {
            SCOPED_TRACE(std::to_string(width) + " by " + std::to_string(height));
            Store framed(width, height);
            PaintInsetFrame(framed.bits(), width, height);
            Store both = framed;
            FillInside(both.bits(), width, height, 0x11, 0x22, 0x33);
            for (uint32_t y = 0; y < height; ++y) {
                for (uint32_t x = 0; x < width; ++x) {
                    if (framed.At(x, y) == kSentinel) {
                        ASSERT_EQ(both.At(x, y), 0x00112233u) << "unfilled at " << x << "," << y;
                    } else {
                        ASSERT_EQ(both.At(x, y), framed.At(x, y))
                            << "frame changed at " << x << "," << y;
                    }
                }
            }
            EXPECT_TRUE(both.GuardsIntact());
        }
    }
    Store nine(9, 9);
    FillInside(nine.bits(), 9, 9, 255, 255, 255);
    EXPECT_EQ(nine.At(4, 4), kWhitePixel) << "a 9 by 9 store has one inside pixel";
}

TEST(PixelPainters, FillInsideWritesNothingWhenEightOrLessEitherWay) {
    const uint32_t sizes[][2] = {{8, 20}, {20, 8}, {8, 8}, {5, 5}, {0, 0}, {1, 30}};
    for (const auto& size : sizes) {
        Store store(size[0], size[1]);
        const std::string before = store.Picture();
        FillInside(store.bits(), size[0], size[1], 0, 0, 0);
        EXPECT_EQ(store.Picture(), before) << size[0] << " by " << size[1];
        EXPECT_TRUE(store.GuardsIntact());
    }
}

TEST(PixelPainters, ThinFrameBordersAFillInBlack) {
    Store store(5, 4);
    FillPixels(store.bits(), 5, 4, 255, 255, 255);
    PaintThinFrame(store.bits(), 5, 4);
    EXPECT_EQ(store.Picture(), "#####\n#ooo#\n#ooo#\n#####\n");
    Store row(4, 1);
    PaintThinFrame(row.bits(), 4, 1);
    EXPECT_EQ(row.Picture(), "####\n");
    Store column(1, 3);
    PaintThinFrame(column.bits(), 1, 3);
    EXPECT_EQ(column.Picture(), "#\n#\n#\n");
    EXPECT_TRUE(store.GuardsIntact() && row.GuardsIntact() && column.GuardsIntact());
}

TEST(PixelPainters, AnEmptyStoreIsLeftAlone) {
    // What a bitmap holds after a failed resize: no memory, no size.
    FillPixels(nullptr, 0, 0, 1, 2, 3);
    PaintInsetFrame(nullptr, 0, 0);
    FillInside(nullptr, 0, 0, 1, 2, 3);
    PaintThinFrame(nullptr, 0, 0);
    Store store(0, 0);
    PaintThinFrame(store.bits(), 0, 0);
    PaintInsetFrame(store.bits(), 0, 0);
    EXPECT_TRUE(store.GuardsIntact());
}

}  // namespace
}  // namespace tessellum
