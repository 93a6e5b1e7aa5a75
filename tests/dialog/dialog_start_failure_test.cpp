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
        // (Wine may flash the window of a dialog that ended in its start.)
        std::thread cancelling([&] {
            for (; !done; Sleep(2)) {
                HWND window = FindWindowA(MAKEINTATOM(0x8002), "Tessellum 1.5");
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
        EXPECT_EQ(FindWindowA(MAKEINTATOM(0x8002), "Tessellum 1.5"), nullptr) << failAt;
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
        EXPECT_TRUE(WithDialog([&] { EXPECT_FALSE(RunModal()); },
                               [&](DialogDriver& d) {
                                   failingHeap.Arm(c.failAt, dialogThread);
                                   d.Command(c.command, true);
                                   if (c.command == kLoad)
                                       d.AnswerFileDialog("Load Palette", table);
                                   if (c.command == kNewList)
                                       d.AnswerPrompt("Create new color list", "Named");
                                   if (c.command == kNewColor)
                                       d.AnswerPrompt("Create a new color", "Named");
                                   if (FindWindowA(MAKEINTATOM(0x8002), "ALERT"))
                                       alert = d.AnswerMessageBox("ALERT", IDOK);
                                   for (int i = 0; i < 50 && IsWindow(d.dialog); ++i) Sleep(20);
                                   stayed = IsWindow(d.dialog) != FALSE;
                               }));
        failingHeap.Disarm();
        EXPECT_EQ(stayed, !c.ends);
        EXPECT_EQ(alert, c.ends ? "" : "Could Not Load Palette");
        EXPECT_EQ(failingHeap.live, 0) << "blocks left allocated";
        EXPECT_EQ(ReadWholeFile(path), before) << "nothing was added to the library";
    }
}

}  // namespace
}  // namespace tessellum::test
