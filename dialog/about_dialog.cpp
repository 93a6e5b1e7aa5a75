// The About selector: a small modal box with the plug-in's name and version.
#include <windows.h>

#include "controls/thread_dpi.h"
#include "dialog/scaled_dialog.h"
#include "host/dll_instance.h"
#include "host/filter_globals.h"
#include "resources/resource_ids.h"

namespace tessellum {
namespace {

// Every command but OK is taken and ignored, so Escape (id 2) leaves the box open.
INT_PTR CALLBACK AboutDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM /*lParam*/) {
    switch (message) {
        case WM_INITDIALOG: return TRUE;
        case WM_COMMAND:
            if (LOWORD(wParam) == IDOK) EndDialog(dialog, 1);
            return TRUE;
        default: return FALSE;
    }
}

}  // namespace

void DoAbout(FilterGlobals& globals) {
    const auto* about = reinterpret_cast<const AboutRecord*>(globals.filterRecord);
    HWND parent = about->platformData ? static_cast<HWND>(about->platformData->hwnd) : nullptr;
    // Whether the box could be made is not looked at: About always reports 0.
    const ThreadDpiScope scale;
    ScaledDialogBox(hDllInstance, IDD_ABOUT, parent, AboutDialogProc);
}

}  // namespace tessellum
