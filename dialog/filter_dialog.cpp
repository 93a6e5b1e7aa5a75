#include "dialog/filter_dialog.h"

#include <commctrl.h>

#include <algorithm>
#include <cstring>

#include "color/allocate.h"
#include "color/web_safe.h"
#include "controls/grid_geometry.h"
#include "controls/pattern_painters.h"
#include "controls/slider_geometry.h"
#include "controls/small_bitmap_table.h"
#include "controls/swatch_layout.h"
#include "controls/thread_dpi.h"
#include "dialog/dialog_logic.h"
#include "dialog/scaled_dialog.h"
#include "host/dll_instance.h"
#include "resources/resource_ids.h"
#include "storage/settings.h"

namespace tessellum {

FilterDialog* activeDialog = nullptr;

#ifndef WM_DPICHANGED
#define WM_DPICHANGED 0x02E0
#endif

namespace {

RECT OuterRect(HWND parent, HWND control) {
    RECT rect = {};
    GetWindowRect(control, &rect);
    POINT corners[2] = {{rect.left, rect.top}, {rect.right, rect.bottom}};
    ScreenToClient(parent, &corners[0]);
    ScreenToClient(parent, &corners[1]);
    return {corners[0].x, corners[0].y, corners[1].x, corners[1].y};
}

// Runs one step of the start under its own handler: false when it threw.
template <typename Step>
bool Guarded(Step step) {
    try {
        step();
        return true;
    } catch (ErrorCode) {
        return false;
    }
}

// A one-line label whose text the scaled face draws wider than the template allowed for
// it grows to the right to fit, rather than lose its last word to a second line.
BOOL CALLBACK FitLabel(HWND label, LPARAM) {
    char kind[16] = {}, text[256] = {};
    GetClassNameA(label, kind, sizeof kind);
    const LONG style = GetWindowLongA(label, GWL_STYLE);
    if (lstrcmpiA(kind, "Static") != 0 || (style & SS_TYPEMASK) != SS_LEFT ||
        GetWindowTextA(label, text, sizeof text) == 0) {
        return TRUE;
    }
    RECT place = {};
    GetClientRect(label, &place);
    HDC dc = GetDC(label);
    if (!dc) return TRUE;
    HGDIOBJ old = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageA(label, WM_GETFONT, 0, 0)));
    SIZE extent = {};
    GetTextExtentPoint32A(dc, text, lstrlenA(text), &extent);
    SelectObject(dc, old);
    ReleaseDC(label, dc);
    // Only a label that holds one line and would break it.
    if (extent.cx > place.right && place.bottom < 2 * extent.cy)
        SetWindowPos(label, nullptr, 0, 0, extent.cx + 1, place.bottom,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    return TRUE;
}

}  // namespace

int32_t ControlLeft(HWND parent, HWND control) {
    return OuterRect(parent, control).left;
}
int32_t ControlTop(HWND parent, HWND control) {
    return OuterRect(parent, control).top;
}
int32_t ControlRight(HWND parent, HWND control) {
    return OuterRect(parent, control).right;
}
int32_t ControlBottom(HWND parent, HWND control) {
    return OuterRect(parent, control).bottom;
}

FilterDialog::FilterDialog(HWND parent) : parentWindow(parent) {
    activeDialog = this;
    currentPattern = &workPattern;
    resultPattern = &workPattern;
    sizing = ReadSizing() ? 1 : 0;
}

FilterDialog::~FilterDialog() {
    if (library) {
        try {
            libraryFile->WriteLibrary(library.get(), libraryPath);
        } catch (ErrorCode) {
            // A library that cannot be saved is given up without a word.
        }
    }
    if (smallBitmapsLoaded) FreeSmallBitmaps();
    WriteSizing(sizing != 0);
    toolGroup.reset();
    previewBitmap.reset();
    pickerBitmap.reset();
    colorPair.reset();
    foreBackBox.reset();
    listFile.reset();
    sliderPanel.reset();
    gridEditor.reset();
    libraryFile.reset();
    swatchGrid.reset();
    webSafePalette.reset();
    splitColorBox.reset();
    cursors.reset();
    library.reset();
    for (int role = 0; role < 3; ++role) {
        HMENU copy = menuCopies[role];
        if (copy == nullptr) continue;
        for (HMENU& same : menuCopies)
            if (same == copy) same = nullptr;
        DestroyMenu(copy);
    }
}

