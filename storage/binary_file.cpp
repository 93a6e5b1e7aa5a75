#include "storage/binary_file.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "color/allocate.h"
#include "storage/system_io.h"

namespace tessellum {
namespace {

// Positions and lengths are 32-bit in this stream; a larger one is out of range.
int32_t CheckedPosition(int64_t position) {
    if (position == -1) ThrowErrno(errno);
    if (position > INT32_MAX) ThrowErrno(ERANGE);
    return static_cast<int32_t>(position);
}

}  // namespace

FileName::~FileName() {
    delete[] name;
}

void FileName::SetName(const char* path) {
    const size_t length = std::strlen(path);
    char* copy = reinterpret_cast<char*>(NewBytesOrThrow(length + 1));
    std::memcpy(copy, path, length + 1);
    delete[] name;
    name = copy;
    hasName = true;
}

BinaryFile::~BinaryFile() {
    if (!isOpen) return;
    try {
        Flush();
    } catch (ErrorCode) {
    }
    system_io::CloseDescriptor(fd);
}

void BinaryFile::Open(OpenMode openMode) {
    if (!hasName) throw ErrNoFileName;
    if (isOpen) throw ErrAlreadyOpen;
    if (openMode < kOpenRead || openMode > kOpenReadWrite) throw ErrBadMode;
    mode = openMode;
    switch (openMode) {
        case kOpenRead: fd = system_io::OpenForReading(name); break;
        case kOpenWrite: fd = system_io::OpenForWriting(name); break;
        default: fd = system_io::OpenForReadWrite(name); break;
    }
    if (fd == -1) throw ErrorForOpenErrno(errno);
    held = next = 0;
    holdsWrites = false;
    isOpen = true;
}

void BinaryFile::Close() {
    if (!isOpen) throw ErrNotOpen;
    Flush();
    held = next = 0;
    if (system_io::CloseDescriptor(fd) != 0) ThrowErrno(EBADF);
    isOpen = false;
    // A later Seek, which does not test for an open file, then fails instead of moving
    // a descriptor that the system has since handed to someone else.
    fd = -1;
}

void BinaryFile::CloseQuietly() {
    if (!isOpen) return;
    try {
        Close();
    } catch (ErrorCode) {
    }
}

void BinaryFile::RequireReadable() const {
    if (!isOpen) throw ErrNotOpen;
    if ((mode & kOpenRead) == 0) throw ErrWrongAccess;
}

void BinaryFile::RequireWritable() const {
    if (!isOpen) throw ErrNotOpen;
    if ((mode & kOpenWrite) == 0) throw ErrWrongAccess;
}

void BinaryFile::Flush() {
    if (!holdsWrites) return;
    const uint32_t size = held;
    held = next = 0;
    holdsWrites = false;
    errno = 0;
    const int64_t count = system_io::activeWrite(fd, store, size);
    if (count != static_cast<int64_t>(size)) ThrowErrno(errno);
}

void BinaryFile::DropReadAhead() {
    const uint32_t unread = Unread();
    held = next = 0;
    if (unread != 0 && system_io::SeekDescriptor(fd, -int64_t{unread}, kSeekCurrent) == -1)
        ThrowErrno(errno);
}

void BinaryFile::ReadSome(uint8_t* out, uint32_t size) {
    Flush();
    uint32_t copied = std::min(size, Unread());
    std::memcpy(out, store + next, copied);
    next += copied;
    if (copied == size) return;
    // The buffer is spent: a large rest goes straight to the caller, a small one comes
    // with the next bytes ahead.
    held = next = 0;
    const uint32_t rest = size - copied;
    const bool direct = rest >= kBufferSize;
    const int64_t count =
        system_io::activeRead(fd, direct ? out + copied : store, direct ? rest : kBufferSize);
    if (count < 0) ThrowErrno(EBADF);  // whatever errno holds
    if (direct) {
        copied += static_cast<uint32_t>(count);
    } else {
        held = static_cast<uint32_t>(count);
        next = std::min(rest, held);
        std::memcpy(out + copied, store, next);
        copied += next;
    }
    if (copied == 0) throw ErrEndOfFile;
}

void BinaryFile::WriteAll(const uint8_t* bytes, uint32_t size) {
    if (!holdsWrites) DropReadAhead();
    if (size == 0) return;
    if (held + size > kBufferSize) Flush();
    if (size >= kBufferSize) {
        errno = 0;
        const int64_t count = system_io::activeWrite(fd, bytes, size);
        if (count != static_cast<int64_t>(size)) ThrowErrno(errno);
        return;
    }
    std::memcpy(store + held, bytes, size);
    held += size;
    holdsWrites = true;
}

void BinaryFile::ReadChecked(void* buffer, uint32_t size) {
    RequireReadable();
    if (size == 0) return;
    ReadSome(static_cast<uint8_t*>(buffer), size);
}

void BinaryFile::Write(const void* buffer, uint32_t size) {
    RequireWritable();
    WriteAll(static_cast<const uint8_t*>(buffer), size);
}

int32_t BinaryFile::Tell() {
    if (!isOpen) throw ErrNotOpen;
    const int64_t position = system_io::SeekDescriptor(fd, 0, kSeekCurrent);
    if (position == -1) ThrowErrno(errno);
    return CheckedPosition(holdsWrites ? position + held : position - Unread());
}

void BinaryFile::Seek(SeekOrigin origin, int32_t offset) {
    if (origin < kSeekStart || origin > kSeekEnd) throw ErrBadArgument;
    // Closed: refused here as the system would, since some runtimes treat a bad
    // descriptor as a fault of the program rather than an error.
    if (fd < 0) ThrowErrno(EBADF);
    Flush();
    // The caller's position is behind the system's by the bytes read ahead.
    const int64_t from = origin == kSeekCurrent ? int64_t{offset} - Unread() : offset;
    held = next = 0;
    CheckedPosition(system_io::SeekDescriptor(fd, from, origin));
}

int32_t BinaryFile::Length() {
    if (!isOpen) throw ErrNotOpen;
    Flush();
    return CheckedPosition(system_io::DescriptorLength(fd));
}

void BinaryFile::Commit() {
    if (!isOpen) throw ErrNotOpen;
    Flush();
    if (system_io::CommitDescriptor(fd) != 0) ThrowErrno(errno);
}

uint8_t BinaryFile::ReadU8Checked() {
    RequireReadable();
    uint8_t byte = 0;
    ReadSome(&byte, 1);
    return byte;
}

uint16_t BinaryFile::ReadU16BE() {
    RequireReadable();
    uint8_t bytes[2] = {};
    ReadSome(bytes, 2);
    return static_cast<uint16_t>(bytes[0] << 8 | bytes[1]);
}

uint16_t BinaryFile::ReadU16LE() {
    RequireReadable();
    uint8_t bytes[2] = {};
    ReadSome(bytes, 2);
    return static_cast<uint16_t>(bytes[1] << 8 | bytes[0]);
}

uint32_t BinaryFile::ReadU32BE() {
    RequireReadable();
    uint8_t bytes[4] = {};
    ReadSome(bytes, 4);
    return uint32_t{bytes[0]} << 24 | uint32_t{bytes[1]} << 16 | uint32_t{bytes[2]} << 8 | bytes[3];
}

uint32_t BinaryFile::ReadU32LE() {
    RequireReadable();
    uint8_t bytes[4] = {};
    ReadSome(bytes, 4);
    return uint32_t{bytes[3]} << 24 | uint32_t{bytes[2]} << 16 | uint32_t{bytes[1]} << 8 | bytes[0];
}

void BinaryFile::WriteU8(uint8_t value) {
    RequireWritable();
    WriteAll(&value, 1);
}

void BinaryFile::WriteU16BE(uint16_t value) {
    RequireWritable();
    const uint8_t bytes[2] = {static_cast<uint8_t>(value >> 8), static_cast<uint8_t>(value)};
    WriteAll(bytes, 2);
}

void BinaryFile::WriteU16LE(uint16_t value) {
    RequireWritable();
    const uint8_t bytes[2] = {static_cast<uint8_t>(value), static_cast<uint8_t>(value >> 8)};
    WriteAll(bytes, 2);
}

void BinaryFile::WriteU32BE(uint32_t value) {
    RequireWritable();
    const uint8_t bytes[4] = {static_cast<uint8_t>(value >> 24), static_cast<uint8_t>(value >> 16),
                              static_cast<uint8_t>(value >> 8), static_cast<uint8_t>(value)};
    WriteAll(bytes, 4);
}

void BinaryFile::WriteU32LE(uint32_t value) {
    RequireWritable();
    const uint8_t bytes[4] = {static_cast<uint8_t>(value), static_cast<uint8_t>(value >> 8),
                              static_cast<uint8_t>(value >> 16), static_cast<uint8_t>(value >> 24)};
    WriteAll(bytes, 4);
}

}  // namespace tessellum
