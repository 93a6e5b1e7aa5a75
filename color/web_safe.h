// The arithmetic the product exists for: a colour outside the 216 web-safe colours
// becomes a 2x2 checker of two web-safe colours that the eye averages back to it.
#pragma once

#include <cstdint>

#include "color/pattern.h"

namespace tessellum {

constexpr int kWebSafeLevels = 6;
constexpr int kWebSafeStep = 51;  // component value of level L is L * 51
constexpr int kWebSafeColors = 216;
constexpr int kWebSafeTableEntries = 256;
constexpr int kWebSafeTableBytes = kWebSafeTableEntries * 3;

// Entries 0 to 215: entry 36r + 6g + b is (51r, 51g, 51b), red slowest. Entries 216 to
// 255 are white.
void FillWebSafeTable(uint8_t* destination);

// The two web-safe levels (0 to 5) whose checker is nearest to `value`: equal levels
// within 12 of a web-safe value, neighbouring levels in between.
void SplitComponent(uint8_t value, uint8_t* lower, uint8_t* upper);

// Table indices (0 to 215) of the checker's two colours. All lower levels go to the
// first and all upper levels to the second, so lower <= upper in every component.
void ColorToTileIndices(uint8_t red, uint8_t green, uint8_t blue, uint8_t* lowerIndex,
                        uint8_t* upperIndex);

// Cells (0,0) and (1,1) take table entry lowerIndex, (0,1) and (1,0) entry upperIndex.
// No other cell and not the GridSize.
void WriteTile(const uint8_t* table, Pattern& cells, uint8_t lowerIndex, uint8_t upperIndex);

// Mean of the square in force, rounded to nearest with halves going up. A GridSize
// outside the valid set is first made valid.
void MeanColor(const Pattern& cells, uint8_t gridSize, uint8_t* red, uint8_t* green, uint8_t* blue);

// The checker of a colour, written over the current tile; the GridSize stays.
void ColorToTile(const uint8_t* table, Pattern& cells, uint8_t red, uint8_t green, uint8_t blue);

// Collapses a pattern of any size to the checker nearest its mean and sets the GridSize
// to 2. Cells outside the 2x2 corner keep their content.
void ConvertToTile(const uint8_t* table, Pattern& cells, uint8_t* gridSize);

}  // namespace tessellum
