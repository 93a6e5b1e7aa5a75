#include "tests/dialog/dialog_driver.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "tests/support/screenshot.h"

namespace tessellum::test {
namespace {

const char* const kDialogClass = MAKEINTATOM(0x8002);

// A visible dialog window of `thread` with this caption, within 10 seconds.
HWND WaitForWindow(DWORD thread, const char* caption, bool quiet = false) {
    for (int i = 0; i < 500; ++i, Sleep(20)) {
        HWND found = FindWindowA(kDialogClass, caption);
        if (found && IsWindowVisible(found) && GetWindowThreadProcessId(found, nullptr) == thread)
            return found;
    }
    if (!quiet) ADD_FAILURE() << "no window \"" << caption << "\" came up";
    return nullptr;
}

std::string WindowText(HWND window) {
    char text[600] = {};
    GetWindowTextA(window, text, sizeof text);
    return text;
}

// Presses the button (none: 0) of a modal window, waits for it to go, then for the
// dialog to handle what followed.
void Close(const DialogDriver& d, HWND window, int button) {
    if (button) PostMessageA(window, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), 0);
    for (int i = 0; i < 500 && IsWindow(window); ++i) Sleep(20);
    EXPECT_FALSE(IsWindow(window)) << "the modal window stayed open";
    d.Settle();
}

// Real keystrokes into the system's input: they go to the window that has the focus.
void Keys(const std::string& text, WORD key = 0) {
    std::vector<INPUT> strokes;
    for (size_t i = 0; i < (key ? 1 : text.size()) * 2; ++i) {
        INPUT input = {};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = key;
        input.ki.wScan = key ? 0 : static_cast<unsigned char>(text[i / 2]);
        input.ki.dwFlags = (key ? 0 : KEYEVENTF_UNICODE) | (i % 2 ? KEYEVENTF_KEYUP : 0);
        strokes.push_back(input);
    }
    if (strokes.empty()) return;
    const UINT count = static_cast<UINT>(strokes.size());
    EXPECT_EQ(SendInput(count, strokes.data(), sizeof(INPUT)), count);
    Sleep(50);
}

BOOL CALLBACK FindEdit(HWND child, LPARAM found) {  // stops at the first edit field
    char kind[16] = {};
    GetClassNameA(child, kind, sizeof kind);
    if (lstrcmpiA(kind, "Edit") != 0) return TRUE;
    *reinterpret_cast<HWND*>(found) = child;
    return FALSE;
}

}  // namespace

void DialogDriver::Settle() const {
    // A sent message returns once the dialog's thread is back in its loop, after what was
    // waiting before it; the posted repaints come after the erase.
    for (int round = 0; round < 3; ++round, Sleep(30)) SendMessageA(dialog, WM_NULL, 0, 0);
}

void DialogDriver::Press(int button) const {
    SendMessageA(Item(button), BM_CLICK, 0, 0);
    Settle();
}

void DialogDriver::Command(int command, bool post) const {
    if (post) {
        PostMessageA(Page(command), WM_COMMAND, command % kPicker, 0);
        return;
    }
    SendMessageA(Page(command), WM_COMMAND, command % kPicker, 0);
    Settle();
}

void DialogDriver::PostKey(int control, UINT key) const {
    PostMessageA(Item(control), WM_KEYDOWN, key, 1);
    PostMessageA(Item(control), WM_KEYUP, key, 0xC0000001);
}

void DialogDriver::Mouse(int control, UINT message, int x, int y, bool held) const {
    const RECT place = Place(control);
    const bool down = message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK || held;
    SendMessageA(Page(control), message, down ? MK_LBUTTON : 0,
                 MAKELPARAM(place.left + x, place.top + y));
}

void DialogDriver::Click(int control, int x, int y, bool twice) const {
    Mouse(control, WM_LBUTTONDOWN, x, y);
    Mouse(control, WM_LBUTTONUP, x, y);
    if (twice) Mouse(control, WM_LBUTTONDBLCLK, x, y), Mouse(control, WM_LBUTTONUP, x, y);
    Settle();
}

void DialogDriver::ClickItem(int control, UINT placeMessage, int index) const {
    RECT item = {};
    SendMessageA(Item(control), placeMessage, index, reinterpret_cast<LPARAM>(&item));
    const LPARAM point = MAKELPARAM((item.left + item.right) / 2, (item.top + item.bottom) / 2);
    SendMessageA(Item(control), WM_LBUTTONDOWN, MK_LBUTTON, point);
    SendMessageA(Item(control), WM_LBUTTONUP, 0, point);
    Settle();
}

std::pair<std::string, std::string> DialogDriver::AnswerPrompt(const char* caption,
                                                               const std::string& typed, bool ok,
                                                               const char* shot) const {
    HWND prompt = WaitForWindow(GetWindowThreadProcessId(dialog, nullptr), caption);
    if (!prompt) return {};
    Sleep(100);  // its first paint, for the picture
    if (shot) {
        EXPECT_FALSE(SaveScreenshot(prompt, shot).empty()) << shot;
    }
    const std::pair<std::string, std::string> seen = {WindowText(GetDlgItem(prompt, 1001)),
                                                      WindowText(GetDlgItem(prompt, 1000))};
    if (ok && typed.empty()) Keys("", VK_BACK);  // the selected name goes
    if (ok) Keys(typed);
    Keys("", ok ? VK_RETURN : VK_ESCAPE);
    Close(*this, prompt, 0);
    return seen;
}

