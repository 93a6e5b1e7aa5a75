#include "tests/support/plugin_path.h"

#include <windows.h>

namespace tessellum::test {

std::string BuildDirectory() {
    char path[MAX_PATH];
    const std::string program(path, GetModuleFileNameA(nullptr, path, MAX_PATH));
    return program.substr(0, program.find_last_of("\\/") + 1);
}

std::string PluginPath() {
    return BuildDirectory() + "Tessellum.8bf";
}

}  // namespace tessellum::test
