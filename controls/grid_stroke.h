// Which cells a drag over the grid editor paints: with the pencil or the eraser, each
// cell that the mouse enters while the button is held, once per entry, as a click there
// would paint it. The eyedropper picks on the press alone. Portable, so that the rule is
// tested natively; the Win32 side (controls/grid_editor.h) provides the cell under the
// mouse, whether the button is held (MK_LBUTTON of the move), and the paint itself.
#pragma once

#include "controls/editor_tool.h"
#include "controls/grid_geometry.h"

namespace tessellum {

class GridStroke {
public:
    // The press: a stroke begins for the painting tools when it lands on a cell, so a
    // press elsewhere on the page that is dragged over the grid paints nothing.
    void Begin(int32_t tool, bool overCell, GridCell cell) {
        active = overCell && (tool == kToolPencil || tool == kToolEraser);
        inCell = overCell;
        last = cell;
    }
    // A move: true when it enters a cell that the stroke must paint. A move without the
    // button ends the stroke (its release happened elsewhere).
    bool Enter(bool buttonHeld, bool overCell, GridCell cell) {
        if (!buttonHeld) active = false;
        if (!active) return false;
        const bool entered =
            overCell && (!inCell || cell.row != last.row || cell.column != last.column);
        inCell = overCell;
        last = cell;
        return entered;
    }
    void End() { active = false; }

private:
    bool active = false;
    bool inCell = false;
    GridCell last = {0, 0};
};

}  // namespace tessellum
