// Every self-drawn control of the dialog's two tabs on one page at the dialog's sizes:
// the slider panel on its backdrop, the fore/back pair, the large split colour, and of
// the Pattern Fill tab the colour pair, the grid editor and the swatch grid. The page's window
// procedure hands them the mouse and timer messages as the dialog's pages do, and a screenshot is
// saved after each step a person would want to look at (build/screenshots/gallery-*.png).
#include <windows.h>
#include <gtest/gtest.h>

#include <memory>

#include "color/palette.h"
#include "color/web_safe.h"
#include "controls/color_pair_control.h"
#include "controls/fore_back_box.h"
#include "controls/grid_editor.h"
#include "controls/mouse_point.h"
#include "controls/rgb_slider_panel.h"
#include "controls/small_bitmap_table.h"
#include "controls/split_color_box.h"
#include "controls/swatch_grid.h"
#include "host/dll_instance.h"
#include "tests/controls/color_dialog_driver.h"
#include "tests/controls/control_page.h"
#include "tests/support/screenshot.h"
#include "tests/support/window_pixels.h"

namespace tessellum {

HINSTANCE hDllInstance = nullptr;

namespace {

constexpr int kBarX = 150, kBarY = 40;  // backdrop from 35, 18 to 390, 118
constexpr int kForeBackX = 40, kForeBackY = 150;
constexpr int kSplitX = 90, kSplitY = 140, kSplitSide = 64;
constexpr int kPairX = 200, kPairY = 140;
constexpr int kEditorX = 440, kEditorY = 10;   // 127 by 127
constexpr int kSwatchX = 440, kSwatchY = 150;  // cells of 8 by 10: 295 by 95

Palette WebSafePalette() {
    uint8_t table[kWebSafeTableBytes];
    FillWebSafeTable(table);
    Palette palette(kWebSafeColors);
    for (int i = 0; i < 3 * kWebSafeColors; ++i) palette.Colors()[i] = table[i];
    return palette;
}

// The page and its controls, wired as the Color Picker and Pattern Fill pages wire them.
class Gallery {
public:
    Gallery() : page("Tessellum controls", 750, 255), webSafe(WebSafePalette()) {
        HWND owner = page.Page();
        LoadSmallBitmaps(owner);
        panel = std::make_unique<RgbSliderPanel>(owner, 11);
        panel->SetPosition(kBarX, kBarY, 25);
        panel->SetEnabled(true, true);
        panel->SetBackground(191, 191, 191, 355, 100);
        foreBack = std::make_unique<ForeBackBox>(owner, kForeBackX, kForeBackY, 22, 15);
        split = std::make_unique<SplitColorBox>(owner, kSplitX, kSplitY, kSplitSide, kSplitSide, 0,
                                                0, 0);
        split->Bitmap().PaintInsetFrame();
        pair = std::make_unique<ColorPairControl>(owner, hDllInstance, kPairX, kPairY, 80, 40, 12);
        pair->SetRegistryKey("Tessellum", "1.x");
        // A white tile, so the grid's lines show against its cells.
        for (Rgb8& cell : pattern.cells) cell = {255, 255, 255};
        current = &pattern;
        editor = std::make_unique<GridEditor>(owner, &current, kEditorX, kEditorY);
        swatches = std::make_unique<SwatchGrid>(owner, kSwatchX, kSwatchY, 8, 10);
        swatches->SelectFirst();
        swatches->SetPalette(&webSafe);
        editor->RedrawGrid();
        page.onMessage = [this](UINT message, WPARAM, LPARAM lParam) { Handle(message, lParam); };
        // Built on a page already shown, the panel drew its first rows at 0, 0 before it
        // was placed; the page paints itself anew, as a page does when it comes up.
        InvalidateRect(owner, nullptr, TRUE);
        test::PumpFor(50);
    }
    ~Gallery() { FreeSmallBitmaps(); }

    void Paint() {
        panel->Repaint(true);
        if (panel->IsEnabled()) foreBack->Draw();
        split->Draw();
        pair->Draw();
        editor->Draw();
        swatches->Draw();
    }

    void Shot(const char* name) {
        test::PumpFor(50);
        EXPECT_FALSE(test::SaveScreenshot(page.Dialog(), name).empty()) << name;
    }

