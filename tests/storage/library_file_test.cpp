// The library file: its exact bytes, what the reader accepts and refuses, and a save
// that never damages the library already on disk. Built natively and for Windows.
#include "storage/library_file.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
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
using Library = std::unique_ptr<ColorLibrary>;
using Names = std::vector<std::string>;

Bytes Text(const char* text) {
    return Bytes(text, text + std::strlen(text));
}

Bytes Join(std::initializer_list<Bytes> parts) {
    Bytes all;
    for (const Bytes& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

const Bytes kMagic = Text("TessCell11");
const Bytes kCells = [] {
    Bytes cells(192);
    for (int i = 0; i < 192; ++i) cells[i] = static_cast<uint8_t>(i * 7 + 3);
    return cells;
}();

// One list "Web" with one colour "Red" of GridSize 2, one palette "P" of one red colour.
Library WorkedExampleLibrary() {
    Library library(new ColorLibrary);
    ColorEntry* red = test::AddColor(*test::AddList(*library, "Web"), "Red", 2, 0);
    std::memcpy(&red->cells, kCells.data(), 192);
    std::memcpy(test::AddPalette(*library, "P", 1, 0)->palette.Colors(), "\xFF\x00\x00", 3);
    return library;
}

const Bytes kWorkedExample = Join({
    {0x54, 0x65, 0x73, 0x73, 0x43, 0x65, 0x6C, 0x6C, 0x31, 0x31},  // TessCell11
    {0x2C, 0x03, 0x57, 0x65, 0x62},                                // list "Web"
    {0x21, 0x03, 0x52, 0x65, 0x64, 0x02},                          // colour "Red", size 2
    kCells,
    {0x2F, 0x01, 0x50, 0x00, 0x01, 0xFF, 0x00, 0x00},  // palette "P", 1 colour
    {0x3B},
});

class LibraryFileTest : public ::testing::Test {
protected:
    test::ScratchDirectory dir;
    std::string path = dir.Path("Tessellum.dat");
    LibraryFile file;

    Library Load() { return Library(file.ReadLibrary(path.c_str())); }
    ErrorCode LoadCode(const Bytes& bytes) {
        WriteWholeFile(path, bytes);
        const ErrorCode code = CodeOf([&] { Load(); });
        EXPECT_FALSE(file.IsOpen());
        return code;
    }
    Bytes Save(const ColorLibrary& library) {
        file.WriteLibrary(&library, path.c_str());
        EXPECT_FALSE(file.IsOpen());
        return ReadWholeFile(path);
    }
};

TEST_F(LibraryFileTest, WorkedExampleToTheByteAndBack) {
    file.WriteLibrary(nullptr, path.c_str());  // no library: touches no file
    EXPECT_EQ(dir.Files(), Names{});
    EXPECT_EQ(Save(ColorLibrary()), Join({kMagic, {0x3B}}));
    const Library library = WorkedExampleLibrary();
    ASSERT_EQ(kWorkedExample.size(), 222u);
    EXPECT_EQ(Save(*library), kWorkedExample);
    EXPECT_EQ(dir.Files(), Names{"Tessellum.dat"});
    EXPECT_EQ(test::CompareLibraries(*library, *Load()), "");
}

TEST_F(LibraryFileTest, RefusedFilesGiveTheirCodes) {
    EXPECT_EQ(CodeOf([&] { Load(); }), ErrFileNotFound);
    EXPECT_EQ(LoadCode({}), ErrEndOfFile);
    // Every cut of the worked example: inside the magic, inside a record or between two.
    for (size_t n = 1; n < kWorkedExample.size(); ++n)
        EXPECT_EQ(LoadCode(Bytes(kWorkedExample.begin(), kWorkedExample.begin() + n)),
                  n < 10 ? ErrBadMagic : ErrEndOfFile)
            << n << " bytes";
    EXPECT_EQ(LoadCode(Join({Text("TessCell12"), {0x3B}})), ErrBadMagic);
    EXPECT_EQ(LoadCode(Join({Text("tesscell11"), {0x3B}})), ErrBadMagic);
    EXPECT_EQ(LoadCode(Join({Text("TessCell1"), {0x00, 0x3B}})), ErrBadMagic);
    EXPECT_EQ(LoadCode(Join({kMagic, kMagic, {0x3B}})), ErrBadData);  // 'T' is a tag

    const Bytes cells(192, 0);
    // A colour with no list before it, even behind a palette.
    EXPECT_EQ(LoadCode(Join({kMagic, {0x21, 0x00, 0x02}, cells, {0x3B}})), ErrBadData);
    EXPECT_EQ(LoadCode(Join({kMagic, {0x2F, 0x00, 0x00, 0x00, 0x21, 0x00, 0x02}, cells, {0x3B}})),
              ErrBadData);
    // 257 colours is one too many; the count is big-endian.
    EXPECT_EQ(LoadCode(Join({kMagic, {0x2F, 0x00, 0x01, 0x01}, Bytes(257 * 3, 1), {0x3B}})),
              ErrBadData);
    EXPECT_EQ(LoadCode(Join({kMagic, {0x2F, 0x00, 0xFF, 0xFF, 0x3B}})), ErrBadData);
    // Unknown tags, also after good records.
    for (uint8_t tag : {0x01, 0x20, 0x22, 0x2D, 0x3A, 0x3C, 0xFF})
        EXPECT_EQ(LoadCode(Join({kMagic, {0x2C, 0x01, 'L', tag, 0x3B}})), ErrBadData)
            << "tag " << int(tag);

    // The same reader object loads a good file after all of that.
    EXPECT_EQ(LoadCode(kWorkedExample), 0);
}

// The old magic, fillers between records, empty names, a palette ahead of the lists,
// colours behind a palette, GridSizes never written, 256 colours and bytes behind the
// terminator are all read; the next save writes the new magic, the lists with their
// colours, then the palettes, and nothing else.
TEST_F(LibraryFileTest, ReaderAcceptsWhatTheFormatAllows) {
    const Bytes q1 = Join({{0x2F, 0x02, 'Q', '1', 0x01, 0x00}, Bytes(768, 0x5A)});
    const Bytes q2 = {0x2F, 0x02, 'Q', '2', 0x00, 0x00};  // a palette of no colours
    const Bytes c = Join({{0x21, 0x01, 'c', 0x07}, kCells});
    const Bytes blank = Join({{0x21, 0x00, 0x00}, kCells});        // GridSize 0, empty name
    const Bytes lists = {0x2C, 0x00, 0x00, 0x2C, 0x02, 'L', '2'};  // "", a filler, "L2"
    const Bytes start = Join({Text("TessCell10"), {0x00, 0x00}, q1, lists, q2, c});
    WriteWholeFile(path, Join({start, {0x00, 0x00}, blank, {0x3B}, Text("ignored at the end")}));
    EXPECT_EQ(Save(*Load()),
              Join({kMagic, {0x2C, 0x00, 0x2C, 0x02, 'L', '2'}, c, blank, q1, q2, {0x3B}}));

    // A name with a NUL in it is cut there by the next save.
    WriteWholeFile(path, Join({kMagic, {0x2C, 0x03, 'A', 0x00, 'B', 0x3B}}));
    EXPECT_EQ(Save(*Load()), Join({kMagic, {0x2C, 0x01, 'A', 0x3B}}));
}

// Names of every length from 0 to 255 and every byte but NUL, all six GridSizes, empty
// lists and palettes among full ones: a save and a load keep every order, name and
// byte, and a second save gives the same file.
TEST_F(LibraryFileTest, SaveAndLoadKeepEverything) {
    Library library(test::MakeSampleLibrary(12, 30, 4));
    test::AddList(*library, std::string(255, 'n'));
    test::AddPalette(*library, "", 0, 1);
    test::AddColor(*test::AddList(*library, "last"), std::string(255, 'z'), 8, 77);
    test::AddPalette(*library, "one", 1, 2);

    const Bytes saved = Save(*library);
    const Library back = Load();
    EXPECT_EQ(test::CompareLibraries(*library, *back), "");
    EXPECT_EQ(Save(*back), saved);

    // The folders of a library that does not exist yet are made by the save.
    const std::string nested = dir.Path("new/deeper/Tessellum.dat");
    file.WriteLibrary(back.get(), nested.c_str());
    EXPECT_EQ(ReadWholeFile(nested), saved);
}

// A write that fails at any point leaves the previous library byte for byte, no partial
// file, and the file closed.
TEST_F(LibraryFileTest, FailedSaveKeepsThePreviousLibrary) {
    Save(*WorkedExampleLibrary());
    // Several buffers' worth: a sample colour takes about 320 bytes.
    Library next(test::MakeSampleLibrary(4, BinaryFile::kBufferSize / 320, 4));
    int failures = 0;
    for (int succeeding = 0;; ++succeeding) {
        test::IoFault fault(test::IoFault::kFailingWrite, succeeding, ENOSPC);
        const ErrorCode code = CodeOf([&] { file.WriteLibrary(next.get(), path.c_str()); });
        EXPECT_FALSE(file.IsOpen());
        if (!fault.Fired()) {
            EXPECT_EQ(code, 0);
            break;
        }
        ++failures;
        EXPECT_EQ(code, ErrDiskFull) << "write call " << succeeding;
        EXPECT_EQ(ReadWholeFile(path), kWorkedExample) << "write call " << succeeding;
        EXPECT_EQ(dir.Files(), Names{"Tessellum.dat"}) << "write call " << succeeding;
    }
    EXPECT_GE(failures, 3);  // each buffer's worth was a place to fail
    EXPECT_EQ(test::CompareLibraries(*next, *Load()), "");
}

// A file that the load refused, foreign or damaged, is kept as "Tessellum.dat.bak" by the
// first save that replaces it, and only by that one; a good load or a missing file keeps
// nothing.
TEST_F(LibraryFileTest, RefusedFileIsKeptAside) {
    const Bytes foreign = Text("not a library, but maybe someone's data");
    EXPECT_EQ(LoadCode(foreign), ErrBadMagic);
    const Library library = WorkedExampleLibrary();
    {  // a save that fails moves nothing
        test::IoFault fault(test::IoFault::kFailingWrite, 0, ENOSPC);
        EXPECT_EQ(CodeOf([&] { file.WriteLibrary(library.get(), path.c_str()); }), ErrDiskFull);
    }
    EXPECT_EQ(dir.Files(), Names{"Tessellum.dat"});
    EXPECT_EQ(Save(*library), kWorkedExample);
    EXPECT_EQ(ReadWholeFile(path + ".bak"), foreign);
    const ColorLibrary empty;
    Save(empty);
    EXPECT_EQ(ReadWholeFile(path + ".bak"), foreign);

    const Bytes damaged(kWorkedExample.begin(), kWorkedExample.begin() + 100);
    EXPECT_EQ(LoadCode(damaged), ErrEndOfFile);
    Save(empty);
    EXPECT_EQ(ReadWholeFile(path + ".bak"), damaged);

    std::remove((path + ".bak").c_str());
    EXPECT_EQ(LoadCode(damaged), ErrEndOfFile);
    EXPECT_EQ(LoadCode(kWorkedExample), 0);
    Save(empty);
    std::remove(path.c_str());
    EXPECT_EQ(CodeOf([&] { Load(); }), ErrFileNotFound);
    Save(*library);
    EXPECT_EQ(dir.Files(), Names{"Tessellum.dat"});
}

}  // namespace
}  // namespace tessellum
