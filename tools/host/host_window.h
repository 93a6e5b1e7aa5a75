// The window our host shows while it runs a plug-in, as a paint program's main window:
// the parent of every dialog the plug-in opens.
#pragma once

#include <windows.h>

#include <string>

namespace tessellum::host {

// Registers the common controls (the tab control among them) in this process, as every
// paint program has, then shows a window with that title. Null if it cannot be made.
HWND MakeHostWindow(const std::string& title);

}  // namespace tessellum::host
