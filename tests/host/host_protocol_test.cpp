// The filter protocol as a host sees it: our host loads the real plug-in and calls it
// selector by selector, and these tests read back the record, the handles and pixels.
#include <windows.h>
#include <gtest/gtest.h>

#include <cstring>

#include "host/filter_parameters.h"
#include "host/plugin_handle.h"
#include "tests/support/plugin_path.h"
#include "tools/host/filter_host.h"

namespace tessellum::host {
namespace {

constexpr uint8_t kUnfilled = 0xEE;

const PluginLibrary& Plugin() {
    static PluginLibrary plugin(test::PluginPath());
    return plugin;
}

Image Blank(int width, int height, int planes = 3, uint8_t value = kUnfilled) {
    Image image;
    image.width = width;
    image.height = height;
    image.planes = planes;
    image.pixels.assign(static_cast<size_t>(width) * height * planes, value);
    return image;
}

// A stored block with every cell different (cells outside the square too), flag down.
std::vector<uint8_t> StoredTile(uint8_t gridSize, int16_t flag = 0) {
    FilterParameters p;
    std::memset(&p, 0, sizeof p);
    p.queryForParameters = flag;
    p.gridSize = gridSize;
    for (int i = 0; i < 64; ++i)
        p.tile.cells[i] = {static_cast<uint8_t>(i), static_cast<uint8_t>(100 + i),
                           static_cast<uint8_t>(200 - i)};
    const auto* bytes = reinterpret_cast<const uint8_t*>(&p);
    return {bytes, bytes + sizeof p};
}

Rgb8 CellOf(const std::vector<uint8_t>& block, int row, int column) {
    const uint8_t* cell = &block[5 + 24 * row + 3 * column];
    return {cell[0], cell[1], cell[2]};
}

// The image must hold the tile over `area`, anchored at its top left, and nothing
// else may have changed.
void ExpectTiled(const Image& image, const Image& before, const Rect& area,
                 const std::vector<uint8_t>& block, int grid) {
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            const uint8_t* p = image.At(x, y);
            const uint8_t* q = before.At(x, y);
            const bool inside =
                y >= area.top && y < area.bottom && x >= area.left && x < area.right;
            for (int plane = 0; plane < image.planes; ++plane) {
                uint8_t expected = q[plane];
                if (inside && plane < 3) {
                    const Rgb8 cell = CellOf(block, (y - area.top) % grid, (x - area.left) % grid);
                    expected = plane == 0 ? cell.red : plane == 1 ? cell.green : cell.blue;
                }
                ASSERT_EQ(p[plane], expected) << "pixel (" << x << ", " << y << ") plane " << plane;
            }
        }
    }
}

bool HasOtofSignature(const void* handle) {
    return std::memcmp(static_cast<const uint8_t*>(handle) + sizeof(void*), "OTOF", 4) == 0;
}

SIZE_T BlockSize(const void* handle) {
    return GlobalSize(GlobalHandle(static_cast<const PluginHandle*>(handle)->block));
}

int CountCalls(const RunReport& report, int16_t selector) {
    int count = 0;
    for (const SelectorCall& call : report.calls) count += call.selector == selector;
    return count;
}

TEST(Protocol, LoadingRegistersTheWindowClass) {
    WNDCLASSEXA windowClass = {};
    windowClass.cbSize = sizeof windowClass;
    ASSERT_TRUE(GetClassInfoExA(Plugin().module(), "GRIDSELECTION", &windowClass));
    EXPECT_EQ(windowClass.style, static_cast<UINT>(CS_HREDRAW | CS_VREDRAW));
    EXPECT_EQ(windowClass.hbrBackground, GetStockObject(WHITE_BRUSH));
    EXPECT_EQ(windowClass.cbClsExtra, 0);
    EXPECT_EQ(windowClass.cbWndExtra, 0);
    EXPECT_EQ(windowClass.hCursor, nullptr);
    // Its procedure only hands messages on to the default one.
    HWND window = CreateWindowA("GRIDSELECTION", "probe", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                Plugin().module(), nullptr);
    ASSERT_NE(window, nullptr);
    SetWindowTextA(window, "handed on");
    char text[32] = "";
    GetWindowTextA(window, text, sizeof text);
    EXPECT_STREQ(text, "handed on");
    DestroyWindow(window);
}

