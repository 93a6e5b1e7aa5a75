#include "tests/dialog/dialog_driver.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "tests/support/screenshot.h"
#include "tools/host/host_window.h"

namespace tessellum::test {

LRESULT DialogDriver::Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) const {
    return SendMessageA(window, message, wParam, lParam);
}

void DialogDriver::Settle() const {
    // Posted repaints arrive after the erase; a sent message returns only once the
    // dialog's thread is back in its loop, after what was waiting before it.
    for (int round = 0; round < 3; ++round) {
        Sleep(30);
        Send(dialog, WM_NULL);
    }
}

void DialogDriver::Press(HWND parent, int id) const {
    Send(GetDlgItem(parent, id), BM_CLICK);
    Settle();
}

void DialogDriver::Command(HWND window, int id) const {
    Send(window, WM_COMMAND, MAKEWPARAM(id, 0), 0);
    Settle();
}

void DialogDriver::Mouse(HWND page, UINT message, int x, int y, bool held) const {
    const bool down = message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK;
    Send(page, message, down || (held && message == WM_MOUSEMOVE) ? MK_LBUTTON : 0,
         MAKELPARAM(x, y));
}

void DialogDriver::Click(HWND page, int x, int y) const {
    Mouse(page, WM_LBUTTONDOWN, x, y);
    Mouse(page, WM_LBUTTONUP, x, y);
    Settle();
}

void DialogDriver::DoubleClick(HWND page, int x, int y) const {
    Mouse(page, WM_LBUTTONDOWN, x, y);
    Mouse(page, WM_LBUTTONUP, x, y);
    Mouse(page, WM_LBUTTONDBLCLK, x, y);
    Mouse(page, WM_LBUTTONUP, x, y);
    Settle();
}

void DialogDriver::ChooseTab(int index) const {
    RECT item = {};
    Send(tabs, TCM_GETITEMRECT, index, reinterpret_cast<LPARAM>(&item));
    const LPARAM point = MAKELPARAM((item.left + item.right) / 2, (item.top + item.bottom) / 2);
    Send(tabs, WM_LBUTTONDOWN, MK_LBUTTON, point);
    Send(tabs, WM_LBUTTONUP, 0, point);
    Settle();
}

void DialogDriver::SelectRow(int row) const {
    HWND box = GetDlgItem(dialog, 1026);
    RECT item = {};
    Send(box, LB_GETITEMRECT, row, reinterpret_cast<LPARAM>(&item));
    const LPARAM point = MAKELPARAM(item.left + 4, (item.top + item.bottom) / 2);
    Send(box, WM_LBUTTONDOWN, MK_LBUTTON, point);
    Send(box, WM_LBUTTONUP, 0, point);
    Settle();
}

void DialogDriver::PostCommand(HWND window, int id) const {
    PostMessageA(window, WM_COMMAND, MAKEWPARAM(id, 0), 0);
}

void DialogDriver::PostKey(HWND window, UINT key) const {
    PostMessageA(window, WM_KEYDOWN, key, 1);
    PostMessageA(window, WM_KEYUP, key, 0xC0000001);
}

namespace {

// A visible dialog window of the dialog's thread with this caption, within 10 seconds.
HWND WaitForWindow(HWND dialog, const char* caption) {
    const DWORD thread = GetWindowThreadProcessId(dialog, nullptr);
    for (int i = 0; i < 500; ++i) {
        HWND found = FindWindowA(MAKEINTATOM(0x8002), caption);
        if (found && IsWindowVisible(found) && GetWindowThreadProcessId(found, nullptr) == thread)
            return found;
        Sleep(20);
    }
    ADD_FAILURE() << "no window \"" << caption << "\" came up";
    return nullptr;
}

// Stops at the first edit field and hands it back through `found`.
BOOL CALLBACK FindEdit(HWND child, LPARAM found) {
    char kind[16] = {};
    GetClassNameA(child, kind, sizeof kind);
    if (lstrcmpiA(kind, "Edit") != 0) return TRUE;
    *reinterpret_cast<HWND*>(found) = child;
    return FALSE;
}

void WaitUntilGone(HWND window) {
    for (int i = 0; i < 500 && IsWindow(window); ++i) Sleep(20);
    EXPECT_FALSE(IsWindow(window)) << "the modal window stayed open";
}

std::string WindowText(HWND window) {
    char text[600] = {};
    GetWindowTextA(window, text, sizeof text);
    return text;
}

// Replaces the text of an edit field as typing would, key by key.
void Type(HWND edit, const std::string& text) {
    SendMessageA(edit, EM_SETSEL, 0, -1);
    SendMessageA(edit, WM_CHAR, VK_BACK, 0);
    for (char c : text) SendMessageA(edit, WM_CHAR, static_cast<unsigned char>(c), 1);
}

// Real keystrokes into the system's input, as the keyboard makes them: they go to the
// window that has the focus, wherever that is.
void Keys(const std::vector<INPUT>& strokes) {
    std::vector<INPUT> sent = strokes;
    EXPECT_EQ(SendInput(static_cast<UINT>(sent.size()), sent.data(), sizeof(INPUT)), sent.size());
    Sleep(50);
}
INPUT Key(WORD key, WCHAR unicode, bool up) {
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = unicode;
    input.ki.dwFlags = (unicode ? KEYEVENTF_UNICODE : 0) | (up ? KEYEVENTF_KEYUP : 0);
    return input;
}
void PressKey(WORD key) {
    Keys({Key(key, 0, false), Key(key, 0, true)});
}
void TypeText(const std::string& text) {
    std::vector<INPUT> strokes;
    for (char c : text) {
        strokes.push_back(Key(0, static_cast<unsigned char>(c), false));
        strokes.push_back(Key(0, static_cast<unsigned char>(c), true));
    }
    if (!strokes.empty()) Keys(strokes);
}

}  // namespace

