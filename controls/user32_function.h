// A function of user32 looked up at run time: the newer ones (display scale) do not exist
// on every Windows a host runs on, and a plug-in or host that imported them would not load
// there. Null where the system lacks it.
#pragma once

#include <windows.h>

namespace tessellum {

template <typename Function>
Function User32Function(const char* name) {
    HMODULE user32 = GetModuleHandleA("user32.dll");
    return user32
               ? reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(user32, name)))
               : nullptr;
}

}  // namespace tessellum
