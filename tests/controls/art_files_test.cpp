// The art generator's reader of text pictures and its two file writers; the plug-in's
// pictures and pointers as the build draws them: sizes, depth, colours and hot spots;
// and a contact sheet of all of them, enlarged, for a person to look at. All read
// through the tests' own reader of the files.
#include "tools/art/art_files.h"

#include <gtest/gtest.h>

#include <cstring>
#include <iterator>
#include <string>

#include "tests/support/art_file_reader.h"
#include "tools/art/art_text.h"

#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb_easy_font.h>
#include <stb_image_write.h>

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

int Count(const ArtImage& image, uint32_t colour) {
    int n = 0;
    for (uint32_t p : image.pixels) n += p == colour;
    return n;
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
    const std::vector<uint8_t> rows(bytes.begin() + 118, bytes.end());
    EXPECT_EQ(rows,
              (std::vector<uint8_t>{(kWhiteIndex << 4) | kWhiteIndex, kBlackIndex << 4, 0, 0,
                                    (kBlackIndex << 4) | kWhiteIndex, kGreyIndex << 4, 0, 0}));
    ArtImage image;
    ASSERT_TRUE(DecodeBitmapFile(bytes, image, error)) << error;
    EXPECT_EQ(image.pixels, (std::vector<uint32_t>{kArtBlack, kArtWhite, kArtGrey, kArtWhite,
                                                   kArtWhite, kArtBlack}));
}

// Bitmaps: four bits of black, white and dialog grey. Cursors: monochrome, mostly
// see-through, a white body in a black outline, the hot spot on the drawing.
TEST(PluginArt, EveryPictureHasItsSizeDepthColoursAndHotSpot) {
    for (const ArtFile& e : kArtFiles) {
        SCOPED_TRACE(e.file);
        const ArtImage image = Load(e.file);
        EXPECT_EQ(image.width, e.width);
        EXPECT_EQ(image.height, e.height);
        EXPECT_EQ(image.hotX, e.hotX);
        EXPECT_EQ(image.hotY, e.hotY);
        if (e.hotX < 0) {
            EXPECT_EQ(image.bitCount, 4);
            EXPECT_EQ(Count(image, kArtBlack) + Count(image, kArtWhite) + Count(image, kArtGrey),
                      e.width * e.height);
            continue;
        }
        EXPECT_EQ(image.bitCount, 1);
        EXPECT_EQ(Count(image, kArtInverted), 0);
        EXPECT_GT(Count(image, kArtTransparent), 32 * 32 / 2);
        EXPECT_GT(Count(image, kArtWhite), 10);
        EXPECT_GT(Count(image, kArtBlack), 20);
        EXPECT_EQ(image.At(e.hotX, e.hotY), kArtBlack);
    }
}

// 331 to 333 are 104 to 106 with black and white exchanged inside the black frame; the
// plain buttons are black line drawings on a white field, no grey.
TEST(PluginArt, ToolButtonsAreFramedAndTheSelectedOnesInverted) {
    for (const char* tool : {"pencil", "dropper", "eraser"}) {
        SCOPED_TRACE(tool);
        const ArtImage plain = Load(std::string(tool) + "_button.bmp");
        const ArtImage selected = Load(std::string(tool) + "_button_selected.bmp");
        ASSERT_EQ(plain.pixels.size(), selected.pixels.size());
        int drawn = 0;
        for (int y = 0; y < plain.height; ++y) {
            for (int x = 0; x < plain.width; ++x) {
                const bool frame =
                    x == 0 || y == 0 || x == plain.width - 1 || y == plain.height - 1;
                const uint32_t p = plain.At(x, y);
                ASSERT_TRUE(p == kArtBlack || (!frame && p == kArtWhite)) << x << "," << y;
                ASSERT_EQ(selected.At(x, y), frame || p == kArtWhite ? kArtBlack : kArtWhite)
                    << x << "," << y;
                drawn += !frame && p == kArtBlack;
            }
        }
        EXPECT_GT(drawn, 40);
        EXPECT_LT(drawn, (plain.width - 2) * (plain.height - 2) / 3);
    }
}

// The sheet: every picture enlarged 8 times with its resource number over it; a cursor's
// see-through pixels as a light checker so that the mask shows, its hot spot as a cross.
TEST(PluginArt, ContactSheet) {
    constexpr int kScale = 8, kCell = 32 * kScale + 84, kColumns = 4, kLabel = 28;
    constexpr int kRows = (std::size(kArtFiles) + kColumns - 1) / kColumns;
    constexpr int width = kColumns * kCell, height = kRows * (kCell + kLabel);
    std::vector<uint8_t> sheet(static_cast<size_t>(width) * height * 3, 0x50);
    auto put = [&](int x, int y, uint32_t rgb) {
        if (x < 0 || y < 0 || x >= width || y >= height) return;
        uint8_t* p = &sheet[(static_cast<size_t>(y) * width + x) * 3];
        p[0] = rgb >> 16, p[1] = (rgb >> 8) & 0xFF, p[2] = rgb & 0xFF;
    };
    for (size_t i = 0; i < std::size(kArtFiles); ++i) {
        const ArtFile& e = kArtFiles[i];
        const int left = static_cast<int>(i % kColumns) * kCell + 12;
        const int top = static_cast<int>(i / kColumns) * (kCell + kLabel) + kLabel;
        const ArtImage image = Load(e.file);
        for (int y = 0; y < image.height * kScale; ++y) {
            for (int x = 0; x < image.width * kScale; ++x) {
                uint32_t p = image.At(x / kScale, y / kScale);
                if (p == kArtTransparent) p = ((x / 4 + y / 4) % 2) ? 0xE8D0F0 : 0xC8B0D8;
                put(left + x, top + y, p);
            }
        }
        const int hx = left + e.hotX * kScale + kScale / 2, hy = top + e.hotY * kScale + kScale / 2;
        for (int d = -2; e.hotX >= 0 && d <= 2; ++d) {
            put(hx + d, hy, 0xFF0000), put(hx, hy + d, 0xFF0000);
        }
        char label[64];
        snprintf(label, sizeof label, "%d %s", e.id, e.file);
        *strrchr(label, '.') = '\0';
        static char quads[60000];
        const int count = stb_easy_font_print(0, 0, label, nullptr, quads, sizeof quads);
        for (int q = 0; q < count; ++q) {
            const float* v = reinterpret_cast<const float*>(quads + q * 64);
            for (int y = static_cast<int>(v[1] * 2); y < static_cast<int>(v[9] * 2); ++y)
                for (int x = static_cast<int>(v[0] * 2); x < static_cast<int>(v[4] * 2); ++x)
                    put(left + x, top - kLabel + 6 + y, 0xFFFFFF);
        }
    }
    const std::string path = std::string(TESSELLUM_SCREENSHOT_DIR) + "/art_contact_sheet.png";
    EXPECT_TRUE(stbi_write_png(path.c_str(), width, height, 3, sheet.data(), width * 3)) << path;
}

}  // namespace
}  // namespace tessellum::test
