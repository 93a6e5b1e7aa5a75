// The checked file stream. Every call is checked and every failure is thrown as an
// ErrorCode, so a reader or writer of a format is a straight run of calls.
#pragma once

#include <cstdint>

#include "storage/errno_codes.h"
#include "storage/error_code.h"

namespace tessellum {

using OpenMode = uint16_t;              // bit 0 allows reading, bit 1 writing
constexpr OpenMode kOpenRead = 1;       // the file must exist
constexpr OpenMode kOpenWrite = 2;      // created if missing, emptied if present
constexpr OpenMode kOpenReadWrite = 3;  // the file must exist; nothing is emptied

using SeekOrigin = int16_t;
constexpr SeekOrigin kSeekStart = 0;
constexpr SeekOrigin kSeekCurrent = 1;
constexpr SeekOrigin kSeekEnd = 2;

// The path of a file stream, owned by it.
class FileName {
public:
    FileName() = default;
    ~FileName();
    FileName(const FileName&) = delete;
    FileName& operator=(const FileName&) = delete;

    // Stores a copy of path; an open descriptor is left alone. Without memory it throws
    // ErrNoMemory and keeps the old name.
    void SetName(const char* path);
    bool HasName() const { return hasName; }
    const char* Name() const { return name; }

protected:
    bool hasName = false;  // never cleared once set
    char* name = nullptr;
};

class BinaryFile : public FileName {
public:
    BinaryFile() = default;
    // Closes a descriptor that is still open, quietly: a destructor cannot report.
    ~BinaryFile();

    bool IsOpen() const { return isOpen; }
    OpenMode Mode() const { return mode; }

    void Open(OpenMode openMode);
    void Close();
    // One system read of up to size bytes: fewer is not an error, none at all is
    // ErrEndOfFile. Size 0 returns at once.
    void Read(void* buffer, uint32_t size);
    // One system write; a short count is a failure.
    void Write(const void* buffer, uint32_t size);
    int32_t Tell();
    void Seek(SeekOrigin origin, int32_t offset);
    int32_t Length();
    // Makes what was written durable on the disk.
    void Commit();

    // One system call each. A read that ends inside the integer returns normally with
    // the missing bytes zero; the next read finds the end of the file.
    uint8_t ReadU8();
    uint16_t ReadU16BE();
    uint16_t ReadU16LE();
    uint32_t ReadU32BE();
    uint32_t ReadU32LE();
    void WriteU8(uint8_t value);
    void WriteU16BE(uint16_t value);
    void WriteU16LE(uint16_t value);
    void WriteU32BE(uint32_t value);
    void WriteU32LE(uint32_t value);

protected:
    bool isOpen = false;
    uint16_t mode = 0;  // the OpenMode of the latest Open, kept even when it failed
    int32_t fd = 0;

private:
    void RequireReadable() const;
    void RequireWritable() const;
    void ReadSome(uint8_t* buffer, uint32_t size);
    void WriteAll(const uint8_t* buffer, uint32_t size);
};

}  // namespace tessellum
