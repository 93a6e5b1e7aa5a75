// The colour core: the web-safe table, the checker of every colour and its mean, checked against a
// plain search of the candidates; the library's list of pointers, named colours and palettes.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <tuple>
#include <vector>

#include "color/color_library.h"
#include "color/web_safe.h"
#include "storage/error_code.h"

namespace tessellum {
namespace {

using Bytes = std::vector<uint8_t>;
using Levels = std::pair<int, int>;

Bytes Of(const Rgb8& c) {
    return {c.red, c.green, c.blue};
}

// The lower and upper level (0 to 5) of the checker whose mean comes nearest to v, out of all
// eleven: equal levels and neighbours.
Levels Nearest(int v) {
    Levels best = {0, 0};
    const auto error = [v](Levels p) { return std::abs(2 * v - 51 * (p.first + p.second)); };
    for (int lower = 0; lower < 6; ++lower)
        for (int upper = lower; upper < 6 && upper <= lower + 1; ++upper)
            if (error({lower, upper}) < error(best)) best = {lower, upper};
    return best;
}

Bytes Mean(const Pattern& p, int gridSize) {
    Rgb8 m;
    MeanColor(p, uint8_t(gridSize), &m.red, &m.green, &m.blue);
    return Of(m);
}

struct WebSafe : ::testing::Test {
    uint8_t table[kWebSafeTableBytes];
    WebSafe() { FillWebSafeTable(table); }
};

// 216 colours of multiples of 51, each above the one before, are all of them in order.
TEST_F(WebSafe, TableIsTheLevelsRedSlowestThenWhite) {
    for (int i = 0; i < 216 * 3; ++i) EXPECT_EQ(table[i] % 51, 0) << i;
    for (int i = 3; i < 216 * 3; i += 3)
        EXPECT_LT(Bytes(table + i - 3, table + i), Bytes(table + i, table + i + 3)) << i / 3;
    EXPECT_EQ(Bytes(table + 216 * 3, table + 768), Bytes(40 * 3, 255));
}

// Every component splits into its nearest levels, every colour's indices name the table
// entries of those levels, and the checker lands in the 2x2 corner, the lower colour on the
// diagonal, changing nothing else; its mean, halves going up, converts back to itself.
TEST_F(WebSafe, EveryColourTakesItsNearestChecker) {
    Levels nearest[256];
    Pattern numbered;  // every byte differs, so a stray write shows
    for (int i = 0; i < kPatternBytes; ++i) reinterpret_cast<uint8_t*>(&numbered)[i] = i + 7;
    for (int v = 0; v < 256; ++v) {
        nearest[v] = Nearest(v);
        uint8_t lower = 99, upper = 99;
        SplitComponent(uint8_t(v), &lower, &upper);
        EXPECT_EQ(Levels(lower, upper), nearest[v]) << "value " << v;
    }
    int failures = 0;
    for (int r = 0; r < 256; ++r)
        for (int g = 0; g < 256; ++g)
            for (int b = 0; b < 256; ++b) {
                uint8_t lowerIndex, upperIndex;
                ColorToTileIndices(uint8_t(r), uint8_t(g), uint8_t(b), &lowerIndex, &upperIndex);
                const uint8_t *lower = table + 3 * lowerIndex, *upper = table + 3 * upperIndex;
                const int in[3] = {r, g, b};
                bool ok = lowerIndex < 216 && upperIndex < 216;
                for (int k = 0; k < 3; ++k)
                    ok = ok && lower[k] == 51 * nearest[in[k]].first &&
                         upper[k] == 51 * nearest[in[k]].second;
                if (!ok && ++failures <= 10)
                    ADD_FAILURE() << "colour " << r << "," << g << "," << b << " gives "
                                  << int(lowerIndex) << ", " << int(upperIndex);
            }
    for (int v = 0; v < 256; ++v) {
        const int in[3] = {v, v * 7 % 256, 255 - v};
        Bytes lower, upper, mean;
        for (int k : in) {
            const auto [low, high] = nearest[k];
            lower.push_back(51 * low), upper.push_back(51 * high);
            mean.push_back((51 * (low + high) + 1) / 2);
        }
        Pattern tile = numbered;
        ColorToTile(table, tile, in[0], in[1], in[2]);
        EXPECT_EQ(Mean(tile, 2), mean) << "value " << v;
        uint8_t gridSize = 2;
        ConvertToTile(table, tile, &gridSize);  // gives the same checker
        for (int r = 0; r < kPatternSide; ++r)
            for (int c = 0; c < kPatternSide; ++c)
                EXPECT_EQ(Of(tile.Cell(r, c)), r > 1 || c > 1 ? Of(numbered.Cell(r, c))
                                               : r == c       ? lower
                                                              : upper)
                    << "value " << v << ", cell " << r << "," << c;
    }
}

// The other sizes, with their row stride of 8 cells, and GridSizes that only a damaged file holds
// made valid: 0 and 1 as 2, 7 as 6, above 8 as 8.
TEST_F(WebSafe, MeanOfOtherSizesAndTheirConversion) {
    Pattern p = {};
    p.Cell(1, 1) = {6, 7, 0};
    p.Cell(2, 0) = {3, 3, 200};
    p.Cell(2, 1) = p.Cell(2, 2) = {2, 2, 200};
    p.Cell(7, 7) = {64, 32, 31};
    p.Cell(0, 4) = {100, 100, 100};  // outside a 4x4 square at stride 8, inside at stride 4
    const std::pair<int, Bytes> means[] = {{2, {2, 2, 0}},  {0, {2, 2, 0}},  {1, {2, 2, 0}},
                                           {3, {1, 2, 67}},  // 13/9, 14/9
                                           {4, {1, 1, 38}}, {5, {5, 5, 28}}, {6, {3, 3, 19}},
                                           {7, {3, 3, 19}}, {8, {3, 2, 11}}, {200, {3, 2, 11}}};
    for (const auto& [gridSize, mean] : means) EXPECT_EQ(Mean(p, gridSize), mean) << gridSize;
    // Converting takes the mean of the square in force: at 4x4 (1, 1, 38) gives the checker
    // of black and (0, 0, 51), and the cells outside the 2x2 corner stay.
    uint8_t gridSize = 4;
    ConvertToTile(table, p, &gridSize);
    EXPECT_EQ(gridSize, 2);
    EXPECT_EQ(Of(p.Cell(0, 1)), (Bytes{0, 0, 51}));
    EXPECT_EQ(Of(p.Cell(0, 4)), (Bytes{100, 100, 100}));
}

TEST(ColorRecords, ListsAndNames) {
    int values[4];
    PtrList list;
    for (int& value : values) list.Append(&value);
    list.RemoveAt(0);
    list.RemoveAt(1);
    list.RemoveNode(list.Tail());
    EXPECT_TRUE(list.Count() == 1 && list.NodeAt(1) == nullptr && list.ValueAt(0) == &values[1]);
    EXPECT_TRUE(list.Head() == list.Tail() && list.Head()->prev == nullptr &&
                list.Head()->next == nullptr);

    // A new colour is all zero but its GridSize 2; names are cut to 255 characters, and a buffer
    // that lost its terminator measures 255.
    std::unique_ptr<ColorEntry> entry(NewColorEntry());
    const uint8_t* bytes = reinterpret_cast<const uint8_t*>(entry.get());
    EXPECT_EQ(Bytes(bytes, bytes + 448), Bytes(448, 0));
    EXPECT_EQ(entry->gridSize, 2);
    CopyName(entry->name, std::string(300, 'a').c_str());
    EXPECT_EQ(std::string(entry->name), std::string(255, 'a'));
    std::memset(entry->name, 'y', kNameBytes);
    EXPECT_EQ(NameLength(entry->name), 255u);
}

// Colours carved from shared blocks are freed one by one, forward, backward or odd ones
// first, before or after their carver goes: each block stays while a record in it lives
// (the survivor is written and read, and nothing is left, under the sanitizer).
TEST(ColorRecords, CarvedOnesFreeAloneInAnyOrder) {
    for (int order = 0; order < 6; ++order) {
        std::optional<RecordBlocks> blocks(std::in_place);
        ColorEntry* entries[20];  // more than the first block holds
        for (ColorEntry*& entry : entries) entry = NewColorEntry(*blocks);
        if (order % 2) blocks.reset();
        const auto at = [order](int i) {
            return order < 2 ? i : order < 4 ? 19 - i : (2 * i + 1) % 21;
        };
        for (int i = 0; i < 19; ++i) delete entries[at(i)];
        ColorEntry* survivor = entries[at(19)];
        EXPECT_TRUE(survivor->gridSize == 2 && survivor->name[100] == 0);
        CopyName(survivor->name, "last");
        EXPECT_STREQ(survivor->name, "last");
        delete survivor;
        blocks.reset();
    }
}

Palette Make(std::initializer_list<Bytes> colours) {
    Palette p(static_cast<uint32_t>(colours.size()));
    uint8_t* out = p.Colors();
    for (const Bytes& c : colours) out = std::copy(c.begin(), c.end(), out);
    return p;
}

TEST(Palette, SizingCopiesAndNearestOther) {
    Palette p = Make({{1, 2, 3}, {4, 5, 6}}), copy;
    p.Resize(3);  // the colours kept, the new one black
    copy.Assign(p);
    EXPECT_TRUE(copy.Equals(Make({{1, 2, 3}, {4, 5, 6}, {0, 0, 0}})));

    const std::tuple<Palette, int, int> nearest[] = {
        {Make({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}), 0, 1},  // a tie goes to the lower index
        {Make({{0, 0, 0}, {10, 0, 0}, {0, 10, 0}, {10, 0, 0}}), 1, 3},  // not itself
        {Make({{5, 5, 5}, {0, 0, 0}, {5, 5, 5}, {5, 5, 5}}), 3, 0},
        // Unweighted squared distance: 3 * 3^2 = 27 beats 6^2 = 36.
        {Make({{100, 100, 100}, {97, 97, 97}, {100, 100, 106}}), 0, 1},
        {Make({{0, 0, 0}, {9, 9, 9}, {200, 0, 0}, {8, 9, 9}}), 1, 3}};
    for (const auto& [palette, i, expected] : nearest) EXPECT_EQ(palette.NearestOther(i), expected);
    EXPECT_THROW(Palette().NearestOther(0), ErrorCode);
    EXPECT_THROW(Make({{1, 2, 3}}).NearestOther(0), ErrorCode);
}

}  // namespace
}  // namespace tessellum
