// Every allocation of a library load, and of a save, made to fail in turn: the code
// thrown is ErrNoMemory, nothing stays allocated, no descriptor stays open, and the
// file on disk is as it was. This program replaces the global allocation functions to
// count and fail them.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <new>
#include <string>

#include "color/allocate.h"
#include "storage/library_file.h"
#include "tests/library_samples.h"
#include "tests/scratch_directory.h"

// The replaced functions hand out blocks from malloc behind a header; the compiler,
// seeing operator new and free meet, would take that for a mismatch.
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#pragma GCC diagnostic ignored "-Warray-bounds"

namespace {

// Counted only while armed; the allocation numbered `failAt` (from 1) returns null.
struct Heap {
    bool armed = false;
    long allocations = 0;
    long live = 0;
    long failAt = 0;
} heap;

// Each block carries a word that says whether it was counted, so frees of blocks from
// before arming leave the count alone.
constexpr size_t kHeader = alignof(std::max_align_t);
constexpr uint32_t kCounted = 0xC0C0A110;

void* Allocate(size_t size) {
    bool counted = false;
    if (heap.armed) {
        ++heap.allocations;
        if (heap.allocations == heap.failAt) return nullptr;
        counted = true;
    }
    char* block = static_cast<char*>(std::malloc(size + kHeader));
    if (block == nullptr) return nullptr;
    *reinterpret_cast<uint32_t*>(block) = counted ? kCounted : 0;
    if (counted) ++heap.live;
    return block + kHeader;
}

void Free(void* pointer) {
    if (pointer == nullptr) return;
    char* block = static_cast<char*>(pointer) - kHeader;
    if (*reinterpret_cast<uint32_t*>(block) == kCounted) --heap.live;
    std::free(block);
}

}  // namespace

