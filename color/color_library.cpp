#include "color/color_library.h"

#include <cstring>

#include "color/allocate.h"

namespace tessellum {

ColorEntry* NewColorEntry() {
    ColorEntry* entry = NewOrThrow<ColorEntry>();  // value-initialised: every byte zero
    entry->gridSize = 2;
    return entry;
}

ColorEntry* NewColorEntry(RecordBlocks& blocks) {
    // Not value-initialised: the bytes are zeroed already, by the C library's memset,
    // which is much faster here than the string instruction the compiler would inline.
    ColorEntry* entry = ::new (blocks.CarveZeroed(sizeof(ColorEntry))) ColorEntry;
    entry->gridSize = 2;
    return entry;
}

ColorList::~ColorList() {
    entries.ClearWith([](void* entry) { delete static_cast<ColorEntry*>(entry); });
}

ColorLibrary::ColorLibrary() : palettes(NewOrThrow<PtrList>()), colorLists(nullptr) {
    colorLists = new (std::nothrow) PtrList;
    if (colorLists == nullptr) {
        delete palettes;
        throw ErrNoMemory;
    }
}

ColorLibrary::~ColorLibrary() {
    palettes->ClearWith([](void* palette) { delete static_cast<NamedPalette*>(palette); });
    colorLists->ClearWith([](void* list) { delete static_cast<ColorList*>(list); });
    delete palettes;
    delete colorLists;
}

void CopyName(char (&name)[kNameBytes], const char* text) {
    size_t length = 0;
    while (length < kMaxNameLength && text[length] != '\0') ++length;
    std::memcpy(name, text, length);
    name[length] = '\0';
}

size_t NameLength(const char (&name)[kNameBytes]) {
    size_t length = 0;
    while (length < kMaxNameLength && name[length] != '\0') ++length;
    return length;
}

}  // namespace tessellum
