// The dialog's decisions without a window, at the edges the dialog's runs under Wine do
// not reach: menus of exactly 50 and 51 entries, the ids just around the command ranges,
// and where the selection goes after each command.
#include "dialog/dialog_logic.h"

#include <gtest/gtest.h>

namespace tessellum {
namespace {

TEST(DialogLogic, MenusShowFiftyAndForceTheLastWhenThereAreMore) {
    struct Case {
        int total, selected, count, after;
    } cases[] = {{0, -1, 0, -1},  {1, 0, 1, 0},     {50, 3, 50, 3},
                 {51, 0, 50, 49}, {51, 50, 50, 49}, {200, -1, 50, 49}};
    for (const Case& c : cases) {
        const MenuItems items = LimitMenuItems(c.total, c.selected);
        EXPECT_EQ(items.count * 1000 + items.selected, c.count * 1000 + c.after) << c.total;
    }
    // The dispatch takes one id beyond the 50 a menu holds, and nothing around them.
    EXPECT_TRUE(IsListCommand(3000) && IsListCommand(3050) && IsPaletteCommand(3500) &&
                IsPaletteCommand(3550));
    EXPECT_FALSE(IsListCommand(2999) || IsListCommand(3051) || IsListCommand(3500) ||
                 IsPaletteCommand(3499) || IsPaletteCommand(3551) || IsPaletteCommand(40004));
}

// The first list after a delete (none when none is left), the list before an import
// unless there was none, the row above a deleted colour, the renamed row or the first
// after a cancelled prompt.
TEST(DialogLogic, SelectionAfterTheCommands) {
    struct Case {
        int (*rule)(int);
        int given, expected;
    } cases[] = {
        {ListAfterDelete, 0, -1},    {ListAfterDelete, 1, 0},    {ListAfterDelete, 7, 0},
        {ListAfterImport, -1, 0},    {ListAfterImport, 5, 5},    {RowAfterDeleteColor, 0, 0},
        {RowAfterDeleteColor, 4, 3}, {RowAfterNameColor, -1, 0}, {RowAfterNameColor, 3, 3}};
    for (const Case& c : cases) EXPECT_EQ(c.rule(c.given), c.expected) << &c - cases;
}

}  // namespace
}  // namespace tessellum
