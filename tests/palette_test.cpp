// The palette type: sizing, copying, comparison, the nearest-colour search and the
// removal of repeated colours.
#include "color/palette.h"

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <memory>
#include <vector>

#include "storage/error_code.h"
#include "tests/support/error_code_of.h"

namespace tessellum {
namespace {

struct Colour {
    uint8_t r, g, b;
};

Palette Make(std::initializer_list<Colour> colours) {
    Palette p(static_cast<uint32_t>(colours.size()));
    uint8_t* out = p.Colors();
    for (const Colour& c : colours) {
        *out++ = c.r;
        *out++ = c.g;
        *out++ = c.b;
    }
    return p;
}

std::vector<uint8_t> Bytes(const Palette& p) {
    return std::vector<uint8_t>(p.Colors(), p.Colors() + p.Count() * 3);
}

using test::CodeOf;

TEST(Palette, SizingKeepsWhatFits) {
    Palette black(256);
    ASSERT_EQ(black.Count(), 256u);
    EXPECT_EQ(Bytes(black), std::vector<uint8_t>(768, 0));

    Palette p = Make({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    p.Resize(5);
    ASSERT_EQ(p.Count(), 5u);
    EXPECT_EQ(std::vector<uint8_t>(p.Colors(), p.Colors() + 9),
              (std::vector<uint8_t>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
    p.Resize(2);
    EXPECT_EQ(Bytes(p), (std::vector<uint8_t>{1, 2, 3, 4, 5, 6}));
    p.Resize(0);
    EXPECT_EQ(p.Count(), 0u);
    EXPECT_EQ(p.Colors(), nullptr);
    p.Resize(1);  // from empty: nothing to keep
    EXPECT_EQ(p.Count(), 1u);

    Palette empty;
    EXPECT_EQ(empty.Count(), 0u);
    EXPECT_EQ(empty.Colors(), nullptr);
}

TEST(Palette, CopiesAreEqualAndIndependent) {
    const Palette original = Make({{10, 20, 30}, {40, 50, 60}});
    Palette copy(original);
    EXPECT_TRUE(copy.Equals(original));
    EXPECT_NE(copy.Colors(), original.Colors());
    copy.Colors()[5] = 61;
    EXPECT_TRUE(copy.NotEquals(original));
    EXPECT_EQ(original.Colors()[5], 60);

    Palette target = Make({{1, 1, 1}, {2, 2, 2}, {3, 3, 3}});
    target.Assign(original);
    EXPECT_TRUE(target.Equals(original));
    target.Assign(target);
    EXPECT_TRUE(target.Equals(original));
    target.Assign(Palette());
    EXPECT_EQ(target.Count(), 0u);

    EXPECT_TRUE(Palette().Equals(Palette()));
    EXPECT_FALSE(Make({{0, 0, 0}}).Equals(Make({{0, 0, 0}, {0, 0, 0}})));
    EXPECT_FALSE(Make({{0, 0, 0}}).Equals(Palette()));
    EXPECT_FALSE(Make({{0, 0, 1}}).Equals(Make({{0, 0, 0}})));
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
    // One entry has no other entry to find.
    EXPECT_EQ(CodeOf([] { Make({{1, 2, 3}}).NearestOther(0); }), ErrEmptyPalette);
}

TEST(Palette, DeduplicateKeepsFirstOccurrences) {
    const Colour red = {255, 0, 0}, green = {0, 255, 0}, blue = {0, 0, 255};
    const Palette p = Make({red, green, red, blue, green});
    uint8_t map[5] = {0xEE, 0xEE, 0xEE, 0xEE, 0xEE};
    std::unique_ptr<Palette> unique(p.Deduplicate(map));
    EXPECT_TRUE(unique->Equals(Make({red, green, blue})));
    EXPECT_EQ(map[0], 0);
    EXPECT_EQ(map[1], 1);
    EXPECT_EQ(map[3], 2);
    EXPECT_EQ(map[2], 0xEE);  // repeats are left alone
    EXPECT_EQ(map[4], 0xEE);
    EXPECT_EQ(p.Count(), 5u);  // the source is unchanged

    std::unique_ptr<Palette> none(Palette().Deduplicate(nullptr));
    EXPECT_EQ(none->Count(), 0u);

    // Colours that share two components are still different colours.
    std::unique_ptr<Palette> near(
        Make({{1, 2, 3}, {1, 2, 4}, {0, 2, 3}, {1, 2, 3}}).Deduplicate(nullptr));
    EXPECT_EQ(near->Count(), 3u);

    // 256 different colours, each map byte its own index.
    Palette all(256);
    for (uint32_t i = 0; i < 256; ++i) all.Colors()[i * 3 + 2] = static_cast<uint8_t>(i);
    uint8_t wide[256];
    std::unique_ptr<Palette> same(all.Deduplicate(wide));
    EXPECT_TRUE(same->Equals(all));
    for (int i = 0; i < 256; ++i) EXPECT_EQ(wide[i], i);
}

TEST(BitsForCount, SmallestIndexWidthFromOneToEight) {
    for (uint32_t n = 0; n <= 300; ++n) {
        uint8_t expected = n <= 2     ? 1
                           : n <= 4   ? 2
                           : n <= 8   ? 3
                           : n <= 16  ? 4
                           : n <= 32  ? 5
                           : n <= 64  ? 6
                           : n <= 128 ? 7
                                      : 8;
        EXPECT_EQ(BitsForCount(n), expected) << "n = " << n;
    }
    EXPECT_EQ(BitsForCount(0xFFFFFFFFu), 8);
}

}  // namespace
}  // namespace tessellum
