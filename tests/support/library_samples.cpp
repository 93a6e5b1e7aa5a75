#include "tests/support/library_samples.h"

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
    const PtrList &lists = *expected.colorLists, &palettes = *expected.palettes;
    if (lists.Count() != actual.colorLists->Count()) return "number of lists";
    if (palettes.Count() != actual.palettes->Count()) return "number of palettes";
    for (int l = 0; l < lists.Count(); ++l) {
        const auto& a = *static_cast<const ColorList*>(lists.ValueAt(l));
        const auto& b = *static_cast<const ColorList*>(actual.colorLists->ValueAt(l));
        const std::string list = "list " + std::to_string(l);
        if (std::strcmp(a.name, b.name) != 0 || a.entries.Count() != b.entries.Count()) return list;
        for (int c = 0; c < a.entries.Count(); ++c) {
            const auto& x = *static_cast<const ColorEntry*>(a.entries.ValueAt(c));
            const auto& y = *static_cast<const ColorEntry*>(b.entries.ValueAt(c));
            if (std::strcmp(x.name, y.name) != 0 || x.gridSize != y.gridSize ||
                std::memcmp(&x.cells, &y.cells, sizeof x.cells) != 0)
                return list + ", colour " + std::to_string(c);
        }
    }
    for (int p = 0; p < palettes.Count(); ++p) {
        const auto& a = *static_cast<const NamedPalette*>(palettes.ValueAt(p));
        const auto& b = *static_cast<const NamedPalette*>(actual.palettes->ValueAt(p));
        if (std::strcmp(a.name, b.name) != 0 || !a.palette.Equals(b.palette))
            return "palette " + std::to_string(p);
    }
    return "";
}

}  // namespace tessellum::test
