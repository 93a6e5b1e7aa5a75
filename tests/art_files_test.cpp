// The plug-in's pictures and pointers as the build draws them: sizes, depth, colours,
// hot spots and the shapes they must show; and a contact sheet of all of them, enlarged,
// for a person to look at.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "tests/art_file_reader.h"

#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb_easy_font.h>
#include <stb_image_write.h>

namespace tessellum::test {
namespace {

struct Expected {
    const char* file;
    int id;
    int width;
    int height;
    int hotX = -1;  // cursors only
    int hotY = -1;
};

const Expected kBitmaps[] = {{"pencil_button.bmp", 104, 26, 22},
                             {"dropper_button.bmp", 105, 26, 22},
                             {"eraser_button.bmp", 106, 26, 22},
                             {"pencil_button_selected.bmp", 331, 26, 22},
                             {"dropper_button_selected.bmp", 332, 26, 22},
                             {"eraser_button_selected.bmp", 333, 26, 22},
                             {"slider_thumb.bmp", 327, 11, 6},
                             {"thumb_wipe.bmp", 328, 11, 11},
                             {"arrow_right.bmp", 330, 6, 11},
                             {"arrow_left.bmp", 335, 6, 11},
                             {"swap_sign.bmp", 336, 10, 10}};
const Expected kCursors[] = {{"eraser_cursor.cur", 107, 32, 32, 14, 18},
                             {"pencil_cursor.cur", 108, 32, 32, 12, 21},
                             {"dropper_cursor.cur", 109, 32, 32, 11, 21}};

ArtImage Load(const char* file) {
    const std::string path = std::string(TESSELLUM_ART_DIR) + "/" + file;
    ArtImage image;
    std::string error;
    const bool cursor = std::string(file).find(".cur") != std::string::npos;
    const std::vector<uint8_t> bytes = ReadFileBytes(path);
    const bool ok =
        cursor ? DecodeCursorFile(bytes, image, error) : DecodeBitmapFile(bytes, image, error);
    EXPECT_TRUE(ok) << path << ": " << error;
    return image;
}

int Count(const ArtImage& image, uint32_t colour) {
    int n = 0;
    for (uint32_t p : image.pixels) n += p == colour;
    return n;
}

TEST(PluginArt, BitmapsAreFourBitsOfBlackWhiteAndGreyAtTheirSizes) {
    for (const Expected& e : kBitmaps) {
        SCOPED_TRACE(e.file);
        const ArtImage image = Load(e.file);
        EXPECT_EQ(image.bitCount, 4);
        EXPECT_EQ(image.width, e.width);
        EXPECT_EQ(image.height, e.height);
        for (uint32_t p : image.pixels) {
            ASSERT_TRUE(p == kArtBlack || p == kArtWhite || p == kArtGrey) << std::hex << p;
        }
    }
}

TEST(PluginArt, ToolButtonsAreFramedAndTheSelectedOnesInverted) {
    const char* pairs[][2] = {{"pencil_button.bmp", "pencil_button_selected.bmp"},
                              {"dropper_button.bmp", "dropper_button_selected.bmp"},
                              {"eraser_button.bmp", "eraser_button_selected.bmp"}};
    for (const auto& pair : pairs) {
        SCOPED_TRACE(pair[0]);
        const ArtImage plain = Load(pair[0]);
        const ArtImage selected = Load(pair[1]);
        ASSERT_EQ(plain.pixels.size(), selected.pixels.size());
        EXPECT_EQ(Count(plain, kArtGrey), 0) << "only black and white on a button";
        int drawn = 0;
        for (int y = 0; y < plain.height; ++y) {
            for (int x = 0; x < plain.width; ++x) {
                const bool frame =
                    x == 0 || y == 0 || x == plain.width - 1 || y == plain.height - 1;
                if (frame) {
                    ASSERT_EQ(plain.At(x, y), kArtBlack) << "frame at " << x << "," << y;
                    ASSERT_EQ(selected.At(x, y), kArtBlack) << "merged frame at " << x << "," << y;
                } else {
                    const uint32_t swapped = plain.At(x, y) == kArtBlack ? kArtWhite : kArtBlack;
                    ASSERT_EQ(selected.At(x, y), swapped) << x << "," << y;
                    drawn += plain.At(x, y) == kArtBlack;
                }
            }
        }
        // A line drawing on a white field: some outline, mostly field.
        EXPECT_GT(drawn, 40);
        EXPECT_LT(drawn, (plain.width - 2) * (plain.height - 2) / 3);
    }
}

TEST(PluginArt, SliderPicturesHaveTheirShapes) {
    const ArtImage thumb = Load("slider_thumb.bmp");
    for (int x = 0; x < 11; ++x) {
        EXPECT_EQ(thumb.At(x, 5), kArtBlack) << "base along the whole bottom row, column " << x;
        EXPECT_EQ(thumb.At(x, 0), x == 5 ? kArtBlack : kArtGrey) << "apex alone in column 5";
    }
    EXPECT_EQ(thumb.At(5, 2), kArtWhite) << "white inside";
    EXPECT_EQ(thumb.At(0, 0), kArtGrey) << "on grey";

    const ArtImage wipe = Load("thumb_wipe.bmp");
    EXPECT_EQ(Count(wipe, kArtGrey), 11 * 11);

    const ArtImage right = Load("arrow_right.bmp");
    const ArtImage left = Load("arrow_left.bmp");
    EXPECT_EQ(right.At(5, 5), kArtBlack) << "apex at column 5 of row 5";
    for (int y = 0; y < 11; ++y) {
        if (y != 5) {
            EXPECT_EQ(right.At(5, y), kArtGrey) << "the apex stands alone, row " << y;
        }
        for (int x = 0; x < 6; ++x) ASSERT_EQ(left.At(x, y), right.At(5 - x, y)) << x << "," << y;
    }
    EXPECT_EQ(right.At(2, 5), kArtWhite) << "white inside";
    EXPECT_EQ(right.At(0, 5), kArtBlack) << "the base outlined";

    const ArtImage swap = Load("swap_sign.bmp");
    EXPECT_EQ(Count(swap, kArtWhite), 0);
    EXPECT_GT(Count(swap, kArtBlack), 12);
    // Heads at the two ends: the leftmost black pixel lies in the upper half, the lowest
    // one in the right half.
    int leftmostY = -1, lowestX = -1;
    for (int x = 9; x >= 0; --x)
        for (int y = 0; y < 10; ++y)
            if (swap.At(x, y) == kArtBlack) leftmostY = y;
    for (int y = 0; y < 10; ++y)
        for (int x = 0; x < 10; ++x)
            if (swap.At(x, y) == kArtBlack) lowestX = x;
    EXPECT_LT(leftmostY, 5);
    EXPECT_GE(lowestX, 5);
}

TEST(PluginArt, CursorsAreMonochromeWithMasksAndHotSpotsOnTheirPoints) {
    for (const Expected& e : kCursors) {
        SCOPED_TRACE(e.file);
        const ArtImage image = Load(e.file);
        EXPECT_EQ(image.width, 32);
        EXPECT_EQ(image.height, 32);
        EXPECT_EQ(image.bitCount, 1);
        EXPECT_EQ(image.hotX, e.hotX);
        EXPECT_EQ(image.hotY, e.hotY);
        ASSERT_EQ(image.pixels.size(), 32u * 32);
        EXPECT_EQ(Count(image, kArtInverted), 0);
        EXPECT_GT(Count(image, kArtTransparent), 32 * 32 / 2) << "mostly see-through";
        EXPECT_GT(Count(image, kArtWhite), 10) << "a white body";
        EXPECT_GT(Count(image, kArtBlack), 20) << "a black outline";
        EXPECT_EQ(image.At(e.hotX, e.hotY), kArtBlack) << "the hot spot is on the drawing";
    }
}

// The sheet: every picture enlarged 8 times with its resource number over it; a cursor's
// see-through pixels as a light checker, so the mask shows.
TEST(PluginArt, ContactSheet) {
    constexpr int kScale = 8, kCell = 32 * kScale + 84, kColumns = 4, kLabel = 28;
    std::vector<std::pair<const Expected*, ArtImage>> all;
    for (const Expected& e : kBitmaps) all.emplace_back(&e, Load(e.file));
    for (const Expected& e : kCursors) all.emplace_back(&e, Load(e.file));
    const int rows = static_cast<int>((all.size() + kColumns - 1) / kColumns);
    const int width = kColumns * kCell, height = rows * (kCell + kLabel);
    std::vector<uint8_t> sheet(static_cast<size_t>(width) * height * 3, 0x50);
    auto put = [&](int x, int y, uint32_t rgb) {
        if (x < 0 || y < 0 || x >= width || y >= height) return;
        uint8_t* p = &sheet[(static_cast<size_t>(y) * width + x) * 3];
        p[0] = rgb >> 16, p[1] = (rgb >> 8) & 0xFF, p[2] = rgb & 0xFF;
    };
    for (size_t i = 0; i < all.size(); ++i) {
        const int left = static_cast<int>(i % kColumns) * kCell + 12;
        const int top = static_cast<int>(i / kColumns) * (kCell + kLabel) + kLabel;
        const ArtImage& image = all[i].second;
        for (int y = 0; y < image.height * kScale; ++y) {
            for (int x = 0; x < image.width * kScale; ++x) {
                uint32_t p = image.At(x / kScale, y / kScale);
                if (p == kArtTransparent) p = ((x / 4 + y / 4) % 2) ? 0xE8D0F0 : 0xC8B0D8;
                if (p == kArtInverted) p = 0xFF0000;
                put(left + x, top + y, p);
            }
        }
        if (all[i].first->hotX >= 0 && all[i].first->width == 32) {  // mark the hot spot
            const int hx = left + all[i].first->hotX * kScale + kScale / 2;
            const int hy = top + all[i].first->hotY * kScale + kScale / 2;
            for (int d = -2; d <= 2; ++d) put(hx + d, hy, 0xFF0000), put(hx, hy + d, 0xFF0000);
        }
        char label[64];
        snprintf(label, sizeof label, "%d %s", all[i].first->id, all[i].first->file);
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
