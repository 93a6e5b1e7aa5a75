#include "controls/swatch_grid.h"

#include <limits>
#include <new>

#include "controls/mouse_point.h"
#include "controls/swatch_layout.h"
#include "controls/swatch_painter.h"
#include "storage/error_code.h"

namespace tessellum {
namespace {

// The picture's width and height, which must also fit the signed sizes of a copy.
uint32_t CheckedSide(uint64_t side) {
    if (side > static_cast<uint64_t>(std::numeric_limits<int32_t>::max())) throw ErrNoMemory;
    return static_cast<uint32_t>(side);
}

}  // namespace

SwatchGrid::SwatchGrid(HWND owner, int32_t x, int32_t y, uint32_t cellWidth, uint32_t cellHeight,
                       uint32_t line)
    : x(x), y(y), cellWidth(cellWidth), cellHeight(cellHeight), line(line) {
    const uint32_t width = CheckedSide(SwatchBitmapWidth(cellWidth, line));
    const uint32_t height = CheckedSide(SwatchBitmapHeight(cellHeight, line));
    bitmap.reset(new (std::nothrow) OffscreenBitmap(owner, width, height, true));
    if (!bitmap) throw ErrNoMemory;
}

void SwatchGrid::SetPlace(int32_t left, int32_t top, uint32_t newCellWidth, uint32_t newCellHeight,
                          uint32_t newLine) {
    const uint32_t width = CheckedSide(SwatchBitmapWidth(newCellWidth, newLine));
    const uint32_t height = CheckedSide(SwatchBitmapHeight(newCellHeight, newLine));
    bitmap->Resize(width, static_cast<int32_t>(height));
    x = left;
    y = top;
    cellWidth = newCellWidth;
    cellHeight = newCellHeight;
    line = newLine;
}

void SwatchGrid::SelectFirst() {
    selected = 0;
    selectionVisible = 1;
}

void SwatchGrid::SetPalette(const Palette* value) {
    palette = value;
    Paint();
}

void SwatchGrid::Paint() {
    PaintSwatchGrid(bitmap->bits, bitmap->width, bitmap->height, cellWidth, cellHeight, palette,
                    selected, selectionVisible != 0, line);
    Draw();
}

void SwatchGrid::Draw() {
    bitmap->Blit(x, y, 0, 0, static_cast<int32_t>(bitmap->width),
                 static_cast<int32_t>(bitmap->height));
}

bool SwatchGrid::IsOver(int32_t pointX, int32_t pointY) const {
    uint32_t index = 0;
    return SwatchIndexAt(SwatchOffset(pointX, x, line), SwatchOffset(pointY, y, line), cellWidth,
                         cellHeight, &index, line);
}

bool SwatchGrid::HandleClick(intptr_t lParam) {
    if (!palette) return false;
    const MousePoint point = PointFromLParam(lParam);
    uint32_t index = 0;
    if (!SwatchIndexAt(SwatchOffset(point.x, x, line), SwatchOffset(point.y, y, line), cellWidth,
                       cellHeight, &index, line)) {
        return false;
    }
    // An empty cell is ignored, and a click on the chosen one changes nothing.
    if (index >= palette->Count()) return false;
    if (index == selected && selectionVisible) return false;
    selectionVisible = 1;
    selected = static_cast<uint8_t>(index);
    Paint();
    return true;
}

}  // namespace tessellum
