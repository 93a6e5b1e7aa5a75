// The web-safe table, the split of a component, the rule from a colour to a checker and
// back, checked against worked values and, where it can be, over every colour.
#include "color/web_safe.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace tessellum {

// For the checks' messages; found by argument lookup.
bool operator==(const Rgb8& a, const Rgb8& b) {
    return a.red == b.red && a.green == b.green && a.blue == b.blue;
}

std::ostream& operator<<(std::ostream& out, const Rgb8& c) {
    return out << "(" << int(c.red) << "," << int(c.green) << "," << int(c.blue) << ")";
}

namespace {

struct Table {
    uint8_t bytes[kWebSafeTableBytes];
    Table() {
        std::memset(bytes, 0, sizeof bytes);
        FillWebSafeTable(bytes);
    }
    Rgb8 Entry(int i) const { return {bytes[i * 3], bytes[i * 3 + 1], bytes[i * 3 + 2]}; }
};

// Every byte distinct from its neighbours, so a stray write shows.
Pattern Numbered() {
    Pattern p;
    uint8_t* bytes = reinterpret_cast<uint8_t*>(&p);
    for (int i = 0; i < kPatternBytes; ++i) bytes[i] = static_cast<uint8_t>(i + 7);
    return p;
}

Rgb8 Mean(const Pattern& p, uint8_t gridSize) {
    Rgb8 m;
    MeanColor(p, gridSize, &m.red, &m.green, &m.blue);
    return m;
}

TEST(WebSafeTable, EntriesAreTheLevelsRedSlowestThenWhite) {
    Table table;
    for (int r = 0; r < 6; ++r)
        for (int g = 0; g < 6; ++g)
            for (int b = 0; b < 6; ++b) {
                const Rgb8 expected = {uint8_t(r * 51), uint8_t(g * 51), uint8_t(b * 51)};
                EXPECT_EQ(table.Entry(36 * r + 6 * g + b), expected) << r << g << b;
            }
    const Rgb8 white = {255, 255, 255};
    for (int i = 215; i < 256; ++i) EXPECT_EQ(table.Entry(i), white) << "entry " << i;
    EXPECT_EQ(table.Entry(1), (Rgb8{0, 0, 51}));
    EXPECT_EQ(table.Entry(5), (Rgb8{0, 0, 255}));
    EXPECT_EQ(table.Entry(6), (Rgb8{0, 51, 0}));
    EXPECT_EQ(table.Entry(36), (Rgb8{51, 0, 0}));
}

// The map of all 256 component values: bands of equal or neighbouring levels, and the
// byte that the mean of a 2x2 checker of that pair gives back.
TEST(SplitComponent, EveryValueFallsInItsBand) {
    struct Band {
        int first, last, lower, upper, mean;
    };
    const Band bands[] = {{0, 12, 0, 0, 0},      {13, 38, 0, 1, 26},    {39, 63, 1, 1, 51},
                          {64, 89, 1, 2, 77},    {90, 114, 2, 2, 102},  {115, 140, 2, 3, 128},
                          {141, 165, 3, 3, 153}, {166, 191, 3, 4, 179}, {192, 216, 4, 4, 204},
                          {217, 242, 4, 5, 230}, {243, 255, 5, 5, 255}};
    Table table;
    int covered = 0;
    for (const Band& band : bands) {
        for (int v = band.first; v <= band.last; ++v, ++covered) {
            uint8_t lower = 99, upper = 99;
            SplitComponent(static_cast<uint8_t>(v), &lower, &upper);
            EXPECT_EQ(lower, band.lower) << "value " << v;
            EXPECT_EQ(upper, band.upper) << "value " << v;

            Pattern tile = Numbered();
            ColorToTile(table.bytes, tile, static_cast<uint8_t>(v), 0, 255);
            EXPECT_EQ(Mean(tile, 2), (Rgb8{uint8_t(band.mean), 0, 255})) << "value " << v;
        }
    }
    EXPECT_EQ(covered, 256);

    // The worst error, 12.5, falls exactly at remainders 13 and 38.
    const std::vector<int> worst = {13, 38, 64, 89, 115, 140, 166, 191, 217, 242};
    for (int v = 0; v < 256; ++v) {
        uint8_t lower, upper;
        SplitComponent(static_cast<uint8_t>(v), &lower, &upper);
        const int twiceError = std::abs(2 * v - 51 * (lower + upper));
        const bool isWorst = std::find(worst.begin(), worst.end(), v) != worst.end();
        EXPECT_EQ(twiceError == 25, isWorst) << "value " << v;
        if (v % 51 == 0) {
            EXPECT_EQ(twiceError, 0) << "web-safe value " << v;
        }
    }
}

TEST(ColorToTileIndices, SampleColours) {
    struct Sample {
        Rgb8 input;
        int lowerIndex, upperIndex;
        Rgb8 lower, upper, mean;
    };
    const Sample samples[] = {
        {{0, 0, 0}, 0, 0, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}},
        {{255, 255, 255}, 215, 215, {255, 255, 255}, {255, 255, 255}, {255, 255, 255}},
        {{12, 12, 12}, 0, 0, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}},
        {{13, 13, 13}, 0, 43, {0, 0, 0}, {51, 51, 51}, {26, 26, 26}},
        {{38, 38, 38}, 0, 43, {0, 0, 0}, {51, 51, 51}, {26, 26, 26}},
        {{39, 39, 39}, 43, 43, {51, 51, 51}, {51, 51, 51}, {51, 51, 51}},
        {{128, 128, 128}, 86, 129, {102, 102, 102}, {153, 153, 153}, {128, 128, 128}},
        {{127, 127, 127}, 86, 129, {102, 102, 102}, {153, 153, 153}, {128, 128, 128}},
        {{204, 102, 51}, 157, 157, {204, 102, 51}, {204, 102, 51}, {204, 102, 51}},
        {{200, 100, 50}, 157, 157, {204, 102, 51}, {204, 102, 51}, {204, 102, 51}},
        {{255, 128, 0}, 192, 198, {255, 102, 0}, {255, 153, 0}, {255, 128, 0}},
        {{100, 149, 237}, 94, 95, {102, 153, 204}, {102, 153, 255}, {102, 153, 230}},
        {{64, 63, 62}, 43, 79, {51, 51, 51}, {102, 51, 51}, {77, 51, 51}},
        {{254, 1, 128}, 182, 183, {255, 0, 102}, {255, 0, 153}, {255, 0, 128}},
    };
    Table table;
    for (const Sample& s : samples) {
        uint8_t lowerIndex = 0xAA, upperIndex = 0xAA;
        ColorToTileIndices(s.input.red, s.input.green, s.input.blue, &lowerIndex, &upperIndex);
        EXPECT_EQ(lowerIndex, s.lowerIndex) << s.input;
        EXPECT_EQ(upperIndex, s.upperIndex) << s.input;

        Pattern tile = Numbered();
        WriteTile(table.bytes, tile, lowerIndex, upperIndex);
        EXPECT_EQ(tile.Cell(0, 0), s.lower) << s.input;
        EXPECT_EQ(tile.Cell(1, 1), s.lower) << s.input;
        EXPECT_EQ(tile.Cell(0, 1), s.upper) << s.input;
        EXPECT_EQ(tile.Cell(1, 0), s.upper) << s.input;
        EXPECT_EQ(Mean(tile, 2), s.mean) << s.input;
    }
}

