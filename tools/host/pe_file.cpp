#include "tools/host/pe_file.h"

#include <cstdio>
#include <fstream>
#include <iterator>

namespace tessellum::host {
namespace {

struct Section {
    uint32_t virtualAddress;
    uint32_t virtualSize;
    uint32_t rawOffset;
    uint32_t rawSize;
};

// Bounds-checked little-endian access: every offset comes from the file itself.
class Reader {
public:
    explicit Reader(const std::vector<uint8_t>& bytes) : bytes_(bytes) {}

    uint32_t U8(uint64_t at) const { return Need(at, 1), bytes_[at]; }
    uint32_t U16(uint64_t at) const { return Need(at, 2), bytes_[at] | bytes_[at + 1] << 8; }
    uint32_t U32(uint64_t at) const {
        Need(at, 4);
        return bytes_[at] | bytes_[at + 1] << 8 | bytes_[at + 2] << 16 |
               static_cast<uint32_t>(bytes_[at + 3]) << 24;
    }
    std::string CString(uint64_t at) const {
        std::string text;
        for (uint64_t i = at;; ++i) {
            const char c = static_cast<char>(U8(i));
            if (c == 0) return text;
            text += c;
            if (text.size() > 4096) throw PeError("a name in the image is not terminated");
        }
    }
    std::vector<uint8_t> Bytes(uint64_t at, uint64_t size) const {
        Need(at, size);
        return {bytes_.begin() + at, bytes_.begin() + at + size};
    }
    void Need(uint64_t at, uint64_t size) const {
        if (at > bytes_.size() || size > bytes_.size() - at)
            throw PeError("the file is cut short or its headers point outside it");
    }

private:
    const std::vector<uint8_t>& bytes_;
};

class Image {
public:
    explicit Image(const std::vector<uint8_t>& bytes) : in(bytes) {}

    uint64_t Offset(uint32_t rva) const {
        for (const Section& s : sections) {
            const uint32_t size = s.virtualSize > s.rawSize ? s.virtualSize : s.rawSize;
            if (rva >= s.virtualAddress && rva - s.virtualAddress < size) {
                return static_cast<uint64_t>(s.rawOffset) + (rva - s.virtualAddress);
            }
        }
        throw PeError("an address in the image lies in no section");
    }

