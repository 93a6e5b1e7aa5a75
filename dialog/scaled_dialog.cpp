#include "dialog/scaled_dialog.h"

#include <cstring>
#include <vector>

#include "controls/dpi_scale.h"
#include "controls/thread_dpi.h"
#include "dialog/dialog_template.h"

namespace tessellum {
namespace {

int CALLBACK FaceFound(const LOGFONTA*, const TEXTMETRICA*, DWORD kind, LPARAM found) {
    if (kind & TRUETYPE_FONTTYPE) *reinterpret_cast<bool*>(found) = true;
    return 1;
}

// The outline face of the scaled dialogs that this system has.
const char* ScaledFace() {
    LOGFONTA wanted = {};
    wanted.lfCharSet = DEFAULT_CHARSET;
    lstrcpynA(wanted.lfFaceName, kScaledDialogFace, LF_FACESIZE);
    bool found = false;
    HDC screen = GetDC(nullptr);
    if (screen) {
        EnumFontFamiliesExA(screen, &wanted, FaceFound, reinterpret_cast<LPARAM>(&found), 0);
        ReleaseDC(nullptr, screen);
    }
    return found ? kScaledDialogFace : kScaledDialogFallbackFace;
}

// The template with the outline face, or empty: at 96 DPI, or where the resource cannot
// be read or changed, the template is used as it stands.
std::vector<uint8_t> ScaledTemplate(HINSTANCE instance, int id) {
    if (DisplayDpi() == kBaseDpi) return {};
    HRSRC found = FindResourceA(instance, MAKEINTRESOURCEA(id), MAKEINTRESOURCEA(5));  // RT_DIALOG
    HGLOBAL loaded = found ? LoadResource(instance, found) : nullptr;
    const auto* bytes = loaded ? static_cast<const uint8_t*>(LockResource(loaded)) : nullptr;
    if (!bytes) return {};
    const std::vector<uint8_t> original(bytes, bytes + SizeofResource(instance, found));
    return WithDialogFace(original, ScaledFace());
}

const DLGTEMPLATE* AsTemplate(const std::vector<uint8_t>& bytes) {
    return reinterpret_cast<const DLGTEMPLATE*>(bytes.data());
}

}  // namespace

INT_PTR ScaledDialogBox(HINSTANCE instance, int id, HWND parent, DLGPROC procedure) {
    const std::vector<uint8_t> scaled = ScaledTemplate(instance, id);
    if (scaled.empty())
        return DialogBoxParamA(instance, MAKEINTRESOURCEA(id), parent, procedure, 0);
    return DialogBoxIndirectParamA(instance, AsTemplate(scaled), parent, procedure, 0);
}

HWND ScaledCreateDialog(HINSTANCE instance, int id, HWND parent, DLGPROC procedure) {
    const std::vector<uint8_t> scaled = ScaledTemplate(instance, id);
    if (scaled.empty())
        return CreateDialogParamA(instance, MAKEINTRESOURCEA(id), parent, procedure, 0);
    return CreateDialogIndirectParamA(instance, AsTemplate(scaled), parent, procedure, 0);
}

}  // namespace tessellum
