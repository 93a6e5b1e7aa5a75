#include "tools/host/version_info.h"

#include "tools/host/pe_file.h"

namespace tessellum::host {
namespace {

constexpr uint32_t kFixedSignature = 0xFEEF04BD;

// A block of the resource: length, value length, type, key, value, child blocks, each
// part aligned to four bytes from the start of the resource.
struct Block {
    std::string key;
    size_t value = 0;  // where the value starts
    size_t end = 0;    // where the block ends
    size_t children = 0;
};

class Parser {
public:
    explicit Parser(const std::vector<uint8_t>& bytes) : bytes_(bytes) {}

    uint32_t U16(size_t at) const {
        Need(at, 2);
        return bytes_[at] | bytes_[at + 1] << 8;
    }
    uint32_t U32(size_t at) const { return U16(at) | U16(at + 2) << 16; }

    // The text from `at` to its terminator, ending no later than `end`.
    std::string Text(size_t at, size_t end, size_t* after = nullptr) const {
        std::string text;
        for (; at + 2 <= end; at += 2) {
            const uint32_t c = U16(at);
            if (c == 0) break;
            text += c < 0x80 ? static_cast<char>(c) : '?';
        }
        if (after) *after = at + 2;
        return text;
    }

    Block Read(size_t at, size_t limit) const {
        Block block;
        const uint32_t length = U16(at);
        if (length < 6 || at + length > limit) throw PeError("a version block overruns its parent");
        block.end = at + length;
        const uint32_t valueLength = U16(at + 2);
        const bool text = U16(at + 4) == 1;
        size_t after = 0;
        block.key = Text(at + 6, block.end, &after);
        block.value = Align(after);
        const size_t valueBytes = text ? valueLength * 2u : valueLength;
        block.children = Align(block.value + valueBytes);
        if (block.children > block.end) block.children = block.end;  // text values often do
        return block;
    }

    // Calls `each` for every child block of `parent`.
    template <typename Each>
    void Children(const Block& parent, Each&& each) const {
        for (size_t at = parent.children; at + 6 <= parent.end;) {
            const Block child = Read(at, parent.end);
            each(child);
            at = Align(child.end);
        }
    }

private:
    static size_t Align(size_t at) { return (at + 3) & ~size_t{3}; }
    void Need(size_t at, size_t size) const {
        if (at > bytes_.size() || size > bytes_.size() - at)
            throw PeError("the version resource is cut short");
    }
    const std::vector<uint8_t>& bytes_;
};

}  // namespace

VersionInfo ParseVersionInfo(const std::vector<uint8_t>& bytes) {
    const Parser in(bytes);
    const Block root = in.Read(0, bytes.size());
    if (root.key != "VS_VERSION_INFO" || in.U32(root.value) != kFixedSignature)
        throw PeError("not a version resource");
    VersionInfo info;
    for (int i = 0; i < 4; ++i) {
        // Each version is two 32-bit words, the higher part of each in its upper half.
        info.fileVersion[i] = static_cast<uint16_t>(in.U16(root.value + 8 + (i ^ 1) * 2));
        info.productVersion[i] = static_cast<uint16_t>(in.U16(root.value + 16 + (i ^ 1) * 2));
    }
    bool tableRead = false;
    in.Children(root, [&](const Block& group) {
        if (group.key != "StringFileInfo") return;
        in.Children(group, [&](const Block& table) {
            if (tableRead) return;
            tableRead = true;
            in.Children(table, [&](const Block& value) {
                info.strings[value.key] = in.Text(value.value, value.end);
            });
        });
    });
    return info;
}

std::optional<VersionInfo> ReadVersionInfo(const PeFile& file) {
    const PeResource* resource = file.FindResource("#16", 1);  // RT_VERSION
    if (!resource) return std::nullopt;
    return ParseVersionInfo(resource->data);
}

}  // namespace tessellum::host
