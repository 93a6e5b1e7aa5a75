// The little pictures of the slider panel, loaded once per dialog and drawn at their
// own size through one shared memory context. Process-wide: one dialog at a time.
#pragma once

#include <windows.h>

#include <cstdint>

namespace tessellum {

struct SmallBitmap {
    HBITMAP bitmap;  // null where the resource did not load
    int32_t width;
    int32_t height;
    uint32_t id;
};

// Loads the four pictures from the plug-in as drawn for `dpi` (one that does not load
// stays null, without complaint) and makes the shared context. A second call replaces
// what the first loaded. Throws ErrNoMemory.
void LoadSmallBitmaps(HWND window, int32_t dpi = 96);
// Gives back the pictures and the context; harmless when nothing is loaded.
void FreeSmallBitmaps();
// Draws picture `id` (the 96-DPI number; the table holds the picture loaded for the
// DPI) with its top left corner at x, y. An id not in the table, or one
// that did not load, draws nothing. Throws ErrNoMemory if the window has no context.
void DrawSmallBitmap(HWND window, int32_t x, int32_t y, uint32_t id);

}  // namespace tessellum
