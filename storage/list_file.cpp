#include "storage/list_file.h"

#include <cstring>
#include <memory>

#include "color/allocate.h"
#include "storage/library_file.h"
#include "storage/safe_save.h"

namespace tessellum {

static_assert(sizeof kListMagic == kListMagicLength + 1, "the magic is 10 characters");

ColorList* ListFile::ReadList(const char* path) {
    try {
        std::unique_ptr<ColorList> list(NewOrThrow<ColorList>());
        SetName(path);
        Open(kOpenRead);

        char magic[kListMagicLength + 1] = {};
        Read(magic, kListMagicLength);
        magic[kListMagicLength] = '\0';
        if (std::strcmp(magic, kListMagic) != 0) throw ErrBadMagic;

        ReadRecords(*list);
        Close();
        return list.release();
    } catch (ErrorCode) {
        // The list and any half-built colour are already released.
        if (isOpen) {
            try {
                Close();
            } catch (ErrorCode) {
            }
        }
        throw;
    }
}

void ListFile::ReadRecords(ColorList& list) {
    RecordBlocks blocks;  // the colours and their nodes
    for (;;) {
        const uint8_t tag = ReadU8();
        switch (tag) {
            case kTagFiller: break;
            case kTagEnd: return;
            case kTagColorList: {
                const uint8_t length = ReadU8();
                Read(list.name, length);
                list.name[length] = '\0';
                break;
            }
            case kTagColor: {
                std::unique_ptr<ColorEntry> entry(NewColorEntry(blocks));
                const uint8_t length = ReadU8();
                Read(entry->name, length);
                entry->name[length] = '\0';
                entry->gridSize = ReadU8();  // stored as read; made valid where it is used
                Read(&entry->cells, sizeof entry->cells);
                list.entries.Append(entry.get(), blocks);
                entry.release();
                break;
            }
            default: throw ErrBadData;  // the library's palettes among them
        }
    }
}

void ListFile::WriteList(const ColorList* list, const char* path) {
    if (list == nullptr) return;
    SafeSave(*this, path, nullptr, [&] { WriteRecords(*list); });
}

void ListFile::WriteRecords(const ColorList& list) {
    Write(kListMagic, kListMagicLength);
    const size_t listNameLength = NameLength(list.name);
    WriteU8(kTagColorList);
    WriteU8(static_cast<uint8_t>(listNameLength));
    Write(list.name, static_cast<uint32_t>(listNameLength));
    WriteU8(kTagFiller);
    for (PtrNode* item = list.entries.Head(); item != nullptr; item = item->next) {
        const ColorEntry* entry = static_cast<const ColorEntry*>(item->value);
        const size_t nameLength = NameLength(entry->name);
        WriteU8(kTagColor);
        WriteU8(static_cast<uint8_t>(nameLength));
        Write(entry->name, static_cast<uint32_t>(nameLength));
        WriteU8(entry->gridSize);
        Write(&entry->cells, sizeof entry->cells);
        WriteU8(kTagFiller);
    }
    WriteU8(kTagEnd);
}

}  // namespace tessellum
