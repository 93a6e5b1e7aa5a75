// The dialog's decisions without a window: menu limits, command ranges, the Pattern in
// force, the page state and the texts it shows.
#include "dialog/dialog_logic.h"

#include <gtest/gtest.h>

namespace tessellum {
namespace {

TEST(DialogLogic, MenusShowFiftyAndForceTheLastWhenThereAreMore) {
    struct Case {
        int total, selected, count, after;
    } cases[] = {{0, 0, 0, -1},    {0, -1, 0, -1},  {1, 0, 1, 0},     {50, 7, 50, 7},
                 {50, 49, 50, 49}, {51, 0, 50, 49}, {51, 50, 50, 49}, {200, -1, 50, 49}};
    for (const Case& c : cases) {
        const MenuItems items = LimitMenuItems(c.total, c.selected);
        EXPECT_EQ(items.count, c.count) << c.total << " items, " << c.selected << " selected";
        EXPECT_EQ(items.selected, c.after) << c.total << " items, " << c.selected << " selected";
    }
    // The dispatch takes one id beyond the 50 a menu holds, and nothing around them.
    EXPECT_FALSE(IsListCommand(2999));
    EXPECT_TRUE(IsListCommand(3000) && IsListCommand(3050));
    EXPECT_FALSE(IsListCommand(3051) || IsListCommand(3500));
    EXPECT_TRUE(IsPaletteCommand(3500) && IsPaletteCommand(3550));
    EXPECT_FALSE(IsPaletteCommand(3499) || IsPaletteCommand(3551) || IsPaletteCommand(40004));
}

// Where the selection goes: the first list after a delete (none when none is left), the
// list before an import unless there was none, the row above a deleted colour, the
// renamed row or the first after a cancelled prompt.
TEST(DialogLogic, SelectionAfterTheCommands) {
    EXPECT_EQ(ListAfterDelete(0), -1);
    EXPECT_EQ(ListAfterDelete(1), 0);
    EXPECT_EQ(ListAfterDelete(7), 0);
    EXPECT_EQ(ListAfterImport(-1), 0);
    EXPECT_EQ(ListAfterImport(0), 0);
    EXPECT_EQ(ListAfterImport(5), 5);
    EXPECT_EQ(RowAfterDeleteColor(0), 0);
    EXPECT_EQ(RowAfterDeleteColor(1), 0);
    EXPECT_EQ(RowAfterDeleteColor(4), 3);
    EXPECT_EQ(RowAfterNameColor(-1), 0);
    EXPECT_EQ(RowAfterNameColor(3), 3);
    // Every prompt takes 253 characters into a buffer of a name's size.
    EXPECT_EQ(kPromptSize - 1, 253);
    EXPECT_LE(kPromptSize, kPromptBufferBytes);
}

TEST(DialogLogic, GridCommandsPatternInForceAndTexts) {
    const int ids[] = {40004, 40005, 40006, 40007, 40008, 40009, 40010, 40011, 40012};
    const uint8_t sizes[] = {0, 2, 3, 4, 5, 6, 0, 8, 0};
    for (int i = 0; i < 9; ++i) EXPECT_EQ(GridSizeOfCommand(ids[i]), sizes[i]) << ids[i];

    Pattern work = {};
    ColorEntry entry = {};
    entry.gridSize = 5;
    PatternInForce inForce = ResolvePattern(&entry, &work, 3);
    EXPECT_EQ(inForce.pattern, &entry.cells);
    EXPECT_EQ(inForce.gridSize, 5);
    inForce = ResolvePattern(nullptr, &work, 3);
    EXPECT_EQ(inForce.pattern, &work);
    EXPECT_EQ(inForce.gridSize, 3);

    EXPECT_EQ(PickerStateFor(2), PickerState::kSliders);
    for (uint8_t size : {0, 3, 4, 5, 6, 7, 8})
        EXPECT_EQ(PickerStateFor(size), PickerState::kConvert);

    char text[300];
    FormatGridSizeText(text, sizeof text, 4);
    EXPECT_STREQ(text, "4x4");
    FormatListItemText(text, sizeof text, 0, "Spring");
    EXPECT_STREQ(text, "&1 Spring");
    FormatListItemText(text, sizeof text, 49, "");
    EXPECT_STREQ(text, "&50 ");
    EXPECT_EQ(SizedOuterWidth(300, 220, 214), 313);
}

}  // namespace
}  // namespace tessellum
