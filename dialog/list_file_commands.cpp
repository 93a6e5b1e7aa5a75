// Import List and Export List: one colour list moved between libraries as a file. Neither
// says anything on failure: the file dialog closes and the library looks as before.
#include <cstdio>
#include <memory>

#include "dialog/dialog_logic.h"
#include "dialog/file_dialogs.h"
#include "dialog/filter_dialog.h"

namespace tessellum {
namespace {

constexpr char kListFilter[] = "Tessellum List files\0*.TSL\0";
constexpr DWORD kCommonFlags = OFN_EXPLORER | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY;

}  // namespace

void FilterDialog::ImportList() {
    char path[kPathBytes] = "*.TSL";
    OPENFILENAMEA record = FileDialogRecord(dialogWindow, kListFilter, path, "Import List",
                                            kCommonFlags | OFN_FILEMUSTEXIST, "TSL");
    if (!GetOpenFileNameA(&record)) return;
    std::unique_ptr<ColorList> list;
    try {
        list.reset(listFile->ReadList(path));
        library->colorLists->Append(list.get());
    } catch (ErrorCode) {
        return;  // a refused file or no memory: the library is unchanged
    }
    list.release();
    // The imported list keeps its file's name and is not selected, unless it is the only one.
    selectedList = ListAfterImport(selectedList);
    RefreshLists();
}

void FilterDialog::ExportList() {
    if (library->colorLists->Head() == nullptr) return;
    const ColorList* list = ListInForce();
    char path[kPathBytes] = {};
    // A name of 255 characters and ".TSL" fill the buffer exactly.
    std::snprintf(path, sizeof path, "%s.TSL", list->name);
    OPENFILENAMEA record = FileDialogRecord(dialogWindow, kListFilter, path, "Export List",
                                            kCommonFlags | OFN_OVERWRITEPROMPT, "TSL");
    if (!GetSaveFileNameA(&record)) return;
    try {
        listFile->WriteList(list, path);
    } catch (ErrorCode) {
        // The file at the path is as it was; the list file is closed for the next use.
    }
}

}  // namespace tessellum