    Reader in;
    std::vector<Section> sections;
};

void ReadExports(const Image& image, uint32_t rva, PeFile& pe) {
    const uint64_t dir = image.Offset(rva);
    const uint32_t count = image.in.U32(dir + 24);
    const uint32_t names = image.in.U32(dir + 32);
    if (count > 65536) throw PeError("the export table is implausibly large");
    for (uint32_t i = 0; i < count; ++i) {
        const uint32_t nameRva = image.in.U32(image.Offset(names) + 4 * i);
        pe.exports.push_back(image.in.CString(image.Offset(nameRva)));
    }
}

void ReadImports(const Image& image, uint32_t rva, PeFile& pe) {
    for (uint64_t entry = image.Offset(rva);; entry += 20) {
        const uint32_t nameRva = image.in.U32(entry + 12);
        if (nameRva == 0) return;
        pe.imports.push_back(image.in.CString(image.Offset(nameRva)));
        if (pe.imports.size() > 4096) throw PeError("the import table is not terminated");
    }
}

std::string ResourceName(const Image& image, uint64_t base, uint32_t nameField) {
    if (!(nameField & 0x80000000u)) return "#" + std::to_string(nameField);
    const uint64_t at = base + (nameField & 0x7FFFFFFFu);
    const uint32_t length = image.in.U16(at);
    std::string name;
    for (uint32_t i = 0; i < length; ++i) name += static_cast<char>(image.in.U16(at + 2 + 2 * i));
    return name;
}

// Resource tree: type, then name or id, then language, then the data entry.
void ReadResources(const Image& image, uint32_t rva, PeFile& pe) {
    const uint64_t base = image.Offset(rva);
    auto entries = [&](uint64_t dir, auto&& each) {
        const uint32_t count = image.in.U16(dir + 12) + image.in.U16(dir + 14);
        if (count > 65536) throw PeError("a resource directory is implausibly large");
        for (uint32_t i = 0; i < count; ++i) {
            const uint64_t entry = dir + 16 + 8 * i;
            each(image.in.U32(entry), image.in.U32(entry + 4));
        }
    };
    auto subdirectory = [&](uint32_t field) {
        if (!(field & 0x80000000u)) throw PeError("the resource tree is malformed");
        return base + (field & 0x7FFFFFFFu);
    };
    entries(base, [&](uint32_t typeName, uint32_t typeChild) {
        const std::string type = ResourceName(image, base, typeName);
        entries(subdirectory(typeChild), [&](uint32_t idName, uint32_t idChild) {
            const uint32_t id = (idName & 0x80000000u) ? 0xFFFFFFFFu : idName;
            entries(subdirectory(idChild), [&](uint32_t language, uint32_t dataField) {
                if (dataField & 0x80000000u) throw PeError("the resource tree is malformed");
                const uint64_t data = base + dataField;
                const uint32_t dataRva = image.in.U32(data);
                const uint32_t size = image.in.U32(data + 4);
                pe.resources.push_back({type, id, static_cast<uint16_t>(language),
                                        image.in.Bytes(image.Offset(dataRva), size)});
            });
        });
    });
}

}  // namespace

PeFile PeFile::Parse(const std::vector<uint8_t>& bytes) {
    Image image(bytes);
    const Reader& in = image.in;
    if (bytes.size() < 64 || bytes[0] != 'M' || bytes[1] != 'Z')
        throw PeError("not a Windows program or library (no MZ header)");
    const uint32_t pe = in.U32(60);
    if (in.U32(pe) != 0x00004550) throw PeError("not a Windows program or library (no PE header)");

    PeFile file;
    file.machine = static_cast<uint16_t>(in.U16(pe + 4));
    const uint32_t sectionCount = in.U16(pe + 6);
    const uint32_t optionalSize = in.U16(pe + 20);
    file.isDll = (in.U16(pe + 22) & 0x2000) != 0;
    const uint64_t optional = pe + 24;
    const uint32_t magic = in.U16(optional);
    if (magic != 0x10B && magic != 0x20B) throw PeError("unknown optional header");
    const uint64_t directories = optional + (magic == 0x10B ? 96 : 112);
    const uint32_t directoryCount = in.U32(optional + (magic == 0x10B ? 92 : 108));

    const uint64_t sectionTable = optional + optionalSize;
    for (uint32_t i = 0; i < sectionCount; ++i) {
        const uint64_t s = sectionTable + 40 * i;
        image.sections.push_back({in.U32(s + 12), in.U32(s + 8), in.U32(s + 20), in.U32(s + 16)});
    }
    auto directory = [&](uint32_t index) -> uint32_t {
        return index < directoryCount ? in.U32(directories + 8 * index) : 0;
    };
    if (uint32_t rva = directory(0)) ReadExports(image, rva, file);
    if (uint32_t rva = directory(1)) ReadImports(image, rva, file);
    if (uint32_t rva = directory(2)) ReadResources(image, rva, file);
    return file;
}

PeFile PeFile::Read(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) throw PeError("cannot open " + path);
    std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(stream)),
                               std::istreambuf_iterator<char>());
    return Parse(bytes);
}

const PeResource* PeFile::FindResource(const std::string& type, uint32_t id) const {
    for (const PeResource& r : resources) {
        if (r.type == type && r.id == id) return &r;
    }
    return nullptr;
}

std::string MachineName(uint16_t machine) {
    switch (machine) {
        case kMachineI386: return "32-bit x86";
        case kMachineAmd64: return "64-bit x64";
        default: {
            char text[32];
            std::snprintf(text, sizeof text, "machine 0x%04X", machine);
            return text;
        }
    }
}

}  // namespace tessellum::host
