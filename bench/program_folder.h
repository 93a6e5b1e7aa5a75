// Where a benchmark program lies: the built plug-in is found from there.
#pragma once

#include <windows.h>

#include <string>

namespace tessellum::bench {

// The folder of this program, with its trailing separator.
inline std::string FolderOfThisProgram() {
    char path[MAX_PATH];
    const DWORD length = GetModuleFileNameA(nullptr, path, MAX_PATH);
    std::string folder(path, length);
    return folder.erase(folder.find_last_of("\\/") + 1);
}

}  // namespace tessellum::bench
