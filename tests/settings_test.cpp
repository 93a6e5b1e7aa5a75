// The settings against the real registry of the test prefix: defaults with no key,
// values of the wrong size or type, gaps among the custom colours, and a machine-wide
// key that cannot be opened.
#include "storage/settings.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>
#include <vector>

#include "storage/custom_colors.h"
#include "storage/registry_key.h"

namespace tessellum {
namespace {

const char kKey[] = "Software\\Quarry\\Tessellum\\1.x";

void RemoveKey(HKEY root) {
    RegDeleteTreeA(root, "Software\\Quarry");
}

// Sets a value with any type and bytes, as another program (or damage) could.
void Put(HKEY root, const char* name, DWORD type, const std::vector<BYTE>& bytes) {
    HKEY key;
    ASSERT_EQ(RegCreateKeyExA(root, kKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr),
              ERROR_SUCCESS);
    ASSERT_EQ(RegSetValueExA(key, name, 0, type, bytes.empty() ? nullptr : bytes.data(),
                             static_cast<DWORD>(bytes.size())),
              ERROR_SUCCESS);
    RegCloseKey(key);
}

struct Stored {
    bool present = false;
    DWORD type = 99;
    std::vector<BYTE> bytes;
};

Stored Get(HKEY root, const char* name) {
    Stored stored;
    HKEY key;
    if (RegOpenKeyExA(root, kKey, 0, KEY_READ, &key) != ERROR_SUCCESS) return stored;
    BYTE buffer[64];
    DWORD size = sizeof buffer;
    if (RegQueryValueExA(key, name, nullptr, &stored.type, buffer, &size) == ERROR_SUCCESS) {
        stored.present = true;
        stored.bytes.assign(buffer, buffer + size);
    }
    RegCloseKey(key);
    return stored;
}

DWORD ValueCount(HKEY root) {
    HKEY key;
    if (RegOpenKeyExA(root, kKey, 0, KEY_READ, &key) != ERROR_SUCCESS) return 9999;
    DWORD values = 9999;
    RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &values, nullptr,
                     nullptr, nullptr, nullptr);
    RegCloseKey(key);
    return values;
}

std::vector<BYTE> Bytes(uint32_t value) {
    return {BYTE(value), BYTE(value >> 8), BYTE(value >> 16), BYTE(value >> 24)};
}

class SettingsTest : public ::testing::Test {
protected:
    void SetUp() override {
        RemoveKey(HKEY_CURRENT_USER);
        RemoveKey(HKEY_LOCAL_MACHINE);
        key.SetPath(kKey);
    }
    void TearDown() override {
        RemoveKey(HKEY_CURRENT_USER);
        RemoveKey(HKEY_LOCAL_MACHINE);
    }
    RegistryKey key;
};

TEST_F(SettingsTest, WithNoKeyEveryReadGivesItsDefaultAndLeavesAnEmptyKey) {
    EXPECT_TRUE(ReadSizing());
    COLORREF colors[kCustomColorCount];
    std::memset(colors, 0x5A, sizeof colors);
    LoadCustomColors(key, colors);
    for (COLORREF c : colors) EXPECT_EQ(c, 0u);
    char path[kPluginPathSize];
    std::memset(path, 'x', sizeof path);
    ReadPluginPath(path);
    EXPECT_STREQ(path, "C:\\PHOTOSHP\\PLUGINS\\");
    EXPECT_EQ(ValueCount(HKEY_CURRENT_USER), 0u) << "the reads made the key, empty";
    EXPECT_EQ(ValueCount(HKEY_LOCAL_MACHINE), 0u) << "here the rights allow making it";
    EXPECT_FALSE(key.opened) << "no key stays open between calls";
    EXPECT_EQ(key.key, nullptr);
}

TEST_F(SettingsTest, SizingIsFiveBinaryBytesWithTheFlagInByteZero) {
    WriteSizing(false);
    Stored stored = Get(HKEY_CURRENT_USER, "Sizing");
    ASSERT_TRUE(stored.present);
    EXPECT_EQ(stored.type, DWORD(REG_BINARY));
    ASSERT_EQ(stored.bytes.size(), 5u);
    EXPECT_EQ(stored.bytes[0], 0);
    EXPECT_FALSE(ReadSizing());
    WriteSizing(true);
    EXPECT_EQ(Get(HKEY_CURRENT_USER, "Sizing").bytes[0], 1);
    EXPECT_TRUE(ReadSizing());

    Put(HKEY_CURRENT_USER, "Sizing", REG_BINARY, {2, 0, 0, 0, 0});
    EXPECT_TRUE(ReadSizing()) << "any non-zero byte 0 is true";
    WriteSizing(ReadSizing());
    EXPECT_EQ(Get(HKEY_CURRENT_USER, "Sizing").bytes[0], 1) << "and is written back as 1";

    Put(HKEY_CURRENT_USER, "Sizing", REG_BINARY, {0, 0, 0, 0, 0, 0});
    EXPECT_TRUE(ReadSizing()) << "six bytes is too long: the default";
    Put(HKEY_CURRENT_USER, "Sizing", REG_DWORD, {0, 0, 0, 0});
    EXPECT_FALSE(ReadSizing()) << "the type is not looked at; four bytes fit";
    Put(HKEY_CURRENT_USER, "Sizing", REG_NONE, {0});
    EXPECT_FALSE(ReadSizing()) << "one byte holds the flag";
    Put(HKEY_CURRENT_USER, "Sizing", REG_BINARY, {});
    EXPECT_TRUE(ReadSizing()) << "an empty value has no flag: the default";
}

TEST_F(SettingsTest, CustomColorsAreSixteenUntypedFourByteValues) {
    COLORREF colors[kCustomColorCount];
    for (int i = 0; i < kCustomColorCount; ++i) colors[i] = RGB(i, 2 * i, 255 - i);
    SaveCustomColors(key, colors);
    EXPECT_EQ(ValueCount(HKEY_CURRENT_USER), 16u);
    for (int i = 0; i < kCustomColorCount; ++i) {
        const Stored stored = Get(HKEY_CURRENT_USER, ("Custom Color " + std::to_string(i)).c_str());
        ASSERT_TRUE(stored.present) << i;
        EXPECT_EQ(stored.type, DWORD(REG_NONE)) << i;
        EXPECT_EQ(stored.bytes, Bytes(colors[i])) << "low byte red first, " << i;
    }
    COLORREF loaded[kCustomColorCount] = {};
    LoadCustomColors(key, loaded);
    for (int i = 0; i < kCustomColorCount; ++i) EXPECT_EQ(loaded[i], colors[i]) << i;

    // Saving writes all sixteen every time, over values of any type.
    Put(HKEY_CURRENT_USER, "Custom Color 9", REG_SZ, {'h', 'i', 0});
    SaveCustomColors(key, colors);
    EXPECT_EQ(Get(HKEY_CURRENT_USER, "Custom Color 9").type, DWORD(REG_NONE));
    EXPECT_EQ(Get(HKEY_CURRENT_USER, "Custom Color 9").bytes, Bytes(colors[9]));
}

TEST_F(SettingsTest, AMissingOrUnreadableColourRepeatsTheOneBefore) {
    for (int i = 1; i <= 3; ++i) {
        Put(HKEY_CURRENT_USER, ("Custom Color " + std::to_string(i)).c_str(), REG_NONE,
            Bytes(0x00102030 * i));
    }
    Put(HKEY_CURRENT_USER, "Custom Color 2", REG_NONE, {1, 2, 3, 4, 5, 6, 7, 8});  // too long
    Put(HKEY_CURRENT_USER, "Custom Color 6", REG_DWORD, Bytes(0x00ABCDEF));        // any type
    Put(HKEY_CURRENT_USER, "Custom Color 7", REG_NONE, {0x11, 0x22});              // short
    Put(HKEY_CURRENT_USER, "Custom Color 15", REG_NONE, Bytes(0x00010203));
    COLORREF colors[kCustomColorCount];
    std::memset(colors, 0x5A, sizeof colors);
    LoadCustomColors(key, colors);
    EXPECT_EQ(colors[0], 0u) << "nothing readable before it: black";
    EXPECT_EQ(colors[1], 0x00102030u);
    EXPECT_EQ(colors[2], colors[1]) << "a value over 4 bytes counts as missing";
    EXPECT_EQ(colors[3], 0x00306090u);
    EXPECT_EQ(colors[4], colors[3]) << "missing in the middle";
    EXPECT_EQ(colors[5], colors[3]);
    EXPECT_EQ(colors[6], 0x00ABCDEFu);
    EXPECT_EQ(colors[7], 0x00AB2211u) << "a short value overwrites only its own bytes";
    for (int i = 8; i < 15; ++i) EXPECT_EQ(colors[i], colors[7]) << i;
    EXPECT_EQ(colors[15], 0x00010203u);
}

TEST_F(SettingsTest, AnOpenRegistryKeyRefusesAnotherAccess) {
    Put(HKEY_CURRENT_USER, "Custom Color 0", REG_NONE, Bytes(0x00445566));
    uint32_t value = 0x77;
    key.opened = 1;
    EXPECT_FALSE(key.ReadValue("Custom Color 0", &value));
    EXPECT_EQ(value, 0x77u) << "unchanged on failure";
    EXPECT_FALSE(key.WriteValue("Custom Color 1", 5));
    EXPECT_FALSE(Get(HKEY_CURRENT_USER, "Custom Color 1").present);
    key.opened = 0;
    EXPECT_TRUE(key.ReadValue("Custom Color 0", &value));
    EXPECT_EQ(value, 0x00445566u);
    EXPECT_FALSE(key.ReadValue("Custom Color 1", &value)) << "a missing value";
    EXPECT_EQ(value, 0x00445566u);

    // A path longer than the buffer is cut, never overrun.
    const std::string longPath(1500, 'k');
    key.SetPath(longPath.c_str());
    EXPECT_EQ(std::strlen(key.path), RegistryKey::kPathSize - 1);
    EXPECT_FALSE(key.WriteValue("x", 1)) << "no such key can be made";
    EXPECT_FALSE(key.ReadValue("x", &value));
    EXPECT_EQ(value, 0x00445566u);
    EXPECT_FALSE(key.opened);
}

TEST_F(SettingsTest, PluginPathComesFromTheMachineKeyWhenItHoldsAString) {
    char path[kPluginPathSize];
    const std::string stored = "D:\\Tools\\Tessellum\\";
    Put(HKEY_LOCAL_MACHINE, "path", REG_SZ, std::vector<BYTE>(stored.begin(), stored.end() + 1));
    ReadPluginPath(path);
    EXPECT_EQ(std::string(path), stored);

    Put(HKEY_LOCAL_MACHINE, "path", REG_BINARY, {'E', ':', '\\'});  // no terminator stored
    ReadPluginPath(path);
    EXPECT_STREQ(path, "E:\\");

    Put(HKEY_LOCAL_MACHINE, "path", REG_SZ, std::vector<BYTE>(300, 'a'));  // too long
    ReadPluginPath(path);
    EXPECT_STREQ(path, "C:\\PHOTOSHP\\PLUGINS\\");
    Put(HKEY_LOCAL_MACHINE, "path", REG_BINARY, std::vector<BYTE>(260, 'a'));  // no room to end
    ReadPluginPath(path);
    EXPECT_STREQ(path, "C:\\PHOTOSHP\\PLUGINS\\");
    Put(HKEY_LOCAL_MACHINE, "path", REG_SZ, {0});  // says nothing
    ReadPluginPath(path);
    EXPECT_STREQ(path, "C:\\PHOTOSHP\\PLUGINS\\");
    EXPECT_EQ(ValueCount(HKEY_LOCAL_MACHINE), 1u) << "the plug-in never writes \"path\"";
}

TEST_F(SettingsTest, AMachineKeyThatCannotBeOpenedGivesTheDefaultDirectory) {
    Put(HKEY_LOCAL_MACHINE, "path", REG_SZ, {'D', ':', '\\', 0});
    // Take every right on the key from everyone: opening it for all access now fails.
    HKEY key;
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, kKey, 0, KEY_ALL_ACCESS, &key), ERROR_SUCCESS);
    SECURITY_DESCRIPTOR locked;
    InitializeSecurityDescriptor(&locked, SECURITY_DESCRIPTOR_REVISION);
    ACL empty;
    InitializeAcl(&empty, sizeof empty, ACL_REVISION);
    SetSecurityDescriptorDacl(&locked, TRUE, &empty, FALSE);
    ASSERT_EQ(RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, &locked), ERROR_SUCCESS);
    RegCloseKey(key);
    HKEY probe = nullptr;
    const LONG denied = RegCreateKeyExA(HKEY_LOCAL_MACHINE, kKey, 0, nullptr, 0, KEY_ALL_ACCESS,
                                        nullptr, &probe, nullptr);
    if (probe) RegCloseKey(probe);
    ASSERT_EQ(denied, ERROR_ACCESS_DENIED) << "the key could not be locked here";

    char path[kPluginPathSize];
    ReadPluginPath(path);
    EXPECT_STREQ(path, "C:\\PHOTOSHP\\PLUGINS\\");

    // Give the rights back so that the key can be removed.
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, kKey, 0, WRITE_DAC, &key), ERROR_SUCCESS);
    SetSecurityDescriptorDacl(&locked, TRUE, nullptr, FALSE);
    RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, &locked);
    RegCloseKey(key);
}

}  // namespace
}  // namespace tessellum
