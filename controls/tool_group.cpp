#include "controls/tool_group.h"

#include <new>

#include "storage/error_code.h"

namespace tessellum {

ToolGroup::ToolGroup(HWND owner, int32_t x, int32_t y, HINSTANCE instance,
                     const uint32_t (&primaryIds)[3], const uint32_t (&secondaryIds)[3],
                     int32_t dpi) {
    for (uint32_t i = 0; i < kToolCount; ++i) {
        // Each button starts where the one before it ends: no gap, no overlap.
        const int32_t left = i == 0 ? x : x + static_cast<int32_t>(i) * buttons[i - 1]->Width();
        buttons[i].reset(new (std::nothrow) ToggleImageButton(owner, left, y, instance,
                                                              primaryIds[i], secondaryIds[i], dpi));
        if (!buttons[i]) throw ErrNoMemory;
    }
    selected = kToolPencil;
    buttons[selected]->Toggle();
}

}  // namespace tessellum
