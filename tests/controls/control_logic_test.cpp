// The deciding part of the controls, without windows: mouse coordinates, and the tool
// row's choice of tool by the hit tests of its buttons, edges included.
#include <gtest/gtest.h>

#include <string>

#include "controls/control.h"
#include "controls/mouse_point.h"
#include "controls/tool_row.h"

namespace tessellum {
namespace {

intptr_t LParam(int x, int y) {
    return static_cast<intptr_t>(
        static_cast<uint32_t>((static_cast<uint16_t>(y) << 16) | static_cast<uint16_t>(x)));
}

TEST(PointFromLParam, SignExtendsEachWord) {
    const int points[][2] = {{12, 34}, {-5, 7}, {3, -1}, {-32768, 32767}};
    for (const auto& p : points) {
        const MousePoint point = PointFromLParam(LParam(p[0], p[1]));
        EXPECT_EQ(point.x, p[0]);
        EXPECT_EQ(point.y, p[1]);
    }
}

// A tool button as the row sees it: a rectangle that logs its toggles.
struct FakeButton : Control {
    FakeButton(int32_t x, std::string* log, char name)
        : Control(nullptr, x, 30, 26, 22), log(log), name(name) {}
    void Toggle() { *log += std::string("T") + name; }
    std::string* log;
    char name;
};

// Laid out as the tool group lays out its buttons: side by side, 26 wide, from x 40.
struct FakeRow : ToolRow<FakeButton> {
    FakeRow() {
        for (int i = 0; i < 3; ++i) buttons[i].reset(new FakeButton(40 + 26 * i, &log, '0' + i));
    }
    std::string log;
};

TEST(ToolRow, AClickSelectsTheButtonUnderItWithTheBoundaryColumnToTheRight) {
    FakeRow row;
    // Each click's answer, the selection after it and the toggles it made: the old
    // button toggles off first, then the new one on.
    const struct {
        int x, y;
        const char* result;
    } clicks[] = {{40 + 26, 35, "hit 1 T0T1"},  // the boundary column
                  {40 + 25, 51, "hit 0 T1T0"},  // the last column and row of the first
                  {40 + 52, 30, "hit 2 T0T2"},  // the first column and row of the last
                  {40 + 52, 30, "hit 2 "},      // the selected one: nothing changes
                  {40 + 78, 35, "miss 2 "},    {39, 35, "miss 2 "}, {50, 29, "miss 2 "},
                  {50, 52, "miss 2 "},         {-5, 35, "miss 2 "}, {50, -3, "miss 2 "}};
    for (const auto& c : clicks) {
        row.log.clear();
        const bool hit = row.HandleClick(LParam(c.x, c.y));
        EXPECT_EQ((hit ? "hit " : "miss ") + std::to_string(row.Selected()) + " " + row.log,
                  c.result)
            << c.x << "," << c.y;
    }
    row.log.clear();
    row.Select(3);  // no such tool
    EXPECT_EQ(row.Selected(), 2u);
    EXPECT_EQ(row.log, "");
}

}  // namespace
}  // namespace tessellum
