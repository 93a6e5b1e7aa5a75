// The main dialog driven as a user drives it, from a second thread while the dialog runs
// modal on the test's thread: clicks and keys are window messages to the real windows
// (the prompts get real keystrokes), and what a user sees is read back from them.
#pragma once

#include <windows.h>
#include <commctrl.h>  // after windows.h

#include <functional>
#include <string>
#include <vector>

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

struct DialogDriver {
    HWND dialog = nullptr, picker = nullptr, pattern = nullptr;

    HWND Page(int control) const {
        return control >= kPattern ? pattern : control >= kPicker ? picker : dialog;
    }
    HWND Item(int control) const { return GetDlgItem(Page(control), control % kPicker); }
    // Lets posted messages (the repaint after an erase) arrive and be handled.
    void Settle() const;
    void Press(int button) const;                        // a click on a push button
    void Command(int command, bool post = false) const;  // as a menu sends it; posted
    // commands may open a modal window, which the driver then answers
    void PostKey(int control, UINT key) const;
    // Mouse messages at (x, y) from the control's corner, sent to its page.
    void Mouse(int control, UINT message, int x, int y, bool held = false) const;
    void Click(int control, int x, int y, bool twice = false) const;  // twice: a double click
    void ClickItem(int control, UINT placeMessage, int index) const;  // a tab or a row
    void ChooseTab(int index) const { ClickItem(kTabs, TCM_GETITEMRECT, index); }
    void SelectRow(int row) const { ClickItem(kColorBox, LB_GETITEMRECT, row); }

    // Answers the name prompt at the keyboard: types `typed` (Backspace for an empty
    // name) and Enter, or Escape. Gives the prompt's line and initial text.
    std::pair<std::string, std::string> AnswerPrompt(const char* caption, const std::string& typed,
                                                     bool ok = true,
                                                     const char* shot = nullptr) const;
    // Presses `button` in the message box; gives its text ("" if none came up).
    std::string AnswerMessageBox(const char* caption, int button) const;
    // Types `path` and presses OK, or Cancel for an empty path; gives the name offered.
    // With `replace` the question whether to replace the file must come, and gets Yes.
    std::string AnswerFileDialog(const char* title, const std::string& path,
                                 bool replace = false) const;
    // Sets the colour, adds it to the custom colours and presses OK or Cancel; gives the
    // colour shown at first as "red,green,blue".
    std::string AnswerColorDialog(int red, int green, int blue, bool ok) const;

    std::string Text(int control) const {
        char text[600] = {};
        GetWindowTextA(Item(control), text, sizeof text);
        return text;
    }
    bool Visible(int control) const { return IsWindowVisible(Item(control)) != FALSE; }
    RECT Place(int control) const;  // in its page's client area
    std::vector<std::string> Rows() const;
    int SelectedRow() const { return int(SendMessageA(Item(kColorBox), LB_GETCURSEL, 0, 0)); }
    uint32_t Pixel(int control, int x, int y) const;  // 0x00RRGGBB on the screen
    void Screenshot(const std::string& name) const;
};

// Runs `run`, which shows the dialog on this thread, while `scenario` drives it; cancels
// the dialog if the scenario leaves it open. False if it never came up.
bool WithDialog(const std::function<void()>& run,
                const std::function<void(DialogDriver&)>& scenario);

// Points the plug-in at `folder` for its library file (the "path" setting).
void PointLibraryAt(const std::string& folder);

}  // namespace tessellum::test
