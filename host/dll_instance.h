// The plug-in's module handle: the source of every dialog, menu, bitmap and cursor.
#pragma once

#include <windows.h>

namespace tessellum {

extern HINSTANCE hDllInstance;

}  // namespace tessellum