    test::ControlPage page;
    std::unique_ptr<RgbSliderPanel> panel;
    std::unique_ptr<ForeBackBox> foreBack;
    std::unique_ptr<SplitColorBox> split;
    std::unique_ptr<ColorPairControl> pair;
    Pattern pattern = {};
    Pattern* current = nullptr;
    Palette webSafe;
    std::unique_ptr<GridEditor> editor;
    std::unique_ptr<SwatchGrid> swatches;
    int ticks = 0;

private:
    // A value of the sliders changed: the large colour shows the new one over the old.
    void SlidersChanged() {
        if (!split->IsSplit()) split->SetSplit(true);
        split->SetColor(panel->Red(), panel->Green(), panel->Blue());
    }

    void Handle(UINT message, LPARAM lParam) {
        const MousePoint point = PointFromLParam(lParam);
        switch (message) {
            case WM_PAINT: Paint(); break;
            case WM_LBUTTONDOWN:
                if (panel->HandleMouseDown(lParam)) SlidersChanged();
                if (panel->IsEnabled() && foreBack->HandleClick(point.x, point.y)) {
                    uint8_t r, g, b;
                    if (foreBack->IsFrontActive()) {
                        foreBack->GetFront(r, g, b);
                    } else {
                        foreBack->GetBack(r, g, b);
                    }
                    panel->SetRed(r);
                    panel->SetGreen(g);
                    panel->SetBlue(b);
                    split->SetColor(r, g, b);
                }
                pair->HandleClick(point.x, point.y);
                editor->HandleClick(lParam);
                // A swatch chosen becomes the colour the pencil paints, as on the page.
                if (swatches->HandleClick(lParam)) {
                    const uint8_t* c = webSafe.Colors() + 3 * swatches->Selected();
                    editor->SetForeColor(c[0], c[1], c[2]);
                }
                break;
            case WM_MOUSEMOVE:
                if (panel->HandleMouseMove(lParam)) SlidersChanged();
                break;
            case WM_LBUTTONUP:
                panel->HandleMouseUp();
                if (split->IsSplit()) split->SetSplit(false);
                break;
            case WM_TIMER:
                ++ticks;
                if (panel->IsEnabled() && panel->HandleTimer()) SlidersChanged();
                break;
        }
    }
};

TEST(ControlGallery, EveryColourControlDrivenByTheMouseWithScreenshots) {
    hDllInstance = test::LoadPluginModule();
    ASSERT_NE(hDllInstance, nullptr);
    {
        Gallery gallery;
        gallery.Shot("gallery-01-start");

        // The host's colours arrive in the fore/back pair; a click on the back box loads
        // that colour into the sliders.
        gallery.foreBack->SetFront(255, 153, 0);
        gallery.foreBack->SetBack(51, 102, 204);
        gallery.page.Mouse(WM_LBUTTONDOWN, kForeBackX + 20, kForeBackY + 20);
        gallery.page.Mouse(WM_LBUTTONUP, kForeBackX + 20, kForeBackY + 20);
        EXPECT_EQ(gallery.panel->Blue(), 204);
        gallery.Shot("gallery-02-back-colour-loaded");

        // Red's right arrow held for a while: one step at the press and one per tick.
        gallery.page.Mouse(WM_LBUTTONDOWN, kBarX + 134, kBarY + 5);
        test::PumpFor(900);
        EXPECT_GT(gallery.ticks, 0);
        EXPECT_EQ(gallery.panel->Red(), 51 + 1 + gallery.ticks);
        gallery.Shot("gallery-03-red-arrow-held-split");
        gallery.page.Mouse(WM_LBUTTONUP, kBarX + 134, kBarY + 5);
        gallery.Shot("gallery-04-red-arrow-released");

        // Green's thumb dragged to the right end of its bar, then part of the way back.
        const int thumbY = kBarY + 25 + 11 + 3;
        gallery.page.Mouse(WM_LBUTTONDOWN, kBarX + gallery.panel->Green() / 2, thumbY);
        gallery.page.Mouse(WM_MOUSEMOVE, kBarX + 140, thumbY + 30);
        EXPECT_EQ(gallery.panel->Green(), 255);
        gallery.page.Mouse(WM_MOUSEMOVE, kBarX + 20, thumbY + 30);
        EXPECT_EQ(gallery.panel->Green(), 40);
        gallery.Shot("gallery-05-green-drag-split");
        gallery.page.Mouse(WM_LBUTTONUP, kBarX + 20, thumbY);
        EXPECT_FALSE(gallery.split->IsSplit());
        gallery.Shot("gallery-06-green-drag-done");

        // The colour pair: new colours, the swap arrow, then the reset sign.
        gallery.pair->SetFore(204, 0, 102);
        gallery.pair->SetBack(255, 255, 102);
        gallery.Shot("gallery-07-pair-colours");
        gallery.page.Mouse(WM_LBUTTONDOWN, kPairX + 58, kPairY + 18);
        gallery.page.Mouse(WM_LBUTTONUP, kPairX + 58, kPairY + 18);
        uint8_t r, g, b;
        gallery.pair->GetFore(r, g, b);
        EXPECT_EQ(r, 255);
        gallery.Shot("gallery-08-pair-swapped");
        gallery.page.Mouse(WM_LBUTTONDOWN, kPairX + 14, kPairY + 54);
        gallery.page.Mouse(WM_LBUTTONUP, kPairX + 14, kPairY + 54);
        gallery.pair->GetFore(r, g, b);
        EXPECT_EQ(r, 0);
        gallery.Shot("gallery-09-pair-reset");

        // A click on the fore box opens the system colour dialog with the 16 custom
        // colours; a colour is typed in, added to them, and taken with OK.
        test::DialogWatch watch(test::DialogWatch::kPressOk, 10000);
        watch.red = 0;
        watch.green = 153;
        watch.blue = 102;
        watch.screenshot = "gallery-10-colour-dialog";
        test::ClickWithDialogWatch(
            [&] {
                gallery.page.Mouse(WM_LBUTTONDOWN, kPairX + 20, kPairY + 20);
                gallery.page.Mouse(WM_LBUTTONUP, kPairX + 20, kPairY + 20);
                return true;
            },
            watch);
        EXPECT_TRUE(watch.found);
        gallery.pair->GetFore(r, g, b);
        EXPECT_EQ(g, 153);
        gallery.Shot("gallery-11-fore-colour-picked");

        // The Pattern Fill side: a swatch chooses the pencil's colour (index 141, row 4,
        // column 13), and a click on the grid paints cell (1, 0) of the 2 by 2 tile.
        const int swatchX = kSwatchX + 4 + 13 * 9 + 3, swatchY = kSwatchY + 4 + 4 * 11 + 3;
        gallery.page.Mouse(WM_LBUTTONDOWN, swatchX, swatchY);
        gallery.page.Mouse(WM_LBUTTONUP, swatchX, swatchY);
        EXPECT_EQ(gallery.swatches->Selected(), 141);
        gallery.editor->GetForeColor(&r, &g, &b);
        const uint8_t* chosen = gallery.webSafe.Colors() + 3 * 141;
        EXPECT_TRUE(r == chosen[0] && g == chosen[1] && b == chosen[2]);
        gallery.page.Mouse(WM_LBUTTONDOWN, kEditorX + 4 + 20, kEditorY + 4 + 60 + 20);
        gallery.page.Mouse(WM_LBUTTONUP, kEditorX + 4 + 20, kEditorY + 4 + 60 + 20);
        EXPECT_EQ(gallery.pattern.Cell(1, 0).green, chosen[1]);
        EXPECT_EQ(gallery.pattern.Cell(0, 0).green, 255);
        gallery.Shot("gallery-12-tile-cell-painted");

        // The pattern grows past 2 by 2: the grid shows 4 by 4, and the page covers the
        // panel, disables it and takes the fore/back pair off the page; clicks on it
        // then do nothing.
        EXPECT_TRUE(gallery.editor->ChangeGridSize(4));
        gallery.panel->Repaint(false);
        gallery.panel->SetEnabled(false, true);
        gallery.foreBack->Erase();
        gallery.page.Mouse(WM_LBUTTONDOWN, kBarX + 134, kBarY + 5);
        test::PumpFor(400);
        gallery.page.Mouse(WM_LBUTTONUP, kBarX + 134, kBarY + 5);
        gallery.Shot("gallery-13-grid-4-panel-disabled");
    }
    test::DeleteCustomColors();
    FreeLibrary(hDllInstance);
    hDllInstance = nullptr;
}

}  // namespace
}  // namespace tessellum
