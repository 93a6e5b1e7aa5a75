// The Color Picker tab: three sliders set a colour and its 2x2 tile of web-safe colours
// follows at every step. With a Pattern of any other size in force the page offers to
// convert it instead.
#include "color/web_safe.h"
#include "controls/mouse_point.h"
#include "controls/pattern_painters.h"
#include "dialog/dialog_logic.h"
#include "dialog/filter_dialog.h"
#include "dialog/value_field.h"
#include "resources/resource_ids.h"

namespace tessellum {
namespace {

void ShowItem(HWND page, int id, bool show) {
    SetWindowPos(GetDlgItem(page, id), nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | (show ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
}

}  // namespace

void FilterDialog::ShowColorPickerPage() {
    ShowPage(colorPickerPage, patternFillPage);
    ShowWindow(colorPickerPage, SW_SHOW);
    DrawPickerPreview();
    if (PickerStateFor(workGridSize) == PickerState::kSliders) {
        ShowItem(colorPickerPage, IDC_CONVERT_TEXT, false);
        ShowItem(colorPickerPage, IDC_CONVERT, false);
        ShowItem(colorPickerPage, IDC_FORE_BACK_PLACE, true);
        sliderPanel->SetEnabled(true, false);
        sliderPanel->Repaint(true);
        foreBackBox->Draw();
    } else {
        sliderPanel->Repaint(false);
        sliderPanel->SetEnabled(false, true);
        foreBackBox->Erase();
        ShowItem(colorPickerPage, IDC_CONVERT_TEXT, true);
        ShowItem(colorPickerPage, IDC_CONVERT, true);
        ShowItem(colorPickerPage, IDC_FORE_BACK_PLACE, false);
    }
}

void FilterDialog::DrawPickerPreview() {
    OffscreenBitmap& picker = *pickerBitmap;
    if (CurrentGridSize() != 2) {
        DrawNoColorCross(picker.bits, picker.width, picker.height, Line());
        OffscreenBitmap& box = splitColorBox->Bitmap();
        DrawNoColorCross(box.bits, box.width, box.height, Line());
    } else {
        DrawTilePreview(picker.bits, picker.width, picker.height, CurrentPattern(), 2, Line());
        DrawQuadrantBox(picker.bits, picker.width, picker.height, CurrentPattern(), dpi);
        splitColorBox->SetColor(sliderPanel->Red(), sliderPanel->Green(), sliderPanel->Blue());
    }
    splitColorBox->Draw();
    HWND place = GetDlgItem(colorPickerPage, IDC_PICKER_PLACE);
    picker.Blit(ControlLeft(colorPickerPage, place), ControlTop(colorPickerPage, place), 0, 0,
                picker.width, picker.height);
}

void FilterDialog::SlidersChanged() {
    uint8_t lower = 0, upper = 0;
    ColorToTileIndices(sliderPanel->Red(), sliderPanel->Green(), sliderPanel->Blue(), &lower,
                       &upper);
    WriteTile(webSafePalette->Colors(), *CurrentPattern(), lower, upper);
    DrawMainPreview();
    DrawPickerPreview();
}

void FilterDialog::ConvertToWebSafe() {
    uint8_t red = 0, green = 0, blue = 0;
    MeanColor(*CurrentPattern(), CurrentGridSize(), &red, &green, &blue);
    // A disabled panel ignores its setters, so it is enabled first.
    sliderPanel->SetEnabled(true, false);
    sliderPanel->SetRed(red);
    sliderPanel->SetGreen(green);
    sliderPanel->SetBlue(blue);
    uint8_t lower = 0, upper = 0;
    ColorToTileIndices(red, green, blue, &lower, &upper);
    WriteTile(webSafePalette->Colors(), *CurrentPattern(), lower, upper);
    SetGridSize(2, 1);
}

void FilterDialog::LoadSlidersFromPattern() {
    if (!sliderPanel->IsEnabled()) return;
    uint8_t red = 0, green = 0, blue = 0;
    MeanColor(*CurrentPattern(), CurrentGridSize(), &red, &green, &blue);
    sliderPanel->SetRed(red);
    sliderPanel->SetGreen(green);
    sliderPanel->SetBlue(blue);
}

void FilterDialog::ShowNewColor(uint8_t flag) {
    if (flag != 0)
        splitColorBox->SetSplit(true);
    else if (splitColorBox->IsSplit())
        splitColorBox->SetSplit(false);
}

namespace {

void PickerDispatch(FilterDialog& dialog, HWND page, UINT message, WPARAM wParam, LPARAM lParam) {
    RgbSliderPanel& sliders = *dialog.Sliders();
    switch (message) {
        case WM_PAINT:
        case WM_REPAINTPAGE: dialog.ShowColorPickerPage(); return;
        case WM_ERASEBKGND: PostMessageA(page, WM_REPAINTPAGE, 0, 0); return;
        case WM_COMMAND:
            if (LOWORD(wParam) == IDC_CONVERT) dialog.ConvertToWebSafe();
            return;
        // The page's class asks for double clicks: the second press of a quick pair is
        // a press like any other, on a step arrow as anywhere.
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK: {
            CloseValueFieldForClick();
            if (sliders.HandleMouseDown(lParam)) {
                dialog.ShowNewColor(1);
                dialog.SlidersChanged();
                return;
            }
            const MousePoint point = PointFromLParam(lParam);
            ForeBackBox& host = *dialog.ForeBack();
            if (!sliders.IsEnabled()) return;
            if (!host.HandleClick(point.x, point.y)) {
                OpenValueFieldAt(page, point.x, point.y);  // on a read-out: its value typed
                return;
            }
            uint8_t red = 0, green = 0, blue = 0;
            if (host.IsFrontActive())
                host.GetFront(red, green, blue);
            else
                host.GetBack(red, green, blue);
            sliders.SetRed(red);
            sliders.SetGreen(green);
            sliders.SetBlue(blue);
            dialog.SlidersChanged();
            return;
        }
        case WM_MOUSEMOVE:
            if (sliders.HandleMouseMove(lParam)) {
                dialog.ShowNewColor(1);
                dialog.SlidersChanged();
            }
            return;
        case WM_LBUTTONUP:
            sliders.HandleMouseUp();
            dialog.ShowNewColor(0);
            return;
        case WM_TIMER:
            if (sliders.IsEnabled() && sliders.HandleTimer()) dialog.SlidersChanged();
            return;
        default: return;
    }
}

}  // namespace

// Always 0, so the default handling (the erase among it) still takes place. Until the
// dialog is built the page is left to the dialog manager.
INT_PTR CALLBACK ColorPickerPageProc(HWND page, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) WatchColorPickerPage(page);
    if (message == WM_DESTROY) StopWatchingColorPickerPage();
    if (activeDialog == nullptr || !activeDialog->Ready()) return 0;
    try {
        PickerDispatch(*activeDialog, page, message, wParam, lParam);
    } catch (...) {
        // Dropped: nothing may unwind into the dialog manager.
    }
    return 0;
}

}  // namespace tessellum
