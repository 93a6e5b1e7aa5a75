// The settings against the real registry of the test prefix: defaults with no key,
// values of the wrong size or type, gaps among the custom colours, and a machine-wide
// key that cannot be opened.
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
void Put(HKEY root, const char* name, DWORD type, const Bytes& bytes) {
    ASSERT_EQ(RegSetKeyValueA(root, kKey, name, type, bytes.empty() ? nullptr : bytes.data(),
                              static_cast<DWORD>(bytes.size())),
              ERROR_SUCCESS);
}

// The user's value as stored: its type and bytes, or type 99 when it cannot be read.
std::pair<DWORD, Bytes> Get(const char* name) {
    BYTE buffer[64];
    DWORD type = 99, size = sizeof buffer;
    if (RegGetValueA(HKEY_CURRENT_USER, kKey, name, RRF_RT_ANY, &type, buffer, &size))
        return {99, {}};
    return {type, Bytes(buffer, buffer + size)};
}

DWORD ValueCount(HKEY root) {
    HKEY key;
    DWORD values = 9999;
    if (RegOpenKeyExA(root, kKey, 0, KEY_READ, &key) != ERROR_SUCCESS) return values;
    RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &values, nullptr,
                     nullptr, nullptr, nullptr);
    RegCloseKey(key);
    return values;
}

Bytes LowFirst(uint32_t value) {
    return {BYTE(value), BYTE(value >> 8), BYTE(value >> 16), BYTE(value >> 24)};
}

std::string ColorName(int i) {
    return "Custom Color " + std::to_string(i);
}

// An empty access list lets no one open the machine-wide key for all access; none
// lets everyone.
void SetMachineKeyAccess(ACL* list) {
    HKEY key;
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, kKey, 0, WRITE_DAC, &key), ERROR_SUCCESS);
    SECURITY_DESCRIPTOR descriptor;
    InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
    SetSecurityDescriptorDacl(&descriptor, TRUE, list, FALSE);
    EXPECT_EQ(RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, &descriptor), ERROR_SUCCESS);
    RegCloseKey(key);
}

