// The block behind the host's `parameters` handle. The host keeps it from run to
// run (and may store it with a document), so its 198 bytes are a stored format.
#pragma once

#include <cstddef>
#include <cstdint>

#include "color/pattern.h"

namespace tessellum {

#pragma pack(push, 1)
struct FilterParameters {
    uint8_t reserved0[2];        // never touched after allocation
    int16_t queryForParameters;  // non-zero: the next Start asks the dialog
    uint8_t gridSize;            // 0 until a first dialog ended with Fill
    Pattern tile;
    uint8_t reserved1;  // never touched after allocation
};
#pragma pack(pop)

static_assert(sizeof(FilterParameters) == 198, "FilterParameters is 198 bytes");
static_assert(offsetof(FilterParameters, queryForParameters) == 2, "flag at 2");
static_assert(offsetof(FilterParameters, gridSize) == 4, "GridSize at 4");
static_assert(offsetof(FilterParameters, tile) == 5, "tile at 5");

}  // namespace tessellum
