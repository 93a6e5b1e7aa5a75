// The library file, the list exchange file and the colour table: their exact bytes, what
// each reader accepts and refuses, saves that never damage the file on disk, and every
// allocation failing in turn. Built natively and for Windows, whose runtime differs.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "storage/color_table.h"
#include "storage/library_file.h"
#include "storage/list_file.h"
#include "storage/system_io.h"
#include "tests/support/failing_heap.h"
#include "tests/support/library_samples.h"
#include "tests/support/scratch_directory.h"

namespace tessellum {
namespace {

using test::CodeOf;
using test::failingHeap;
using test::ReadWholeFile;
using test::WriteWholeFile;
using Bytes = std::vector<uint8_t>;
using Names = std::vector<std::string>;

Bytes Text(const std::string& text) {
    return Bytes(text.begin(), text.end());
}

Bytes Join(std::initializer_list<Bytes> parts) {
    Bytes all;
    for (const Bytes& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

// Cell k (row k / 8, column k % 8) is (255 - 3k, 254 - 3k, 253 - 3k): row 0 first, cell 0 first,
// then red, green, blue; every byte differs, so one out of place shows.
const Bytes kCells = [] {
    Bytes cells(192);
    for (int i = 0; i < 192; ++i) cells[i] = static_cast<uint8_t>(255 - i);
    return cells;
}();
const Bytes kMagic11 = Text("TessCell11"), kMagic00 = Text("TessCell00");
// One list "Web" with one colour "Red" of GridSize 2, one palette "P" of one red colour.
const Bytes kLibrary = Join({kMagic11,
                             {0x2C, 3, 'W', 'e', 'b', 0x21, 3, 'R', 'e', 'd', 2},
                             kCells,
                             {0x2F, 1, 'P', 0x00, 0x01, 0xFF, 0x00, 0x00, 0x3B}});
// The list "Web" alone: a filler after the name and after each colour.
const Bytes kList =
    Join({kMagic00, {0x2C, 3, 'W', 'e', 'b', 0, 0x21, 3, 'R', 'e', 'd', 2}, kCells, {0, 0x3B}});

// From the write numbered `failFrom` (from 0) on, every write fails as on a full disk.
int writes, failFrom;
int64_t FailingWrite(int fd, const void* buffer, uint32_t size) {
    if (writes++ < failFrom) return system_io::WriteDescriptor(fd, buffer, size);
    errno = ENOSPC;
    return -1;
}

class StorageTest : public ::testing::Test {
protected:
    test::ScratchDirectory dir;
    std::string path = dir.Path("Tessellum.dat"), listPath = dir.Path("Web.tsl");
    LibraryFile libraryFile;
    ListFile listFile;

    std::unique_ptr<ColorLibrary> Load() {
        return std::unique_ptr<ColorLibrary>(libraryFile.ReadLibrary(path.c_str()));
    }
    Bytes Save(const ColorLibrary& library) {
        libraryFile.WriteLibrary(&library, path.c_str());
        EXPECT_FALSE(libraryFile.IsOpen());
        return ReadWholeFile(path);
    }
    // Reads the file and gives what the library or list read saves as.
    Bytes ReadAndSave(bool isList) {
        if (!isList) return Save(*Load());
        std::unique_ptr<ColorList> list(listFile.ReadList(listPath.c_str()));
        listFile.WriteList(list.get(), listPath.c_str());
        return ReadWholeFile(listPath);
    }
};

TEST_F(StorageTest, WorkedExamplesToTheByteAndBack) {
    libraryFile.WriteLibrary(nullptr, path.c_str());  // nothing to write: touches no file
    listFile.WriteList(nullptr, listPath.c_str());
    EXPECT_EQ(dir.Files(), Names{});
    EXPECT_EQ(Save(ColorLibrary()), Join({kMagic11, {0x3B}}));

    ColorLibrary library;
    ColorList* web = test::AddList(library, "Web");
    ColorEntry* red = test::AddColor(*web, "Red", 2, 0);
    for (uint8_t k = 0; k < 64; ++k)
        red->cells.Cell(k / 8, k % 8) = {uint8_t(255 - 3 * k), uint8_t(254 - 3 * k),
                                         uint8_t(253 - 3 * k)};
    std::memcpy(test::AddPalette(library, "P", 1, 0)->palette.Colors(), "\xFF\0\0", 3);
    EXPECT_EQ(Save(library), kLibrary);
    EXPECT_EQ(test::CompareLibraries(library, *Load()), "");
    listFile.WriteList(web, listPath.c_str());
    EXPECT_EQ(ReadWholeFile(listPath), kList);
    EXPECT_EQ(dir.Files(), (Names{"Tessellum.dat", "Web.tsl"}));
    // The folders of a library that does not exist yet are made by the save.
    libraryFile.WriteLibrary(&library, dir.Path("new/deeper/Tessellum.dat").c_str());
    EXPECT_EQ(ReadWholeFile(dir.Path("new/deeper/Tessellum.dat")), kLibrary);
}

// Each input with the code of its refusal, or with the file that the library or list it gives saves
// as (when not the input itself), which shows every name, order, GridSize and byte that was read.
struct Case {
    Bytes input;
    ErrorCode code;
    Bytes saved = {};
};

TEST_F(StorageTest, WhatTheReadersRefuseAndAccept) {
    const Bytes c = Join({{0x21, 1, 'c', 7}, kCells});  // GridSize 7, kept as it stands
    const Bytes d = Join({{0x21, 0, 0}, kCells});       // GridSize 0, no name
    const Bytes q1 = Join({{0x2F, 2, 'Q', '1', 0x01, 0x00}, Bytes(768, 0x5A)});  // 256 colours
    const Bytes q2 = {0x2F, 2, 'Q', '2', 0x00, 0x00};
    const Bytes& m = kMagic11;
    const Bytes lists = {0x2C, 0, 0, 0x2C, 2, 'L', '2'};  // "", a filler, "L2"
    const Bytes old = Join({Text("TessCell10"), {0, 0}, q1, lists, q2, c, {0, 0}, d, {0x3B, 'x'}});
    std::vector<Case> library = {
        {Join({Text("TessCell12"), {0x3B}}), ErrBadMagic},
        {Join({Text("tesscell11"), {0x3B}}), ErrBadMagic},
        {Join({m, m, {0x3B}}), ErrBadData},                 // 'T' is no tag
        {Join({m, {0x21, 0, 2}, kCells}), ErrBadData},      // a colour with no list before it,
        {Join({m, q2, {0x21, 0, 2}, kCells}), ErrBadData},  // even behind a palette
        {Join({m, {0x2F, 0, 0x01, 0x01}, Bytes(771, 1), {0x3B}}), ErrBadData},  // 257 colours
        {Join({m, {0x2F, 0, 0xFF, 0xFF, 0x3B}}), ErrBadData},
        // The old magic, fillers, empty names, a palette ahead of the lists, colours behind a
        // palette, GridSizes never written and bytes behind the end are read; a save writes the new
        // magic, the lists with their colours, then the palettes.
        {old, 0, Join({m, {0x2C, 0, 0x2C, 2, 'L', '2'}, c, d, q1, q2, {0x3B}})},
        {Join({m, {0x2C, 3, 'A', 0, 'B', 0x3B}}), 0, Join({m, {0x2C, 1, 'A', 0x3B}})},  // NUL
        {kLibrary, 0},
    };
    const Bytes& l = kMagic00;
    std::vector<Case> list = {
        {Join({m, {0x3B}}), ErrBadMagic},
        {Join({l, {0x2F, 0, 0, 0, 0x3B}}), ErrBadData},  // a palette
        {Join({l, {0x3B}}), 0, Join({l, {0x2C, 0, 0, 0x3B}})},
        {Join({l, c, d, {0x2C, 1, 'L', 0x3B}}), 0,  // the colours ahead of the name
         Join({l, {0x2C, 1, 'L', 0}, c, {0}, d, {0, 0x3B}})},
        {Join({l, {0x2C, 5}, Text("First"), c, {0x2C, 1, 'S', 0x3B}}), 0,  // the later name
         Join({l, {0x2C, 1, 'S', 0}, c, {0, 0x3B}})},
        {Join({l, {0, 0, 0x2C, 1, 'L', 0, 0}, c, {0, 0, 0x3B, 0x2F}}), 0,  // fillers, a tail
         Join({l, {0x2C, 1, 'L', 0}, c, {0, 0x3B}})},
        {kList, 0},
    };
    for (uint8_t tag : {0x01, 0x20, 0x22, 0x2B, 0x2D, 0x3A, 0x3C, 0xFF}) {  // after good records
        library.push_back({Join({m, {0x2C, 1, 'L'}, {tag, 0x3B}}), ErrBadData});
        list.push_back({Join({l, {0x2C, 1, 'L', 0}, c, {tag, 0x3B}}), ErrBadData});
    }
    // Every cut of a worked example: in the magic, right after it, in or between records.
    for (size_t n = 0; n < kLibrary.size(); ++n) {
        const ErrorCode code = n > 0 && n < 10 ? ErrBadMagic : ErrEndOfFile;
        library.push_back({Bytes(kLibrary.begin(), kLibrary.begin() + n), code});
        if (n < kList.size()) list.push_back({Bytes(kList.begin(), kList.begin() + n), code});
    }

    EXPECT_EQ(CodeOf([&] { Load(); }), ErrFileNotFound);
    EXPECT_EQ(CodeOf([&] { listFile.ReadList(listPath.c_str()); }), ErrFileNotFound);
    for (bool isList : {false, true})
        for (const Case& test : isList ? list : library) {
            const std::string what = (isList ? "list of " : "library of ") +
                                     std::to_string(test.input.size()) + " bytes";
            WriteWholeFile(isList ? listPath : path, test.input);
            Bytes saved;
            EXPECT_EQ(CodeOf([&] { saved = ReadAndSave(isList); }), test.code) << what;
            EXPECT_FALSE(libraryFile.IsOpen() || listFile.IsOpen()) << what;
            EXPECT_EQ(saved, test.code            ? Bytes{}
                             : test.saved.empty() ? test.input
                                                  : test.saved)
                << what;
            if (isList) continue;
            // The next save keeps a refused library as ".bak", and keeps nothing else.
            EXPECT_EQ(Save(ColorLibrary()), Join({m, {0x3B}})) << what;
            EXPECT_EQ(ReadWholeFile(path + ".bak"), test.code != 0 ? test.input : Bytes{}) << what;
            std::remove((path + ".bak").c_str());
        }
}

// A library save that fails at any write leaves the refused file on disk byte for byte, with no
// partial file and nothing kept aside; the first save that succeeds keeps it as ".bak", and only
// that one.
TEST_F(StorageTest, FailedSavesKeepTheFileOnDisk) {
    const Bytes foreign = Text("not a library, but maybe someone's data");
    WriteWholeFile(path, foreign);
    EXPECT_EQ(CodeOf([&] { Load(); }), ErrBadMagic);
    // Several buffers' worth (a colour takes about 320 bytes), with names of every length and every
    // byte but NUL, every GridSize, empty lists and palettes among full ones.
    std::unique_ptr<ColorLibrary> next(
        test::MakeSampleLibrary(4, BinaryFile::kBufferSize / 320, 2));
    test::AddList(*next, "");
    test::AddPalette(*next, "", 0, 1);
    system_io::activeWrite = FailingWrite;
    for (failFrom = 0;; ++failFrom) {
        writes = 0;
        const ErrorCode code = CodeOf([&] { libraryFile.WriteLibrary(next.get(), path.c_str()); });
        EXPECT_FALSE(libraryFile.IsOpen());
        if (writes <= failFrom) break;  // none failed
        EXPECT_EQ(code, ErrDiskFull) << "write call " << failFrom;
        EXPECT_EQ(ReadWholeFile(path), foreign) << "write call " << failFrom;
        EXPECT_EQ(dir.Files(), Names{"Tessellum.dat"}) << "write call " << failFrom;
    }
    system_io::activeWrite = system_io::WriteDescriptor;
    EXPECT_GE(failFrom, 3);  // each buffer's worth was a place to fail
    const Bytes saved = ReadWholeFile(path);
    const std::unique_ptr<ColorLibrary> back = Load();
    EXPECT_EQ(test::CompareLibraries(*next, *back), "");
    EXPECT_EQ(Save(*back), saved);
    EXPECT_EQ(ReadWholeFile(path + ".bak"), foreign);
}

TEST_F(StorageTest, ColorTableIsTheFirst768BytesOrNothing) {
    const std::string act = dir.Path("sunset.act");
    Bytes bytes(772);  // 26 and CR LF among them
    for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<uint8_t>(i * 5 + i / 256);
    EXPECT_EQ(CodeOf([&] { ReadColorTable(act.c_str()); }), ErrGeneral);  // missing
    for (size_t size : {0, 1, 767, 768, 772}) {
        WriteWholeFile(act, Bytes(bytes.begin(), bytes.begin() + size));
        std::unique_ptr<Palette> palette;
        EXPECT_EQ(CodeOf([&] { palette.reset(ReadColorTable(act.c_str())); }),
                  size < 768 ? ErrBadData : 0);
        const Bytes read =
            palette ? Bytes(palette->Colors(), palette->Colors() + 3 * palette->Count()) : Bytes{};
        EXPECT_EQ(read, size < 768 ? Bytes{} : Bytes(bytes.begin(), bytes.begin() + 768)) << size;
    }
    // The palette is named by the part of the path behind the last ':' or '\'.
    const char* paths[][2] = {{"C:\\d\\s.act", "s.act"},
                              {"D:s.act", "s.act"},
                              {"a\\b:c", "c"},
                              {"C:\\d\\", ""},
                              {"d/a.act", "d/a.act"}};
    for (const auto& test : paths)
        EXPECT_EQ(FileNamePart(test[0]), test[0] + std::strlen(test[0]) - std::strlen(test[1]));
}

// The lowest free descriptor: one left open moves it up.
int LowestFreeDescriptor(const std::string& file) {
    const int fd = open(file.c_str(), O_RDONLY);
    close(fd);
    return fd;
}

// Runs the action with allocation `failAt` failing (0: none): the code thrown (0: none),
// with nothing it allocated left, and the count in failingHeap.allocations.
ErrorCode RunArmed(long failAt, const std::function<void()>& action) {
    failingHeap.Arm(failAt);
    const ErrorCode code = CodeOf(action);
    failingHeap.Disarm();
    EXPECT_EQ(failingHeap.live, 0) << "blocks left allocated, failing allocation " << failAt;
    return code;
}

// Every allocation of a library load, of a save, of a list import and of a colour table
// read made to fail in turn: ErrNoMemory, nothing left allocated or open, and the file on
// disk as it was.
TEST_F(StorageTest, EveryAllocationFailingInTurn) {
    // Lists, colours and palettes, with empty ones among them: every kind of record.
    std::unique_ptr<ColorLibrary> library(test::MakeSampleLibrary(3, 3, 2));
    test::AddList(*library, "empty");
    test::AddPalette(*library, "none", 0, 9);
    const Bytes before = Save(*library);
    // Twelve colours: more than the first block that colours are carved from holds.
    ColorList* twelve = test::AddList(*library, "twelve");
    for (uint8_t size = 2; size < 14; ++size)
        test::AddColor(*twelve, std::string(size, 'c'), size, size);
    listFile.WriteList(twelve, listPath.c_str());
    const std::string act = dir.Path("web.act"), other = dir.Path("other.dat");
    WriteWholeFile(act, Bytes(768, 0x33));
    WriteWholeFile(other, {'x'});

    const int descriptor = LowestFreeDescriptor(path);
    const auto sweep = [&](const std::function<void()>& action, const auto& check) {
        check(RunArmed(0, action), 0);
        const long allocations = failingHeap.allocations;
        for (long n = 1; n <= allocations; ++n) {
            check(RunArmed(n, action), n);
            EXPECT_EQ(LowestFreeDescriptor(path), descriptor) << "failing allocation " << n;
        }
        return allocations;
    };
    const auto noMemory = [](ErrorCode code, long n) {
        EXPECT_EQ(code, n == 0 ? 0 : ErrNoMemory) << "failing allocation " << n;
    };
    // The library with its two lists, the file name, each list and palette with its node,
    // the colours of two palettes, and two blocks for the nine colours with their nodes.
    EXPECT_EQ(sweep([&] { delete LibraryFile().ReadLibrary(path.c_str()); }, noMemory),
              3 + 1 + 7 * 2 + 2 + 2);
    EXPECT_GE(sweep([&] { delete ListFile().ReadList(listPath.c_str()); }, noMemory), 4);
    EXPECT_GE(sweep([&] { delete ReadColorTable(act.c_str()); }, noMemory), 2);
    // A refused load first, so that the save also has a file to keep aside; where the
    // failing allocation was that load's own, the save goes through.
    const auto save = [&] {
        LibraryFile file;
        CodeOf([&] { file.ReadLibrary(other.c_str()); });
        file.WriteLibrary(library.get(), path.c_str());
    };
    sweep(save, [&](ErrorCode code, long n) {
        EXPECT_TRUE(code == 0 || code == ErrNoMemory) << code << ", failing allocation " << n;
        if (code == 0) return WriteWholeFile(path, before);
        EXPECT_EQ(ReadWholeFile(path), before) << "failing allocation " << n;
        EXPECT_FALSE(std::filesystem::exists(path + ".tmp")) << "failing allocation " << n;
    });
}

}  // namespace
}  // namespace tessellum