void* operator new(size_t size) {
    void* p = Allocate(size);
    if (p == nullptr) throw std::bad_alloc();
    return p;
}
void* operator new[](size_t size) {
    return operator new(size);
}
void* operator new(size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void* operator new[](size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void operator delete(void* p) noexcept {
    Free(p);
}
void operator delete[](void* p) noexcept {
    Free(p);
}
void operator delete(void* p, size_t) noexcept {
    Free(p);
}
void operator delete[](void* p, size_t) noexcept {
    Free(p);
}
void operator delete(void* p, const std::nothrow_t&) noexcept {
    Free(p);
}
void operator delete[](void* p, const std::nothrow_t&) noexcept {
    Free(p);
}

namespace tessellum {
namespace {

// The lowest free descriptor: a descriptor left open moves it up.
int LowestFreeDescriptor() {
    const int fd = open("/dev/null", O_RDONLY);
    close(fd);
    return fd;
}

struct Outcome {
    ErrorCode code;
    long allocations;
};

// Runs the action armed, failing allocation `failAt` (0: none); everything the action
// allocated must be gone when it returns.
template <typename Action>
Outcome RunArmed(long failAt, Action action) {
    heap = Heap{true, 0, 0, failAt};
    ErrorCode code = 0;
    try {
        action();
    } catch (ErrorCode thrown) {
        code = thrown;
    }
    heap.armed = false;
    EXPECT_EQ(heap.live, 0) << "blocks left allocated, failing allocation " << failAt;
    return {code, heap.allocations};
}

class AllocationFailureTest : public ::testing::Test {
protected:
    test::ScratchDirectory dir;
    std::string path = dir.Path("Tessellum.dat");

    void SetUp() override {
        // Lists, colours and palettes, with empty ones among them: every kind of record.
        std::unique_ptr<ColorLibrary> library(test::MakeSampleLibrary(3, 3, 2));
        test::AddList(*library, "empty");
        test::AddPalette(*library, "none", 0, 9);
        LibraryFile().WriteLibrary(library.get(), path.c_str());
    }
};

TEST_F(AllocationFailureTest, EveryAllocationOfALoad) {
    const int descriptor = LowestFreeDescriptor();
    const Outcome clean = RunArmed(0, [&] {
        LibraryFile file;
        delete file.ReadLibrary(path.c_str());
    });
    ASSERT_EQ(clean.code, 0);
    // The library and its two lists, the file name, then each record and its node: 4
    // lists, 9 colours, 3 palettes of which 2 have colours.
    EXPECT_EQ(clean.allocations, 3 + 1 + 4 * 2 + 9 * 2 + 3 * 2 + 2);

    for (long n = 1; n <= clean.allocations; ++n) {
        bool leftOpen = true;
        const Outcome failed = RunArmed(n, [&] {
            LibraryFile file;
            struct Closed {
                LibraryFile& file;
                bool& leftOpen;
                ~Closed() { leftOpen = file.IsOpen(); }
            } check{file, leftOpen};
            delete file.ReadLibrary(path.c_str());
        });
        EXPECT_EQ(failed.code, ErrNoMemory) << "failing allocation " << n;
        EXPECT_FALSE(leftOpen) << "failing allocation " << n;
        EXPECT_EQ(LowestFreeDescriptor(), descriptor) << "failing allocation " << n;
    }
}

TEST_F(AllocationFailureTest, EveryAllocationOfASave) {
    const auto before = test::ReadWholeFile(path);
    std::unique_ptr<ColorLibrary> library(test::MakeSampleLibrary(2, 2, 1));
    const int descriptor = LowestFreeDescriptor();
    // A refused load first, so that the save also has a file to keep aside.
    const std::string other = dir.Path("other.dat");
    const auto save = [&] {
        LibraryFile file;
        try {
            file.ReadLibrary(other.c_str());
        } catch (ErrorCode) {
        }
        file.WriteLibrary(library.get(), path.c_str());
    };
    test::WriteWholeFile(other, {'x'});
    const Outcome clean = RunArmed(0, save);
    ASSERT_EQ(clean.code, 0);
    const auto written = test::ReadWholeFile(path);
    test::WriteWholeFile(path, before);
    ASSERT_GE(clean.allocations, 2);

    for (long n = 1; n <= clean.allocations; ++n) {
        const Outcome failed = RunArmed(n, save);
        const auto now = test::ReadWholeFile(path);
        if (failed.code == 0) {
            // The failing allocation was the refused load's own; the save went through.
            EXPECT_EQ(now, written) << "failing allocation " << n;
            test::WriteWholeFile(path, before);
        } else {
            EXPECT_EQ(failed.code, ErrNoMemory) << "failing allocation " << n;
            EXPECT_EQ(now, before) << "failing allocation " << n;
        }
        EXPECT_FALSE(test::FileExists(path + ".tmp")) << "failing allocation " << n;
        EXPECT_EQ(LowestFreeDescriptor(), descriptor) << "failing allocation " << n;
    }
}

// Teardown frees every record, list and node that a library holds.
TEST(LibraryTeardown, FreesEverything) {
    const Outcome outcome = RunArmed(0, [] {
        ColorLibrary* library = test::MakeSampleLibrary(4, 5, 3);
        test::AddList(*library, "");
        delete library;
    });
    EXPECT_EQ(outcome.code, 0);
    EXPECT_GT(outcome.allocations, 40);
}

// Construction of a library that cannot get its second list frees the first.
TEST(LibraryTeardown, HalfBuiltLibraryIsFreed) {
    for (long n = 1; n <= 3; ++n) {
        const Outcome outcome = RunArmed(n, [] { delete NewOrThrow<ColorLibrary>(); });
        EXPECT_EQ(outcome.code, ErrNoMemory) << "failing allocation " << n;
    }
}

// Without memory the records stay as they were, or as documented: a palette keeps its
// colours through a failed resize and is empty after a failed copy; a list keeps its
// nodes through a failed insertion.
TEST(ModelAllocationFailure, StructuresStayConsistent) {
    Palette palette(2);
    palette.Colors()[0] = 7;
    EXPECT_EQ(RunArmed(1, [&] { palette.Resize(10); }).code, ErrNoMemory);
    EXPECT_EQ(palette.Count(), 2u);
    EXPECT_EQ(palette.Colors()[0], 7);

    const Palette other(3);
    EXPECT_EQ(RunArmed(1, [&] { palette.Assign(other); }).code, ErrNoMemory);
    EXPECT_EQ(palette.Count(), 0u);
    EXPECT_EQ(palette.Colors(), nullptr);

    PtrList list;
    int a = 1, b = 2;
    list.Append(&a);
    const auto unchanged = [&] {
        return list.Count() == 1 && list.Head() == list.Tail() && list.Head()->prev == nullptr &&
               list.Head()->next == nullptr && list.ValueAt(0) == &a;
    };
    const std::function<void()> insertions[] = {
        [&] { list.Append(&b); },
        [&] { list.InsertAfter(list.Head(), &b); },
        [&] { list.InsertBefore(list.Head(), &b); },
        [&] { list.InsertAt(0, &b); },
        [&] { list.InsertAt(1, &b); },
    };
    for (const auto& insert : insertions) {
        const Outcome outcome = RunArmed(1, insert);
        EXPECT_EQ(outcome.code, ErrNoMemory);
        EXPECT_TRUE(unchanged());
    }
    PtrList empty;
    EXPECT_EQ(RunArmed(1, [&] { empty.Append(&a); }).code, ErrNoMemory);
    EXPECT_EQ(empty.Head(), nullptr);
    EXPECT_EQ(empty.Tail(), nullptr);
}

}  // namespace
}  // namespace tessellum
