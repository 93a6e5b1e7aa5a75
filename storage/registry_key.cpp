#include "storage/registry_key.h"

#include <cstring>

namespace tessellum {

HKEY OpenSettingsKey(HKEY root, const char* path) {
    HKEY key = nullptr;
    DWORD disposition = 0;
    char keyClass[] = "blah";
    if (RegCreateKeyExA(root, path, 0, keyClass, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr,
                        &key, &disposition) != ERROR_SUCCESS) {
        return nullptr;
    }
    return key;
}

void RegistryKey::SetPath(const char* keyPath) {
    std::strncpy(path, keyPath, kPathSize - 1);
    path[kPathSize - 1] = '\0';
}

bool RegistryKey::Open() {
    if (opened) return false;
    key = OpenSettingsKey(HKEY_CURRENT_USER, path);
    if (!key) return false;
    opened = 1;
    return true;
}

void RegistryKey::Close() {
    if (!opened) return;
    RegCloseKey(key);
    key = nullptr;
    opened = 0;
}

bool RegistryKey::ReadValue(const char* name, uint32_t* value) {
    if (!Open()) return false;
    // Read into a copy: the platform may leave a buffer half written when it refuses a
    // value that is too long, and the caller's value must then stay as it was.
    uint32_t read = *value;
    DWORD size = sizeof read;
    const bool ok = RegQueryValueExA(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(&read),
                                     &size) == ERROR_SUCCESS;
    Close();
    if (ok) *value = read;
    return ok;
}

bool RegistryKey::WriteValue(const char* name, uint32_t value) {
    if (!Open()) return false;
    const BYTE bytes[4] = {static_cast<BYTE>(value), static_cast<BYTE>(value >> 8),
                           static_cast<BYTE>(value >> 16), static_cast<BYTE>(value >> 24)};
    const bool ok = RegSetValueExA(key, name, 0, REG_NONE, bytes, sizeof bytes) == ERROR_SUCCESS;
    Close();
    return ok;
}

}  // namespace tessellum
