// The About box driven for real: a second thread finds the modal box that the About
// selector shows, reads it back, presses Escape and then OK with real messages.
#include <windows.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "tests/support/plugin_path.h"
#include "tests/support/screenshot.h"
#include "tools/host/filter_host.h"

namespace tessellum::host {
namespace {

struct Control {
    std::string className;
    std::string text;
    int id;
    RECT client;  // in the box's client coordinates
};

// What the driving thread saw; checked on the test's own thread afterwards.
struct Observation {
    HWND box = nullptr;
    HWND owner = nullptr;
    std::string title;
    LONG style = 0;
    RECT client = {};
    std::vector<Control> controls;
    RECT expectedOk = {}, expectedClient = {};
    bool openAfterEscape = false;
    bool closedAfterOk = false;
    std::string screenshot;
};

HWND WaitForBox(const char* title) {
    for (int i = 0; i < 400; ++i) {
        if (HWND box = FindWindowA(MAKEINTATOM(0x8002), title)) {
            if (IsWindowVisible(box)) return box;
        }
        Sleep(25);
    }
    return nullptr;
}

BOOL CALLBACK CollectControl(HWND child, LPARAM data) {
    auto* seen = reinterpret_cast<Observation*>(data);
    Control control;
    char text[256] = "";
    GetClassNameA(child, text, sizeof text);
    control.className = text;
    GetWindowTextA(child, text, sizeof text);
    control.text = text;
    control.id = static_cast<int16_t>(GetDlgCtrlID(child));
    GetWindowRect(child, &control.client);
    MapWindowPoints(nullptr, seen->box, reinterpret_cast<POINT*>(&control.client), 2);
    seen->controls.push_back(control);
    return TRUE;
}

DWORD WINAPI DriveAboutBox(void* data) {
    auto* seen = static_cast<Observation*>(data);
    seen->box = WaitForBox("About Tessellum");
    if (!seen->box) return 0;
    Sleep(200);  // let it paint before it is photographed
    char title[128] = "";
    GetWindowTextA(seen->box, title, sizeof title);
    seen->title = title;
    seen->owner = GetWindow(seen->box, GW_OWNER);
    seen->style = GetWindowLongA(seen->box, GWL_STYLE);
    GetClientRect(seen->box, &seen->client);
    EnumChildWindows(seen->box, CollectControl, reinterpret_cast<LPARAM>(seen));
    seen->expectedOk = {290, 120, 290 + 48, 120 + 15};
    MapDialogRect(seen->box, &seen->expectedOk);
    seen->expectedClient = {0, 0, 345, 141};
    MapDialogRect(seen->box, &seen->expectedClient);
    seen->screenshot = test::SaveScreenshot(seen->box, "about_dialog");

    // Escape arrives as the command of id 2, which the box ignores.
    HWND ok = GetDlgItem(seen->box, IDOK);
    PostMessageA(ok, WM_KEYDOWN, VK_ESCAPE, 0);
    PostMessageA(ok, WM_KEYUP, VK_ESCAPE, 0);
    Sleep(300);
    seen->openAfterEscape = IsWindow(seen->box) && IsWindowVisible(seen->box);

    // A real click on OK: button down and up at its centre.
    RECT r;
    GetClientRect(ok, &r);
    const LPARAM centre = MAKELPARAM(r.right / 2, r.bottom / 2);
    PostMessageA(ok, WM_LBUTTONDOWN, MK_LBUTTON, centre);
    PostMessageA(ok, WM_LBUTTONUP, 0, centre);
    for (int i = 0; i < 200 && IsWindow(seen->box); ++i) Sleep(25);
    seen->closedAfterOk = !IsWindow(seen->box);
    if (!seen->closedAfterOk) PostMessageA(seen->box, WM_COMMAND, IDOK, 0);  // do not hang
    return 0;
}

LRESULT CALLBACK ParentProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return DefWindowProcA(window, message, wParam, lParam);
}

HWND MakeParentWindow() {
    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = ParentProc;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.lpszClassName = "TessellumTestHost";
    RegisterClassA(&windowClass);
    return CreateWindowA("TessellumTestHost", "Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 900,
                         700, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
}

TEST(AboutBox, AFirstCallShowsItAndOnlyOkClosesIt) {
    PluginLibrary plugin(test::PluginPath());
    FilterSession session(plugin);
    HWND parent = MakeParentWindow();
    ASSERT_NE(parent, nullptr);

    Observation seen;
    HANDLE driver = CreateThread(nullptr, 0, DriveAboutBox, &seen, 0, nullptr);
    PlatformData platform = {parent};
    AboutRecord about = {};
    about.platformData = &platform;
    const AboutRecord before = about;
    int16_t result = 77;
    intptr_t slot = 0;
    plugin.entry()(kSelectorAbout, &about, &slot, &result);
    WaitForSingleObject(driver, 20000);
    CloseHandle(driver);

    EXPECT_EQ(result, kResultOk);
    EXPECT_NE(slot, 0) << "the first call, About, makes the slot's handle";
    EXPECT_EQ(std::memcmp(&about, &before, sizeof about), 0) << "the About record is only read";
    ASSERT_NE(seen.box, nullptr) << "no About box came up";
    EXPECT_EQ(seen.title, "About Tessellum");
    EXPECT_EQ(seen.owner, parent);
    EXPECT_FALSE(seen.style & WS_SYSMENU) << "no system menu: OK is the only way out";
    EXPECT_TRUE(seen.style & WS_CAPTION);
    EXPECT_EQ(seen.client.right, seen.expectedClient.right);
    EXPECT_EQ(seen.client.bottom, seen.expectedClient.bottom);
    ASSERT_EQ(seen.controls.size(), 3u);
    EXPECT_EQ(seen.controls[0].text, "OK");
    EXPECT_EQ(seen.controls[0].id, IDOK);
    EXPECT_EQ(seen.controls[0].client.left, seen.expectedOk.left);
    EXPECT_EQ(seen.controls[0].client.top, seen.expectedOk.top);
    EXPECT_EQ(seen.controls[0].client.right, seen.expectedOk.right);
    EXPECT_EQ(seen.controls[0].client.bottom, seen.expectedOk.bottom);
    EXPECT_EQ(seen.controls[1].className, "Static");
    EXPECT_EQ(seen.controls[1].text, "Tessellum Version 1.5");
    EXPECT_EQ(seen.controls[2].text, "Professional Web-Oriented Pattern Filter");
    EXPECT_TRUE(seen.openAfterEscape) << "Escape must not close the box";
    EXPECT_TRUE(seen.closedAfterOk) << "OK must close the box";
    EXPECT_NE(seen.screenshot, "") << "the screenshot could not be taken";
    DestroyWindow(parent);
}

TEST(AboutBox, ReportsZeroEvenWhenTheBoxCannotBeMade) {
    PluginLibrary plugin(test::PluginPath());
    FilterSession session(plugin);
    // A parent that is not a window: the box cannot be made.
    EXPECT_EQ(session.About(reinterpret_cast<HWND>(static_cast<intptr_t>(0x7654321))), kResultOk);
    EXPECT_EQ(FindWindowA(MAKEINTATOM(0x8002), "About Tessellum"), nullptr);
}

}  // namespace
}  // namespace tessellum::host