DialogDriver::PromptSeen DialogDriver::AnswerPrompt(const char* caption, const std::string& typed,
                                                    bool ok, const char* shot) const {
    HWND prompt = WaitForWindow(dialog, caption);
    if (!prompt) return {};
    Sleep(100);  // its first paint, for the picture
    if (shot) {
        EXPECT_FALSE(SaveScreenshot(prompt, shot).empty()) << shot;
    }
    HWND edit = GetDlgItem(prompt, 1000);
    const PromptSeen seen = {WindowText(GetDlgItem(prompt, 1001)), WindowText(edit)};
    if (ok) {
        if (typed.empty()) PressKey(VK_BACK);  // the selected name goes
        TypeText(typed);
    }
    PressKey(ok ? VK_RETURN : VK_ESCAPE);
    WaitUntilGone(prompt);
    Settle();
    return seen;
}

std::string DialogDriver::AnswerMessageBox(const char* caption, int button) const {
    HWND box = WaitForWindow(dialog, caption);
    if (!box) return "";
    std::string text;
    for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        char name[32] = {};
        GetClassNameA(child, name, sizeof name);
        if (lstrcmpiA(name, "Static") == 0 && GetWindowTextLengthA(child) > 0)
            text = WindowText(child);
    }
    PostMessageA(box, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), 0);
    WaitUntilGone(box);
    Settle();
    return text;
}

std::string DialogDriver::AnswerFileDialog(const char* title, const std::string& path,
                                           const char* shot, bool replace) const {
    HWND box = WaitForWindow(dialog, title);
    if (!box) return "";
    Sleep(300);  // the folder view fills in after the window shows
    if (shot) {
        EXPECT_FALSE(SaveScreenshot(box, shot).empty()) << shot;
    }
    // The file name field is the one edit in the dialog, inside its combo box.
    HWND name = nullptr;
    EnumChildWindows(box, FindEdit, reinterpret_cast<LPARAM>(&name));
    EXPECT_TRUE(name != nullptr) << "no file name field in " << title;
    const std::string offered = name ? WindowText(name) : "";
    if (name && !path.empty()) Type(name, path);
    PostMessageA(box, WM_COMMAND, MAKEWPARAM(path.empty() ? IDCANCEL : IDOK, BN_CLICKED), 0);
    if (replace) {  // the question comes up over the file dialog, with its title
        HWND question = nullptr;
        for (int i = 0; i < 100 && !question; ++i, Sleep(20)) {
            question = FindWindowExA(nullptr, nullptr, MAKEINTATOM(0x8002), title);
            if (question == box) question = FindWindowExA(nullptr, box, MAKEINTATOM(0x8002), title);
        }
        EXPECT_TRUE(question != nullptr) << title << " replaced a file without asking";
        if (question) PostMessageA(question, WM_COMMAND, MAKEWPARAM(IDYES, BN_CLICKED), 0);
    }
    WaitUntilGone(box);
    Settle();
    return offered;
}

