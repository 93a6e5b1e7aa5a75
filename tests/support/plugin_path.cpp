#include "tests/support/plugin_path.h"

#include <windows.h>

namespace tessellum::test {

std::string BuildDirectory() {
    char path[MAX_PATH];
    const DWORD length = GetModuleFileNameA(nullptr, path, MAX_PATH);
    std::string folder(path, length);
    return folder.substr(0, folder.find_last_of("\\/") + 1);
}

std::string PluginPath() {
    return BuildDirectory() + "Tessellum.8bf";
}

}  // namespace tessellum::test
