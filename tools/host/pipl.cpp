#include "tools/host/pipl.h"

#include <algorithm>

#include "tools/host/pe_file.h"

namespace tessellum::host {
namespace {

int32_t I32(const std::vector<uint8_t>& b, size_t at) {
    return static_cast<int32_t>(b[at] | b[at + 1] << 8 | b[at + 2] << 16 |
                                static_cast<uint32_t>(b[at + 3]) << 24);
}

// Four-character codes are stored byte-reversed on little-endian machines.
std::string Code(const std::vector<uint8_t>& b, size_t at) {
    return {static_cast<char>(b[at + 3]), static_cast<char>(b[at + 2]),
            static_cast<char>(b[at + 1]), static_cast<char>(b[at])};
}

std::string PascalString(const std::vector<uint8_t>& data) {
    if (data.empty()) return {};
    const size_t length = std::min<size_t>(data[0], data.size() - 1);
    return {data.begin() + 1, data.begin() + 1 + static_cast<ptrdiff_t>(length)};
}

}  // namespace

Pipl Pipl::Parse(const std::vector<uint8_t>& bytes) {
    if (bytes.size() < 10) throw PeError("the PiPL is shorter than its header");
    const int32_t count = I32(bytes, 6);
    if (count < 0 || count > 1024) throw PeError("the PiPL's property count is implausible");
    Pipl pipl;
    size_t at = 10;
    for (int32_t i = 0; i < count; ++i) {
        if (bytes.size() - at < 16) throw PeError("the PiPL ends inside a property header");
        PiplProperty property;
        property.vendor = Code(bytes, at);
        property.key = Code(bytes, at + 4);
        property.id = I32(bytes, at + 8);
        const int32_t length = I32(bytes, at + 12);
        at += 16;
        if (length < 0 || static_cast<size_t>(length) > bytes.size() - at)
            throw PeError("a PiPL property runs past the end of the list");
        property.data.assign(bytes.begin() + static_cast<ptrdiff_t>(at),
                             bytes.begin() + static_cast<ptrdiff_t>(at) + length);
        at += (static_cast<size_t>(length) + 3) & ~size_t{3};
        pipl.properties.push_back(std::move(property));
        if (at > bytes.size() && i + 1 < count) throw PeError("the PiPL is cut short");
    }
    return pipl;
}

const PiplProperty* Pipl::Find(const std::string& key) const {
    for (const PiplProperty& p : properties) {
        if (p.vendor == "8BIM" && p.key == key) return &p;
    }
    return nullptr;
}

bool Pipl::IsFilter() const {
    const PiplProperty* kind = Find("kind");
    return kind && kind->data.size() == 4 && Code(kind->data, 0) == "8BFM";
}

std::string Pipl::Name() const {
    const PiplProperty* p = Find("name");
    return p ? PascalString(p->data) : std::string();
}

std::string Pipl::Category() const {
    const PiplProperty* p = Find("catg");
    return p ? PascalString(p->data) : std::string();
}

std::string Pipl::EntryPoint(const std::string& codeKey) const {
    const PiplProperty* p = Find(codeKey);
    if (!p) return {};
    const auto end = std::find(p->data.begin(), p->data.end(), uint8_t{0});
    return {p->data.begin(), end};
}

const char* NativeCodeKey() {
    return sizeof(void*) == 8 ? "8664" : "wx86";
}

}  // namespace tessellum::host
