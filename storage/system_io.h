// The operating system's file calls under BinaryFile and the savers: POSIX descriptors
// natively, the C runtime's binary-mode descriptors on Windows. Each call returns what
// the system returned (-1 on failure) and leaves errno as the system set it.
#pragma once

#include <cstdint>

namespace tessellum {
namespace system_io {

// No translation of line ends, no sharing restriction, not inherited by child processes.
int OpenForReading(const char* path);
// Created with the ordinary writable permission if missing, emptied if present.
int OpenForWriting(const char* path);
int OpenForReadWrite(const char* path);
int CloseDescriptor(int fd);

using ReadCall = int64_t (*)(int fd, void* buffer, uint32_t size);
using WriteCall = int64_t (*)(int fd, const void* buffer, uint32_t size);
int64_t ReadDescriptor(int fd, void* buffer, uint32_t size);
int64_t WriteDescriptor(int fd, const void* buffer, uint32_t size);

// The read and write that the file stream calls. They are the two above unless a test
// puts its own here to make the system fail part-way through a file.
extern ReadCall activeRead;
extern WriteCall activeWrite;

int64_t SeekDescriptor(int fd, int64_t offset, int origin);
int64_t DescriptorLength(int fd);
// Hands what was written to the disk, so that a file renamed over another is complete.
int CommitDescriptor(int fd);

// Renames `from` to `to`, replacing a file already there in one step.
int MoveReplacing(const char* from, const char* to);
int RemoveFile(const char* path);
bool FileExists(const char* path);
int MakeDirectory(const char* path);
// Makes every missing folder above the file `path`; a failure shows when the file is
// opened.
void MakeFolderOf(const char* path);

}  // namespace system_io
}  // namespace tessellum
