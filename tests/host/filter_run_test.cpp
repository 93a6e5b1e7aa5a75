// The band protocol on a record, as a host would drive it, without the platform.
#include "host/filter_run.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace tessellum {
namespace {

std::vector<std::pair<int, int>> progressCalls;
int abortTests = 0;
int abortAt = 0;  // abort test says yes at this call (1 = first); 0 never

uint8_t TestAbort() {
    return ++abortTests == abortAt;
}
void Progress(int32_t done, int32_t total) {
    progressCalls.emplace_back(done, total);
}

struct Canvas {
    int width, height;
    std::vector<uint8_t> pixels;  // 3 bytes a pixel, rows packed
};

FilterParameters ParametersWith(uint8_t gridSize) {
    FilterParameters p;
    std::memset(&p, 0, sizeof p);
    p.gridSize = gridSize;
    for (int i = 0; i < 64; ++i)
        p.tile.cells[i] = {static_cast<uint8_t>(i), static_cast<uint8_t>(i + 64),
                           static_cast<uint8_t>(i + 128)};
    return p;
}

// Start's part after the dialog, then Continue until the rectangles are empty, with
// the band buffer pointing straight into the canvas. Gives the bands requested.
std::vector<Rect> RunBands(FilterRecord& record, const FilterParameters& parameters, Canvas& canvas,
                           int16_t& result) {
    progressCalls.clear();
    abortTests = 0;
    record.abortProc = TestAbort;
    record.progressProc = Progress;
    std::vector<Rect> bands;
    result = SetFirstPass(record, parameters) ? kResultOk : kResultStop;
    while (result == kResultOk && record.outRect.top < record.outRect.bottom) {
        bands.push_back(record.outRect);
        record.outData =
            &canvas.pixels[(record.outRect.top * canvas.width + record.outRect.left) * 3];
        record.outRowBytes = canvas.width * 3;
        result = ContinueRun(record, parameters);
        if (bands.size() > 100000) break;
    }
    return bands;
}

FilterRecord RecordFor(const Canvas& canvas, Rect area) {
    FilterRecord record = {};
    record.imageSize = {static_cast<int16_t>(canvas.height), static_cast<int16_t>(canvas.width)};
    record.planes = 3;
    record.filterRect = area;
    return record;
}

TEST(FilterRun, TheTileIsAnchoredAtTheFilterRectangle) {
    Canvas canvas{40, 30, std::vector<uint8_t>(40 * 30 * 3, 0xEE)};
    const Rect area = {10, 20, 27, 39};
    const FilterParameters parameters = ParametersWith(3);
    FilterRecord record = RecordFor(canvas, area);
    int16_t result;
    RunBands(record, parameters, canvas, result);
    EXPECT_EQ(result, kResultOk);
    for (int y = 0; y < canvas.height; ++y) {
        for (int x = 0; x < canvas.width; ++x) {
            const uint8_t* p = &canvas.pixels[(y * canvas.width + x) * 3];
            const bool inside =
                y >= area.top && y < area.bottom && x >= area.left && x < area.right;
            const Rgb8 expected =
                inside ? parameters.tile.Cell((y - area.top) % 3, (x - area.left) % 3)
                       : Rgb8{0xEE, 0xEE, 0xEE};
            ASSERT_TRUE(p[0] == expected.red && p[1] == expected.green && p[2] == expected.blue)
                << "pixel (" << x << ", " << y << ")";
        }
    }
    // The worked case: x 25, y 14 takes row 1, column 2.
    EXPECT_EQ(canvas.pixels[(14 * 40 + 25) * 3], parameters.tile.Cell(1, 2).red);
}

TEST(FilterRun, BandsProgressAndTheEnd) {
    Canvas canvas{5, 10, std::vector<uint8_t>(5 * 10 * 3)};
    FilterRecord record = RecordFor(canvas, {0, 0, 10, 5});
    int16_t result;
    const std::vector<Rect> bands = RunBands(record, ParametersWith(4), canvas, result);
    ASSERT_EQ(bands.size(), 3u);
    EXPECT_EQ(bands[0].top, 0);
    EXPECT_EQ(bands[0].bottom, 4);
    EXPECT_EQ(bands[1].top, 4);
    EXPECT_EQ(bands[2].top, 8);
    EXPECT_EQ(bands[2].bottom, 10);
    EXPECT_EQ(progressCalls, (std::vector<std::pair<int, int>>{{0, 10}, {4, 10}, {8, 10}}));
    EXPECT_EQ(abortTests, 3);
    const Rect empty = {0, 0, 0, 0};
    EXPECT_EQ(std::memcmp(&record.inRect, &empty, sizeof empty), 0);
    EXPECT_EQ(std::memcmp(&record.outRect, &empty, sizeof empty), 0);
    EXPECT_EQ(record.outLoPlane, 0);
    EXPECT_EQ(record.outHiPlane, 2);
}

TEST(FilterRun, AbortAtTheFirstContinueWritesNothing) {
    Canvas canvas{6, 6, std::vector<uint8_t>(6 * 6 * 3, 0x55)};
    FilterRecord record = RecordFor(canvas, {0, 0, 6, 6});
    abortAt = 1;
    int16_t result;
    RunBands(record, ParametersWith(2), canvas, result);
    abortAt = 0;
    EXPECT_EQ(result, kResultStop);
    EXPECT_TRUE(progressCalls.empty());
    EXPECT_EQ(canvas.pixels, std::vector<uint8_t>(6 * 6 * 3, 0x55));
    EXPECT_EQ(record.outRect.bottom, 2) << "the rectangles stay as they were";
}

TEST(FilterRun, FewerThanThreePlanesRequestsNoBand) {
    Canvas canvas{4, 4, {}};
    FilterRecord record = RecordFor(canvas, {1, 1, 4, 4});
    record.planes = 2;
    record.outRect = {7, 7, 7, 7};
    EXPECT_FALSE(SetFirstPass(record, ParametersWith(2)));
    EXPECT_EQ(record.inRect.top, 1);
    EXPECT_EQ(record.inRect.bottom, 3);
    EXPECT_EQ(record.outRect.top, 7) << "outRect is not touched";
    EXPECT_EQ(record.outHiPlane, 0) << "the planes are not requested";
}

TEST(FilterRun, AGridSizeFromADamagedBlockIsMadeValid) {
    // 0 and 1 act as 2, 7 as 6, anything above 8 as 8; the block itself is not changed.
    for (const auto& [stored, effective] :
         std::vector<std::pair<int, int>>{{0, 2}, {1, 2}, {7, 6}, {9, 8}, {255, 8}}) {
        Canvas canvas{17, 19, std::vector<uint8_t>(17 * 19 * 3)};
        const FilterParameters parameters = ParametersWith(static_cast<uint8_t>(stored));
        FilterRecord record = RecordFor(canvas, {0, 0, 19, 17});
        int16_t result;
        const std::vector<Rect> bands = RunBands(record, parameters, canvas, result);
        EXPECT_EQ(result, kResultOk);
        EXPECT_EQ(bands[0].bottom, effective) << "stored GridSize " << stored;
        EXPECT_EQ(parameters.gridSize, stored);
        for (int y = 0; y < 19; ++y)
            for (int x = 0; x < 17; ++x)
                ASSERT_EQ(canvas.pixels[(y * 17 + x) * 3],
                          parameters.tile.Cell(y % effective, x % effective).red)
                    << "stored GridSize " << stored << " at (" << x << ", " << y << ")";
    }
}

TEST(FilterRun, ARectangleAtTheEdgeOfTheCoordinateRangeEnds) {
    // The last band's top plus the GridSize passes 32767; the run must still end.
    Canvas canvas{2, 32767, std::vector<uint8_t>(2 * 32767 * 3)};
    FilterRecord record = RecordFor(canvas, {32760, 0, 32767, 2});
    int16_t result;
    const std::vector<Rect> bands = RunBands(record, ParametersWith(8), canvas, result);
    EXPECT_EQ(result, kResultOk);
    ASSERT_EQ(bands.size(), 1u);
    EXPECT_EQ(bands[0].bottom, 32767);
}

}  // namespace
}  // namespace tessellum
