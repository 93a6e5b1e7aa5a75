#include "controls/cursor_set.h"

#include <new>

#include "host/dll_instance.h"
#include "resources/resource_ids.h"
#include "storage/error_code.h"

namespace tessellum {

CursorSet::CursorSet() : cursors(new (std::nothrow) HCURSOR[4]()) {
    if (!cursors) throw ErrNoMemory;
}

void CursorSet::Load() {
    cursors[kArrow] = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));  // IDC_ARROW
    cursors[0] = LoadCursorA(hDllInstance, MAKEINTRESOURCEA(IDCUR_PENCIL));
    cursors[1] = LoadCursorA(hDllInstance, MAKEINTRESOURCEA(IDCUR_DROPPER));
    cursors[2] = LoadCursorA(hDllInstance, MAKEINTRESOURCEA(IDCUR_ERASER));
}

}  // namespace tessellum
