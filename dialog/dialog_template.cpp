#include "dialog/dialog_template.h"

namespace tessellum {
namespace {

constexpr uint32_t kSetFont = 0x40;  // DS_SETFONT

uint32_t Word(const std::vector<uint8_t>& bytes, size_t at) {
    return bytes[at] | uint32_t{bytes[at + 1]} << 8;
}

// Past a menu or class field: none (0), an ordinal (0xFFFF and a number) or a string.
// False when the field runs past the end.
bool SkipField(const std::vector<uint8_t>& bytes, size_t& at) {
    if (at + 2 > bytes.size()) return false;
    const uint32_t first = Word(bytes, at);
    if (first == 0xFFFF) {
        at += 4;
        return at <= bytes.size();
    }
    for (; at + 2 <= bytes.size(); at += 2) {
        if (Word(bytes, at) == 0) {
            at += 2;
            return true;
        }
    }
    return false;
}

bool SkipString(const std::vector<uint8_t>& bytes, size_t& at) {
    for (; at + 2 <= bytes.size(); at += 2) {
        if (Word(bytes, at) == 0) {
            at += 2;
            return true;
        }
    }
    return false;
}

// Where the face's characters start and where its terminating zero ends.
bool FindFace(const std::vector<uint8_t>& bytes, size_t& start, size_t& end) {
    if (bytes.size() < 18) return false;
    const bool extended = Word(bytes, 0) == 1 && Word(bytes, 2) == 0xFFFF;
    const size_t styleAt = extended ? 12 : 0;
    const uint32_t style = Word(bytes, styleAt) | Word(bytes, styleAt + 2) << 16;
    if ((style & kSetFont) == 0) return false;
    size_t at = extended ? 26 : 18;
    if (at > bytes.size() || !SkipField(bytes, at) || !SkipField(bytes, at) ||
        !SkipString(bytes, at)) {
        return false;
    }
    at += extended ? 6 : 2;  // point size; and weight, italic, character set
    start = at;
    if (at > bytes.size() || !SkipString(bytes, at)) return false;
    end = at;
    return true;
}

size_t Aligned(size_t at) {
    return (at + 3) & ~size_t{3};
}

}  // namespace

std::vector<uint8_t> WithDialogFace(const std::vector<uint8_t>& bytes, const std::string& face) {
    size_t start = 0, end = 0;
    if (!FindFace(bytes, start, end)) return {};
    std::vector<uint8_t> out(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(start));
    for (char c : face) out.insert(out.end(), {static_cast<uint8_t>(c), 0});
    out.insert(out.end(), {0, 0});
    // The first item stands on the next 4-byte boundary, in the copy as in the template.
    out.resize(Aligned(out.size()), 0);
    if (Aligned(end) < bytes.size())
        out.insert(out.end(), bytes.begin() + static_cast<std::ptrdiff_t>(Aligned(end)),
                   bytes.end());
    return out;
}

std::string DialogFace(const std::vector<uint8_t>& bytes) {
    size_t start = 0, end = 0;
    if (!FindFace(bytes, start, end)) return {};
    std::string face;
    for (size_t at = start; at + 2 < end; at += 2) face += static_cast<char>(bytes[at]);
    return face;
}

}  // namespace tessellum
