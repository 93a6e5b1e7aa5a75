// What the main dialog decides, apart from how it shows it: which Pattern is in force,
// the limit of the run-time menus, where the selection goes after each command, the
// texts of the name prompts, the state of the Color Picker page, the grid size a menu
// command stands for, the texts of the grid button and of the list items, and the width
// of the collapsed dialog. Portable and free of any platform call, so that the
// decisions are tested natively. The Win32 side (dialog/filter_dialog.h) provides:
//
//   the selected row of the colour list box and the entry behind it (SelectedEntry)
//   the outer and client widths of the dialog and the right edge of a control
//   menus to load and append to, the texts of buttons, and the paint of each page
//   the name prompt, the confirmations and the file dialogs of the commands
#pragma once

#include <cstdint>
#include <cstdio>

#include "color/color_library.h"
#include "color/pattern.h"
#include "controls/dpi_scale.h"

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

// After a command the colour list box is rebuilt and row 0 selected, except where the
// command selects a row of its own. The list in force after DeleteList is the first
// (not a neighbour), after an import it is the one before, or the first if there was none.
constexpr int ListAfterDelete(int remaining) {
    return remaining > 0 ? 0 : -1;
}
constexpr int ListAfterImport(int selected) {
    return selected < 0 ? 0 : selected;
}
// The row above a deleted colour, or the first.
constexpr int RowAfterDeleteColor(int deletedRow) {
    return deletedRow > 0 ? deletedRow - 1 : 0;
}
// The row the new name landed in, or the first when the prompt was cancelled (-1).
constexpr int RowAfterNameColor(int renamedRow) {
    return renamedRow >= 0 ? renamedRow : 0;
}

// What the name prompt of a command shows. Every prompt gets a zeroed buffer of a name's
// size but takes at most 253 characters (the edit field's limit is size - 1), so that a
// typed name always fits the files' length byte with room to spare.
constexpr int kPromptBufferBytes = 256;
constexpr int kPromptSize = 254;
struct PromptTexts {
    const char* caption;
    const char* prompt;
    const char* initial;  // null: the name being changed
};
constexpr PromptTexts kNewListPrompt = {"Create new color list", "Enter new color list name",
                                        "New List"};
constexpr PromptTexts kNewColorPrompt = {"Create a new color", "Enter new color name", "New Color"};
constexpr PromptTexts kNameListPrompt = {"Name List", "Enter new name", nullptr};
constexpr PromptTexts kNameColorPrompt = {"Name Color", "Enter new name", nullptr};

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

// "4x4" for 4: the text of the grid button, which shows the size in force: a stored
// byte outside 2..8 (a damaged or hand-made file) shows the size the editor and the
// fill use. The buffer holds at least 8 bytes.
inline void FormatGridSizeText(char* buffer, size_t size, uint8_t gridSize) {
    const int inForce = EffectiveGridSize(gridSize);
    std::snprintf(buffer, size, "%dx%d", inForce, inForce);
}

// "&1 Spring" for the first list: its menu item, numbered from 1 with that mnemonic.
// The buffer holds at least 300 bytes.
inline void FormatListItemText(char* buffer, size_t size, int index, const char* name) {
    std::snprintf(buffer, size, "&%d %s", index + 1, name);
}

// The outer width of the dialog that ends 7 pixels (at 96 DPI, scaled to `dpi`) right of
// the reference control (the tab control expanded, the "-->" button collapsed), frame
// included.
constexpr int32_t SizedOuterWidth(int32_t referenceRight, int32_t outerWidth, int32_t clientWidth,
                                  int32_t dpi = kBaseDpi) {
    return referenceRight + ScaleToDpi(7, dpi) + (outerWidth - clientWidth);
}

}  // namespace tessellum
