// The main dialog as a host and a user meet it: our host runs the real plug-in, the real
// modal dialog comes up over the host's window, and a second thread clicks, drags, types
// and reads it back. Each test is a run or two that checks many facts; afterwards the
// parameters block, the library file and the registry are read back. Last, the dialog
// built from the plug-in's sources in this program (its resources taken from the built
// plug-in) with its allocations failing.
#include "dialog/filter_dialog.h"

#include <windows.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "color/allocate.h"
#include "color/web_safe.h"
#include "controls/grid_geometry.h"
#include "controls/pattern_painters.h"
#include "controls/slider_geometry.h"
#include "controls/swatch_layout.h"
#include "host/dll_instance.h"
#include "storage/library_file.h"
#include "tests/dialog/dialog_driver.h"
#include "tests/support/failing_heap.h"
#include "tests/support/library_samples.h"
#include "tests/support/plugin_path.h"
#include "tests/support/scratch_directory.h"
#include "tools/host/filter_host.h"
#include "tools/host/host_window.h"

namespace tessellum {
HINSTANCE hDllInstance = nullptr;  // the plug-in's module, for its resources
}

namespace tessellum::test {
namespace {

using Bytes = std::vector<uint8_t>;
using Rows = std::vector<std::string>;
constexpr char kKey[] = "Software\\Quarry\\Tessellum\\1.x";
const Bytes kEmptyLibrary = {'T', 'e', 's', 's', 'C', 'e', 'l', 'l', '1', '1', ';'};

uint32_t Rgb(const Rgb8& c) {
    return (c.red << 16) | (c.green << 8) | c.blue;
}
int Sizing() {  // byte 0 of the "Sizing" value, 0xFF without one
    BYTE bytes[5] = {0xFF};
    DWORD size = sizeof bytes;
    RegGetValueA(HKEY_CURRENT_USER, kKey, "Sizing", RRF_RT_REG_BINARY, nullptr, bytes, &size);
    return bytes[0];
}
int ClientRight(const DialogDriver& d) {  // the dialog ends 7 pixels past its last control
    RECT client = {};
    GetClientRect(d.dialog, &client);
    return client.right - 7;
}
uint32_t Middle(const DialogDriver& d, int control) {
    const RECT place = d.Place(control);
    return d.Pixel(control, (place.right - place.left) / 2, (place.bottom - place.top) / 2);
}
bool NoneCameUp(const DialogDriver& d, const char* caption) {
    d.Settle();
    return FindWindowA(kDialogClass, caption) == nullptr;
}

// A private plug-ins folder for the library file, the real plug-in in our host's session,
// a small grey image, and the parameters block carried from one run to the next.
class DialogTest : public ::testing::Test {
protected:
    void SetUp() override { PointLibraryAt(folder); }

    host::RunReport Run(const std::function<void(DialogDriver&)>& scenario,
                        host::RunOptions options = {}) {
        image.width = image.height = 16;
        image.planes = 3;
        image.pixels.assign(16 * 16 * 3, 0x80);
        if (!block.empty()) session.SetParametersBlock(block);
        options.parent = host::MakeHostWindow("dialog test");
        host::RunReport report;
        EXPECT_TRUE(WithDialog([&] { report = session.Run(image, options); }, scenario))
            << "the dialog did not come up";
        DestroyWindow(options.parent);
        block = session.ParametersBlock();
        return report;
    }
    std::unique_ptr<ColorLibrary> Saved() {
        return std::unique_ptr<ColorLibrary>(LibraryFile().ReadLibrary(libraryPath.c_str()));
    }
    void Save(const ColorLibrary& library) {
        LibraryFile().WriteLibrary(&library, libraryPath.c_str());
    }
    uint32_t BlockCell(int row, int column) const {  // of the stored parameters block
        const uint8_t* cell = block.data() + 5 + (row * 8 + column) * 3;
        return (cell[0] << 16) | (cell[1] << 8) | cell[2];
    }
    // A colour table whose colour i is (i, 255 - i, 7i), `size` bytes long.
    std::string WriteColorTable(const std::string& name, size_t size) {
        Bytes bytes(size, 0xEE);
        for (size_t i = 0; 3 * i + 2 < size && i < 256; ++i)
            bytes[3 * i] = i, bytes[3 * i + 1] = 255 - i, bytes[3 * i + 2] = 7 * i;
        WriteWholeFile(scratch.Path(name), bytes);
        return scratch.Path(name);
    }

