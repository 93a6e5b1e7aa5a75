#include "storage/custom_colors.h"

#include <cstdio>

namespace tessellum {
namespace {

void ValueName(int index, char (&name)[32]) {
    std::snprintf(name, sizeof name, "Custom Color %d", index);
}

}  // namespace

void LoadCustomColors(RegistryKey& key, COLORREF (&colors)[kCustomColorCount]) {
    uint32_t running = 0;  // not reset between entries
    for (int i = 0; i < kCustomColorCount; ++i) {
        char name[32];
        ValueName(i, name);
        key.ReadValue(name, &running);
        colors[i] = running;
    }
}

void SaveCustomColors(RegistryKey& key, const COLORREF (&colors)[kCustomColorCount]) {
    for (int i = 0; i < kCustomColorCount; ++i) {
        char name[32];
        ValueName(i, name);
        key.WriteValue(name, colors[i]);
    }
}

}  // namespace tessellum
