// The magnified view of the Pattern in force on the Pattern Fill page: a 127 by 127
// self-drawn control in which each cell of the square in force is a block. A click
// paints a cell, erases it or picks its colour, by the tool selected; a drag with the
// pencil or the eraser paints every cell it enters.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>

#include "color/pattern.h"
#include "controls/editor_tool.h"
#include "controls/grid_stroke.h"
#include "controls/offscreen_bitmap.h"

namespace tessellum {

class GridEditor {
public:
    // `patternHolder` is the address of the dialog's pointer to the Pattern in force; it
    // is followed anew at every paint and click, so the editor always works on the
    // Pattern in force. Builds the picture with its frame, at the size for `dpi`;
    // GridSize 2, the pencil. Throws ErrNoMemory.
    GridEditor(HWND page, Pattern** patternHolder, int32_t x, int32_t y, int32_t dpi = 96);
    GridEditor(const GridEditor&) = delete;
    GridEditor& operator=(const GridEditor&) = delete;

    // False, and nothing else, when the size is the one shown; else repaints for it.
    bool ChangeGridSize(uint8_t size);
    // Another place and DPI: the picture takes that DPI's size; repainted by the next
    // RedrawGrid. Throws ErrNoMemory.
    void SetPlace(int32_t left, int32_t top, int32_t newDpi);
    // Repaints the grid from the Pattern and copies it to the page.
    void RedrawGrid();
    void Draw();

    // Over the cells (at 96 DPI bitmap columns and rows 4 to 123), in page client
    // coordinates.
    bool HitTest(int32_t pointX, int32_t pointY) const;
    // The mouse-down of the page: true if the cell or the fore colour changed.
    bool HandleClick(intptr_t lParam);
    // A mouse move of the page: true if it entered a cell of a stroke and painted it.
    bool HandleDrag(intptr_t lParam, bool buttonHeld);
    void EndStroke() { stroke.End(); }

    void SetTool(EditorTool value) { tool = value; }
    void SetForeColor(uint8_t red, uint8_t green, uint8_t blue) { foreColor = {red, green, blue}; }
    void GetForeColor(uint8_t* red, uint8_t* green, uint8_t* blue) const;
    void SetBackColor(uint8_t red, uint8_t green, uint8_t blue) { backColor = {red, green, blue}; }
    void GetBackColor(uint8_t* red, uint8_t* green, uint8_t* blue) const;

    uint8_t GridSize() const { return gridSize; }
    EditorTool Tool() const { return tool; }
    const OffscreenBitmap& Bitmap() const { return *bitmap; }
    int32_t X() const { return x; }
    int32_t Y() const { return y; }
    int32_t Dpi() const { return dpi; }

private:
    // The cell under a point of the page, false outside the cells.
    bool CellAt(intptr_t lParam, GridCell* cell) const;
    // The selected tool on one cell: true if the cell or the fore colour changed.
    bool ApplyTool(GridCell hit);

    Pattern** patternHolder;
    std::unique_ptr<OffscreenBitmap> bitmap;
    uint8_t gridSize = 2;
    int32_t x;
    int32_t y;
    EditorTool tool = kToolPencil;
    Rgb8 foreColor = {0, 0, 0};
    Rgb8 backColor = {255, 255, 255};
    GridStroke stroke;
    int32_t dpi;
};

}  // namespace tessellum
