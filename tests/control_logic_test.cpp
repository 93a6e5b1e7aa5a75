// The deciding part of the controls, without windows: mouse coordinates, hit tests
// with their edges, and the tool row's choice of tool.
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
    EXPECT_EQ(PointFromLParam(LParam(12, 34)).x, 12);
    EXPECT_EQ(PointFromLParam(LParam(12, 34)).y, 34);
    EXPECT_EQ(PointFromLParam(LParam(-5, 7)).x, -5) << "captured left of the window";
    EXPECT_EQ(PointFromLParam(LParam(-5, 7)).y, 7);
    EXPECT_EQ(PointFromLParam(LParam(3, -1)).y, -1);
    EXPECT_EQ(PointFromLParam(LParam(-32768, 32767)).x, -32768);
    EXPECT_EQ(PointFromLParam(LParam(-32768, 32767)).y, 32767);
    // Only the low 32 bits carry the point, whatever a 64-bit lParam holds above them.
    const intptr_t wide = static_cast<intptr_t>(static_cast<uint64_t>(0xFFFFFFFF00000000ull) |
                                                static_cast<uint64_t>(LParam(9, 8)));
    if (sizeof(intptr_t) == 8) {
        EXPECT_EQ(PointFromLParam(wide).x, 9);
        EXPECT_EQ(PointFromLParam(wide).y, 8);
    }
}

TEST(ControlHitTest, LeftAndTopEdgesInsideRightAndBottomOutside) {
    Control control(nullptr, 10, 20, 26, 22);
    EXPECT_TRUE(control.HitTest(10, 20));
    EXPECT_TRUE(control.HitTest(35, 41));
    EXPECT_FALSE(control.HitTest(36, 20)) << "x plus width is outside";
    EXPECT_FALSE(control.HitTest(10, 42)) << "y plus height is outside";
    EXPECT_FALSE(control.HitTest(9, 20));
    EXPECT_FALSE(control.HitTest(10, 19));
    const ControlBounds& bounds = control.Bounds();
    EXPECT_EQ(bounds.left, 10);
    EXPECT_EQ(bounds.top, 20);
    EXPECT_EQ(bounds.right, 36);
    EXPECT_EQ(bounds.bottom, 42);

    // Bounds follow a new size at once; an empty control contains nothing.
    control.SetWidth(1);
    control.SetHeight(0);
    EXPECT_EQ(control.Bounds().right, 11);
    EXPECT_FALSE(control.HitTest(10, 20));
    Control negative(nullptr, -30, -10, 20, 20);
    EXPECT_TRUE(negative.HitTest(-30, -10));
    EXPECT_FALSE(negative.HitTest(-10, 0));
}

// A tool button as the row sees it: a rectangle that counts its toggles and draws.
struct FakeButton : Control {
    FakeButton(int32_t x, int32_t y, std::string* log, char name)
        : Control(nullptr, x, y, 26, 22), log(log), name(name) {}
    void Toggle() {
        showPrimary = !showPrimary;
        *log += std::string("T") + name;
    }
    void Draw() { *log += std::string("D") + name; }
    std::string* log;
    char name;
    bool showPrimary = true;
};

// Laid out as the tool group lays out its buttons: side by side, 26 wide, from x 40.
struct FakeRow : ToolRow<FakeButton> {
    FakeRow() {
        for (int i = 0; i < 3; ++i)
            buttons[i].reset(new FakeButton(40 + 26 * i, 30, &log, '0' + i));
        buttons[0]->Toggle();
        log.clear();
    }
    int SelectedShown() const {  // how many buttons show their selected picture
        int n = 0;
        for (const auto& b : buttons) n += !b->showPrimary;
        return n;
    }
    std::string log;
};

TEST(ToolRow, TheBoundaryColumnBelongsToTheRightHandButton) {
    FakeRow row;
    EXPECT_TRUE(row.HandleClick(LParam(40 + 26, 35)));
    EXPECT_EQ(row.Selected(), 1u);
    EXPECT_EQ(row.log, "T0T1") << "the old button toggles off first, then the new one on";
    EXPECT_TRUE(row.HandleClick(LParam(40 + 25, 35)));
    EXPECT_EQ(row.Selected(), 0u) << "the last column of the left button is its own";
    EXPECT_TRUE(row.HandleClick(LParam(40 + 52, 30)));
    EXPECT_EQ(row.Selected(), 2u);
    EXPECT_EQ(row.SelectedShown(), 1);
}

TEST(ToolRow, AClickOnTheSelectedButtonIsAHitAndChangesNothing) {
    FakeRow row;
    EXPECT_TRUE(row.HandleClick(LParam(40, 30)));
    EXPECT_EQ(row.Selected(), 0u);
    EXPECT_EQ(row.log, "") << "nothing toggled, nothing repainted";
    row.Select(0);
    EXPECT_EQ(row.log, "");
}

TEST(ToolRow, ClicksBesideTheRowMissAndKeepTheSelection) {
    FakeRow row;
    row.Select(2);
    row.log.clear();
    const int misses[][2] = {{40 + 78, 35}, {39, 35}, {50, 29}, {50, 52}, {-5, 35}, {50, -3}};
    for (const auto& miss : misses) {
        EXPECT_FALSE(row.HandleClick(LParam(miss[0], miss[1]))) << miss[0] << "," << miss[1];
    }
    EXPECT_EQ(row.Selected(), 2u);
    EXPECT_EQ(row.log, "");
    row.Select(3);  // no such tool
    EXPECT_EQ(row.Selected(), 2u);
    EXPECT_EQ(row.log, "");
    row.Draw();
    EXPECT_EQ(row.log, "D0D1D2");
    EXPECT_EQ(row.SelectedShown(), 1);
}

}  // namespace
}  // namespace tessellum