std::string DialogDriver::AnswerMessageBox(const char* caption, int button) const {
    HWND box = WaitForWindow(GetWindowThreadProcessId(dialog, nullptr), caption);
    if (!box) return "";
    std::string text;
    for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        char kind[32] = {};
        GetClassNameA(child, kind, sizeof kind);
        if (lstrcmpiA(kind, "Static") == 0 && GetWindowTextLengthA(child) > 0)
            text = WindowText(child);
    }
    Close(*this, box, button);
    return text;
}

std::string DialogDriver::AnswerFileDialog(const char* title, const std::string& path,
                                           bool replace) const {
    HWND box = WaitForWindow(GetWindowThreadProcessId(dialog, nullptr), title);
    if (!box) return "";
    Sleep(300);           // the folder view fills in after the window shows
    HWND name = nullptr;  // the one edit field, inside the file name's combo box
    EnumChildWindows(box, FindEdit, reinterpret_cast<LPARAM>(&name));
    EXPECT_TRUE(name != nullptr) << "no file name field in " << title;
    const std::string offered = WindowText(name);
    if (name && !path.empty()) {  // typed over the selected name
        SendMessageA(name, EM_SETSEL, 0, -1);
        SendMessageA(name, WM_CHAR, VK_BACK, 0);
        for (char c : path) SendMessageA(name, WM_CHAR, static_cast<unsigned char>(c), 1);
    }
    if (!replace) {
        Close(*this, box, path.empty() ? IDCANCEL : IDOK);
        return offered;
    }
    PostMessageA(box, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
    HWND question = nullptr;  // it comes up over the file dialog, with its title
    for (int i = 0; i < 100 && !question; ++i, Sleep(20)) {
        question = FindWindowExA(nullptr, nullptr, kDialogClass, title);
        if (question == box) question = FindWindowExA(nullptr, box, kDialogClass, title);
    }
    EXPECT_TRUE(question != nullptr) << title << " replaced a file without asking";
    if (question) Close(*this, question, IDYES);
    Close(*this, box, 0);
    return offered;
}

std::string DialogDriver::AnswerColorDialog(int red, int green, int blue, bool ok) const {
    enum { kRed = 706, kGreen = 707, kBlue = 708, kAdd = 712 };  // the published ids
    HWND box = WaitForWindow(GetWindowThreadProcessId(dialog, nullptr), "Color");
    if (!box) return "";
    Sleep(150);  // its start-up and first paint
    std::string shown;
    const std::pair<int, int> values[] = {{kRed, red}, {kGreen, green}, {kBlue, blue}};
    for (const auto& [id, value] : values) {
        shown += (shown.empty() ? "" : ",") + WindowText(GetDlgItem(box, id));
        SetDlgItemTextA(box, id, std::to_string(value).c_str());
    }
    SendMessageA(box, WM_COMMAND, MAKEWPARAM(kAdd, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(box, kAdd)));
    Close(*this, box, ok ? IDOK : IDCANCEL);
    return shown;
}

RECT DialogDriver::Place(int control) const {
    RECT rect = {};
    GetWindowRect(Item(control), &rect);
    MapWindowPoints(nullptr, Page(control), reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

std::vector<std::string> DialogDriver::Rows() const {
    std::vector<std::string> rows;
    for (LRESULT row = 0; row < SendMessageA(Item(kColorBox), LB_GETCOUNT, 0, 0); ++row) {
        char text[300] = {};
        SendMessageA(Item(kColorBox), LB_GETTEXT, row, reinterpret_cast<LPARAM>(text));
        rows.emplace_back(text);
    }
    return rows;
}

uint32_t DialogDriver::Pixel(int control, int x, int y) const {
    const RECT place = Place(control);
    POINT point = {place.left + x, place.top + y};
    ClientToScreen(Page(control), &point);
    HDC screen = GetDC(nullptr);
    const std::vector<uint32_t> pixels = CapturePixels(screen, point.x, point.y, 1, 1);
    ReleaseDC(nullptr, screen);
    return pixels.empty() ? 0xFFFFFFFF : pixels[0];
}

void DialogDriver::Screenshot(const std::string& name) const {
    EXPECT_FALSE(SaveScreenshot(dialog, name).empty()) << name;
}

bool WithDialog(const std::function<void()>& run,
                const std::function<void(DialogDriver&)>& scenario) {
    const DWORD thread = GetCurrentThreadId();
    std::atomic<bool> appeared{false};
    std::thread driving([&] {
        DialogDriver d;
        if (!(d.dialog = WaitForWindow(thread, "Tessellum 1.5", true))) return;
        appeared = true;
        HWND tabs = GetDlgItem(d.dialog, kTabs);
        for (HWND page = GetWindow(tabs, GW_CHILD); page; page = GetWindow(page, GW_HWNDNEXT)) {
            if (GetDlgItem(page, kPickerTile % kPicker)) d.picker = page;
            if (GetDlgItem(page, kEditor % kPicker)) d.pattern = page;
        }
        d.Settle();
        scenario(d);
        if (IsWindow(d.dialog)) PostMessageA(d.dialog, WM_COMMAND, IDCANCEL, 0);
    });
    run();
    driving.join();
    return appeared;
}

void PointLibraryAt(const std::string& folder) {
    const std::string value = folder + "\\";
    ASSERT_EQ(RegSetKeyValueA(HKEY_LOCAL_MACHINE, "Software\\Quarry\\Tessellum\\1.x", "path",
                              REG_SZ, value.c_str(), static_cast<DWORD>(value.size() + 1)),
              ERROR_SUCCESS);
}

}  // namespace tessellum::test