TEST(Protocol, UnknownSelectorsAreRefusedAndChangeNothing) {
    FilterSession session(Plugin());
    FilterRecord record = {};
    record.planes = 3;
    record.filterRect = {1, 2, 3, 4};
    const FilterRecord before = record;
    EXPECT_EQ(session.Call(6, &record), kResultBadParameters);
    EXPECT_NE(session.dataSlot(), 0) << "the first call makes the slot's handle, whatever it is";
    const intptr_t slot = session.dataSlot();
    EXPECT_EQ(session.Call(-1, &record), kResultBadParameters);
    EXPECT_EQ(session.Call(0x7FFF, &record), kResultBadParameters);
    EXPECT_EQ(std::memcmp(&record, &before, sizeof record), 0) << "the record is untouched";
    EXPECT_EQ(session.dataSlot(), slot) << "the slot keeps its handle";
    EXPECT_EQ(session.Call(kSelectorFinish, &record), kResultOk);
    EXPECT_EQ(std::memcmp(&record, &before, sizeof record), 0) << "Finish does nothing";
}

TEST(Protocol, ParametersMakesOneZeroBlockAndRaisesTheFlag) {
    FilterSession session(Plugin());
    FilterRecord record = {};
    ASSERT_EQ(session.Call(kSelectorParameters, &record), kResultOk);
    ASSERT_NE(record.parameters, nullptr);
    void* handle = record.parameters;

    // Both handles are of the OTOF kind: a pointer, then the four bytes.
    EXPECT_TRUE(HasOtofSignature(handle));
    EXPECT_TRUE(HasOtofSignature(reinterpret_cast<void*>(session.dataSlot())));
    EXPECT_EQ(BlockSize(handle), 198u);
    auto* block = static_cast<uint8_t*>(static_cast<PluginHandle*>(handle)->block);
    for (int i = 0; i < 198; ++i) EXPECT_EQ(block[i], i == 2 ? 1 : 0) << "byte " << i;

    // A tile stored in the block survives a second Parameters, in the same handle.
    const std::vector<uint8_t> stored = StoredTile(5);
    std::memcpy(block + 4, stored.data() + 4, 193);
    block[2] = 0;
    ASSERT_EQ(session.Call(kSelectorParameters, &record), kResultOk);
    EXPECT_EQ(record.parameters, handle);
    EXPECT_EQ(block[2] | block[3] << 8, 1);
    EXPECT_EQ(std::vector<uint8_t>(block + 4, block + 197),
              std::vector<uint8_t>(stored.begin() + 4, stored.begin() + 197));
    EXPECT_EQ(block[0] | block[1] | block[197], 0) << "the reserved bytes stay zero";
}

TEST(Protocol, PrepareAsksForNoBuffer) {
    FilterSession session(Plugin());
    FilterRecord record = {};
    record.bufferSpace = 123456;
    record.maxSpace = 7654321;
    EXPECT_EQ(session.Call(kSelectorPrepare, &record), kResultOk);
    EXPECT_EQ(record.bufferSpace, 0);
    EXPECT_EQ(record.maxSpace, 7654321) << "maxSpace is the host's";
}

TEST(Protocol, RepeatLaysTheStoredTileAnchoredAtEachRectangle) {
    FilterSession session(Plugin());
    const std::vector<uint8_t> block = StoredTile(3);
    session.SetParametersBlock(block);
    RunOptions options;
    options.repeat = true;
    for (const Rect area : {Rect{10, 20, 27, 39}, Rect{3, 4, 30, 9}}) {
        Image image = Blank(40, 30);
        const Image before = image;
        options.area = area;
        const RunReport report = session.Run(image, options);
        ASSERT_EQ(report.result, kResultOk);
        EXPECT_TRUE(report.filled);
        EXPECT_EQ(report.hostFault, "");
        ExpectTiled(image, before, area, block, 3);
        if (area.top == 10) {
            // x 25, y 14 of a rectangle at top 10, left 20 takes row 1, column 2.
            EXPECT_EQ(image.At(25, 14)[0], CellOf(block, 1, 2).red);
        }
    }
    EXPECT_EQ(session.ParametersBlock(), block) << "the stored block is used unchanged";
}

