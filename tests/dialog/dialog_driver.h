// The main dialog driven as a user drives it, from a second thread while the dialog runs
// modal on the test's thread: clicks and keys are window messages to the real windows
// (the prompts get real keystrokes), and what a user sees is read back from them.
#pragma once

#include <windows.h>
#include <commctrl.h>  // after windows.h
#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/screenshot.h"

namespace tessellum::test {

// A control or a command: the window it belongs to (the dialog or one of its two pages)
// plus its id, so that one number names both.
enum : int { kPicker = 100000, kPattern = 200000 };
enum : int { kSizing = 1001, kNameColor, kNewColor, kListButton, kTabs = 1008, kPreview = 1023 };
enum : int { kColorBox = 1026, kNewList = 40001, kNameList, kDeleteList, kImport = 40015, kExport };
enum : int { kConvert = kPicker + 1019, kConvertText = kPicker + 1022, kSliders = kPicker + 1024 };
enum : int { kPickerTile = kPicker + 1030, kShownColor, kForeBack = kPicker + 1035 };
enum : int { kGridSize = kPattern + 1016, kLoad, kUnload, kPaletteName, kEditor = kPattern + 1025 };
enum : int { kSwatches = kPattern + 1032, kTools, kPair };

inline const char* const kDialogClass = MAKEINTATOM(0x8002);
using Seen = std::pair<std::string, std::string>;  // a prompt's line and its initial text

// A visible dialog window of `thread` with this caption, within 10 seconds.
inline HWND WaitForWindow(DWORD thread, const char* caption, bool quiet = false) {
    for (int i = 0; i < 500; ++i, Sleep(20)) {
        HWND found = FindWindowA(kDialogClass, caption);
        if (found && IsWindowVisible(found) && GetWindowThreadProcessId(found, nullptr) == thread)
            return found;
    }
    if (!quiet) ADD_FAILURE() << "no window \"" << caption << "\" came up";
    return nullptr;
}

// Every message the driver sends to the dialog's thread has a bound of its own: a thread
// that hangs would otherwise hold the driver, and the test, until ctest's time limit.
inline LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    DWORD_PTR result = 0;
    if (SendMessageTimeoutA(window, message, wParam, lParam, SMTO_NORMAL, 10000, &result))
        return static_cast<LRESULT>(result);
    if (GetLastError() != ERROR_TIMEOUT) return 0;  // a window that is gone answers nothing
    fprintf(stderr, "FAILED: the dialog's thread did not answer message 0x%X in 10 s\n", message);
    fflush(stderr);
    std::_Exit(1);
}
inline LRESULT Send(HWND window, UINT message, WPARAM wParam, const void* lParam) {
    return Send(window, message, wParam, reinterpret_cast<LPARAM>(lParam));
}

inline std::string WindowText(HWND window) {
    char text[600] = {};
    Send(window, WM_GETTEXT, sizeof text, text);
    return text;
}

// Real keystrokes into the system's input: they go to the window that has the focus.
inline void Keys(const std::string& text, WORD key = 0) {
    std::vector<INPUT> strokes(2 * (key ? 1 : text.size()));
    for (size_t i = 0; i < strokes.size(); ++i) {
        strokes[i].type = INPUT_KEYBOARD;
        strokes[i].ki.wVk = key;
        strokes[i].ki.wScan = key ? 0 : static_cast<unsigned char>(text[i / 2]);
        strokes[i].ki.dwFlags = (key ? 0 : KEYEVENTF_UNICODE) | (i % 2 ? KEYEVENTF_KEYUP : 0);
    }
    const UINT count = static_cast<UINT>(strokes.size());
    EXPECT_EQ(SendInput(count, strokes.data(), sizeof(INPUT)), count);
    Sleep(50);
}

