// The grid editor and the swatch grid in a real window, clicked with real mouse-down
// messages handed on as the Pattern Fill page does, and what reached the screen read back.
#include <windows.h>
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <vector>

#include "color/palette.h"
#include "color/web_safe.h"
#include "controls/grid_editor.h"
#include "controls/swatch_grid.h"
#include "storage/error_code.h"
#include "tests/support/window_pixels.h"

namespace tessellum {
namespace {

using test::ReadClient;

constexpr int kGridX = 10, kGridY = 10;       // the editor's bitmap in the client area
constexpr int kSwatchX = 10, kSwatchY = 150;  // the swatch grid, cells 8 by 10
constexpr uint32_t kMagenta = 0xFF00FF;       // painted over a control to see a repaint

// The controls on the page, and which took each click: 'g' the grid editor, 's' the
// swatch grid, '-' none (the first whose HandleClick gives true takes it).
GridEditor* pageGrid = nullptr;
SwatchGrid* pageSwatches = nullptr;
std::vector<char> clicks;

LRESULT CALLBACK PageProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_LBUTTONDOWN) return DefWindowProcA(window, message, wParam, lParam);
    clicks.push_back(pageGrid && pageGrid->HandleClick(lParam)           ? 'g'
                     : pageSwatches && pageSwatches->HandleClick(lParam) ? 's'
                                                                         : '-');
    return 0;
}

uint32_t ColorRefOf(const Rgb8& c) {
    return (uint32_t{c.red} << 16) | (c.green << 8) | c.blue;
}

uint32_t ForeColor(const GridEditor& editor) {
    Rgb8 fore;
    editor.GetForeColor(&fore.red, &fore.green, &fore.blue);
    return ColorRefOf(fore);
}

// The code a construction throws, or 0.
ErrorCode Thrown(const std::function<void()>& build) try {
    build();
    return 0;
} catch (ErrorCode code) {
    return code;
}

class GridSwatchWindowTest : public ::testing::Test {
protected:
    void SetUp() override {
        window = test::MakeTestWindow("GridSwatch", 330, 260, PageProc);
        ASSERT_NE(window, nullptr);
        clicks.clear();
    }
    void TearDown() override {
        pageGrid = nullptr;
        pageSwatches = nullptr;
        DestroyWindow(window);
    }

    // A real click: button down and up at client (x, y), delivered through the queue.
    char Click(int x, int y) {
        const size_t before = clicks.size();
        PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
        PostMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
        test::PumpMessages();
        EXPECT_EQ(clicks.size(), before + 1) << "the click did not arrive";
        return clicks.size() > before ? clicks.back() : '?';
    }

    uint32_t Pixel(int x, int y) { return ReadClient(window, x, y, 1, 1)[0]; }

