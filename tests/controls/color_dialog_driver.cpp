#include "tests/controls/color_dialog_driver.h"

#include "tests/support/screenshot.h"

namespace tessellum::test {
namespace {

constexpr int kColorRedEdit = 706;  // the published ids of the colour dialog's controls
constexpr int kColorGreenEdit = 707;
constexpr int kColorBlueEdit = 708;
constexpr int kColorAddButton = 712;

struct Watching {
    DialogWatch* watch;
    DWORD mainThread;
};

std::string ItemText(HWND dialog, int id) {
    char text[64] = {};
    GetDlgItemTextA(dialog, id, text, sizeof text);
    return text;
}

void Press(HWND dialog, int id) {
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

// Whatever other dialog came up must not leave the test's thread stuck in it.
BOOL CALLBACK CancelStray(HWND window, LPARAM context) {
    char name[32] = {}, title[128] = {};
    GetClassNameA(window, name, sizeof name);
    if (std::string(name) != "#32770") return TRUE;
    auto* watch = reinterpret_cast<DialogWatch*>(context);
    watch->strayDialog = true;
    GetWindowTextA(window, title, sizeof title);
    watch->title = title;
    Press(window, IDCANCEL);
    return TRUE;
}

DWORD WINAPI WatchForDialog(void* context) {
    auto* watching = static_cast<Watching*>(context);
    DialogWatch* watch = watching->watch;
    HWND dialog = nullptr;
    const DWORD start = GetTickCount();
    while (!dialog && GetTickCount() - start < watch->wait) {
        dialog = FindWindowA("#32770", "Color");
        if (!dialog) Sleep(20);
    }
    if (!dialog) {
        EnumThreadWindows(watching->mainThread, CancelStray, reinterpret_cast<LPARAM>(watch));
        return 0;
    }
    Sleep(150);  // let the dialog finish its start-up and paint
    watch->found = true;
    watch->title = "Color";
    watch->owner = GetWindow(dialog, GW_OWNER);
    watch->shownRed = ItemText(dialog, kColorRedEdit);
    watch->shownGreen = ItemText(dialog, kColorGreenEdit);
    watch->shownBlue = ItemText(dialog, kColorBlueEdit);
    SetDlgItemTextA(dialog, kColorRedEdit, std::to_string(watch->red).c_str());
    SetDlgItemTextA(dialog, kColorGreenEdit, std::to_string(watch->green).c_str());
    SetDlgItemTextA(dialog, kColorBlueEdit, std::to_string(watch->blue).c_str());
    Press(dialog, kColorAddButton);
    if (!watch->screenshot.empty()) {
        Sleep(100);
        SaveScreenshot(dialog, watch->screenshot);
    }
    Press(dialog, watch->action == DialogWatch::kPressOk ? IDOK : IDCANCEL);
    return 0;
}

}  // namespace

void DeleteCustomColors() {
    for (int i = 0; i < 16; ++i) {
        RegDeleteKeyValueA(HKEY_CURRENT_USER, "Software\\Quarry\\Tessellum\\1.x",
                           ("Custom Color " + std::to_string(i)).c_str());
    }
}

bool ClickWithDialogWatch(const std::function<bool()>& click, DialogWatch& watch) {
    Watching watching = {&watch, GetCurrentThreadId()};
    HANDLE thread = CreateThread(nullptr, 0, WatchForDialog, &watching, 0, nullptr);
    const bool result = click();
    WaitForSingleObject(thread, 30000);
    CloseHandle(thread);
    return result;
}

}  // namespace tessellum::test
