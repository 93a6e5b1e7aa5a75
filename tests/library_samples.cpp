#include "tests/library_samples.h"

#include <cstring>

#include "color/allocate.h"

namespace tessellum::test {
namespace {

uint8_t SampleByte(uint32_t seed, uint32_t i) {
    uint32_t x = seed * 2654435761u + i * 40503u + 12345u;
    x ^= x >> 13;
    return static_cast<uint8_t>(x * 0x5bd1e995u >> 24);
}

// Names of length (seed mod 256) made of bytes 1 to 255.
std::string SampleName(uint32_t seed) {
    std::string name;
    for (uint32_t i = 0; i < seed % 256; ++i)
        name += static_cast<char>(1 + SampleByte(seed, i) % 255);
    return name;
}

std::string Describe(const char* what, int index) {
    return std::string(what) + " " + std::to_string(index);
}

}  // namespace

ColorList* AddList(ColorLibrary& library, const std::string& name) {
    ColorList* list = NewOrThrow<ColorList>();
    CopyName(list->name, name.c_str());
    library.colorLists->Append(list);
    return list;
}

ColorEntry* AddColor(ColorList& list, const std::string& name, uint8_t gridSize, uint32_t seed) {
    ColorEntry* entry = NewColorEntry();
    CopyName(entry->name, name.c_str());
    entry->gridSize = gridSize;
    uint8_t* bytes = reinterpret_cast<uint8_t*>(&entry->cells);
    for (uint32_t i = 0; i < sizeof entry->cells; ++i) bytes[i] = SampleByte(seed, i);
    list.entries.Append(entry);
    return entry;
}

NamedPalette* AddPalette(ColorLibrary& library, const std::string& name, uint32_t count,
                         uint32_t seed) {
    NamedPalette* named = NewOrThrow<NamedPalette>();
    CopyName(named->name, name.c_str());
    named->palette.Resize(count);
    for (uint32_t i = 0; i < count * 3; ++i) named->palette.Colors()[i] = SampleByte(seed, i);
    library.palettes->Append(named);
    return named;
}

ColorLibrary* MakeSampleLibrary(int lists, int colors, int palettes) {
    static const uint8_t kGridSizes[] = {2, 3, 4, 5, 6, 8};
    ColorLibrary* library = NewOrThrow<ColorLibrary>();
    uint32_t seed = 1;
    for (int l = 0; l < lists; ++l) {
        ColorList* list = AddList(*library, SampleName(seed++));
        for (int c = 0; c < colors; ++c, ++seed)
            AddColor(*list, SampleName(seed), kGridSizes[seed % 6], seed);
    }
    for (int p = 0; p < palettes; ++p, ++seed) AddPalette(*library, SampleName(seed), 256, seed);
    return library;
}

std::string CompareLibraries(const ColorLibrary& expected, const ColorLibrary& actual) {
    if (expected.colorLists->Count() != actual.colorLists->Count()) return "number of lists";
    if (expected.palettes->Count() != actual.palettes->Count()) return "number of palettes";
    for (int l = 0; l < expected.colorLists->Count(); ++l) {
        auto* a = static_cast<const ColorList*>(expected.colorLists->ValueAt(l));
        auto* b = static_cast<const ColorList*>(actual.colorLists->ValueAt(l));
        if (std::strcmp(a->name, b->name) != 0) return Describe("name of list", l);
        if (a->entries.Count() != b->entries.Count())
            return Describe("number of colours in list", l);
        for (int c = 0; c < a->entries.Count(); ++c) {
            auto* x = static_cast<const ColorEntry*>(a->entries.ValueAt(c));
            auto* y = static_cast<const ColorEntry*>(b->entries.ValueAt(c));
            const std::string where = Describe("list", l) + ", " + Describe("colour", c);
            if (std::strcmp(x->name, y->name) != 0) return "name of " + where;
            if (x->gridSize != y->gridSize) return "GridSize of " + where;
            if (std::memcmp(&x->cells, &y->cells, sizeof x->cells) != 0) return "cells of " + where;
        }
    }
    for (int p = 0; p < expected.palettes->Count(); ++p) {
        auto* a = static_cast<const NamedPalette*>(expected.palettes->ValueAt(p));
        auto* b = static_cast<const NamedPalette*>(actual.palettes->ValueAt(p));
        if (std::strcmp(a->name, b->name) != 0) return Describe("name of palette", p);
        if (!a->palette.Equals(b->palette)) return Describe("colours of palette", p);
    }
    return "";
}

}  // namespace tessellum::test
