#include "tools/host/host_window.h"

#include <commctrl.h>

#include <algorithm>
#include <vector>

#include "controls/dpi_scale.h"
#include "controls/user32_function.h"
#include "tools/host/image_fit.h"

namespace tessellum::host {
namespace {

constexpr char kEmptyClass[] = "TessellumHostWindow";
constexpr char kImageClass[] = "TessellumHostImage";
constexpr int kLeastWidth = 640, kLeastHeight = 480;  // at 96 DPI: a small image is shown larger

#ifndef WM_DPICHANGED
#define WM_DPICHANGED 0x02E0
#endif

// The display's DPI as this process sees it.
int DisplayDpi() {
    HDC screen = GetDC(nullptr);
    const int dpi = screen ? GetDeviceCaps(screen, LOGPIXELSY) : kBaseDpi;
    if (screen) ReleaseDC(nullptr, screen);
    return SaneDpi(dpi);
}

// What the window shows: the image as 32-bit BGRX rows, top row first, ready for GDI.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<uint32_t> pixels;
    std::optional<Rect> area;
};

void CopyImage(const Image& image, Picture& picture) {
    picture.width = image.width;
    picture.height = image.height;
    picture.pixels.resize(static_cast<size_t>(image.width) * image.height);
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            const uint8_t* p = image.At(x, y);
            const bool colour = image.planes >= 3;  // grey planes repeat; alpha is not shown
            const uint32_t r = p[0], g = colour ? p[1] : p[0], b = colour ? p[2] : p[0];
            picture.pixels[static_cast<size_t>(y) * image.width + x] = r << 16 | g << 8 | b;
        }
    }
}

void Paint(HWND window, const Picture& picture) {
    PAINTSTRUCT paint;
    HDC dc = BeginPaint(window, &paint);
    RECT client;
    GetClientRect(window, &client);
    const ScreenBox box = FitImage(picture.width, picture.height, client.right, client.bottom);
    // The grey around the picture, leaving the picture's own pixels to StretchDIBits.
    ExcludeClipRect(dc, box.left, box.top, box.left + box.width, box.top + box.height);
    FillRect(dc, &client, GetSysColorBrush(COLOR_APPWORKSPACE));
    SelectClipRgn(dc, nullptr);
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = picture.width;
    info.bmiHeader.biHeight = -picture.height;  // top row first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    // Averaged when shrunk; when enlarged, every pixel a sharp block, as a paint program
    // shows a close-up.
    SetStretchBltMode(dc, box.width < picture.width ? HALFTONE : COLORONCOLOR);
    SetBrushOrgEx(dc, 0, 0, nullptr);
    StretchDIBits(dc, box.left, box.top, box.width, box.height, 0, 0, picture.width, picture.height,
                  picture.pixels.data(), &info, DIB_RGB_COLORS, SRCCOPY);
    if (picture.area) {
        // Black and white dots, as a paint program marks a selection: seen on any colour.
        const Rect& a = *picture.area;
        const ScreenBox r =
            MapRect(box, picture.width, picture.height, a.top, a.left, a.bottom, a.right);
        HPEN pen = CreatePen(PS_DOT, 1, RGB(0, 0, 0));
        HGDIOBJ oldPen = SelectObject(dc, pen);
        HGDIOBJ oldBrush = SelectObject(dc, GetStockObject(NULL_BRUSH));
        SetBkMode(dc, OPAQUE);
        SetBkColor(dc, RGB(255, 255, 255));
        Rectangle(dc, r.left, r.top, r.left + std::max(r.width, 1), r.top + std::max(r.height, 1));
        SelectObject(dc, oldBrush);
        DeleteObject(SelectObject(dc, oldPen));
    }
    EndPaint(window, &paint);
}

