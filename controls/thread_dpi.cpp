#include "controls/thread_dpi.h"

#include "controls/dpi_scale.h"
#include "controls/user32_function.h"

namespace tessellum {
namespace {

using SetContext = void*(WINAPI*)(void*);
using GetDpi = UINT(WINAPI*)(HWND);

// The contexts asked for, best first: per-monitor v2 (re-lays out a template dialog on a
// DPI change), per-monitor, system aware. Never unaware or GDI-scaled: Windows stretches
// those windows as bitmaps, and they look soft.
void* const kWanted[] = {reinterpret_cast<void*>(intptr_t{-4}),
                         reinterpret_cast<void*>(intptr_t{-3}),
                         reinterpret_cast<void*>(intptr_t{-2})};

}  // namespace

ThreadDpiScope::ThreadDpiScope() {
    const SetContext set = User32Function<SetContext>("SetThreadDpiAwarenessContext");
    if (!set) return;
    for (void* wanted : kWanted) {
        // It gives the old context, or null when it refuses this one.
        if ((previous = set(wanted)) != nullptr) return;
    }
}

ThreadDpiScope::~ThreadDpiScope() {
    const SetContext set = User32Function<SetContext>("SetThreadDpiAwarenessContext");
    if (previous && set) set(previous);
}

int32_t DisplayDpi() {
    return WindowDpi(nullptr);
}

int32_t WindowDpi(HWND window) {
    if (const GetDpi get = window ? User32Function<GetDpi>("GetDpiForWindow") : nullptr) {
        if (const UINT dpi = get(window)) return SaneDpi(static_cast<int32_t>(dpi));
    }
    HDC dc = GetDC(window);
    if (!dc) return kBaseDpi;
    const int dpi = GetDeviceCaps(dc, LOGPIXELSY);
    ReleaseDC(window, dc);
    return SaneDpi(dpi > 0 ? dpi : kBaseDpi);
}

}  // namespace tessellum
