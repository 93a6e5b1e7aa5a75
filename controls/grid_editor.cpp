#include "controls/grid_editor.h"

#include <new>

#include "controls/grid_geometry.h"
#include "controls/grid_painter.h"
#include "controls/mouse_point.h"
#include "storage/error_code.h"

namespace tessellum {

GridEditor::GridEditor(HWND page, Pattern** patternHolder, int32_t x, int32_t y)
    : patternHolder(patternHolder),
      bitmap(new (std::nothrow) OffscreenBitmap(page, kGridEditorSide, kGridEditorSide, true)),
      x(x),
      y(y) {
    if (!bitmap) throw ErrNoMemory;
    bitmap->PaintInsetFrame();
}

bool GridEditor::ChangeGridSize(uint8_t size) {
    if (size == gridSize) return false;
    gridSize = size;
    RedrawGrid();
    return true;
}

void GridEditor::RedrawGrid() {
    const Pattern* cells = patternHolder ? *patternHolder : nullptr;
    PaintPatternGrid(bitmap->bits, bitmap->width, bitmap->height, cells, gridSize);
    Draw();
}

void GridEditor::Draw() {
    bitmap->Blit(x, y, 0, 0, kGridEditorSide, kGridEditorSide);
}

bool GridEditor::HitTest(int32_t pointX, int32_t pointY) const {
    return InGridArea(int64_t{pointX} - x - kGridCellOrigin, int64_t{pointY} - y - kGridCellOrigin);
}

bool GridEditor::CellAt(intptr_t lParam, GridCell* cell) const {
    const MousePoint point = PointFromLParam(lParam);
    const int64_t px = int64_t{point.x} - x - kGridCellOrigin;
    const int64_t py = int64_t{point.y} - y - kGridCellOrigin;
    if (!InGridArea(px, py)) return false;
    *cell = GridCellAt(px, py, gridSize);
    return true;
}

bool GridEditor::HandleClick(intptr_t lParam) {
    GridCell hit = {0, 0};
    const bool overCell = CellAt(lParam, &hit);
    stroke.Begin(tool, overCell, hit);
    return overCell && ApplyTool(hit);
}

bool GridEditor::HandleDrag(intptr_t lParam, bool buttonHeld) {
    GridCell hit = {0, 0};
    const bool overCell = CellAt(lParam, &hit);
    return stroke.Enter(buttonHeld, overCell, hit) && ApplyTool(hit);
}

bool GridEditor::ApplyTool(GridCell hit) {
    Pattern* cells = patternHolder ? *patternHolder : nullptr;
    if (!cells) return false;
    switch (ApplyEditorTool(tool, cells->Cell(hit.row, hit.column), foreColor, backColor)) {
        case ToolEffect::kNone: return false;
        case ToolEffect::kCellPainted: RedrawGrid(); return true;
        case ToolEffect::kForeColorSet: return true;
    }
    return false;
}

void GridEditor::GetForeColor(uint8_t* red, uint8_t* green, uint8_t* blue) const {
    *red = foreColor.red;
    *green = foreColor.green;
    *blue = foreColor.blue;
}

void GridEditor::GetBackColor(uint8_t* red, uint8_t* green, uint8_t* blue) const {
    *red = backColor.red;
    *green = backColor.green;
    *blue = backColor.blue;
}

}  // namespace tessellum
