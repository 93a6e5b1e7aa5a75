// The settings against the real registry of the test prefix, in one run: no key at all,
// what the plug-in writes, values of the wrong size or type and gaps as damage or another
// program leaves them, and a machine-wide key that cannot be opened.
#include "storage/settings.h"

#include <windows.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <tuple>
#include <vector>

#include "storage/custom_colors.h"
#include "storage/registry_key.h"

namespace tessellum {
namespace {

const char kKey[] = "Software\\Quarry\\Tessellum\\1.x";
const char kDefault[] = "C:\\PHOTOSHP\\PLUGINS\\";
using Bytes = std::vector<BYTE>;

// Sets a value with any type and bytes, as another program (or damage) could.
void Put(HKEY root, const std::string& name, DWORD type, const Bytes& bytes) {
    ASSERT_EQ(RegSetKeyValueA(root, kKey, name.c_str(), type, bytes.data(), DWORD(bytes.size())),
              ERROR_SUCCESS);
}

// The user's value as stored: its type and bytes.
std::pair<DWORD, Bytes> Get(const std::string& name) {
    BYTE buffer[64];
    DWORD type = 99, size = sizeof buffer;
    RegGetValueA(HKEY_CURRENT_USER, kKey, name.c_str(), RRF_RT_ANY, &type, buffer, &size);
    return {type, Bytes(buffer, buffer + (type == 99 ? 0 : size))};
}

Bytes LowFirst(uint32_t value) {
    return {BYTE(value), BYTE(value >> 8), BYTE(value >> 16), BYTE(value >> 24)};
}

std::string Name(int i) {
    return "Custom Color " + std::to_string(i);
}

std::string PluginPath() {
    char path[kPluginPathSize];
    std::memset(path, 'x', sizeof path);
    ReadPluginPath(path);
    return path;
}

void DeleteKeys() {
    RegDeleteTreeA(HKEY_CURRENT_USER, "Software\\Quarry");
    RegDeleteTreeA(HKEY_LOCAL_MACHINE, "Software\\Quarry");
}

TEST(Settings, FromNoKeyThroughDamage) {
    DeleteKeys();
    RegistryKey key;
    key.SetPath(kKey);
    COLORREF colors[kCustomColorCount];
    std::memset(colors, 0x5A, sizeof colors);
    LoadCustomColors(key, colors);  // with no key every read gives its default
    for (COLORREF c : colors) EXPECT_EQ(c, 0u);
    EXPECT_TRUE(ReadSizing());
    EXPECT_EQ(PluginPath(), kDefault);

    // "Sizing" is five binary bytes with the flag in byte 0, read whatever its type.
    WriteSizing(false);
    EXPECT_EQ(Get("Sizing"), std::make_pair(DWORD(REG_BINARY), Bytes{0, 0, 0, 0, 0}));
    EXPECT_FALSE(ReadSizing());
    // Any non-zero flag; one byte holds it; too long or empty is the default.
    const std::tuple<DWORD, Bytes, bool> sizings[] = {{REG_DWORD, {2, 0, 0, 0}, true},
                                                      {REG_NONE, {0}, false},
                                                      {REG_BINARY, Bytes(6, 0), true},
                                                      {REG_BINARY, {}, true}};
    for (const auto& [type, bytes, read] : sizings) {
        Put(HKEY_CURRENT_USER, "Sizing", type, bytes);
        EXPECT_EQ(ReadSizing(), read) << bytes.size() << " bytes of type " << type;
    }

    // The custom colours are sixteen untyped four-byte values, red in the low byte,
    // written over a value of any type.
    for (int i = 0; i < kCustomColorCount; ++i) colors[i] = RGB(i, 2 * i, 255 - i);
    Put(HKEY_CURRENT_USER, Name(9), REG_SZ, {'h', 'i', 0});
    SaveCustomColors(key, colors);
    for (int i = 0; i < kCustomColorCount; ++i)
        EXPECT_EQ(Get(Name(i)), std::make_pair(DWORD(REG_NONE), LowFirst(colors[i]))) << i;
    // A missing or unreadable colour repeats the one before (black before the first); a
    // short value overwrites only its own bytes.
    DeleteKeys();
    for (int i = 1; i <= 3; ++i) Put(HKEY_CURRENT_USER, Name(i), REG_NONE, LowFirst(0x102030 * i));
    Put(HKEY_CURRENT_USER, Name(2), REG_NONE, {1, 2, 3, 4, 5, 6, 7, 8});  // too long
    Put(HKEY_CURRENT_USER, Name(6), REG_DWORD, LowFirst(0x00ABCDEF));
    Put(HKEY_CURRENT_USER, Name(7), REG_NONE, {0x11, 0x22});
    Put(HKEY_CURRENT_USER, Name(15), REG_NONE, LowFirst(0x00010203));
    LoadCustomColors(key, colors);
    const COLORREF expected[kCustomColorCount] = {
        0,        0x102030, 0x102030, 0x306090, 0x306090, 0x306090, 0xABCDEF, 0xAB2211,
        0xAB2211, 0xAB2211, 0xAB2211, 0xAB2211, 0xAB2211, 0xAB2211, 0xAB2211, 0x010203};
    for (int i = 0; i < kCustomColorCount; ++i) EXPECT_EQ(colors[i], expected[i]) << i;

    // The library's folder comes from the machine-wide key when that holds a string.
    const std::string longest(259, 'a');
    const std::tuple<DWORD, Bytes, const char*> paths[] = {
        {REG_SZ, {'D', ':', '\\', 'T', '\\', 0}, "D:\\T\\"},
        {REG_BINARY, {'E', ':', '\\'}, "E:\\"},          // no terminator stored
        {REG_SZ, Bytes(300, 'a'), kDefault},             // too long
        {REG_BINARY, Bytes(259, 'a'), longest.c_str()},  // the terminator just fits
        {REG_BINARY, Bytes(260, 'a'), kDefault},         // no room for the terminator
        {REG_SZ, {0}, kDefault}};                        // says nothing
    for (const auto& [type, bytes, read] : paths) {
        Put(HKEY_LOCAL_MACHINE, "path", type, bytes);
        EXPECT_EQ(PluginPath(), read) << bytes.size() << " bytes of type " << type;
    }
    Put(HKEY_LOCAL_MACHINE, "path", REG_SZ, {'D', ':', '\\', 0});  // in a key no one may open
    HKEY machine;
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, kKey, 0, WRITE_DAC, &machine), ERROR_SUCCESS);
    SECURITY_DESCRIPTOR descriptor;
    ACL empty;
    InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
    InitializeAcl(&empty, sizeof empty, ACL_REVISION);
    for (ACL* access : {&empty, static_cast<ACL*>(nullptr)}) {  // none, then everyone
        SetSecurityDescriptorDacl(&descriptor, TRUE, access, FALSE);
        EXPECT_EQ(RegSetKeySecurity(machine, DACL_SECURITY_INFORMATION, &descriptor),
                  ERROR_SUCCESS);
        EXPECT_EQ(PluginPath(), access != nullptr ? kDefault : "D:\\");
    }
    RegCloseKey(machine);
    DeleteKeys();
}

}  // namespace
}  // namespace tessellum
