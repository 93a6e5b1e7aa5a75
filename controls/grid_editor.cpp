#include "controls/grid_editor.h"

#include <new>

#include "controls/grid_geometry.h"
#include "controls/grid_painter.h"
#include "controls/mouse_point.h"
#include "storage/error_code.h"

namespace tessellum {

namespace {

uint32_t SideAt(int32_t dpi) {
    return static_cast<uint32_t>(GridLayoutAt(2, dpi).side);
}

}  // namespace

GridEditor::GridEditor(HWND page, Pattern** patternHolder, int32_t x, int32_t y, int32_t dpi)
    : patternHolder(patternHolder),
      bitmap(new (std::nothrow) OffscreenBitmap(page, SideAt(dpi), SideAt(dpi), true)),
      x(x),
      y(y),
      dpi(dpi) {
    if (!bitmap) throw ErrNoMemory;
    PaintPatternGridFrame(bitmap->bits, bitmap->width, bitmap->height, gridSize, dpi);
}

void GridEditor::SetPlace(int32_t left, int32_t top, int32_t newDpi) {
    x = left;
    y = top;
    dpi = newDpi;
    bitmap->Resize(SideAt(dpi), static_cast<int32_t>(SideAt(dpi)));
}

bool GridEditor::ChangeGridSize(uint8_t size) {
    if (size == gridSize) return false;
    gridSize = size;
    RedrawGrid();
    return true;
}

void GridEditor::RedrawGrid() {
    const Pattern* cells = patternHolder ? *patternHolder : nullptr;
    // The frame follows the GridSize where the DPI's pitch leaves slack round the grid.
    PaintPatternGridFrame(bitmap->bits, bitmap->width, bitmap->height, gridSize, dpi);
    PaintPatternGrid(bitmap->bits, bitmap->width, bitmap->height, cells, gridSize, dpi);
    Draw();
}

void GridEditor::Draw() {
    bitmap->Blit(x, y, 0, 0, static_cast<int32_t>(bitmap->width),
                 static_cast<int32_t>(bitmap->height));
}

bool GridEditor::HitTest(int32_t pointX, int32_t pointY) const {
    GridCell cell = {0, 0};
    return GridCellAtPoint(int64_t{pointX} - x, int64_t{pointY} - y, GridLayoutAt(gridSize, dpi),
                           &cell);
}

bool GridEditor::CellAt(intptr_t lParam, GridCell* cell) const {
    const MousePoint point = PointFromLParam(lParam);
    return GridCellAtPoint(int64_t{point.x} - x, int64_t{point.y} - y, GridLayoutAt(gridSize, dpi),
                           cell);
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