// A key pressed while a modifier is held (Shift+Tab, Ctrl+V), as real keystrokes.
inline void Chord(WORD modifier, WORD key) {
    const WORD order[4] = {modifier, key, key, modifier};
    INPUT strokes[4] = {};
    for (int i = 0; i < 4; ++i) {
        strokes[i].type = INPUT_KEYBOARD;
        strokes[i].ki.wVk = order[i];
        strokes[i].ki.dwFlags = i < 2 ? 0 : KEYEVENTF_KEYUP;
    }
    EXPECT_EQ(SendInput(4, strokes, sizeof(INPUT)), 4u);
    Sleep(50);
}

// Puts `text` on the clipboard as CF_TEXT, owned by `owner`.
inline void SetClipboardText(HWND owner, const std::string& text) {
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    ASSERT_NE(block, nullptr);
    lstrcpyA(static_cast<char*>(GlobalLock(block)), text.c_str());
    GlobalUnlock(block);
    ASSERT_TRUE(OpenClipboard(owner));
    EmptyClipboard();
    EXPECT_NE(SetClipboardData(CF_TEXT, block), nullptr);
    CloseClipboard();
}

inline BOOL CALLBACK FindEdit(HWND child, LPARAM found) {  // stops at the first edit field
    char kind[16] = {};
    GetClassNameA(child, kind, sizeof kind);
    if (lstrcmpiA(kind, "Edit") != 0) return TRUE;
    *reinterpret_cast<HWND*>(found) = child;
    return FALSE;
}

