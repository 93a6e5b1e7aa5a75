#include "dialog/name_prompt.h"

#include "dialog/scaled_dialog.h"
#include "resources/resource_ids.h"

namespace tessellum {
namespace {

// Carries the record from the start of the prompt to its later messages; a prompt never
// opens a second one, so one is enough.
NamePrompt* activePrompt = nullptr;

INT_PTR CALLBACK NamePromptProc(HWND window, UINT message, WPARAM wParam, LPARAM /*lParam*/) {
    switch (message) {
        case WM_INITDIALOG: {
            HWND edit = GetDlgItem(window, IDC_PROMPT_EDIT);
            SetWindowTextA(window, activePrompt->caption);
            SetDlgItemTextA(window, IDC_PROMPT_TEXT, activePrompt->prompt);
            SetWindowTextA(edit, activePrompt->buffer);
            // Typing stops at the limit; a longer initial text is shown in full.
            SendMessageA(edit, EM_LIMITTEXT, activePrompt->size - 1, 0);
            // The prompt opens for typing: the field has the focus and its whole text is
            // selected, so that typing replaces the offered name, Enter accepts it and
            // Escape cancels. FALSE keeps the dialog manager from moving the focus to OK.
            SetFocus(edit);
            SendMessageA(edit, EM_SETSEL, 0, -1);
            return FALSE;
        }
        case WM_COMMAND:
            if (LOWORD(wParam) == IDOK) {
                GetDlgItemTextA(window, IDC_PROMPT_EDIT, activePrompt->buffer, activePrompt->size);
                EndDialog(window, IDOK);
            } else if (LOWORD(wParam) == IDCANCEL) {
                EndDialog(window, IDCANCEL);
            }
            return TRUE;
        default: return FALSE;
    }
}

}  // namespace

bool PromptForName(HWND owner, HINSTANCE instance, char* buffer, int32_t size, const char* prompt,
                   const char* caption) {
    NamePrompt record = {buffer, size, prompt, caption};
    activePrompt = &record;
    const INT_PTR result = ScaledDialogBox(instance, IDD_NAME_PROMPT, owner, NamePromptProc);
    activePrompt = nullptr;
    return result == IDOK;
}

}  // namespace tessellum
