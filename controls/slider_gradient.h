// The gradient of one slider bar: each interior column shows the colour its channel
// would make, the other two channels as they stand.
#pragma once

#include <cstdint>

#include "controls/pixel_word.h"
#include "controls/slider_geometry.h"

namespace tessellum {

struct SliderGradient {
    PixelWord start;  // the word of interior column 1
    PixelWord step;   // added from one column to the next
};

// Row 0 moves red, row 1 green, row 2 blue, starting from 0 with the other two channels
// kept. A disabled bar is flat white.
SliderGradient GradientOfRow(int row, uint8_t red, uint8_t green, uint8_t blue, bool enabled);

// Writes the gradient inside a border `line` pixels wide: memory rows line to height -
// line - 1, and `columns` columns from column `line` (fewer on a narrower store), column
// j showing step number j * 128 / columns. The border pixels keep what they hold. The
// defaults are the 96-DPI bar: rows 1 to height - 2, columns 1 to 128, a step a column.
void FillSliderBar(PixelWord* bits, uint32_t width, uint32_t height, SliderGradient gradient,
                   uint32_t line = 1, uint32_t columns = kSliderBarColumns);

}  // namespace tessellum
