#include "storage/color_table.h"

#include <cstdio>

#include "color/allocate.h"

namespace tessellum {

Palette* ReadColorTable(const char* path) {
    std::FILE* stream = std::fopen(path, "rb");
    if (stream == nullptr) throw ErrGeneral;
    Palette* palette = nullptr;
    try {
        palette = NewOrThrow<Palette>(kColorTableColors);
    } catch (ErrorCode) {
        std::fclose(stream);
        throw;
    }
    const size_t count = std::fread(palette->Colors(), 1, kColorTableBytes, stream);
    std::fclose(stream);  // a stream only read from has nothing to lose at its close
    if (count != kColorTableBytes) {
        delete palette;
        throw ErrBadData;
    }
    return palette;
}

const char* FileNamePart(const char* path) {
    const char* part = path;
    for (const char* c = path; *c != '\0'; ++c)
        if (*c == ':' || *c == '\\') part = c + 1;
    return part;
}

}  // namespace tessellum