// Cancels the window of the dialog's thread that takes input: the modal one on top, the
// dialog itself once it is the last.
inline BOOL CALLBACK CancelWindow(HWND window, LPARAM) {
    if (IsWindowVisible(window) && IsWindowEnabled(window))
        PostMessageA(window, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
    return TRUE;
}
inline BOOL CALLBACK NameWindow(HWND window, LPARAM names) {
    if (IsWindowVisible(window))
        *reinterpret_cast<std::string*>(names) += "\"" + WindowText(window) + "\" ";
    return TRUE;
}

// The dialog thread's queue as the driver sees it: a hook on that thread notes each time it
// takes the driver's marker from its queue, and whether anything else (a posted message, a
// paint, input; not a timer) was still waiting then.
struct QueueWatch {
    HHOOK hook = nullptr;
    std::atomic<long> markersTaken{0};
    std::atomic<bool> idle{false};
};
inline QueueWatch queueWatch;
constexpr WPARAM kSettleMarker = 0x5E771E;

inline LRESULT CALLBACK WatchQueue(int code, WPARAM removal, LPARAM message) {
    const MSG& taken = *reinterpret_cast<const MSG*>(message);
    if (code == HC_ACTION && taken.message == WM_NULL && taken.wParam == kSettleMarker) {
        queueWatch.idle = (HIWORD(GetQueueStatus(QS_ALLINPUT)) & ~QS_TIMER) == 0;
        ++queueWatch.markersTaken;
    }
    return CallNextHookEx(nullptr, code, removal, message);
}

struct DialogDriver {
    HWND dialog = nullptr, picker = nullptr, pattern = nullptr;

    HWND Page(int control) const {
        return control >= kPattern ? pattern : control >= kPicker ? picker : dialog;
    }
    HWND Item(int control) const { return GetDlgItem(Page(control), control % kPicker); }
    std::string Text(int control) const { return WindowText(Item(control)); }
    bool Visible(int control) const { return IsWindowVisible(Item(control)) != FALSE; }
    RECT Place(int control) const {  // in its page's client area
        RECT rect = {};
        GetWindowRect(Item(control), &rect);
        MapWindowPoints(nullptr, Page(control), reinterpret_cast<POINT*>(&rect), 2);
        return rect;
    }
    uint32_t Pixel(int control, int x, int y) const {  // 0x00RRGGBB on the screen
        const RECT place = Place(control);
        POINT point = {place.left + x, place.top + y};
        ClientToScreen(Page(control), &point);
        HDC screen = GetDC(nullptr);
        const std::vector<uint32_t> pixels = CapturePixels(screen, point.x, point.y, 1, 1);
        ReleaseDC(nullptr, screen);
        return pixels.empty() ? 0xFFFFFFFF : pixels[0];
    }
    std::vector<std::string> Rows() const {
        std::vector<std::string> rows;
        for (LRESULT row = 0; row < Send(Item(kColorBox), LB_GETCOUNT); ++row) {
            char text[300] = {};
            Send(Item(kColorBox), LB_GETTEXT, row, text);
            rows.emplace_back(text);
        }
        return rows;
    }
    int SelectedRow() const { return int(Send(Item(kColorBox), LB_GETCURSEL)); }
    void Screenshot(const std::string& name) const {
        EXPECT_FALSE(SaveScreenshot(dialog, name).empty()) << name;
    }

    // Waits until the dialog's thread has handled everything that was waiting for it: the
    // posted repaints that follow an erase, the paints themselves, keystrokes. A marker is
    // posted behind them, and posted again until the thread takes one with nothing else
    // waiting, however busy the machine.
    void Settle() const {
        for (int round = 0; round < 200; ++round) {
            const long taken = queueWatch.markersTaken;
            if (!PostMessageA(dialog, WM_NULL, kSettleMarker, 0)) return;  // the dialog ended
            for (const ULONGLONG start = GetTickCount64(); queueWatch.markersTaken == taken;
                 Sleep(1)) {
                if (!IsWindow(dialog)) return;  // ended, and its loop with it
                if (GetTickCount64() - start < 10000) continue;
                fprintf(stderr, "FAILED: the dialog's thread took no message in 10 s\n");
                fflush(stderr);
                std::_Exit(1);
            }
            if (queueWatch.idle) return;
        }
        ADD_FAILURE() << "the dialog's thread never ran out of messages";
    }
    void Press(int button) const {  // a click on a push button
        Send(Item(button), BM_CLICK);
        Settle();
    }
    // As a menu sends it; a posted command may open a modal window, for the driver to answer.
    void Command(int command, bool post = false) const {
        if (post) PostMessageA(Page(command), WM_COMMAND, command % kPicker, 0);
        if (!post) Send(Page(command), WM_COMMAND, command % kPicker);
        Settle();
    }
    void PostKey(int control, UINT key) const {
        PostMessageA(Item(control), WM_KEYDOWN, key, 1);
        PostMessageA(Item(control), WM_KEYUP, key, 0xC0000001);
    }
    // A mouse message at (x, y) from the control's corner, as its page gets it; posted when
    // it opens a modal window.
    void Mouse(int control, UINT message, int x, int y, bool held = false,
               bool post = false) const {
        const RECT place = Place(control);
        const bool down = message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK || held;
        const LPARAM point = MAKELPARAM(place.left + x, place.top + y);
        if (post) PostMessageA(Page(control), message, down ? MK_LBUTTON : 0, point);
        if (!post) Send(Page(control), message, down ? MK_LBUTTON : 0, point);
    }
    void Click(int control, int x, int y, bool twice = false, bool post = false) const {
        for (int i = 0; i < (twice ? 2 : 1); ++i) {
            Mouse(control, i ? WM_LBUTTONDBLCLK : WM_LBUTTONDOWN, x, y, false, post);
            Mouse(control, WM_LBUTTONUP, x, y, false, post);
        }
        if (!post) Settle();
    }
    void ClickItem(int control, UINT placeMessage, int index) const {  // a tab or a row
        RECT item = {};
        Send(Item(control), placeMessage, index, &item);
        const LPARAM point = MAKELPARAM((item.left + item.right) / 2, (item.top + item.bottom) / 2);
        Send(Item(control), WM_LBUTTONDOWN, MK_LBUTTON, point);
        Send(Item(control), WM_LBUTTONUP, 0, point);
        Settle();
    }
    void ChooseTab(int index) const { ClickItem(kTabs, TCM_GETITEMRECT, index); }
    void SelectRow(int row) const { ClickItem(kColorBox, LB_GETITEMRECT, row); }

    HWND Wait(const char* caption) const {
        return WaitForWindow(GetWindowThreadProcessId(dialog, nullptr), caption);
    }
    // Presses the button (0: none) of a modal window and waits for it to go, then for the
    // dialog to handle what followed.
    void Close(HWND window, int button) const {
        if (button) PostMessageA(window, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), 0);
        for (int i = 0; i < 500 && IsWindow(window); ++i) Sleep(20);
        EXPECT_FALSE(IsWindow(window)) << "the modal window stayed open";
        Settle();
    }
    // Answers the name prompt at the keyboard: types `typed` (Backspace for an empty
    // name) and Enter, or Escape. Gives the prompt's line and initial text.
    Seen AnswerPrompt(const char* caption, const std::string& typed, bool ok = true,
                      const char* shot = nullptr) const {
        HWND prompt = Wait(caption);
        if (!prompt) return {};
        Sleep(100);  // its first paint, for the picture
        if (shot) {
            EXPECT_FALSE(SaveScreenshot(prompt, shot).empty()) << shot;
        }
        const Seen seen = {WindowText(GetDlgItem(prompt, 1001)),
                           WindowText(GetDlgItem(prompt, 1000))};
        if (ok && typed.empty()) Keys("", VK_BACK);  // the selected name goes
        if (ok && !typed.empty()) Keys(typed);
        Keys("", ok ? VK_RETURN : VK_ESCAPE);
        Close(prompt, 0);
        return seen;
    }
    // Presses `button` in the message box; gives its text.
    std::string AnswerMessageBox(const char* caption, int button) const {
        HWND box = Wait(caption);
        std::string text;
        for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            char kind[32] = {};
            GetClassNameA(child, kind, sizeof kind);
            if (lstrcmpiA(kind, "Static") == 0 && !WindowText(child).empty())
                text = WindowText(child);
        }
        Close(box, button);
        return text;
    }
    // Types `path` and presses OK, or Cancel for an empty path; gives the name offered and
    // the first of the file types offered. With `replace` the question whether to replace
    // the file must come, and gets Yes.
    Seen AnswerFileDialog(const char* title, const std::string& path, bool replace = false) const {
        enum { kTypeList = 0x470 };  // the published id of the list of file types
        HWND box = Wait(title);
        if (!box) return {};
        Sleep(300);           // the folder view fills in after the window shows
        HWND name = nullptr;  // the one edit field, inside the file name's combo box
        EnumChildWindows(box, FindEdit, reinterpret_cast<LPARAM>(&name));
        EXPECT_TRUE(name != nullptr) << "no file name field in " << title;
        char type[64] = {};
        Send(GetDlgItem(box, kTypeList), CB_GETLBTEXT, 0, type);
        const Seen offered = {WindowText(name), type};
        if (name && !path.empty()) {  // over the offered name, and read back before OK
            Send(name, WM_SETTEXT, 0, path.c_str());
            EXPECT_EQ(WindowText(name), path) << title;
        }
        PostMessageA(box, WM_COMMAND, MAKEWPARAM(path.empty() ? IDCANCEL : IDOK, BN_CLICKED), 0);
        // The question comes up over the file dialog, with its title, or the dialog ends.
        HWND question = nullptr;
        for (int i = 0; replace && i < 500 && !question && IsWindow(box); ++i, Sleep(20)) {
            question = FindWindowExA(nullptr, nullptr, kDialogClass, title);
            if (question == box) question = FindWindowExA(nullptr, box, kDialogClass, title);
        }
        EXPECT_EQ(replace, question != nullptr) << title << ": the question to replace a file";
        if (question) Close(question, IDYES);
        Close(box, 0);
        return offered;
    }
    // Sets the colour, adds it to the custom colours and presses OK or Cancel; gives the
    // colour shown at first as "red,green,blue".
    std::string AnswerColorDialog(int red, int green, int blue, bool ok) const {
        enum { kRed = 706, kGreen = 707, kBlue = 708, kAdd = 712 };  // the published ids
        HWND box = Wait("Color");
        Sleep(150);  // its start-up and first paint
        std::string shown;
        const std::pair<int, int> values[] = {{kRed, red}, {kGreen, green}, {kBlue, blue}};
        for (const auto& [id, value] : values) {
            shown += (shown.empty() ? "" : ",") + WindowText(GetDlgItem(box, id));
            Send(GetDlgItem(box, id), WM_SETTEXT, 0, std::to_string(value).c_str());
        }
        Send(box, WM_COMMAND, MAKEWPARAM(kAdd, BN_CLICKED),
             reinterpret_cast<LPARAM>(GetDlgItem(box, kAdd)));
        Close(box, ok ? IDOK : IDCANCEL);
        return shown;
    }
};

