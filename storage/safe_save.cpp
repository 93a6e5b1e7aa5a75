#include "storage/safe_save.h"

#include <cerrno>
#include <cstring>

#include "color/allocate.h"
#include "storage/system_io.h"

namespace tessellum {

std::unique_ptr<char[]> PathWithSuffix(const char* path, const char* suffix) {
    const size_t pathLength = std::strlen(path);
    const size_t suffixLength = std::strlen(suffix);
    std::unique_ptr<char[]> joined(
        reinterpret_cast<char*>(NewBytesOrThrow(pathLength + suffixLength + 1)));
    std::memcpy(joined.get(), path, pathLength);
    std::memcpy(joined.get() + pathLength, suffix, suffixLength + 1);
    return joined;
}

void SafeSaveThrough(BinaryFile& file, const char* path, const char* keepAsidePath,
                     void (*writeRecords)(void* context), void* context) {
    std::unique_ptr<char[]> savingPath = PathWithSuffix(path, kSavingSuffix);
    file.SetName(savingPath.get());
    try {
        file.Open(kOpenWrite);
        writeRecords(context);
        file.Commit();
        file.Close();
    } catch (ErrorCode) {
        file.CloseQuietly();
        system_io::RemoveFile(savingPath.get());
        throw;
    }

    if (keepAsidePath != nullptr && system_io::FileExists(path) &&
        system_io::MoveReplacing(path, keepAsidePath) != 0) {
        const int error = errno;
        system_io::RemoveFile(savingPath.get());
        ThrowErrno(error);
    }
    if (system_io::MoveReplacing(savingPath.get(), path) != 0) {
        const int error = errno;
        system_io::RemoveFile(savingPath.get());
        ThrowErrno(error);
    }
}

}  // namespace tessellum
