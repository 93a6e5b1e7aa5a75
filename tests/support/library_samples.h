// Libraries built for tests and measurements, and a field-by-field comparison.
#pragma once

#include <cstdint>
#include <string>

#include "color/color_library.h"

namespace tessellum::test {

ColorList* AddList(ColorLibrary& library, const std::string& name);
// A colour whose 192 bytes follow from `seed`, so every cell of two colours differs.
ColorEntry* AddColor(ColorList& list, const std::string& name, uint8_t gridSize, uint32_t seed);
NamedPalette* AddPalette(ColorLibrary& library, const std::string& name, uint32_t count,
                         uint32_t seed);

// `lists` lists of `colors` colours and `palettes` palettes of 256 colours, with names of
// every length from 0 to 255 and every byte but NUL.
ColorLibrary* MakeSampleLibrary(int lists, int colors, int palettes);

// Empty when both hold the same lists, colours, palettes, names and bytes in the same
// order; otherwise the first difference.
std::string CompareLibraries(const ColorLibrary& expected, const ColorLibrary& actual);

}  // namespace tessellum::test
