// One key under HKEY_CURRENT_USER holding 32-bit values. The key is open only for the
// length of one value access; between calls the object holds no handle.
#pragma once

#include <windows.h>

#include <cstdint>

namespace tessellum {

class RegistryKey {
public:
    static constexpr size_t kPathSize = 1000;

    RegistryKey() : path{}, key(nullptr), opened(0) {}
    ~RegistryKey() { Close(); }
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;

    // Keeps at most 999 characters and always a terminator.
    void SetPath(const char* keyPath);

    // Reads the value's bytes (at most 4; a longer value counts as missing) over
    // `value`, whatever its type. On false `value` is unchanged.
    bool ReadValue(const char* name, uint32_t* value);

    // Stores the four bytes, low byte first, with type 0 (REG_NONE).
    bool WriteValue(const char* name, uint32_t value);

    char path[kPathSize];
    HKEY key;
    uint8_t opened;

private:
    bool Open();  // false if already open or the key cannot be opened or made
    void Close();
};

// Opens (making it if missing) `path` under `root` for all access, as every settings
// access does. Gives null on failure.
HKEY OpenSettingsKey(HKEY root, const char* path);

}  // namespace tessellum
