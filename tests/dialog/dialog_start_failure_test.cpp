// Every C++ allocation of one run of the dialog made to fail in turn, the dialog being
// built from the plug-in's own sources in this program and its resources taken from the
// built plug-in. A failure while the dialog starts ends the run as Cancel before the
// dialog shows; one in the teardown loses only that save. Each time nothing is left
// allocated, no dialog window remains, and the library file is byte for byte as before.
#include <windows.h>
#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>

#include "color/allocate.h"
#include "dialog/filter_dialog.h"
#include "host/dll_instance.h"
#include "storage/library_file.h"
#include "tests/dialog/dialog_driver.h"
#include "tests/support/failing_heap.h"
#include "tests/support/library_samples.h"
#include "tests/support/plugin_path.h"
#include "tests/support/scratch_directory.h"
#include "tools/host/host_window.h"

namespace tessellum {
HINSTANCE hDllInstance = nullptr;  // the plug-in's module, for its resources
}

namespace tessellum::test {
namespace {

struct Outcome {
    bool filled = false;
    bool appeared = false;
    long seenAt = 0;  // allocations counted when the dialog was first seen
    long allocations = 0;
    long live = 0;
};

Outcome RunOnce(HWND parent, long failAt) {
    Outcome outcome;
    std::atomic<bool> done{false};
    // The dialog counts as up once its first page shows: the last step of its start.
    // (Wine may flash the window of a dialog that ended in its start.)
    std::thread cancelling([&] {
        while (!done) {
            HWND window = FindWindowA(MAKEINTATOM(0x8002), "Tessellum 1.5");
            HWND page = window ? FindWindowExA(GetDlgItem(window, 1008), nullptr, nullptr, nullptr)
                               : nullptr;
            bool shown = false;
            for (; page; page = GetWindow(page, GW_HWNDNEXT))
                shown = shown || (GetDlgItem(page, 1030) && IsWindowVisible(page));
            if (shown) {
                outcome.seenAt = failingHeap.allocations;
                outcome.appeared = true;
                PostMessageA(window, WM_COMMAND, IDCANCEL, 0);
                return;
            }
            Sleep(2);
        }
    });
    failingHeap.Arm(failAt);
    try {
        std::unique_ptr<FilterDialog> dialog(NewOrThrow<FilterDialog>(parent));
        outcome.filled = dialog->RunModal();
    } catch (ErrorCode) {
    }
    failingHeap.Disarm();
    done = true;
    cancelling.join();
    outcome.allocations = failingHeap.allocations;
    outcome.live = failingHeap.live;
    return outcome;
}

TEST(DialogStartFailure, EveryAllocationFailingInTurnEndsAsCancelAndKeepsTheLibrary) {
    hDllInstance = LoadLibraryA(PluginPath().c_str());
    ASSERT_NE(hDllInstance, nullptr);
    HWND parent = host::MakeHostWindow("start failure");
    ScratchDirectory scratch;
    PointLibraryAt(scratch.Path("library"));
    const std::string path = scratch.Path("library") + "\\Tessellum.dat";
    {
        std::unique_ptr<ColorLibrary> library(MakeSampleLibrary(3, 4, 2));
        LibraryFile().WriteLibrary(library.get(), path.c_str());
    }
    const std::vector<uint8_t> before = ReadWholeFile(path);

    const Outcome whole = RunOnce(parent, 0);
    ASSERT_TRUE(whole.appeared) << "the dialog did not come up without a failure";
    EXPECT_FALSE(whole.filled);
    EXPECT_EQ(whole.live, 0);
    ASSERT_GT(whole.seenAt, 20) << "the start allocates its controls and the library";

    int failedStarts = 0;
    for (long n = 1; n <= whole.allocations; ++n) {
        const Outcome run = RunOnce(parent, n);
        EXPECT_FALSE(run.filled) << "failing allocation " << n;
        EXPECT_EQ(run.appeared, n > whole.seenAt)
            << "failing allocation " << n << " of " << whole.seenAt << " before the dialog showed";
        EXPECT_EQ(run.live, 0) << "failing allocation " << n << " left blocks allocated";
        EXPECT_EQ(FindWindowA(MAKEINTATOM(0x8002), "Tessellum 1.5"), nullptr) << n;
        EXPECT_EQ(ReadWholeFile(path), before) << "failing allocation " << n;
        failedStarts += run.appeared ? 0 : 1;
    }
    std::printf("%ld allocations in a run; %d failing ones ended the start\n", whole.allocations,
                failedStarts);
    DestroyWindow(parent);
}

}  // namespace
}  // namespace tessellum::test
