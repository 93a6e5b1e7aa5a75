// The library file: its exact bytes, what the reader accepts and refuses, and a save
// that never damages the library already on disk. Built natively and for Windows.
#include "storage/library_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/io_faults.h"
#include "tests/library_samples.h"
#include "tests/scratch_directory.h"
#include "tests/support/error_code_of.h"

#ifndef _WIN32
#include <signal.h>
#include <sys/resource.h>
#endif

namespace tessellum {
namespace {

using test::ReadWholeFile;
using test::WriteWholeFile;
using Bytes = std::vector<uint8_t>;
using Library = std::unique_ptr<ColorLibrary>;

using test::CodeOf;

Bytes Text(const char* text) {
    return Bytes(text, text + std::strlen(text));
}

Bytes Join(std::initializer_list<Bytes> parts) {
    Bytes all;
    for (const Bytes& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

Bytes DistinctPatternBytes() {
    Bytes cells(192);
    for (int i = 0; i < 192; ++i) cells[i] = static_cast<uint8_t>(i * 7 + 3);
    return cells;
}

// One list "Web" with one colour "Red" of GridSize 2, one palette "P" of one red colour.
Library WorkedExampleLibrary() {
    Library library(new ColorLibrary);
    ColorList* list = test::AddList(*library, "Web");
    ColorEntry* red = NewColorEntry();
    CopyName(red->name, "Red");
    red->gridSize = 2;
    const Bytes cells = DistinctPatternBytes();
    std::memcpy(&red->cells, cells.data(), 192);
    list->entries.Append(red);
    NamedPalette* palette = new NamedPalette;
    CopyName(palette->name, "P");
    palette->palette.Resize(1);
    std::memcpy(palette->palette.Colors(), "\xFF\x00\x00", 3);
    library->palettes->Append(palette);
    return library;
}

const Bytes kWorkedExample = Join({
    {0x54, 0x65, 0x73, 0x73, 0x43, 0x65, 0x6C, 0x6C, 0x31, 0x31},  // TessCell11
    {0x2C, 0x03, 0x57, 0x65, 0x62},                                // list "Web"
    {0x21, 0x03, 0x52, 0x65, 0x64, 0x02},                          // colour "Red", size 2
    DistinctPatternBytes(),
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
    std::vector<std::string> Files() {
        std::vector<std::string> names = dir.Files();
        std::sort(names.begin(), names.end());
        return names;
    }
};

TEST_F(LibraryFileTest, WorkedExampleToTheByteAndBack) {
    const Library library = WorkedExampleLibrary();
    ASSERT_EQ(kWorkedExample.size(), 222u);
    EXPECT_EQ(Save(*library), kWorkedExample);
    EXPECT_EQ(Files(), std::vector<std::string>{"Tessellum.dat"});

    const Library back = Load();
    EXPECT_EQ(test::CompareLibraries(*library, *back), "");
    auto* list = static_cast<ColorList*>(back->colorLists->ValueAt(0));
    EXPECT_STREQ(list->name, "Web");
    auto* red = static_cast<ColorEntry*>(list->entries.ValueAt(0));
    EXPECT_STREQ(red->name, "Red");
    EXPECT_EQ(red->gridSize, 2);
    auto* palette = static_cast<NamedPalette*>(back->palettes->ValueAt(0));
    EXPECT_STREQ(palette->name, "P");
    ASSERT_EQ(palette->palette.Count(), 1u);
    EXPECT_EQ(Bytes(palette->palette.Colors(), palette->palette.Colors() + 3), (Bytes{255, 0, 0}));
}

TEST_F(LibraryFileTest, EmptyLibraryIsMagicAndTerminator) {
    ColorLibrary empty;
    EXPECT_EQ(Save(empty), Join({Text("TessCell11"), {0x3B}}));
    const Library back = Load();
    EXPECT_EQ(back->colorLists->Count(), 0);
    EXPECT_EQ(back->palettes->Count(), 0);
}

TEST_F(LibraryFileTest, RefusedFilesGiveTheirCodes) {
    EXPECT_EQ(CodeOf([&] { Load(); }), ErrFileNotFound);
    EXPECT_EQ(LoadCode({}), ErrEndOfFile);
    for (size_t n = 1; n <= 9; ++n)
        EXPECT_EQ(LoadCode(Bytes(kWorkedExample.begin(), kWorkedExample.begin() + n)), ErrBadMagic)
            << n << " bytes";
    // Every cut between the magic and the terminator: inside a record or between two.
    for (size_t n = 10; n < kWorkedExample.size(); ++n)
        EXPECT_EQ(LoadCode(Bytes(kWorkedExample.begin(), kWorkedExample.begin() + n)), ErrEndOfFile)
            << n << " bytes";
    EXPECT_EQ(LoadCode(Join({Text("TessCell12"), {0x3B}})), ErrBadMagic);
    EXPECT_EQ(LoadCode(Join({Text("tesscell11"), {0x3B}})), ErrBadMagic);
    EXPECT_EQ(LoadCode(Join({Text("TessCell1"), {0x00, 0x3B}})), ErrBadMagic);
    EXPECT_EQ(LoadCode(Join({Text("TessCell11TessCell11"), {0x3B}})), ErrBadData);  // 'T' is a tag

    const Bytes magic = Text("TessCell11");
    const Bytes cells(192, 0);
    // A colour with no list before it, even behind a palette.
    EXPECT_EQ(LoadCode(Join({magic, {0x21, 0x00, 0x02}, cells, {0x3B}})), ErrBadData);
    EXPECT_EQ(LoadCode(Join({magic, {0x2F, 0x00, 0x00, 0x00, 0x21, 0x00, 0x02}, cells, {0x3B}})),
              ErrBadData);
    // 257 colours is one too many; the count is big-endian.
    EXPECT_EQ(LoadCode(Join({magic, {0x2F, 0x00, 0x01, 0x01}, Bytes(257 * 3, 1), {0x3B}})),
              ErrBadData);
    EXPECT_EQ(LoadCode(Join({magic, {0x2F, 0x00, 0xFF, 0xFF, 0x3B}})), ErrBadData);
    // Unknown tags, also after good records.
    for (uint8_t tag : {0x01, 0x20, 0x22, 0x2D, 0x3A, 0x3C, 0xFF})
        EXPECT_EQ(LoadCode(Join({magic, {0x2C, 0x01, 'L', tag, 0x3B}})), ErrBadData)
            << "tag " << int(tag);

    // The same reader object loads a good file after all of that.
    EXPECT_EQ(LoadCode(kWorkedExample), 0);
}

TEST_F(LibraryFileTest, ReaderAcceptsWhatTheFormatAllows) {
    const Bytes cells = DistinctPatternBytes();
    // The old magic, fillers anywhere between records, a zero where a length is expected,
    // a palette ahead of the lists, colours behind a palette record, a GridSize that the
    // program never writes, 256 colours, and bytes behind the terminator.
    WriteWholeFile(path, Join({Text("TessCell10"),
                               {0x00, 0x00},
                               {0x2F, 0x02, 'Q', '1', 0x01, 0x00},
                               Bytes(768, 0x5A),
                               {0x2C, 0x00},  // a list with an empty name
                               {0x00},
                               {0x2C, 0x02, 'L', '2'},
                               {0x2F, 0x02, 'Q', '2', 0x00, 0x00},  // a palette of no colours
                               {0x21, 0x01, 'c', 0x07},
                               cells,  // joins L2
                               {0x00, 0x00, 0x00},
                               {0x21, 0x00, 0x00},
                               cells,  // GridSize 0, empty name
                               {0x3B},
                               Text("ignored after the end")}));
    const Library library = Load();
    ASSERT_EQ(library->colorLists->Count(), 2);
    ASSERT_EQ(library->palettes->Count(), 2);
    auto* first = static_cast<ColorList*>(library->colorLists->ValueAt(0));
    auto* second = static_cast<ColorList*>(library->colorLists->ValueAt(1));
    EXPECT_STREQ(first->name, "");
    EXPECT_EQ(first->entries.Count(), 0);
    EXPECT_STREQ(second->name, "L2");
    ASSERT_EQ(second->entries.Count(), 2);
    auto* c = static_cast<ColorEntry*>(second->entries.ValueAt(0));
    auto* blank = static_cast<ColorEntry*>(second->entries.ValueAt(1));
    EXPECT_STREQ(c->name, "c");
    EXPECT_EQ(c->gridSize, 7);
    EXPECT_EQ(
        Bytes(reinterpret_cast<uint8_t*>(&c->cells), reinterpret_cast<uint8_t*>(&c->cells) + 192),
        cells);
    EXPECT_STREQ(blank->name, "");
    EXPECT_EQ(blank->gridSize, 0);
    auto* q1 = static_cast<NamedPalette*>(library->palettes->ValueAt(0));
    auto* q2 = static_cast<NamedPalette*>(library->palettes->ValueAt(1));
    EXPECT_STREQ(q1->name, "Q1");
    EXPECT_EQ(q1->palette.Count(), 256u);
    EXPECT_EQ(q1->palette.Colors()[767], 0x5A);
    EXPECT_STREQ(q2->name, "Q2");
    EXPECT_EQ(q2->palette.Count(), 0u);

    // The next save writes the new magic, every list with its colours, then the palettes,
    // no fillers, and nothing behind the terminator.
    EXPECT_EQ(Save(*library), Join({Text("TessCell11"),
                                    {0x2C, 0x00},
                                    {0x2C, 0x02, 'L', '2'},
                                    {0x21, 0x01, 'c', 0x07},
                                    cells,
                                    {0x21, 0x00, 0x00},
                                    cells,
                                    {0x2F, 0x02, 'Q', '1', 0x01, 0x00},
                                    Bytes(768, 0x5A),
                                    {0x2F, 0x02, 'Q', '2', 0x00, 0x00},
                                    {0x3B}}));
}

TEST_F(LibraryFileTest, NameWithANulIsCutThereByTheNextSave) {
    WriteWholeFile(path, Join({Text("TessCell11"), {0x2C, 0x03, 'A', 0x00, 'B', 0x3B}}));
    const Library library = Load();
    auto* list = static_cast<ColorList*>(library->colorLists->ValueAt(0));
    EXPECT_EQ(Bytes(list->name, list->name + 4), (Bytes{'A', 0, 'B', 0}));
    EXPECT_EQ(Save(*library), Join({Text("TessCell11"), {0x2C, 0x01, 'A', 0x3B}}));
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
}

TEST_F(LibraryFileTest, NullLibraryTouchesNothing) {
    WriteWholeFile(path, Text("anything at all"));
    file.WriteLibrary(nullptr, path.c_str());
    EXPECT_EQ(ReadWholeFile(path), Text("anything at all"));
    EXPECT_EQ(Files(), std::vector<std::string>{"Tessellum.dat"});
    const std::string missing = dir.Path("missing.dat");
    file.WriteLibrary(nullptr, missing.c_str());
    EXPECT_FALSE(test::FileExists(missing));
}

// A write that fails at any point, with a full disk or a short count, leaves the
// previous library byte for byte, no partial file, and the file closed.
TEST_F(LibraryFileTest, FailedSaveKeepsThePreviousLibrary) {
    Save(*WorkedExampleLibrary());
    Library next(test::MakeSampleLibrary(3, 4, 2));
    const std::string cleanPath = dir.Path("clean.dat");
    LibraryFile clean;
    clean.WriteLibrary(next.get(), cleanPath.c_str());
    const Bytes expected = ReadWholeFile(cleanPath);
    std::remove(cleanPath.c_str());

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
        EXPECT_EQ(Files(), std::vector<std::string>{"Tessellum.dat"})
            << "write call " << succeeding;
    }
    EXPECT_GT(failures, 50);  // every record of the library was a place to fail
    EXPECT_EQ(ReadWholeFile(path), expected);

    Save(*WorkedExampleLibrary());
    {
        test::IoFault fault(test::IoFault::kShortWrite, 20, 0);
        EXPECT_EQ(CodeOf([&] { file.WriteLibrary(next.get(), path.c_str()); }), ErrGeneral);
    }
    EXPECT_EQ(ReadWholeFile(path), kWorkedExample);
    EXPECT_EQ(Files(), std::vector<std::string>{"Tessellum.dat"});
}

#ifndef _WIN32
// A real size limit from the system, hit part-way through the new file.
TEST_F(LibraryFileTest, FileSizeLimitKeepsThePreviousLibrary) {
    Save(*WorkedExampleLibrary());
    Library next(test::MakeSampleLibrary(5, 10, 2));
    struct rlimit old;
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &old), 0);
    struct rlimit limited = old;
    limited.rlim_cur = 1000;
    void (*oldHandler)(int) = signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limited), 0);
    const ErrorCode code = CodeOf([&] { file.WriteLibrary(next.get(), path.c_str()); });
    setrlimit(RLIMIT_FSIZE, &old);
    signal(SIGXFSZ, oldHandler);
    EXPECT_EQ(code, ErrGeneral);  // EFBIG has no code of its own
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(ReadWholeFile(path), kWorkedExample);
    EXPECT_EQ(Files(), std::vector<std::string>{"Tessellum.dat"});
}
#endif

