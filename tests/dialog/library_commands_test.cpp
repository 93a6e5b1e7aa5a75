// The user's hold on the library, for real: commands from the list menu, the buttons and
// the Delete key; prompts answered with typed names; questions answered Yes and No; the
// common file dialogs given typed paths. Each test is a run or two that checks many facts,
// then reads the library file the teardown wrote.
#include <windows.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "storage/list_file.h"
#include "tests/dialog/dialog_fixture.h"
#include "tests/support/library_samples.h"

namespace tessellum::test {
namespace {

using Rows = std::vector<std::string>;

class LibraryCommandsTest : public DialogRunTest {
protected:
    static void AddWebList(ColorLibrary& library) {
        ColorList* web = AddList(library, "Web");
        AddColor(*web, "Red", 2, 1);
        AddColor(*web, "Blue", 3, 2);
    }
    // A palette of the library as loading the colour table at path makes it.
    static void AddTable(ColorLibrary& library, const char* name, const std::string& path) {
        const Bytes bytes = ReadWholeFile(path);
        std::memcpy(AddPalette(library, name, 256, 0)->palette.Colors(), bytes.data(), 768);
    }
    HWND Box(const DialogDriver& d) const { return GetDlgItem(d.dialog, 1026); }
    // True when no window of this caption is up once the command was handled.
    static bool NoneCameUp(const DialogDriver& d, const char* caption) {
        d.Settle();
        return FindWindowA(MAKEINTATOM(0x8002), caption) == nullptr;
    }
    // A colour table whose colour i is (i, 255 - i, 7i), `size` bytes long.
    std::string WriteColorTable(const std::string& name, size_t size) {
        Bytes bytes(size, 0xEE);
        for (size_t i = 0; i < 256 && 3 * i + 2 < size; ++i) {
            bytes[3 * i] = uint8_t(i);
            bytes[3 * i + 1] = uint8_t(255 - i);
            bytes[3 * i + 2] = uint8_t(7 * i);
        }
        const std::string path = scratch.Path(name);
        WriteWholeFile(path, bytes);
        return path;
    }
};

TEST_F(LibraryCommandsTest, ListsAndColorsMadeNamedAndDeletedFromNothing) {
    Run([&](DialogDriver& d) {
        // No list: nothing to name, delete or export, and Delete in the empty box is idle.
        for (int id : {40002, 40003, 40016}) d.PostCommand(d.dialog, id);
        d.PostKey(Box(d), VK_DELETE);
        EXPECT_TRUE(NoneCameUp(d, "Name List") && NoneCameUp(d, "Confirm Delete") &&
                    NoneCameUp(d, "Export List"));
        // New Color with no list asks for a list first; Cancel at the colour leaves it empty.
        d.PostCommand(d.dialog, 1003);
        const auto listPrompt =
            d.AnswerPrompt("Create new color list", "Spring", true, "name_prompt");
        EXPECT_EQ(listPrompt.line, "Enter new color list name");
        EXPECT_EQ(listPrompt.initial, "New List");
        const auto colorPrompt = d.AnswerPrompt("Create a new color", "", false);
        EXPECT_EQ(colorPrompt.line, "Enter new color name");
        EXPECT_EQ(colorPrompt.initial, "New Color");
        EXPECT_EQ(d.Text(d.dialog, 1004), "Spring");
        EXPECT_TRUE(d.Rows().empty());
        // Name Color with no row selected makes a colour; a new colour stands last and
        // row 0 is selected.
        d.PostCommand(d.dialog, 1002);
        d.AnswerPrompt("Create a new color", "Leaf");
        d.PostCommand(d.dialog, 1003);
        d.AnswerPrompt("Create a new color", "Sky");
        EXPECT_EQ(d.Rows(), (Rows{"Leaf", "Sky"}));
        EXPECT_EQ(d.SelectedRow(), 0);
        // Renaming: typing stops at 253 characters; the renamed row stays selected, and
        // Cancel moves the selection to row 0.
        d.SelectRow(1);
        d.PostCommand(d.dialog, 1002);
        const auto rename = d.AnswerPrompt("Name Color", std::string(260, 'x'));
        EXPECT_EQ(rename.line, "Enter new name");
        EXPECT_EQ(rename.initial, "Sky");
        EXPECT_EQ(d.Rows(), (Rows{"Leaf", std::string(253, 'x')}));
        EXPECT_EQ(d.SelectedRow(), 1);
        d.PostCommand(d.dialog, 1002);
        d.AnswerPrompt("Name Color", "ignored", false);
        EXPECT_EQ(d.SelectedRow(), 0);
        // Keys other than Delete keep their effect in the box.
        d.PostKey(Box(d), VK_DOWN);
        d.Settle();
        EXPECT_EQ(d.SelectedRow(), 1);

        // A second list, renamed to nothing, then its only colour deleted: No keeps it.
        d.PostCommand(d.dialog, 40001);
        d.AnswerPrompt("Create new color list", "Autumn");
        d.AnswerPrompt("Create a new color", "Red");
        EXPECT_EQ(d.Text(d.dialog, 1004), "Autumn");
        EXPECT_EQ(d.Rows(), Rows{"Red"});
        d.PostCommand(d.dialog, 40002);
        EXPECT_EQ(d.AnswerPrompt("Name List", "").initial, "Autumn");
        EXPECT_EQ(d.Text(d.dialog, 1004), "");
        d.PostKey(Box(d), VK_DELETE);
        EXPECT_EQ(d.AnswerMessageBox("Confirm Delete", IDNO), "Delete this color?");
        EXPECT_EQ(d.Rows(), Rows{"Red"});
        d.PostKey(Box(d), VK_DELETE);
        d.AnswerMessageBox("Confirm Delete", IDYES);
        EXPECT_TRUE(d.Rows().empty());
        EXPECT_EQ(d.SelectedRow(), LB_ERR);
        d.PostKey(Box(d), VK_DELETE);
        if (!NoneCameUp(d, "Confirm Delete")) {
            ADD_FAILURE() << "Delete in an empty colour box asked to delete a colour";
            d.AnswerMessageBox("Confirm Delete", IDNO);
        }
        // Deleting the list in force brings the first list back, not a neighbour.
        d.PostCommand(d.dialog, 40003);
        EXPECT_EQ(d.AnswerMessageBox("Confirm Delete", IDYES), "Delete this list?");
        EXPECT_EQ(d.Text(d.dialog, 1004), "Spring");
        EXPECT_EQ(d.SelectedRow(), 0);
        d.Press(d.dialog, IDCANCEL);
    });
    std::unique_ptr<ColorLibrary> saved = LoadLibraryFile();
    ColorLibrary expected;
    ColorList* spring = AddList(expected, "Spring");
    for (const std::string& name : {std::string("Leaf"), std::string(253, 'x')}) {
        ColorEntry* entry = NewColorEntry();  // black, 2 x 2
        CopyName(entry->name, name.c_str());
        spring->entries.Append(entry);
    }
    EXPECT_EQ(CompareLibraries(expected, *saved), "");
}

// A colour whose stored GridSize byte is out of range shows the size in force and keeps
// its byte. Deleting the only list (its colour selected) brings back the dialog's own
// tile, and Fill lays that, never the bytes of the list just freed.
TEST_F(LibraryCommandsTest, DeletingTheOnlyListBringsBackTheDialogsOwnTile) {
    {
        ColorLibrary library;
        AddColor(*AddList(library, "One"), "Only", 9, 7);
        SaveLibraryFile(library);
    }
    Run([&](DialogDriver& d) {
        EXPECT_EQ(d.Text(d.pattern, 1016), "8x8");
        d.Press(d.dialog, IDCANCEL);
    });
    const auto kept = LoadLibraryFile();
    EXPECT_EQ(static_cast<ColorEntry*>(
                  static_cast<ColorList*>(kept->colorLists->ValueAt(0))->entries.ValueAt(0))
                  ->gridSize,
              9);
    Run([&](DialogDriver& d) {
        EXPECT_EQ(d.SelectedRow(), 0);
        d.PostCommand(d.dialog, 40003);
        d.AnswerMessageBox("Confirm Delete", IDYES);
        EXPECT_EQ(d.Text(d.dialog, 1004), "none");
        d.Press(d.dialog, IDOK);
    });
    ASSERT_EQ(block.size(), 198u);
    EXPECT_EQ(Bytes(block.begin() + 5, block.begin() + 197), Bytes(192, 0)) << "the zero tile";
    EXPECT_EQ(LoadLibraryFile()->colorLists->Count(), 0);
}

// Export from one library, import into another; a library file refused in the import
// dialog; colour tables of 767, 768 and 772 bytes loaded and unloaded; 51 palettes.
TEST_F(LibraryCommandsTest, ListFilesAndColorTablesThroughTheFileDialogs) {
    ColorLibrary original;
    AddWebList(original);
    AddColor(*AddList(original, "Other"), "Grey", 4, 3);
    SaveLibraryFile(original);
    const std::string exported = scratch.Path("web list.tsl");
    const std::string shortTable = WriteColorTable("short.act", 767);
    const std::string sunset = WriteColorTable("sunset.act", 768);
    const std::string trailer = WriteColorTable("trailer.act", 772);

    Run([&](DialogDriver& d) {
        d.PostCommand(d.dialog, 40016);
        EXPECT_EQ(d.AnswerFileDialog("Export List", "", "export_dialog"), "Web.TSL");
        EXPECT_EQ(ReadWholeFile(exported).size(), 0u) << "cancelled: no file";
        d.PostCommand(d.dialog, 40016);
        d.AnswerFileDialog("Export List", exported);
        d.PostCommand(d.dialog, 40016);  // again: the file exists
        d.AnswerFileDialog("Export List", exported, nullptr, true);
        // The same file imported twice is two lists; the selection stays on Web.
        for (int i = 0; i < 2; ++i) {
            d.PostCommand(d.dialog, 40015);
            EXPECT_EQ(d.AnswerFileDialog("Import List", exported, i ? nullptr : "import_dialog"),
                      "*.TSL");
        }
        EXPECT_EQ(d.Text(d.dialog, 1004), "Web");
        d.PostCommand(d.dialog, 40015);
        d.AnswerFileDialog("Import List", libraryPath);  // the library's magic: refused
        EXPECT_TRUE(NoneCameUp(d, "ALERT"));
        d.Command(d.dialog, 3003);
        EXPECT_EQ(d.Text(d.dialog, 1004), "Web");
        EXPECT_EQ(d.Rows(), (Rows{"Red", "Blue"}));

        // Colour tables on the Pattern Fill page.
        d.ChooseTab(1);
        d.PostCommand(d.pattern, 1017);
        d.AnswerFileDialog("Load Palette", shortTable, "load_palette_dialog");
        EXPECT_EQ(d.AnswerMessageBox("ALERT", IDOK), "Could Not Load Palette");
        EXPECT_EQ(d.Text(d.pattern, 1019), "Web Safe Palette");
        for (const std::string& table : {sunset, trailer}) {
            d.PostCommand(d.pattern, 1017);
            d.AnswerFileDialog("Load Palette", table);
        }
        EXPECT_EQ(d.Text(d.pattern, 1019), "trailer.act");
        EXPECT_TRUE(IsWindowEnabled(GetDlgItem(d.pattern, 1018)));
        // Swatch 5 shows colour 5 of the table.
        const RECT swatches = d.Place(d.pattern, 1032);
        EXPECT_EQ(d.Pixel(d.pattern, swatches.left + 4 + 5 * 9 + 4, swatches.top + 4 + 5),
                  0x05FA23u);
        d.Screenshot("dialog_loaded_palette");
        d.PostCommand(d.pattern, 1018);
        EXPECT_EQ(d.AnswerMessageBox("Confirm Unload", IDNO), "Unload this palette?");
        EXPECT_EQ(d.Text(d.pattern, 1019), "trailer.act");
        d.PostCommand(d.pattern, 1018);
        d.AnswerMessageBox("Confirm Unload", IDYES);
        EXPECT_EQ(d.Text(d.pattern, 1019), "Web Safe Palette");
        EXPECT_FALSE(IsWindowEnabled(GetDlgItem(d.pattern, 1018)));
        d.PostCommand(d.pattern, 1017);
        d.AnswerFileDialog("Load Palette", "");
        d.Press(d.dialog, IDCANCEL);
    });
    // Web and Other as they were, the two imports of Web, and the table kept.
    ColorLibrary expected;
    for (int i = 0; i < 3; ++i) {
        AddWebList(expected);
        if (i == 0) AddColor(*AddList(expected, "Other"), "Grey", 4, 3);
    }
    AddTable(expected, "sunset.act", sunset);
    EXPECT_EQ(CompareLibraries(expected, *LoadLibraryFile()), "");

    // Another library: 50 palettes and no list. The import arrives whole and is selected;
    // the palette loaded 51st is kept but the 50th stays in force.
    {
        ColorLibrary other;
        for (int i = 0; i < 50; ++i) AddPalette(other, "P" + std::to_string(i), 256, i);
        SaveLibraryFile(other);
    }
    Run([&](DialogDriver& d) {
        EXPECT_EQ(d.Text(d.dialog, 1004), "none");
        d.PostCommand(d.dialog, 40015);
        d.AnswerFileDialog("Import List", exported);
        EXPECT_EQ(d.Text(d.dialog, 1004), "Web");
        EXPECT_EQ(d.Rows(), (Rows{"Red", "Blue"}));
        d.ChooseTab(1);
        d.Command(d.pattern, 3501);
        EXPECT_EQ(d.Text(d.pattern, 1019), "P1");
        d.PostCommand(d.pattern, 1017);
        d.AnswerFileDialog("Load Palette", sunset);
        EXPECT_EQ(d.Text(d.pattern, 1019), "P49");
        d.Press(d.dialog, IDCANCEL);
    });
    ColorLibrary expectedOther;
    AddWebList(expectedOther);
    for (int i = 0; i < 50; ++i) AddPalette(expectedOther, "P" + std::to_string(i), 256, i);
    AddTable(expectedOther, "sunset.act", sunset);
    EXPECT_EQ(CompareLibraries(expectedOther, *LoadLibraryFile()), "");
}

}  // namespace
}  // namespace tessellum::test
