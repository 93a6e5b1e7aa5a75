// The common open and save dialogs as the list and palette commands fill them in.
#pragma once

#include <windows.h>
#include <commdlg.h>

#include <cstddef>

namespace tessellum {

// The record's size in the form that every version of the common dialogs accepts, the
// one without the fields added for Windows 2000: 76 bytes on x86.
constexpr DWORD kOpenFileNameSize = offsetof(OPENFILENAMEA, lpTemplateName) + sizeof(LPCSTR);
static_assert(sizeof(void*) != 4 || kOpenFileNameSize == 76, "the x86 record is 76 bytes");
static_assert(sizeof(void*) != 8 || kOpenFileNameSize == 136, "the x64 record is 136 bytes");

// Capacity of a path buffer of the file dialogs, terminator included.
constexpr DWORD kPathBytes = 260;

// A record with the fields the three dialogs share: the owner, one filter pair (two
// terminated strings and an empty one), the path buffer of kPathBytes with its initial
// text, filter 1, the title, the flags and the default extension. The other fields are
// zero, the custom filter included.
OPENFILENAMEA FileDialogRecord(HWND owner, const char* filter, char* path, const char* title,
                               DWORD flags, const char* defaultExtension);

}  // namespace tessellum
