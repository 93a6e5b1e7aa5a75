// The window our host shows while it runs a plug-in, as a paint program's main window:
// the parent of every dialog the plug-in opens, showing the image behind them.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "host/plugin_records.h"
#include "tools/host/image.h"

namespace tessellum::host {

// As a current paint program starts: aware of each monitor's own scale (per-monitor v2
// where the system has it, else per-monitor, else system aware), so the plug-in's
// dialogs come up at the display's DPI. The first call of our host's program.
void MakeProcessDpiAware();

// Registers the common controls (the tab control among them) in this process, as every
// paint program has, then shows an empty window with that title. Null if it cannot be
// made.
HWND MakeHostWindow(const std::string& title);

// The same, showing a copy of `image` scaled to fit, with `area` (the filter rectangle)
// outlined when it is given; centred on the screen, where the dialogs come up. Its size
// and the image's view follow the display's scale, and a move to a monitor of another
// scale.
HWND MakeHostWindow(const std::string& title, const Image& image, const std::optional<Rect>& area);

// Shows `image` instead of the picture the window holds (the result of the run).
void ShowImage(HWND window, const Image& image);

// Handles the window's messages until the user closes it.
void ShowUntilClosed(HWND window);

}  // namespace tessellum::host