LRESULT CALLBACK ImageWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* picture = reinterpret_cast<Picture*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    switch (message) {
        case WM_NCCREATE: {
            const auto* create = reinterpret_cast<const CREATESTRUCTA*>(lParam);
            SetWindowLongPtrA(window, GWLP_USERDATA,
                              reinterpret_cast<LONG_PTR>(create->lpCreateParams));
            break;
        }
        case WM_ERASEBKGND: return 1;  // the paint covers every pixel
        case WM_DPICHANGED: {  // another monitor's scale: the size it offers, the view refits
            const auto* offered = reinterpret_cast<const RECT*>(lParam);
            SetWindowPos(window, nullptr, offered->left, offered->top,
                         offered->right - offered->left, offered->bottom - offered->top,
                         SWP_NOZORDER | SWP_NOACTIVATE);
            return 0;
        }
        case WM_PAINT:
            if (!picture) break;
            Paint(window, *picture);
            return 0;
        case WM_NCDESTROY:
            delete picture;
            SetWindowLongPtrA(window, GWLP_USERDATA, 0);
            break;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

void RegisterWindowClass(const char* name, WNDPROC procedure, UINT style) {
    INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_TAB_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);
    WNDCLASSA windowClass = {};
    windowClass.style = style;
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));  // IDC_ARROW
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_APPWORKSPACE + 1);
    windowClass.lpszClassName = name;
    RegisterClassA(&windowClass);  // fails harmlessly when already registered
}

}  // namespace

void MakeProcessDpiAware() {
    using SetContext = BOOL(WINAPI*)(void*);
    if (const SetContext set = User32Function<SetContext>("SetProcessDpiAwarenessContext")) {
        for (intptr_t context : {-4, -3, -2})  // per-monitor v2, per-monitor, system
            if (set(reinterpret_cast<void*>(context))) return;
    }
    SetProcessDPIAware();
}

HWND MakeHostWindow(const std::string& title) {
    RegisterWindowClass(kEmptyClass, DefWindowProcA, 0);
    return CreateWindowExA(0, kEmptyClass, title.c_str(), WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                           640, 480, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
}

HWND MakeHostWindow(const std::string& title, const Image& image, const std::optional<Rect>& area) {
    RegisterWindowClass(kImageClass, ImageWindowProc, CS_HREDRAW | CS_VREDRAW);
    auto* picture = new Picture;
    CopyImage(image, *picture);
    picture->area = area;
    // The image at its own size, at the display's scale, where the screen has room; a
    // small one larger.
    const int dpi = DisplayDpi();
    const int imageWidth = ScaleToDpi(image.width, dpi),
              imageHeight = ScaleToDpi(image.height, dpi);
    const DWORD style = WS_OVERLAPPEDWINDOW | WS_VISIBLE;
    RECT work = {0, 0, 1024, 768}, frame = {0, 0, 0, 0};
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    AdjustWindowRectEx(&frame, style, FALSE, 0);
    const int roomWidth = (work.right - work.left) - (frame.right - frame.left);
    const int roomHeight = (work.bottom - work.top) - (frame.bottom - frame.top);
    const ScreenBox client =
        FitImage(image.width, image.height,
                 std::min(roomWidth, std::max(imageWidth, ScaleToDpi(kLeastWidth, dpi))),
                 std::min(roomHeight, std::max(imageHeight, ScaleToDpi(kLeastHeight, dpi))));
    const int width = std::max(client.width, 1) + (frame.right - frame.left);
    const int height = std::max(client.height, 1) + (frame.bottom - frame.top);
    HWND window = CreateWindowExA(0, kImageClass, title.c_str(), style,
                                  work.left + (work.right - work.left - width) / 2,
                                  work.top + (work.bottom - work.top - height) / 2, width, height,
                                  nullptr, nullptr, GetModuleHandleA(nullptr), picture);
    if (!window) delete picture;
    return window;
}

void ShowImage(HWND window, const Image& image) {
    auto* picture = reinterpret_cast<Picture*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (!picture) return;
    CopyImage(image, *picture);
    InvalidateRect(window, nullptr, FALSE);
    UpdateWindow(window);
}

void ShowUntilClosed(HWND window) {
    MSG message;
    while (IsWindow(window) && GetMessageA(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

}  // namespace tessellum::host
