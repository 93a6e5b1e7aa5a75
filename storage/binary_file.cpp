#include "storage/binary_file.h"

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
    if (isOpen) system_io::CloseDescriptor(fd);
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
    isOpen = true;
}

void BinaryFile::Close() {
    if (!isOpen) throw ErrNotOpen;
    if (system_io::CloseDescriptor(fd) != 0) ThrowErrno(EBADF);
    isOpen = false;
    // A later Seek, which does not test for an open file, then fails instead of moving
    // a descriptor that the system has since handed to someone else.
    fd = -1;
}

void BinaryFile::RequireReadable() const {
    if (!isOpen) throw ErrNotOpen;
    if ((mode & kOpenRead) == 0) throw ErrWrongAccess;
}

void BinaryFile::RequireWritable() const {
    if (!isOpen) throw ErrNotOpen;
    if ((mode & kOpenWrite) == 0) throw ErrWrongAccess;
}

void BinaryFile::ReadSome(uint8_t* buffer, uint32_t size) {
    const int64_t count = system_io::activeRead(fd, buffer, size);
    if (count < 0) ThrowErrno(EBADF);  // whatever errno holds
    if (count == 0) throw ErrEndOfFile;
}

void BinaryFile::WriteAll(const uint8_t* buffer, uint32_t size) {
    // An empty palette has no array; some runtimes refuse a null buffer even for 0 bytes.
    const uint8_t none = 0;
    if (buffer == nullptr) buffer = &none;
    errno = 0;
    const int64_t count = system_io::activeWrite(fd, buffer, size);
    if (count != static_cast<int64_t>(size)) ThrowErrno(errno);
}

void BinaryFile::Read(void* buffer, uint32_t size) {
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
    return CheckedPosition(system_io::SeekDescriptor(fd, 0, kSeekCurrent));
}

void BinaryFile::Seek(SeekOrigin origin, int32_t offset) {
    if (origin < kSeekStart || origin > kSeekEnd) throw ErrBadArgument;
    // Closed: refused here as the system would, since some runtimes treat a bad
    // descriptor as a fault of the program rather than an error.
    if (fd < 0) ThrowErrno(EBADF);
    CheckedPosition(system_io::SeekDescriptor(fd, offset, origin));
}

int32_t BinaryFile::Length() {
    if (!isOpen) throw ErrNotOpen;
    return CheckedPosition(system_io::DescriptorLength(fd));
}

void BinaryFile::Commit() {
    if (!isOpen) throw ErrNotOpen;
    if (system_io::CommitDescriptor(fd) != 0) ThrowErrno(errno);
}

uint8_t BinaryFile::ReadU8() {
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
