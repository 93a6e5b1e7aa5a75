#include "storage/library_file.h"

#include <cstring>
#include <memory>

#include "color/allocate.h"
#include "storage/color_records.h"
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
        CloseQuietly();
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
                ReadName(*this, list->name);
                library.colorLists->Append(list.get());
                list.release();
                break;
            }
            case kTagPalette: {
                std::unique_ptr<NamedPalette> named(NewOrThrow<NamedPalette>());
                ReadName(*this, named->name);
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
                ReadColorRecord(*this, *static_cast<ColorList*>(last->value), blocks);
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
        WriteU8(kTagColorList);
        WriteName(*this, list->name);
        for (PtrNode* item = list->entries.Head(); item != nullptr; item = item->next) {
            WriteU8(kTagColor);
            WriteColorRecord(*this, *static_cast<const ColorEntry*>(item->value));
        }
    }
    for (PtrNode* node = library.palettes->Head(); node != nullptr; node = node->next) {
        const NamedPalette* named = static_cast<const NamedPalette*>(node->value);
        const uint32_t count = named->palette.Count();
        // The reader refuses more, so writing it would lose the whole library.
        if (count > kMaxPaletteColors) throw ErrBadData;
        WriteU8(kTagPalette);
        WriteName(*this, named->name);
        WriteU16BE(static_cast<uint16_t>(count));
        Write(named->palette.Colors(), count * 3);
    }
    WriteU8(kTagEnd);
}

}  // namespace tessellum
