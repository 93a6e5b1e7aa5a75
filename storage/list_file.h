// The list exchange file (".TSL"): one colour list with all its colours, moved between
// libraries. The library file's records, minus the palettes: a 10-byte magic, then tagged
// records up to a terminator, every number a single byte and every name a length byte
// with no terminator.
#pragma once

#include "color/color_library.h"
#include "storage/binary_file.h"

namespace tessellum {

constexpr char kListMagic[] = "TessCell00";
constexpr int kListMagicLength = 10;

// The tags are the library's (storage/library_file.h): 0x2C names the one list (a later
// one renames it), 0x21 adds a colour to it, 0x3B ends the file, 0x00 is skipped. The
// list exists from the start, so colours ahead of its name are its colours.
class ListFile : public BinaryFile {
public:
    // A new list owned by the caller. On any failure nothing is left allocated, the file
    // is closed and the code is thrown on.
    ColorList* ReadList(const char* path);

    // Null list: returns at once and touches no file. Otherwise writes the list beside
    // path and renames it over path only when it is complete; a failure removes the
    // partial file and leaves path as it was. The folder of path must exist.
    void WriteList(const ColorList* list, const char* path);

private:
    void ReadRecords(ColorList& list);
    void WriteRecords(const ColorList& list);
};

}  // namespace tessellum
