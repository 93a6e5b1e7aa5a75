// A stand-in for a tab page of the dialog: a grey child window inside a "tab" child inside
// a top-level window, as the real pages sit, handing every message to the test's handler
// as a page's dialog procedure hands mouse and timer messages to its controls.
#pragma once

#include <windows.h>

#include <functional>

namespace tessellum::test {

class ControlPage {
public:
    // A visible page with a client area of that size at the top left of the screen.
    // With `ownDC` the page keeps one device context for its life (CS_OWNDC), so what a
    // control leaves selected in it stays visible to the test.
    ControlPage(const char* title, int clientWidth, int clientHeight, bool ownDC = false);
    ~ControlPage();
    ControlPage(const ControlPage&) = delete;
    ControlPage& operator=(const ControlPage&) = delete;
    HWND Page() const { return page; }
    HWND Dialog() const { return dialog; }

    // Called for each message the page receives; WM_PAINT is handled here first (the
    // page is erased grey), then `onMessage` sees it to paint its controls again.
    std::function<void(UINT message, WPARAM wParam, LPARAM lParam)> onMessage;

    // Posts a mouse message at client point x, y of the page and dispatches it.
    void Mouse(UINT message, int x, int y);

private:
    static LRESULT CALLBACK PageProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    HWND dialog = nullptr;
    HWND tab = nullptr;
    HWND page = nullptr;
};

// Runs the message loop for that long, so that timers tick; 0 dispatches what is waiting.
void PumpFor(DWORD milliseconds);

}  // namespace tessellum::test
