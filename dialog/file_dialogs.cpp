#include "dialog/file_dialogs.h"

namespace tessellum {

OPENFILENAMEA FileDialogRecord(HWND owner, const char* filter, char* path, const char* title,
                               DWORD flags, const char* defaultExtension) {
    OPENFILENAMEA record = {};
    record.lStructSize = kOpenFileNameSize;
    record.hwndOwner = owner;
    record.lpstrFilter = filter;
    record.nMaxCustFilter = 60;
    record.nFilterIndex = 1;
    record.lpstrFile = path;
    record.nMaxFile = kPathBytes;
    record.lpstrTitle = title;
    record.Flags = flags;
    record.lpstrDefExt = defaultExtension;
    return record;
}

}  // namespace tessellum
