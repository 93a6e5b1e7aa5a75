// The property list (PiPL) by which a host recognises a filter and finds its entry.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessellum::host {

struct PiplProperty {
    std::string vendor;  // as published, e.g. "8BIM" (stored byte-reversed)
    std::string key;     // as published, e.g. "kind", "wx86", "8664"
    int32_t id = 0;
    std::vector<uint8_t> data;  // without the padding to four bytes
};

struct Pipl {
    std::vector<PiplProperty> properties;

    // Parses the little-endian list. Throws PeError for a damaged list.
    static Pipl Parse(const std::vector<uint8_t>& bytes);

    const PiplProperty* Find(const std::string& key) const;
    bool IsFilter() const;         // kind is "8BFM"
    std::string Name() const;      // the menu item, from name
    std::string Category() const;  // the submenu, from catg
    // Entry point for the given code property ("wx86" or "8664"); empty if absent.
    std::string EntryPoint(const std::string& codeKey) const;
};

// The code property a host of this build's architecture reads.
const char* NativeCodeKey();

}  // namespace tessellum::host