bool FilterDialog::RunModal() {
    return ScaledDialogBox(hDllInstance, IDD_MAIN, parentWindow, MainDialogProc) == 1;
}

void FilterDialog::AbortDialog() {
    EndDialog(dialogWindow, 2);
}

HMENU FilterDialog::FreshSubmenu(int index) {
    HMENU copy = LoadMenuA(hDllInstance, MAKEINTRESOURCEA(IDR_MENUS));
    if (copy == nullptr) throw ErrNoMemory;
    menuBar = copy;
    HMENU old = menuCopies[index];
    menuCopies[index] = copy;
    bool stillUsed = false;
    for (HMENU other : menuCopies) stillUsed = stillUsed || other == old;
    if (old != nullptr && !stillUsed) DestroyMenu(old);
    return GetSubMenu(copy, index);
}

static RECT PlaceIn(HWND page, int id) {
    return OuterRect(page, GetDlgItem(page, id));
}

// Under the grid editor; where the template's rows are a little shorter than the
// scale's pixels, not over the editor's frame.
void FilterDialog::MakeToolGroup() {
    const RECT tools = PlaceIn(patternFillPage, IDC_TOOL_PLACE);
    const RECT editor = PlaceIn(patternFillPage, IDC_EDITOR_PLACE);
    const int32_t top = std::max<int32_t>(tools.top, editor.top + GridLayoutAt(2, dpi).side);
    const uint32_t primary[3] = {IDB_PENCIL, IDB_DROPPER, IDB_ERASER};
    const uint32_t secondary[3] = {IDB_PENCIL_SELECTED, IDB_DROPPER_SELECTED, IDB_ERASER_SELECTED};
    toolGroup.reset(NewOrThrow<ToolGroup>(patternFillPage, tools.left, top, hDllInstance, primary,
                                          secondary, dpi));
}

void FilterDialog::MakeSplitColorBox() {
    const RECT box = PlaceIn(colorPickerPage, IDC_SPLIT_BOX_PLACE);
    const int32_t width = box.right - box.left;
    splitColorBox.reset(NewOrThrow<SplitColorBox>(colorPickerPage, box.left, box.top, width, width,
                                                  0, 0, 0, LineWidth(dpi)));
    splitColorBox->Bitmap().PaintInsetFrame(Line());
}

void FilterDialog::MakeColorPair() {
    const RECT pair = PlaceIn(patternFillPage, IDC_COLOR_PAIR_PLACE);
    colorPair.reset(NewOrThrow<ColorPairControl>(patternFillPage, hDllInstance, pair.left, pair.top,
                                                 Px(80), Px(40), Px(12), dpi));
    colorPair->SetRegistryKey("Tessellum", "1.x");
}

void FilterDialog::MakeForeBackBox() {
    // 28 pixels (at 96 DPI) left of the "Fore / Back" label, at its top.
    const RECT label = PlaceIn(colorPickerPage, IDC_FORE_BACK_PLACE);
    foreBackBox.reset(NewOrThrow<ForeBackBox>(colorPickerPage, label.left - Px(28), label.top,
                                              Px(22), Px(15), LineWidth(dpi)));
}

void FilterDialog::MakePickerBitmap() {
    const RECT picker = PlaceIn(colorPickerPage, IDC_PICKER_PLACE);
    const uint32_t width = picker.right - picker.left;
    pickerBitmap.reset(NewOrThrow<OffscreenBitmap>(colorPickerPage, width, width, true));
    pickerBitmap->PaintInsetFrame(Line());
}

