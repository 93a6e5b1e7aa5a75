// The records the user keeps between runs: named lists of named colours (each colour a
// Pattern with its GridSize) and named palettes. Plain data with fixed name buffers;
// a record never moves once allocated, since the dialog keeps pointers into it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>

#include "color/palette.h"
#include "color/pattern.h"
#include "color/ptr_list.h"

namespace tessellum {

constexpr int kNameBytes = 256;  // at most 255 characters and the terminator
constexpr int kMaxNameLength = kNameBytes - 1;

// One named colour, 449 bytes with no gaps. Made alone or carved from a load's blocks,
// an entry is freed by `delete`.
struct ColorEntry {
    char name[kNameBytes];
    Pattern cells;
    uint8_t gridSize;

    static void* operator new(size_t size, const std::nothrow_t&) noexcept {
        return RecordBlocks::Single(size);
    }
    static void operator delete(void* entry, size_t size) noexcept {
        RecordBlocks::Free(entry, size);
    }
    static void operator delete(void* entry, const std::nothrow_t&) noexcept {
        RecordBlocks::Free(entry, sizeof(ColorEntry));
    }
};
static_assert(sizeof(ColorEntry) == 449, "ColorEntry is 449 bytes");

// A colour with an empty name, all 192 bytes of cells zero (they are shown, averaged
// and stored, so none may be left undefined) and GridSize 2. Throws ErrNoMemory.
ColorEntry* NewColorEntry();
// The same carved from `blocks`.
ColorEntry* NewColorEntry(RecordBlocks& blocks);

// A named list; owns every ColorEntry in entries, in display and file order.
struct ColorList {
    char name[kNameBytes] = {};
    PtrList entries;

    ColorList() = default;
    ~ColorList();
    ColorList(const ColorList&) = delete;
    ColorList& operator=(const ColorList&) = delete;
};

// A palette kept in the library; owns its colours.
struct NamedPalette {
    char name[kNameBytes] = {};
    Palette palette;
};

// The whole persistent set. Both lists exist from construction to teardown.
class ColorLibrary {
public:
    // Throws ErrNoMemory, with nothing left allocated.
    ColorLibrary();
    // Frees every palette and every list with its colours, then both lists.
    ~ColorLibrary();
    ColorLibrary(const ColorLibrary&) = delete;
    ColorLibrary& operator=(const ColorLibrary&) = delete;

    PtrList* palettes;    // values are NamedPalette*
    PtrList* colorLists;  // values are ColorList*
};

// Copies text into a name buffer, cut to 255 characters.
void CopyName(char (&name)[kNameBytes], const char* text);

// Length of the text in a name buffer, never beyond 255 even if the terminator is lost.
size_t NameLength(const char (&name)[kNameBytes]);

}  // namespace tessellum
