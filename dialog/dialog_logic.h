// What the main dialog decides, apart from how it shows it: which Pattern is in force,
// the limit of the run-time menus, the state of the Color Picker page, the grid size a
// menu command stands for, the texts of the grid button and of the list items, and the
// width of the collapsed dialog. Portable and free of any platform call, so that the
// decisions are tested natively. The Win32 side (dialog/filter_dialog.h) provides:
//
//   the selected row of the colour list box and the entry behind it (SelectedEntry)
//   the outer and client widths of the dialog and the right edge of a control
//   menus to load and append to, the texts of buttons, and the paint of each page
#pragma once

#include <cstdint>
#include <cstdio>

#include "color/color_library.h"
#include "color/pattern.h"

namespace tessellum {

// The menus offer at most this many lists or palettes; the library may hold more.
constexpr int kMenuItemLimit = 50;
// The dispatch takes one id more than the menu can hold.
constexpr int kListCommandFirst = 3000;
constexpr int kListCommandLast = kListCommandFirst + kMenuItemLimit;
constexpr int kPaletteCommandFirst = 3500;
constexpr int kPaletteCommandLast = kPaletteCommandFirst + kMenuItemLimit;

constexpr bool IsListCommand(int id) {
    return id >= kListCommandFirst && id <= kListCommandLast;
}
constexpr bool IsPaletteCommand(int id) {
    return id >= kPaletteCommandFirst && id <= kPaletteCommandLast;
}

// How many items a refreshed menu shows and which index is in force afterwards: over
// the limit the last item shown is forced (so a list behind it cannot be reached), with
// none the index is -1, otherwise it stays as it was.
struct MenuItems {
    int count;
    int selected;
};
constexpr MenuItems LimitMenuItems(int total, int selected) {
    if (total > kMenuItemLimit) return {kMenuItemLimit, kMenuItemLimit - 1};
    if (total == 0) return {0, -1};
    return {total, selected};
}

// The GridSize of a GRIDSIZE command, or 0 for any other id (there is no 7 x 7 item).
constexpr uint8_t GridSizeOfCommand(int id) {
    switch (id) {
        case 40005: return 2;
        case 40006: return 3;
        case 40007: return 4;
        case 40008: return 5;
        case 40009: return 6;
        case 40011: return 8;
        default: return 0;
    }
}

// The Pattern in force: the selected colour's cells and size, or the dialog's own.
struct PatternInForce {
    Pattern* pattern;
    uint8_t gridSize;
};
inline PatternInForce ResolvePattern(ColorEntry* selected, Pattern* workPattern,
                                     uint8_t workGridSize) {
    if (selected != nullptr) return {&selected->cells, selected->gridSize};
    return {workPattern, workGridSize};
}

// The Color Picker page works on 2x2 tiles only; any other size shows Convert instead.
enum class PickerState { kSliders, kConvert };
constexpr PickerState PickerStateFor(uint8_t workGridSize) {
    return workGridSize == 2 ? PickerState::kSliders : PickerState::kConvert;
}

// "4x4" for 4: the text of the grid button. The buffer holds at least 8 bytes.
inline void FormatGridSizeText(char* buffer, size_t size, uint8_t gridSize) {
    std::snprintf(buffer, size, "%dx%d", gridSize, gridSize);
}

// "&1 Spring" for the first list: its menu item, numbered from 1 with that mnemonic.
// The buffer holds at least 300 bytes.
inline void FormatListItemText(char* buffer, size_t size, int index, const char* name) {
    std::snprintf(buffer, size, "&%d %s", index + 1, name);
}

// The outer width of the dialog that ends 7 pixels right of the reference control (the
// tab control expanded, the "-->" button collapsed), frame included.
constexpr int32_t SizedOuterWidth(int32_t referenceRight, int32_t outerWidth, int32_t clientWidth) {
    return referenceRight + 7 + (outerWidth - clientWidth);
}

}  // namespace tessellum
