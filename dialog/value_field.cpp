#include "dialog/value_field.h"

#include <cstring>

#include "controls/color_text.h"
#include "controls/slider_geometry.h"
#include "dialog/filter_dialog.h"
#include "host/dll_instance.h"

namespace tessellum {
namespace {

constexpr int kFieldId = 1036;    // no control of the page has it
constexpr int kLongestText = 40;  // "rgb(255, 255, 255)" with blanks to spare
constexpr int kTextBuffer = 64;

// The one field that can be open: the dialog is modal and has one Color Picker page.
struct FieldState {
    HWND edit = nullptr;
    HWND page = nullptr;
    HWND focusBefore = nullptr;  // given the focus back when the field closes
    WNDPROC editProc = nullptr;
    int32_t row = kNoReadout;  // 0 to 2, or kSliderHeadRow for the whole colour
    ReadoutColumn column = ReadoutColumn::kDecimal;
    bool closing = false;  // the field takes its own focus away as it closes
};
FieldState field;

HWND watchedPage = nullptr;
HHOOK messageFilter = nullptr;

bool Hex() {
    return field.column == ReadoutColumn::kHex;
}

bool Typable(const char* text) {
    return field.row == kSliderHeadRow ? ColorTextTypable(text) : ChannelTextTypable(text, Hex());
}

// Sets the colour as the Fore / Back boxes do; the tile and previews follow only when a
// value changed, as they do after a drag.
void SetColor(const Rgb8& color) {
    RgbSliderPanel& sliders = *activeDialog->Sliders();
    bool changed = sliders.SetRed(color.red);
    changed = sliders.SetGreen(color.green) || changed;
    changed = sliders.SetBlue(color.blue) || changed;
    if (changed) activeDialog->SlidersChanged();
}

void SetChannel(int32_t row, uint8_t value) {
    RgbSliderPanel& sliders = *activeDialog->Sliders();
    const bool changed = row == 0   ? sliders.SetRed(value)
                         : row == 1 ? sliders.SetGreen(value)
                                    : sliders.SetBlue(value);
    if (changed) activeDialog->SlidersChanged();
}

// The field's text as a value, set; false (nothing set) when it is not a whole value.
bool ApplyField() {
    char text[kTextBuffer] = {};
    GetWindowTextA(field.edit, text, sizeof text);
    if (field.row == kSliderHeadRow) {
        Rgb8 color = {};
        if (!ParseColorText(text, &color)) return false;
        SetColor(color);
        return true;
    }
    uint8_t value = 0;
    if (!ParseChannelText(text, Hex(), &value)) return false;
    SetChannel(field.row, value);
    return true;
}

// The field's window goes, and with it (WM_NCDESTROY) the record of it. The focus goes
// back where it was before the field took it, unless it is moving elsewhere already.
void DestroyField(bool giveFocusBack = true) {
    if (field.edit == nullptr) return;
    field.closing = true;
    HWND edit = field.edit;
    SetWindowLongPtrA(field.page, GWL_STYLE,
                      GetWindowLongPtrA(field.page, GWL_STYLE) & ~WS_CLIPCHILDREN);
    HWND back = field.focusBefore;
    if (back == nullptr || !IsWindow(back) || !IsWindowVisible(back) || !IsWindowEnabled(back))
        back = GetAncestor(field.page, GA_ROOT);
    if (giveFocusBack) SetFocus(back);
    DestroyWindow(edit);
}

// Applies the field if it holds a whole value, else beeps; either way it closes.
void ApplyAndClose(bool giveFocusBack) {
    if (!ApplyField()) MessageBeep(MB_OK);
    DestroyField(giveFocusBack);
}

bool ReadClipboard(HWND owner, char* text, size_t size) {
    if (!OpenClipboard(owner)) return false;
    bool read = false;
    if (HANDLE data = GetClipboardData(CF_TEXT)) {
        if (const char* locked = static_cast<const char*>(GlobalLock(data))) {
            const size_t available = GlobalSize(data);
            size_t length = 0;
            while (length < available && length < size && locked[length] != '\0') ++length;
            read = length < available && length < size;  // a longer text is no value
            if (read) {
                std::memcpy(text, locked, length);
                text[length] = '\0';
            }
            GlobalUnlock(data);
        }
    }
    CloseClipboard();
    return read;
}

// The field's text with its selection replaced by `typed`.
void TextAfterTyping(const char* typed, char* text) {
    char now[kTextBuffer] = {};
    GetWindowTextA(field.edit, now, sizeof now);
    DWORD start = 0, end = 0;
    SendMessageA(field.edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                 reinterpret_cast<LPARAM>(&end));
    const size_t length = std::strlen(now);
    if (end > length) end = static_cast<DWORD>(length);
    if (start > end) start = end;
    text[0] = '\0';
    std::strncat(text, now, start);
    std::strncat(text, typed, kTextBuffer - 1 - std::strlen(text));
    std::strncat(text, now + end, kTextBuffer - 1 - std::strlen(text));
}

void OpenField(HWND page, int32_t row, ReadoutColumn column);

// The keys the field handles itself: it wants every key, so that the dialog manager
// neither presses Fill on Enter nor cancels on Escape. A keystroke that its column
// cannot take is refused with a beep, and the field stays open.
LRESULT FieldMessage(HWND edit, UINT message, WPARAM wParam, LPARAM lParam) {
    const WNDPROC editProc = field.editProc;
    switch (message) {
        case WM_GETDLGCODE:
            return DLGC_WANTALLKEYS | CallWindowProcA(editProc, edit, message, wParam, lParam);
        case WM_KEYDOWN:
            if (wParam == VK_ESCAPE) {
                DestroyField();
                return 0;
            }
            if (wParam == VK_RETURN || wParam == VK_TAB) {
                const int32_t row = field.row;
                const ReadoutColumn column = field.column;
                HWND page = field.page;
                if (!ApplyField()) {
                    MessageBeep(MB_OK);
                    return 0;
                }
                DestroyField();
                if (wParam == VK_TAB && row != kSliderHeadRow)
                    OpenField(page, NextReadoutRow(row, GetKeyState(VK_SHIFT) < 0), column);
                return 0;
            }
            break;
        case WM_CHAR: {
            if (wParam == '\r' || wParam == '\n' || wParam == '\t' || wParam == 0x1B) return 0;
            if (wParam < 0x20 || wParam == 0x7F) break;  // Backspace and the editing keys
            const char typed[2] = {static_cast<char>(wParam), '\0'};
            char text[kTextBuffer];
            TextAfterTyping(typed, text);
            if (!Typable(text)) {
                MessageBeep(MB_OK);
                return 0;
            }
            break;
        }
        case WM_PASTE: {  // as typing the clipboard's first line at once
            char pasted[kTextBuffer] = {};
            ReadClipboard(edit, pasted, sizeof pasted);
            pasted[std::strcspn(pasted, "\r\n")] = '\0';
            char text[kTextBuffer];
            TextAfterTyping(pasted, text);
            if (pasted[0] == '\0' || std::strlen(text) > kLongestText || !Typable(text)) {
                MessageBeep(MB_OK);
                return 0;
            }
            SendMessageA(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(pasted));
            return 0;
        }
        // The focus moved: to another control of the dialog (a click there), the field
        // applies its value; to the dialog itself (it is ending) or away from it, it
        // only closes.
        case WM_KILLFOCUS: {
            const LRESULT result = CallWindowProcA(editProc, edit, message, wParam, lParam);
            if (field.closing) return result;
            HWND to = reinterpret_cast<HWND>(wParam);
            HWND dialog = GetAncestor(field.page, GA_ROOT);
            if (to != nullptr && to != dialog && GetAncestor(to, GA_ROOT) == dialog)
                ApplyAndClose(false);
            else
                DestroyField(false);
            return result;
        }
        case WM_NCDESTROY:
            if (field.edit == edit) field = FieldState();
            SetWindowLongPtrA(edit, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(editProc));
            return CallWindowProcA(editProc, edit, message, wParam, lParam);
        default: break;
    }
    return CallWindowProcA(editProc, edit, message, wParam, lParam);
}

// Nothing may unwind into the edit control's caller.
LRESULT CALLBACK FieldProc(HWND edit, UINT message, WPARAM wParam, LPARAM lParam) {
    const WNDPROC editProc = field.editProc;
    try {
        return FieldMessage(edit, message, wParam, lParam);
    } catch (...) {
        return editProc ? CallWindowProcA(editProc, edit, message, wParam, lParam) : 0;
    }
}

void OpenField(HWND page, int32_t row, ReadoutColumn column) {
    RgbSliderPanel& sliders = *activeDialog->Sliders();
    if (!sliders.IsEnabled() || field.edit != nullptr) return;
    const ControlBounds box =
        ReadoutBounds(sliders.X(), sliders.Y(), sliders.RowSpacing(), row, column, sliders.Dpi());
    char text[kTextBuffer] = {};
    if (row == kSliderHeadRow) {
        FormatColorText({sliders.Red(), sliders.Green(), sliders.Blue()}, text);
    } else {
        const uint8_t value = row == 0   ? sliders.Red()
                              : row == 1 ? sliders.Green()
                                         : sliders.Blue();
        FormatChannelText(value, column == ReadoutColumn::kHex, text);
    }
    HWND edit = CreateWindowExA(0, "EDIT", text, WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL,
                                box.left, box.top, box.right - box.left, box.bottom - box.top, page,
                                reinterpret_cast<HMENU>(kFieldId), hDllInstance, nullptr);
    if (edit == nullptr) {
        MessageBeep(MB_OK);
        return;
    }
    SendMessageA(edit, WM_SETFONT, SendMessageA(page, WM_GETFONT, 0, 0), FALSE);
    const int limit = row == kSliderHeadRow ? kLongestText : column == ReadoutColumn::kHex ? 2 : 3;
    SendMessageA(edit, EM_LIMITTEXT, limit, 0);
    field.edit = edit;
    field.page = page;
    field.row = row;
    field.column = column;
    field.focusBefore = GetFocus();
    field.editProc = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(edit, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(FieldProc)));
    // While the field is open the panel's paints, which go straight to the page, leave it.
    SetWindowLongPtrA(page, GWL_STYLE, GetWindowLongPtrA(page, GWL_STYLE) | WS_CLIPCHILDREN);
    SetFocus(edit);
    SendMessageA(edit, EM_SETSEL, 0, -1);
}

// Ctrl+V with no field open: the clipboard's text as a whole colour, or a beep.
void PasteColor(HWND page) {
    char text[kTextBuffer] = {};
    Rgb8 color = {};
    if (ReadClipboard(page, text, sizeof text) && ParseColorText(text, &color))
        SetColor(color);
    else
        MessageBeep(MB_OK);
}

bool IsClick(UINT message) {
    return message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK || message == WM_RBUTTONDOWN ||
           message == WM_MBUTTONDOWN || message == WM_NCLBUTTONDOWN || message == WM_NCRBUTTONDOWN;
}

// A message of the dialog's loop, before the dialog manager sees it: true when taken.
bool FilterMessage(const MSG& message) {
    if (activeDialog == nullptr || !activeDialog->Ready() || watchedPage == nullptr) return false;
    HWND dialog = GetAncestor(watchedPage, GA_ROOT);
    if (message.hwnd == nullptr || GetAncestor(message.hwnd, GA_ROOT) != dialog) return false;
    if (field.edit != nullptr) {
        if (IsClick(message.message) && message.hwnd != field.edit) ApplyAndClose(true);
        return false;  // the click goes on; keys are the field's
    }
    if (message.message != WM_KEYDOWN || message.wParam != 'V' || GetKeyState(VK_CONTROL) >= 0 ||
        GetKeyState(VK_MENU) < 0)
        return false;
    if (!IsWindowVisible(watchedPage)) return false;
    if (activeDialog->Sliders()->IsEnabled()) PasteColor(watchedPage);  // in Convert: nothing
    return true;
}

LRESULT CALLBACK MessageFilterProc(int code, WPARAM wParam, LPARAM lParam) {
    if (code == MSGF_DIALOGBOX && lParam != 0) {
        try {
            if (FilterMessage(*reinterpret_cast<const MSG*>(lParam))) return 1;
        } catch (...) {
            // Dropped: the message goes on as if not seen.
        }
    }
    return CallNextHookEx(messageFilter, code, wParam, lParam);
}

}  // namespace

bool OpenValueFieldAt(HWND page, int32_t x, int32_t y) {
    RgbSliderPanel& sliders = *activeDialog->Sliders();
    if (!sliders.IsEnabled()) return false;
    const ReadoutHit hit =
        FindReadout(sliders.X(), sliders.Y(), sliders.RowSpacing(), x, y, sliders.Dpi());
    if (hit.row == kNoReadout) return false;
    OpenField(page, hit.row, hit.column);
    return true;
}

void CloseValueFieldForClick() {
    if (field.edit != nullptr) ApplyAndClose(true);
}

void WatchColorPickerPage(HWND page) {
    watchedPage = page;
    if (messageFilter == nullptr)
        messageFilter =
            SetWindowsHookExA(WH_MSGFILTER, MessageFilterProc, nullptr, GetCurrentThreadId());
}

void StopWatchingColorPickerPage() {
    if (messageFilter != nullptr) UnhookWindowsHookEx(messageFilter);
    messageFilter = nullptr;
    watchedPage = nullptr;
}

}  // namespace tessellum
