#include "controls/small_bitmap_table.h"

#include "controls/dpi_scale.h"
#include "host/dll_instance.h"
#include "resources/resource_ids.h"
#include "storage/error_code.h"

namespace tessellum {
namespace {

SmallBitmap table[] = {{nullptr, 0, 0, IDB_SLIDER_THUMB},
                       {nullptr, 0, 0, IDB_THUMB_WIPE},
                       {nullptr, 0, 0, IDB_ARROW_RIGHT},
                       {nullptr, 0, 0, IDB_ARROW_LEFT}};
HDC sharedDC = nullptr;

}  // namespace

void LoadSmallBitmaps(HWND window, int32_t dpi) {
    FreeSmallBitmaps();  // a second load replaces the first instead of leaking it
    for (SmallBitmap& record : table) {
        record.bitmap = LoadBitmapA(hDllInstance, MAKEINTRESOURCEA(ArtResourceId(record.id, dpi)));
        BITMAP description = {};
        if (record.bitmap && GetObjectA(record.bitmap, sizeof description, &description)) {
            record.width = description.bmWidth;
            record.height = description.bmHeight;
        }
    }
    HDC windowDC = GetDC(window);
    if (!windowDC) throw ErrNoMemory;
    sharedDC = CreateCompatibleDC(windowDC);
    ReleaseDC(window, windowDC);
    if (!sharedDC) throw ErrNoMemory;
}

void FreeSmallBitmaps() {
    for (SmallBitmap& record : table) {
        if (record.bitmap) DeleteObject(record.bitmap);
        record.bitmap = nullptr;
        record.width = record.height = 0;
    }
    if (sharedDC) DeleteDC(sharedDC);
    sharedDC = nullptr;
}

void DrawSmallBitmap(HWND window, int32_t x, int32_t y, uint32_t id) {
    if (!window) return;
    HDC dc = GetDC(window);
    if (!dc) throw ErrNoMemory;
    for (const SmallBitmap& record : table) {
        if (record.id != id) continue;
        if (record.bitmap && sharedDC) {
            HGDIOBJ old = SelectObject(sharedDC, record.bitmap);
            BitBlt(dc, x, y, record.width, record.height, sharedDC, 0, 0, SRCCOPY);
            SelectObject(sharedDC, old);
        }
        break;
    }
    ReleaseDC(window, dc);
}

}  // namespace tessellum
