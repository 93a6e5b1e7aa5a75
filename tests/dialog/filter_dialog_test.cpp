// The main dialog as a host and a user meet it: our host runs the real plug-in, the real
// modal dialog comes up over the host's window, and a second thread clicks, drags and
// reads it back. Each test is one run (or two) of the dialog that checks many facts;
// afterwards the parameters block, the library file and the registry are read back.
#include <windows.h>
#include <commctrl.h>  // after windows.h
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "controls/slider_geometry.h"
#include "storage/library_file.h"
#include "tests/dialog/dialog_fixture.h"
#include "tests/support/library_samples.h"
#include "tests/support/plugin_path.h"
#include "tests/support/scratch_directory.h"

namespace tessellum::test {
namespace {

constexpr char kKey[] = "Software\\Quarry\\Tessellum\\1.x";

uint32_t Rgb(const Rgb8& c) {
    return (c.red << 16) | (c.green << 8) | c.blue;
}

// The registry of the private prefix: "Sizing".
// -1: no value; else byte 0 of it.
int Sizing() {
    BYTE bytes[5] = {};
    DWORD size = sizeof bytes;
    if (RegGetValueA(HKEY_CURRENT_USER, kKey, "Sizing", RRF_RT_REG_BINARY, nullptr, bytes, &size) !=
        ERROR_SUCCESS)
        return -1;
    return bytes[0];
}

void SetSizing(int value) {
    if (value < 0) {
        RegDeleteKeyValueA(HKEY_CURRENT_USER, kKey, "Sizing");
        return;
    }
    HKEY key = nullptr;
    RegCreateKeyExA(HKEY_CURRENT_USER, kKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr);
    const BYTE bytes[5] = {static_cast<BYTE>(value), 0, 0, 0, 0};
    RegSetValueExA(key, "Sizing", 0, REG_BINARY, bytes, sizeof bytes);
    RegCloseKey(key);
}

class FilterDialogTest : public DialogRunTest {};

// The slider panel's place on the Color Picker page, as the dialog derives it.
struct Sliders {
    int32_t x, y;
    int32_t RowTop(int row) const { return y + 25 * row; }
};
Sliders SlidersOf(const DialogDriver& d) {
    const RECT place = d.Place(d.picker, 1024);
    return {place.left + 38, place.top + 20};
}

// A drag of one thumb from `from` to `to`, as the mouse does it.
void Drag(const DialogDriver& d, int row, uint8_t from, uint8_t to) {
    const Sliders s = SlidersOf(d);
    const int32_t y = s.RowTop(row) + 13;
    d.Mouse(d.picker, WM_LBUTTONDOWN, ThumbLeft(s.x, from) + 5, y);
    d.Mouse(d.picker, WM_MOUSEMOVE, s.x + to / 2, y);
    d.Mouse(d.picker, WM_LBUTTONUP, s.x + to / 2, y);
    d.Settle();
}

// The tile on the Color Picker page: cell (i, j) of a 2x2 tile at pixel (4 + j, 4 + i).
uint32_t PickerCell(const DialogDriver& d, int row, int column) {
    const RECT place = d.Place(d.picker, 1030);
    return d.Pixel(d.picker, place.left + 4 + column, place.top + 4 + row);
}
uint32_t MainPreviewCell(const DialogDriver& d, int row, int column) {
    const RECT place = d.Place(d.dialog, 1023);
    return d.Pixel(d.dialog, place.left + 4 + column, place.top + 4 + row);
}

TEST_F(FilterDialogTest, FirstRunOpensExpandedOnTheColorPickerAndFillsTheZeroTile) {
    SetSizing(-1);
    // This host skips Parameters: Start makes the block itself and asks the dialog.
    host::RunOptions skipsParameters;
    skipsParameters.repeat = true;
    const host::RunReport report = Run(
        [&](DialogDriver& d) {
            char title[64] = {};
            GetWindowTextA(d.dialog, title, sizeof title);
            EXPECT_STREQ(title, "Tessellum 1.5");
            EXPECT_EQ(GetWindowLongA(d.dialog, GWL_STYLE) & WS_SYSMENU, 0);
            EXPECT_EQ(d.Text(d.dialog, 1004), "none");
            EXPECT_TRUE(d.Rows().empty());
            EXPECT_EQ(d.Send(d.tabs, TCM_GETCURSEL), 0);
            EXPECT_EQ(d.Send(d.tabs, TCM_GETITEMCOUNT), 2);
            EXPECT_TRUE(IsWindowVisible(d.picker));
            EXPECT_FALSE(IsWindowVisible(d.pattern));
            // Sliders state: no Convert, the Fore / Back label shown.
            EXPECT_FALSE(d.Visible(d.picker, 1019));
            EXPECT_FALSE(d.Visible(d.picker, 1022));
            EXPECT_TRUE(d.Visible(d.picker, 1035));
            // Expanded: the dialog ends 7 pixels right of the tab control, frame included.
            RECT outer = {}, client = {};
            GetWindowRect(d.dialog, &outer);
            GetClientRect(d.dialog, &client);
            const int frame = (outer.right - outer.left) - client.right;
            EXPECT_EQ(d.OuterWidth(), d.Place(d.dialog, 1008).right + 7 + frame);
            // Windows' metrics: "MS Sans Serif" 8 gives base units of 6 x 13 pixels, so the
            // template's 357 units are 536 pixels (a wider stand-in font makes them 626).
            RECT units = {0, 0, 357, 8};
            MapDialogRect(d.dialog, &units);
            EXPECT_EQ(units.right, 536);
            EXPECT_EQ(units.bottom, 13);
            // The zero tile: black previews.
            EXPECT_EQ(PickerCell(d, 0, 0), 0u);
            EXPECT_EQ(MainPreviewCell(d, 1, 1), 0u);
            EXPECT_EQ(d.Text(d.pattern, 1016), "2x2");
            EXPECT_EQ(d.Text(d.pattern, 1019), "Web Safe Palette");
            EXPECT_FALSE(IsWindowEnabled(GetDlgItem(d.pattern, 1018)));
            d.Screenshot("dialog_color_picker_first_run");
            d.Press(d.dialog, IDOK);
        },
        skipsParameters);
    EXPECT_EQ(report.result, 0);
    EXPECT_TRUE(report.filled);
    ASSERT_EQ(block.size(), 198u);
    EXPECT_EQ(block[2] | block[3], 0) << "the flag is lowered after Fill";
    EXPECT_EQ(block[4], 2);
    EXPECT_EQ(Bytes(block.begin() + 5, block.begin() + 197), Bytes(192, 0));
    EXPECT_EQ(image.pixels[0], 0) << "the zero tile was laid";
    // Teardown wrote an empty library into the folder it made, and "Sizing".
    EXPECT_EQ(ReadWholeFile(libraryPath),
              Bytes({'T', 'e', 's', 's', 'C', 'e', 'l', 'l', '1', '1', ';'}));
    EXPECT_EQ(Sizing(), 1);
}

TEST_F(FilterDialogTest, CollapsedStartAndTheSizingButtonAndCancel) {
    SetSizing(0);
    block.assign(198, 0);
    block[2] = 1;
    block[4] = 3;
    block[5] = 0x42;
    const Bytes stored = block;
    const host::RunReport report = Run([&](DialogDriver& d) {
        RECT outer = {}, client = {};
        GetWindowRect(d.dialog, &outer);
        GetClientRect(d.dialog, &client);
        const int frame = (outer.right - outer.left) - client.right;
        const int collapsed = d.Place(d.dialog, 1001).right + 7 + frame;
        EXPECT_EQ(d.OuterWidth(), collapsed);
        d.Screenshot("dialog_collapsed");
        d.Press(d.dialog, 1001);
        EXPECT_EQ(d.OuterWidth(), d.Place(d.dialog, 1008).right + 7 + frame);
        EXPECT_EQ(d.Text(d.dialog, 1001), "-->");
        // The tabs work after expanding.
        d.ChooseTab(1);
        EXPECT_TRUE(IsWindowVisible(d.pattern));
        d.Press(d.dialog, 1001);
        EXPECT_EQ(d.OuterWidth(), collapsed);
        d.Press(d.dialog, IDCANCEL);
    });
    EXPECT_EQ(report.result, 1);
    EXPECT_FALSE(report.filled);
    ASSERT_EQ(report.calls.size(), 3u) << "Parameters, Prepare, Start; no Continue, no Finish";
    EXPECT_EQ(report.calls[2].selector, kSelectorStart);
    const Rect empty = {0, 0, 0, 0};
    EXPECT_EQ(std::memcmp(&session.record().inRect, &empty, sizeof empty), 0);
    EXPECT_EQ(std::memcmp(&session.record().outRect, &empty, sizeof empty), 0);
    EXPECT_EQ(image.pixels, Bytes(16 * 16 * 3, 0x80));
    EXPECT_EQ(block, stored) << "Cancel leaves the stored tile and the flag as they were";
    EXPECT_EQ(Sizing(), 0);
}

// A library colour in force: the sliders write into it, Convert collapses a 3x3 one,
// and Cancel keeps every edit in the file while the stored tile stays.
TEST_F(FilterDialogTest, SlidersAndConvertEditTheSelectedColorAndTheFileKeepsThem) {
    {
        ColorLibrary library;
        ColorList* web = AddList(library, "Web");
        std::memset(&AddColor(*web, "Red", 2, 1)->cells, 0, sizeof(Pattern));  // sliders at 0
        ColorEntry* grey = AddColor(*web, "Grey3", 3, 2);
        for (int i = 0; i < 9; ++i)  // five of nine white, the rest black
            grey->cells.Cell(i / 3, i % 3) = i % 2 == 0 ? Rgb8{255, 255, 255} : Rgb8{0, 0, 0};
        std::memset(&AddColor(*AddList(library, "Second"), "Solid", 2, 3)->cells, 0x40,
                    sizeof(Pattern));
        SaveLibraryFile(library);
    }
    SetSizing(1);
    const host::RunReport report = Run([&](DialogDriver& d) {
        EXPECT_EQ(d.Text(d.dialog, 1004), "Web");
        EXPECT_EQ(d.Rows(), (std::vector<std::string>{"Red", "Grey3"}));
        EXPECT_EQ(d.SelectedRow(), 0);
        for (int row = 0; row < 3; ++row) Drag(d, row, 0, 128);
        const RECT box = d.Place(d.picker, 1031);
        d.Screenshot("dialog_color_picker_sliders");
        EXPECT_EQ(PickerCell(d, 0, 0), 0x666666u);
        EXPECT_EQ(PickerCell(d, 0, 1), 0x999999u);
        EXPECT_EQ(PickerCell(d, 1, 0), 0x999999u);
        EXPECT_EQ(MainPreviewCell(d, 1, 1), 0x666666u);
        EXPECT_EQ(d.Pixel(d.picker, (box.left + box.right) / 2, (box.top + box.bottom) / 2),
                  0x808080u);

        d.SelectRow(1);  // Grey3: the convert state
        EXPECT_TRUE(d.Visible(d.picker, 1019));
        EXPECT_TRUE(d.Visible(d.picker, 1022));
        EXPECT_FALSE(d.Visible(d.picker, 1035));
        EXPECT_EQ(d.Text(d.picker, 1022),
                  "The current pattern's grid size is too large to use the automatic color "
                  "picker.  Press the Convert button to convert the pattern.");
        EXPECT_EQ(d.Text(d.pattern, 1016), "3x3");
        d.Screenshot("dialog_color_picker_convert");
        d.Press(d.picker, 1019);
        EXPECT_FALSE(d.Visible(d.picker, 1019));
        EXPECT_EQ(d.Text(d.pattern, 1016), "2x2");
        EXPECT_EQ(PickerCell(d, 0, 0), 0x999999u) << "mean 142 gives the solid 153 tile";
        EXPECT_EQ(PickerCell(d, 1, 0), 0x999999u);

        d.SelectRow(0);  // back to Red: the tile made by the sliders is still there
        EXPECT_EQ(PickerCell(d, 0, 0), 0x666666u);
        EXPECT_EQ(PickerCell(d, 0, 1), 0x999999u);

        d.Command(d.dialog, 3001);  // the second list from the list menu
        EXPECT_EQ(d.Text(d.dialog, 1004), "Second");
        EXPECT_EQ(d.Rows(), std::vector<std::string>{"Solid"});
        // Quick clicks on red's step arrow: the second press of each pair steps too.
        const ControlBounds arrow = RightArrowBounds(SlidersOf(d).x, SlidersOf(d).RowTop(0));
        for (int pair = 0; pair < 2; ++pair) d.DoubleClick(d.picker, arrow.left + 3, arrow.top + 5);
        EXPECT_EQ(d.Pixel(d.picker, (box.left + box.right) / 2, (box.top + box.bottom) / 2),
                  0x444040u)
            << "64 and four steps";
        d.Press(d.dialog, IDCANCEL);
    });
    EXPECT_EQ(report.result, 1);
    EXPECT_TRUE(block.size() == 198 && block[2] == 1) << "the flag stays up after Cancel";
    const auto library = LoadLibraryFile();
    const auto* web = static_cast<ColorList*>(library->colorLists->ValueAt(0));
    const auto* red = static_cast<ColorEntry*>(web->entries.ValueAt(0));
    const auto* grey = static_cast<ColorEntry*>(web->entries.ValueAt(1));
    EXPECT_EQ(red->gridSize, 2);
    EXPECT_EQ(Rgb(red->cells.Cell(0, 0)), 0x666666u);
    EXPECT_EQ(Rgb(red->cells.Cell(0, 1)), 0x999999u);
    EXPECT_EQ(grey->gridSize, 2) << "Convert stores GridSize 2 in the entry";
    EXPECT_EQ(Rgb(grey->cells.Cell(1, 1)), 0x999999u);
    EXPECT_EQ(Rgb(grey->cells.Cell(2, 2)), 0xFFFFFFu) << "cells outside the 2x2 corner stay";
}

// The Pattern Fill page: swatch, pencil, eraser and eyedropper, the cursor per region,
// a GridSize from the popup's command, and Fill with the dialog's own tile.
TEST_F(FilterDialogTest, PatternFillClickChainPaintsTheTileThatFillLays) {
    host::RunOptions options;
    options.foreground = {0x3C00, 0x7800, 0xB400};
    const host::RunReport report = Run(
        [&](DialogDriver& d) {
            d.ChooseTab(1);
            EXPECT_EQ(d.Send(d.tabs, TCM_GETCURSEL), 1);
            EXPECT_TRUE(IsWindowVisible(d.pattern));
            EXPECT_FALSE(IsWindowVisible(d.picker));
            const RECT editor = d.Place(d.pattern, 1025);
            const RECT swatches = d.Place(d.pattern, 1032);
            const RECT tools = d.Place(d.pattern, 1033);
            auto cell = [&](int row, int column, int pitch) {
                d.Click(d.pattern, editor.left + 4 + column * pitch + pitch / 2,
                        editor.top + 4 + row * pitch + pitch / 2);
            };
            auto editorPixel = [&](int row, int column, int pitch) {
                return d.Pixel(d.pattern, editor.left + 4 + column * pitch + pitch / 2,
                               editor.top + 4 + row * pitch + pitch / 2);
            };
            // The pencil paints the host's foreground first.
            cell(0, 0, 60);
            EXPECT_EQ(editorPixel(0, 0, 60), 0x3C78B4u);
            // Swatch 5 of the web-safe table is (0, 0, 255), taken by the second press of
            // a quick pair whose first took swatch 4, three pixels to its left.
            d.Click(d.pattern, swatches.left + 4 + 4 * 9 + 7, swatches.top + 4 + 5);
            d.Mouse(d.pattern, WM_LBUTTONDBLCLK, swatches.left + 4 + 5 * 9 + 1, swatches.top + 9);
            d.Mouse(d.pattern, WM_LBUTTONUP, swatches.left + 4 + 5 * 9 + 1, swatches.top + 9);
            cell(0, 1, 60);
            EXPECT_EQ(editorPixel(0, 1, 60), 0x0000FFu);
            EXPECT_EQ(MainPreviewCell(d, 0, 1), 0x0000FFu);
            // The eraser lays the back colour, white.
            d.Click(d.pattern, tools.left + 2 * 26 + 13, tools.top + 11);
            cell(1, 1, 60);
            EXPECT_EQ(editorPixel(1, 1, 60), 0xFFFFFFu);
            // The eyedropper takes a cell's colour as the fore colour; the pencil lays it.
            d.Click(d.pattern, tools.left + 26 + 13, tools.top + 11);
            cell(0, 0, 60);
            d.Click(d.pattern, tools.left + 13, tools.top + 11);
            cell(1, 0, 60);
            EXPECT_EQ(editorPixel(1, 0, 60), 0x3C78B4u);
            // The pointer: the tool's over the grid, the dropper over the swatches.
            HCURSOR pencil = LoadCursorA(plugin.module(), MAKEINTRESOURCEA(108));
            HCURSOR dropper = LoadCursorA(plugin.module(), MAKEINTRESOURCEA(109));
            d.Mouse(d.pattern, WM_MOUSEMOVE, editor.left + 30, editor.top + 30);
            CURSORINFO shown = {};
            shown.cbSize = sizeof shown;
            GetCursorInfo(&shown);
            EXPECT_EQ(shown.hCursor, pencil);
            d.Mouse(d.pattern, WM_MOUSEMOVE, swatches.left + 10, swatches.top + 10);
            GetCursorInfo(&shown);
            EXPECT_EQ(shown.hCursor, dropper);
            // A larger grid shows the cells beyond the 2x2 corner: black, never painted.
            d.Command(d.pattern, 40007);
            EXPECT_EQ(d.Text(d.pattern, 1016), "4x4");
            EXPECT_EQ(editorPixel(0, 1, 30), 0x0000FFu);
            EXPECT_EQ(editorPixel(3, 3, 30), 0x000000u);
            cell(3, 3, 30);
            // A drag with the pencil paints each cell it enters; a move without the button
            // paints nothing.
            const int row3 = editor.top + 4 + 3 * 30 + 15, row2 = row3 - 30;
            d.Mouse(d.pattern, WM_LBUTTONDOWN, editor.left + 4 + 15, row3);
            for (int x = 15; x < 90; x += 10)
                d.Mouse(d.pattern, WM_MOUSEMOVE, editor.left + 4 + x, row3, true);
            d.Mouse(d.pattern, WM_LBUTTONUP, editor.left + 4 + 85, row3);
            for (int x = 15; x < 120; x += 10)
                d.Mouse(d.pattern, WM_MOUSEMOVE, editor.left + 4 + x, row2);
            d.Settle();
            d.Screenshot("dialog_pattern_fill");
            d.ChooseTab(0);
            EXPECT_TRUE(d.Visible(d.picker, 1019)) << "a 4x4 tile puts the picker in convert";
            d.Press(d.dialog, IDOK);
        },
        options);
    EXPECT_EQ(report.result, 0);
    ASSERT_EQ(block.size(), 198u);
    EXPECT_EQ(block[4], 4);
    EXPECT_EQ(Rgb(TileCell(0, 0)), 0x3C78B4u);
    EXPECT_EQ(Rgb(TileCell(0, 1)), 0x0000FFu);
    EXPECT_EQ(Rgb(TileCell(1, 1)), 0xFFFFFFu);
    EXPECT_EQ(Rgb(TileCell(1, 0)), 0x3C78B4u);
    for (int column = 0; column < 4; ++column) {
        EXPECT_EQ(Rgb(TileCell(3, column)), 0x3C78B4u) << "the stroke and the click, " << column;
        EXPECT_EQ(Rgb(TileCell(2, column)), 0u) << "no button, no paint, " << column;
    }
    // The image: the 4x4 tile from the rectangle's corner.
    EXPECT_EQ(image.pixels[3 * 1 + 2], 0xFF) << "pixel (0, 1) is the blue cell";
    EXPECT_EQ(image.pixels[3 * (16 * 4 + 4) + 2], 0xB4) << "the tile repeats every 4 pixels";
}

// The colour controls as a click reaches them on both pages: the back box loads the
// host's background colour; a held step arrow steps on every tick and stops at the
// release; the selected tool shows selected from the start; the colour pair swaps,
// resets, and picks through the system colour dialog, whose custom colours are kept;
// the empty swatches of a short palette take no click.
TEST_F(FilterDialogTest, TheColourControlsAnswerTheMouse) {
    {
        ColorLibrary library;
        AddPalette(library, "Short", 10, 4);
        SaveLibraryFile(library);
    }
    for (int i = 0; i < 16; ++i)
        RegDeleteKeyValueA(HKEY_CURRENT_USER, kKey, ("Custom Color " + std::to_string(i)).c_str());
    host::RunOptions options;
    options.foreground = {0x1100, 0x2200, 0x3300};
    options.background = {0x3300, 0x6600, 0xCC00};
    Run(
        [&](DialogDriver& d) {
            const RECT label = d.Place(d.picker, 1035), box = d.Place(d.picker, 1031);
            const auto shown = [&] {
                return d.Pixel(d.picker, (box.left + box.right) / 2, (box.top + box.bottom) / 2);
            };
            d.Click(d.picker, label.left - 28 + 20, label.top + 20);
            EXPECT_EQ(shown(), 0x3366CCu) << "the back box gives its colour";
            const ControlBounds arrow = RightArrowBounds(SlidersOf(d).x, SlidersOf(d).RowTop(0));
            d.Mouse(d.picker, WM_LBUTTONDOWN, arrow.left + 3, arrow.top + 5);
            Sleep(1000);
            d.Mouse(d.picker, WM_LBUTTONUP, arrow.left + 3, arrow.top + 5);
            d.Settle();
            const uint32_t released = shown();
            EXPECT_GT(released >> 16, 0x33u + 3) << "a step at the press and one per tick";
            Sleep(300);
            d.Settle();
            EXPECT_EQ(shown(), released) << "no step after the release";

            d.ChooseTab(1);
            const RECT tools = d.Place(d.pattern, 1033), pair = d.Place(d.pattern, 1034);
            const auto field = [&](int tool) {  // white in a plain button, black selected
                return d.Pixel(d.pattern, tools.left + 26 * tool + 1, tools.top + 1);
            };
            EXPECT_EQ(field(0), 0u) << "the pencil is selected from the start";
            EXPECT_EQ(field(1), 0xFFFFFFu);
            d.Click(d.pattern, tools.left + 2 * 26 + 13, tools.top + 11);
            EXPECT_EQ(field(0), 0xFFFFFFu);
            EXPECT_EQ(field(2), 0u);
            const auto fore = [&] { return d.Pixel(d.pattern, pair.left + 20, pair.top + 20); };
            const auto back = [&] { return d.Pixel(d.pattern, pair.left + 60, pair.top + 60); };
            EXPECT_EQ(fore(), 0x112233u);
            EXPECT_EQ(back(), 0xFFFFFFu);
            d.Click(d.pattern, pair.left + 58, pair.top + 18);  // the swap sign
            EXPECT_EQ(fore(), 0xFFFFFFu);
            EXPECT_EQ(back(), 0x112233u);
            d.Click(d.pattern, pair.left + 14, pair.top + 54);  // the reset sign
            EXPECT_EQ(fore(), 0u);
            EXPECT_EQ(back(), 0xFFFFFFu);
            PostMessageA(d.pattern, WM_LBUTTONDOWN, MK_LBUTTON,
                         MAKELPARAM(pair.left + 60, pair.top + 60));
            PostMessageA(d.pattern, WM_LBUTTONUP, 0, MAKELPARAM(pair.left + 60, pair.top + 60));
            EXPECT_EQ(d.AnswerColorDialog(10, 20, 30, true, "colour_dialog"), "255,255,255");
            EXPECT_EQ(back(), 0x0A141Eu);
            PostMessageA(d.pattern, WM_LBUTTONDOWN, MK_LBUTTON,
                         MAKELPARAM(pair.left + 20, pair.top + 20));
            PostMessageA(d.pattern, WM_LBUTTONUP, 0, MAKELPARAM(pair.left + 20, pair.top + 20));
            d.AnswerColorDialog(200, 0, 0, false);
            EXPECT_EQ(fore(), 0u) << "Cancel keeps the colour";

            d.Command(d.pattern, 3500);  // the short palette: swatch 9 is its last colour
            const RECT swatches = d.Place(d.pattern, 1032);
            d.Click(d.pattern, swatches.left + 4 + 9 * 9 + 4, swatches.top + 9);
            const uint32_t last = fore();
            d.Click(d.pattern, swatches.left + 4 + 10 * 9 + 4, swatches.top + 9);
            EXPECT_EQ(fore(), last) << "an empty swatch takes no click";
            EXPECT_NE(last, 0u);
            d.Press(d.dialog, IDCANCEL);
        },
        options);
    // The colour dialog's 16 custom colours are kept, the one added first.
    DWORD value = 0, size = sizeof value;
    EXPECT_EQ(
        RegGetValueA(HKEY_CURRENT_USER, kKey, "Custom Color 0", RRF_RT_ANY, nullptr, &value, &size),
        ERROR_SUCCESS);
    EXPECT_EQ(value, 0x1E140Au);
    size = sizeof value;
    EXPECT_EQ(RegGetValueA(HKEY_CURRENT_USER, kKey, "Custom Color 15", RRF_RT_ANY, nullptr, &value,
                           &size),
              ERROR_SUCCESS);
}

// More than 50 lists: the menu shows 50 and the 50th is in force. A damaged library:
// an empty one, and the refused file kept aside byte for byte at teardown.
TEST_F(FilterDialogTest, FiftyListsAtMostAndADamagedFileKeptAside) {
    {
        ColorLibrary library;
        for (int i = 0; i < 55; ++i)
            AddColor(*AddList(library, "List " + std::to_string(i)), "C" + std::to_string(i), 2, i);
        SaveLibraryFile(library);
    }
    Run([&](DialogDriver& d) {
        EXPECT_EQ(d.Text(d.dialog, 1004), "List 49");
        EXPECT_EQ(d.Rows(), std::vector<std::string>{"C49"});
        d.Command(d.dialog, 3002);  // any choice ends at the 50th
        EXPECT_EQ(d.Text(d.dialog, 1004), "List 49");
        // The popup, opened by the list button: 7 fixed items and 50 lists.
        PostMessageA(GetDlgItem(d.dialog, 1004), BM_CLICK, 0, 0);
        HWND popup = nullptr;
        for (int i = 0; i < 200 && !popup; ++i, Sleep(10)) popup = FindWindowA("#32768", nullptr);
        ASSERT_NE(popup, nullptr);
        HMENU menu = reinterpret_cast<HMENU>(SendMessageA(popup, MN_GETHMENU, 0, 0));
        EXPECT_EQ(GetMenuItemCount(menu), 57);
        char text[64] = {};
        GetMenuStringA(menu, 7, text, sizeof text, MF_BYPOSITION);
        EXPECT_STREQ(text, "&1 List 0");
        GetMenuStringA(menu, 56, text, sizeof text, MF_BYPOSITION);
        EXPECT_STREQ(text, "&50 List 49");
        EXPECT_EQ(GetMenuItemID(menu, 56), 3049u);
        d.Settle();
        d.Screenshot("dialog_list_menu");
        PostMessageA(popup, WM_KEYDOWN, VK_ESCAPE, 0);
        d.Settle();
        d.Press(d.dialog, IDCANCEL);
    });
    EXPECT_EQ(LoadLibraryFile()->colorLists->Count(), 55) << "lists beyond the menu are kept";

    const Bytes damaged = {'T', 'e', 's', 's', 'C', 'e', 'l', 'l', '1', '1', 0x2C, 0xFF, 'x'};
    WriteWholeFile(libraryPath, damaged);
    Run([&](DialogDriver& d) {
        EXPECT_EQ(d.Text(d.dialog, 1004), "none");
        EXPECT_TRUE(d.Rows().empty());
        d.Press(d.dialog, IDCANCEL);
    });
    EXPECT_EQ(ReadWholeFile(libraryPath + ".bak"), damaged);
    EXPECT_EQ(ReadWholeFile(libraryPath),
              Bytes({'T', 'e', 's', 's', 'C', 'e', 'l', 'l', '1', '1', ';'}));
}

}  // namespace
}  // namespace tessellum::test
