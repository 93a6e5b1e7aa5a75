// The main dialog driven as a user drives it, from a second thread while the real plug-in
// runs the real modal dialog in our host's session on the test's thread: clicks and keys
// are window messages to the real windows, and what a user would see is read back from
// them (texts, list rows, visibility, pixels on the screen).
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "tools/host/filter_host.h"

namespace tessellum::test {

class DialogDriver {
public:
    HWND dialog = nullptr;
    HWND tabs = nullptr;
    HWND picker = nullptr;   // the Color Picker page
    HWND pattern = nullptr;  // the Pattern Fill page

    // Sends a message and waits until the dialog's thread has handled it.
    LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    // Lets posted messages (the repaint after an erase) arrive and be handled.
    void Settle() const;

    void Press(HWND parent, int id) const;    // a click on a push button
    void Command(HWND window, int id) const;  // as a menu item sends it
    // A mouse message as the page gets it; a move carries MK_LBUTTON when `held`.
    void Mouse(HWND page, UINT message, int x, int y, bool held = false) const;
    void Click(HWND page, int x, int y) const;  // down and up
    // Two clicks in the double-click time: the second press comes as WM_LBUTTONDBLCLK.
    void DoubleClick(HWND page, int x, int y) const;
    void ChooseTab(int index) const;  // a click on the tab
    void SelectRow(int row) const;    // a click on a row of the colour list box

    // Commands and keys that open a modal window (a prompt, a question, a file dialog)
    // are posted: the driver answers that window while the dialog waits for it.
    void PostCommand(HWND window, int id) const;
    void PostKey(HWND window, UINT key) const;  // down and up
    // Answers the name prompt with this caption at the keyboard, as a user does: types
    // `typed` (Backspace for an empty name), then Enter, or Escape when `ok` is false.
    // Returns the prompt's line and its initial text. With `shot`, saves a screenshot of
    // it first.
    struct PromptSeen {
        std::string line, initial;
    };
    PromptSeen AnswerPrompt(const char* caption, const std::string& typed, bool ok = true,
                            const char* shot = nullptr) const;
    // Presses `button` (IDYES, IDNO, IDOK) in the message box with this caption and
    // returns its text ("" if none came up).
    std::string AnswerMessageBox(const char* caption, int button) const;
    // Types `path` into the file dialog with this title and presses its OK, or Cancel
    // for an empty path. Returns the file name it offered at first. With `replace`, the
    // file exists: the question whether to replace it must come up, and gets Yes.
    std::string AnswerFileDialog(const char* title, const std::string& path,
                                 const char* shot = nullptr, bool replace = false) const;
    // Sets the system colour dialog to this colour, adds it to the custom colours and
    // presses OK, or Cancel when `ok` is false. Returns the colour it showed at first as
    // "red,green,blue".
    std::string AnswerColorDialog(int red, int green, int blue, bool ok,
                                  const char* shot = nullptr) const;

    std::string Text(HWND parent, int id) const;
    bool Visible(HWND parent, int id) const;
    RECT Place(HWND parent, int id) const;  // the control's outer rectangle in parent's client
    std::vector<std::string> Rows() const;  // the colour list box
    int SelectedRow() const;
    int OuterWidth() const;
    uint32_t Pixel(HWND window, int x, int y) const;  // 0x00RRGGBB on the screen
    void Screenshot(const std::string& name) const;
};

// Points the plug-in at FOLDER for its library file (the machine-wide "path" setting in
// the test's private registry).
void PointLibraryAt(const std::string& folder);

// Runs the filter on `image` through the real plug-in with the host's own window as
// parent; `scenario` drives the dialog once it is up. If the scenario leaves the dialog
// open, it is cancelled. A dialog that never comes up fails the test.
host::RunReport RunWithDialog(host::FilterSession& session, host::Image& image,
                              host::RunOptions options,
                              const std::function<void(DialogDriver&)>& scenario);

}  // namespace tessellum::test
