// The dialog's decisions without a window, at the edges the dialog's runs under Wine do
// not reach: menus of exactly 50 and 51 entries, the ids just around the command ranges,
// and where the selection goes after each command.
#include "dialog/dialog_logic.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "dialog/dialog_template.h"

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

// The scaled dialogs' copy of a template: both layouts, the face exchanged, the items
// after it moved whole onto the next 4-byte boundary; a template without a font, or cut
// inside its header, is refused.
TEST(DialogTemplate, TheFaceExchangedAndTheItemsKeptOnTheirBoundaries) {
    using Bytes = std::vector<uint8_t>;
    const auto text = [](const std::string& s) {
        Bytes out;
        for (char c : s) out.insert(out.end(), {uint8_t(c), 0});
        return out.insert(out.end(), {0, 0}), out;
    };
    const Bytes item = {0xA1, 0xA2, 0xA3, 0xA4, 0xA5, 0xA6};  // stands for the items
    // DIALOG: style with DS_SETFONT, 14 more header bytes; no menu, class by ordinal,
    // a caption; the point size, the face; the items on a boundary.
    Bytes plain = {0x40, 0, 0, 0x80};
    plain.resize(18, 0);
    plain.insert(plain.end(), {0, 0, 0xFF, 0xFF, 0x81, 0});
    for (const Bytes& part : {text("Hi"), Bytes{8, 0}, text("MS Sans Serif")})
        plain.insert(plain.end(), part.begin(), part.end());
    plain.resize((plain.size() + 3) & ~size_t{3}, 0);
    const size_t items = plain.size();
    plain.insert(plain.end(), item.begin(), item.end());
    // DIALOGEX: version 1, 0xFFFF, help id, extended style, style at 12; a menu by name.
    Bytes extended = {1, 0, 0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0, 0x40, 0, 0, 0x80};
    extended.resize(26, 0);
    for (const Bytes& part :
         {text("M"), Bytes{0, 0}, text(""), Bytes{8, 0, 0x90, 1, 0, 1}, text("MS Sans Serif")})
        extended.insert(extended.end(), part.begin(), part.end());
    extended.resize((extended.size() + 3) & ~size_t{3}, 0);
    extended.insert(extended.end(), item.begin(), item.end());

    for (const Bytes* dialog : {&plain, &extended}) {
        EXPECT_EQ(DialogFace(*dialog), "MS Sans Serif");
        const Bytes scaled = WithDialogFace(*dialog, kScaledDialogFace);
        EXPECT_EQ(DialogFace(scaled), kScaledDialogFace);
        ASSERT_GE(scaled.size(), item.size());
        EXPECT_EQ(Bytes(scaled.end() - 6, scaled.end()), item);
        EXPECT_EQ((scaled.size() - item.size()) % 4, 0u) << "the items on a boundary";
        EXPECT_EQ(Bytes(scaled.begin(), scaled.begin() + 18),
                  Bytes(dialog->begin(), dialog->begin() + 18));
    }
    EXPECT_EQ(WithDialogFace(plain, "MS Sans Serif"), plain) << "the same face, the same bytes";
    EXPECT_EQ(items, 18 + 6 + 6 + 2 + 28u);
    Bytes noFont = plain;
    noFont[0] = 0;
    EXPECT_TRUE(WithDialogFace(noFont, "Tahoma").empty());
    for (size_t cut : {size_t{10}, size_t{25}, size_t{40}})
        EXPECT_TRUE(WithDialogFace(Bytes(plain.begin(), plain.begin() + cut), "Tahoma").empty())
            << cut;
}

}  // namespace
}  // namespace tessellum
