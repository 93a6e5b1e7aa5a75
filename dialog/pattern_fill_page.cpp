// The Pattern Fill tab, where the user paints a tile of 2 to 8 cells a side, and the rule
// that both tabs and the fill depend on: which Pattern is in force, and what a change
// of GridSize does to it (nothing to any cell).
#include "controls/mouse_point.h"
#include "dialog/dialog_logic.h"
#include "dialog/filter_dialog.h"
#include "resources/resource_ids.h"

namespace tessellum {

ColorEntry* FilterDialog::SelectedEntry() {
    if (selectedList == -1) return nullptr;
    const ColorList* list = static_cast<ColorList*>(library->colorLists->ValueAt(selectedList));
    if (list->entries.Head() == nullptr) return nullptr;
    HWND box = Item(IDC_COLOR_BOX);
    const LRESULT row = SendMessageA(box, LB_GETCURSEL, 0, 0);
    if (row == LB_ERR) return nullptr;
    return reinterpret_cast<ColorEntry*>(SendMessageA(box, LB_GETITEMDATA, row, 0));
}

void FilterDialog::ResolveCurrentPattern() {
    const PatternInForce inForce = ResolvePattern(SelectedEntry(), &workPattern, workGridSize);
    currentPattern = resultPattern = inForce.pattern;
    currentGridSize = resultGridSize = inForce.gridSize;
}

void FilterDialog::SetGridSize(uint8_t size, uint8_t storeInEntry) {
    workGridSize = size;
    gridEditor->ChangeGridSize(size);
    gridEditor->RedrawGrid();
    if (storeInEntry != 0) {
        if (ColorEntry* entry = SelectedEntry()) entry->gridSize = size;
    }
    RefreshGridMenu();
    RefreshDialog();
}

void FilterDialog::ChooseGridSize(uint8_t size) {
    ResolveCurrentPattern();
    if (ColorEntry* entry = SelectedEntry()) entry->gridSize = size;
    SetGridSize(size, 0);
}

void FilterDialog::RefreshGridMenu() {
    gridMenu = FreshSubmenu(2);
    ShowGridSizeText();
}

void FilterDialog::ShowGridSizeText() {
    char text[16];
    FormatGridSizeText(text, sizeof text, workGridSize);
    SetWindowTextA(GetDlgItem(patternFillPage, IDC_GRID_BUTTON), text);
}

void FilterDialog::ShowPatternFillPage() {
    ShowPage(patternFillPage, colorPickerPage);
    ShowGridSizeText();
    ShowWindow(patternFillPage, SW_SHOW);
    gridEditor->RedrawGrid();
    gridEditor->Draw();
    swatchGrid->Paint();
    swatchGrid->Draw();
    toolGroup->Draw();
    colorPair->Draw();
}

void FilterDialog::SetPickerColor(uint8_t red, uint8_t green, uint8_t blue) {
    colorPair->SetFore(red, green, blue);
    gridEditor->SetForeColor(red, green, blue);
}

void FilterDialog::SetEditorTool(int32_t tool) {
    currentTool = tool;
    gridEditor->SetTool(static_cast<EditorTool>(tool));
}

void FilterDialog::PickSwatch() {
    const uint8_t* color = swatchGrid->palette->Colors() + swatchGrid->Selected() * 3;
    SetPickerColor(color[0], color[1], color[2]);
    gridEditor->SetForeColor(color[0], color[1], color[2]);
}

namespace {

void FillCommand(FilterDialog& dialog, int id) {
    if (IsPaletteCommand(id) || id == IDM_WEB_SAFE_PALETTE) return dialog.ChoosePalette(id);
    if (const uint8_t size = GridSizeOfCommand(id)) return dialog.ChooseGridSize(size);
    switch (id) {
        case IDC_GRID_BUTTON: return dialog.ShowGridSizeMenu();
        case IDC_PALETTE_BUTTON: return dialog.ShowPaletteMenu();
        case IDC_LOAD_PALETTE: return dialog.LoadPalette();
        case IDC_UNLOAD_PALETTE: return dialog.UnloadPalette();
        default: return;
    }
}

// After the editor changed a cell or picked a colour: the colour pair follows the
// editor's fore colour, and the previews show the new cell.
void EditorChanged(FilterDialog& dialog) {
    uint8_t red = 0, green = 0, blue = 0;
    dialog.Editor()->GetForeColor(&red, &green, &blue);
    dialog.SetPickerColor(red, green, blue);
    dialog.RefreshDialog();
}

void Click(FilterDialog& dialog, LPARAM lParam) {
    const MousePoint point = PointFromLParam(lParam);
    if (dialog.Editor()->HandleClick(lParam)) {
        EditorChanged(dialog);
    } else if (dialog.Swatches()->HandleClick(lParam)) {
        dialog.PickSwatch();
    } else if (dialog.Tools()->HandleClick(lParam)) {
        dialog.SetEditorTool(static_cast<int32_t>(dialog.Tools()->Selected()));
    } else if (dialog.ColorPair()->HandleClick(point.x, point.y)) {
        uint8_t red = 0, green = 0, blue = 0;
        dialog.ColorPair()->GetFore(red, green, blue);
        dialog.Editor()->SetForeColor(red, green, blue);
        dialog.ColorPair()->GetBack(red, green, blue);
        dialog.Editor()->SetBackColor(red, green, blue);
    }
}

// The pointer follows the tool over the grid, is the dropper over the swatches and the
// arrow elsewhere; it changes only as the mouse moves.
void SetPointer(FilterDialog& dialog, LPARAM lParam) {
    const MousePoint point = PointFromLParam(lParam);
    uint32_t index = CursorSet::kArrow;
    if (dialog.Editor()->HitTest(point.x, point.y))
        index = static_cast<uint32_t>(dialog.CurrentTool());
    else if (dialog.Swatches()->IsOver(point.x, point.y))
        index = 1;
    SetCursor(dialog.Cursors()->Get(index));
}

}  // namespace

INT_PTR CALLBACK PatternFillPageProc(HWND page, UINT message, WPARAM wParam, LPARAM lParam) {
    if (activeDialog == nullptr || !activeDialog->Ready()) return 0;
    FilterDialog& dialog = *activeDialog;
    try {
        switch (message) {
            case WM_PAINT:
            case WM_REPAINTPAGE: dialog.ShowPatternFillPage(); return 0;
            case WM_ERASEBKGND: PostMessageA(page, WM_REPAINTPAGE, 0, 0); return 0;
            case WM_SETCURSOR: return 1;  // the pointer is set on mouse moves alone
            case WM_MOUSEMOVE:
                SetPointer(dialog, lParam);
                if (dialog.Editor()->HandleDrag(lParam, (wParam & MK_LBUTTON) != 0))
                    EditorChanged(dialog);
                return 0;
            // The page's class asks for double clicks: the second press of a quick pair
            // is a press like any other.
            case WM_LBUTTONDOWN:
            case WM_LBUTTONDBLCLK: Click(dialog, lParam); return 0;
            case WM_LBUTTONUP: dialog.Editor()->EndStroke(); return 0;
            case WM_COMMAND: FillCommand(dialog, LOWORD(wParam)); return 0;
            default: return 0;
        }
    } catch (...) {
        return 0;  // dropped: nothing may unwind into the dialog manager
    }
}

}  // namespace tessellum