    // Paints an 8 by 8 patch over the window; a control that copies its picture again
    // wipes it out.
    void Smudge(int x, int y) {
        HDC dc = GetDC(window);
        const RECT area = {x, y, x + 8, y + 8};
        SetDCBrushColor(dc, kMagenta);  // the same in either byte order
        FillRect(dc, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
        ReleaseDC(window, dc);
    }

    // What the window shows of a bitmap placed at (x, y) equals the bitmap, word for word.
    void ExpectOnScreen(const OffscreenBitmap& bitmap, int x, int y) {
        EXPECT_EQ(ReadClient(window, x, y, int(bitmap.width), int(bitmap.height)),
                  std::vector<uint32_t>(bitmap.bits, bitmap.bits + bitmap.width * bitmap.height))
            << "the bitmap at " << x << "," << y << " is not on the screen as painted";
    }

    HWND window = nullptr;
};

TEST_F(GridSwatchWindowTest, GridEditorPaintsErasesAndPicksThroughRealClicks) {
    Pattern work;  // cell (0, 0) is 0x0099FF, cell (1, 0) 0x2099DF
    for (int i = 0; i < 64; ++i) work.cells[i] = {uint8_t(4 * i), 153, uint8_t(255 - 4 * i)};
    Pattern* current = &work;
    GridEditor editor(window, &current, kGridX, kGridY);
    editor.SetForeColor(0, 0, 0);
    editor.SetBackColor(255, 255, 255);
    pageGrid = &editor;
    EXPECT_EQ(int(editor.GridSize()), 2);
    EXPECT_EQ(editor.Tool(), kToolPencil);

    // Every GridSize reaches the screen: its first grid line one pitch into the area, the
    // cells either side of it.
    for (const auto& [size, line] :
         {std::pair{3, 43}, {4, 33}, {5, 27}, {6, 23}, {8, 18}, {2, 63}}) {
        EXPECT_TRUE(editor.ChangeGridSize(uint8_t(size)));
        ExpectOnScreen(editor.Bitmap(), kGridX, kGridY);
        EXPECT_EQ(Pixel(kGridX + line - 1, kGridY + 10), ColorRefOf(work.Cell(0, 0))) << size;
        EXPECT_EQ(Pixel(kGridX + line, kGridY + 10), 0u) << size;
        EXPECT_EQ(Pixel(kGridX + line + 1, kGridY + 10), ColorRefOf(work.Cell(0, 1))) << size;
    }

    // The pencil, the dropper and the eraser, each shown at once; a click that changes
    // nothing repaints nothing.
    EXPECT_EQ(Click(kGridX + 100, kGridY + 20), 'g');
    EXPECT_EQ(ColorRefOf(work.Cell(0, 1)), 0u);
    ExpectOnScreen(editor.Bitmap(), kGridX, kGridY);
    Smudge(kGridX + 80, kGridY + 80);
    EXPECT_EQ(Click(kGridX + 100, kGridY + 20), '-') << "the cell has the fore colour";
    editor.SetTool(kToolEyedropper);
    EXPECT_EQ(Click(kGridX + 20, kGridY + 100), 'g');
    EXPECT_EQ(ForeColor(editor), 0x2099DFu);
    EXPECT_EQ(Click(kGridX + 20, kGridY + 100), '-') << "the same colour again";
    EXPECT_EQ(Pixel(kGridX + 84, kGridY + 84), kMagenta) << "the grid was copied again";
    editor.SetTool(kToolEraser);
    EXPECT_EQ(Click(kGridX + 100, kGridY + 20), 'g');
    EXPECT_EQ(ColorRefOf(work.Cell(0, 1)), 0xFFFFFFu);
    ExpectOnScreen(editor.Bitmap(), kGridX, kGridY);
    EXPECT_EQ(ForeColor(editor), 0x2099DFu) << "the eraser keeps the fore colour";

    // Edges: column and row 3 and 124 are outside; column 123, the frame's ring, paints
    // the last cell column; the lines at 63 paint the cell before them.
    editor.SetTool(kToolPencil);
    for (const auto& [x, y] : {std::pair{3, 20}, {20, 3}, {124, 20}, {20, 124}})
        EXPECT_EQ(Click(kGridX + x, kGridY + y), '-') << x << "," << y;
    EXPECT_EQ(Click(kGridX + 123, kGridY + 63), 'g');
    EXPECT_EQ(ColorRefOf(work.Cell(0, 1)), 0x2099DFu);
    editor.SetForeColor(0, 128, 0);
    EXPECT_EQ(Click(kGridX + 63, kGridY + 100), 'g');
    EXPECT_EQ(ColorRefOf(work.Cell(1, 0)), 0x008000u);

    // The same size again changes and repaints nothing; a size outside the set is kept
    // as given and clicked as the size it is made into (6, so cell (5, 5) at the corner).
    Smudge(kGridX + 40, kGridY + 40);
    EXPECT_FALSE(editor.ChangeGridSize(2));
    EXPECT_EQ(Pixel(kGridX + 44, kGridY + 44), kMagenta);
    EXPECT_TRUE(editor.ChangeGridSize(7));
    EXPECT_EQ(int(editor.GridSize()), 7);
    editor.SetForeColor(255, 0, 255);
    EXPECT_EQ(Click(kGridX + 123, kGridY + 123), 'g');
    EXPECT_EQ(ColorRefOf(work.Cell(5, 5)), 0xFF00FFu);

    // The editor follows the holder: another Pattern in force is painted, and with none
    // a click changes nothing.
    Pattern other = work;
    current = &other;
    EXPECT_EQ(Click(kGridX + 20, kGridY + 20), 'g');
    EXPECT_EQ(ColorRefOf(other.Cell(0, 0)), 0xFF00FFu);
    EXPECT_EQ(ColorRefOf(work.Cell(0, 0)), 0x0099FFu) << "the old Pattern is left alone";
    ExpectOnScreen(editor.Bitmap(), kGridX, kGridY);
    current = nullptr;
    EXPECT_EQ(Click(kGridX + 30, kGridY + 30), '-');
}

TEST_F(GridSwatchWindowTest, SwatchGridChoosesAColourOfThePaletteThroughRealClicks) {
    Palette webSafe(256);
    FillWebSafeTable(webSafe.Colors());
    SwatchGrid grid(window, kSwatchX, kSwatchY, 8, 10);
    pageSwatches = &grid;
    ASSERT_EQ(grid.bitmap->width, 295u);
    ASSERT_EQ(grid.bitmap->height, 95u);
    grid.SelectFirst();

    // No palette yet: grey inside the frame, and a click takes nothing though it is over.
    grid.Paint();
    EXPECT_EQ(Pixel(kSwatchX + 4, kSwatchY + 4), 0x808080u);
    EXPECT_TRUE(grid.IsOver(kSwatchX + 20, kSwatchY + 20));
    EXPECT_EQ(Click(kSwatchX + 20, kSwatchY + 20), '-');

    // The web-safe palette with index 0 marked red and white over the frame's corner.
    grid.SetPalette(&webSafe);
    ExpectOnScreen(*grid.bitmap, kSwatchX, kSwatchY);
    EXPECT_EQ(Pixel(kSwatchX, kSwatchY), 0xFF0000u);
    EXPECT_EQ(Pixel(kSwatchX + 2, kSwatchY + 2), 0xFFFFFFu);

    // The margin hits nothing; the line right of cell 0 is cell 0's, the next pixel cell 1.
    EXPECT_FALSE(grid.IsOver(kSwatchX + 3, kSwatchY + 3));
    EXPECT_EQ(Click(kSwatchX + 3, kSwatchY + 3), '-');
    Smudge(kSwatchX + 100, kSwatchY + 40);
    EXPECT_EQ(Click(kSwatchX + 12, kSwatchY + 4), '-') << "cell 0 is chosen already";
    EXPECT_EQ(Pixel(kSwatchX + 104, kSwatchY + 44), kMagenta) << "and nothing was repainted";
    EXPECT_EQ(Click(kSwatchX + 13, kSwatchY + 4), 's');
    EXPECT_EQ(int(grid.Selected()), 1);
    ExpectOnScreen(*grid.bitmap, kSwatchX, kSwatchY);
    EXPECT_EQ(Pixel(kSwatchX + 9, kSwatchY), 0xFF0000u) << "the highlight of index 1";

    // The last cell ends on the frame's inner ring.
    EXPECT_TRUE(grid.IsOver(kSwatchX + 291, kSwatchY + 91));
    EXPECT_FALSE(grid.IsOver(kSwatchX + 292, kSwatchY + 91));
    EXPECT_EQ(Click(kSwatchX + 291, kSwatchY + 91), 's');
    EXPECT_EQ(int(grid.Selected()), 255);

    // 216 colours: cells 216 on are black and refuse the click; the selection stays.
    Palette first216(216);
    std::memcpy(first216.Colors(), webSafe.Colors(), 216 * 3);
    grid.SetPalette(&first216);
    EXPECT_EQ(Click(kSwatchX + 4 + 9 * 24, kSwatchY + 4 + 11 * 6), '-') << "216, past the end";
    EXPECT_EQ(int(grid.Selected()), 255);
    EXPECT_EQ(Click(kSwatchX + 4 + 9 * 23, kSwatchY + 4 + 11 * 6), 's');
    EXPECT_EQ(int(grid.Selected()), 215);
}

TEST_F(GridSwatchWindowTest, ConstructionWithoutAWindowContextOrWithHugeCellsThrowsNoMemory) {
    HWND gone = test::MakeTestWindow("GoneGrid", 10, 10);
    DestroyWindow(gone);
    Pattern* none = nullptr;
    EXPECT_EQ(Thrown([&] { GridEditor editor(gone, &none, 0, 0); }), ErrNoMemory);
    EXPECT_EQ(Thrown([&] { SwatchGrid swatches(gone, 0, 0, 8, 10); }), ErrNoMemory);
    // 32 cells of that width overflow the picture's width.
    EXPECT_EQ(Thrown([&] { SwatchGrid swatches(window, 0, 0, 0x08000000, 10); }), ErrNoMemory);
}

}  // namespace
}  // namespace tessellum
