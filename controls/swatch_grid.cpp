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

SwatchGrid::SwatchGrid(HWND owner, int32_t x, int32_t y, uint32_t cellWidth, uint32_t cellHeight)
    : x(x), y(y), cellWidth(cellWidth), cellHeight(cellHeight) {
    const uint32_t width = CheckedSide(SwatchBitmapWidth(cellWidth));
    const uint32_t height = CheckedSide(SwatchBitmapHeight(cellHeight));
    bitmap.reset(new (std::nothrow) OffscreenBitmap(owner, width, height, true));
    if (!bitmap) throw ErrNoMemory;
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
                    selected, selectionVisible != 0);
    Draw();
}

void SwatchGrid::Draw() {
    bitmap->Blit(x, y, 0, 0, static_cast<int32_t>(bitmap->width),
                 static_cast<int32_t>(bitmap->height));
}

bool SwatchGrid::IsOver(int32_t pointX, int32_t pointY) const {
    uint32_t index = 0;
    return SwatchIndexAt(SwatchOffset(pointX, x), SwatchOffset(pointY, y), cellWidth, cellHeight,
                         &index);
}

bool SwatchGrid::HandleClick(intptr_t lParam) {
    if (!palette) return false;
    const MousePoint point = PointFromLParam(lParam);
    uint32_t index = 0;
    if (!SwatchIndexAt(SwatchOffset(point.x, x), SwatchOffset(point.y, y), cellWidth, cellHeight,
                       &index)) {
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
