// Library load: remember the module and register the plug-in's window class.
#include <windows.h>

#include "host/dll_instance.h"

namespace tessellum {

HINSTANCE hDllInstance = nullptr;

namespace {

LRESULT CALLBACK GridSelectionProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return DefWindowProcA(window, message, wParam, lParam);
}

void RegisterGridSelectionClass(HINSTANCE instance) {
    WNDCLASSEXA windowClass = {};
    windowClass.cbSize = sizeof(WNDCLASSEXA);
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.lpfnWndProc = GridSelectionProc;
    windowClass.hInstance = instance;
    windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    windowClass.lpszClassName = "GRIDSELECTION";
    RegisterClassExA(&windowClass);  // a failure is not noticed: the load succeeds
}

}  // namespace
}  // namespace tessellum

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) {
        tessellum::hDllInstance = instance;
        tessellum::RegisterGridSelectionClass(instance);
    }
    return TRUE;
}
