// The colour pair control's pick through the real system colour dialog. A second thread
// finds the modal dialog, reads what it shows and presses its buttons with real
// messages, while the test's thread sits in the dialog's loop; only the test's thread
// checks. The custom colours go to the test prefix's own user settings.
#include <gtest/gtest.h>
#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "controls/color_pair_control.h"
#include "host/dll_instance.h"
#include "tests/color_dialog_driver.h"
#include "tests/control_page.h"
#include "tests/window_pixels.h"

namespace tessellum {

HINSTANCE hDllInstance = nullptr;

namespace {

using test::DeleteCustomColors;
using test::DialogWatch;

const char kKeyPath[] = "Software\\Quarry\\Tessellum\\1.x";

// One stored custom colour as the registry holds it; `present` false when missing.
struct StoredColor {
    bool present;
    DWORD type;
    DWORD size;
    uint32_t value;
    bool operator==(const StoredColor& other) const {
        return present == other.present && type == other.type && size == other.size &&
               value == other.value;
    }
};

std::string ValueName(int index) {
    return "Custom Color " + std::to_string(index);
}

HKEY OpenKey() {
    HKEY key = nullptr;
    RegCreateKeyExA(HKEY_CURRENT_USER, kKeyPath, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                    nullptr);
    return key;
}

void Store(int index, DWORD type, uint32_t value) {
    HKEY key = OpenKey();
    RegSetValueExA(key, ValueName(index).c_str(), 0, type, reinterpret_cast<const BYTE*>(&value),
                   4);
    RegCloseKey(key);
}

std::vector<StoredColor> StoredColors() {
    std::vector<StoredColor> out;
    HKEY key = OpenKey();
    for (int i = 0; i < 16; ++i) {
        StoredColor color = {false, 0, 8, 0};
        color.present =
            RegQueryValueExA(key, ValueName(i).c_str(), nullptr, &color.type,
                             reinterpret_cast<BYTE*>(&color.value), &color.size) == ERROR_SUCCESS;
        if (!color.present) color = {false, 0, 0, 0};
        out.push_back(color);
    }
    RegCloseKey(key);
    return out;
}

class ColorDialogTest : public ::testing::Test {
protected:
    static constexpr int kX = 20, kY = 20;

    void SetUp() override {
        hDllInstance = test::LoadPluginModule();
        ASSERT_NE(hDllInstance, nullptr);
        DeleteCustomColors();
        Store(0, REG_NONE, 0x00112233);
        Store(1, REG_NONE, 0x00445566);
        Store(3, REG_DWORD, 0x00778899);  // any type is read; 2 is missing
        page = std::make_unique<test::ControlPage>("ColorDialog", 200, 140);
        pair = std::make_unique<ColorPairControl>(page->Page(), hDllInstance, kX, kY, 80, 40, 12);
        pair->SetRegistryKey("Tessellum", "1.x");
        pair->Draw();
        // The page paints the control again when the colour dialog has uncovered it.
        page->onMessage = [this](UINT message, WPARAM, LPARAM) {
            if (message == WM_PAINT) pair->Draw();
        };
    }
    void TearDown() override {
        pair.reset();
        page.reset();
        DeleteCustomColors();
        FreeLibrary(hDllInstance);
        hDllInstance = nullptr;
    }

    // Clicks at x, y while the second thread deals with whatever dialog comes up.
    bool ClickWithWatch(int x, int y, DialogWatch& watch) {
        return test::ClickWithDialogWatch([&] { return pair->HandleClick(x, y); }, watch);
    }

    uint32_t Pixel(int x, int y) { return test::ReadClient(page->Page(), x, y, 1, 1)[0]; }

