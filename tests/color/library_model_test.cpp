// The library's model: the list of untyped pointers, named colours, and palettes with
// their sizing, copying, comparison, nearest-colour search and removal of repeats.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "color/color_library.h"
#include "color/palette.h"
#include "color/ptr_list.h"
#include "storage/error_code.h"
#include "tests/support/error_code_of.h"

namespace tessellum {
namespace {

using test::CodeOf;
using Bytes = std::vector<uint8_t>;

int values[8];
const auto V = [](int i) -> void* { return &values[i]; };

using Order = std::vector<int>;

// The values from head to tail, checking every link both ways on the way.
Order Walk(const PtrList& list) {
    Order order;
    PtrNode* prev = nullptr;
    for (PtrNode* node = list.Head(); node != nullptr; node = node->next) {
        EXPECT_EQ(node->prev, prev);
        order.push_back(static_cast<int>(static_cast<int*>(node->value) - values));
        prev = node;
    }
    EXPECT_EQ(list.Tail(), prev);
    EXPECT_EQ(list.Count(), static_cast<int>(order.size()));
    return order;
}

// Insertions and removals at both ends and in between keep the order and both links.
TEST(PtrList, InsertionsAndRemovalsKeepOrderAndLinks) {
    PtrList list;
    EXPECT_EQ(list.NodeAt(0), nullptr);
    list.InsertAt(0, V(1));  // the only node of an empty list
    EXPECT_EQ(Walk(list), Order{1});
    list.Append(V(2));
    list.InsertAt(0, V(0));             // in front of head
    list.InsertAt(list.Count(), V(4));  // same as Append
    list.InsertAt(3, V(3));             // between 2 and 4
    EXPECT_EQ(Walk(list), (Order{0, 1, 2, 3, 4}));
    list.InsertBefore(list.Head(), V(5));
    list.InsertAfter(list.Tail(), V(6));
    list.InsertAfter(list.NodeAt(1), V(7));
    EXPECT_EQ(Walk(list), (Order{5, 0, 7, 1, 2, 3, 4, 6}));
    EXPECT_EQ(list.ValueAt(2), V(7));

    list.RemoveAt(0);
    list.RemoveNode(list.Tail());
    list.RemoveAt(1);
    EXPECT_EQ(Walk(list), (Order{0, 1, 2, 3, 4}));
    list.Clear();
    EXPECT_EQ(Walk(list), Order{});
}

TEST(ColorRecords, NewColourAndNames) {
    ColorEntry* entry = NewColorEntry();
    const uint8_t* bytes = reinterpret_cast<const uint8_t*>(entry);
    EXPECT_EQ(std::vector<uint8_t>(bytes, bytes + 448), std::vector<uint8_t>(448, 0));
    EXPECT_EQ(entry->gridSize, 2);

    // Names are cut to 255 characters; a buffer that lost its terminator measures 255.
    CopyName(entry->name, "Web");
    EXPECT_STREQ(entry->name, "Web");
    CopyName(entry->name, std::string(300, 'a').c_str());
    EXPECT_EQ(std::strlen(entry->name), 255u);
    std::memset(entry->name, 'y', kNameBytes);
    EXPECT_EQ(NameLength(entry->name), 255u);
    delete entry;
}

Palette Make(std::initializer_list<Bytes> colours) {
    Palette p(static_cast<uint32_t>(colours.size()));
    uint8_t* out = p.Colors();
    for (const Bytes& c : colours) out = std::copy(c.begin(), c.end(), out);
    return p;
}

TEST(Palette, SizingAndCopies) {
    const Palette black(256);
    EXPECT_EQ(Bytes(black.Colors(), black.Colors() + 768), Bytes(768, 0));
    Palette p = Make({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    p.Resize(5);
    ASSERT_EQ(p.Count(), 5u);
    EXPECT_EQ(Bytes(p.Colors(), p.Colors() + 9), (Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9}));
    p.Resize(2);
    EXPECT_TRUE(p.Equals(Make({{1, 2, 3}, {4, 5, 6}})));

    Palette copy(p);
    EXPECT_TRUE(copy.Equals(p));
    copy.Colors()[5] = 61;
    EXPECT_TRUE(copy.NotEquals(p));
    copy.Assign(p);
    copy.Assign(copy);
    EXPECT_TRUE(copy.Equals(p));
    EXPECT_FALSE(Make({{1, 2, 3}}).Equals(p));

    p.Resize(0);  // empty holds no array, so that a search on it fails
    EXPECT_EQ(p.Colors(), nullptr);
    EXPECT_TRUE(p.Equals(Palette()));
    copy.Assign(p);
    EXPECT_EQ(copy.Count(), 0u);
}

TEST(Palette, NearestOther) {
    // A tie goes to the lower index.
    EXPECT_EQ(Make({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}).NearestOther(0), 1u);
    // An exact match ends the search.
    EXPECT_EQ(Make({{0, 0, 0}, {10, 0, 0}, {0, 10, 0}, {10, 0, 0}}).NearestOther(1), 3u);
    // Nothing beats the starting candidate at distance 0; entry i itself is skipped.
    EXPECT_EQ(Make({{5, 5, 5}, {0, 0, 0}, {5, 5, 5}, {5, 5, 5}}).NearestOther(3), 0u);
    // Unweighted squared distance: 3^2 * 3 = 27 beats 0 + 0 + 6^2 = 36.
    EXPECT_EQ(Make({{100, 100, 100}, {97, 97, 97}, {100, 100, 106}}).NearestOther(0), 1u);
    // A later strictly nearer entry replaces the candidate.
    EXPECT_EQ(Make({{0, 0, 0}, {9, 9, 9}, {200, 0, 0}, {8, 9, 9}}).NearestOther(1), 3u);

    EXPECT_EQ(CodeOf([] { Palette().NearestOther(0); }), ErrEmptyPalette);
    EXPECT_EQ(CodeOf([] { Make({{1, 2, 3}}).NearestOther(0); }), ErrEmptyPalette);
}

TEST(Palette, DeduplicateKeepsFirstOccurrences) {
    const Bytes red = {255, 0, 0}, green = {0, 255, 0}, blue = {0, 0, 255};
    const Palette p = Make({red, green, red, blue, green});
    uint8_t map[5] = {0xEE, 0xEE, 0xEE, 0xEE, 0xEE};
    std::unique_ptr<Palette> unique(p.Deduplicate(map));
    EXPECT_TRUE(unique->Equals(Make({red, green, blue})));
    EXPECT_EQ(Bytes(map, map + 5), (Bytes{0, 1, 0xEE, 2, 0xEE}));  // repeats are left alone
    EXPECT_EQ(p.Count(), 5u);                                      // the source is unchanged

    EXPECT_EQ(std::unique_ptr<Palette>(Palette().Deduplicate(nullptr))->Count(), 0u);
    // Colours that share two components are still different colours.
    std::unique_ptr<Palette> near(
        Make({{1, 2, 3}, {1, 2, 4}, {0, 2, 3}, {1, 2, 3}}).Deduplicate(nullptr));
    EXPECT_TRUE(near->Equals(Make({{1, 2, 3}, {1, 2, 4}, {0, 2, 3}})));
}

TEST(BitsForCount, SmallestIndexWidthFromOneToEight) {
    const uint32_t edges[][2] = {{0, 1},  {2, 1},   {3, 2},   {4, 2},   {5, 3},   {8, 3},
                                 {9, 4},  {16, 4},  {17, 5},  {32, 5},  {33, 6},  {64, 6},
                                 {65, 7}, {128, 7}, {129, 8}, {256, 8}, {300, 8}, {0xFFFFFFFF, 8}};
    for (const auto& edge : edges) EXPECT_EQ(BitsForCount(edge[0]), edge[1]) << edge[0];
}

}  // namespace
}  // namespace tessellum
