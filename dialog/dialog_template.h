// A dialog template's font face, exchanged in a copy of the template. The templates name
// "MS Sans Serif", a bitmap font on Windows as under Wine: at 96 DPI it is the design,
// but at a larger scale the system can only pick the nearest bitmap size, so the dialog
// grows less than the display's scale (at 200% barely more than at 150%) while the
// self-drawn controls grow with it. At any other DPI the dialogs are made from a copy
// that names an outline face of the same dialog units, which grows with the DPI.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessellum {

// The faces the scaled dialogs use, the first one the system has: the outline form of
// "MS Sans Serif" with its metrics (Windows since 2000), else Tahoma, the dialogs' face
// of Windows since 2000, which Wine brings; both have the dialog units of "MS Sans
// Serif" 8 at 96 DPI.
constexpr char kScaledDialogFace[] = "Microsoft Sans Serif";
constexpr char kScaledDialogFallbackFace[] = "Tahoma";

// `bytes`, a DLGTEMPLATE or DLGTEMPLATEEX as the resource holds it, with the face of its
// DS_SETFONT font replaced by `face` (ASCII); the items follow, still on 4-byte
// boundaries. Empty when the template is cut short, names no font, or is not one.
std::vector<uint8_t> WithDialogFace(const std::vector<uint8_t>& bytes, const std::string& face);

// The face a template names, for the tests; empty where WithDialogFace would refuse.
std::string DialogFace(const std::vector<uint8_t>& bytes);

}  // namespace tessellum
