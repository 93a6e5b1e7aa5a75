#include "storage/color_records.h"

#include <memory>

#include "color/record_blocks.h"

namespace tessellum {

void ReadName(BinaryFile& file, char (&name)[kNameBytes]) {
    const uint8_t length = file.ReadU8();
    file.Read(name, length);
    name[length] = '\0';
}

void WriteName(BinaryFile& file, const char (&name)[kNameBytes]) {
    const size_t length = NameLength(name);
    file.WriteU8(static_cast<uint8_t>(length));
    file.Write(name, static_cast<uint32_t>(length));
}

void ReadColorRecord(BinaryFile& file, ColorList& list, RecordBlocks& blocks) {
    std::unique_ptr<ColorEntry> entry(NewColorEntry(blocks));
    ReadName(file, entry->name);
    entry->gridSize = file.ReadU8();  // stored as read; made valid where it is used
    file.Read(&entry->cells, sizeof entry->cells);
    list.entries.Append(entry.get(), blocks);
    entry.release();
}

void WriteColorRecord(BinaryFile& file, const ColorEntry& entry) {
    WriteName(file, entry.name);
    file.WriteU8(entry.gridSize);
    file.Write(&entry.cells, sizeof entry.cells);
}

}  // namespace tessellum