// Over all 16,777,216 colours: indices in the web-safe range, the lower colour never
// above the upper, an optical error of at most 12.5 per component, 1331 distinct tiles of
// which 216 are solid, and converting a tile gives the same tile.
TEST(ColorToTileIndices, EveryColour) {
    Table table;
    std::vector<bool> seen(216 * 216);
    int failures = 0;
    for (int r = 0; r < 256 && failures < 10; ++r) {
        for (int g = 0; g < 256; ++g) {
            for (int b = 0; b < 256; ++b) {
                const uint8_t in[3] = {uint8_t(r), uint8_t(g), uint8_t(b)};
                uint8_t lowerIndex, upperIndex;
                ColorToTileIndices(in[0], in[1], in[2], &lowerIndex, &upperIndex);
                bool ok = lowerIndex < 216 && upperIndex < 216;
                if (ok) {
                    seen[lowerIndex * 216 + upperIndex] = true;
                    const uint8_t* lower = table.bytes + lowerIndex * 3;
                    const uint8_t* upper = table.bytes + upperIndex * 3;
                    for (int k = 0; k < 3; ++k) {
                        ok = ok && lower[k] <= upper[k];
                        ok = ok && std::abs(2 * in[k] - lower[k] - upper[k]) <= 25;
                    }
                    Pattern tile;
                    WriteTile(table.bytes, tile, lowerIndex, upperIndex);
                    const Pattern before = tile;
                    uint8_t gridSize = 2;
                    ConvertToTile(table.bytes, tile, &gridSize);
                    ok = ok && std::memcmp(&tile, &before, sizeof tile) == 0;
                }
                if (!ok && ++failures <= 10)
                    ADD_FAILURE() << "colour (" << r << "," << g << "," << b << ") gives "
                                  << int(lowerIndex) << ", " << int(upperIndex);
            }
        }
    }
    int tiles = 0, solid = 0;
    for (int i = 0; i < 216; ++i)
        for (int j = 0; j < 216; ++j)
            if (seen[i * 216 + j]) {
                ++tiles;
                solid += i == j;
            }
    EXPECT_EQ(tiles, 1331);
    EXPECT_EQ(solid, 216);
}

