#include "tests/controls/control_page.h"

namespace tessellum::test {
namespace {

const char kFrameClass[] = "TessellumTestFrame";

// A class of windows erased in the dialog's grey, once.
void Register(const char* name, WNDPROC procedure, UINT style) {
    WNDCLASSA windowClass = {};
    if (GetClassInfoA(GetModuleHandleA(nullptr), name, &windowClass)) return;
    windowClass.style = style;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));
    windowClass.hbrBackground = CreateSolidBrush(0xC0C0C0);
    windowClass.lpfnWndProc = procedure;
    windowClass.lpszClassName = name;
    RegisterClassA(&windowClass);
}

}  // namespace

LRESULT CALLBACK ControlPage::PageProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* self = reinterpret_cast<ControlPage*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (message == WM_PAINT) {
        PAINTSTRUCT paint;
        BeginPaint(window, &paint);
        EndPaint(window, &paint);
    }
    if (self && self->onMessage) self->onMessage(message, wParam, lParam);
    if (message == WM_PAINT) return 0;
    return DefWindowProcA(window, message, wParam, lParam);
}

ControlPage::ControlPage(const char* title, int clientWidth, int clientHeight, bool ownDC) {
    const char* pageClass = ownDC ? "TessellumTestPageOwnDC" : "TessellumTestPage";
    Register(kFrameClass, DefWindowProcA, 0);
    Register(pageClass, PageProc, ownDC ? CS_OWNDC : 0);
    RECT frame = {0, 0, clientWidth, clientHeight};
    const DWORD style = WS_OVERLAPPED | WS_CAPTION | WS_VISIBLE | WS_CLIPCHILDREN;
    AdjustWindowRect(&frame, style, FALSE);
    dialog = CreateWindowA(kFrameClass, title, style, 0, 0, frame.right - frame.left,
                           frame.bottom - frame.top, nullptr, nullptr, GetModuleHandleA(nullptr),
                           nullptr);
    tab = CreateWindowA(kFrameClass, "", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, clientWidth,
                        clientHeight, dialog, nullptr, GetModuleHandleA(nullptr), nullptr);
    page = CreateWindowA(pageClass, "", WS_CHILD | WS_VISIBLE, 0, 0, clientWidth, clientHeight, tab,
                         nullptr, GetModuleHandleA(nullptr), nullptr);
    SetWindowLongPtrA(page, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetForegroundWindow(dialog);
    UpdateWindow(dialog);
    PumpFor(100);
}

ControlPage::~ControlPage() {
    SetWindowLongPtrA(page, GWLP_USERDATA, 0);
    DestroyWindow(dialog);
    PumpFor(0);
}

void ControlPage::Mouse(UINT message, int x, int y) {
    const WPARAM buttons = message == WM_LBUTTONUP ? 0 : MK_LBUTTON;
    PostMessageA(page, message, buttons, MAKELPARAM(x, y));
    PumpFor(0);
}

void PumpFor(DWORD milliseconds) {
    const DWORD start = GetTickCount();
    for (;;) {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
        const DWORD elapsed = GetTickCount() - start;
        if (elapsed >= milliseconds) break;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, milliseconds - elapsed, QS_ALLINPUT);
    }
}

}  // namespace tessellum::test
