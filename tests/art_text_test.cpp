// The art generator's reader of text pictures and its two file writers, checked
// through the independent reader of the tests.
#include "tools/art/art_text.h"

#include <gtest/gtest.h>

#include "tests/art_file_reader.h"
#include "tools/art/art_files.h"

namespace tessellum::art {
namespace {

using test::ArtImage;

TEST(ArtText, ReadsSizeRowsAndComments) {
    ArtPicture picture;
    std::string error;
    ASSERT_TRUE(ParseArtText("// a comment\n\nbitmap 3 2\r\n#.-\n-.#\n", picture, error)) << error;
    EXPECT_FALSE(picture.cursor);
    EXPECT_EQ(picture.width, 3);
    EXPECT_EQ(picture.height, 2);
    EXPECT_EQ(picture.At(0, 0), ArtPixel::Black);
    EXPECT_EQ(picture.At(1, 0), ArtPixel::White);
    EXPECT_EQ(picture.At(2, 0), ArtPixel::Background);
    EXPECT_EQ(picture.At(2, 1), ArtPixel::Black);

    ASSERT_TRUE(ParseArtText("cursor 2 2 1 0\n-#\n.-\n", picture, error)) << error;
    EXPECT_TRUE(picture.cursor);
    EXPECT_EQ(picture.hotX, 1);
    EXPECT_EQ(picture.hotY, 0);
}

TEST(ArtText, RefusesDamagedTextAndSaysWhere) {
    const struct {
        const char* text;
        const char* where;
    } cases[] = {
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
    for (const auto& c : cases) {
        ArtPicture picture;
        std::string error;
        EXPECT_FALSE(ParseArtText(c.text, picture, error)) << c.text;
        EXPECT_EQ(error.rfind(c.where, 0), 0u) << c.text << " gave: " << error;
    }
}

TEST(ArtText, SelectedFormExchangesBlackAndWhiteInsideTheFrame) {
    ArtPicture picture;
    std::string error;
    ASSERT_TRUE(ParseArtText("bitmap 4 3\nselected s\n####\n#.-#\n####\n", picture, error))
        << error;
    const ArtPicture selected = SelectedForm(picture);
    EXPECT_EQ(selected.At(1, 1), ArtPixel::Black);       // white became black
    EXPECT_EQ(selected.At(2, 1), ArtPixel::Background);  // grey stays
    for (int x = 0; x < 4; ++x) EXPECT_EQ(selected.At(x, 0), ArtPixel::Black) << "the frame stays";
    EXPECT_TRUE(selected.selectedName.empty());
}

TEST(ArtFiles, BitmapFileIsFourBitsWithPaddedRowsBottomUp) {
    ArtPicture picture;
    std::string error;
    ASSERT_TRUE(ParseArtText("bitmap 3 2\n#.-\n..#\n", picture, error));
    const std::vector<uint8_t> bytes = BitmapFileBytes(picture);
    // 14 + 40 + 16 colours, then two rows of 3 pixels at 4 bits, each padded to 4 bytes.
    ASSERT_EQ(bytes.size(), 14u + 40 + 64 + 8);
    EXPECT_EQ(bytes[10], 118);  // offset of the pixels
    EXPECT_EQ(bytes[14 + 14], 4) << "bits per pixel";
    // The bottom row (". . #") comes first: white, white, black, padding.
    EXPECT_EQ(bytes[118], (kWhiteIndex << 4) | kWhiteIndex);
    EXPECT_EQ(bytes[119], kBlackIndex << 4);
    EXPECT_EQ(bytes[120], 0);
    EXPECT_EQ(bytes[122], (kBlackIndex << 4) | kWhiteIndex);
    EXPECT_EQ(bytes[123], kGreyIndex << 4);

    ArtImage image;
    ASSERT_TRUE(test::DecodeBitmapFile(bytes, image, error)) << error;
    EXPECT_EQ(image.pixels,
              (std::vector<uint32_t>{test::kArtBlack, test::kArtWhite, test::kArtGrey,
                                     test::kArtWhite, test::kArtWhite, test::kArtBlack}));
}

TEST(ArtFiles, CursorFileCarriesHotSpotColourAndMask) {
    ArtPicture picture;
    std::string error;
    std::string text = "cursor 32 32 7 9\n";
    for (int y = 0; y < 32; ++y) {
        std::string row(32, '-');
        if (y == 9) row[7] = '#';
        if (y == 10) row[8] = '.';
        text += row + "\n";
    }
    ASSERT_TRUE(ParseArtText(text, picture, error)) << error;
    const std::vector<uint8_t> bytes = CursorFileBytes(picture);
    ASSERT_EQ(bytes.size(), 6u + 16 + 40 + 8 + 128 + 128);
    EXPECT_EQ(bytes[2], 2) << "type: cursor";
    ArtImage image;
    ASSERT_TRUE(test::DecodeCursorFile(bytes, image, error)) << error;
    EXPECT_EQ(image.width, 32);
    EXPECT_EQ(image.height, 32);
    EXPECT_EQ(image.bitCount, 1);
    EXPECT_EQ(image.hotX, 7);
    EXPECT_EQ(image.hotY, 9);
    for (int y = 0; y < 32; ++y) {
        for (int x = 0; x < 32; ++x) {
            const uint32_t expected = x == 7 && y == 9    ? test::kArtBlack
                                      : x == 8 && y == 10 ? test::kArtWhite
                                                          : test::kArtTransparent;
            ASSERT_EQ(image.At(x, y), expected) << x << "," << y;
        }
    }
}

}  // namespace
}  // namespace tessellum::art
