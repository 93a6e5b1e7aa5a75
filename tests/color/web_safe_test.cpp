// The web-safe table, the split of a component, the rule from a colour to a checker and
// back, checked against worked values and, where it can be, over every colour.
#include "color/web_safe.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

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
    uint8_t bytes[kWebSafeTableBytes] = {};
    Table() { FillWebSafeTable(bytes); }
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

// Expects `before` with its checker corner set to lower and upper, all else unchanged.
void ExpectTile(const Pattern& actual, const Pattern& before, Rgb8 lower, Rgb8 upper) {
    for (int r = 0; r < kPatternSide; ++r)
        for (int c = 0; c < kPatternSide; ++c) {
            const Rgb8 expected = r > 1 || c > 1 ? before.Cell(r, c) : r == c ? lower : upper;
            EXPECT_EQ(actual.Cell(r, c), expected) << "cell " << r << "," << c;
        }
}

TEST(WebSafeTable, EntriesAreTheLevelsRedSlowestThenWhite) {
    Table table;
    for (int i = 0; i < 216; ++i)
        EXPECT_EQ(table.Entry(i),
                  (Rgb8{uint8_t(i / 36 * 51), uint8_t(i / 6 % 6 * 51), uint8_t(i % 6 * 51)}));
    for (int i = 216; i < 256; ++i) EXPECT_EQ(table.Entry(i), (Rgb8{255, 255, 255})) << i;
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
    for (const Band& band : bands)
        for (int v = band.first; v <= band.last; ++v, ++covered) {
            uint8_t lower = 99, upper = 99;
            SplitComponent(static_cast<uint8_t>(v), &lower, &upper);
            EXPECT_EQ(lower, band.lower) << "value " << v;
            EXPECT_EQ(upper, band.upper) << "value " << v;
            Pattern tile = Numbered();
            ColorToTile(table.bytes, tile, static_cast<uint8_t>(v), 0, 255);
            EXPECT_EQ(Mean(tile, 2), (Rgb8{uint8_t(band.mean), 0, 255})) << "value " << v;
        }
    EXPECT_EQ(covered, 256);
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
        ColorToTile(table.bytes, tile, s.input.red, s.input.green, s.input.blue);
        ExpectTile(tile, Numbered(), s.lower, s.upper);
        EXPECT_EQ(Mean(tile, 2), s.mean) << s.input;
    }
}

// Over all 16,777,216 colours: indices in the web-safe range, the lower colour never
// above the upper, an optical error of at most 12.5 per component, and converting a tile
// gives the same tile.
TEST(ColorToTileIndices, EveryColour) {
    Table table;
    int failures = 0;
    for (int r = 0; r < 256 && failures < 10; ++r)
        for (int g = 0; g < 256; ++g)
            for (int b = 0; b < 256; ++b) {
                const uint8_t in[3] = {uint8_t(r), uint8_t(g), uint8_t(b)};
                uint8_t lowerIndex, upperIndex;
                ColorToTileIndices(in[0], in[1], in[2], &lowerIndex, &upperIndex);
                const uint8_t* lower = table.bytes + lowerIndex * 3;  // 256 entries: in bounds
                const uint8_t* upper = table.bytes + upperIndex * 3;
                bool ok = lowerIndex < 216 && upperIndex < 216;
                for (int k = 0; k < 3; ++k)
                    ok = ok && lower[k] <= upper[k] &&
                         std::abs(2 * in[k] - lower[k] - upper[k]) <= 25;
                Pattern tile = {};
                WriteTile(table.bytes, tile, lowerIndex, upperIndex);
                const Pattern before = tile;
                uint8_t gridSize = 2;
                ConvertToTile(table.bytes, tile, &gridSize);
                ok = ok && std::memcmp(&tile, &before, sizeof tile) == 0;
                if (!ok && ++failures <= 10)
                    ADD_FAILURE() << "colour (" << r << "," << g << "," << b << ") gives "
                                  << int(lowerIndex) << ", " << int(upperIndex);
            }
}

// Halves going up and the cells outside a 2x2 square are already met over every value
// above; here the other sizes, with their row stride of 8 cells, and the collapse of a
// larger pattern to the checker of its mean.
TEST(MeanColor, OtherSizesAndConvertToTile) {
    Pattern p;
    std::memset(&p, 200, sizeof p);
    for (int r = 0; r < 3; ++r)
        for (int c = 0; c < 3; ++c) p.Cell(r, c) = {1, 1, 0};
    p.Cell(1, 1) = {5, 6, 0};
    EXPECT_EQ(Mean(p, 3), (Rgb8{1, 2, 0}));  // 13/9 and 14/9: half of 9 is 4

    Pattern z = {};
    z.Cell(7, 7) = {64, 32, 31};
    EXPECT_EQ(Mean(z, 8), (Rgb8{1, 1, 0}));
    z.Cell(0, 4) = {100, 100, 100};  // outside a 4x4 square at stride 8, inside at stride 4
    EXPECT_EQ(Mean(z, 4), (Rgb8{0, 0, 0}));

    // A GridSize that only a damaged file holds is made valid: 0 and 1 as 2, 7 as 6,
    // above 8 as 8.
    EXPECT_EQ(Mean(z, 200), (Rgb8{3, 2, 2}));
    EXPECT_EQ(Mean(z, 7), (Rgb8{3, 3, 3}));
    EXPECT_EQ(Mean(p, 0), (Rgb8{2, 2, 0}));
    EXPECT_EQ(Mean(p, 1), (Rgb8{2, 2, 0}));

    // 4x4: eight red cells and eight blue cells, mean (127.5, 0, 127.5) = (128, 0, 128).
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) p.Cell(r, c) = (r + c) % 2 ? Rgb8{255, 0, 0} : Rgb8{0, 0, 255};
    const Pattern before = p;
    uint8_t gridSize = 4;
    ConvertToTile(Table().bytes, p, &gridSize);
    EXPECT_EQ(gridSize, 2);
    ExpectTile(p, before, {102, 0, 102}, {153, 0, 153});
}

}  // namespace
}  // namespace tessellum
