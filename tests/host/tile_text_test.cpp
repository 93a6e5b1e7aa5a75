#include "tools/tile/tile_text.h"

#include <gtest/gtest.h>

namespace tessellum {
namespace {

TEST(TileText, ATileBecomesTheStoredBlock) {
    FilterParameters p;
    std::string error;
    ASSERT_TRUE(
        ParseTileText("# demo\ngrid 3\nrow 000000 FFFFFF 336699\n"
                      "row 010203 a0b0c0 ffffff # trailing comment\n\nrow 000000 000000 CC00CC\n",
                      p, error))
        << error;
    EXPECT_EQ(p.gridSize, 3);
    EXPECT_EQ(p.queryForParameters, 0) << "a stored tile is used at once";
    const auto* bytes = reinterpret_cast<const uint8_t*>(&p);
    EXPECT_EQ(bytes[5 + 3 * 2], 0x33);       // row 0, column 2
    EXPECT_EQ(bytes[5 + 24 + 1], 0x02);      // row 1, column 0, green
    EXPECT_EQ(bytes[5 + 24 + 3 + 2], 0xC0);  // row 1, column 1, blue
    EXPECT_EQ(bytes[5 + 48 + 6], 0xCC);      // row 2, column 2, red
    EXPECT_EQ(bytes[5 + 3 * 3], 0) << "cells outside the square stay zero";
    EXPECT_EQ(bytes[197], 0);
}

TEST(TileText, MistakesAreReportedWithTheirLine) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "line 0: no grid line"},
        {"grid 7\n", "line 1: grid must be 2, 3, 4, 5, 6 or 8, not \"7\""},
        {"row 000000 000000\n", "line 1: a row before the grid line"},
        {"grid 2\nrow 000000\n", "line 2: fewer colours than the grid has columns"},
        {"grid 2\nrow 000000 00000G\n",
         "line 2: \"00000G\" is not a colour of six hexadecimal digits"},
        {"grid 2\nrow 000000 000000 000000\n", "line 2: more colours than the grid has columns"},
        {"grid 2\nrow 000000 000000\n", "line 2: fewer rows than the grid has"},
        {"grid 2\ngrid 2\n", "line 2: the grid is given twice"},
        {"colour 2\n", "line 1: unknown keyword \"colour\""},
    };
    for (const auto& [text, message] : cases) {
        FilterParameters p;
        std::string error;
        EXPECT_FALSE(ParseTileText(text, p, error)) << text;
        EXPECT_EQ(error, message) << text;
    }
}

}  // namespace
}  // namespace tessellum