TEST(Protocol, BandsFollowTheGridSizeAndTheRunEndsEmpty) {
    struct Case {
        uint8_t grid;
        int16_t height;
        std::vector<int16_t> tops;
    };
    const Case cases[] = {{4, 10, {0, 4, 8}},  // the last band is cut short
                          {4, 12, {0, 4, 8}},  // an exact multiple: no empty band after
                          {5, 3, {0}},         // lower than the tile
                          {2, 6, {0, 2, 4}},
                          {8, 17, {0, 8, 16}}};
    for (const Case& c : cases) {
        SCOPED_TRACE("GridSize " + std::to_string(c.grid) + ", height " + std::to_string(c.height));
        FilterSession session(Plugin());
        session.SetParametersBlock(StoredTile(c.grid));
        Image image = Blank(13, c.height + 4);
        RunOptions options;
        options.repeat = true;
        options.area = Rect{2, 1, static_cast<int16_t>(2 + c.height), 12};
        const RunReport report = session.Run(image, options);
        EXPECT_EQ(report.result, kResultOk);
        // The band in hand after Start and after each Continue but the last.
        std::vector<int16_t> tops;
        std::vector<std::pair<int32_t, int32_t>> expectedProgress;
        for (const SelectorCall& call : report.calls) {
            if (call.selector != kSelectorStart && call.selector != kSelectorContinue) continue;
            if (call.outRect.top == call.outRect.bottom) continue;
            EXPECT_EQ(call.outRect.bottom - call.outRect.top,
                      std::min<int>(c.grid, 2 + c.height - call.outRect.top));
            EXPECT_EQ(call.outRect.left, 1);
            EXPECT_EQ(call.outRect.right, 12);
            EXPECT_EQ(std::memcmp(&call.inRect, &call.outRect, sizeof(Rect)), 0);
            EXPECT_EQ(call.outLoPlane, 0);
            EXPECT_EQ(call.outHiPlane, 2);
            tops.push_back(call.outRect.top - 2);
            expectedProgress.emplace_back(call.outRect.top - 2, c.height);
        }
        EXPECT_EQ(tops, c.tops);
        EXPECT_EQ(report.progress, expectedProgress) << "one report a band, before it is filled";
        EXPECT_EQ(CountCalls(report, kSelectorContinue), static_cast<int>(c.tops.size()));
        EXPECT_EQ(report.abortTests, static_cast<int>(c.tops.size()));
        const SelectorCall& last = report.calls[report.calls.size() - 2];
        EXPECT_EQ(last.selector, kSelectorContinue);
        EXPECT_EQ(last.result, kResultOk);
        const Rect empty = {0, 0, 0, 0};
        EXPECT_EQ(std::memcmp(&last.inRect, &empty, sizeof empty), 0);
        EXPECT_EQ(std::memcmp(&last.outRect, &empty, sizeof empty), 0);
        EXPECT_EQ(report.calls.back().selector, kSelectorFinish);
    }
}

TEST(Protocol, AbortAtTheFirstContinueWritesNothing) {
    FilterSession session(Plugin());
    session.SetParametersBlock(StoredTile(2));
    Image image = Blank(8, 8);
    const Image before = image;
    RunOptions options;
    options.repeat = true;
    options.abortAtContinue = 1;
    const RunReport report = session.Run(image, options);
    EXPECT_EQ(report.result, kResultStop);
    EXPECT_EQ(image.pixels, before.pixels);
    EXPECT_TRUE(report.progress.empty()) << "no progress before the abort test";
    EXPECT_EQ(report.abortTests, 1);
    ASSERT_EQ(report.calls.back().selector, kSelectorFinish);
    EXPECT_EQ(report.calls.back().result, kResultOk) << "Finish reports 0 after an abort too";

    // Aborting later keeps the bands already done, and stops there.
    Image later = Blank(8, 8);
    options.abortAtContinue = 3;
    const RunReport partial = session.Run(later, options);
    EXPECT_EQ(partial.result, kResultStop);
    EXPECT_EQ(partial.progress.size(), 2u);
    EXPECT_NE(later.At(0, 3)[0], kUnfilled);
    EXPECT_EQ(later.At(0, 4)[0], kUnfilled);
}

