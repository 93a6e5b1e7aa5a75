#include "color/web_safe.h"

#include <cstring>

namespace tessellum {

void FillWebSafeTable(uint8_t* destination) {
    std::memset(destination, 0xFF, kWebSafeTableBytes);
    uint8_t* out = destination;
    for (int r = 0; r < kWebSafeLevels; ++r)
        for (int g = 0; g < kWebSafeLevels; ++g)
            for (int b = 0; b < kWebSafeLevels; ++b) {
                *out++ = static_cast<uint8_t>(r * kWebSafeStep);
                *out++ = static_cast<uint8_t>(g * kWebSafeStep);
                *out++ = static_cast<uint8_t>(b * kWebSafeStep);
            }
}

void SplitComponent(uint8_t value, uint8_t* lower, uint8_t* upper) {
    // The candidates are 51n, 51n + 25.5 and 51n + 51; the midpoints between them fall
    // at remainders 12.75 and 38.25, so the integer thresholds never tie.
    const uint8_t n = value / kWebSafeStep;
    const uint8_t m = value % kWebSafeStep;
    if (m <= 12) {
        *lower = n;
        *upper = n;
    } else if (m <= 38) {
        *lower = n;
        *upper = n + 1;
    } else {
        *lower = n + 1;
        *upper = n + 1;
    }
}

void ColorToTileIndices(uint8_t red, uint8_t green, uint8_t blue, uint8_t* lowerIndex,
                        uint8_t* upperIndex) {
    uint8_t lower;
    uint8_t upper;
    SplitComponent(red, &lower, &upper);
    uint8_t lowerSum = 36 * lower;
    uint8_t upperSum = 36 * upper;
    SplitComponent(green, &lower, &upper);
    lowerSum += 6 * lower;
    upperSum += 6 * upper;
    SplitComponent(blue, &lower, &upper);
    *lowerIndex = lowerSum + lower;
    *upperIndex = upperSum + upper;
}

void WriteTile(const uint8_t* table, Pattern& cells, uint8_t lowerIndex, uint8_t upperIndex) {
    const uint8_t* lowerColor = table + lowerIndex * 3;
    const uint8_t* upperColor = table + upperIndex * 3;
    const Rgb8 lowerCell = {lowerColor[0], lowerColor[1], lowerColor[2]};
    const Rgb8 upperCell = {upperColor[0], upperColor[1], upperColor[2]};
    cells.Cell(0, 0) = lowerCell;
    cells.Cell(1, 1) = lowerCell;
    cells.Cell(0, 1) = upperCell;
    cells.Cell(1, 0) = upperCell;
}

void MeanColor(const Pattern& cells, uint8_t gridSize, uint8_t* red, uint8_t* green,
               uint8_t* blue) {
    const int side = EffectiveGridSize(gridSize);
    uint32_t sumRed = 0;
    uint32_t sumGreen = 0;
    uint32_t sumBlue = 0;
    for (int row = 0; row < side; ++row)
        for (int column = 0; column < side; ++column) {
            const Rgb8& cell = cells.Cell(row, column);
            sumRed += cell.red;
            sumGreen += cell.green;
            sumBlue += cell.blue;
        }
    const uint32_t count = static_cast<uint32_t>(side * side);
    const uint32_t half = count / 2;
    *red = static_cast<uint8_t>((sumRed + half) / count);
    *green = static_cast<uint8_t>((sumGreen + half) / count);
    *blue = static_cast<uint8_t>((sumBlue + half) / count);
}

void ColorToTile(const uint8_t* table, Pattern& cells, uint8_t red, uint8_t green, uint8_t blue) {
    uint8_t lowerIndex;
    uint8_t upperIndex;
    ColorToTileIndices(red, green, blue, &lowerIndex, &upperIndex);
    WriteTile(table, cells, lowerIndex, upperIndex);
}

void ConvertToTile(const uint8_t* table, Pattern& cells, uint8_t* gridSize) {
    uint8_t red;
    uint8_t green;
    uint8_t blue;
    MeanColor(cells, *gridSize, &red, &green, &blue);
    ColorToTile(table, cells, red, green, blue);
    *gridSize = 2;
}

}  // namespace tessellum
