// The grid editor and the swatch grid in a real window under Wine, clicked with real
// mouse-down messages that the window procedure hands to them as the Pattern Fill page
// does, and what reached the screen read back and photographed.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <memory>
#include <ostream>
#include <vector>

#include "color/palette.h"
#include "color/web_safe.h"
#include "controls/grid_editor.h"
#include "controls/pattern_bitmap_painters.h"
#include "controls/swatch_grid.h"
#include "storage/error_code.h"
#include "tests/support/screenshot.h"
#include "tests/window_pixels.h"

namespace tessellum {
namespace {

using test::PumpMessages;
using test::ReadClient;

constexpr int kGridX = 10, kGridY = 10;         // the editor's bitmap in the client area
constexpr int kPreviewX = 150, kPreviewY = 10;  // a tile preview with its quadrant box
constexpr int kSwatchX = 10, kSwatchY = 150;    // the swatch grid, cells 8 by 10
constexpr uint32_t kMagenta = 0xFF00FF;         // painted over a control to see a repaint

// Which control took the last click: the first of them whose HandleClick gives true.
enum class Taker { kNone, kGrid, kSwatches };

std::ostream& operator<<(std::ostream& out, Taker taker) {
    return out << (taker == Taker::kGrid       ? "the grid editor"
                   : taker == Taker::kSwatches ? "the swatch grid"
                                               : "no control");
}

struct Page {
    GridEditor* grid = nullptr;
    SwatchGrid* swatches = nullptr;
    std::vector<Taker> clicks;
};
Page* page = nullptr;

LRESULT CALLBACK PageProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_LBUTTONDOWN && page) {
        Taker taker = Taker::kNone;
        if (page->grid && page->grid->HandleClick(lParam)) {
            taker = Taker::kGrid;
        } else if (page->swatches && page->swatches->HandleClick(lParam)) {
            taker = Taker::kSwatches;
        }
        page->clicks.push_back(taker);
        return 0;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

uint32_t ColorRefOf(const Rgb8& c) {
    return (uint32_t{c.red} << 16) | (c.green << 8) | c.blue;
}

class GridSwatchWindowTest : public ::testing::Test {
protected:
    void SetUp() override {
        window = test::MakeTestWindow("GridSwatch", 330, 260, PageProc);
        ASSERT_NE(window, nullptr);
        page = &state;
    }
    void TearDown() override {
        page = nullptr;
        DestroyWindow(window);
    }

    // A real click: button down and up at client (x, y), delivered through the queue.
    Taker Click(int x, int y) {
        const size_t before = state.clicks.size();
        PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
        PostMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
        PumpMessages();
        EXPECT_EQ(state.clicks.size(), before + 1) << "the click did not arrive";
        return state.clicks.size() > before ? state.clicks.back() : Taker::kNone;
    }

    uint32_t Pixel(int x, int y) { return ReadClient(window, x, y, 1, 1)[0]; }

    // The screen is photographed, not the window's own surface, so what was drawn is first
    // let through to it by a round of the message loop.
    void Photograph(const char* name) {
        PumpMessages();
        EXPECT_FALSE(test::SaveScreenshot(window, name).empty()) << name;
    }

    // Paints a patch over the window, as if something had drawn there; a control that
    // copies its picture again wipes it out.
    void Smudge(int x, int y, int width, int height) {
        HDC dc = GetDC(window);
        RECT area = {x, y, x + width, y + height};
        HBRUSH brush = CreateSolidBrush(RGB(255, 0, 255));
        FillRect(dc, &area, brush);
        DeleteObject(brush);
        ReleaseDC(window, dc);
    }

    // What the window shows of a bitmap placed at (x, y) equals the bitmap, word for word.
    void ExpectOnScreen(const OffscreenBitmap& bitmap, int x, int y, const char* what) {
        const std::vector<uint32_t> shown =
            ReadClient(window, x, y, int(bitmap.width), int(bitmap.height));
        const std::vector<uint32_t> painted(bitmap.bits,
                                            bitmap.bits + bitmap.width * bitmap.height);
        EXPECT_EQ(shown, painted) << what << " is not on the screen as painted";
    }

    HWND window = nullptr;
    Page state;
};

Pattern StartingPattern() {
    Pattern cells;
    for (int i = 0; i < 64; ++i) cells.cells[i] = {uint8_t(4 * i), 153, uint8_t(255 - 4 * i)};
    cells.Cell(0, 0) = {255, 0, 0};
    cells.Cell(0, 1) = {0, 255, 0};
    cells.Cell(1, 0) = {0, 0, 255};
    cells.Cell(1, 1) = {255, 255, 0};
    return cells;
}

TEST_F(GridSwatchWindowTest, GridEditorPaintsErasesAndPicksThroughRealClicks) {
    Pattern work = StartingPattern();
    const Pattern original = work;
    Pattern* current = &work;
    GridEditor editor(window, &current, kGridX, kGridY);
    editor.SetForeColor(0, 0, 0);
    editor.SetBackColor(255, 255, 255);
    state.grid = &editor;
    EXPECT_EQ(int(editor.GridSize()), 2);
    EXPECT_EQ(editor.Tool(), kToolPencil);

    // GridSize 2 on the screen: red and green cells, the line at column and row 63.
    editor.RedrawGrid();
    ExpectOnScreen(editor.Bitmap(), kGridX, kGridY, "the grid at GridSize 2");
    EXPECT_EQ(Pixel(kGridX + 4, kGridY + 4), 0xFF0000u);
    EXPECT_EQ(Pixel(kGridX + 62, kGridY + 62), 0xFF0000u);
    EXPECT_EQ(Pixel(kGridX + 63, kGridY + 30), 0x000000u);
    EXPECT_EQ(Pixel(kGridX + 64, kGridY + 30), 0x00FF00u);
    EXPECT_EQ(Pixel(kGridX + 30, kGridY + 63), 0x000000u);
    EXPECT_EQ(Pixel(kGridX + 122, kGridY + 122), 0xFFFF00u);
    EXPECT_EQ(Pixel(kGridX + 1, kGridY + 1), 0xFFFFFFu) << "the frame's white band";
    EXPECT_EQ(Pixel(kGridX, kGridY), 0x000000u) << "the frame's outer ring";
    EXPECT_EQ(Pixel(kGridX - 1, kGridY), 0xFFFFFFu) << "nothing left of the editor";

    // A tile preview and the quadrant box of the same tile beside it, as the Color
    // Picker shows them.
    OffscreenBitmap preview(window, 127, 127, true);
    preview.PaintInsetFrame();
    DrawTilePreview(&preview, current, 2);
    DrawQuadrantBox(&preview, current);
    preview.Blit(kPreviewX, kPreviewY, 0, 0, 127, 127);
    EXPECT_EQ(Pixel(kPreviewX + 4, kPreviewY + 4), 0xFF0000u);
    EXPECT_EQ(Pixel(kPreviewX + 5, kPreviewY + 4), 0x00FF00u);
    EXPECT_EQ(Pixel(kPreviewX + 6, kPreviewY + 5), 0x0000FFu);
    EXPECT_EQ(Pixel(kPreviewX + 70, kPreviewY + 70), 0x000000u) << "the box's black line";
    EXPECT_EQ(Pixel(kPreviewX + 71, kPreviewY + 71), 0xFFFFFFu) << "on a white field";
    EXPECT_EQ(Pixel(kPreviewX + 89, kPreviewY + 80), 0x808080u) << "the grey cross";
    EXPECT_EQ(Pixel(kPreviewX + 100, kPreviewY + 100), 0xFFFF00u) << "d, bottom right";
    Photograph("grid_editor_size2");

    // The area: bitmap columns and rows 4 to 123.
    EXPECT_FALSE(editor.HitTest(kGridX + 3, kGridY + 50));
    EXPECT_TRUE(editor.HitTest(kGridX + 4, kGridY + 50));
    EXPECT_TRUE(editor.HitTest(kGridX + 123, kGridY + 123));
    EXPECT_FALSE(editor.HitTest(kGridX + 124, kGridY + 50));
    EXPECT_FALSE(editor.HitTest(kGridX + 50, kGridY + 124));

    // Pencil on cell (1, 1): the cell takes the fore colour and the screen shows it.
    EXPECT_EQ(Click(kGridX + 90, kGridY + 90), Taker::kGrid);
    EXPECT_EQ(ColorRefOf(work.Cell(1, 1)), 0x000000u);
    EXPECT_EQ(Pixel(kGridX + 90, kGridY + 90), 0x000000u);
    ExpectOnScreen(editor.Bitmap(), kGridX, kGridY, "the grid after the pencil");

    // Pencil on a cell that has the fore colour: false, and nothing is repainted.
    Smudge(kGridX + 80, kGridY + 80, 10, 10);
    EXPECT_EQ(Click(kGridX + 100, kGridY + 100), Taker::kNone);
    EXPECT_EQ(Pixel(kGridX + 85, kGridY + 85), kMagenta) << "the grid was copied again";

    // Eyedropper on the red cell: the fore colour becomes red, no pixel is written.
    editor.SetTool(kToolEyedropper);
    const std::vector<PixelWord> before(editor.Bitmap().bits, editor.Bitmap().bits + 127 * 127);
    EXPECT_EQ(Click(kGridX + 20, kGridY + 20), Taker::kGrid);
    uint8_t red = 0, green = 0, blue = 0;
    editor.GetForeColor(&red, &green, &blue);
    EXPECT_EQ(ColorRefOf({red, green, blue}), 0xFF0000u);
    EXPECT_EQ(std::vector<PixelWord>(editor.Bitmap().bits, editor.Bitmap().bits + 127 * 127),
              before);
    EXPECT_EQ(Pixel(kGridX + 85, kGridY + 85), kMagenta) << "the dropper repainted the grid";
    EXPECT_EQ(Click(kGridX + 20, kGridY + 20), Taker::kNone) << "the same colour again";

    // Eraser on the green cell: it takes the back colour.
    editor.SetTool(kToolEraser);
    EXPECT_EQ(Click(kGridX + 100, kGridY + 20), Taker::kGrid);
    EXPECT_EQ(ColorRefOf(work.Cell(0, 1)), 0xFFFFFFu);
    EXPECT_EQ(Pixel(kGridX + 100, kGridY + 20), 0xFFFFFFu);
    EXPECT_EQ(Pixel(kGridX + 85, kGridY + 85), 0x000000u) << "the whole grid was copied";
    editor.GetForeColor(&red, &green, &blue);
    EXPECT_EQ(ColorRefOf({red, green, blue}), 0xFF0000u) << "the eraser keeps the fore colour";

    // Edges, with the pencil and a red fore colour: column 3 and column 124 are outside;
    // column 123, the frame's ring, paints the last cell column; the line at 63 paints
    // the cell before it.
    editor.SetTool(kToolPencil);
    EXPECT_EQ(Click(kGridX + 3, kGridY + 70), Taker::kNone);
    EXPECT_EQ(Click(kGridX + 124, kGridY + 70), Taker::kNone);
    EXPECT_EQ(ColorRefOf(work.Cell(1, 0)), 0x0000FFu);
    EXPECT_EQ(Click(kGridX + 123, kGridY + 4), Taker::kGrid);
    EXPECT_EQ(ColorRefOf(work.Cell(0, 1)), 0xFF0000u);
    editor.SetForeColor(0, 128, 0);
    EXPECT_EQ(Click(kGridX + 63, kGridY + 70), Taker::kGrid);
    EXPECT_EQ(ColorRefOf(work.Cell(1, 0)), 0x008000u);
    EXPECT_EQ(ColorRefOf(work.Cell(1, 1)), 0x000000u);

    // GridSize 8: the lines at 18, 33, ... 108; a point 14 into the area is column 0,
    // 15 into it column 1.
    EXPECT_TRUE(editor.ChangeGridSize(8));
    ExpectOnScreen(editor.Bitmap(), kGridX, kGridY, "the grid at GridSize 8");
    for (int line : {18, 33, 48, 63, 78, 93, 108}) {
        EXPECT_EQ(Pixel(kGridX + line, kGridY + 10), 0u) << "line at column " << line;
        EXPECT_EQ(Pixel(kGridX + 10, kGridY + line), 0u) << "line at row " << line;
    }
    EXPECT_EQ(Pixel(kGridX + 19, kGridY + 10), ColorRefOf(work.Cell(0, 1)));
    EXPECT_EQ(Pixel(kGridX + 115, kGridY + 115), ColorRefOf(work.Cell(7, 7)));
    editor.SetForeColor(255, 0, 255);
    EXPECT_EQ(Click(kGridX + 4 + 14, kGridY + 4 + 119), Taker::kGrid);
    EXPECT_EQ(ColorRefOf(work.Cell(7, 0)), 0xFF00FFu);
    EXPECT_EQ(ColorRefOf(work.Cell(7, 1)), ColorRefOf(original.Cell(7, 1)));
    editor.SetForeColor(0, 255, 255);
    EXPECT_EQ(Click(kGridX + 4 + 15, kGridY + 4 + 119), Taker::kGrid);
    EXPECT_EQ(ColorRefOf(work.Cell(7, 1)), 0x00FFFFu);
    Photograph("grid_editor_size8");

    // The same size again changes nothing and repaints nothing.
    Smudge(kGridX + 40, kGridY + 40, 10, 10);
    EXPECT_FALSE(editor.ChangeGridSize(8));
    EXPECT_EQ(Pixel(kGridX + 45, kGridY + 45), kMagenta);

    // Back to 2: only the corner shows, and the cells beyond it stay in the Pattern.
    EXPECT_TRUE(editor.ChangeGridSize(2));
    EXPECT_EQ(Pixel(kGridX + 18, kGridY + 10), ColorRefOf(work.Cell(0, 0)));
    EXPECT_EQ(Pixel(kGridX + 115, kGridY + 115), ColorRefOf(work.Cell(1, 1)));
    EXPECT_EQ(ColorRefOf(work.Cell(7, 0)), 0xFF00FFu);
    EXPECT_EQ(ColorRefOf(work.Cell(7, 1)), 0x00FFFFu);
    for (int r = 2; r < 8; ++r)
        for (int c = 2; c < 8; ++c)
            EXPECT_EQ(ColorRefOf(work.Cell(r, c)), ColorRefOf(original.Cell(r, c)));

    // A GridSize outside the set is kept as given and shown as the size it is made into.
    EXPECT_TRUE(editor.ChangeGridSize(7));
    EXPECT_EQ(int(editor.GridSize()), 7);
    EXPECT_EQ(Pixel(kGridX + 23, kGridY + 10), 0u) << "the first line of GridSize 6";
    editor.SetForeColor(1, 2, 3);
    EXPECT_EQ(Click(kGridX + 123, kGridY + 123), Taker::kGrid);
    EXPECT_EQ(ColorRefOf(work.Cell(5, 5)), 0x010203u);
    EXPECT_TRUE(editor.ChangeGridSize(2));

    // The editor follows the holder: another Pattern in force is shown and painted.
    Pattern other = original;
    other.Cell(0, 0) = {10, 20, 30};
    current = &other;
    editor.RedrawGrid();
    EXPECT_EQ(Pixel(kGridX + 20, kGridY + 20), 0x0A141Eu);
    editor.SetForeColor(200, 100, 50);
    EXPECT_EQ(Click(kGridX + 20, kGridY + 100), Taker::kGrid);
    EXPECT_EQ(ColorRefOf(other.Cell(1, 0)), 0xC86432u);
    EXPECT_EQ(ColorRefOf(work.Cell(1, 0)), 0x008000u) << "the old Pattern is left alone";

    // No Pattern in force: a click changes nothing.
    current = nullptr;
    EXPECT_EQ(Click(kGridX + 20, kGridY + 20), Taker::kNone);
    state.grid = nullptr;
}

TEST_F(GridSwatchWindowTest, SwatchGridChoosesAColourOfThePaletteThroughRealClicks) {
    Palette webSafe(256);
    FillWebSafeTable(webSafe.Colors());
    SwatchGrid swatches(window, kSwatchX, kSwatchY, 8, 10);
    state.swatches = &swatches;
    ASSERT_EQ(swatches.bitmap->width, 295u);
    ASSERT_EQ(swatches.bitmap->height, 95u);
    swatches.SelectFirst();

    // No palette yet: grey inside the frame, and a click takes nothing though it is over.
    swatches.Paint();
    ExpectOnScreen(*swatches.bitmap, kSwatchX, kSwatchY, "the grid without a palette");
    EXPECT_EQ(Pixel(kSwatchX + 4, kSwatchY + 4), 0x808080u);
    EXPECT_EQ(Pixel(kSwatchX + 290, kSwatchY + 90), 0x808080u);
    EXPECT_TRUE(swatches.IsOver(kSwatchX + 20, kSwatchY + 20));
    EXPECT_EQ(Click(kSwatchX + 20, kSwatchY + 20), Taker::kNone);

    // The web-safe palette with index 0 marked at the grid's corner.
    swatches.SetPalette(&webSafe);
    ExpectOnScreen(*swatches.bitmap, kSwatchX, kSwatchY, "the web-safe grid");
    EXPECT_EQ(Pixel(kSwatchX, kSwatchY), 0xFF0000u) << "the highlight over the frame's corner";
    EXPECT_EQ(Pixel(kSwatchX + 2, kSwatchY + 2), 0xFFFFFFu);
    EXPECT_EQ(Pixel(kSwatchX + 17, kSwatchY + 6), 0x000033u) << "colour 1, beyond the highlight";
    EXPECT_EQ(Pixel(kSwatchX + 4 + 9 * 20, kSwatchY + 4 + 11 * 7), 0xFFFFFFu)
        << "colour 244, one of the white ones";
    Photograph("swatch_grid_web_safe");

    // The margin hits nothing; the line right of cell 0 is cell 0's, the next pixel cell 1.
    EXPECT_FALSE(swatches.IsOver(kSwatchX + 3, kSwatchY + 3));
    EXPECT_EQ(Click(kSwatchX + 3, kSwatchY + 3), Taker::kNone);
    Smudge(kSwatchX + 100, kSwatchY + 40, 8, 8);
    EXPECT_EQ(Click(kSwatchX + 12, kSwatchY + 4), Taker::kNone) << "cell 0 is chosen already";
    EXPECT_EQ(Pixel(kSwatchX + 104, kSwatchY + 44), kMagenta) << "and nothing was repainted";
    EXPECT_EQ(Click(kSwatchX + 13, kSwatchY + 4), Taker::kSwatches);
    EXPECT_EQ(int(swatches.Selected()), 1);
    ExpectOnScreen(*swatches.bitmap, kSwatchX, kSwatchY, "the whole grid, repainted,");
    EXPECT_EQ(Pixel(kSwatchX + 9, kSwatchY), 0xFF0000u) << "the highlight of index 1";
    EXPECT_EQ(Pixel(kSwatchX, kSwatchY), 0x000000u) << "the frame's corner is back";

    // The last cell, clicked on the frame's inner ring where it ends.
    EXPECT_TRUE(swatches.IsOver(kSwatchX + 291, kSwatchY + 91));
    EXPECT_FALSE(swatches.IsOver(kSwatchX + 292, kSwatchY + 91));
    EXPECT_EQ(Click(kSwatchX + 291, kSwatchY + 91), Taker::kSwatches);
    EXPECT_EQ(int(swatches.Selected()), 255);
    EXPECT_EQ(Pixel(kSwatchX + 279, kSwatchY + 77), 0xFF0000u);
    EXPECT_EQ(Pixel(kSwatchX + 294, kSwatchY + 94), 0xFF0000u);

    // A colour in the middle, for the picture: index 4 * 32 + 13, colour 141.
    EXPECT_EQ(Click(kSwatchX + 4 + 13 * 9 + 3, kSwatchY + 4 + 4 * 11 + 3), Taker::kSwatches);
    EXPECT_EQ(int(swatches.Selected()), 141);
    ExpectOnScreen(*swatches.bitmap, kSwatchX, kSwatchY, "the grid with index 141 chosen");
    Photograph("swatch_grid_selection");

    // 216 colours: cells 216 on are black and refuse the click; the selection stays.
    Palette first216(216);
    std::memcpy(first216.Colors(), webSafe.Colors(), 216 * 3);
    swatches.SetPalette(&first216);
    EXPECT_EQ(Pixel(kSwatchX + 4 + 9 * 20, kSwatchY + 4 + 11 * 7), 0x000000u);
    EXPECT_EQ(Click(kSwatchX + 4 + 9 * 20, kSwatchY + 4 + 11 * 7), Taker::kNone);
    EXPECT_EQ(Click(kSwatchX + 4 + 9 * 24, kSwatchY + 4 + 11 * 6), Taker::kNone)
        << "216, the first cell past the end";
    EXPECT_EQ(int(swatches.Selected()), 141);
    EXPECT_EQ(Click(kSwatchX + 4 + 9 * 23, kSwatchY + 4 + 11 * 6), Taker::kSwatches);
    EXPECT_EQ(int(swatches.Selected()), 215);
    state.swatches = nullptr;
}

TEST_F(GridSwatchWindowTest, ConstructionWithoutAWindowContextOrWithHugeCellsThrowsNoMemory) {
    HWND gone = test::MakeTestWindow("GoneGrid", 10, 10);
    DestroyWindow(gone);
    Pattern* none = nullptr;
    ErrorCode thrown = 0;
    try {
        GridEditor editor(gone, &none, 0, 0);
    } catch (ErrorCode code) {
        thrown = code;
    }
    EXPECT_EQ(thrown, ErrNoMemory) << "the grid editor";
    thrown = 0;
    try {
        SwatchGrid swatches(gone, 0, 0, 8, 10);
    } catch (ErrorCode code) {
        thrown = code;
    }
    EXPECT_EQ(thrown, ErrNoMemory) << "the swatch grid";
    thrown = 0;
    try {
        SwatchGrid swatches(window, 0, 0, 0x08000000, 10);  // 32 cells of that width overflow
    } catch (ErrorCode code) {
        thrown = code;
    }
    EXPECT_EQ(thrown, ErrNoMemory) << "cells too wide to picture";
}

}  // namespace
}  // namespace tessellum
