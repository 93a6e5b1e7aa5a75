// The list exchange file: its exact bytes, what the reader accepts and refuses, and a
// save that never damages the file already at the path. Built natively and for Windows.
#include "storage/list_file.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/error_code_of.h"
#include "tests/support/library_samples.h"
#include "tests/support/scratch_directory.h"

namespace tessellum {
namespace {

using test::CodeOf;
using test::ReadWholeFile;
using test::WriteWholeFile;
using Bytes = std::vector<uint8_t>;
using List = std::unique_ptr<ColorList>;
using Names = std::vector<std::string>;

Bytes Text(const std::string& text) {
    return Bytes(text.begin(), text.end());
}

Bytes Join(std::initializer_list<Bytes> parts) {
    Bytes all;
    for (const Bytes& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

// Every byte of the pattern differs, so a cell or channel out of place shows.
uint8_t CellByte(int row, int column, int channel) {
    return static_cast<uint8_t>(255 - (row * 8 + column) * 3 - channel);
}

const Bytes kMagic = Text("TessCell00");
const Bytes kCells = [] {  // row 0 first, cell 0 first, then red, green, blue
    Bytes cells;
    for (int row = 0; row < 8; ++row)
        for (int column = 0; column < 8; ++column)
            for (int channel = 0; channel < 3; ++channel)
                cells.push_back(CellByte(row, column, channel));
    return cells;
}();

const Bytes kWorkedExample = Join({
    {0x54, 0x65, 0x73, 0x73, 0x43, 0x65, 0x6C, 0x6C, 0x30, 0x30},  // TessCell00
    {0x2C, 0x03, 0x57, 0x65, 0x62},                                // list "Web"
    {0x00},
    {0x21, 0x03, 0x52, 0x65, 0x64, 0x02},  // colour "Red", GridSize 2
    kCells,
    {0x00},
    {0x3B},
});

class ListFileTest : public ::testing::Test {
protected:
    test::ScratchDirectory dir;
    std::string path = dir.Path("Web.tsl");
    ListFile file;

    List Load() {
        List list(file.ReadList(path.c_str()));
        EXPECT_FALSE(file.IsOpen());
        return list;
    }
    Bytes Save(const ColorList& list) {
        file.WriteList(&list, path.c_str());
        EXPECT_FALSE(file.IsOpen());
        return ReadWholeFile(path);
    }
};

TEST_F(ListFileTest, WorkedExampleToTheByteAndBack) {
    ColorList web;
    CopyName(web.name, "Web");
    ColorEntry* red = test::AddColor(web, "Red", 2, 0);
    for (int row = 0; row < 8; ++row)
        for (int column = 0; column < 8; ++column)
            red->cells.Cell(row, column) = {CellByte(row, column, 0), CellByte(row, column, 1),
                                            CellByte(row, column, 2)};
    ASSERT_EQ(kWorkedExample.size(), 216u);
    EXPECT_EQ(Save(web), kWorkedExample);
    EXPECT_EQ(dir.Files(), Names{"Web.tsl"});

    const List back = Load();
    EXPECT_STREQ(back->name, "Web");
    ASSERT_EQ(back->entries.Count(), 1);
    const ColorEntry& entry = *static_cast<const ColorEntry*>(back->entries.ValueAt(0));
    EXPECT_STREQ(entry.name, "Red");
    EXPECT_EQ(entry.gridSize, 2);
    EXPECT_EQ(Bytes(entry.cells.RowBytes(0), entry.cells.RowBytes(0) + 192), kCells);
}

// Each input with the code of its refusal, or with what the list it gives saves as (0):
// that saved form shows the name, the order, the GridSizes and every byte that was read.
TEST_F(ListFileTest, WhatTheReaderRefusesAndAccepts) {
    struct Case {
        std::string what;
        Bytes input;
        ErrorCode code;
        Bytes saved;
    };
    const Bytes c = Join({{0x21, 0x01, 'c', 0x07}, kCells});  // GridSize 7, kept
    const Bytes d = Join({{0x21, 0x00, 0xFF}, kCells});       // GridSize 0xFF, no name
    const Bytes name255 = Join({{0x2C, 0xFF}, Bytes(255, 'n')});
    const Bytes colour255 = Join({{0x21, 0xFF}, Bytes(255, 'z'), {0x08}, kCells});
    std::vector<Case> cases = {
        {"empty file", {}, ErrEndOfFile, {}},
        {"library magic", Join({Text("TessCell11"), {0x3B}}), ErrBadMagic, {}},
        {"lower case", Join({Text("tesscell00"), {0x3B}}), ErrBadMagic, {}},
        {"palette tag", Join({kMagic, {0x2F, 0x00, 0x00, 0x00, 0x3B}}), ErrBadData, {}},
        {"magic only", kMagic, ErrEndOfFile, {}},
        {"magic and terminator", Join({kMagic, {0x3B}}), 0, Join({kMagic, {0x2C, 0, 0, 0x3B}})},
        {"empty list, empty name", Join({kMagic, {0x2C, 0, 0, 0x3B}}), 0, {}},  // 14 bytes
        {"colours ahead of the name, no fillers", Join({kMagic, c, d, {0x2C, 1, 'L', 0x3B}}), 0,
         Join({kMagic, {0x2C, 1, 'L', 0}, c, {0}, d, {0, 0x3B}})},
        {"the later name wins", Join({kMagic, {0x2C, 5}, Text("First"), c, {0x2C, 1, 'S', 0x3B}}),
         0, Join({kMagic, {0x2C, 1, 'S', 0}, c, {0, 0x3B}})},
        {"many fillers, bytes behind the end",
         Join({kMagic, {0, 0, 0, 0x2C, 1, 'L', 0, 0}, c, {0, 0, 0, 0x3B, 0x2F, 0xFF}}), 0,
         Join({kMagic, {0x2C, 1, 'L', 0}, c, {0, 0x3B}})},
        {"a name cut at its NUL", Join({kMagic, {0x2C, 3, 'A', 0, 'B', 0x3B}}), 0,
         Join({kMagic, {0x2C, 1, 'A', 0, 0x3B}})},
        {"255-character names", Join({kMagic, name255, {0}, colour255, {0, 0x3B}}), 0, {}},
    };
    for (Case& test : cases)
        if (test.code == 0 && test.saved.empty()) test.saved = test.input;  // saved as read
    for (uint8_t tag : {0x01, 0x20, 0x22, 0x2B, 0x2D, 0x3A, 0x3C, 0x54, 0xFF})
        cases.push_back({"tag " + std::to_string(tag),
                         Join({kMagic, {0x2C, 1, 'L', 0x00}, c, {tag, 0x3B}}),
                         ErrBadData,
                         {}});
    // Every cut of the worked example: inside the magic, right after it, inside a record
    // or between two.
    for (size_t n = 1; n < kWorkedExample.size(); ++n)
        cases.push_back({"first " + std::to_string(n) + " bytes",
                         Bytes(kWorkedExample.begin(), kWorkedExample.begin() + n),
                         n < 10 ? ErrBadMagic : ErrEndOfFile,
                         {}});

    EXPECT_EQ(CodeOf([&] { Load(); }), ErrFileNotFound);
    for (const Case& test : cases) {
        WriteWholeFile(path, test.input);
        List list;
        EXPECT_EQ(CodeOf([&] { list = Load(); }), test.code) << test.what;
        EXPECT_FALSE(file.IsOpen()) << test.what;
        if (list != nullptr) {
            EXPECT_EQ(Save(*list), test.saved) << test.what;
        }
    }
}

// A write that fails at any point leaves the file already at the path byte for byte, no
// partial file and the file closed; the same object then exports and imports as usual.
TEST_F(ListFileTest, FailedExportKeepsThePreviousFile) {
    WriteWholeFile(path, kWorkedExample);
    ColorList big;  // several buffers' worth, at about 200 bytes a colour
    CopyName(big.name, "big");
    const int count = 3 * BinaryFile::kBufferSize / 200;
    for (int i = 0; i < count; ++i) test::AddColor(big, std::to_string(i), 3, i);
    int failures = 0;
    for (int succeeding = 0;; ++succeeding) {
        test::IoFault fault(test::IoFault::kFailingWrite, succeeding, ENOSPC);
        const ErrorCode code = CodeOf([&] { file.WriteList(&big, path.c_str()); });
        EXPECT_FALSE(file.IsOpen());
        if (!fault.Fired()) {
            EXPECT_EQ(code, 0);
            break;
        }
        ++failures;
        EXPECT_EQ(code, ErrDiskFull) << "write call " << succeeding;
        EXPECT_EQ(ReadWholeFile(path), kWorkedExample) << "write call " << succeeding;
        EXPECT_EQ(dir.Files(), Names{"Web.tsl"}) << "write call " << succeeding;
    }
    EXPECT_GE(failures, 3);
    // The writer is exact (above), so a list that saves as `big` did holds what `big` holds.
    const Bytes saved = ReadWholeFile(path);
    const List back = Load();
    EXPECT_EQ(back->entries.Count(), count);
    EXPECT_EQ(Save(*back), saved);

    file.WriteList(nullptr, dir.Path("none.tsl").c_str());  // no list: touches no file
    EXPECT_EQ(dir.Files(), Names{"Web.tsl"});
}

}  // namespace
}  // namespace tessellum
