#include "tests/control_page.h"

namespace tessellum::test {
namespace {

constexpr COLORREF kDialogFace = 0xC0C0C0;
const char kPageClass[] = "TessellumTestPage";
const char kOwnDCPageClass[] = "TessellumTestPageOwnDC";
const char kFrameClass[] = "TessellumTestFrame";

void RegisterClasses() {
    static bool registered = false;
    if (registered) return;
    registered = true;
    WNDCLASSA windowClass = {};
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));
    windowClass.hbrBackground = CreateSolidBrush(kDialogFace);
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.lpszClassName = kFrameClass;
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
    RegisterClasses();
    const char* pageClass = ownDC ? kOwnDCPageClass : kPageClass;
    WNDCLASSA windowClass = {};
    if (!GetClassInfoA(GetModuleHandleA(nullptr), pageClass, &windowClass)) {
        windowClass.style = ownDC ? CS_OWNDC : 0;
        windowClass.hInstance = GetModuleHandleA(nullptr);
        windowClass.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));
        windowClass.hbrBackground = CreateSolidBrush(kDialogFace);
        windowClass.lpfnWndProc = PageProc;
        windowClass.lpszClassName = pageClass;
        RegisterClassA(&windowClass);
    }
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
    DispatchPending();
}

void ControlPage::Mouse(UINT message, int x, int y) {
    const WPARAM buttons = message == WM_LBUTTONUP ? 0 : MK_LBUTTON;
    PostMessageA(page, message, buttons, MAKELPARAM(x, y));
    DispatchPending();
}

void DispatchPending() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

void PumpFor(DWORD milliseconds) {
    const DWORD start = GetTickCount();
    for (;;) {
        DispatchPending();
        const DWORD elapsed = GetTickCount() - start;
        if (elapsed >= milliseconds) break;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, milliseconds - elapsed, QS_ALLINPUT);
    }
}

std::vector<uint32_t> ExpectedText(HWND window, const std::string& text, COLORREF backColor,
                                   SIZE* size) {
    HDC windowDC = GetDC(window);
    HGDIOBJ font = GetCurrentObject(windowDC, OBJ_FONT);
    SIZE extent = {};
    GetTextExtentPoint32A(windowDC, text.data(), static_cast<int>(text.size()), &extent);
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = extent.cx;
    info.bmiHeader.biHeight = -extent.cy;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    HDC memory = CreateCompatibleDC(windowDC);
    HBITMAP section = CreateDIBSection(windowDC, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ oldBitmap = SelectObject(memory, section);
    HGDIOBJ oldFont = SelectObject(memory, font);
    SetBkMode(memory, OPAQUE);
    SetBkColor(memory, backColor);
    SetTextColor(memory, GetTextColor(windowDC));
    TextOutA(memory, 0, 0, text.data(), static_cast<int>(text.size()));
    GdiFlush();
    std::vector<uint32_t> pixels(static_cast<size_t>(extent.cx) * extent.cy);
    const auto* words = static_cast<const uint32_t*>(bits);
    for (size_t i = 0; i < pixels.size(); ++i) pixels[i] = words[i] & 0x00FFFFFF;
    SelectObject(memory, oldFont);
    SelectObject(memory, oldBitmap);
    DeleteObject(section);
    DeleteDC(memory);
    ReleaseDC(window, windowDC);
    *size = extent;
    return pixels;
}

}  // namespace tessellum::test