class SettingsTest : public ::testing::Test {
protected:
    void SetUp() override {
        TearDown();
        key.SetPath(kKey);
    }
    void TearDown() override {
        RegDeleteTreeA(HKEY_CURRENT_USER, "Software\\Quarry");
        RegDeleteTreeA(HKEY_LOCAL_MACHINE, "Software\\Quarry");
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
    EXPECT_STREQ(path, kDefault);
    EXPECT_EQ(ValueCount(HKEY_CURRENT_USER), 0u) << "the reads made the key, empty";
    EXPECT_EQ(ValueCount(HKEY_LOCAL_MACHINE), 0u) << "here the rights allow making it";
}

TEST_F(SettingsTest, SizingIsFiveBinaryBytesWithTheFlagInByteZero) {
    for (bool sizing : {false, true}) {
        WriteSizing(sizing);
        EXPECT_EQ(Get("Sizing"), std::make_pair(DWORD(REG_BINARY), Bytes{sizing, 0, 0, 0, 0}));
        EXPECT_EQ(ReadSizing(), sizing);
    }
    const std::tuple<DWORD, Bytes, bool> stored[] = {
        {REG_BINARY, {2, 0, 0, 0, 0}, true},  // any non-zero flag
        {REG_BINARY, Bytes(6, 0), true},      // too long: the default
        {REG_DWORD, Bytes(4, 0), false},      // the type is not looked at
        {REG_NONE, {0}, false},               // one byte holds the flag
        {REG_BINARY, {}, true}};              // no flag at all: the default
    for (const auto& [type, bytes, read] : stored) {
        Put(HKEY_CURRENT_USER, "Sizing", type, bytes);
        EXPECT_EQ(ReadSizing(), read) << bytes.size() << " bytes of type " << type;
    }
}

TEST_F(SettingsTest, CustomColorsAreSixteenUntypedFourByteValues) {
    COLORREF colors[kCustomColorCount];
    for (int i = 0; i < kCustomColorCount; ++i) colors[i] = RGB(i, 2 * i, 255 - i);
    Put(HKEY_CURRENT_USER, "Custom Color 9", REG_SZ, {'h', 'i', 0});  // overwritten, any type
    SaveCustomColors(key, colors);
    EXPECT_EQ(ValueCount(HKEY_CURRENT_USER), 16u);
    for (int i = 0; i < kCustomColorCount; ++i) {
        EXPECT_EQ(Get(ColorName(i).c_str()), std::make_pair(DWORD(REG_NONE), LowFirst(colors[i])))
            << "red in the low byte, " << i;
    }
}

TEST_F(SettingsTest, AMissingOrUnreadableColourRepeatsTheOneBefore) {
    for (int i = 1; i <= 3; ++i)
        Put(HKEY_CURRENT_USER, ColorName(i).c_str(), REG_NONE, LowFirst(0x102030 * i));
    Put(HKEY_CURRENT_USER, "Custom Color 2", REG_NONE, {1, 2, 3, 4, 5, 6, 7, 8});  // too long
    Put(HKEY_CURRENT_USER, "Custom Color 6", REG_DWORD, LowFirst(0x00ABCDEF));     // any type
    Put(HKEY_CURRENT_USER, "Custom Color 7", REG_NONE, {0x11, 0x22});              // short
    Put(HKEY_CURRENT_USER, "Custom Color 15", REG_NONE, LowFirst(0x00010203));
    COLORREF colors[kCustomColorCount];
    std::memset(colors, 0x5A, sizeof colors);
    LoadCustomColors(key, colors);
    // Nothing readable before 1: black. A short value overwrites only its own bytes.
    const COLORREF expected[kCustomColorCount] = {
        0,        0x102030, 0x102030, 0x306090, 0x306090, 0x306090, 0xABCDEF, 0xAB2211,
        0xAB2211, 0xAB2211, 0xAB2211, 0xAB2211, 0xAB2211, 0xAB2211, 0xAB2211, 0x010203};
    for (int i = 0; i < kCustomColorCount; ++i) EXPECT_EQ(colors[i], expected[i]) << i;
}

TEST_F(SettingsTest, PluginPathComesFromTheMachineKeyWhenItHoldsAString) {
    const std::tuple<DWORD, Bytes, const char*> stored[] = {
        {REG_SZ, {'D', ':', '\\', 'T', '\\', 0}, "D:\\T\\"},
        {REG_BINARY, {'E', ':', '\\'}, "E:\\"},   // no terminator stored
        {REG_SZ, Bytes(300, 'a'), kDefault},      // too long
        {REG_BINARY, Bytes(260, 'a'), kDefault},  // no room for the terminator
        {REG_SZ, {0}, kDefault}};                 // says nothing
    for (const auto& [type, bytes, read] : stored) {
        Put(HKEY_LOCAL_MACHINE, "path", type, bytes);
        char path[kPluginPathSize];
        ReadPluginPath(path);
        EXPECT_STREQ(path, read) << bytes.size() << " bytes of type " << type;
    }
    EXPECT_EQ(ValueCount(HKEY_LOCAL_MACHINE), 1u) << "the plug-in never writes \"path\"";
}

TEST_F(SettingsTest, AMachineKeyThatCannotBeOpenedGivesTheDefaultDirectory) {
    Put(HKEY_LOCAL_MACHINE, "path", REG_SZ, {'D', ':', '\\', 0});
    ACL empty;
    InitializeAcl(&empty, sizeof empty, ACL_REVISION);
    SetMachineKeyAccess(&empty);
    char path[kPluginPathSize];
    ReadPluginPath(path);
    EXPECT_STREQ(path, kDefault) << "not \"D:\\\" from the locked key";
    SetMachineKeyAccess(nullptr);  // so that the key can be removed
}

}  // namespace
}  // namespace tessellum
