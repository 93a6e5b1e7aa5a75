// The plug-in's dialogs made from their templates at the display's scale: at 96 DPI as
// the templates stand; at any other, from a copy whose font is an outline face, so the
// dialog grows with the DPI as the self-drawn controls do (dialog/dialog_template.h).
#pragma once

#include <windows.h>

namespace tessellum {

INT_PTR ScaledDialogBox(HINSTANCE instance, int id, HWND parent, DLGPROC procedure);
HWND ScaledCreateDialog(HINSTANCE instance, int id, HWND parent, DLGPROC procedure);

}  // namespace tessellum
