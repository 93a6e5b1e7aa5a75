// Every C++ allocation of one run of the dialog made to fail in turn, the dialog being
// built from the plug-in's own sources in this program and its resources taken from the
// built plug-in. A failure while the dialog starts ends the run as Cancel before the
// dialog shows; one in the teardown loses only that save. Each time nothing is left
// allocated, no dialog window remains, and the library file is byte for byte as before.
// A command short of memory for what it adds to the library ends the dialog as Cancel.
#include <windows.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
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

// Each command's allocation `failAt` (counted from the command) fails while the dialog
// runs: the driver arms the heap for the dialog's thread, gives the command and answers
// what it asks.
TEST(DialogStartFailure, ACommandShortOfMemoryEndsTheDialogAsCancel) {
    hDllInstance = LoadLibraryA(PluginPath().c_str());
    ASSERT_NE(hDllInstance, nullptr);
    HWND parent = host::MakeHostWindow("command failure");
    ScratchDirectory scratch;
    PointLibraryAt(scratch.Path("library"));
    const std::string path = scratch.Path("library") + "\\Tessellum.dat";
    {
        std::unique_ptr<ColorLibrary> library(MakeSampleLibrary(1, 1, 0));
        LibraryFile().WriteLibrary(library.get(), path.c_str());
    }
    const std::vector<uint8_t> before = ReadWholeFile(path);
    const std::string table = scratch.Path("t.act");
    WriteWholeFile(table, std::vector<uint8_t>(768, 9));

    // New List: the list, its node. New Color: the colour, its node. Load: the table's
    // palette and its colours (which the load reports itself), then the library's palette,
    // its colours and its node.
    struct Case {
        int command;
        long failAt;
        bool ends;  // false: the load says so itself and the dialog stays
    } cases[] = {{40001, 1, true}, {40001, 2, true}, {1003, 1, true},
                 {1003, 2, true},  {1017, 1, false}, {1017, 2, false},
                 {1017, 3, true},  {1017, 4, true},  {1017, 5, true}};
    const std::thread::id dialogThread = std::this_thread::get_id();
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "command " << c.command << ", allocation " << c.failAt);
        bool stayed = false;
        std::string alert;
        std::thread driving([&] {
            DialogDriver d;
            for (int i = 0; i < 500 && !d.dialog; ++i, Sleep(20))
                d.dialog = FindWindowA(MAKEINTATOM(0x8002), "Tessellum 1.5");
            ASSERT_NE(d.dialog, nullptr);
            d.Settle();
            HWND page = d.dialog;
            if (c.command == 1017)
                for (HWND p = FindWindowExA(GetDlgItem(d.dialog, 1008), nullptr, nullptr, nullptr);
                     p; p = GetWindow(p, GW_HWNDNEXT))
                    if (GetDlgItem(p, 1017)) page = p;
            failingHeap.Arm(c.failAt, dialogThread);
            d.PostCommand(page, c.command);
            if (c.command == 1017) {
                d.AnswerFileDialog("Load Palette", table);
            } else {
                d.AnswerPrompt(c.command == 1003 ? "Create a new color" : "Create new color list",
                               "Named");
            }
            if (FindWindowA(MAKEINTATOM(0x8002), "ALERT")) {
                alert = d.AnswerMessageBox("ALERT", IDOK);
            }
            for (int i = 0; i < 50 && IsWindow(d.dialog); ++i) Sleep(20);
            stayed = IsWindow(d.dialog) != FALSE;
            if (stayed) PostMessageA(d.dialog, WM_COMMAND, IDCANCEL, 0);
        });
        std::unique_ptr<FilterDialog> dialog(NewOrThrow<FilterDialog>(parent));
        EXPECT_FALSE(dialog->RunModal());
        dialog.reset();
        failingHeap.Disarm();
        driving.join();
        EXPECT_EQ(stayed, !c.ends);
        EXPECT_EQ(alert, c.ends ? "" : "Could Not Load Palette");
        EXPECT_EQ(failingHeap.live, 0) << "blocks left allocated";
        EXPECT_EQ(ReadWholeFile(path), before) << "nothing was added to the library";
    }
    DestroyWindow(parent);
}

}  // namespace
}  // namespace tessellum::test