// The panel at its place, its backdrop from under the "Fore / Back" label down to the
// page's foot, where the template's dialog units and the DPI's pixels do not quite agree.
void FilterDialog::PlaceSliders() {
    const RECT sliders = PlaceIn(colorPickerPage, IDC_SLIDER_PLACE);
    sliderPanel->SetPosition(sliders.left + Px(kSliderPlaceLeft), sliders.top + Px(kSliderPlaceTop),
                             Px(kSliderRowSpacing));
    const RECT label = PlaceIn(colorPickerPage, IDC_FORE_BACK_PLACE);
    const RECT page = PageRect();
    const int32_t top = std::max<int32_t>(sliderPanel->BackdropTop(), label.bottom);
    sliderPanel->SetBackdropTop(top);
    const int32_t room = (page.bottom - page.top) - top;
    sliderPanel->SetBackground(191, 191, 191, Px(kSliderBackdropWidth),
                               std::max<int32_t>(1, std::min(Px(kSliderBackdropHeight), room)));
}

// At 96 DPI 5 pixels inside the tab control and 25 from its top, under the tabs. At
// another scale the tab control's own display area, which follows its font: the tabs'
// height in pixels is not the 96-DPI one scaled, and the page needs every row of it.
// The dialog's swatches, 8 by 10 at 96 DPI, in the room from their place to the page's
// edges.
SwatchCells FilterDialog::SwatchCellsIn(const RECT& place) {
    const RECT page = PageRect();
    return SwatchCellsAt(8, 10, dpi, static_cast<uint32_t>(page.right - page.left - place.left),
                         static_cast<uint32_t>(page.bottom - page.top - place.top));
}

RECT FilterDialog::PageRect() {
    RECT tabs = {};
    GetClientRect(Item(IDC_TABS), &tabs);
    if (dpi == kBaseDpi) return {5, 25, tabs.right - 5, tabs.bottom - 5};
    SendMessageA(Item(IDC_TABS), TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&tabs));
    return tabs;
}

