// The grid editor's picture of a Pattern: each cell of the square in force as a block,
// black grid lines between them, inside the frame that the editor paints once.
#pragma once

#include <cstdint>

#include "color/pattern.h"
#include "controls/dpi_scale.h"
#include "controls/pixel_word.h"

namespace tessellum {

// Repaints columns 3 to 122 of rows 4 to 123 of a store of at least 124 by 124 words.
// Grid lines stand at 3 + k * pitch; cell (r, c) fills the pitch - 1 pixels after the
// lines of column c and row r. Column 123 and the frame are left alone: the frame's
// black ring closes every row. A null store or pattern, or a smaller store, is left as
// it is.
// At another DPI the same, by GridLayoutAt: lines and cells from the layout's origin.
void PaintPatternGrid(PixelWord* bits, uint32_t width, uint32_t height, const Pattern* cells,
                      uint8_t gridSize, int32_t dpi = kBaseDpi);

// The frame round the grid of that GridSize at that DPI, and the dialog's grey in the
// slack outside it; the cells are left alone. At 96 DPI the inset frame of the picture.
// A store of another size than the layout's side is left as it is.
void PaintPatternGridFrame(PixelWord* bits, uint32_t width, uint32_t height, uint8_t gridSize,
                           int32_t dpi);

}  // namespace tessellum
