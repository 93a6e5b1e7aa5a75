#include "dialog/file_dialogs.h"

namespace tessellum {

OPENFILENAMEA FileDialogRecord(HWND owner, const char* filter, char* path, const char* title,
                               DWORD flags, const char* defaultExtension) {
    OPENFILENAMEA record = {};
    record.lStructSize = kOpenFileNameSize;
    record.hwndOwner = owner;
    record.lpstrFilter = filter;
    // No custom filter: a user's own pattern is never kept, and an empty custom filter
    // buffer is read past its end by some file dialogs (Wine's among them), which copy it
    // into a block sized to the strings they find and then read that block as a string.
    record.nFilterIndex = 1;
    record.lpstrFile = path;
    record.nMaxFile = kPathBytes;
    record.lpstrTitle = title;
    record.Flags = flags;
    record.lpstrDefExt = defaultExtension;
    return record;
}

}  // namespace tessellum