std::string DialogDriver::AnswerColorDialog(int red, int green, int blue, bool ok,
                                            const char* shot) const {
    enum { kRed = 706, kGreen = 707, kBlue = 708, kAdd = 712 };  // the published ids
    HWND box = WaitForWindow(dialog, "Color");
    if (!box) return "";
    Sleep(150);  // its start-up and first paint
    const std::string shown = WindowText(GetDlgItem(box, kRed)) + "," +
                              WindowText(GetDlgItem(box, kGreen)) + "," +
                              WindowText(GetDlgItem(box, kBlue));
    const int values[3][2] = {{kRed, red}, {kGreen, green}, {kBlue, blue}};
    for (const auto& [id, value] : values) SetDlgItemTextA(box, id, std::to_string(value).c_str());
    SendMessageA(box, WM_COMMAND, MAKEWPARAM(kAdd, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(box, kAdd)));
    if (shot) {
        EXPECT_FALSE(SaveScreenshot(box, shot).empty()) << shot;
    }
    PostMessageA(box, WM_COMMAND, MAKEWPARAM(ok ? IDOK : IDCANCEL, BN_CLICKED), 0);
    WaitUntilGone(box);
    Settle();
    return shown;
}

std::string DialogDriver::Text(HWND parent, int id) const {
    char text[512] = {};
    GetWindowTextA(GetDlgItem(parent, id), text, sizeof text);
    return text;
}

bool DialogDriver::Visible(HWND parent, int id) const {
    return IsWindowVisible(GetDlgItem(parent, id)) != FALSE;
}

RECT DialogDriver::Place(HWND parent, int id) const {
    RECT rect = {};
    GetWindowRect(GetDlgItem(parent, id), &rect);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

std::vector<std::string> DialogDriver::Rows() const {
    HWND box = GetDlgItem(dialog, 1026);
    std::vector<std::string> rows;
    const LRESULT count = Send(box, LB_GETCOUNT);
    for (LRESULT row = 0; row < count; ++row) {
        char text[300] = {};
        Send(box, LB_GETTEXT, row, reinterpret_cast<LPARAM>(text));
        rows.emplace_back(text);
    }
    return rows;
}

int DialogDriver::SelectedRow() const {
    return static_cast<int>(Send(GetDlgItem(dialog, 1026), LB_GETCURSEL));
}

int DialogDriver::OuterWidth() const {
    RECT rect = {};
    GetWindowRect(dialog, &rect);
    return rect.right - rect.left;
}

uint32_t DialogDriver::Pixel(HWND window, int x, int y) const {
    POINT point = {x, y};
    ClientToScreen(window, &point);
    HDC screen = GetDC(nullptr);
    const std::vector<uint32_t> pixels = CapturePixels(screen, point.x, point.y, 1, 1);
    ReleaseDC(nullptr, screen);
    return pixels.empty() ? 0xFFFFFFFF : pixels[0];
}

void DialogDriver::Screenshot(const std::string& name) const {
    EXPECT_FALSE(SaveScreenshot(dialog, name).empty()) << name;
}

void PointLibraryAt(const std::string& folder) {
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExA(HKEY_LOCAL_MACHINE, "Software\\Quarry\\Tessellum\\1.x", 0, nullptr, 0,
                              KEY_ALL_ACCESS, nullptr, &key, nullptr),
              ERROR_SUCCESS);
    const std::string value = folder + "\\";
    RegSetValueExA(key, "path", 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                   static_cast<DWORD>(value.size() + 1));
    RegCloseKey(key);
}

namespace {

HWND FindPage(HWND tabs, int idInside) {
    for (HWND child = GetWindow(tabs, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        if (GetDlgItem(child, idInside)) return child;
    return nullptr;
}

}  // namespace

host::RunReport RunWithDialog(host::FilterSession& session, host::Image& image,
                              host::RunOptions options,
                              const std::function<void(DialogDriver&)>& scenario) {
    options.parent = host::MakeHostWindow("dialog test");
    const DWORD testThread = GetCurrentThreadId();
    bool appeared = false;
    std::atomic<bool> finished{false};
    std::thread driving([&] {
        DialogDriver driver;
        for (int i = 0; i < 500 && !driver.dialog && !finished; ++i) {
            HWND found = FindWindowA(MAKEINTATOM(0x8002), "Tessellum 1.5");
            if (found && IsWindowVisible(found) &&
                GetWindowThreadProcessId(found, nullptr) == testThread)
                driver.dialog = found;
            else
                Sleep(20);
        }
        if (!driver.dialog) return;
        appeared = true;
        driver.tabs = GetDlgItem(driver.dialog, 1008);
        driver.picker = FindPage(driver.tabs, 1030);
        driver.pattern = FindPage(driver.tabs, 1016);
        driver.Settle();
        scenario(driver);
        if (IsWindow(driver.dialog)) PostMessageA(driver.dialog, WM_COMMAND, IDCANCEL, 0);
    });
    host::RunReport report = session.Run(image, options);
    finished = true;
    driving.join();
    DestroyWindow(options.parent);
    EXPECT_TRUE(appeared) << "the dialog did not come up";
    return report;
}

}  // namespace tessellum::test
