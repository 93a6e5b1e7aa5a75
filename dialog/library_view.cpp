// The library as the dialog shows it: the list in force on its button and its colours in
// the list box, the lists and palettes in their popups, and the palette in the swatches.
#include <cstring>

#include "dialog/dialog_logic.h"
#include "dialog/filter_dialog.h"
#include "resources/resource_ids.h"

namespace tessellum {

void FilterDialog::SelectList(int id) {
    selectedList = id - kListCommandFirst;
    RefreshLists();
}

void FilterDialog::RefreshLists() {
    listMenu = FreshSubmenu(0);
    const MenuItems items = LimitMenuItems(library->colorLists->Count(), selectedList);
    selectedList = items.selected;
    char text[300];
    PtrNode* node = library->colorLists->Head();
    for (int i = 0; i < items.count; ++i, node = node->next) {
        FormatListItemText(text, sizeof text, i, static_cast<ColorList*>(node->value)->name);
        AppendMenuA(listMenu, MF_STRING, kListCommandFirst + i, text);
    }
    const char* name =
        selectedList < 0
            ? "none"
            : static_cast<ColorList*>(library->colorLists->ValueAt(selectedList))->name;
    SetWindowTextA(Item(IDC_LIST_BUTTON), name);
    RefreshColorBox();
}

void FilterDialog::RefreshColorBox() {
    HWND box = Item(IDC_COLOR_BOX);
    SendMessageA(box, LB_RESETCONTENT, 0, 0);
    if (library->colorLists->Head() == nullptr) {
        selectedList = -1;
        return;
    }
    const ColorList* list = static_cast<ColorList*>(library->colorLists->ValueAt(selectedList));
    int index = 0;
    for (PtrNode* node = list->entries.Head(); node != nullptr; node = node->next, ++index) {
        ColorEntry* entry = static_cast<ColorEntry*>(node->value);
        const LRESULT row =
            SendMessageA(box, LB_INSERTSTRING, index, reinterpret_cast<LPARAM>(entry->name));
        SendMessageA(box, LB_SETITEMDATA, row, reinterpret_cast<LPARAM>(entry));
    }
    SelectColor(0);
}

void FilterDialog::SelectColor(int row) {
    SendMessageA(Item(IDC_COLOR_BOX), LB_SETCURSEL, row, 0);
    ColorSelectionChanged();
}

void FilterDialog::ColorSelectionChanged() {
    ResolveCurrentPattern();
    if (ColorEntry* entry = SelectedEntry()) SetGridSize(entry->gridSize, 0);
    if (sliderPanel->IsEnabled()) LoadSlidersFromPattern();
    RefreshDialog();
}

void FilterDialog::ChoosePalette(int id) {
    selectedPalette = id == IDM_WEB_SAFE_PALETTE ? -1 : id - kPaletteCommandFirst;
    ShowPaletteName();
    ApplyPalette();
}

void FilterDialog::RefreshPalettes() {
    paletteMenu = FreshSubmenu(1);
    const MenuItems items = LimitMenuItems(library->palettes->Count(), selectedPalette);
    selectedPalette = items.selected;
    PtrNode* node = library->palettes->Head();
    for (int i = 0; i < items.count; ++i, node = node->next)
        AppendMenuA(paletteMenu, MF_STRING, kPaletteCommandFirst + i,
                    static_cast<NamedPalette*>(node->value)->name);
    ShowPaletteName();
    ApplyPalette();
}

void FilterDialog::ShowPaletteName() {
    const char* name =
        selectedPalette < 0
            ? "Web Safe Palette"
            : static_cast<NamedPalette*>(library->palettes->ValueAt(selectedPalette))->name;
    SetWindowTextA(GetDlgItem(patternFillPage, IDC_PALETTE_BUTTON), name);
    EnableWindow(GetDlgItem(patternFillPage, IDC_UNLOAD_PALETTE), selectedPalette >= 0);
}

void FilterDialog::ApplyPalette() {
    const Palette* palette =
        selectedPalette < 0
            ? webSafePalette.get()
            : &static_cast<NamedPalette*>(library->palettes->ValueAt(selectedPalette))->palette;
    swatchGrid->SetPalette(palette);
    swatchGrid->Paint();
    swatchGrid->Draw();
}

}  // namespace tessellum
