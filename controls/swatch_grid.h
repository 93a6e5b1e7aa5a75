// The field of colour cells at the foot of the Pattern Fill page: up to 256 colours of a
// Palette in 32 columns by 8 rows, the chosen cell marked by a red and white frame. It
// is no Control: it has its own hit arithmetic, and owns only its bitmap.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>

#include "color/palette.h"
#include "controls/offscreen_bitmap.h"

namespace tessellum {

class SwatchGrid {
public:
    // Builds the picture for cells of that size (pixels, without their lines) and lines
    // `line` pixels wide. No palette, no highlight. Throws ErrNoMemory, also for cells
    // too large to picture.
    SwatchGrid(HWND owner, int32_t x, int32_t y, uint32_t cellWidth, uint32_t cellHeight,
               uint32_t line = 1);
    SwatchGrid(const SwatchGrid&) = delete;
    SwatchGrid& operator=(const SwatchGrid&) = delete;

    // Index 0 chosen and the highlight shown from now on.
    void SelectFirst();
    // Another place and cells (another DPI): a new picture, painted by the next Paint.
    // Throws ErrNoMemory.
    void SetPlace(int32_t left, int32_t top, uint32_t newCellWidth, uint32_t newCellHeight,
                  uint32_t newLine);
    // Shows that palette (not owned; may be null); the selection stays at its index.
    void SetPalette(const Palette* value);
    // Repaints the whole picture and copies it to the owner.
    void Paint();
    void Draw();

    // Over the 32 by 8 cells, whether or not a colour stands there.
    bool IsOver(int32_t pointX, int32_t pointY) const;
    // The mouse-down of the page: true if it chose another colour of the palette.
    bool HandleClick(intptr_t lParam);
    uint8_t Selected() const { return selected; }

    // The page reads the palette and the selection to fetch the colour clicked.
    std::unique_ptr<OffscreenBitmap> bitmap;
    const Palette* palette = nullptr;
    int32_t x;
    int32_t y;
    uint32_t cellWidth;
    uint32_t cellHeight;
    uint8_t selected = 0;
    uint8_t selectionVisible = 0;
    uint32_t line;
};

}  // namespace tessellum
