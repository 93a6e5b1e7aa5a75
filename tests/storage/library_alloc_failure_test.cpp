// Every allocation of a library load, of a save, of a list import and of a colour table
// read made to fail in turn: the code thrown is ErrNoMemory, nothing stays allocated, no
// descriptor stays open, and the file on disk is as it was. The failing heap replaces the
// global allocation functions.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "color/allocate.h"
#include "storage/color_table.h"
#include "storage/library_file.h"
#include "storage/list_file.h"
#include "tests/support/failing_heap.h"
#include "tests/support/library_samples.h"
#include "tests/support/scratch_directory.h"

namespace tessellum {
namespace {

// The lowest free descriptor: a descriptor left open moves it up.
int LowestFreeDescriptor() {
    const int fd = open("/dev/null", O_RDONLY);
    close(fd);
    return fd;
}

// Runs the action failing allocation `failAt` (0: none); returns the code thrown (0: none)
// and leaves the count in failingHeap.allocations. All it allocated must be gone at the end.
template <typename Action>
ErrorCode RunArmed(long failAt, Action action) {
    test::failingHeap.Arm(failAt);
    ErrorCode code = 0;
    try {
        action();
    } catch (ErrorCode thrown) {
        code = thrown;
    }
    test::failingHeap.Disarm();
    EXPECT_EQ(test::failingHeap.live, 0) << "blocks left allocated, failing allocation " << failAt;
    return code;
}

class AllocationFailureTest : public ::testing::Test {
protected:
    test::ScratchDirectory dir;
    std::string path = dir.Path("Tessellum.dat");
    int descriptor = 0;

