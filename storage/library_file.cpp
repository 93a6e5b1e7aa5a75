#include "storage/library_file.h"

#include <cstring>
#include <memory>

#include "color/allocate.h"
#include "storage/system_io.h"

namespace tessellum {

ColorLibrary* LibraryFile::ReadLibrary(const char* path) {
    try {
        std::unique_ptr<ColorLibrary> library(NewOrThrow<ColorLibrary>());
        SetName(path);
        Open(kOpenRead);

        char magic[kLibraryMagicLength + 1] = {};
        Read(magic, kLibraryMagicLength);
        magic[kLibraryMagicLength] = '\0';
        if (std::strcmp(magic, kLibraryOldMagic) != 0 && std::strcmp(magic, kLibraryMagic) != 0)
            throw ErrBadMagic;

        ReadRecords(*library);
        Close();
        keepAsideOnSave = false;
        return library.release();
    } catch (ErrorCode code) {
        // The library and any half-built record are already released.
        if (isOpen) {
            try {
                Close();
            } catch (ErrorCode) {
            }
        }
        if (code != ErrFileNotFound) keepAsideOnSave = true;
        throw;
    }
}

void LibraryFile::ReadRecords(ColorLibrary& library) {
    RecordBlocks blocks;  // the colours and their nodes
    for (;;) {
        const uint8_t tag = ReadU8();
        switch (tag) {
            case kTagFiller: break;
            case kTagEnd: return;
            case kTagColorList: {
                std::unique_ptr<ColorList> list(NewOrThrow<ColorList>());
                const uint8_t length = ReadU8();
                Read(list->name, length);
                list->name[length] = '\0';
                library.colorLists->Append(list.get());
                list.release();
                break;
            }
            case kTagPalette: {
                std::unique_ptr<NamedPalette> named(NewOrThrow<NamedPalette>());
                const uint8_t length = ReadU8();
                Read(named->name, length);
                named->name[length] = '\0';
                const uint16_t count = ReadU16BE();
                if (count > kMaxPaletteColors) throw ErrBadData;
                named->palette.Resize(count);
                Read(named->palette.Colors(), uint32_t{count} * 3);
                library.palettes->Append(named.get());
                named.release();
                break;
            }
            case kTagColor: {
                PtrNode* last = library.colorLists->Tail();
                if (last == nullptr) throw ErrBadData;
                ColorList* list = static_cast<ColorList*>(last->value);
                std::unique_ptr<ColorEntry> entry(NewColorEntry(blocks));
                const uint8_t length = ReadU8();
                Read(entry->name, length);
                entry->name[length] = '\0';
                entry->gridSize = ReadU8();  // stored as read; made valid where it is used
                Read(&entry->cells, sizeof entry->cells);
                list->entries.Append(entry.get(), blocks);
                entry.release();
                break;
            }
            default: throw ErrBadData;
        }
    }
}

void LibraryFile::WriteLibrary(const ColorLibrary* library, const char* path) {
    if (library == nullptr) return;
    std::unique_ptr<char[]> asidePath;
    if (keepAsideOnSave) asidePath = PathWithSuffix(path, kKeptAsideSuffix);

    // The library's folder may not exist yet (the default one rarely does): a missing
    // folder must not drop the user's lists.
    system_io::MakeFolderOf(path);
    SafeSave(*this, path, asidePath.get(), [&] { WriteRecords(*library); });
    keepAsideOnSave = false;
}

void LibraryFile::WriteRecords(const ColorLibrary& library) {
    Write(kLibraryMagic, kLibraryMagicLength);
    for (PtrNode* node = library.colorLists->Head(); node != nullptr; node = node->next) {
        const ColorList* list = static_cast<const ColorList*>(node->value);
        const size_t listNameLength = NameLength(list->name);
        WriteU8(kTagColorList);
        WriteU8(static_cast<uint8_t>(listNameLength));
        Write(list->name, static_cast<uint32_t>(listNameLength));
        for (PtrNode* item = list->entries.Head(); item != nullptr; item = item->next) {
            const ColorEntry* entry = static_cast<const ColorEntry*>(item->value);
            const size_t nameLength = NameLength(entry->name);
            WriteU8(kTagColor);
            WriteU8(static_cast<uint8_t>(nameLength));
            Write(entry->name, static_cast<uint32_t>(nameLength));
            WriteU8(entry->gridSize);
            Write(&entry->cells, sizeof entry->cells);
        }
    }
    for (PtrNode* node = library.palettes->Head(); node != nullptr; node = node->next) {
        const NamedPalette* named = static_cast<const NamedPalette*>(node->value);
        const size_t nameLength = NameLength(named->name);
        const uint32_t count = named->palette.Count();
        // The reader refuses more, so writing it would lose the whole library.
        if (count > kMaxPaletteColors) throw ErrBadData;
        WriteU8(kTagPalette);
        WriteU8(static_cast<uint8_t>(nameLength));
        Write(named->name, static_cast<uint32_t>(nameLength));
        WriteU16BE(static_cast<uint16_t>(count));
        Write(named->palette.Colors(), count * 3);
    }
    WriteU8(kTagEnd);
}

}  // namespace tessellum
