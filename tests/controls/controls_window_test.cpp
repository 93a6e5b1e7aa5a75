// The tool group, an image button and the slider pictures placed in a real window,
// clicked with real mouse messages, and read back pixel by pixel; a screenshot is kept.
#include <windows.h>
#include <gtest/gtest.h>

#include <string>

#include "controls/cursor_set.h"
#include "controls/image_button.h"
#include "controls/small_bitmap_table.h"
#include "controls/tool_group.h"
#include "host/dll_instance.h"
#include "resources/resource_ids.h"
#include "tests/support/art_file_reader.h"
#include "tests/support/screenshot.h"
#include "tests/support/window_pixels.h"

namespace tessellum {

// The controls load from the plug-in's module; here that is the built plug-in, loaded.
HINSTANCE hDllInstance = nullptr;

namespace {

using test::ReadClient;

constexpr int kGroupX = 20, kGroupY = 30, kSwapX = 130, kSwapY = 36;

struct {
    ToolGroup* group = nullptr;
    ImageButton* swap = nullptr;
    std::string clicks;  // g the group's, s the image button's, - neither's
} scene;

// The page's part: hand the mouse to the controls.
LRESULT CALLBACK SceneProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_LBUTTONDOWN || !scene.group) {
        return DefWindowProcA(window, message, wParam, lParam);
    }
    const MousePoint point = PointFromLParam(lParam);
    scene.clicks += scene.group->HandleClick(lParam)        ? 'g'
                    : scene.swap->HitTest(point.x, point.y) ? 's'
                                                            : '-';
    return 0;
}

void Click(HWND window, int x, int y) {
    const LPARAM at = static_cast<LPARAM>(static_cast<uint32_t>(MAKELONG(x, y)));
    PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, at);
    PostMessageA(window, WM_LBUTTONUP, 0, at);
    test::PumpMessages();
}

// Whether the window shows exactly that picture with its top left at x, y.
bool Shows(HWND window, int x, int y, const std::string& file) {
    test::ArtImage art;
    std::string error;
    EXPECT_TRUE(
        test::DecodeBitmapFile(test::ReadFileBytes(test::GeneratedArtPath(file)), art, error))
        << file << ": " << error;
    return ReadClient(window, x, y, art.width, art.height) == art.pixels;
}

// Which picture each tool button shows: p plain, S selected, ? neither.
std::string ShownTools(HWND window) {
    std::string out;
    for (int i = 0; i < 3; ++i) {
        const std::string name[] = {"pencil_button", "dropper_button", "eraser_button"};
        const int x = kGroupX + 26 * i;
        out += Shows(window, x, kGroupY, name[i] + ".bmp")            ? 'p'
               : Shows(window, x, kGroupY, name[i] + "_selected.bmp") ? 'S'
                                                                      : '?';
    }
    return out;
}

bool AllWhite(HWND window, int x, int y, int width, int height) {
    const std::vector<uint32_t> shown = ReadClient(window, x, y, width, height);
    return shown == std::vector<uint32_t>(shown.size(), 0xFFFFFF);
}

