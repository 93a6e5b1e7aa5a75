// The gradient of one slider bar: each interior column shows the colour its channel
// would make, the other two channels as they stand.
#pragma once

#include <cstdint>

#include "controls/pixel_word.h"

namespace tessellum {

// A bar is 130 pixels wide: a one-pixel border around 128 columns, which show the
// channel values 0, 2, ... 254 (255 is never shown).
constexpr uint32_t kSliderBarWidth = 130;
constexpr uint32_t kSliderBarColumns = 128;

struct SliderGradient {
    PixelWord start;  // the word of interior column 1
    PixelWord step;   // added from one column to the next
};

// Row 0 moves red, row 1 green, row 2 blue, starting from 0 with the other two channels
// kept. A disabled bar is flat white.
SliderGradient GradientOfRow(int row, uint8_t red, uint8_t green, uint8_t blue, bool enabled);

// Writes the gradient into memory rows 1 to height - 2 and columns 1 to 128 (fewer on a
// narrower store); the border pixels keep what they hold.
void FillSliderBar(PixelWord* bits, uint32_t width, uint32_t height, SliderGradient gradient);

}  // namespace tessellum
