// The commands that make, name and delete colour lists and colours. They change the
// library in memory only; the file is written when the dialog ends.
#include <cstring>
#include <memory>

#include "color/allocate.h"
#include "dialog/dialog_logic.h"
#include "dialog/filter_dialog.h"
#include "dialog/name_prompt.h"
#include "host/dll_instance.h"
#include "resources/resource_ids.h"

namespace tessellum {

bool FilterDialog::AskForName(const PromptTexts& texts, char* buffer, const char* current) {
    const char* initial = texts.initial != nullptr ? texts.initial : current;
    std::memset(buffer, 0, kPromptBufferBytes);
    std::memcpy(buffer, initial, strnlen(initial, kPromptBufferBytes - 1));
    return PromptForName(dialogWindow, hDllInstance, buffer, kPromptSize, texts.prompt,
                         texts.caption);
}

bool FilterDialog::Confirm(const char* text, const char* caption) {
    return MessageBoxExA(dialogWindow, text, caption, MB_YESNO | MB_ICONQUESTION, 0) == IDYES;
}

ColorList* FilterDialog::ListInForce() const {
    return static_cast<ColorList*>(library->colorLists->ValueAt(selectedList));
}

void FilterDialog::NewList() {
    char name[kPromptBufferBytes];
    if (!AskForName(kNewListPrompt, name, nullptr)) return;
    try {
        std::unique_ptr<ColorList> list(NewOrThrow<ColorList>());
        CopyName(list->name, name);
        library->colorLists->Append(list.get());
        list.release();
    } catch (ErrorCode) {
        return AbortDialog();  // short of memory: the dialog ends as cancelled
    }
    selectedList = library->colorLists->Count() - 1;
    NewColor();  // asks at once for the first colour; Cancel leaves the list empty
    RefreshLists();
}

void FilterDialog::NameList() {
    if (library->colorLists->Head() == nullptr) return;
    ColorList* list = ListInForce();
    char name[kPromptBufferBytes];
    if (!AskForName(kNameListPrompt, name, list->name)) return;
    CopyName(list->name, name);
    SetWindowTextA(Item(IDC_LIST_BUTTON), list->name);
    RefreshLists();
}

void FilterDialog::DeleteList() {
    if (library->colorLists->Head() == nullptr) return;
    if (!Confirm("Delete this list?", "Confirm Delete")) return;
    ColorList* list = ListInForce();
    library->colorLists->RemoveAt(selectedList);
    selectedList = ListAfterDelete(library->colorLists->Count());
    RefreshLists();
    // With no list left the colour box selects nothing and nothing else moves the Pattern
    // in force: resolve it (and show it) before the list it may point into is freed.
    ColorSelectionChanged();
    delete list;
}

void FilterDialog::NewColor() {
    if (library->colorLists->Head() == nullptr) return NewList();
    char name[kPromptBufferBytes];
    if (!AskForName(kNewColorPrompt, name, nullptr)) return;
    try {
        // A new colour is black at 2 x 2: nothing of the Pattern in force is copied.
        std::unique_ptr<ColorEntry> entry(NewColorEntry());
        CopyName(entry->name, name);
        ListInForce()->entries.Append(entry.get());
        entry.release();
    } catch (ErrorCode) {
        return AbortDialog();
    }
    RefreshColorBox();  // selects row 0, not the new colour at the end
}

void FilterDialog::NameColor() {
    HWND box = Item(IDC_COLOR_BOX);
    const LRESULT row = SendMessageA(box, LB_GETCURSEL, 0, 0);
    int renamed = -1;
    if (row == LB_ERR) {
        SendMessageA(dialogWindow, WM_COMMAND, MAKEWPARAM(IDC_NEW_COLOR, BN_CLICKED), 0);
    } else {
        char text[kPromptBufferBytes] = {};
        SendMessageA(box, LB_GETTEXT, row, reinterpret_cast<LPARAM>(text));
        char name[kPromptBufferBytes];
        if (AskForName(kNameColorPrompt, name, text)) {
            ColorEntry* entry =
                reinterpret_cast<ColorEntry*>(SendMessageA(box, LB_GETITEMDATA, row, 0));
            CopyName(entry->name, name);
            SendMessageA(box, LB_DELETESTRING, row, 0);
            const LRESULT inserted =
                SendMessageA(box, LB_INSERTSTRING, row, reinterpret_cast<LPARAM>(entry->name));
            SendMessageA(box, LB_SETITEMDATA, inserted, reinterpret_cast<LPARAM>(entry));
            renamed = static_cast<int>(inserted);
        }
    }
    RefreshColorBox();
    SelectColor(RowAfterNameColor(renamed));
}

void FilterDialog::DeleteColor() {
    const LRESULT row = SendMessageA(Item(IDC_COLOR_BOX), LB_GETCURSEL, 0, 0);
    if (row == LB_ERR || selectedList < 0) return;
    if (!Confirm("Delete this color?", "Confirm Delete")) return;
    ColorList* list = ListInForce();
    ColorEntry* entry = static_cast<ColorEntry*>(list->entries.ValueAt(static_cast<int>(row)));
    list->entries.RemoveAt(static_cast<int>(row));
    RefreshColorBox();
    SelectColor(RowAfterDeleteColor(static_cast<int>(row)));
    // Freed only now: until the selection changed the Pattern in force pointed into it.
    delete entry;
}

}  // namespace tessellum