// A file that the load refused is kept as "Tessellum.dat.bak" by the first save that
// replaces it, and only by that one.
TEST_F(LibraryFileTest, RefusedFileIsKeptAside) {
    const Bytes foreign = Text("not a library, but maybe someone's data");
    WriteWholeFile(path, foreign);
    EXPECT_EQ(CodeOf([&] { Load(); }), ErrBadMagic);
    const Library library = WorkedExampleLibrary();

    // A save that fails moves nothing.
    {
        test::IoFault fault(test::IoFault::kFailingWrite, 3, ENOSPC);
        EXPECT_EQ(CodeOf([&] { file.WriteLibrary(library.get(), path.c_str()); }), ErrDiskFull);
    }
    EXPECT_EQ(ReadWholeFile(path), foreign);
    EXPECT_EQ(Files(), std::vector<std::string>{"Tessellum.dat"});

    EXPECT_EQ(Save(*library), kWorkedExample);
    EXPECT_EQ(ReadWholeFile(path + ".bak"), foreign);
    EXPECT_EQ(Files(), (std::vector<std::string>{"Tessellum.dat", "Tessellum.dat.bak"}));

    // Later saves leave the kept file alone.
    ColorLibrary empty;
    Save(empty);
    EXPECT_EQ(ReadWholeFile(path + ".bak"), foreign);

    // A damaged library is kept the same way; a good load or a missing file keeps nothing.
    const Bytes damaged(kWorkedExample.begin(), kWorkedExample.begin() + 100);
    EXPECT_EQ(LoadCode(damaged), ErrEndOfFile);
    Save(empty);
    EXPECT_EQ(ReadWholeFile(path + ".bak"), damaged);

    std::remove((path + ".bak").c_str());
    EXPECT_EQ(LoadCode(damaged), ErrEndOfFile);
    EXPECT_EQ(LoadCode(kWorkedExample), 0);  // a good load clears the note
    Save(empty);
    std::remove(path.c_str());
    EXPECT_EQ(CodeOf([&] { Load(); }), ErrFileNotFound);
    Save(*library);
    EXPECT_EQ(Files(), std::vector<std::string>{"Tessellum.dat"});
}

}  // namespace
}  // namespace tessellum
