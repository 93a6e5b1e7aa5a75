// Load and Unload on the Pattern Fill page: a colour table file becomes a palette of the
// library, shown in the swatches and kept in the library file until it is unloaded.
#include <cstring>
#include <memory>

#include "color/allocate.h"
#include "dialog/file_dialogs.h"
#include "dialog/filter_dialog.h"
#include "storage/color_table.h"

namespace tessellum {

// Asks for a colour table and reads it: a new palette of 256 colours owned by the caller,
// or null when the user cancelled or the file could not be loaded (then after a message).
// `name`, if not null, takes the file's name with its extension, up to kPathBytes.
Palette* LoadColorTable(HWND owner, char* name) {
    char path[kPathBytes] = "*.ACT";
    char fileTitle[kPathBytes] = {};
    OPENFILENAMEA record = FileDialogRecord(
        owner, "ACT files\0*.act\0", path, "Load Palette",
        OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY, "ACT");
    record.lpstrFileTitle = fileTitle;
    record.nMaxFileTitle = kPathBytes;
    if (!GetOpenFileNameA(&record)) return nullptr;
    try {
        Palette* palette = ReadColorTable(path);
        if (name != nullptr) std::strcpy(name, FileNamePart(path));
        return palette;
    } catch (ErrorCode) {
        MessageBoxA(GetActiveWindow(), "Could Not Load Palette", "ALERT", 0);
        return nullptr;
    }
}

void FilterDialog::LoadPalette() {
    char name[kPathBytes] = {};
    std::unique_ptr<Palette> loaded(LoadColorTable(dialogWindow, name));
    if (loaded == nullptr) return;
    const int index = library->palettes->Count();
    try {
        std::unique_ptr<NamedPalette> named(NewOrThrow<NamedPalette>());
        named->palette.Assign(*loaded);
        if (named->palette.Count() != loaded->Count()) throw ErrNoMemory;
        // Cut to 250 characters, inside the extension if it must.
        name[kPaletteNameLimit] = '\0';
        CopyName(named->name, name);
        library->palettes->Append(named.get());
        named.release();
    } catch (ErrorCode) {
        return AbortDialog();  // short of memory: the dialog ends as cancelled
    }
    selectedPalette = index;
    loaded.reset();
    RefreshPalettes();
    ApplyPalette();
}

void FilterDialog::UnloadPalette() {
    if (selectedPalette < 0 || library->palettes->Head() == nullptr) return;
    NamedPalette* removed = nullptr;
    if (Confirm("Unload this palette?", "Confirm Unload")) {
        removed = static_cast<NamedPalette*>(library->palettes->ValueAt(selectedPalette));
        library->palettes->RemoveAt(selectedPalette);
        selectedPalette = -1;  // the web-safe palette is in force again
    }
    RefreshPalettes();
    // Freed only now, when the swatches show another palette. The colours a pattern took
    // from it stay in the pattern.
    delete removed;
}

}  // namespace tessellum
