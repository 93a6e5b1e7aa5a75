// A save that never damages the file already at its path: the new content is written
// beside it, made durable and closed, and only then renamed over it. The library file
// and the list exchange file both save this way.
#pragma once

#include <memory>

#include "storage/binary_file.h"

namespace tessellum {

// Beside the file while a save is under way; renamed over it when complete.
constexpr char kSavingSuffix[] = ".tmp";

// path followed by suffix, in a new buffer. Throws ErrNoMemory.
std::unique_ptr<char[]> PathWithSuffix(const char* path, const char* suffix);

// Names `file` path + ".tmp", opens it for writing, calls writeRecords() to write the
// whole content into it, commits and closes it. Where keepAsidePath is not null, a file
// already at path is then renamed to keepAsidePath. Last, the new file is renamed over
// path. Any failure closes `file`, removes the partial file and throws its code on;
// path is then as it was, and `file` can open again.
template <typename RecordWriter>
void SafeSave(BinaryFile& file, const char* path, const char* keepAsidePath,
              RecordWriter writeRecords);

// The work of SafeSave, with the record writer seen through a plain pointer, so that
// passing it allocates nothing.
void SafeSaveThrough(BinaryFile& file, const char* path, const char* keepAsidePath,
                     void (*writeRecords)(void* context), void* context);

template <typename RecordWriter>
void SafeSave(BinaryFile& file, const char* path, const char* keepAsidePath,
              RecordWriter writeRecords) {
    SafeSaveThrough(
        file, path, keepAsidePath, [](void* context) { (*static_cast<RecordWriter*>(context))(); },
        &writeRecords);
}

}  // namespace tessellum
