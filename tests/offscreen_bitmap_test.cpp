// The off-screen bitmap against the real GDI: what its Blit puts into a real window,
// read back; resizing; loading the plug-in's bitmaps; and the failures.
#include "controls/offscreen_bitmap.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "resources/resource_ids.h"
#include "storage/error_code.h"
#include "tests/art_file_reader.h"
#include "tests/window_pixels.h"

namespace tessellum {
namespace {

using test::ReadClient;

constexpr uint32_t kWindowWhite = 0xFFFFFF;

std::vector<uint32_t> Region(const OffscreenBitmap& bitmap, int x, int y, int width, int height) {
    std::vector<uint32_t> out;
    for (int row = y; row < y + height; ++row)
        for (int column = x; column < x + width; ++column)
            out.push_back(bitmap.bits[row * bitmap.width + column]);
    return out;
}

ErrorCode ThrownBy(void (*action)(HWND), HWND window) {
    try {
        action(window);
    } catch (ErrorCode code) {
        return code;
    }
    return 0;
}

class OffscreenBitmapTest : public ::testing::Test {
protected:
    void SetUp() override {
        window = test::MakeTestWindow("OffscreenBitmap", 220, 120);
        ASSERT_NE(window, nullptr);
    }
    void TearDown() override { DestroyWindow(window); }
    HWND window = nullptr;
};

TEST_F(OffscreenBitmapTest, IsA32BitSectionSelectedIntoItsOwnContext) {
    OffscreenBitmap bitmap(window, 30, 20, true);
    ASSERT_NE(bitmap.bits, nullptr);
    EXPECT_EQ(bitmap.owner, window);
    EXPECT_EQ(bitmap.width, 30u);
    EXPECT_EQ(bitmap.height, 20u);
    EXPECT_EQ(bitmap.topDown, 1);
    DIBSECTION section = {};
    ASSERT_EQ(GetObjectA(bitmap.bitmap, sizeof section, &section), int(sizeof section));
    EXPECT_EQ(section.dsBm.bmBitsPixel, 32);
    EXPECT_EQ(section.dsBm.bmWidth, 30);
    EXPECT_EQ(section.dsBm.bmHeight, 20);
    EXPECT_EQ(section.dsBm.bmBits, bitmap.bits);
    EXPECT_EQ(GetCurrentObject(bitmap.memoryDC, OBJ_BITMAP), bitmap.bitmap);
}

TEST_F(OffscreenBitmapTest, BlitPutsExactlyThosePixelsIntoTheWindow) {
    OffscreenBitmap bitmap(window, 40, 30, true);
    bitmap.Fill(10, 20, 30);
    bitmap.PaintInsetFrame();
    bitmap.FillInside(200, 100, 50);
    bitmap.bits[5] = 0x00FF0000;            // memory row 0: the top of a top-down picture
    bitmap.bits[29 * 40 + 7] = 0x000000FF;  // and the bottom
    bitmap.Blit(15, 7, 0, 0, 40, 30);
    EXPECT_EQ(ReadClient(window, 15, 7, 40, 30), Region(bitmap, 0, 0, 40, 30));
    EXPECT_EQ(ReadClient(window, 14, 7, 1, 1)[0], kWindowWhite) << "nothing left of it";
    EXPECT_EQ(ReadClient(window, 55, 36, 1, 1)[0], kWindowWhite) << "nothing beyond it";

    // A part of the picture, from a source offset.
    bitmap.Blit(150, 60, 10, 5, 12, 8);
    EXPECT_EQ(ReadClient(window, 150, 60, 12, 8), Region(bitmap, 10, 5, 12, 8));
    EXPECT_EQ(ReadClient(window, 162, 60, 1, 1)[0], kWindowWhite);

    // No palette is left selected in the window's context (a true-colour screen here:
    // NUMCOLORS is not positive, so no palette is made at all).
    HDC dc = GetDC(window);  // the class keeps one context, so this is the one Blit used
    EXPECT_LE(GetDeviceCaps(dc, NUMCOLORS), 0);
    EXPECT_EQ(GetCurrentObject(dc, OBJ_PAL), GetStockObject(DEFAULT_PALETTE));
    ReleaseDC(window, dc);
    EXPECT_EQ(GetCurrentObject(bitmap.memoryDC, OBJ_BITMAP), bitmap.bitmap);
}

TEST_F(OffscreenBitmapTest, ABottomUpBitmapShowsMemoryRowZeroAtTheBottom) {
    OffscreenBitmap bitmap(window, 10, 6, false);
    EXPECT_EQ(bitmap.topDown, 0);
    bitmap.Fill(0, 0, 255);
    for (int x = 0; x < 10; ++x) bitmap.bits[x] = 0x00FF0000;  // memory row 0
    bitmap.Blit(0, 0, 0, 0, 10, 6);
    const std::vector<uint32_t> shown = ReadClient(window, 0, 0, 10, 6);
    EXPECT_EQ(shown[5 * 10 + 3], 0xFF0000u) << "memory row 0 is the bottom row";
    EXPECT_EQ(shown[0 * 10 + 3], 0x0000FFu);
}

TEST_F(OffscreenBitmapTest, ResizeKeepsTheSameSizeAndRemakesAnyOther) {
    OffscreenBitmap bitmap(window, 40, 30, true);
    bitmap.Fill(255, 0, 0);
    bitmap.Blit(0, 0, 0, 0, 40, 30);
    PixelWord* before = bitmap.bits;
    EXPECT_FALSE(bitmap.Resize(40, 30));
    EXPECT_EQ(bitmap.bits, before);
    EXPECT_EQ(bitmap.bits[40 * 30 - 1], 0x00FF0000u) << "the picture stays";

    EXPECT_TRUE(bitmap.Resize(50, -12)) << "a negative height counts by its size";
    EXPECT_EQ(bitmap.width, 50u);
    EXPECT_EQ(bitmap.height, 12u);
    EXPECT_EQ(bitmap.topDown, 1);
    BITMAP description = {};
    GetObjectA(bitmap.bitmap, sizeof description, &description);
    EXPECT_EQ(description.bmWidth, 50);
    EXPECT_EQ(description.bmHeight, 12);
    EXPECT_EQ(GetCurrentObject(bitmap.memoryDC, OBJ_BITMAP), bitmap.bitmap);
    EXPECT_TRUE(bitmap.Resize(50, 12) == false);

    // The second blit, after the resize, shows the new picture at the new size.
    bitmap.Fill(0, 255, 0);
    bitmap.bits[0] = 0;
    bitmap.Blit(0, 0, 0, 0, 50, 12);
    const std::vector<uint32_t> shown = ReadClient(window, 0, 0, 50, 13);
    EXPECT_EQ(shown[0], 0u);
    EXPECT_EQ(shown[1], 0x00FF00u);
    EXPECT_EQ(shown[11 * 50 + 49], 0x00FF00u);
    EXPECT_EQ(shown[12 * 50 + 0], 0xFF0000u) << "below the new picture the old one still shows";
}

TEST_F(OffscreenBitmapTest, AFailedResizeLeavesAnEmptyBitmapThatBlitsNothing) {
    OffscreenBitmap bitmap(window, 20, 20, true);
    ErrorCode thrown = 0;
    try {
        bitmap.Resize(0, 10);  // a section of no width cannot be made
    } catch (ErrorCode code) {
        thrown = code;
    }
    EXPECT_EQ(thrown, ErrNoMemory);
    EXPECT_EQ(bitmap.bits, nullptr);
    EXPECT_EQ(bitmap.bitmap, nullptr);
    EXPECT_EQ(bitmap.width, 0u);
    EXPECT_EQ(bitmap.height, 0u);
    bitmap.Fill(0, 0, 0);
    bitmap.PaintInsetFrame();
    bitmap.Blit(0, 0, 0, 0, 20, 20);
    for (uint32_t p : ReadClient(window, 0, 0, 20, 20)) ASSERT_EQ(p, kWindowWhite);
}  // and it deletes cleanly

TEST_F(OffscreenBitmapTest, ConstructionWithoutAWindowContextThrowsNoMemory) {
    HWND gone = test::MakeTestWindow("Gone", 10, 10);
    DestroyWindow(gone);
    EXPECT_EQ(ThrownBy([](HWND owner) { OffscreenBitmap bitmap(owner, 5, 5, true); }, gone),
              ErrNoMemory);
}

TEST_F(OffscreenBitmapTest, LoadBitmapResourceTakesSizeAndPixelsOfThePicture) {
    HMODULE plugin = test::LoadPluginModule();
    ASSERT_NE(plugin, nullptr);
    test::ArtImage pencil, selected;
    std::string error;
    ASSERT_TRUE(test::DecodeBitmapFile(
        test::ReadFileBytes(test::GeneratedArtPath("pencil_button.bmp")), pencil, error))
        << error;
    ASSERT_TRUE(test::DecodeBitmapFile(
        test::ReadFileBytes(test::GeneratedArtPath("pencil_button_selected.bmp")), selected, error))
        << error;

    OffscreenBitmap bitmap(window, 5, 5, true);
    bitmap.LoadBitmapResource(IDB_PENCIL, plugin);
    ASSERT_EQ(bitmap.width, 26u);
    ASSERT_EQ(bitmap.height, 22u);
    EXPECT_EQ(Region(bitmap, 0, 0, 26, 22), pencil.pixels) << "4-bit colours as PixelWords";

    // Same size: the store is reused and still overwritten. Only the low 16 bits of the
    // number name the resource.
    PixelWord* store = bitmap.bits;
    bitmap.Fill(255, 0, 0);
    bitmap.LoadBitmapResource(0x10000 | IDB_PENCIL_SELECTED, plugin);
    EXPECT_EQ(bitmap.bits, store);
    EXPECT_EQ(Region(bitmap, 0, 0, 26, 22), selected.pixels);

    ErrorCode thrown = 0;
    try {
        bitmap.LoadBitmapResource(4321, plugin);
    } catch (ErrorCode code) {
        thrown = code;
    }
    EXPECT_EQ(thrown, ErrNoMemory) << "a missing resource";
    EXPECT_EQ(Region(bitmap, 0, 0, 26, 22), selected.pixels) << "and the picture is kept";
    FreeLibrary(plugin);
}

}  // namespace
}  // namespace tessellum
