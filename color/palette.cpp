#include "color/palette.h"

#include <cstring>
#include <memory>

#include "color/allocate.h"

namespace tessellum {
namespace {

// An empty palette holds no array at all, so that a search on it fails as it should.
uint8_t* NewColorArray(uint32_t count) {
    if (count == 0) return nullptr;
    const uint64_t bytes = static_cast<uint64_t>(count) * 3;
    if (bytes > SIZE_MAX) throw ErrNoMemory;
    return NewBytesOrThrow(static_cast<size_t>(bytes));
}

int SquaredDistance(const uint8_t* a, const uint8_t* b) {
    const int dr = a[0] - b[0];
    const int dg = a[1] - b[1];
    const int db = a[2] - b[2];
    return dr * dr + dg * dg + db * db;
}

}  // namespace

Palette::Palette(uint32_t entries) : colors(NewColorArray(entries)), count(entries) {}

Palette::Palette(const Palette& other) {
    Assign(other);
}

void Palette::Assign(const Palette& other) {
    if (&other == this) return;
    Release();
    colors = NewColorArray(other.count);
    if (other.count != 0) std::memcpy(colors, other.colors, static_cast<size_t>(other.count) * 3);
    count = other.count;
}

void Palette::Release() {
    delete[] colors;
    colors = nullptr;
    count = 0;
}

void Palette::Resize(uint32_t newCount) {
    uint8_t* resized = NewColorArray(newCount);
    const uint32_t keep = count < newCount ? count : newCount;
    if (keep != 0) std::memcpy(resized, colors, static_cast<size_t>(keep) * 3);
    delete[] colors;
    colors = resized;
    count = newCount;
}

bool Palette::Equals(const Palette& other) const {
    if (count != other.count) return false;
    return count == 0 || std::memcmp(colors, other.colors, static_cast<size_t>(count) * 3) == 0;
}

uint32_t Palette::NearestOther(uint32_t i) const {
    if (colors == nullptr || count < 2) throw ErrEmptyPalette;
    const uint8_t* target = colors + static_cast<size_t>(i) * 3;
    uint32_t best = i == 0 ? 1 : 0;
    int bestDistance = SquaredDistance(colors + static_cast<size_t>(best) * 3, target);
    for (uint32_t j = best + 1; j < count; ++j) {
        if (j == i) continue;
        const int distance = SquaredDistance(colors + static_cast<size_t>(j) * 3, target);
        if (distance < bestDistance) {
            best = j;
            if (distance == 0) return j;
            bestDistance = distance;
        }
    }
    return best;
}

Palette* Palette::Deduplicate(uint8_t* map) const {
    std::unique_ptr<Palette> output(NewOrThrow<Palette>());
    output->Assign(*this);
    uint32_t written = 0;
    for (uint32_t s = 0; s < count; ++s) {
        const uint8_t* color = colors + static_cast<size_t>(s) * 3;
        bool seen = false;
        for (uint32_t k = 0; k < written && !seen; ++k)
            seen = std::memcmp(output->colors + static_cast<size_t>(k) * 3, color, 3) == 0;
        if (seen) continue;
        if (map != nullptr) map[s] = static_cast<uint8_t>(written);
        std::memcpy(output->colors + static_cast<size_t>(written) * 3, color, 3);
        ++written;
    }
    output->Resize(written);
    return output.release();
}

uint8_t BitsForCount(uint32_t n) {
    uint8_t bits = 1;
    while (bits < 8 && (uint32_t{1} << bits) < n) ++bits;
    return bits;
}

}  // namespace tessellum
