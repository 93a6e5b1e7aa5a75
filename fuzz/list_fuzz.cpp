// Hostile list exchange files. Whatever the bytes, an import either throws one of the
// codes of a refused file, with nothing left allocated and the file closed, or gives a
// list that exports and imports back unchanged and exports again to the same bytes.
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "fuzz/fuzz_files.h"
#include "storage/list_file.h"

using tessellum::ColorEntry;
using tessellum::ColorList;
using tessellum::ErrorCode;
using tessellum::ListFile;
using tessellum::NameLength;
using tessellum::fuzz::LowestFreeDescriptor;
using tessellum::fuzz::ReadFile;
using tessellum::fuzz::Require;
using tessellum::fuzz::WorkDirectory;
using tessellum::fuzz::WriteFile;

namespace {

bool SameLists(const ColorList& a, const ColorList& b) {
    if (std::strcmp(a.name, b.name) != 0 || a.entries.Count() != b.entries.Count()) return false;
    for (auto x = a.entries.Head(), y = b.entries.Head(); x != nullptr; x = x->next, y = y->next) {
        const ColorEntry& p = *static_cast<const ColorEntry*>(x->value);
        const ColorEntry& q = *static_cast<const ColorEntry*>(y->value);
        if (std::strcmp(p.name, q.name) != 0 || p.gridSize != q.gridSize ||
            std::memcmp(&p.cells, &q.cells, sizeof p.cells) != 0)
            return false;
    }
    return true;
}

// The magic, the name record and a filler, each colour record and a filler, the end.
size_t ExportedSize(const ColorList& list) {
    size_t size = 10 + 2 + NameLength(list.name) + 1 + 1;
    for (auto item = list.entries.Head(); item != nullptr; item = item->next)
        size += 2 + NameLength(static_cast<const ColorEntry*>(item->value)->name) + 1 + 192 + 1;
    return size;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const int descriptor = LowestFreeDescriptor();
    const std::string input = WorkDirectory() + "/input.tsl";
    const std::string saved = WorkDirectory() + "/exported.tsl";
    WriteFile(input, data, size);

    ListFile file;
    std::unique_ptr<ColorList> list;
    try {
        list.reset(file.ReadList(input.c_str()));
    } catch (ErrorCode code) {
        Require(!file.IsOpen() && LowestFreeDescriptor() == descriptor,
                "a refused file was left open");
        Require(code == tessellum::ErrEndOfFile || code == tessellum::ErrBadData ||
                    code == tessellum::ErrBadMagic,
                "a refused file gave a code that no content can cause");
        return 0;
    }
    Require(!file.IsOpen() && LowestFreeDescriptor() == descriptor,
            "an imported file was left open");

    // The same object exports and imports again, as the dialog's does.
    file.WriteList(list.get(), saved.c_str());
    const std::vector<uint8_t> first = ReadFile(saved);
    Require(first.size() == ExportedSize(*list) && first.back() == 0x3B,
            "an export is not laid out as the format says");
    std::unique_ptr<ColorList> back(file.ReadList(saved.c_str()));
    Require(SameLists(*list, *back), "an export and an import changed the list");
    file.WriteList(back.get(), saved.c_str());
    Require(ReadFile(saved) == first, "a second export gave other bytes");
    return 0;
}