// Runs `run`, which shows the dialog on this thread, while `scenario` drives it; cancels
// the dialog if the scenario leaves it open. False if it never came up.
inline bool WithDialog(const std::function<void()>& run,
                       const std::function<void(DialogDriver&)>& scenario) {
    const DWORD thread = GetCurrentThreadId();
    std::atomic<bool> appeared{false}, ended{false};
    std::thread driving([&] {
        DialogDriver d;
        if (!(d.dialog = WaitForWindow(thread, "Tessellum 1.5", true))) {
            // Either the dialog ended in its start, or it is still not up: then nobody
            // would ever end the run, so the test ends here and says so.
            for (int i = 0; i < 100 && !ended; ++i) Sleep(20);
            if (ended) return;
            std::string open;
            EnumThreadWindows(thread, NameWindow, reinterpret_cast<LPARAM>(&open));
            fprintf(stderr, "FAILED: no dialog came up in 10 s and the run goes on; open: %s\n",
                    open.c_str());
            fflush(stderr);
            std::_Exit(1);
        }
        appeared = true;
        queueWatch.hook = SetWindowsHookExA(WH_GETMESSAGE, WatchQueue, nullptr, thread);
        ASSERT_NE(queueWatch.hook, nullptr);
        HWND tabs = GetDlgItem(d.dialog, kTabs);
        for (HWND page = GetWindow(tabs, GW_CHILD); page; page = GetWindow(page, GW_HWNDNEXT)) {
            if (GetDlgItem(page, kPickerTile % kPicker)) d.picker = page;
            if (GetDlgItem(page, kEditor % kPicker)) d.pattern = page;
        }
        d.Settle();
        scenario(d);
        // Whatever the scenario left open (a message box, a file dialog after a failed
        // step) is cancelled, then the dialog; a run that still does not end fails here
        // with what stayed on the screen, rather than at the time limit with nothing.
        for (int i = 0; i < 100 && IsWindow(d.dialog); ++i, Sleep(100))
            EnumThreadWindows(thread, CancelWindow, 0);
        UnhookWindowsHookEx(queueWatch.hook);
        if (!IsWindow(d.dialog)) return;
        std::string left;
        EnumThreadWindows(thread, NameWindow, reinterpret_cast<LPARAM>(&left));
        fprintf(stderr, "FAILED: the dialog did not end; open: %s\n", left.c_str());
        fflush(stderr);
        std::_Exit(1);
    });
    run();
    ended = true;
    driving.join();
    return appeared;
}

// Points the plug-in at `folder` for its library file (the "path" setting).
inline void PointLibraryAt(const std::string& folder) {
    const std::string value = folder + "\\";
    ASSERT_EQ(RegSetKeyValueA(HKEY_LOCAL_MACHINE, "Software\\Quarry\\Tessellum\\1.x", "path",
                              REG_SZ, value.c_str(), static_cast<DWORD>(value.size() + 1)),
              ERROR_SUCCESS);
}

}  // namespace tessellum::test
