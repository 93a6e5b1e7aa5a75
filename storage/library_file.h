// The library file: every colour list with its colours and every palette, kept between
// runs. A 10-byte magic, then tagged records up to a terminator; no offsets, no counts.
#pragma once

#include "color/color_library.h"
#include "storage/binary_file.h"
#include "storage/safe_save.h"

namespace tessellum {

constexpr char kLibraryFileName[] = "Tessellum.dat";
constexpr char kLibraryMagic[] = "TessCell11";     // what the writer writes
constexpr char kLibraryOldMagic[] = "TessCell10";  // also read, as the same format
constexpr int kLibraryMagicLength = 10;
constexpr uint32_t kMaxPaletteColors = 256;

// Record tags.
constexpr uint8_t kTagColorList = 0x2C;  // ','
constexpr uint8_t kTagColor = 0x21;      // '!', joins the latest colour list
constexpr uint8_t kTagPalette = 0x2F;    // '/'
constexpr uint8_t kTagEnd = 0x3B;        // ';'
constexpr uint8_t kTagFiller = 0x00;     // skipped; never written in a library

// Where a file that the load refused is kept when the first save replaces it.
constexpr char kKeptAsideSuffix[] = ".bak";

class LibraryFile : public BinaryFile {
public:
    // A new library owned by the caller. On any failure nothing is left allocated, the
    // file is closed and the code is thrown on.
    ColorLibrary* ReadLibrary(const char* path);

    // Null library: returns at once and touches no file. Otherwise makes the missing
    // folders above path, then writes the library
    // beside path and renames it over path only when it is complete, committed and
    // closed; a failure removes the partial file and leaves path as it was. If the last
    // load refused the file at path, that file is first renamed to path + ".bak".
    void WriteLibrary(const ColorLibrary* library, const char* path);

private:
    void ReadRecords(ColorLibrary& library);
    void WriteRecords(const ColorLibrary& library);

    // Set when a load failed on anything but a missing file, so that the next save
    // keeps the refused file instead of overwriting what may be the user's data.
    bool keepAsideOnSave = false;
};

}  // namespace tessellum
