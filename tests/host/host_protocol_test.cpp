// The filter protocol as a host sees it: our host loads the real plug-in and calls it
// selector by selector, and these tests read back the records, the handles and the pixels.
#include <windows.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "tests/support/plugin_path.h"
#include "tests/support/screenshot.h"
#include "tools/host/filter_host.h"

namespace tessellum::host {
namespace {

constexpr uint8_t kUnfilled = 0xEE;
constexpr int16_t kBadParameters = -30100;

const PluginLibrary& Plugin() {
    static PluginLibrary plugin(test::PluginPath());
    return plugin;
}

bool SameRect(const Rect& a, const Rect& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// A handle of the convention a host can read: a pointer to the block, then "OTOF".
bool IsOtofHandle(const void* handle) {
    return std::memcmp(static_cast<const uint8_t*>(handle) + sizeof(void*), "OTOF", 4) == 0;
}

// A stored 198-byte block, flag down, whose 192 tile bytes (cell (r, c) at offset
// 5 + 24 r + 3 c) all differ, none 0 or kUnfilled: a wrong cell or plane shows.
std::vector<uint8_t> StoredTile(uint8_t gridSize) {
    std::vector<uint8_t> block(198, 0);
    block[4] = gridSize;
    for (int k = 0; k < 192; ++k) block[5 + k] = static_cast<uint8_t>(7 * k + 3);
    return block;
}

TEST(Protocol, SelectorsRecordsAndHandles) {
    // Loading registers the window class GRIDSELECTION, whose procedure hands messages on
    // (the default procedure sets a window's text at its creation).
    HWND window = CreateWindowA("GRIDSELECTION", "handed on", WS_POPUP, 0, 0, 9, 9, nullptr,
                                nullptr, Plugin().module(), nullptr);
    char text[16] = "";
    GetWindowTextA(window, text, sizeof text);
    EXPECT_STREQ(text, "handed on");
    DestroyWindow(window);

    // Without a data slot or a record the call is refused, and no slot is made.
    FilterRecord record = {};
    int16_t result = 0;
    intptr_t slot = 0;
    Plugin().entry()(2, &record, nullptr, &result);
    EXPECT_EQ(result, kBadParameters);
    Plugin().entry()(2, nullptr, &slot, &result);
    EXPECT_EQ(result, kBadParameters);
    EXPECT_EQ(slot, 0);

    // The selectors' numbers are the published ones: 1 Parameters, 2 Prepare, 4 Continue,
    // 5 Finish. Others are refused, change nothing, and the first call of any kind makes
    // the slot's handle.
    FilterSession session(Plugin());
    record.planes = 3;
    record.filterRect = {1, 2, 3, 4};
    const FilterRecord before = record;
    for (int16_t selector : {6, -1, 0x7FFF})
        EXPECT_EQ(session.Call(selector, &record), kBadParameters);
    ASSERT_NE(session.dataSlot(), 0);
    EXPECT_TRUE(IsOtofHandle(reinterpret_cast<void*>(session.dataSlot())));
    const intptr_t firstSlot = session.dataSlot();
    EXPECT_EQ(session.Call(5, &record), 0);
    EXPECT_TRUE(std::memcmp(&record, &before, sizeof record) == 0) << "the record is untouched";
    EXPECT_EQ(session.dataSlot(), firstSlot) << "the slot keeps its handle";
    // Continue with no parameters: there is no tile to lay, the run ends with empty rectangles.
    record.inRect = record.outRect = {0, 0, 5, 5};
    EXPECT_EQ(session.Call(4, &record), 1);
    EXPECT_TRUE(SameRect(record.inRect, {}) && SameRect(record.outRect, {}));

    // Parameters makes one zeroed block of 198 bytes with the flag (bytes 2-3) raised.
    record = {};
    ASSERT_EQ(session.Call(1, &record), 0);
    void* handle = record.parameters;
    ASSERT_NE(handle, nullptr);
    EXPECT_TRUE(IsOtofHandle(handle));
    auto* block = static_cast<uint8_t*>(*static_cast<void**>(handle));
    EXPECT_EQ(GlobalSize(GlobalHandle(block)), 198u);
    for (int i = 0; i < 198; ++i) ASSERT_EQ(block[i], i == 2 ? 1 : 0) << "byte " << i;
    // A tile stored in the block survives a second Parameters, in the same handle.
    const std::vector<uint8_t> stored = StoredTile(5);
    std::memcpy(block, stored.data(), 198);
    ASSERT_EQ(session.Call(1, &record), 0);
    EXPECT_EQ(record.parameters, handle);
    std::vector<uint8_t> expected = stored;
    expected[2] = 1;
    EXPECT_EQ(std::vector<uint8_t>(block, block + 198), expected);

    // Prepare asks for no buffer of its own; maxSpace is the host's.
    record.bufferSpace = 123456;
    record.maxSpace = 7654321;
    EXPECT_EQ(session.Call(2, &record), 0);
    EXPECT_EQ(record.bufferSpace, 0);
    EXPECT_EQ(record.maxSpace, 7654321);
}

// Runs of "repeat filter" with a stored tile: the bands asked for, the progress, the abort
// test, the result, and every pixel of every plane afterwards.
TEST(Protocol, RepeatRunsBandsPixelsAndEnds) {
    struct Case {
        uint8_t stored;  // GridSize in the block; a damaged one is used as the nearest valid
        int grid;
        int width, height, planes;
        Rect area;
        int padding = 0, abortAt = 0;
    };
    const Case cases[] = {
        {3, 3, 40, 30, 3, {10, 20, 27, 39}},  // anchored at the rectangle; the last band short
        {4, 4, 13, 16, 3, {2, 1, 14, 12}},    // an exact multiple: no empty band after
        {5, 5, 13, 7, 3, {2, 1, 5, 12}},      // lower than the tile
        {8, 8, 8, 9, 3, {0, 0, 9, 8}},
        {2, 2, 7, 6, 3, {0, 0, 6, 7}},
        {6, 6, 9, 13, 3, {0, 0, 13, 9}},
        {0, 2, 17, 19, 3, {0, 0, 19, 17}},
        {1, 2, 5, 5, 3, {0, 0, 5, 5}},
        {7, 6, 14, 13, 3, {0, 0, 13, 14}},
        {9, 8, 17, 10, 3, {0, 0, 10, 17}},
        {255, 8, 9, 9, 3, {1, 0, 9, 9}},
        {8, 8, 2, 32767, 3, {32760, 0, 32767, 2}},  // the next band's top passes 32767
        {5, 5, 23, 11, 4, {1, 3, 10, 21}, 7},       // alpha, and guard bytes after every row
        // Fewer than three planes: Start ends it. The guard bytes hold a run that went on
        // anyway and wrote three planes, so that it fails here rather than crashes.
        {2, 2, 6, 6, 1, {0, 0, 6, 6}, 12},
        {2, 2, 6, 6, 2, {0, 0, 6, 6}, 12},
        {2, 2, 8, 8, 3, {0, 0, 8, 8}, 0, 1},  // aborted at the first Continue: nothing written
        {2, 2, 8, 8, 4, {0, 0, 8, 8}, 0, 3},  // aborted later: the bands done stay
    };
    for (const Case& c : cases) {
        SCOPED_TRACE("case " + std::to_string(&c - cases));
        FilterSession session(Plugin());
        const std::vector<uint8_t> block = StoredTile(c.stored);
        session.SetParametersBlock(block);
        Image image{c.width, c.height, c.planes, {}};
        image.pixels.assign(size_t(c.width) * c.height * c.planes, kUnfilled);
        RunOptions options;
        options.repeat = true;
        options.area = c.area;
        options.rowPadding = c.padding;
        options.abortAtContinue = c.abortAt;
        const RunReport report = session.Run(image, options);

        // Bands one tile high, from the rectangle's top down, across its width.
        const int rows = c.area.bottom - c.area.top;
        std::vector<int> bandTops, expectedTops;
        for (int top = 0; top < rows && c.planes >= 3; top += c.grid) expectedTops.push_back(top);
        if (c.abortAt) expectedTops.resize(c.abortAt);
        const int filled = c.abortAt ? c.abortAt - 1 : int(expectedTops.size());
        std::vector<std::pair<int32_t, int32_t>> expectedProgress;
        for (int i = 0; i < filled; ++i) expectedProgress.emplace_back(expectedTops[i], rows);
        int continues = 0;
        for (const SelectorCall& call : report.calls) {
            continues += call.selector == kSelectorContinue;
            if (call.result != 0 || call.outRect.top == call.outRect.bottom) continue;
            if (call.selector != kSelectorStart && call.selector != kSelectorContinue) continue;
            bandTops.push_back(call.outRect.top - c.area.top);
            EXPECT_EQ(call.outRect.bottom, std::min(call.outRect.top + c.grid, int(c.area.bottom)));
            EXPECT_EQ(call.outRect.left, c.area.left);
            EXPECT_EQ(call.outRect.right, c.area.right);
            EXPECT_TRUE(SameRect(call.inRect, call.outRect));
            EXPECT_EQ(call.outLoPlane, 0);
            EXPECT_EQ(call.outHiPlane, 2) << "red, green and blue only";
        }
        EXPECT_EQ(bandTops, expectedTops);
        EXPECT_EQ(report.progress, expectedProgress) << "one report a band, before it is filled";
        EXPECT_EQ(continues, int(expectedTops.size()));
        EXPECT_EQ(report.abortTests, continues) << "one abort test each Continue";
        EXPECT_EQ(report.hostFault, "");
        if (c.planes < 3) {
            EXPECT_EQ(report.result, 1);
            EXPECT_EQ(session.record().outHiPlane, 0) << "no plane is requested";
        } else {
            EXPECT_EQ(report.result, c.abortAt ? 1 : 0);
            EXPECT_EQ(report.calls.back().selector, kSelectorFinish);
            EXPECT_EQ(report.calls.back().result, 0) << "Finish reports 0, after an abort too";
            const SelectorCall& last = report.calls[report.calls.size() - 2];
            EXPECT_EQ(SameRect(last.outRect, {}) && SameRect(last.inRect, {}), !c.abortAt)
                << "a run that ends hands back empty rectangles";
        }
        EXPECT_EQ(session.ParametersBlock(), block) << "the stored block is used unchanged";

        // Inside the rows filled the tile, anchored at the rectangle's top left, in red,
        // green and blue; everything else as it was.
        const int filledBottom = std::min(c.area.top + filled * c.grid, int(c.area.bottom));
        for (int y = 0; y < c.height; ++y)
            for (int x = 0; x < c.width; ++x)
                for (int plane = 0; plane < c.planes; ++plane) {
                    const bool inside = y >= c.area.top && y < filledBottom && x >= c.area.left &&
                                        x < c.area.right && plane < 3;
                    const int row = (y - c.area.top) % c.grid, column = (x - c.area.left) % c.grid;
                    ASSERT_EQ(image.At(x, y)[plane],
                              inside ? block[5 + 24 * row + 3 * column + plane] : kUnfilled)
                        << "pixel (" << x << ", " << y << ") plane " << plane;
                }
    }
}

// The About box driven for real: a second thread finds the modal box the About selector
// shows, reads it back, presses Escape and then clicks OK with real messages, and says
// what it saw in words, checked on the test's own thread afterwards.
struct AboutDriver {
    HWND parent;
    std::string seen;
};

DWORD WINAPI DriveAboutBox(void* data) {
    auto* driver = static_cast<AboutDriver*>(data);
    HWND box = nullptr;
    for (int i = 0; i < 400 && !(box && IsWindowVisible(box)); ++i, Sleep(25))
        box = FindWindowA(MAKEINTATOM(0x8002), "About Tessellum");
    if (!box) return 0;
    Sleep(200);  // let it paint before it is photographed
    std::string& seen = driver->seen;
    const LONG style = GetWindowLongA(box, GWL_STYLE);
    seen = GetWindow(box, GW_OWNER) == driver->parent ? "owned by the host" : "not owned";
    seen += std::string(style & WS_CAPTION ? ", caption" : "") +
            (style & WS_SYSMENU ? ", system menu" : "");
    for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        char name[64] = "", text[128] = "";
        GetClassNameA(child, name, sizeof name);
        GetWindowTextA(child, text, sizeof text);
        seen += "; " + std::string(name) + " " + std::to_string(int16_t(GetDlgCtrlID(child))) +
                ": " + text;
    }
    if (test::SaveScreenshot(box, "about_dialog").empty()) seen += "; no screenshot";
    HWND ok = GetDlgItem(box, IDOK);
    PostMessageA(ok, WM_KEYDOWN, VK_ESCAPE, 0);
    PostMessageA(ok, WM_KEYUP, VK_ESCAPE, 0);
    Sleep(300);
    seen += IsWindow(box) && IsWindowVisible(box) ? "; open after Escape" : "; Escape closed it";
    RECT r;
    GetClientRect(ok, &r);
    PostMessageA(ok, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(r.right / 2, r.bottom / 2));
    PostMessageA(ok, WM_LBUTTONUP, 0, MAKELPARAM(r.right / 2, r.bottom / 2));
    for (int i = 0; i < 400 && IsWindow(box); ++i) Sleep(25);
    seen += IsWindow(box) ? "; open after OK" : "; OK closed it";
    if (IsWindow(box)) PostMessageA(box, WM_COMMAND, IDOK, 0);  // do not hang
    return 0;
}

TEST(AboutBox, AFirstCallShowsItOnlyOkClosesItAndItAlwaysReportsZero) {
    AboutDriver driver = {CreateWindowA("STATIC", "Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                        900, 700, nullptr, nullptr, nullptr, nullptr),
                          {}};
    HANDLE thread = CreateThread(nullptr, 0, DriveAboutBox, &driver, 0, nullptr);
    PlatformData platform = {driver.parent};
    AboutRecord about = {};
    about.platformData = &platform;
    const AboutRecord before = about;
    int16_t result = 77;
    intptr_t slot = 0;
    Plugin().entry()(0, &about, &slot, &result);
    WaitForSingleObject(thread, 20000);
    CloseHandle(thread);
    EXPECT_EQ(result, 0);
    EXPECT_NE(slot, 0) << "the first call, About, makes the slot's handle";
    EXPECT_TRUE(std::memcmp(&about, &before, sizeof about) == 0) << "the record is only read";
    // No system menu: OK is the only way out.
    EXPECT_EQ(
        driver.seen,
        "owned by the host, caption; Button 1: OK; Static -1: Tessellum Version 1.5; "
        "Static -1: Professional Web-Oriented Pattern Filter; open after Escape; OK closed it");
    DestroyWindow(driver.parent);

    // A parent that is not a window: no box can be made, and the host still hears 0.
    FilterSession session(Plugin());
    EXPECT_EQ(session.About(reinterpret_cast<HWND>(intptr_t{0x7654321})), 0);
    EXPECT_EQ(FindWindowA(MAKEINTATOM(0x8002), "About Tessellum"), nullptr);
}

}  // namespace
}  // namespace tessellum::host
