// Lays the stored tile over one band of the host's output buffer.
#pragma once

#include <cstddef>
#include <cstdint>

#include "color/pattern.h"

namespace tessellum {

// Writes `rows` rows of `width` interleaved RGB pixels, `rowBytes` apart, starting at
// `out`. Row i takes tile row i (modulo the GridSize), column j tile column j modulo the
// GridSize, which must already be made valid (2 to 8), so every band starts at tile row 0
// and column 0. Bytes past 3 * width in a
// row are not touched. Allocates nothing.
void FillBand(uint8_t* out, ptrdiff_t rowBytes, int rows, int width, const Pattern& tile,
              int gridSize);

}  // namespace tessellum
