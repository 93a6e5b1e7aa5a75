// The art generator's reader of text pictures and its bitmap writer, and the plug-in's
// pictures and pointers as the build draws them, all read through the tests' own reader.
#include "tools/art/art_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/support/art_file_reader.h"

namespace tessellum::test {
namespace {

using namespace tessellum::art;

ArtImage Load(const std::string& file) {
    ArtImage image;
    std::string error;
    const std::vector<uint8_t> bytes = ReadFileBytes(std::string(TESSELLUM_ART_DIR) + "/" + file);
    EXPECT_TRUE(file.find(".cur") != std::string::npos ? DecodeCursorFile(bytes, image, error)
                                                       : DecodeBitmapFile(bytes, image, error))
        << file << ": " << error;
    return image;
}

TEST(ArtText, RefusesDamagedTextAndSaysWhere) {
    const std::pair<const char*, const char*> cases[] = {
        {"#.\n", "line 1"},                                     // rows before the size
        {"bitmap 2 2\n#.\n#\n", "line 3"},                      // a short row
        {"bitmap 2 2\n#.\n#.#\n", "line 3"},                    // a long row
        {"bitmap 2 2\n#x\n##\n", "line 2"},                     // an unknown pixel
        {"bitmap 2 2\n##\n", "line 2"},                         // too few rows
        {"bitmap 2 1\n##\n##\n", "line 3"},                     // too many rows
        {"bitmap 0 4\n", "line 1"},                             // no size
        {"bitmap 2\n", "line 1"},                               // half a size line
        {"cursor 2 2 2 0\n##\n##\n", "line 1"},                 // hot spot outside
        {"cursor 2 2 0 0\nselected x\n##\n##\n", "line 4"},     // a cursor has no selected form
        {"bitmap 3 3\nselected x\n###\n#.#\n#..\n", "line 5"},  // frame not black
        {"// nothing\n", "line 1"},
    };
    for (const auto& [text, where] : cases) {
        ArtPicture picture;
        std::string error;
        EXPECT_FALSE(ParseArtText(text, picture, error)) << text;
        EXPECT_EQ(error.rfind(where, 0), 0u) << text << " gave: " << error;
    }
}

TEST(ArtFiles, BitmapFileIsFourBitsWithPaddedRowsBottomUp) {
    ArtPicture picture;
    std::string error;
    ASSERT_TRUE(ParseArtText("// a comment\n\nbitmap 3 2\r\n#.-\n..#\n", picture, error)) << error;
    const std::vector<uint8_t> bytes = BitmapFileBytes(picture);
    // 14 + 40 + 16 colours, then two rows of 3 pixels at 4 bits, each padded to 4 bytes.
    ASSERT_EQ(bytes.size(), 14u + 40 + 64 + 8);
    EXPECT_EQ(bytes[10], 118);  // offset of the pixels
    EXPECT_EQ(bytes[14 + 14], 4) << "bits per pixel";
    // The bottom row (". . #") comes first: white, white, black, padding.
    EXPECT_EQ(std::vector<uint8_t>(bytes.begin() + 118, bytes.end()),
              (std::vector<uint8_t>{(kWhiteIndex << 4) | kWhiteIndex, kBlackIndex << 4, 0, 0,
                                    (kBlackIndex << 4) | kWhiteIndex, kGreyIndex << 4, 0, 0}));
    ArtImage image;
    ASSERT_TRUE(DecodeBitmapFile(bytes, image, error)) << error;
    EXPECT_EQ(image.pixels, (std::vector<uint32_t>{kArtBlack, kArtWhite, kArtGrey, kArtWhite,
                                                   kArtWhite, kArtBlack}));
}

// Bitmaps: four bits of black, white and dialog grey. Cursors: monochrome, mostly
// see-through, a white body in a black outline, the hot spot on the drawing. The
// selected tool buttons (331 to 333) are 104 to 106 with black and white exchanged
// inside the black frame; the plain ones black line drawings on white.
TEST(PluginArt, EveryPictureHasItsSizeDepthColoursAndHotSpot) {
    for (const ArtFile& e : kArtFiles) {
        SCOPED_TRACE(e.file);
        const ArtImage image = Load(e.file);
        EXPECT_EQ(std::vector<int>({image.width, image.height, image.hotX, image.hotY}),
                  std::vector<int>({e.width, e.height, e.hotX, e.hotY}));
        const auto count = [&](uint32_t colour) {
            return int(std::count(image.pixels.begin(), image.pixels.end(), colour));
        };
        const int black = count(kArtBlack), white = count(kArtWhite);
        if (e.hotX < 0) {
            EXPECT_EQ(image.bitCount, 4);
            EXPECT_EQ(black + white + count(kArtGrey), e.width * e.height);
        } else {
            EXPECT_EQ(image.bitCount, 1);
            EXPECT_TRUE(count(kArtInverted) == 0 && count(kArtTransparent) > 32 * 32 / 2 &&
                        white > 10 && black > 20);
            EXPECT_EQ(image.At(e.hotX, e.hotY), kArtBlack);
        }
        if (e.id < 104 || e.id > 106) continue;
        const ArtImage selected = Load(kArtFiles[e.id - 104 + 3].file);
        ASSERT_EQ(selected.pixels.size(), image.pixels.size());
        for (int y = 0; y < image.height; ++y) {
            for (int x = 0; x < image.width; ++x) {
                const bool frame = x % (image.width - 1) == 0 || y % (image.height - 1) == 0;
                const uint32_t p = image.At(x, y);
                ASSERT_TRUE(p == kArtBlack || (!frame && p == kArtWhite)) << x << "," << y;
                ASSERT_EQ(selected.At(x, y), frame || p == kArtWhite ? kArtBlack : kArtWhite)
                    << x << "," << y;
            }
        }
        const int drawn = black - 2 * (image.width + image.height - 2);  // the frame's
        EXPECT_TRUE(drawn > 40 && drawn < (image.width - 2) * (image.height - 2) / 3) << drawn;
    }
}

}  // namespace
}  // namespace tessellum::test
