// The plug-in's pictures and pointers as Windows loads them from the built plug-in.
#include <gtest/gtest.h>
#include <windows.h>

#include "resources/resource_ids.h"
#include "tests/art_file_reader.h"
#include "tests/window_pixels.h"

namespace tessellum {
namespace {

struct Picture {
    int id;
    const char* file;
    int width;
    int height;
};

const Picture kPictures[] = {{IDB_PENCIL, "pencil_button.bmp", 26, 22},
                             {IDB_DROPPER, "dropper_button.bmp", 26, 22},
                             {IDB_ERASER, "eraser_button.bmp", 26, 22},
                             {IDB_PENCIL_SELECTED, "pencil_button_selected.bmp", 26, 22},
                             {IDB_DROPPER_SELECTED, "dropper_button_selected.bmp", 26, 22},
                             {IDB_ERASER_SELECTED, "eraser_button_selected.bmp", 26, 22},
                             {IDB_SLIDER_THUMB, "slider_thumb.bmp", 11, 6},
                             {IDB_THUMB_WIPE, "thumb_wipe.bmp", 11, 11},
                             {IDB_ARROW_RIGHT, "arrow_right.bmp", 6, 11},
                             {IDB_ARROW_LEFT, "arrow_left.bmp", 6, 11},
                             {IDB_SWAP, "swap_sign.bmp", 10, 10}};

TEST(PluginArt, BitmapsLoadAsFourBitPicturesOfTheDrawnArt) {
    HMODULE plugin = test::LoadPluginModule();
    ASSERT_NE(plugin, nullptr);
    for (const Picture& p : kPictures) {
        SCOPED_TRACE(p.id);
        HBITMAP bitmap = static_cast<HBITMAP>(
            LoadImageA(plugin, MAKEINTRESOURCEA(p.id), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
        ASSERT_NE(bitmap, nullptr);
        DIBSECTION section = {};
        ASSERT_EQ(GetObjectA(bitmap, sizeof section, &section), int(sizeof section));
        EXPECT_EQ(section.dsBm.bmWidth, p.width);
        EXPECT_EQ(section.dsBm.bmHeight, p.height);
        EXPECT_EQ(section.dsBmih.biBitCount, 4);

        BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
        info.bmiHeader.biWidth = p.width;
        info.bmiHeader.biHeight = -p.height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        std::vector<uint32_t> pixels(static_cast<size_t>(p.width) * p.height);
        HDC screen = GetDC(nullptr);
        EXPECT_EQ(GetDIBits(screen, bitmap, 0, p.height, pixels.data(), &info, DIB_RGB_COLORS),
                  p.height);
        ReleaseDC(nullptr, screen);
        for (uint32_t& pixel : pixels) {
            pixel &= 0xFFFFFF;
            ASSERT_TRUE(pixel == 0 || pixel == 0xFFFFFF || pixel == 0xC0C0C0) << std::hex << pixel;
        }
        test::ArtImage drawn;
        std::string error;
        ASSERT_TRUE(test::DecodeBitmapFile(test::ReadFileBytes(test::GeneratedArtPath(p.file)),
                                           drawn, error))
            << error;
        EXPECT_EQ(pixels, drawn.pixels) << "the plug-in carries the art the build drew";
        DeleteObject(bitmap);
    }
    FreeLibrary(plugin);
}

TEST(PluginArt, CursorsAreMonochrome32By32WithTheirHotSpots) {
    HMODULE plugin = test::LoadPluginModule();
    ASSERT_NE(plugin, nullptr);
    const struct {
        int id;
        DWORD hotX, hotY;
    } cursors[] = {{IDCUR_PENCIL, 12, 21}, {IDCUR_DROPPER, 11, 21}, {IDCUR_ERASER, 14, 18}};
    for (const auto& c : cursors) {
        SCOPED_TRACE(c.id);
        HCURSOR cursor = LoadCursorA(plugin, MAKEINTRESOURCEA(c.id));
        ASSERT_NE(cursor, nullptr);
        ICONINFO info = {};
        ASSERT_TRUE(GetIconInfo(cursor, &info));
        EXPECT_FALSE(info.fIcon);
        EXPECT_EQ(info.xHotspot, c.hotX);
        EXPECT_EQ(info.yHotspot, c.hotY);
        EXPECT_EQ(info.hbmColor, nullptr) << "monochrome: colour and mask in one bitmap";
        BITMAP mask = {};
        GetObjectA(info.hbmMask, sizeof mask, &mask);
        EXPECT_EQ(mask.bmWidth, 32);
        EXPECT_EQ(mask.bmHeight, 64) << "the mask above the colour bits";
        EXPECT_EQ(mask.bmBitsPixel, 1);
        DeleteObject(info.hbmMask);
        if (info.hbmColor) DeleteObject(info.hbmColor);
    }
    FreeLibrary(plugin);
}

}  // namespace
}  // namespace tessellum
