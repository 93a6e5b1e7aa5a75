#include "color/color_library.h"

#include <cstring>

#include "color/allocate.h"

namespace tessellum {

ColorEntry* NewColorEntry() {
    ColorEntry* entry = NewOrThrow<ColorEntry>();  // value-initialised: every byte zero
    entry->gridSize = 2;
    return entry;
}

ColorList::~ColorList() {
    while (entries.Head() != nullptr) {
        ColorEntry* entry = static_cast<ColorEntry*>(entries.ValueAt(0));
        entries.RemoveAt(0);
        delete entry;
    }
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
    while (palettes->Head() != nullptr) {
        NamedPalette* palette = static_cast<NamedPalette*>(palettes->ValueAt(0));
        palettes->RemoveAt(0);
        delete palette;
    }
    while (colorLists->Head() != nullptr) {
        ColorList* list = static_cast<ColorList*>(colorLists->ValueAt(0));
        colorLists->RemoveAt(0);
        delete list;
    }
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