TEST(ControlsWindow, ToolGroupAndImageButtonAnswerRealClicks) {
    hDllInstance = test::LoadPluginModule();
    ASSERT_NE(hDllInstance, nullptr);
    HWND window = test::MakeTestWindow("Controls", 240, 90, SceneProc);
    ASSERT_NE(window, nullptr);
    ToolGroup group(window, kGroupX, kGroupY, hDllInstance, {IDB_PENCIL, IDB_DROPPER, IDB_ERASER},
                    {IDB_PENCIL_SELECTED, IDB_DROPPER_SELECTED, IDB_ERASER_SELECTED});
    ImageButton swap(window, kSwapX, kSwapY, hDllInstance, IDB_SWAP);
    group.Draw();  // as the page does when it paints
    swap.Draw();
    scene.group = &group;
    scene.swap = &swap;
    EXPECT_EQ(ShownTools(window), "Spp") << "the pencil starts selected, white on black";
    EXPECT_TRUE(Shows(window, kSwapX, kSwapY, "swap_sign.bmp"));

    Click(window, kGroupX + 26, kGroupY + 5);  // the boundary column: the dropper's
    EXPECT_EQ(group.Selected(), 1u);
    EXPECT_EQ(ShownTools(window), "pSp");
    Click(window, kGroupX + 25, kGroupY + 21);  // the pencil's last column and row
    EXPECT_EQ(ShownTools(window), "Spp");
    Click(window, kGroupX + 52 + 25, kGroupY);
    EXPECT_EQ(group.Selected(), 2u);
    EXPECT_EQ(ShownTools(window), "ppS");
    // Misses: right and bottom edges of the group, left of the window (a captured mouse
    // gives negative coordinates), and the right and bottom edges of the image button,
    // whose left and top edges are in.
    const int clicks[][2] = {{kGroupX + 78, kGroupY + 5}, {kGroupX + 5, kGroupY + 22},
                             {-5, kGroupY + 5},           {kSwapX + 10, kSwapY + 4},
                             {kSwapX + 5, kSwapY + 10},   {kSwapX, kSwapY},
                             {kSwapX + 9, kSwapY + 9}};
    for (const auto& c : clicks) Click(window, c[0], c[1]);
    EXPECT_EQ(scene.clicks, "ggg-----ss");
    EXPECT_EQ(group.Selected(), 2u);

    // The slider's pictures beside them; one not in their table draws nothing, and
    // nothing is drawn once they are freed.
    LoadSmallBitmaps(window);
    const test::ArtFile* slider = &test::kArtFiles[6];  // the thumb, its wipe, the arrows
    for (int i = 0; i < 4; ++i) DrawSmallBitmap(window, 150 + 12 * i, 36, slider[i].id);
    DrawSmallBitmap(window, 200, 36, IDB_SWAP);
    DrawSmallBitmap(nullptr, 200, 36, IDB_SLIDER_THUMB);
    for (int i = 0; i < 4; ++i) EXPECT_TRUE(Shows(window, 150 + 12 * i, 36, slider[i].file));
    EXPECT_TRUE(AllWhite(window, 200, 36, 10, 10));
    FreeSmallBitmaps();
    DrawSmallBitmap(window, 200, 36, IDB_SLIDER_THUMB);
    EXPECT_TRUE(AllWhite(window, 200, 36, 11, 6));
    test::PumpMessages();  // lets the window's picture reach the screen
    EXPECT_NE(test::SaveScreenshot(window, "controls_window"), "");

    // Erase takes the button off the page: its rectangle exactly, in dialog grey.
    swap.Erase();
    for (uint32_t p : ReadClient(window, kSwapX, kSwapY, 10, 10)) ASSERT_EQ(p, 0xC0C0C0u);
    EXPECT_TRUE(AllWhite(window, kSwapX + 10, kSwapY, 1, 11));
    EXPECT_TRUE(AllWhite(window, kSwapX, kSwapY + 10, 11, 1));
    scene.group = nullptr;
    DestroyWindow(window);
}

TEST(CursorSet, HoldsTheToolPointersThenTheArrow) {
    hDllInstance = test::LoadPluginModule();
    CursorSet cursors;
    cursors.Load();
    const DWORD hot[3][2] = {{12, 21}, {11, 21}, {14, 18}};  // pencil, dropper, eraser
    for (uint32_t i = 0; i < 3; ++i) {
        ICONINFO info = {};
        ASSERT_TRUE(GetIconInfo(cursors.Get(i), &info)) << i;
        EXPECT_EQ(info.xHotspot, hot[i][0]) << i;
        EXPECT_EQ(info.yHotspot, hot[i][1]) << i;
        DeleteObject(info.hbmMask);
        if (info.hbmColor) DeleteObject(info.hbmColor);
    }
    EXPECT_EQ(cursors.Get(CursorSet::kArrow), LoadCursorA(nullptr, MAKEINTRESOURCEA(32512)));
}

}  // namespace
}  // namespace tessellum
