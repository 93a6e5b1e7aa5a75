// The three drawing tools of the pattern editor, side by side: pencil, dropper, eraser.
// The selected tool shows its second picture (white on black); its index is an EditorTool.
#pragma once

#include <windows.h>

#include <cstdint>

#include "controls/editor_tool.h"
#include "controls/toggle_image_button.h"
#include "controls/tool_row.h"

namespace tessellum {

class ToolGroup : public ToolRow<ToggleImageButton> {
public:
    // Builds the buttons left to right from x with their pictures for `dpi`, selects the
    // pencil. Throws ErrNoMemory.
    ToolGroup(HWND owner, int32_t x, int32_t y, HINSTANCE instance, const uint32_t (&primaryIds)[3],
              const uint32_t (&secondaryIds)[3], int32_t dpi = 96);
};

}  // namespace tessellum
