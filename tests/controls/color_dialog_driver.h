// Drives the system colour dialog from a second thread while the test's thread sits in
// its modal loop: finds it, reads what it shows, types a colour, adds it to the custom
// colours and presses OK or Cancel with real messages. Only the test's thread checks.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

namespace tessellum::test {

struct DialogWatch {
    enum Action { kPressOk, kPressCancel };
    DialogWatch(Action action, DWORD waitMilliseconds) : action(action), wait(waitMilliseconds) {}

    // What to do.
    Action action;
    DWORD wait;                           // how long to look for the dialog
    int red = 10, green = 20, blue = 30;  // typed in and added to the custom colours
    std::string screenshot;               // saved of the dialog, if named, before the button

    // What was seen.
    bool found = false;
    bool strayDialog = false;  // another dialog came up and was cancelled
    std::string title;
    HWND owner = nullptr;
    std::string shownRed, shownGreen, shownBlue;
};

// Runs `click` on this thread while a second thread deals with the dialog; gives the
// click's result.
bool ClickWithDialogWatch(const std::function<bool()>& click, DialogWatch& watch);

// Removes "Custom Color 0" to "Custom Color 15" from the settings key.
void DeleteCustomColors();

}  // namespace tessellum::test
