#include "storage/list_file.h"

#include <cstring>
#include <memory>

#include "color/allocate.h"
#include "storage/color_records.h"
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
        CloseQuietly();
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
                ReadName(*this, list.name);
                break;
            }
            case kTagColor: {
                ReadColorRecord(*this, list, blocks);
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
    WriteU8(kTagColorList);
    WriteName(*this, list.name);
    WriteU8(kTagFiller);
    for (PtrNode* item = list.entries.Head(); item != nullptr; item = item->next) {
        WriteU8(kTagColor);
        WriteColorRecord(*this, *static_cast<const ColorEntry*>(item->value));
        WriteU8(kTagFiller);
    }
    WriteU8(kTagEnd);
}

}  // namespace tessellum