void FilterDialog::InitDialog(HWND window) {
    // 1. The dialog, its DPI and the place of the main preview.
    dialogWindow = window;
    dpi = WindowDpi(window);
    HWND placeholder = Item(IDC_PREVIEW_PLACE);
    const RECT place = OuterRect(dialogWindow, placeholder);
    previewLeft = place.left;
    previewTop = place.top;
    std::memset(&workPattern, 0, sizeof workPattern);

    // 2. The preview's bitmap and the small pictures of the slider panel.
    if (!Guarded([&] {
            previewBitmap.reset(NewOrThrow<OffscreenBitmap>(dialogWindow, place.right - place.left,
                                                            place.bottom - place.top, true));
            previewBitmap->PaintInsetFrame(Line());
            LoadSmallBitmaps(dialogWindow, dpi);
            smallBitmapsLoaded = 1;
        }))
        return AbortDialog();

    // 3. The two tabs. A tab that cannot be inserted ends the dialog once this is done.
    HWND tabs = Item(IDC_TABS);
    const char* tabNames[2] = {"Color Picker", "Pattern Fill"};
    for (int index = 0; index < 2; ++index) {
        TCITEMA item = {};
        item.mask = TCIF_TEXT | TCIF_IMAGE;
        item.iImage = -1;
        item.pszText = const_cast<char*>(tabNames[index]);
        if (SendMessageA(tabs, TCM_INSERTITEMA, index, reinterpret_cast<LPARAM>(&item)) == -1)
            AbortDialog();
    }

    // 4. The pages, children of the tab control.
    colorPickerPage = ScaledCreateDialog(hDllInstance, IDD_COLOR_PICKER, tabs, ColorPickerPageProc);
    patternFillPage = ScaledCreateDialog(hDllInstance, IDD_PATTERN_FILL, tabs, PatternFillPageProc);
    if (colorPickerPage == nullptr || patternFillPage == nullptr) return AbortDialog();
    if (dpi != kBaseDpi) {
        EnumChildWindows(colorPickerPage, FitLabel, 0);
        EnumChildWindows(patternFillPage, FitLabel, 0);
    }

    // 5 to 11: cursors, the list file and the controls of both pages.
    if (!Guarded([&] {
            cursors.reset(NewOrThrow<CursorSet>());
            cursors->Load(dpi);
        }) ||
        !Guarded([&] { listFile.reset(NewOrThrow<ListFile>()); }) ||
        !Guarded([&] { MakeToolGroup(); }) || !Guarded([&] { MakeSplitColorBox(); }) ||
        !Guarded([&] { MakeColorPair(); }) || !Guarded([&] { MakeForeBackBox(); }) ||
        !Guarded([&] { MakePickerBitmap(); }) ||
        // 12. The sliders; only their construction runs under the handler.
        !Guarded([&] {
            sliderPanel.reset(NewOrThrow<RgbSliderPanel>(colorPickerPage, kSliderBarHeight));
        }))
        return AbortDialog();
    if (dpi != kBaseDpi) sliderPanel->SetDpi(dpi);
    PlaceSliders();
    sliderPanel->SetEnabled(true, true);

    // 13 to 16: the editor, the library, the swatches and the web-safe palette.
    if (!Guarded([&] {
            const RECT editor = PlaceIn(patternFillPage, IDC_EDITOR_PLACE);
            gridEditor.reset(NewOrThrow<GridEditor>(patternFillPage, &currentPattern, editor.left,
                                                    editor.top, dpi));
            gridEditor->SetForeColor(0, 0, 0);
            gridEditor->SetBackColor(255, 255, 255);
        }) ||
        !Guarded([&] {
            ReadPluginPath(libraryPath);
            std::strncat(libraryPath, kLibraryFileName,
                         sizeof libraryPath - std::strlen(libraryPath) - 1);
            libraryFile.reset(NewOrThrow<LibraryFile>());
            try {
                library.reset(libraryFile->ReadLibrary(libraryPath));
            } catch (ErrorCode code) {
                // Short of memory the file is not the fault: end as cancelled, so that
                // the user's library is neither emptied nor put aside.
                if (code == ErrNoMemory) throw;
                library.reset(NewOrThrow<ColorLibrary>());
            }
        }) ||
        !Guarded([&] {
            const RECT swatches = PlaceIn(patternFillPage, IDC_SWATCH_PLACE);
            const SwatchCells cells = SwatchCellsIn(swatches);
            swatchGrid.reset(NewOrThrow<SwatchGrid>(patternFillPage, swatches.left, swatches.top,
                                                    cells.width, cells.height, cells.line));
            swatchGrid->SelectFirst();
        }) ||
        !Guarded([&] { webSafePalette.reset(NewOrThrow<Palette>(256)); }) ||
        webSafePalette->Count() != 256)
        return AbortDialog();

    // 17. The popup menus, outside any handler: a failure reaches the procedure's edge.
    menuBar = LoadMenuA(hDllInstance, MAKEINTRESOURCEA(IDR_MENUS));
    if (menuBar == nullptr) throw ErrNoMemory;
    for (HMENU& copy : menuCopies) copy = menuBar;
    listMenu = GetSubMenu(menuBar, 0);
    paletteMenu = GetSubMenu(menuBar, 1);
    gridMenu = GetSubMenu(menuBar, 2);
    built = true;

    // 18 to 24: the Pattern in force, the library shown, the host's colours, the size.
    SetGridSize(2, 0);
    FillWebSafeTable(webSafePalette->Colors());
    if (library->colorLists->Count() > 0) selectedList = 0;
    RefreshLists();
    RefreshPalettes();
    ApplyPalette();
    RefreshGridMenu();
    SetPickerColor(hostForeColor.red, hostForeColor.green, hostForeColor.blue);
    foreBackBox->SetFront(hostForeColor.red, hostForeColor.green, hostForeColor.blue);
    foreBackBox->SetBack(hostBackColor.red, hostBackColor.green, hostBackColor.blue);
    ApplySizing();
    SetActiveTab(activeTab);
    RefreshDialog();
}

