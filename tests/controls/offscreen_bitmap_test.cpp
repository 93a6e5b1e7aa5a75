// The off-screen bitmap against the real GDI: what its Blit puts into a real window,
// read back; resizing; loading the plug-in's bitmaps; and the failures.
#include "controls/offscreen_bitmap.h"

#include <windows.h>
#include <gtest/gtest.h>

#include "resources/resource_ids.h"
#include "storage/error_code.h"
#include "tests/support/art_file_reader.h"
#include "tests/support/plugin_path.h"
#include "tests/support/window_pixels.h"

namespace tessellum {
namespace {

using test::ReadClient;

constexpr uint32_t kWindowWhite = 0xFFFFFF;

std::vector<uint32_t> Region(const OffscreenBitmap& bitmap, int x, int y, int width, int height) {
    std::vector<uint32_t> out;
    for (const PixelWord* row = bitmap.bits + y * bitmap.width + x; height-- > 0;
         row += bitmap.width)
        out.insert(out.end(), row, row + width);
    return out;
}

template <class Action>
ErrorCode ThrownBy(Action action) try {
    action();
    return 0;
} catch (ErrorCode code) {
    return code;
}

TEST(OffscreenBitmap, BlitsItsPixelsTopDownOrNotResizesLoadsThePicturesAndFailsEmpty) {
    HWND window = test::MakeTestWindow("OffscreenBitmap", 220, 120);
    ASSERT_NE(window, nullptr);
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
    bitmap.Blit(150, 60, 10, 5, 12, 8);  // a part, from a source offset
    EXPECT_EQ(ReadClient(window, 150, 60, 12, 8), Region(bitmap, 10, 5, 12, 8));
    EXPECT_EQ(ReadClient(window, 162, 60, 1, 1)[0], kWindowWhite);

    OffscreenBitmap bottomUp(window, 10, 6, false);
    bottomUp.Fill(0, 0, 255);
    bottomUp.bits[3] = 0x00FF0000;  // memory row 0
    bottomUp.Blit(0, 0, 0, 0, 10, 6);
    EXPECT_EQ(ReadClient(window, 3, 5, 1, 1)[0], 0xFF0000u) << "memory row 0 at the bottom";
    EXPECT_EQ(ReadClient(window, 3, 0, 1, 1)[0], 0x0000FFu);

    // The same size keeps the picture; a negative height counts by its size.
    bitmap.Fill(255, 0, 0);
    bitmap.Blit(0, 0, 0, 0, 40, 30);
    EXPECT_FALSE(bitmap.Resize(40, 30));
    EXPECT_EQ(bitmap.bits[40 * 30 - 1], 0x00FF0000u);
    EXPECT_TRUE(bitmap.Resize(50, -12));
    EXPECT_FALSE(bitmap.Resize(50, 12));
    bitmap.Fill(0, 255, 0);
    bitmap.bits[50 * 12 - 1] = 0x000000FF;  // the last word of the new size is shown
    bitmap.Blit(0, 0, 0, 0, 50, 12);
    const std::vector<uint32_t> shown = ReadClient(window, 0, 0, 50, 13);
    EXPECT_EQ(std::vector<uint32_t>({shown[0], shown[11 * 50 + 49], shown[12 * 50]}),
              std::vector<uint32_t>({0x00FF00, 0x0000FF, 0xFF0000}))
        << "below the new picture the old one still shows";

    // Every picture the plug-in carries, loaded as the controls load them, is the art the
    // build drew, at its size.
    HMODULE plugin = LoadLibraryA(test::PluginPath().c_str());
    ASSERT_NE(plugin, nullptr);
    OffscreenBitmap loaded(window, 5, 5, true);
    test::ArtImage drawn;
    for (const test::ArtFile& p : test::kArtFiles) {
        if (p.hotX >= 0) continue;  // cursors are no bitmaps
        std::string error;
        ASSERT_TRUE(test::DecodeBitmapFile(
            test::ReadFileBytes(test::BuildDirectory() + "generated_art\\" + p.file), drawn, error))
            << error;
        loaded.LoadBitmapResource(p.id, plugin);
        ASSERT_EQ(loaded.width, uint32_t(drawn.width)) << p.file;
        ASSERT_EQ(loaded.height, uint32_t(drawn.height)) << p.file;
        EXPECT_EQ(Region(loaded, 0, 0, drawn.width, drawn.height), drawn.pixels) << p.file;
    }
    // The same size again is still overwritten. Only the low 16 bits of the number name
    // the resource; a missing one throws and keeps the picture.
    loaded.Fill(255, 0, 0);
    loaded.LoadBitmapResource(0x10000 | IDB_SWAP, plugin);
    EXPECT_EQ(Region(loaded, 0, 0, 10, 10), drawn.pixels);
    EXPECT_EQ(ThrownBy([&] { loaded.LoadBitmapResource(4321, plugin); }), ErrNoMemory);
    EXPECT_EQ(Region(loaded, 0, 0, 10, 10), drawn.pixels);
    FreeLibrary(plugin);
    // A failed resize leaves a bitmap with no memory and no size, that paints nothing.
    EXPECT_EQ(ThrownBy([&] { bitmap.Resize(0, 10); }), ErrNoMemory) << "no section of no width";
    EXPECT_EQ(bitmap.bits, nullptr);
    EXPECT_EQ(bitmap.width + bitmap.height, 0u);
    bitmap.Fill(0, 0, 0);
    bitmap.PaintInsetFrame();
    bitmap.Blit(0, 70, 0, 0, 20, 20);
    for (uint32_t p : ReadClient(window, 0, 70, 20, 20)) ASSERT_EQ(p, kWindowWhite);
    HWND gone = test::MakeTestWindow("Gone", 10, 10);
    DestroyWindow(gone);
    EXPECT_EQ(ThrownBy([&] { OffscreenBitmap none(gone, 5, 5, true); }), ErrNoMemory)
        << "no window context";
    DestroyWindow(window);
}

}  // namespace
}  // namespace tessellum