    void SetUp() override {
        // Lists, colours and palettes, with empty ones among them: every kind of record.
        std::unique_ptr<ColorLibrary> library(test::MakeSampleLibrary(3, 3, 2));
        test::AddList(*library, "empty");
        test::AddPalette(*library, "none", 0, 9);
        LibraryFile().WriteLibrary(library.get(), path.c_str());
        descriptor = LowestFreeDescriptor();
    }
};

TEST_F(AllocationFailureTest, EveryAllocationOfALoad) {
    bool leftOpen = false;
    const auto load = [&] {
        LibraryFile file;
        try {
            delete file.ReadLibrary(path.c_str());
        } catch (ErrorCode) {
            leftOpen = file.IsOpen();
            throw;
        }
    };
    ASSERT_EQ(RunArmed(0, load), 0);
    const long allocations = test::failingHeap.allocations;
    // The library with its two lists, the file name, each list and palette with its node,
    // the colours of two palettes, and two blocks for the nine colours with their nodes.
    EXPECT_EQ(allocations, 3 + 1 + 7 * 2 + 2 + 2);
    for (long n = 1; n <= allocations; ++n) {
        EXPECT_EQ(RunArmed(n, load), ErrNoMemory) << "failing allocation " << n;
        EXPECT_FALSE(leftOpen) << "failing allocation " << n;
        EXPECT_EQ(LowestFreeDescriptor(), descriptor) << "failing allocation " << n;
    }
}

// A save that fails for memory leaves the file as it was and no partial file. A refused
// load comes first, so that the save also has a file to keep aside; where the failing
// allocation was that load's own, the save goes through.
TEST_F(AllocationFailureTest, EveryAllocationOfASave) {
    const auto before = test::ReadWholeFile(path);
    std::unique_ptr<ColorLibrary> library(test::MakeSampleLibrary(2, 2, 1));
    const std::string other = dir.Path("other.dat");
    test::WriteWholeFile(other, {'x'});
    const auto save = [&] {
        LibraryFile file;
        try {
            file.ReadLibrary(other.c_str());
        } catch (ErrorCode) {
        }
        file.WriteLibrary(library.get(), path.c_str());
    };
    ASSERT_EQ(RunArmed(0, save), 0);
    const long allocations = test::failingHeap.allocations;
    const auto written = test::ReadWholeFile(path);
    for (long n = 1; n <= allocations; ++n) {
        test::WriteWholeFile(path, before);
        const ErrorCode code = RunArmed(n, save);
        EXPECT_TRUE(code == 0 || code == ErrNoMemory) << code << ", failing allocation " << n;
        EXPECT_EQ(test::ReadWholeFile(path), code == 0 ? written : before) << n;
        EXPECT_FALSE(std::filesystem::exists(path + ".tmp")) << "failing allocation " << n;
        EXPECT_EQ(LowestFreeDescriptor(), descriptor) << "failing allocation " << n;
    }
}

// A list import and a colour table read, each allocation failing in turn, and also
// refusing a damaged file, leave nothing allocated and nothing open.
TEST_F(AllocationFailureTest, EveryAllocationOfAListImportAndATableRead) {
    const std::string list = dir.Path("Web.tsl"), table = dir.Path("web.act");
    ColorList sample;
    CopyName(sample.name, "Web");
    // Twelve colours: more than the first block that colours are carved from holds.
    for (uint8_t size = 2; size < 14; ++size)
        test::AddColor(sample, std::string(size, 'c'), size, size);
    ListFile().WriteList(&sample, list.c_str());
    test::WriteWholeFile(table, std::vector<uint8_t>(768, 0x33));

    bool leftOpen = false;
    const auto importList = [&] {
        ListFile file;
        try {
            delete file.ReadList(list.c_str());
        } catch (ErrorCode) {
            leftOpen = file.IsOpen();
            throw;
        }
    };
    const auto readTable = [&] { delete ReadColorTable(table.c_str()); };
    const auto sweep = [&](const std::function<void()>& read, long atLeast) {
        ASSERT_EQ(RunArmed(0, read), 0);
        const long allocations = test::failingHeap.allocations;
        EXPECT_GE(allocations, atLeast);
        for (long n = 1; n <= allocations; ++n) {
            EXPECT_EQ(RunArmed(n, read), ErrNoMemory) << "failing allocation " << n;
            EXPECT_FALSE(leftOpen) << "failing allocation " << n;
            EXPECT_EQ(LowestFreeDescriptor(), descriptor) << "failing allocation " << n;
        }
    };
    sweep(importList, 4);  // the list, its file name, two blocks of colours and nodes
    sweep(readTable, 2);   // the palette and its colours
    auto cut = test::ReadWholeFile(list);
    cut.pop_back();
    test::WriteWholeFile(list, cut);
    test::WriteWholeFile(table, std::vector<uint8_t>(767, 0x33));
    EXPECT_EQ(RunArmed(0, importList), ErrEndOfFile);
    EXPECT_EQ(RunArmed(0, readTable), ErrBadData);
    EXPECT_FALSE(leftOpen);
    EXPECT_EQ(LowestFreeDescriptor(), descriptor);
}

// Without memory a library that cannot get its second list frees the first, a palette
// keeps its colours through a failed resize and is empty after a failed copy, and a
// list keeps its nodes through a failed insertion.
TEST(ModelAllocationFailure, StructuresStayConsistent) {
    for (long n = 1; n <= 3; ++n)
        EXPECT_EQ(RunArmed(n, [] { delete NewOrThrow<ColorLibrary>(); }), ErrNoMemory) << n;
    Palette palette(2);
    palette.Colors()[0] = 7;
    EXPECT_EQ(RunArmed(1, [&] { palette.Resize(10); }), ErrNoMemory);
    ASSERT_EQ(palette.Count(), 2u);
    EXPECT_EQ(palette.Colors()[0], 7);

    const Palette other(3);
    EXPECT_EQ(RunArmed(1, [&] { palette.Assign(other); }), ErrNoMemory);
    EXPECT_EQ(palette.Count(), 0u);
    EXPECT_EQ(palette.Colors(), nullptr);

    PtrList list;
    int a = 1, b = 2;
    EXPECT_EQ(RunArmed(1, [&] { list.Append(&a); }), ErrNoMemory);
    EXPECT_TRUE(list.Head() == nullptr && list.Tail() == nullptr);
    list.Append(&a);
    const std::function<void()> insertions[] = {
        [&] { list.Append(&b); }, [&] { list.InsertAfter(list.Head(), &b); },
        [&] { list.InsertBefore(list.Head(), &b); }, [&] { list.InsertAt(0, &b); },
        [&] { list.InsertAt(1, &b); }};
    for (const auto& insert : insertions) {
        EXPECT_EQ(RunArmed(1, insert), ErrNoMemory);
        EXPECT_TRUE(list.Head() == list.Tail() && list.Head()->prev == nullptr &&
                    list.Head()->next == nullptr);
    }
}

// Colours carved from shared blocks are freed one by one with `delete`, in any order,
// before or after their carver goes: each block stays while any record in it lives (the
// survivor is written and read under the sanitizer), and nothing is left at the end.
TEST(CarvedRecords, EachFreesAloneInAnyOrder) {
    using Order = std::vector<int>;
    Order forward, backward, oddFirst;  // 20 colours: more than the first block holds
    for (int i = 0; i < 20; ++i) forward.push_back(i), backward.insert(backward.begin(), i);
    for (int i = 0; i < 20; ++i) oddFirst.push_back(i < 10 ? 2 * i + 1 : 2 * (i - 10));
    for (const Order& order : {forward, backward, oddFirst}) {
        for (bool carverFirst : {true, false}) {
            std::optional<RecordBlocks> blocks(std::in_place);
            ColorEntry* entries[20];
            test::failingHeap.Arm(0);
            for (ColorEntry*& entry : entries) entry = NewColorEntry(*blocks);
            EXPECT_EQ(test::failingHeap.live, 2);
            if (carverFirst) blocks.reset();
            for (size_t i = 0; i + 1 < order.size(); ++i) delete entries[order[i]];
            ColorEntry* survivor = entries[order.back()];
            EXPECT_EQ(survivor->gridSize, 2);
            EXPECT_EQ(survivor->name[100], 0);
            CopyName(survivor->name, "last");
            EXPECT_STREQ(survivor->name, "last");
            delete survivor;
            blocks.reset();
            test::failingHeap.Disarm();
            EXPECT_EQ(test::failingHeap.live, 0)
                << order[0] << " first, carver first " << carverFirst;
        }
    }
}

}  // namespace
}  // namespace tessellum
