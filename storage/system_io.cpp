#include "storage/system_io.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <climits>
#include <cstdio>

#ifdef _WIN32
#include <windows.h>
#include <direct.h>
#include <io.h>
#else
#include <unistd.h>
#endif

namespace tessellum {
namespace system_io {

#ifdef _WIN32

namespace {

int OpenWith(const char* path, int flags) {
    // _open takes no sharing restriction: other openers are never denied.
    return _open(path, flags | _O_BINARY | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
}

// MoveFileExA reports through GetLastError; the callers speak errno.
int ErrnoForLastError(DWORD error) {
    switch (error) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND: return ENOENT;
        case ERROR_ACCESS_DENIED:
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION: return EACCES;
        case ERROR_NOT_SAME_DEVICE: return EXDEV;
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL: return ENOSPC;
        case ERROR_NOT_ENOUGH_MEMORY:
        case ERROR_OUTOFMEMORY: return ENOMEM;
        default: return 0;
    }
}

}  // namespace

int OpenForReading(const char* path) {
    return OpenWith(path, _O_RDONLY);
}
int OpenForWriting(const char* path) {
    return OpenWith(path, _O_WRONLY | _O_CREAT | _O_TRUNC);
}
int OpenForReadWrite(const char* path) {
    return OpenWith(path, _O_RDWR);
}
int CloseDescriptor(int fd) {
    return _close(fd);
}

int64_t ReadDescriptor(int fd, void* buffer, uint32_t size) {
    return _read(fd, buffer, size > INT_MAX ? INT_MAX : size);
}

int64_t WriteDescriptor(int fd, const void* buffer, uint32_t size) {
    return _write(fd, buffer, size > INT_MAX ? INT_MAX : size);
}

int64_t SeekDescriptor(int fd, int64_t offset, int origin) {
    return _lseeki64(fd, offset, origin);
}

int64_t DescriptorLength(int fd) {
    return _filelengthi64(fd);
}
int CommitDescriptor(int fd) {
    return _commit(fd);
}

int MoveReplacing(const char* from, const char* to) {
    if (MoveFileExA(from, to, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) return 0;
    errno = ErrnoForLastError(GetLastError());
    return -1;
}

int RemoveFile(const char* path) {
    return _unlink(path);
}
bool FileExists(const char* path) {
    return _access(path, 0) == 0;
}

int MakeDirectory(const char* path) {
    return _mkdir(path);
}

#else

namespace {

int OpenWith(const char* path, int flags) {
    int fd;
    do {
        fd = open(path, flags | O_CLOEXEC, 0666);  // the umask trims the permission
    } while (fd == -1 && errno == EINTR);
    return fd;
}

}  // namespace

int OpenForReading(const char* path) {
    return OpenWith(path, O_RDONLY);
}
int OpenForWriting(const char* path) {
    return OpenWith(path, O_WRONLY | O_CREAT | O_TRUNC);
}
int OpenForReadWrite(const char* path) {
    return OpenWith(path, O_RDWR);
}
int CloseDescriptor(int fd) {
    return close(fd);
}

int64_t ReadDescriptor(int fd, void* buffer, uint32_t size) {
    ssize_t count;
    do {
        count = read(fd, buffer, size);
    } while (count == -1 && errno == EINTR);
    return count;
}

int64_t WriteDescriptor(int fd, const void* buffer, uint32_t size) {
    ssize_t count;
    do {
        count = write(fd, buffer, size);
    } while (count == -1 && errno == EINTR);
    return count;
}

int64_t SeekDescriptor(int fd, int64_t offset, int origin) {
    return lseek(fd, static_cast<off_t>(offset), origin);
}

int64_t DescriptorLength(int fd) {
    struct stat status;
    if (fstat(fd, &status) != 0) return -1;
    return status.st_size;
}

int CommitDescriptor(int fd) {
    return fsync(fd);
}

int MoveReplacing(const char* from, const char* to) {
    return rename(from, to);
}
int RemoveFile(const char* path) {
    return unlink(path);
}
bool FileExists(const char* path) {
    return access(path, F_OK) == 0;
}

int MakeDirectory(const char* path) {
    return mkdir(path, 0777);
}

#endif

void MakeFolderOf(const char* path) {
    // Each folder from the root down; those that exist fail harmlessly.
    char folder[4096];
    for (size_t i = 0; path[i] != '\0' && i + 1 < sizeof folder; ++i) {
        folder[i] = path[i];
        const bool separator = path[i] == '/' || path[i] == '\\';
        if (separator && i > 0 && folder[i - 1] != ':') {
            folder[i] = '\0';
            MakeDirectory(folder);
            folder[i] = path[i];
        }
    }
}

ReadCall activeRead = ReadDescriptor;
WriteCall activeWrite = WriteDescriptor;

}  // namespace system_io
}  // namespace tessellum
