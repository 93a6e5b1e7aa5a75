// A colour table file (".ACT"): 256 colours of three bytes (red, green, blue), colour 0
// first, with no header. Bytes behind the 768th are neither read nor looked at.
#pragma once

#include <cstddef>
#include <cstdint>

#include "color/palette.h"
#include "storage/error_code.h"

namespace tessellum {

constexpr uint32_t kColorTableColors = 256;
constexpr uint32_t kColorTableBytes = kColorTableColors * 3;
// A palette made from a file takes at most this many characters of the file's name.
constexpr size_t kPaletteNameLimit = 250;

// A new palette of 256 colours owned by the caller. A file that cannot be opened gives
// ErrGeneral, one shorter than 768 bytes ErrBadData, no memory ErrNoMemory; on any
// failure nothing stays allocated or open.
Palette* ReadColorTable(const char* path);

// The part of path behind its last ':' or '\' with the extension, or the whole path if
// it has neither. '/' is not a separator.
const char* FileNamePart(const char* path);

}  // namespace tessellum