void FilterDialog::ChangeDpi(int32_t newDpi) {
    if (!built) return;
    dpi = SaneDpi(newDpi);
    // Each control is made anew before the old one goes, and takes over what it showed.
    const RECT place = OuterRect(dialogWindow, Item(IDC_PREVIEW_PLACE));
    previewLeft = place.left;
    previewTop = place.top;
    previewBitmap.reset(NewOrThrow<OffscreenBitmap>(dialogWindow, place.right - place.left,
                                                    place.bottom - place.top, true));
    previewBitmap->PaintInsetFrame(Line());
    LoadSmallBitmaps(dialogWindow, dpi);
    cursors->Load(dpi);

    const uint32_t tool = toolGroup->Selected();
    MakeToolGroup();
    toolGroup->Select(tool);
    const uint8_t split[3] = {splitColorBox->red, splitColorBox->green, splitColorBox->blue};
    MakeSplitColorBox();
    splitColorBox->SetColor(split[0], split[1], split[2]);
    uint8_t fore[3], back[3];
    colorPair->GetFore(fore[0], fore[1], fore[2]);
    colorPair->GetBack(back[0], back[1], back[2]);
    MakeColorPair();
    colorPair->SetFore(fore[0], fore[1], fore[2]);
    colorPair->SetBack(back[0], back[1], back[2]);
    const uint8_t frontActive = foreBackBox->frontActive;
    foreBackBox->GetFront(fore[0], fore[1], fore[2]);
    foreBackBox->GetBack(back[0], back[1], back[2]);
    MakeForeBackBox();
    foreBackBox->SetFront(fore[0], fore[1], fore[2]);
    foreBackBox->SetBack(back[0], back[1], back[2]);
    foreBackBox->frontActive = frontActive;
    MakePickerBitmap();

    sliderPanel->SetDpi(dpi);
    PlaceSliders();
    const RECT editor = PlaceIn(patternFillPage, IDC_EDITOR_PLACE);
    gridEditor->SetPlace(editor.left, editor.top, dpi);
    const RECT swatches = PlaceIn(patternFillPage, IDC_SWATCH_PLACE);
    const SwatchCells cells = SwatchCellsIn(swatches);
    swatchGrid->SetPlace(swatches.left, swatches.top, cells.width, cells.height, cells.line);

    // Erased and painted anew, at the width the sizing asks for at this DPI.
    InvalidateRect(dialogWindow, nullptr, TRUE);
    ApplySizing();
}

Pattern* FilterDialog::CurrentPattern() {
    ResolveCurrentPattern();
    return currentPattern;
}

uint8_t FilterDialog::CurrentGridSize() {
    ResolveCurrentPattern();
    return currentGridSize;
}

void FilterDialog::RefreshDialog() {
    if (!built) return;  // a start that failed paints nothing
    DrawMainPreview();
    if (activeTab == 0)
        ShowColorPickerPage();
    else
        ShowPatternFillPage();
}

void FilterDialog::DrawMainPreview() {
    const Pattern* pattern = CurrentPattern();
    DrawTilePreview(previewBitmap->bits, previewBitmap->width, previewBitmap->height, pattern,
                    workGridSize, Line());
    previewBitmap->Blit(previewLeft, previewTop, 0, 0, previewBitmap->width, previewBitmap->height);
}

void FilterDialog::SetActiveTab(int32_t index) {
    activeTab = index;
    if (index == 0) LoadSlidersFromPattern();
    RefreshDialog();
}

void FilterDialog::ToggleSizing() {
    sizing = sizing ? 0 : 1;
    ApplySizing();
}

void FilterDialog::ApplySizing() {
    RECT outer = {}, client = {};
    GetWindowRect(dialogWindow, &outer);
    GetClientRect(dialogWindow, &client);
    HWND reference = Item(sizing ? IDC_TABS : IDC_SIZING);
    const int32_t width =
        SizedOuterWidth(ControlRight(dialogWindow, reference), outer.right - outer.left,
                        client.right - client.left, dpi);
    SetWindowPos(dialogWindow, nullptr, 0, 0, width, outer.bottom - outer.top,
                 SWP_NOMOVE | SWP_NOZORDER);
    RefreshDialog();
}

void FilterDialog::ShowListMenu() {
    RECT outer = {};
    GetWindowRect(dialogWindow, &outer);
    TrackPopupMenuEx(listMenu, TPM_CENTERALIGN, outer.left + 50, outer.top + 20, dialogWindow,
                     nullptr);
}

void FilterDialog::ShowGridSizeMenu() {
    RECT button = {};
    GetWindowRect(GetDlgItem(patternFillPage, IDC_GRID_BUTTON), &button);
    TrackPopupMenuEx(gridMenu, TPM_CENTERALIGN, button.left, button.top, patternFillPage, nullptr);
}