    std::unique_ptr<test::ControlPage> page;
    std::unique_ptr<ColorPairControl> pair;
};

TEST_F(ColorDialogTest, OkTakesTheColourAndStoresAllSixteenCustomColours) {
    pair->SetFore(1, 2, 3);
    DialogWatch watch(DialogWatch::kPressOk, 10000);
    EXPECT_TRUE(ClickWithWatch(kX + 20, kY + 20, watch));
    ASSERT_TRUE(watch.found) << "no colour dialog came up; found: '" << watch.title << "'";
    EXPECT_EQ(watch.owner, page->Dialog()) << "owned by the page's dialog, two levels up";
    EXPECT_EQ(watch.shownRed, "1") << "the dialog starts on the box's colour";
    EXPECT_EQ(watch.shownGreen, "2");
    EXPECT_EQ(watch.shownBlue, "3");

    uint8_t r, g, b;
    pair->GetFore(r, g, b);
    EXPECT_EQ(r, 10);
    EXPECT_EQ(g, 20);
    EXPECT_EQ(b, 30);
    pair->GetBack(r, g, b);
    EXPECT_EQ(r, 255) << "the other box is untouched";
    test::PumpFor(100);
    EXPECT_EQ(Pixel(kX + 20, kY + 20), 0x0A141Eu);

    // Loaded: 0x112233, 0x445566, then 2 repeats 1, 3 as stored, 4 to 15 repeat 3; the
    // dialog put the new colour into the first; all 16 are written with type 0.
    const uint32_t expected[16] = {0x001E140A, 0x00445566, 0x00445566, 0x00778899,
                                   0x00778899, 0x00778899, 0x00778899, 0x00778899,
                                   0x00778899, 0x00778899, 0x00778899, 0x00778899,
                                   0x00778899, 0x00778899, 0x00778899, 0x00778899};
    const std::vector<StoredColor> stored = StoredColors();
    for (int i = 0; i < 16; ++i) {
        EXPECT_EQ(stored[i], (StoredColor{true, REG_NONE, 4, expected[i]}))
            << ValueName(i) << ": present " << stored[i].present << ", type " << stored[i].type
            << ", size " << stored[i].size << ", value " << std::hex << stored[i].value;
    }
}

TEST_F(ColorDialogTest, CancelStoresNothingAndChangesNothing) {
    const std::vector<StoredColor> before = StoredColors();
    ASSERT_FALSE(before[2].present);
    const std::vector<uint32_t> shown = test::ReadClient(page->Page(), 0, 0, 200, 140);
    DialogWatch watch(DialogWatch::kPressCancel, 10000);
    watch.red = 50;  // a colour typed in and added to the custom colours, then dropped
    EXPECT_FALSE(ClickWithWatch(kX + 60, kY + 60, watch));  // the back box
    ASSERT_TRUE(watch.found) << "no colour dialog came up; found: '" << watch.title << "'";
    EXPECT_EQ(watch.shownRed, "255");
    uint8_t r, g, b;
    pair->GetBack(r, g, b);
    EXPECT_EQ(r, 255);
    EXPECT_EQ(g, 255);
    EXPECT_EQ(b, 255);
    pair->GetFore(r, g, b);
    EXPECT_EQ(r | g | b, 0);
    EXPECT_EQ(StoredColors(), before) << "not even the edited custom colours are kept";
    test::PumpFor(100);
    EXPECT_EQ(test::ReadClient(page->Page(), 0, 0, 200, 140), shown);
}

TEST_F(ColorDialogTest, WithTheControlKeyHeldNoDialogComesUpAndNothingChanges) {
    pair->SetBack(4, 5, 6);
    const std::vector<StoredColor> before = StoredColors();
    INPUT key = {};
    key.type = INPUT_KEYBOARD;
    key.ki.wVk = VK_CONTROL;
    ASSERT_EQ(SendInput(1, &key, sizeof key), 1u);
    test::PumpFor(100);
    ASSERT_TRUE(GetAsyncKeyState(VK_CONTROL) & 0x8000) << "the key reads as held";

    DialogWatch watch(DialogWatch::kPressCancel, 1500);
    const bool result = ClickWithWatch(kX + 60, kY + 60, watch);
    key.ki.dwFlags = KEYEVENTF_KEYUP;
    SendInput(1, &key, sizeof key);
    test::PumpFor(100);
    EXPECT_FALSE(result);
    EXPECT_FALSE(watch.found) << "a colour dialog came up";
    EXPECT_FALSE(watch.strayDialog) << "a dialog came up: '" << watch.title << "'";
    uint8_t r, g, b;
    pair->GetBack(r, g, b);
    EXPECT_EQ(r, 4);
    EXPECT_EQ(b, 6);
    EXPECT_EQ(StoredColors(), before);

    // The same click without the key opens the dialog.
    ASSERT_FALSE(GetAsyncKeyState(VK_CONTROL) & 0x8000);
    DialogWatch again(DialogWatch::kPressCancel, 10000);
    EXPECT_FALSE(ClickWithWatch(kX + 60, kY + 60, again));
    EXPECT_TRUE(again.found);
    EXPECT_EQ(again.shownBlue, "6");
}

}  // namespace
}  // namespace tessellum
