#include "tools/host/host_window.h"

#include <commctrl.h>

namespace tessellum::host {

HWND MakeHostWindow(const std::string& title) {
    INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_TAB_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);
    static const char kClass[] = "TessellumHostWindow";
    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));  // IDC_ARROW
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_APPWORKSPACE + 1);
    windowClass.lpszClassName = kClass;
    RegisterClassA(&windowClass);  // fails harmlessly when already registered
    return CreateWindowExA(0, kClass, title.c_str(), WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 640,
                           480, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
}

}  // namespace tessellum::host
