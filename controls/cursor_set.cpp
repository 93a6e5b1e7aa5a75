#include "controls/cursor_set.h"

#include <new>

#include "controls/dpi_scale.h"
#include "host/dll_instance.h"
#include "resources/resource_ids.h"
#include "storage/error_code.h"

namespace tessellum {

CursorSet::CursorSet() : cursors(new (std::nothrow) HCURSOR[4]()) {
    if (!cursors) throw ErrNoMemory;
}

CursorSet::~CursorSet() {
    Free();
}

void CursorSet::Free() {
    for (uint32_t i = 0; owned && i < kArrow; ++i) {
        if (cursors[i]) DestroyCursor(cursors[i]);
        cursors[i] = nullptr;
    }
    owned = false;
}

void CursorSet::Load(int32_t dpi) {
    Free();
    cursors[kArrow] = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));  // IDC_ARROW
    const uint32_t ids[3] = {IDCUR_PENCIL, IDCUR_DROPPER, IDCUR_ERASER};
    if (ArtStepOf(dpi) == 0) {
        for (uint32_t i = 0; i < 3; ++i)
            cursors[i] = LoadCursorA(hDllInstance, MAKEINTRESOURCEA(ids[i]));
        return;
    }
    // At its own size: LoadCursorA would stretch a pointer to the system's size.
    owned = true;
    for (uint32_t i = 0; i < 3; ++i) {
        cursors[i] = static_cast<HCURSOR>(LoadImageA(hDllInstance,
                                                     MAKEINTRESOURCEA(ArtResourceId(ids[i], dpi)),
                                                     IMAGE_CURSOR, 0, 0, LR_DEFAULTCOLOR));
    }
}

}  // namespace tessellum