TEST(WriteTile, WritesFourCellsAndNothingElse) {
    Table table;
    Pattern tile = Numbered();
    const Pattern before = tile;
    WriteTile(table.bytes, tile, 1, 214);  // (0,0,51) and (255,255,204)
    const uint8_t* bytes = reinterpret_cast<const uint8_t*>(&tile);
    const uint8_t* old = reinterpret_cast<const uint8_t*>(&before);
    const uint8_t lower[3] = {0, 0, 51}, upper[3] = {255, 255, 204};
    for (int i = 0; i < kPatternBytes; ++i) {
        if (i < 3 || (i >= 27 && i < 30))
            EXPECT_EQ(bytes[i], lower[i % 3]) << "byte " << i;
        else if ((i >= 3 && i < 6) || (i >= 24 && i < 27))
            EXPECT_EQ(bytes[i], upper[i % 3]) << "byte " << i;
        else
            EXPECT_EQ(bytes[i], old[i]) << "byte " << i;
    }
}

TEST(MeanColor, RoundsHalvesUpAndReadsOnlyTheSquareInForce) {
    Pattern p;
    std::memset(&p, 255, sizeof p);  // outside the square: must not count
    p.Cell(0, 0) = {25, 0, 1};
    p.Cell(0, 1) = {25, 0, 0};
    p.Cell(1, 0) = {25, 0, 0};
    p.Cell(1, 1) = {25, 3, 1};
    EXPECT_EQ(Mean(p, 2), (Rgb8{25, 1, 1}));  // 100/4, 3/4 rounds to 1, 2/4 is a half: up
    p.Cell(1, 1).red = 27;                    // sum 102, mean 25.5
    EXPECT_EQ(Mean(p, 2), (Rgb8{26, 1, 1}));

    // Odd count: sums 13 and 14 over 9 cells give 1 and 2.
    Pattern q;
    std::memset(&q, 200, sizeof q);
    for (int r = 0; r < 3; ++r)
        for (int c = 0; c < 3; ++c) q.Cell(r, c) = {1, 1, 0};
    q.Cell(2, 2) = {5, 6, 0};
    EXPECT_EQ(Mean(q, 3), (Rgb8{1, 2, 0}));

    // GridSize 8 takes every cell; the row stride stays 8 cells for every size.
    Pattern z = {};
    z.Cell(7, 7) = {64, 32, 31};
    EXPECT_EQ(Mean(z, 8), (Rgb8{1, 1, 0}));
    z.Cell(0, 4) = {100, 100, 100};  // outside a 4x4 square at stride 8, inside at stride 4
    EXPECT_EQ(Mean(z, 4), (Rgb8{0, 0, 0}));

    // A GridSize that only a damaged file holds is made valid: 0 and 1 as 2, 7 as 6,
    // above 8 as 8.
    EXPECT_EQ(Mean(p, 0), Mean(p, 2));
    EXPECT_EQ(Mean(p, 1), Mean(p, 2));
    EXPECT_EQ(Mean(z, 200), Mean(z, 8));
    Pattern six = {};
    six.Cell(6, 6) = {255, 255, 255};
    EXPECT_EQ(Mean(six, 7), Mean(six, 6));
    EXPECT_EQ(Mean(six, 7), (Rgb8{0, 0, 0}));
}

TEST(ConvertToTile, CollapsesToTheCheckerOfTheMeanAndKeepsOuterCells) {
    Table table;
    Pattern p = Numbered();
    // 4x4: eight red cells and eight blue cells, mean (127.5, 0, 127.5) = (128, 0, 128).
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) p.Cell(r, c) = (r + c) % 2 ? Rgb8{255, 0, 0} : Rgb8{0, 0, 255};
    const Pattern before = p;
    uint8_t gridSize = 4;
    ConvertToTile(table.bytes, p, &gridSize);
    EXPECT_EQ(gridSize, 2);
    EXPECT_EQ(p.Cell(0, 0), (Rgb8{102, 0, 102}));
    EXPECT_EQ(p.Cell(1, 1), (Rgb8{102, 0, 102}));
    EXPECT_EQ(p.Cell(0, 1), (Rgb8{153, 0, 153}));
    EXPECT_EQ(p.Cell(1, 0), (Rgb8{153, 0, 153}));
    // Everything outside the 2x2 corner comes back unchanged when the size is raised.
    for (int r = 0; r < 8; ++r)
        for (int c = 0; c < 8; ++c)
            if (r >= 2 || c >= 2) {
                EXPECT_EQ(p.Cell(r, c), before.Cell(r, c)) << r << "," << c;
            }

    // Colour to tile leaves the GridSize and the cells outside the corner alone.
    Pattern q = Numbered();
    ColorToTile(table.bytes, q, 64, 63, 62);
    EXPECT_EQ(q.Cell(0, 0), (Rgb8{51, 51, 51}));
    EXPECT_EQ(q.Cell(0, 1), (Rgb8{102, 51, 51}));
    EXPECT_EQ(q.Cell(2, 2), Numbered().Cell(2, 2));
}

}  // namespace
}  // namespace tessellum