void FilterDialog::ShowPaletteMenu() {
    RECT button = {};
    GetWindowRect(GetDlgItem(patternFillPage, IDC_PALETTE_BUTTON), &button);
    TrackPopupMenuEx(paletteMenu, TPM_CENTERALIGN, button.left, button.top, patternFillPage,
                     nullptr);
}

void FilterDialog::ShowPage(HWND show, HWND hide) {
    const RECT page = PageRect();
    ShowWindow(hide, SW_HIDE);
    SetWindowPos(show, nullptr, page.left, page.top, page.right - page.left, page.bottom - page.top,
                 SWP_NOZORDER);
}

namespace {

// The main dialog's commands; false for an id it does not know.
bool MainCommand(FilterDialog& dialog, HWND window, int id, int code) {
    if (IsListCommand(id)) {
        dialog.SelectList(id);
        return true;
    }
    switch (id) {
        case IDOK: EndDialog(window, 1); return true;
        case IDCANCEL: EndDialog(window, 2); return true;
        case IDC_SIZING: dialog.ToggleSizing(); return true;
        case IDC_LIST_BUTTON: dialog.ShowListMenu(); return true;
        case IDC_COLOR_BOX:
            if (code == LBN_SELCHANGE) dialog.ColorSelectionChanged();
            return true;
        case IDC_NAME_COLOR: dialog.NameColor(); return true;
        case IDC_NEW_COLOR: dialog.NewColor(); return true;
        case IDM_NEW_LIST: dialog.NewList(); return true;
        case IDM_NAME_LIST: dialog.NameList(); return true;
        case IDM_DELETE_LIST: dialog.DeleteList(); return true;
        case IDM_IMPORT_LIST: dialog.ImportList(); return true;
        case IDM_EXPORT_LIST: dialog.ExportList(); return true;
        default: return false;
    }
}

INT_PTR MainDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    FilterDialog& dialog = *activeDialog;
    switch (message) {
        case WM_INITDIALOG: dialog.InitDialog(window); return 0;
        case WM_PAINT: dialog.RefreshDialog(); return 0;
        // Another display's scale: the window takes the rectangle offered, then every
        // self-drawn control the new DPI. (Per-monitor v2 moves and scales the template's
        // own controls before this arrives.)
        case WM_DPICHANGED: {
            const RECT* offered = reinterpret_cast<const RECT*>(lParam);
            if (offered)
                SetWindowPos(window, nullptr, offered->left, offered->top,
                             offered->right - offered->left, offered->bottom - offered->top,
                             SWP_NOZORDER | SWP_NOACTIVATE);
            dialog.ChangeDpi(HIWORD(wParam));
            return 0;
        }
        // Delete in the colour list box deletes the colour; every other key keeps its
        // usual effect there.
        case WM_VKEYTOITEM:
            if (LOWORD(wParam) != VK_DELETE) return -1;
            dialog.DeleteColor();
            return -2;
        case WM_NOTIFY: {
            const NMHDR* header = reinterpret_cast<const NMHDR*>(lParam);
            if (header->idFrom == IDC_TABS && header->code == static_cast<UINT>(TCN_SELCHANGE))
                dialog.SetActiveTab(
                    static_cast<int32_t>(SendMessageA(header->hwndFrom, TCM_GETCURSEL, 0, 0)));
            return 1;
        }
        case WM_COMMAND: return MainCommand(dialog, window, LOWORD(wParam), HIWORD(wParam)) ? 1 : 0;
        default: return 0;
    }
}

}  // namespace

// A failure while the dialog runs (a picture that cannot be drawn) ends here, with the
// message dropped: nothing may unwind into the dialog manager or the host.
INT_PTR CALLBACK MainDialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    try {
        return MainDispatch(window, message, wParam, lParam);
    } catch (...) {
        // A start that fails past its guarded steps ends as cancelled, never half-made.
        if (message == WM_INITDIALOG) EndDialog(window, 2);
        return message == WM_VKEYTOITEM ? -1 : 0;
    }
}

}  // namespace tessellum
