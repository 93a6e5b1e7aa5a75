// The plug-in's property list, byte for byte, written out from its published layout
// independently of the resource script that produces it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessellum::test {

inline void PutInt32(std::vector<uint8_t>& out, int32_t value) {
    for (int i = 0; i < 4; ++i) out.push_back(static_cast<uint8_t>(value >> (8 * i)));
}

inline void PutProperty(std::vector<uint8_t>& out, const char* key, const std::string& data) {
    out.insert(out.end(), {'M', 'I', 'B', '8'});
    out.insert(out.end(), key, key + 4);
    PutInt32(out, 0);
    PutInt32(out, static_cast<int32_t>(data.size()));
    out.insert(out.end(), data.begin(), data.end());
}

// `codeKey` as stored: "68xw" for the x86 build, "4668" for the x64 one.
inline std::vector<uint8_t> ExpectedPipl(const char* codeKey) {
    using namespace std::string_literals;
    std::vector<uint8_t> out = {1, 0};
    PutInt32(out, 0);
    PutInt32(out, 6);
    PutProperty(out, "dnik", "MFB8");
    PutProperty(out, "eman", "\x0BTessellum..");
    PutProperty(out, "gtac", "\x10Quarry Web Tools\0\0\0"s);
    PutProperty(out, "srev", "\0\0\4\0"s);
    PutProperty(out, codeKey, "ENTRYPOINT\0\0"s);
    PutProperty(out, "edom", "\x10\0\0\0"s);
    return out;
}

}  // namespace tessellum::test