    ScratchDirectory scratch;
    std::string folder = scratch.Path("plug-ins folder");
    std::string libraryPath = folder + "\\Tessellum.dat";
    host::PluginLibrary plugin{PluginPath()};
    host::FilterSession session{plugin};
    host::Image image;
    Bytes block;
};

TEST_F(DialogTest, FirstRunOpensExpandedOnTheColorPickerAndFillsTheZeroTile) {
    RegDeleteKeyValueA(HKEY_CURRENT_USER, kKey, "Sizing");
    host::RunOptions skipsParameters;  // Start makes the block itself and asks the dialog
    skipsParameters.repeat = true;
    const host::RunReport report = Run(
        [&](DialogDriver& d) {
            EXPECT_EQ(d.Text(kListButton), "none");
            EXPECT_TRUE(IsWindowVisible(d.picker) && !IsWindowVisible(d.pattern));
            EXPECT_TRUE(d.Visible(kForeBack) && !d.Visible(kConvert) && !d.Visible(kConvertText));
            EXPECT_EQ(ClientRight(d), d.Place(kTabs).right) << "expanded";
            // Windows' metrics: "MS Sans Serif" 8 gives base units of 6 x 13 pixels, so the
            // template's 357 units are 536 pixels (a wider stand-in font makes them 626).
            RECT units = {0, 0, 357, 8};
            MapDialogRect(d.dialog, &units);
            EXPECT_EQ(units.right, 536);
            EXPECT_EQ(units.bottom, 13);
            EXPECT_EQ(d.Pixel(kPickerTile, 4, 4) | d.Pixel(kPreview, 5, 5), 0u) << "zero tile";
            d.Screenshot("dialog_color_picker_first_run");
            d.Press(IDOK);
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
    EXPECT_EQ(ReadWholeFile(libraryPath), kEmptyLibrary);
    EXPECT_EQ(Sizing(), 1);
}

// A collapsed start, then a library colour in force: the sliders write into it, Convert
// collapses a 3x3 one, and Cancel keeps every edit in the file while the stored tile,
// the image and the host's rectangles stay.
TEST_F(DialogTest, SlidersAndConvertEditTheSelectedColorAndCancelKeepsTheTile) {
    {
        ColorLibrary library;
        ColorList* web = AddList(library, "Web");
        std::memset(&AddColor(*web, "Red", 2, 1)->cells, 0, sizeof(Pattern));  // sliders at 0
        ColorEntry* grey = AddColor(*web, "Grey3", 3, 2);
        for (int i = 0; i < 9; ++i)  // five of nine white, the rest black
            grey->cells.Cell(i / 3, i % 3) = i % 2 == 0 ? Rgb8{255, 255, 255} : Rgb8{0, 0, 0};
        std::memset(&AddColor(*AddList(library, "Second"), "Solid", 2, 3)->cells, 0x40,
                    sizeof(Pattern));
        Save(library);
    }
    const BYTE collapsed[5] = {0};
    RegSetKeyValueA(HKEY_CURRENT_USER, kKey, "Sizing", REG_BINARY, collapsed, sizeof collapsed);
    block.assign(198, 0);
    block[2] = 1, block[4] = 3, block[5] = 0x42;
    const Bytes stored = block;
    const host::RunReport report = Run([&](DialogDriver& d) {
        EXPECT_EQ(ClientRight(d), d.Place(kSizing).right) << "collapsed";
        d.Press(kSizing);
        EXPECT_EQ(ClientRight(d), d.Place(kTabs).right) << "expanded";
        EXPECT_EQ(d.Text(kListButton), "Web");
        EXPECT_EQ(d.Rows(), (Rows{"Red", "Grey3"}));
        EXPECT_EQ(d.SelectedRow(), 0);
        for (int row = 0, y = 33; row < 3; ++row, y += 25) {  // each thumb from 0 to 128
            d.Mouse(kSliders, WM_LBUTTONDOWN, ThumbLeft(38, 0) + 5, y);
            d.Mouse(kSliders, WM_MOUSEMOVE, 38 + 64, y);
            d.Mouse(kSliders, WM_LBUTTONUP, 38 + 64, y);
        }
        d.Settle();
        EXPECT_EQ(d.Pixel(kPickerTile, 4, 4), 0x666666u);
        EXPECT_EQ(d.Pixel(kPickerTile, 5, 4), 0x999999u);
        EXPECT_EQ(d.Pixel(kPreview, 5, 5), 0x666666u);
        EXPECT_EQ(Middle(d, kShownColor), 0x808080u);

        d.SelectRow(1);  // Grey3: the convert state
        EXPECT_TRUE(d.Visible(kConvert) && d.Visible(kConvertText) && !d.Visible(kForeBack));
        EXPECT_EQ(d.Text(kGridSize), "3x3");
        d.Press(kConvert);
        EXPECT_FALSE(d.Visible(kConvert));
        EXPECT_EQ(d.Text(kGridSize), "2x2");
        EXPECT_EQ(d.Pixel(kPickerTile, 4, 5), 0x999999u) << "mean 142 gives the solid 153 tile";
        d.SelectRow(0);  // back to Red: the tile made by the sliders is still there
        EXPECT_EQ(d.Pixel(kPickerTile, 4, 4), 0x666666u);

        d.Command(3001);  // the second list from the list menu
        EXPECT_EQ(d.Text(kListButton), "Second");
        EXPECT_EQ(d.Rows(), Rows{"Solid"});
        // Quick clicks on red's step arrow: the second press of each pair steps too.
        const ControlBounds arrow = RightArrowBounds(38, 20);
        for (int pair = 0; pair < 2; ++pair) d.Click(kSliders, arrow.left + 3, arrow.top + 5, true);
        EXPECT_EQ(Middle(d, kShownColor), 0x444040u) << "64 and four steps";
        // Held, the arrow goes on stepping with the repeat timer: a step at the press and one
        // on each tick, until three ticks have stepped (or 10 s have passed, however busy
        // the machine). Released, it stops: in three ticks' time nothing steps.
        d.Mouse(kSliders, WM_LBUTTONDOWN, arrow.left + 3, arrow.top + 5);
        for (int i = 0; i < 500 && Middle(d, kShownColor) >> 16 < 0x48; ++i) Sleep(20);
        d.Mouse(kSliders, WM_LBUTTONUP, arrow.left + 3, arrow.top + 5);
        d.Settle();
        const uint32_t held = Middle(d, kShownColor);
        EXPECT_GE(held >> 16, 0x48u) << "a step at the press and one on each tick";
        Sleep(3 * RgbSliderPanel::kRepeatPeriod);
        EXPECT_EQ(Middle(d, kShownColor), held) << "no step after the release";
        d.Press(IDCANCEL);
    });
    EXPECT_EQ(report.result, 1);
    ASSERT_EQ(report.calls.size(), 3u) << "Parameters, Prepare, Start; no Continue, no Finish";
    EXPECT_EQ(report.calls[2].selector, kSelectorStart);
    EXPECT_EQ(image.pixels, Bytes(16 * 16 * 3, 0x80));
    EXPECT_EQ(block, stored) << "Cancel leaves the stored tile and the flag as they were";
    EXPECT_EQ(Sizing(), 1);
    const auto library = Saved();
    const auto* web = static_cast<ColorList*>(library->colorLists->ValueAt(0));
    const auto* red = static_cast<ColorEntry*>(web->entries.ValueAt(0));
    const auto* grey = static_cast<ColorEntry*>(web->entries.ValueAt(1));
    EXPECT_EQ(Rgb(red->cells.Cell(0, 0)), 0x666666u);
    EXPECT_EQ(Rgb(red->cells.Cell(0, 1)), 0x999999u);
    EXPECT_EQ(grey->gridSize, 2) << "Convert stores GridSize 2 in the entry";
    EXPECT_EQ(Rgb(grey->cells.Cell(1, 1)), 0x999999u);
    EXPECT_EQ(Rgb(grey->cells.Cell(2, 2)), 0xFFFFFFu) << "cells outside the 2x2 corner stay";
}

// The edit field open on the Color Picker page, if any.
HWND Field(const DialogDriver& d) {
    HWND edit = nullptr;
    EnumChildWindows(d.picker, FindEdit, reinterpret_cast<LPARAM>(&edit));
    return edit;
}
// A read-out's box relative to the slider place (as the driver clicks), or with `inPage`
// in the page's pixels (as the field stands). At 96 DPI, as this scenario runs.
ControlBounds Readout(const DialogDriver& d, int row, ReadoutColumn column, bool inPage = false) {
    const RECT place = inPage ? d.Place(kSliders) : RECT{};
    return ReadoutBounds(place.left + kSliderPlaceLeft, place.top + kSliderPlaceTop,
                         kSliderRowSpacing, row, column, kBaseDpi);
}
void ClickReadout(const DialogDriver& d, int row, ReadoutColumn column) {
    const ControlBounds box = Readout(d, row, column);
    d.Click(kSliders, (box.left + box.right) / 2, (box.top + box.bottom) / 2);
}
bool Over(const DialogDriver& d, HWND field, int row, ReadoutColumn column) {
    const ControlBounds box = Readout(d, row, column, true);
    RECT rect = {};
    GetWindowRect(field, &rect);
    MapWindowPoints(nullptr, d.picker, reinterpret_cast<POINT*>(&rect), 2);
    return rect.left == box.left && rect.top == box.top && rect.right == box.right &&
           rect.bottom == box.bottom;
}
// Polls for `event` for at most 5 seconds; a failure names it.
bool Until(const char* event, const std::function<bool()>& happened) {
    for (int i = 0; i < 250; ++i, Sleep(20))
        if (happened()) return true;
    ADD_FAILURE() << "in vain after 5 s: " << event;
    return false;
}
HWND FocusOf(const DialogDriver& d) {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(d.dialog, nullptr), &info);
    return info.hwndFocus;
}
// Ctrl+V with `text` on the clipboard, then Tab: once the focus has moved on, the paste
// before it has been handled, whatever it did.
void Paste(const DialogDriver& d, const std::string& text) {
    SetClipboardText(d.dialog, text);
    const HWND before = FocusOf(d);
    Chord(VK_CONTROL, 'V');
    Keys("", VK_TAB);
    Until("the Tab after Ctrl+V", [&] { return FocusOf(d) != before; });
}

// Values typed over the read-outs and colours pasted, with real keys. Run 1, on a black
// 2x2 colour: red's hex typed, green's reached by Tab, keys refused, Shift+Tab, Escape,
// and #3C78B4 pasted and filled. Run 2: the mean of that tile, a paste refused, the whole
// colour typed over the "Hex" head; a 3x3 colour in Convert takes no field and no paste.
TEST_F(DialogTest, ValuesTypedOverTheReadoutsAndPastedColoursWorkAsTheSliders) {
    {
        ColorLibrary library;
        ColorList* web = AddList(library, "Web");
        std::memset(&AddColor(*web, "Black", 2, 1)->cells, 0, sizeof(Pattern));
        std::memset(&AddColor(*web, "Odd3", 3, 2)->cells, 0x12, sizeof(Pattern));
        Save(library);
    }
    using C = ReadoutColumn;
    const auto closed = [](const DialogDriver& d) {
        return Until("the field closes", [&] { return Field(d) == nullptr; });
    };
    const host::RunReport report = Run([&](DialogDriver& d) {
        ClickReadout(d, 0, C::kHex);
        HWND field = Field(d);
        ASSERT_NE(field, nullptr) << "a click on red's hex read-out opens a field";
        EXPECT_TRUE(Over(d, field, 0, C::kHex));
        EXPECT_EQ(WindowText(field), "00");
        EXPECT_EQ(Send(field, EM_GETSEL), MAKELONG(0, 2)) << "all of it selected";
        EXPECT_EQ(Send(field, WM_GETFONT), Send(d.picker, WM_GETFONT));
        EXPECT_EQ(FocusOf(d), field);
        Keys("3c");
        Until("3c typed", [&] { return WindowText(field) == "3c"; });
        d.Screenshot("dialog_value_field");
        Keys("", VK_RETURN);
        closed(d);
        EXPECT_TRUE(IsWindow(d.dialog) && IsWindowVisible(d.dialog)) << "Enter pressed no Fill";
        EXPECT_EQ(Middle(d, kShownColor), 0x3C0000u);

        ClickReadout(d, 0, C::kHex);
        Keys("", VK_TAB);
        Until("Tab moves the field to green's hex",
              [&] { return (field = Field(d)) != nullptr && Over(d, field, 1, C::kHex); });
        Keys("78");
        Keys("", VK_RETURN);
        closed(d);
        EXPECT_EQ(Middle(d, kShownColor), 0x3C7800u);
        // Shift+Tab from green's decimal; 300 is out of range and g no digit: both refused.
        ClickReadout(d, 1, C::kDecimal);
        EXPECT_EQ(WindowText(Field(d)), "120");
        Chord(VK_SHIFT, VK_TAB);
        Until("Shift+Tab moves the field to red's decimal",
              [&] { return (field = Field(d)) != nullptr && Over(d, field, 0, C::kDecimal); });
        EXPECT_EQ(WindowText(field), "60");
        Keys("300g");
        Keys("", VK_RETURN);
        closed(d);
        EXPECT_EQ(Middle(d, kShownColor), 0x1E7800u) << "30 went in, the field stayed open";
        ClickReadout(d, 2, C::kDecimal);
        Keys("99");
        Keys("", VK_ESCAPE);
        closed(d);
        EXPECT_EQ(Middle(d, kShownColor), 0x1E7800u) << "Escape changes nothing";
        EXPECT_TRUE(IsWindow(d.dialog) && IsWindowVisible(d.dialog)) << "nor ends the dialog";
        Paste(d, "#3C78B4");
        EXPECT_EQ(Middle(d, kShownColor), 0x3C78B4u);
        d.Press(IDOK);
    });
    EXPECT_EQ(report.result, 0);
    ASSERT_EQ(block.size(), 198u);
    const uint32_t tile[4] = {0x336699, 0x3399CC, 0x3399CC, 0x336699};  // #3C78B4's checker
    for (int i = 0; i < 4; ++i) EXPECT_EQ(BlockCell(i / 2, i % 2), tile[i]) << i;
    const Bytes filled = block;

    Run([&](DialogDriver& d) {
        EXPECT_EQ(Middle(d, kShownColor), 0x3380B3u) << "the mean of the tile Black now holds";
        Paste(d, "#GG0000");
        EXPECT_EQ(Middle(d, kShownColor), 0x3380B3u);
        ClickReadout(d, kSliderHeadRow, C::kHex);
        HWND field = Field(d);
        ASSERT_NE(field, nullptr) << "a click on the Hex head opens the whole colour's field";
        EXPECT_TRUE(Over(d, field, kSliderHeadRow, C::kHex));
        EXPECT_EQ(WindowText(field), "#3380B3");
        Keys("rgb(51, 102, 153)");
        Until("the colour typed", [&] { return WindowText(field) == "rgb(51, 102, 153)"; });
        d.Screenshot("dialog_color_field");
        Keys("", VK_RETURN);
        closed(d);
        EXPECT_EQ(Middle(d, kShownColor), 0x336699u);

        d.SelectRow(1);  // Odd3: the Convert state
        EXPECT_TRUE(d.Visible(kConvert));
        ClickReadout(d, 0, C::kHex);
        ClickReadout(d, kSliderHeadRow, C::kHex);
        EXPECT_EQ(Field(d), nullptr) << "no field in the Convert state";
        Paste(d, "#3C78B4");
        EXPECT_TRUE(d.Visible(kConvert));
        d.Press(IDCANCEL);
    });
    EXPECT_EQ(Bytes(block.begin() + 4, block.end()), Bytes(filled.begin() + 4, filled.end()))
        << "Cancel keeps the stored tile";
    const auto library = Saved();
    const auto* web = static_cast<ColorList*>(library->colorLists->ValueAt(0));
    const auto* black = static_cast<ColorEntry*>(web->entries.ValueAt(0));
    const auto* odd = static_cast<ColorEntry*>(web->entries.ValueAt(1));
    for (int i = 0; i < 4; ++i) EXPECT_EQ(Rgb(black->cells.Cell(i / 2, i % 2)), 0x336699u) << i;
    EXPECT_EQ(odd->gridSize, 3);
    EXPECT_EQ(Rgb(odd->cells.Cell(0, 0)), 0x121212u) << "no paste reached the 3x3 colour";
}

// Both pages' controls as a click reaches them, in one run: the back box loads the host's
// background colour; the pencil is selected from the start; swatches, pencil, eraser and
// eyedropper; the cursor per region; a GridSize from the popup's command; drag painting;
// the colour pair swaps, resets and picks through the system colour dialog, whose custom
// colours are kept; an empty swatch of a short palette takes no click. Fill lays the tile.
TEST_F(DialogTest, TheControlsOfBothPagesPaintTheTileThatFillLays) {
    {
        ColorLibrary library;
        AddPalette(library, "Short", 10, 4);
        Save(library);
    }
    for (int i = 0; i < 16; ++i)
        RegDeleteKeyValueA(HKEY_CURRENT_USER, kKey, ("Custom Color " + std::to_string(i)).c_str());
    host::RunOptions options;
    options.foreground = {0x3C00, 0x7800, 0xB400};
    options.background = {0x3300, 0x6600, 0xCC00};
    const host::RunReport report = Run(
        [&](DialogDriver& d) {
            d.Click(kForeBack, -8, 20);
            EXPECT_EQ(Middle(d, kShownColor), 0x3366CCu) << "the back box gives its colour";

            d.ChooseTab(1);
            const auto field = [&](int tool) { return d.Pixel(kTools, 26 * tool + 1, 1); };
            EXPECT_EQ(field(0), 0u) << "the pencil shows selected (black) from the start";
            EXPECT_EQ(field(1), 0xFFFFFFu);
            const auto at = [](int index, int pitch) { return 4 + index * pitch + pitch / 2; };
            const auto cell = [&](int row, int column, int pitch = 60) {
                d.Click(kEditor, at(column, pitch), at(row, pitch));
            };
            const auto shown = [&](int row, int column, int pitch = 60) {
                return d.Pixel(kEditor, at(column, pitch), at(row, pitch));
            };
            const auto tool = [&](int index) { d.Click(kTools, 26 * index + 13, 11); };
            cell(0, 0);
            EXPECT_EQ(shown(0, 0), 0x3C78B4u) << "the pencil paints the host's foreground";
            // Swatch 5 of the web-safe table is (0, 0, 255), taken by the second press of
            // a quick pair whose first took swatch 4, three pixels to its left.
            d.Click(kSwatches, 4 + 4 * 9 + 7, 9);
            d.Mouse(kSwatches, WM_LBUTTONDBLCLK, 4 + 5 * 9 + 1, 9);
            d.Mouse(kSwatches, WM_LBUTTONUP, 4 + 5 * 9 + 1, 9);
            cell(0, 1);
            EXPECT_EQ(shown(0, 1), 0x0000FFu);
            EXPECT_EQ(d.Pixel(kPreview, 5, 4), 0x0000FFu);
            tool(2);  // the eraser lays the back colour, white
            EXPECT_EQ(field(0), 0xFFFFFFu);
            EXPECT_EQ(field(2), 0u);
            cell(1, 1);
            EXPECT_EQ(shown(1, 1), 0xFFFFFFu);
            tool(1);  // the eyedropper takes a cell's colour as the fore colour
            cell(0, 0);
            tool(0);
            cell(1, 0);
            EXPECT_EQ(shown(1, 0), 0x3C78B4u);
            // The pointer: the tool's over the grid, the dropper over the swatches.
            CURSORINFO pointer = {};
            pointer.cbSize = sizeof pointer;
            d.Mouse(kEditor, WM_MOUSEMOVE, 30, 30);
            GetCursorInfo(&pointer);
            EXPECT_EQ(pointer.hCursor, LoadCursorA(plugin.module(), MAKEINTRESOURCEA(108)));
            d.Mouse(kSwatches, WM_MOUSEMOVE, 10, 10);
            GetCursorInfo(&pointer);
            EXPECT_EQ(pointer.hCursor, LoadCursorA(plugin.module(), MAKEINTRESOURCEA(109)));
            // A larger grid shows the cells beyond the 2x2 corner: black, never painted.
            d.Command(kPattern + 40007);
            EXPECT_EQ(d.Text(kGridSize), "4x4");
            EXPECT_EQ(shown(0, 1, 30), 0x0000FFu);
            EXPECT_EQ(shown(3, 3, 30), 0x000000u);
            cell(3, 3, 30);
            // A drag with the pencil paints each cell it enters; without the button, none.
            d.Mouse(kEditor, WM_LBUTTONDOWN, 19, at(3, 30));
            for (int x = 15; x < 90; x += 10)
                d.Mouse(kEditor, WM_MOUSEMOVE, 4 + x, at(3, 30), true);
            d.Mouse(kEditor, WM_LBUTTONUP, 89, at(3, 30));
            for (int x = 15; x < 120; x += 10) d.Mouse(kEditor, WM_MOUSEMOVE, 4 + x, at(2, 30));
            d.Settle();
            d.Screenshot("dialog_pattern_fill");

            using Pair = std::pair<uint32_t, uint32_t>;  // the fore and back colours shown
            const auto colours = [&] {
                return Pair{d.Pixel(kPair, 20, 20), d.Pixel(kPair, 60, 60)};
            };
            EXPECT_EQ(colours(), Pair(0x3C78B4, 0xFFFFFF));
            d.Click(kPair, 58, 18);  // the swap sign
            EXPECT_EQ(colours(), Pair(0xFFFFFF, 0x3C78B4));
            d.Click(kPair, 14, 54);  // the reset sign
            EXPECT_EQ(colours(), Pair(0, 0xFFFFFF));
            d.Click(kPair, 60, 60, false, true);  // it opens the colour dialog
            EXPECT_EQ(d.AnswerColorDialog(10, 20, 30, true), "255,255,255");
            d.Click(kPair, 20, 20, false, true);
            d.AnswerColorDialog(200, 0, 0, false);
            EXPECT_EQ(colours(), Pair(0, 0x0A141E)) << "OK takes the colour, Cancel keeps it";
            d.Command(kPattern + 3500);  // the short palette: swatch 9 is its last colour
            d.Click(kSwatches, 4 + 9 * 9 + 4, 9);
            const uint32_t last = d.Pixel(kPair, 20, 20);
            d.Click(kSwatches, 4 + 10 * 9 + 4, 9);
            EXPECT_EQ(d.Pixel(kPair, 20, 20), last) << "an empty swatch takes no click";
            EXPECT_NE(last, 0u);
            d.ChooseTab(0);
            EXPECT_TRUE(d.Visible(kConvert)) << "a 4x4 tile puts the picker in convert";
            d.Press(IDOK);
        },
        options);
    EXPECT_EQ(report.result, 0);
    ASSERT_EQ(block.size(), 198u);
    EXPECT_EQ(block[4], 4);
    const uint32_t tile[2][2] = {{0x3C78B4, 0x0000FF}, {0x3C78B4, 0xFFFFFF}};
    for (int i = 0; i < 4; ++i) EXPECT_EQ(BlockCell(i / 2, i % 2), tile[i / 2][i % 2]) << i;
    for (int column = 0; column < 4; ++column) {
        EXPECT_EQ(BlockCell(3, column), 0x3C78B4u) << "the stroke and the click, " << column;
        EXPECT_EQ(BlockCell(2, column), 0u) << "no button, no paint, " << column;
    }
    EXPECT_EQ(image.pixels[3 * 1 + 2], 0xFF) << "pixel (0, 1) is the blue cell";
    EXPECT_EQ(image.pixels[3 * (16 * 4 + 4) + 2], 0xB4) << "the tile repeats every 4 pixels";
    DWORD value = 0, size = sizeof value;  // the 16 custom colours kept, the added one first
    RegGetValueA(HKEY_CURRENT_USER, kKey, "Custom Color 0", RRF_RT_ANY, nullptr, &value, &size);
    EXPECT_EQ(value, 0x1E140Au);
    EXPECT_EQ(RegGetValueA(HKEY_CURRENT_USER, kKey, "Custom Color 15", RRF_RT_ANY, 0, 0, 0), 0);
}

// More than 50 lists: the menu shows 50 and the 50th is in force. A damaged library:
// an empty one, and the refused file kept aside byte for byte at teardown.
TEST_F(DialogTest, FiftyListsAtMostAndADamagedFileKeptAside) {
    {
        ColorLibrary library;
        for (int i = 0; i < 55; ++i)
            AddColor(*AddList(library, "List " + std::to_string(i)), "C" + std::to_string(i), 2, i);
        Save(library);
    }
    Run([&](DialogDriver& d) {
        d.Command(3002);  // any choice ends at the 50th
        EXPECT_EQ(d.Text(kListButton), "List 49");
        EXPECT_EQ(d.Rows(), Rows{"C49"});
        PostMessageA(d.Item(kListButton), BM_CLICK, 0, 0);  // its popup: 7 items and 50 lists
        HWND popup = nullptr;
        for (int i = 0; i < 500 && !popup; ++i, Sleep(20)) popup = FindWindowA("#32768", nullptr);
        ASSERT_NE(popup, nullptr);
        HMENU menu = reinterpret_cast<HMENU>(Send(popup, MN_GETHMENU));
        EXPECT_EQ(GetMenuItemCount(menu), 57);
        char first[64] = {}, last[64] = {};
        GetMenuStringA(menu, 7, first, sizeof first, MF_BYPOSITION);
        GetMenuStringA(menu, 56, last, sizeof last, MF_BYPOSITION);
        EXPECT_EQ(std::string(first) + "|" + last, "&1 List 0|&50 List 49");
        EXPECT_EQ(GetMenuItemID(menu, 56), 3049u);
        PostMessageA(popup, WM_KEYDOWN, VK_ESCAPE, 0);
        d.Settle();
    });
    EXPECT_EQ(Saved()->colorLists->Count(), 55) << "lists beyond the menu are kept";

    const Bytes damaged = {'T', 'e', 's', 's', 'C', 'e', 'l', 'l', '1', '1', 0x2C, 0xFF, 'x'};
    WriteWholeFile(libraryPath, damaged);
    Run([&](DialogDriver& d) { EXPECT_EQ(d.Text(kListButton), "none"); });
    EXPECT_EQ(ReadWholeFile(libraryPath + ".bak"), damaged);
    EXPECT_EQ(ReadWholeFile(libraryPath), kEmptyLibrary);
}

// The user's hold on the library: commands from the list menu, the buttons and the
// Delete key; prompts answered with typed names; questions answered Yes and No.
TEST_F(DialogTest, ListsAndColorsMadeNamedAndDeletedFromNothing) {
    Run([&](DialogDriver& d) {
        // No list: nothing to name, delete or export, and Delete in the empty box is idle.
        for (int command : {kNameList, kDeleteList, kExport}) d.Command(command, true);
        d.PostKey(kColorBox, VK_DELETE);
        EXPECT_TRUE(NoneCameUp(d, "Name List") && NoneCameUp(d, "Confirm Delete") &&
                    NoneCameUp(d, "Export List"));
        // New Color with no list asks for a list first; Cancel at the colour leaves it empty.
        d.Command(kNewColor, true);
        EXPECT_EQ(d.AnswerPrompt("Create new color list", "Spring", true, "name_prompt"),
                  Seen("Enter new color list name", "New List"));
        EXPECT_EQ(d.AnswerPrompt("Create a new color", "", false),
                  Seen("Enter new color name", "New Color"));
        EXPECT_EQ(d.Text(kListButton), "Spring");
        EXPECT_TRUE(d.Rows().empty());
        // Name Color with no row selected makes a colour; a new colour stands last and
        // row 0 is selected.
        d.Command(kNameColor, true);
        d.AnswerPrompt("Create a new color", "Leaf");
        d.Command(kNewColor, true);
        d.AnswerPrompt("Create a new color", "Sky");
        EXPECT_EQ(d.Rows(), (Rows{"Leaf", "Sky"}));
        EXPECT_EQ(d.SelectedRow(), 0);
        // Renaming: typing stops at 253 characters; the renamed row stays selected, and
        // Cancel moves the selection to row 0.
        d.SelectRow(1);
        d.Command(kNameColor, true);
        EXPECT_EQ(d.AnswerPrompt("Name Color", std::string(260, 'x')),
                  Seen("Enter new name", "Sky"));
        EXPECT_EQ(d.Rows(), (Rows{"Leaf", std::string(253, 'x')}));
        EXPECT_EQ(d.SelectedRow(), 1);
        d.Command(kNameColor, true);
        d.AnswerPrompt("Name Color", "ignored", false);
        EXPECT_EQ(d.SelectedRow(), 0);
        d.PostKey(kColorBox, VK_DOWN);  // keys other than Delete keep their effect
        d.Settle();
        EXPECT_EQ(d.SelectedRow(), 1);

        // A second list, renamed to nothing, then its only colour deleted: No keeps it.
        d.Command(kNewList, true);
        d.AnswerPrompt("Create new color list", "Autumn");
        d.AnswerPrompt("Create a new color", "Red");
        EXPECT_EQ(d.Text(kListButton), "Autumn");
        d.Command(kNameList, true);
        EXPECT_EQ(d.AnswerPrompt("Name List", "").second, "Autumn");
        EXPECT_EQ(d.Text(kListButton), "");
        d.PostKey(kColorBox, VK_DELETE);
        EXPECT_EQ(d.AnswerMessageBox("Confirm Delete", IDNO), "Delete this color?");
        EXPECT_EQ(d.Rows(), Rows{"Red"});
        d.PostKey(kColorBox, VK_DELETE);
        d.AnswerMessageBox("Confirm Delete", IDYES);
        EXPECT_TRUE(d.Rows().empty());
        d.PostKey(kColorBox, VK_DELETE);
        if (!NoneCameUp(d, "Confirm Delete")) {
            ADD_FAILURE() << "Delete in an empty colour box asked to delete a colour";
            d.AnswerMessageBox("Confirm Delete", IDNO);
        }
        // Deleting the list in force brings the first list back, not a neighbour.
        d.Command(kDeleteList, true);
        EXPECT_EQ(d.AnswerMessageBox("Confirm Delete", IDYES), "Delete this list?");
        EXPECT_EQ(d.Text(kListButton), "Spring");
        EXPECT_EQ(d.SelectedRow(), 0);
    });
    ColorLibrary expected;
    ColorList* spring = AddList(expected, "Spring");
    for (const std::string& name : {std::string("Leaf"), std::string(253, 'x')}) {
        ColorEntry* entry = NewColorEntry();  // black, 2 x 2
        CopyName(entry->name, name.c_str());
        spring->entries.Append(entry);
    }
    EXPECT_EQ(CompareLibraries(expected, *Saved()), "");
}

// A colour whose stored GridSize byte is out of range shows the size in force. Deleting
// the only list (its colour selected) brings back the dialog's own tile, and Fill lays
// that, never the bytes of the list just freed.
TEST_F(DialogTest, DeletingTheOnlyListBringsBackTheDialogsOwnTile) {
    {
        ColorLibrary library;
        AddColor(*AddList(library, "One"), "Only", 9, 7);
        Save(library);
    }
    Run([&](DialogDriver& d) {
        EXPECT_EQ(d.Text(kGridSize), "8x8");
        EXPECT_EQ(d.SelectedRow(), 0);
        d.Command(kDeleteList, true);
        d.AnswerMessageBox("Confirm Delete", IDYES);
        EXPECT_EQ(d.Text(kListButton), "none");
        d.Press(IDOK);
    });
    ASSERT_EQ(block.size(), 198u);
    EXPECT_EQ(Bytes(block.begin() + 5, block.begin() + 197), Bytes(192, 0)) << "the zero tile";
    EXPECT_EQ(Saved()->colorLists->Count(), 0);
}

// Export from one library, import into it twice; a library file refused in the import
// dialog; colour tables of 767, 768 and 772 bytes loaded and unloaded, and palettes named
// after files of 250 and 251 characters. A GridSize byte out of range is kept as it was.
TEST_F(DialogTest, ListFilesAndColorTablesThroughTheFileDialogs) {
    const auto addWeb = [](ColorLibrary& library) {
        ColorList* web = AddList(library, "Web");
        AddColor(*web, "Red", 2, 1);
        AddColor(*web, "Blue", 3, 2);
    };
    ColorLibrary original;
    addWeb(original);
    AddColor(*AddList(original, "Other"), "Grey", 9, 3);
    Save(original);
    const std::string exported = scratch.Path("web list.tsl");
    const std::string shortTable = WriteColorTable("short.act", 767);
    const std::string sunset = WriteColorTable("sunset.act", 768);
    const std::string trailer = WriteColorTable("trailer.act", 772);
    // At the drive's root, so that the paths fit the file dialog's 260 bytes.
    const std::string names[] = {std::string(246, 'a') + ".act", std::string(247, 'p') + ".act"};
    for (const std::string& name : names) WriteWholeFile("C:\\" + name, ReadWholeFile(sunset));

    Run([&](DialogDriver& d) {
        d.Command(kExport, true);
        EXPECT_EQ(d.AnswerFileDialog("Export List", ""), Seen("Web.TSL", "Tessellum List files"));
        EXPECT_EQ(ReadWholeFile(exported).size(), 0u) << "cancelled: no file";
        d.Command(kExport, true);
        d.AnswerFileDialog("Export List", exported);
        d.Command(kExport, true);  // again: the file exists
        d.AnswerFileDialog("Export List", exported, true);
        for (int i = 0; i < 2; ++i) {  // two lists; the selection stays on Web
            d.Command(kImport, true);
            EXPECT_EQ(d.AnswerFileDialog("Import List", exported),
                      Seen("*.TSL", "Tessellum List files"));
        }
        EXPECT_EQ(d.Text(kListButton), "Web");
        d.Command(kImport, true);
        d.AnswerFileDialog("Import List", libraryPath);  // the library's magic: refused
        EXPECT_TRUE(NoneCameUp(d, "ALERT"));
        d.Command(3003);
        EXPECT_EQ(d.Text(kListButton), "Web");
        EXPECT_EQ(d.Rows(), (Rows{"Red", "Blue"}));

        d.ChooseTab(1);
        d.Command(kLoad, true);
        d.AnswerFileDialog("Load Palette", shortTable);
        EXPECT_EQ(d.AnswerMessageBox("ALERT", IDOK), "Could Not Load Palette");
        EXPECT_EQ(d.Text(kPaletteName), "Web Safe Palette");
        for (const std::string& table : {"C:\\" + names[1], "C:\\" + names[0], sunset, trailer}) {
            d.Command(kLoad, true);
            d.AnswerFileDialog("Load Palette", table);
        }
        EXPECT_EQ(d.Text(kPaletteName), "trailer.act");
        EXPECT_EQ(d.Pixel(kSwatches, 4 + 5 * 9 + 4, 9), 0x05FA23u) << "colour 5 of the table";
        d.Command(kUnload, true);
        EXPECT_EQ(d.AnswerMessageBox("Confirm Unload", IDNO), "Unload this palette?");
        EXPECT_EQ(d.Text(kPaletteName), "trailer.act");
        d.Command(kUnload, true);
        d.AnswerMessageBox("Confirm Unload", IDYES);
        EXPECT_EQ(d.Text(kPaletteName), "Web Safe Palette");
        EXPECT_FALSE(IsWindowEnabled(d.Item(kUnload)));
        d.Command(kLoad, true);
        d.AnswerFileDialog("Load Palette", "");
    });
    // Web and Other as they were, the two imports of Web, and the table kept.
    ColorLibrary expected;
    addWeb(expected);
    AddColor(*AddList(expected, "Other"), "Grey", 9, 3);
    addWeb(expected);
    addWeb(expected);
    // The palettes kept: a name of 250 characters whole, a longer one cut to 250.
    for (const std::string& name : {names[1].substr(0, 250), names[0], std::string("sunset.act")})
        std::memcpy(AddPalette(expected, name, 256, 0)->palette.Colors(),
                    ReadWholeFile(sunset).data(), 768);
    EXPECT_EQ(CompareLibraries(expected, *Saved()), "");
    for (const std::string& name : names) std::remove(("C:\\" + name).c_str());
}

// The dialog at the display's scale: the DPI of the prefix the run has (TESSELLUM_DPI: 120,
// 144, 192; 96 in the main run). The host's thread is unaware; the plug-in's dialog runs
// per-monitor aware at that DPI and gives the context back. Every self-drawn control
// stands in its page clear of the template's controls, has its sizes for the DPI on the
// screen, and answers a press where it is drawn as at 96 DPI: a thumb dragged to the
// middle of its bar, a step arrow, a swatch and a grid cell, read back through Fill.
// At 96 DPI the dialog is also told of a move to 192 and back.
class DisplayScaleTest : public DialogTest {
protected:
    // How many pixels from (x, y) of the control's place, across or down, are like the
    // first; or, given `stop`, how many come before a pixel of that colour.
    static int Stretch(const DialogDriver& d, int control, int x, int y, bool across,
                       uint32_t stop = ~0u) {
        const RECT place = d.Place(control);
        POINT at = {place.left + x, place.top + y};
        ClientToScreen(d.Page(control), &at);
        // Up to the screen's edge: beyond it a copy reads black.
        const int room =
            across ? GetSystemMetrics(SM_CXSCREEN) - at.x : GetSystemMetrics(SM_CYSCREEN) - at.y;
        HDC screen = GetDC(nullptr);
        const std::vector<uint32_t> pixels = CapturePixels(
            screen, at.x, at.y, across ? std::min(room, 600) : 1, across ? 1 : std::min(room, 600));
        ReleaseDC(nullptr, screen);
        int n = 0;
        while (n < int(pixels.size()) && (stop == ~0u ? pixels[n] == pixels[0] : pixels[n] != stop))
            ++n;
        return n;
    }
    // The page's visible template controls that a rectangle of its client area meets,
    // and whether it leaves the page.
    static std::string Clashes(HWND page, const RECT& rect, const char* what) {
        std::string found;
        RECT client = {}, overlap = {};
        GetClientRect(page, &client);
        if (rect.left < 0 || rect.top < 0 || rect.right > client.right ||
            rect.bottom > client.bottom)
            found += std::string(what) + " leaves its page; ";
        for (HWND child = GetWindow(page, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            RECT place = {};
            GetWindowRect(child, &place);
            MapWindowPoints(nullptr, page, reinterpret_cast<POINT*>(&place), 2);
            if (IsWindowVisible(child) && IntersectRect(&overlap, &place, &rect))
                found += std::string(what) + " meets \"" + WindowText(child) + "\"; ";
        }
        return found;
    }
};

TEST_F(DisplayScaleTest, EachControlHasTheScalesSizesAndAnswersWhereItIsDrawn) {
    const char* wanted = std::getenv("TESSELLUM_DPI");
    const int expected = wanted ? std::atoi(wanted) : 96;
    const DPI_AWARENESS_CONTEXT host = SetThreadDpiAwarenessContext(DPI_AWARENESS_CONTEXT_UNAWARE);
    ASSERT_NE(host, nullptr);
    uint8_t table[768];
    FillWebSafeTable(table);
    const uint32_t swatch = 212;  // web-safe colour 212: row 6, far along it
    const uint32_t drawn =
        (table[3 * swatch] << 16) | (table[3 * swatch + 1] << 8) | table[3 * swatch + 2];
    Run([&](DialogDriver& d) {
        const int dpi = int(GetDpiForWindow(d.dialog));
        EXPECT_EQ(dpi, expected) << "the dialog runs at the display's DPI";
        // Per-monitor v2 where the system takes it (Windows), else per-monitor (Wine).
        const DPI_AWARENESS_CONTEXT window = GetWindowDpiAwarenessContext(d.dialog);
        EXPECT_TRUE(
            AreDpiAwarenessContextsEqual(window, DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2) ||
            AreDpiAwarenessContextsEqual(window, DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE));
        const auto px = [&](int value) { return ScaleToDpi(value, dpi); };
        const std::string shot = "dpi" + std::to_string(dpi) + "_";
        const int line = LineWidth(dpi);

        // The Color Picker: the sliders' backdrop (left of the page, clipped), the pair.
        const RECT sliders = d.Place(kSliders), label = d.Place(kForeBack);
        const int barX = px(38), top = px(20);  // from the sliders' place
        // The backdrop starts under the "Fore / Back" label and ends at the page's foot,
        // within 4 pixels (at 96 DPI) of its own height: dialog units and pixels do not
        // quite agree at every scale.
        RECT page = {};
        GetClientRect(d.picker, &page);
        const int backdropTop = std::max<int>(sliders.top + top + px(-22), label.bottom);
        const int backdropHeight = std::min<int>(px(100), page.bottom - backdropTop);
        EXPECT_NEAR(backdropHeight, px(100), px(4));
        const int backdropEnd = barX + px(-115) + px(355);  // from the sliders' place
        const RECT backdrop = {std::max(0, int(sliders.left) + barX + px(-115)), backdropTop,
                               sliders.left + backdropEnd, backdropTop + backdropHeight};
        const RECT pair = {label.left - px(28), label.top, label.left - px(6), label.top + px(22)};
        EXPECT_EQ(Clashes(d.picker, backdrop, "the sliders") + Clashes(d.picker, pair, "Fore/Back"),
                  "");
        constexpr uint32_t kBackdrop = 0xBFBFBF;
        EXPECT_EQ(Stretch(d, kSliders, barX, top + px(5), true, kBackdrop), SliderBarWidth(dpi));
        EXPECT_EQ(Stretch(d, kSliders, barX + px(65), top, false, kBackdrop), px(11)) << "bar";
        const int backdropRow = backdropTop - sliders.top;  // from the sliders' place
        EXPECT_EQ(Stretch(d, kSliders, barX + px(100), backdropRow, true),
                  backdropEnd - barX - px(100));
        EXPECT_EQ(Stretch(d, kSliders, backdropEnd - 1, backdropRow, false), backdropHeight)
            << "backdrop";

        // Red's thumb from 0 to the middle of the bar; one step of green's right arrow.
        const int thumb = ThumbLeft(barX, 0, dpi) + SliderThumbWidth(dpi) / 2;
        d.Mouse(kSliders, WM_LBUTTONDOWN, thumb, top + px(11) + SliderThumbHeight(dpi) / 2);
        d.Mouse(kSliders, WM_MOUSEMOVE, barX + px(64), top, true);
        d.Mouse(kSliders, WM_LBUTTONUP, barX + px(64), top);
        const ControlBounds arrow = RightArrowBounds(barX, top + px(25), dpi);
        d.Click(kSliders, (arrow.left + arrow.right) / 2, (arrow.top + arrow.bottom) / 2);
        // The magnified 2x2 tile of (128, 1, 0): two colours, black lines on white.
        const QuadrantBoxGeometry box = QuadrantBoxAt(dpi);
        EXPECT_EQ(Stretch(d, kPickerTile, box.corner, box.corner, true), int(box.side)) << "box";
        EXPECT_EQ(Stretch(d, kPickerTile, box.corner + 4 * line, box.corner + 4 * line, true),
                  int(box.quadrant));

        d.Screenshot(shot + "color_picker");
        // A value typed at this scale: the field stands over blue's hex read-out, in the
        // page's font; Escape takes it away.
        const ControlBounds hex = ReadoutBounds(barX, top, px(25), 2, ReadoutColumn::kHex, dpi);
        d.Click(kSliders, (hex.left + hex.right) / 2, (hex.top + hex.bottom) / 2);
        HWND typed = Field(d);
        ASSERT_NE(typed, nullptr);
        RECT fieldAt = {};
        GetWindowRect(typed, &fieldAt);
        MapWindowPoints(nullptr, d.picker, reinterpret_cast<POINT*>(&fieldAt), 2);
        const ControlBounds expectedAt = {hex.left + sliders.left, hex.top + sliders.top,
                                          hex.right + sliders.left, hex.bottom + sliders.top};
        EXPECT_TRUE(std::memcmp(&fieldAt, &expectedAt, sizeof fieldAt) == 0) << "field's place";
        EXPECT_EQ(Send(typed, WM_GETFONT), Send(d.picker, WM_GETFONT));
        d.Screenshot(shot + "value_field");
        Keys("", VK_ESCAPE);
        d.Settle();
        EXPECT_EQ(Field(d), nullptr);
        d.Press(kSizing);
        d.Screenshot(shot + "collapsed");
        d.Press(kSizing);
        d.Command(kNewList, true);
        d.AnswerPrompt("Create new color list", "", false, (shot + "name_prompt").c_str());

        // The Pattern Fill page: tools, the colour pair, the grid, the swatches.
        d.ChooseTab(1);
        RECT room = {};  // from the swatches' place to the page's edges
        GetClientRect(d.pattern, &room);
        const SwatchCells cells = SwatchCellsAt(8, 10, dpi, room.right - d.Place(kSwatches).left,
                                                room.bottom - d.Place(kSwatches).top);
        EXPECT_GE(cells.width + cells.line + 1, (9 * dpi) / 96) << "a pixel less at most";
        const GridLayout grid = GridLayoutAt(2, dpi);
        const RECT tools = d.Place(kTools), colors = d.Place(kPair), editor = d.Place(kEditor),
                   field = d.Place(kSwatches);
        // The tools stand under the grid, which may reach past its place.
        const int toolsTop = std::max<int>(tools.top, editor.top + grid.side);
        const RECT drawnAt[] = {
            {tools.left, toolsTop, tools.left + 3 * ArtSize(26, dpi), toolsTop + ArtSize(22, dpi)},
            {colors.left, colors.top, colors.left + px(80) + line, colors.top + px(80) + line},
            {editor.left, editor.top, editor.left + grid.side, editor.top + grid.side},
            {field.left, field.top, field.left + int(SwatchBitmapWidth(cells.width, cells.line)),
             field.top + int(SwatchBitmapHeight(cells.height, cells.line))}};
        const char* names[] = {"the tools", "the colour pair", "the grid", "the swatches"};
        for (int i = 1; i < 4; ++i) {  // and none over another
            RECT overlap = {};
            EXPECT_FALSE(IntersectRect(&overlap, &drawnAt[0], &drawnAt[i])) << names[i];
        }
        for (int i = 0; i < 4; ++i) EXPECT_EQ(Clashes(d.pattern, drawnAt[i], names[i]), "");
        EXPECT_EQ(Stretch(d, kTools, 0, toolsTop - tools.top, false), ArtSize(22, dpi))
            << "the tools' pictures";
        const int swatchX = 4 * line + (swatch % 32) * (cells.width + line) + cells.width / 2;
        const int swatchY = 4 * line + (swatch / 32) * (cells.height + line) + cells.height / 2;
        EXPECT_EQ(Stretch(d, kSwatches, 4 * line + 3 * (cells.width + line), swatchY, true),
                  int(cells.width))
            << "a swatch";
        d.Click(kSwatches, swatchX, swatchY);
        d.Click(kEditor, grid.origin + grid.pitch / 2, grid.origin + grid.pitch * 3 / 2);
        // 8x8: the pencil paints the last row, outside the 2x2 tile, cell by cell where
        // each is drawn; every cell is as wide as the others.
        d.Command(kPattern + 40011);
        const GridLayout eight = GridLayoutAt(8, dpi);
        const int lastRow = eight.origin + 7 * eight.pitch;
        for (int k = 0; k < 8; ++k)
            d.Click(kEditor, eight.origin + k * eight.pitch + eight.pitch / 2,
                    lastRow + eight.pitch / 2);
        for (int k = 0; k < 8; ++k)
            EXPECT_EQ(Stretch(d, kEditor, eight.origin + k * eight.pitch, lastRow + 1, true),
                      eight.pitch - line)
                << "cell " << k;
        d.Screenshot(shot + "pattern_fill");
        d.Command(kPattern + 40005);  // back to 2x2

        if (dpi == kBaseDpi) {  // the dialog moves to a display at 200%, and back
            RECT outer = {};
            GetWindowRect(d.dialog, &outer);
            for (const int moved : {192, 96}) {
                RECT offered = {outer.left, outer.top,
                                outer.left + (outer.right - outer.left) * moved / 96,
                                outer.top + (outer.bottom - outer.top) * moved / 96};
                SendMessageA(d.dialog, WM_DPICHANGED, MAKEWPARAM(moved, moved),
                             reinterpret_cast<LPARAM>(&offered));
                d.Settle();
                RECT now = {};
                GetWindowRect(d.dialog, &now);
                EXPECT_EQ(now.bottom - now.top, offered.bottom - offered.top) << moved;
                const GridLayout at = GridLayoutAt(2, moved);
                EXPECT_EQ(Stretch(d, kEditor, at.origin, at.origin + 1, true),
                          at.pitch - LineWidth(moved))
                    << moved;
                // Cell (0, 1) where it is drawn at that DPI takes the pencil's colour.
                d.Click(kEditor, at.origin + at.pitch * 3 / 2, at.origin + at.pitch / 2);
                d.ChooseTab(0);
                // The template stays as it was under Wine, so a bar at 192 runs past the
                // page; its height shows the new size.
                EXPECT_EQ(Stretch(d, kSliders, ScaleToDpi(38 + 64, moved), ScaleToDpi(20, moved),
                                  false, 0xBFBFBF),
                          ScaleToDpi(11, moved))
                    << moved;
                d.ChooseTab(1);
            }
        }
        d.Press(IDOK);
    });
    EXPECT_TRUE(
        AreDpiAwarenessContextsEqual(GetThreadDpiAwarenessContext(), DPI_AWARENESS_CONTEXT_UNAWARE))
        << "the host's context is back";
    SetThreadDpiAwarenessContext(host);
    Pattern tile = {};
    ColorToTile(table, tile, 128, 1, 0);
    ASSERT_EQ(block.size(), 198u);
    EXPECT_EQ(block[4], 2);
    const uint32_t picked = expected == kBaseDpi ? drawn : Rgb(tile.Cell(0, 1));
    EXPECT_EQ(
        std::vector<uint32_t>({BlockCell(0, 0), BlockCell(0, 1), BlockCell(1, 0), BlockCell(1, 1)}),
        std::vector<uint32_t>({Rgb(tile.Cell(0, 0)), picked, drawn, Rgb(tile.Cell(1, 1))}));
}

// Every C++ allocation of one run of the dialog made to fail in turn: a failure while the
// dialog starts ends the run as Cancel before the dialog shows; one in the teardown loses
// only that save. Each time nothing is left allocated, no dialog window remains, and the
// library file is byte for byte as before.
class DialogFailureTest : public ::testing::Test {
protected:
    void SetUp() override {
        hDllInstance = LoadLibraryA(PluginPath().c_str());
        ASSERT_NE(hDllInstance, nullptr);
        PointLibraryAt(scratch.Path("library"));
        std::unique_ptr<ColorLibrary> library(MakeSampleLibrary(3, 4, 2));
        LibraryFile().WriteLibrary(library.get(), path.c_str());
        before = ReadWholeFile(path);
    }
    void TearDown() override { DestroyWindow(parent); }
    bool RunModal() {  // false: Cancel, or a start that failed
        try {
            std::unique_ptr<FilterDialog> dialog(NewOrThrow<FilterDialog>(parent));
            return dialog->RunModal();
        } catch (ErrorCode) {
            return false;
        }
    }

    HWND parent = host::MakeHostWindow("failure");
    ScratchDirectory scratch;
    std::string path = scratch.Path("library") + "\\Tessellum.dat";
    std::vector<uint8_t> before;
};

struct Outcome {
    bool filled = false, appeared = false;
    long seenAt = 0;  // allocations counted when the dialog was first seen
};

TEST_F(DialogFailureTest, EveryAllocationFailingInTurnEndsAsCancelAndKeepsTheLibrary) {
    const auto runOnce = [&](long failAt) {
        Outcome outcome;
        std::atomic<bool> done{false};
        // The dialog counts as up once its first page shows: the last step of its start.
        // (Wine may flash the window of a dialog that ended in its start.) A run that neither
        // ends nor shows its page in 10 s would never end: the test ends with what it saw.
        std::thread cancelling([&] {
            for (const ULONGLONG start = GetTickCount64(); !done; Sleep(2)) {
                if (GetTickCount64() - start > 10000) {
                    fprintf(stderr, "FAILED: allocation %ld: no page shown in 10 s, %s\n", failAt,
                            FindWindowA(kDialogClass, "Tessellum 1.5") ? "the dialog is up"
                                                                       : "no dialog either");
                    fflush(stderr);
                    std::_Exit(1);
                }
                HWND window = FindWindowA(kDialogClass, "Tessellum 1.5");
                HWND page = window ? GetWindow(GetDlgItem(window, kTabs), GW_CHILD) : nullptr;
                for (; page && !outcome.appeared; page = GetWindow(page, GW_HWNDNEXT))
                    outcome.appeared =
                        GetDlgItem(page, kPickerTile % kPicker) && IsWindowVisible(page);
                if (!outcome.appeared) continue;
                outcome.seenAt = failingHeap.allocations;
                PostMessageA(window, WM_COMMAND, IDCANCEL, 0);
                return;
            }
        });
        failingHeap.Arm(failAt);
        outcome.filled = RunModal();
        failingHeap.Disarm();
        done = true;
        cancelling.join();
        EXPECT_FALSE(outcome.filled) << "failing allocation " << failAt;
        EXPECT_EQ(failingHeap.live, 0) << "failing allocation " << failAt << " left blocks";
        EXPECT_EQ(FindWindowA(kDialogClass, "Tessellum 1.5"), nullptr) << failAt;
        EXPECT_EQ(ReadWholeFile(path), before) << "failing allocation " << failAt;
        return outcome;
    };
    const Outcome whole = runOnce(0);
    const long allocations = failingHeap.allocations;
    ASSERT_TRUE(whole.appeared) << "the dialog did not come up without a failure";
    ASSERT_GT(whole.seenAt, 20) << "the start allocates its controls and the library";
    int failedStarts = 0;
    for (long n = 1; n <= allocations; ++n) {
        const bool appeared = runOnce(n).appeared;
        EXPECT_EQ(appeared, n > whole.seenAt) << n << " of " << whole.seenAt << " before it showed";
        failedStarts += appeared ? 0 : 1;
    }
    std::printf("%ld allocations in a run; %d failing ones ended the start\n", allocations,
                failedStarts);
}

// Each command's allocation `failAt` (counted from the command) fails while the dialog
// runs: the driver arms the heap for the dialog's thread, gives the command and answers
// what it asks. New List: the list, its node. New Color: the colour, its node. Load: the
// table's palette and its colours (which the load reports itself), then the library's
// palette, its colours and its node.
TEST_F(DialogFailureTest, ACommandShortOfMemoryEndsTheDialogAsCancel) {
    const std::string table = scratch.Path("t.act");
    WriteWholeFile(table, std::vector<uint8_t>(768, 9));
    struct Case {
        int command;
        long failAt;
        bool ends;  // false: the load says so itself and the dialog stays
    } cases[] = {{kNewList, 1, true},  {kNewList, 2, true}, {kNewColor, 1, true},
                 {kNewColor, 2, true}, {kLoad, 1, false},   {kLoad, 2, false},
                 {kLoad, 3, true},     {kLoad, 4, true},    {kLoad, 5, true}};
    const std::thread::id dialogThread = std::this_thread::get_id();
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "command " << c.command << ", allocation " << c.failAt);
        bool stayed = false;
        std::string alert;
        const auto command = [&](DialogDriver& d) {
            failingHeap.Arm(c.failAt, dialogThread);
            d.Command(c.command, true);
            if (c.command == kLoad) d.AnswerFileDialog("Load Palette", table);
            if (c.command == kNewList) d.AnswerPrompt("Create new color list", "Named");
            if (c.command == kNewColor) d.AnswerPrompt("Create a new color", "Named");
            if (FindWindowA(kDialogClass, "ALERT")) alert = d.AnswerMessageBox("ALERT", IDOK);
            for (int i = 0; i < 50 && IsWindow(d.dialog); ++i) Sleep(20);
            stayed = IsWindow(d.dialog) != FALSE;
        };
        EXPECT_TRUE(WithDialog([&] { EXPECT_FALSE(RunModal()); }, command));
        failingHeap.Disarm();
        EXPECT_EQ(stayed, !c.ends);
        EXPECT_EQ(alert, c.ends ? "" : "Could Not Load Palette");
        EXPECT_EQ(failingHeap.live, 0) << "blocks left allocated";
        EXPECT_EQ(ReadWholeFile(path), before) << "nothing was added to the library";
    }
}

}  // namespace
}  // namespace tessellum::test