TEST(Protocol, FewerThanThreePlanesEndsAtStart) {
    for (int planes : {1, 2}) {
        FilterSession session(Plugin());
        session.SetParametersBlock(StoredTile(2));
        Image image = Blank(6, 6, planes);
        const Image before = image;
        RunOptions options;
        options.repeat = true;
        const RunReport report = session.Run(image, options);
        EXPECT_EQ(report.result, kResultStop) << planes << " planes";
        EXPECT_EQ(CountCalls(report, kSelectorContinue), 0);
        EXPECT_EQ(image.pixels, before.pixels);
        EXPECT_EQ(session.record().outHiPlane, 0) << "no plane is requested";
    }
}

TEST(Protocol, PlanesAboveBlueAndRowEndsAreLeftAlone) {
    FilterSession session(Plugin());
    const std::vector<uint8_t> block = StoredTile(5);
    session.SetParametersBlock(block);
    Image image = Blank(23, 11, 4, 0x3C);
    const Image before = image;
    RunOptions options;
    options.repeat = true;
    options.rowPadding = 7;  // the host checks these guard bytes after every band
    options.area = Rect{1, 3, 10, 21};
    const RunReport report = session.Run(image, options);
    EXPECT_EQ(report.result, kResultOk);
    EXPECT_EQ(report.hostFault, "");
    ExpectTiled(image, before, *options.area, block, 5);
}

TEST(Protocol, GridSizesUseExactlyTheirCells) {
    // GridSize 8 uses all 64 cells; GridSize 2 only offsets 5, 8, 29 and 32 of the block.
    FilterSession session(Plugin());
    std::vector<uint8_t> block = StoredTile(8);
    session.SetParametersBlock(block);
    RunOptions options;
    options.repeat = true;
    Image image = Blank(8, 8);
    ASSERT_EQ(session.Run(image, options).result, kResultOk);
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x) EXPECT_EQ(image.At(x, y)[0], block[5 + 24 * y + 3 * x]);

    block.assign(198, 0);
    block[4] = 2;
    for (int offset : {5, 8, 29, 32}) block[offset] = static_cast<uint8_t>(offset);
    for (int i = 11; i < 197; ++i)
        if (i != 29 && i != 30 && i != 31 && i != 32 && i != 33 && i != 34) block[i] = 0x77;
    FilterSession two(Plugin());
    two.SetParametersBlock(block);
    Image small = Blank(4, 4);
    ASSERT_EQ(two.Run(small, options).result, kResultOk);
    EXPECT_EQ(small.At(0, 0)[0], 5);
    EXPECT_EQ(small.At(1, 0)[0], 8);
    EXPECT_EQ(small.At(0, 1)[0], 29);
    EXPECT_EQ(small.At(1, 1)[0], 32);
    EXPECT_EQ(small.At(3, 3)[0], 32);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x)
            for (int plane = 0; plane < 3; ++plane)
                EXPECT_NE(small.At(x, y)[plane], 0x77) << "a cell outside the square was used";
}

TEST(Protocol, ADamagedGridSizeIsUsedAsTheNearestValidOne) {
    FilterSession session(Plugin());
    const std::vector<uint8_t> block = StoredTile(7);
    session.SetParametersBlock(block);
    RunOptions options;
    options.repeat = true;
    Image image = Blank(14, 13);
    const Image before = image;
    ASSERT_EQ(session.Run(image, options).result, kResultOk);
    ExpectTiled(image, before, Rect{0, 0, 13, 14}, block, 6);
    EXPECT_EQ(session.ParametersBlock()[4], 7) << "the block is not rewritten";
}

}  // namespace
}  // namespace tessellum::host
