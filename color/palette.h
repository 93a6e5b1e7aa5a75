// A run of colours, three bytes each (red, green, blue): the web-safe table, every
// palette of the library and every imported colour table.
#pragma once

#include <cstdint>

namespace tessellum {

class Palette {
public:
    Palette() = default;
    // `entries` black entries.
    explicit Palette(uint32_t entries);
    Palette(const Palette& other);
    ~Palette() { Release(); }
    Palette& operator=(const Palette&) = delete;

    // Releases this palette's colours first; if the copy cannot be allocated the palette
    // is left empty.
    void Assign(const Palette& other);
    void Release();
    // Keeps the first min(count, newCount) entries; entries beyond them are not set.
    // Without memory the palette keeps its old content.
    void Resize(uint32_t newCount);

    uint32_t Count() const { return count; }
    uint8_t* Colors() { return colors; }
    const uint8_t* Colors() const { return colors; }

    bool Equals(const Palette& other) const;
    bool NotEquals(const Palette& other) const { return !Equals(other); }

    // Index of the entry nearest to entry i by plain squared RGB distance, entry i
    // excluded; the lowest index wins a tie and an exact match ends the search. Throws
    // ErrEmptyPalette when there is no other entry to find.
    uint32_t NearestOther(uint32_t i) const;

    // A new palette, owned by the caller, with each colour once in the order of first
    // occurrence. Where map is not null, map[s] receives the new index of each first
    // occurrence s; a repeat leaves its map byte alone.
    Palette* Deduplicate(uint8_t* map) const;

private:
    uint8_t* colors = nullptr;  // count * 3 bytes; null when count is 0
    uint32_t count = 0;
};

// Bits needed to index n colours: 1 to 8.
uint8_t BitsForCount(uint32_t n);

}  // namespace tessellum
