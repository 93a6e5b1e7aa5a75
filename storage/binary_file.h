// The checked file stream. Every call is checked and every failure is thrown as an
// ErrorCode, so a reader or writer of a format is a straight run of calls. Reads come
// from a read-ahead buffer and writes gather in the same buffer, so that a format does
// not cost a system call per field; what reaches the disk, and which code a fault gives,
// is as if each call went to the system, except that a write fault shows when the
// gathered bytes go out: at Seek, Length, Commit or Close at the latest.
#pragma once

#include <cstdint>
#include <cstring>

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

    // Reads ahead and gathered writes hold up to this many bytes; a read or write of at
    // least as many goes straight to the system. Large pieces keep a library's system
    // calls few.
    static constexpr uint32_t kBufferSize = 256 * 1024;

    bool IsOpen() const { return isOpen; }
    OpenMode Mode() const { return mode; }

    void Open(OpenMode openMode);
    void Close();
    // Closes an open file after a failure elsewhere, dropping a failure of its own: the
    // first code is the one to report.
    void CloseQuietly();
    // Up to size bytes: fewer (at the end of the file) is not an error, none at all is
    // ErrEndOfFile. Size 0 returns at once.
    void Read(void* buffer, uint32_t size) {
        if (size == 0 || !HasBuffered(size)) return ReadChecked(buffer, size);
        // Not memcpy: for a length known only to be short, a name's, the compiler would
        // put in a string instruction that costs more than this call to the C library.
        std::memmove(buffer, store + next, size);
        next += size;
    }
    // All size bytes or a failure; size 0 does nothing.
    void Write(const void* buffer, uint32_t size);
    int32_t Tell();
    void Seek(SeekOrigin origin, int32_t offset);
    int32_t Length();
    // Makes what was written durable on the disk.
    void Commit();

    // A read that ends inside the integer returns normally with the missing bytes zero;
    // the next read finds the end of the file.
    uint8_t ReadU8() { return HasBuffered(1) ? store[next++] : ReadU8Checked(); }
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
    // A read of `size` bytes that every check would let through and that the bytes read
    // ahead cover entirely: a format's fields mostly are, and take no call then.
    bool HasBuffered(uint32_t size) const {
        return isOpen && (mode & kOpenRead) != 0 && !holdsWrites && size <= held - next;
    }
    void ReadChecked(void* buffer, uint32_t size);
    uint8_t ReadU8Checked();
    void RequireReadable() const;
    void RequireWritable() const;
    void ReadSome(uint8_t* buffer, uint32_t size);
    void WriteAll(const uint8_t* buffer, uint32_t size);
    // Hands the gathered writes to the system. The buffer is empty afterwards, also
    // when that fails, so that a Close after a failure can close.
    void Flush();
    // Forgets the bytes read ahead, moving the system's position back to the caller's.
    void DropReadAhead();
    uint32_t Unread() const { return holdsWrites ? 0 : held - next; }

    uint32_t held = 0;         // bytes in `store`
    uint32_t next = 0;         // reading: the first byte not yet handed out
    bool holdsWrites = false;  // the held bytes are writes, not reads ahead
    uint8_t store[kBufferSize];
};

}  // namespace tessellum
