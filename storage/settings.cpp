#include "storage/settings.h"

#include <windows.h>

#include <cstring>

#include "storage/registry_key.h"

namespace tessellum {
namespace {

constexpr DWORD kSizingSize = 5;  // byte 0 is the flag; the other four mean nothing

}  // namespace

bool ReadSizing() {
    HKEY key = OpenSettingsKey(HKEY_CURRENT_USER, kSettingsKeyPath);
    if (!key) return true;
    // An empty value leaves byte 0 as it starts, which reads as the default.
    BYTE bytes[kSizingSize] = {1, 0, 0, 0, 0};
    DWORD size = sizeof bytes;
    const LONG status = RegQueryValueExA(key, "Sizing", nullptr, nullptr, bytes, &size);
    RegCloseKey(key);
    if (status != ERROR_SUCCESS) return true;
    return bytes[0] != 0;
}

void WriteSizing(bool sizing) {
    HKEY key = OpenSettingsKey(HKEY_CURRENT_USER, kSettingsKeyPath);
    if (!key) return;
    const BYTE bytes[kSizingSize] = {static_cast<BYTE>(sizing ? 1 : 0), 0, 0, 0, 0};
    RegSetValueExA(key, "Sizing", 0, REG_BINARY, bytes, sizeof bytes);
    RegCloseKey(key);
}

void ReadPluginPath(char* buffer) {
    bool ok = false;
    if (HKEY key = OpenSettingsKey(HKEY_LOCAL_MACHINE, kSettingsKeyPath)) {
        DWORD size = kPluginPathSize;
        ok = RegQueryValueExA(key, "path", nullptr, nullptr, reinterpret_cast<BYTE*>(buffer),
                              &size) == ERROR_SUCCESS;
        RegCloseKey(key);
        // Only a string counts: it must end within what was read, and say something.
        if (ok) {
            const void* end = size > 0 ? std::memchr(buffer, '\0', size) : nullptr;
            if (!end && size < kPluginPathSize) {
                buffer[size] = '\0';  // stored without its terminator
                end = buffer + size;
            }
            ok = end && buffer[0] != '\0';
        }
    }
    if (!ok) std::memcpy(buffer, kDefaultPluginPath, sizeof kDefaultPluginPath);
}

}  // namespace tessellum
