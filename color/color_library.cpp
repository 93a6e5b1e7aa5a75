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
    for (PtrNode* node = entries.Head(); node != nullptr; node = node->next)
        delete static_cast<ColorEntry*>(node->value);
    entries.Clear();
}

ColorLibrary::ColorLibrary() : palettes(NewOrThrow<PtrList>()), colorLists(nullptr) {
    colorLists = new (std::nothrow) PtrList;
    if (colorLists == nullptr) {
        delete palettes;
        throw ErrNoMemory;
    }
}

ColorLibrary::~ColorLibrary() {
    for (PtrNode* node = palettes->Head(); node != nullptr; node = node->next)
        delete static_cast<NamedPalette*>(node->value);
    for (PtrNode* node = colorLists->Head(); node != nullptr; node = node->next)
        delete static_cast<ColorList*>(node->value);
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
