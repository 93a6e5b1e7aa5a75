// The tool group, an image button and the slider pictures placed in a real window,
// clicked with real mouse messages, and read back pixel by pixel; a screenshot is kept.
#include <gtest/gtest.h>
#include <windows.h>

#include "controls/cursor_set.h"
#include "controls/image_button.h"
#include "controls/small_bitmap_table.h"
#include "controls/tool_group.h"
#include "host/dll_instance.h"
#include "resources/resource_ids.h"
#include "tests/art_file_reader.h"
#include "tests/support/screenshot.h"
#include "tests/window_pixels.h"

namespace tessellum {

// The controls load from the plug-in's module; here that is the built plug-in, loaded.
HINSTANCE hDllInstance = nullptr;

namespace {

using test::ReadClient;

constexpr int kGroupX = 20, kGroupY = 30;

struct Scene {
    ToolGroup* group = nullptr;
    ImageButton* swap = nullptr;
    int groupHits = 0, swapHits = 0, misses = 0;
};
Scene scene;

// The page's part: hand the mouse to the controls.
LRESULT CALLBACK SceneProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_LBUTTONDOWN && scene.group) {
        const MousePoint point = PointFromLParam(lParam);
        if (scene.group->HandleClick(lParam)) {
            ++scene.groupHits;
        } else if (scene.swap->HitTest(point.x, point.y)) {
            ++scene.swapHits;
        } else {
            ++scene.misses;
        }
        return 0;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

void Click(HWND window, int x, int y) {
    const LPARAM at = static_cast<LPARAM>(static_cast<uint32_t>(MAKELONG(x, y)));
    PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, at);
    PostMessageA(window, WM_LBUTTONUP, 0, at);
    test::PumpMessages();
}

std::vector<uint32_t> Art(const char* file) {
    test::ArtImage image;
    std::string error;
    EXPECT_TRUE(
        test::DecodeBitmapFile(test::ReadFileBytes(test::GeneratedArtPath(file)), image, error))
        << file << ": " << error;
    return image.pixels;
}

// Which picture each tool button shows, by its pixels in the window.
std::string ShownTools(HWND window) {
    const char* plain[] = {"pencil_button.bmp", "dropper_button.bmp", "eraser_button.bmp"};
    const char* selected[] = {"pencil_button_selected.bmp", "dropper_button_selected.bmp",
                              "eraser_button_selected.bmp"};
    std::string out;
    for (int i = 0; i < 3; ++i) {
        const std::vector<uint32_t> shown = ReadClient(window, kGroupX + 26 * i, kGroupY, 26, 22);
        out += shown == Art(plain[i]) ? 'p' : shown == Art(selected[i]) ? 'S' : '?';
    }
    return out;
}

class ControlsWindowTest : public ::testing::Test {
protected:
    void SetUp() override {
        hDllInstance = test::LoadPluginModule();
        ASSERT_NE(hDllInstance, nullptr);
        window = test::MakeTestWindow("Controls", 240, 90, SceneProc);
        ASSERT_NE(window, nullptr);
    }
    void TearDown() override {
        scene = Scene();
        DestroyWindow(window);
        FreeLibrary(hDllInstance);
        hDllInstance = nullptr;
    }
    HWND window = nullptr;
};

TEST_F(ControlsWindowTest, ToolGroupAndImageButtonAnswerRealClicks) {
    ToolGroup group(window, kGroupX, kGroupY, hDllInstance, {IDB_PENCIL, IDB_DROPPER, IDB_ERASER},
                    {IDB_PENCIL_SELECTED, IDB_DROPPER_SELECTED, IDB_ERASER_SELECTED});
    ImageButton swap(window, 130, 36, hDllInstance, IDB_SWAP);
    EXPECT_EQ(ShownTools(window), "S??") << "construction draws only the pencil, as it toggles";
    group.Draw();  // as the page does when it paints
    swap.Draw();
    scene.group = &group;
    scene.swap = &swap;

    EXPECT_EQ(group.Selected(), 0u);
    EXPECT_EQ(ShownTools(window), "Spp") << "the pencil starts selected, white on black";
    EXPECT_EQ(swap.Width(), 10);
    EXPECT_EQ(swap.Height(), 10);
    EXPECT_EQ(ReadClient(window, 130, 36, 10, 10), Art("swap_sign.bmp"));

    Click(window, kGroupX + 26, kGroupY + 5);  // the boundary column: the dropper's
    EXPECT_EQ(group.Selected(), 1u);
    EXPECT_EQ(ShownTools(window), "pSp");
    Click(window, kGroupX + 25, kGroupY + 21);  // the pencil's last column and row
    EXPECT_EQ(group.Selected(), 0u);
    EXPECT_EQ(ShownTools(window), "Spp");
    Click(window, kGroupX + 52 + 25, kGroupY);
    EXPECT_EQ(group.Selected(), 2u);
    EXPECT_EQ(ShownTools(window), "ppS");
    LoadSmallBitmaps(window);  // the slider's pictures beside them, for the screenshot
    DrawSmallBitmap(window, 160, 36, IDB_ARROW_LEFT);
    DrawSmallBitmap(window, 170, 38, IDB_SLIDER_THUMB);
    DrawSmallBitmap(window, 185, 36, IDB_ARROW_RIGHT);
    FreeSmallBitmaps();
    EXPECT_EQ(ReadClient(window, 170, 38, 11, 6), Art("slider_thumb.bmp"));
    test::PumpMessages();  // lets the window's picture reach the screen
    const std::string screenshot = test::SaveScreenshot(window, "controls_window");
    EXPECT_NE(screenshot, "");

    // A click on the selected tool is a hit that repaints nothing: a mark made on the
    // button stays.
    HDC dc = GetDC(window);
    SetPixelV(dc, kGroupX + 52 + 3, kGroupY + 3, RGB(255, 0, 0));
    ReleaseDC(window, dc);
    const int hitsBefore = scene.groupHits;
    Click(window, kGroupX + 52 + 3, kGroupY + 3);
    EXPECT_EQ(scene.groupHits, hitsBefore + 1);
    EXPECT_EQ(group.Selected(), 2u);
    EXPECT_EQ(ReadClient(window, kGroupX + 52 + 3, kGroupY + 3, 1, 1)[0], 0xFF0000u);

    // Beside the group: right edge, bottom edge, and left of the window (a captured
    // mouse gives negative coordinates).
    const int missesBefore = scene.misses;
    Click(window, kGroupX + 78, kGroupY + 5);
    Click(window, kGroupX + 5, kGroupY + 22);
    Click(window, -5, kGroupY + 5);
    EXPECT_EQ(scene.misses, missesBefore + 3);
    EXPECT_EQ(group.Selected(), 2u);

    // The image button: left and top edges in, right and bottom edges out.
    Click(window, 130, 36);
    Click(window, 139, 45);
    EXPECT_EQ(scene.swapHits, 2);
    Click(window, 140, 40);
    Click(window, 135, 46);
    EXPECT_EQ(scene.misses, missesBefore + 5);

    // Erase takes the button off the page: its rectangle exactly, in dialog grey.
    swap.Erase();
    for (uint32_t p : ReadClient(window, 130, 36, 10, 10)) ASSERT_EQ(p, 0xC0C0C0u);
    EXPECT_EQ(ReadClient(window, 140, 36, 1, 1)[0], 0xFFFFFFu);
    EXPECT_EQ(ReadClient(window, 130, 46, 1, 1)[0], 0xFFFFFFu);
}

TEST_F(ControlsWindowTest, AGenuineMouseClickReachesTheGroup) {
    ToolGroup group(window, kGroupX, kGroupY, hDllInstance, {IDB_PENCIL, IDB_DROPPER, IDB_ERASER},
                    {IDB_PENCIL_SELECTED, IDB_DROPPER_SELECTED, IDB_ERASER_SELECTED});
    ImageButton swap(window, 130, 36, hDllInstance, IDB_SWAP);
    group.Draw();
    scene.group = &group;
    scene.swap = &swap;
    POINT at = {kGroupX + 26 + 10, kGroupY + 10};
    ClientToScreen(window, &at);
    SetForegroundWindow(window);
    SetCursorPos(at.x, at.y);
    INPUT clicks[2] = {};
    clicks[0].type = clicks[1].type = INPUT_MOUSE;
    clicks[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
    clicks[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
    ASSERT_EQ(SendInput(2, clicks, sizeof(INPUT)), 2u);
    for (int i = 0; i < 20 && group.Selected() != 1; ++i) test::PumpMessages();
    EXPECT_EQ(group.Selected(), 1u) << "the input queue's click, decoded by the group";
    EXPECT_EQ(ShownTools(window), "pSp");
}

TEST_F(ControlsWindowTest, SmallBitmapsDrawAtTheirOwnSizeAndUnknownOnesNotAtAll) {
    LoadSmallBitmaps(window);
    DrawSmallBitmap(window, 10, 10, IDB_SLIDER_THUMB);
    DrawSmallBitmap(window, 30, 10, IDB_THUMB_WIPE);
    DrawSmallBitmap(window, 50, 10, IDB_ARROW_RIGHT);
    DrawSmallBitmap(window, 60, 10, IDB_ARROW_LEFT);
    EXPECT_NO_THROW(DrawSmallBitmap(window, 80, 10, IDB_SWAP)) << "not one of the table's";
    EXPECT_NO_THROW(DrawSmallBitmap(nullptr, 80, 10, IDB_SLIDER_THUMB));
    EXPECT_EQ(ReadClient(window, 10, 10, 11, 6), Art("slider_thumb.bmp"));
    EXPECT_EQ(ReadClient(window, 30, 10, 11, 11), Art("thumb_wipe.bmp"));
    EXPECT_EQ(ReadClient(window, 50, 10, 6, 11), Art("arrow_right.bmp"));
    EXPECT_EQ(ReadClient(window, 60, 10, 6, 11), Art("arrow_left.bmp"));
    EXPECT_EQ(ReadClient(window, 10, 16, 1, 1)[0], 0xFFFFFFu) << "nothing past its size";
    for (uint32_t p : ReadClient(window, 80, 10, 10, 10)) ASSERT_EQ(p, 0xFFFFFFu);
    FreeSmallBitmaps();
    DrawSmallBitmap(window, 100, 10, IDB_SLIDER_THUMB);  // freed: draws nothing
    for (uint32_t p : ReadClient(window, 100, 10, 11, 6)) ASSERT_EQ(p, 0xFFFFFFu);
    FreeSmallBitmaps();
}

TEST_F(ControlsWindowTest, CursorSetHoldsTheToolPointersThenTheArrow) {
    CursorSet cursors;
    for (uint32_t i = 0; i < 4; ++i) EXPECT_EQ(cursors.Get(i), nullptr);
    cursors.Load();
    const DWORD hot[3][2] = {{12, 21}, {11, 21}, {14, 18}};  // pencil, dropper, eraser
    for (uint32_t i = 0; i < 3; ++i) {
        ICONINFO info = {};
        ASSERT_TRUE(GetIconInfo(cursors.Get(i), &info)) << i;
        EXPECT_EQ(info.xHotspot, hot[i][0]) << i;
        EXPECT_EQ(info.yHotspot, hot[i][1]) << i;
        if (info.hbmMask) DeleteObject(info.hbmMask);
        if (info.hbmColor) DeleteObject(info.hbmColor);
    }
    EXPECT_EQ(cursors.Get(CursorSet::kArrow), LoadCursorA(nullptr, MAKEINTRESOURCEA(32512)));
}

// The hit test decides without the platform; it must decide as PtInRect does.
TEST(ControlHitTest, AgreesWithPtInRectOnEveryPointAroundTheEdges) {
    Control control(nullptr, 10, 20, 26, 22);
    const RECT area = {10, 20, 36, 42};
    for (int y = 15; y <= 47; ++y) {
        for (int x = 5; x <= 41; ++x) {
            ASSERT_EQ(control.HitTest(x, y), PtInRect(&area, POINT{x, y}) != 0) << x << "," << y;
        }
    }
}

}  // namespace
}  // namespace tessellum
