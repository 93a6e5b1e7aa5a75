// The checked file stream on the real descriptors of this system: natively POSIX, on
// Windows the C runtime's (run under Wine), whose binary mode, errno values and sharing
// differ.
#include "storage/binary_file.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "tests/io_faults.h"
#include "tests/scratch_directory.h"
#include "tests/support/error_code_of.h"

namespace tessellum {
namespace {

using test::IoFault;
using test::ReadWholeFile;
using test::WriteWholeFile;
using Bytes = std::vector<uint8_t>;

using test::CodeOf;

class BinaryFileTest : public ::testing::Test {
protected:
    test::ScratchDirectory dir;
    std::string path = dir.Path("data.bin");

    void Open(BinaryFile& file, OpenMode mode, const std::string& at) {
        file.SetName(at.c_str());
        file.Open(mode);
    }
};

TEST_F(BinaryFileTest, OpenChecksInOrder) {
    BinaryFile file;
    EXPECT_FALSE(file.HasName());
    EXPECT_EQ(file.Mode(), 0);
    EXPECT_EQ(CodeOf([&] { file.Open(kOpenRead); }), ErrNoFileName);

    WriteWholeFile(path, {1, 2, 3});
    file.SetName(path.c_str());
    EXPECT_TRUE(file.HasName());
    EXPECT_STREQ(file.Name(), path.c_str());
    file.Open(kOpenRead);
    EXPECT_TRUE(file.IsOpen());
    EXPECT_EQ(CodeOf([&] { file.Open(kOpenRead); }), ErrAlreadyOpen);
    file.Close();
    EXPECT_FALSE(file.IsOpen());

    // A refused mode leaves the stored mode as it was.
    EXPECT_EQ(CodeOf([&] { file.Open(0); }), ErrBadMode);
    EXPECT_EQ(CodeOf([&] { file.Open(4); }), ErrBadMode);
    EXPECT_EQ(file.Mode(), kOpenRead);
    EXPECT_FALSE(file.IsOpen());

    // A failed open keeps the mode it was asked for and stays closed.
    const std::string missing = dir.Path("missing.bin");
    file.SetName(missing.c_str());
    EXPECT_EQ(CodeOf([&] { file.Open(kOpenReadWrite); }), ErrFileNotFound);
    EXPECT_EQ(file.Mode(), kOpenReadWrite);
    EXPECT_FALSE(file.IsOpen());
    EXPECT_FALSE(test::FileExists(missing));  // mode 3 creates nothing
    EXPECT_EQ(CodeOf([&] { file.Open(kOpenRead); }), ErrFileNotFound);
    const std::string noFolder = dir.Path("no-such-folder/x.bin");
    file.SetName(noFolder.c_str());
    EXPECT_EQ(CodeOf([&] { file.Open(kOpenWrite); }), ErrFileNotFound);

    // Mode 2 creates a missing file and empties an existing one before any write.
    BinaryFile writer;
    Open(writer, kOpenWrite, missing);
    writer.Close();
    EXPECT_EQ(ReadWholeFile(missing), Bytes{});
    Open(writer, kOpenWrite, path);
    EXPECT_EQ(writer.Length(), 0);
    writer.Close();
    EXPECT_EQ(ReadWholeFile(path), Bytes{});

    // The object is reused for as long as it lives.
    WriteWholeFile(path, {9});
    Open(file, kOpenRead, path);
    EXPECT_EQ(file.ReadU8(), 9);
    file.Close();
    EXPECT_EQ(CodeOf([&] { file.Close(); }), ErrNotOpen);
}

TEST_F(BinaryFileTest, ReadsAtTheEndOfTheFile) {
    WriteWholeFile(path, {'a', 'b', 'c', 'd', 'e'});
    BinaryFile file;
    Open(file, kOpenRead, path);
    uint8_t buffer[10] = {};
    file.Read(buffer, 2);
    EXPECT_EQ(buffer[0], 'a');
    EXPECT_EQ(buffer[1], 'b');
    // 10 asked, 3 left: returns normally with the 3; the next read finds nothing.
    file.Read(buffer, 10);
    EXPECT_EQ(Bytes(buffer, buffer + 3), (Bytes{'c', 'd', 'e'}));
    file.Read(buffer, 0);  // no system call: the end goes unnoticed
    EXPECT_EQ(CodeOf([&] { file.Read(buffer, 1); }), ErrEndOfFile);
    EXPECT_EQ(CodeOf([&] { file.ReadU8(); }), ErrEndOfFile);
    EXPECT_EQ(CodeOf([&] { file.ReadU16BE(); }), ErrEndOfFile);
    EXPECT_EQ(CodeOf([&] { file.ReadU32LE(); }), ErrEndOfFile);
    file.Close();

    // An integer cut by the end returns; the read after it fails.
    WriteWholeFile(path, {0x12});
    Open(file, kOpenRead, path);
    file.ReadU16BE();
    EXPECT_EQ(CodeOf([&] { file.ReadU8(); }), ErrEndOfFile);
    file.Close();

    WriteWholeFile(path, {});
    Open(file, kOpenRead, path);
    EXPECT_EQ(CodeOf([&] { file.ReadU8(); }), ErrEndOfFile);
    file.Close();
}

TEST_F(BinaryFileTest, ByteOrderIsTheCallersChoice) {
    BinaryFile file;
    Open(file, kOpenWrite, path);
    file.WriteU16BE(258);
    file.WriteU16LE(258);
    file.WriteU32BE(0x01020304);
    file.WriteU32LE(0x01020304);
    file.WriteU8(0xFE);
    file.Close();
    EXPECT_EQ(ReadWholeFile(path), (Bytes{1, 2, 2, 1, 1, 2, 3, 4, 4, 3, 2, 1, 0xFE}));

    WriteWholeFile(path, {1, 2, 1, 2, 0xA1, 0xB2, 0xC3, 0xD4, 0xA1, 0xB2, 0xC3, 0xD4, 0x80});
    Open(file, kOpenRead, path);
    EXPECT_EQ(file.ReadU16BE(), 258);
    EXPECT_EQ(file.ReadU16LE(), 513);
    EXPECT_EQ(file.ReadU32BE(), 0xA1B2C3D4u);
    EXPECT_EQ(file.ReadU32LE(), 0xD4C3B2A1u);
    EXPECT_EQ(file.ReadU8(), 0x80);
    file.Close();
}

TEST_F(BinaryFileTest, DirectionAndStateChecks) {
    WriteWholeFile(path, {1, 2, 3, 4});
    BinaryFile file;
    uint8_t byte = 0;
    // Closed: every operation that needs a file says so.
    file.SetName(path.c_str());
    EXPECT_EQ(CodeOf([&] { file.ReadU8(); }), ErrNotOpen);
    EXPECT_EQ(CodeOf([&] { file.WriteU8(1); }), ErrNotOpen);
    EXPECT_EQ(CodeOf([&] { file.Read(&byte, 1); }), ErrNotOpen);
    EXPECT_EQ(CodeOf([&] { file.Write(&byte, 1); }), ErrNotOpen);
    EXPECT_EQ(CodeOf([&] { file.Tell(); }), ErrNotOpen);
    EXPECT_EQ(CodeOf([&] { file.Length(); }), ErrNotOpen);
    EXPECT_EQ(CodeOf([&] { file.ReadU32BE(); }), ErrNotOpen);
    EXPECT_EQ(CodeOf([&] { file.WriteU16LE(1); }), ErrNotOpen);
    EXPECT_EQ(CodeOf([&] { file.Close(); }), ErrNotOpen);

    file.Open(kOpenRead);
    EXPECT_EQ(CodeOf([&] { file.WriteU8(1); }), ErrWrongAccess);
    EXPECT_EQ(CodeOf([&] { file.Write(&byte, 0); }), ErrWrongAccess);
    EXPECT_EQ(CodeOf([&] { file.WriteU32BE(1); }), ErrWrongAccess);
    file.Close();
    file.Open(kOpenReadWrite);  // both directions, nothing emptied
    EXPECT_EQ(file.ReadU8(), 1);
    file.WriteU8(9);
    EXPECT_EQ(file.ReadU8(), 3);
    file.Close();
    EXPECT_EQ(ReadWholeFile(path), (Bytes{1, 9, 3, 4}));
    file.Open(kOpenWrite);
    EXPECT_EQ(CodeOf([&] { file.ReadU8(); }), ErrWrongAccess);
    EXPECT_EQ(CodeOf([&] { file.Read(&byte, 0); }), ErrWrongAccess);
    EXPECT_EQ(CodeOf([&] { file.ReadU16LE(); }), ErrWrongAccess);

    EXPECT_EQ(CodeOf([&] { file.Seek(3, 0); }), ErrBadArgument);
    EXPECT_EQ(CodeOf([&] { file.Seek(-1, 0); }), ErrBadArgument);
    file.Close();
    // Seek tests no state of its own; on a closed file the system refuses the descriptor.
    EXPECT_EQ(CodeOf([&] { file.Seek(kSeekStart, 0); }), ErrBadHandle);
}

TEST_F(BinaryFileTest, PositionsAndLength) {
    BinaryFile file;
    Open(file, kOpenWrite, path);
    EXPECT_EQ(file.Tell(), 0);
    const uint8_t data[7] = {10, 11, 12, 13, 14, 15, 16};
    file.Write(data, 7);
    EXPECT_EQ(file.Tell(), 7);
    EXPECT_EQ(file.Length(), 7);
    file.Write(data, 0);  // a write of nothing is a write all the same, and succeeds
    file.Close();

    Open(file, kOpenRead, path);
    file.Seek(kSeekEnd, -2);
    EXPECT_EQ(file.Tell(), 5);
    EXPECT_EQ(file.ReadU8(), 15);
    file.Seek(kSeekCurrent, -4);
    EXPECT_EQ(file.ReadU8(), 12);
    file.Seek(kSeekStart, 1);
    EXPECT_EQ(file.ReadU8(), 11);
    EXPECT_EQ(file.Length(), 7);
    EXPECT_EQ(CodeOf([&] { file.Seek(kSeekStart, -1); }), ErrBadArgument);  // EINVAL
    file.Seek(kSeekEnd, 3);  // beyond the end is allowed; reading there finds nothing
    EXPECT_EQ(file.Tell(), 10);
    EXPECT_EQ(CodeOf([&] { file.ReadU8(); }), ErrEndOfFile);
    file.Close();
}

// No translation of line ends or of the old end-of-file byte, in either direction.
TEST_F(BinaryFileTest, EveryByteValueGoesThroughUnchanged) {
    Bytes all(256);
    for (int i = 0; i < 256; ++i) all[i] = static_cast<uint8_t>(i);
    const Bytes lineEnds = {'\r', '\n', '\n', 0x1A, '\r', 0, '\n'};
    BinaryFile file;
    Open(file, kOpenWrite, path);
    file.Write(all.data(), 256);
    file.Write(lineEnds.data(), static_cast<uint32_t>(lineEnds.size()));
    EXPECT_EQ(file.Tell(), 263);
    file.Close();
    Bytes expected = all;
    expected.insert(expected.end(), lineEnds.begin(), lineEnds.end());
    EXPECT_EQ(ReadWholeFile(path), expected);

    Open(file, kOpenRead, path);
    EXPECT_EQ(file.Length(), 263);
    Bytes back(263);
    file.Read(back.data(), 263);
    EXPECT_EQ(back, expected);
    file.Close();
}

// Opens deny nothing to other openers, readers or writers.
TEST_F(BinaryFileTest, OpensShareTheFile) {
    WriteWholeFile(path, {1, 2, 3});
    BinaryFile reader, writer, second;
    Open(reader, kOpenRead, path);
    Open(second, kOpenRead, path);
    Open(writer, kOpenReadWrite, path);
    writer.Seek(kSeekStart, 1);
    writer.WriteU8(7);
    writer.Close();
    EXPECT_EQ(reader.ReadU8(), 1);
    EXPECT_EQ(reader.ReadU8(), 7);
    EXPECT_EQ(second.ReadU16BE(), 0x0107);
    // Writing while readers hold it: mode 2 empties it under them.
    Open(writer, kOpenWrite, path);
    writer.WriteU8(5);
    writer.Close();
    reader.Close();
    second.Close();
    EXPECT_EQ(ReadWholeFile(path), Bytes{5});
}

// An open file is closed when its object goes: its descriptor is free again.
TEST_F(BinaryFileTest, DestructionClosesTheDescriptor) {
    struct Exposed : BinaryFile {
        int Descriptor() const { return fd; }
    };
    WriteWholeFile(path, {1});
    int first;
    {
        Exposed file;
        Open(file, kOpenRead, path);
        first = file.Descriptor();
    }
    Exposed again;
    Open(again, kOpenRead, path);
    EXPECT_EQ(again.Descriptor(), first);
    again.Close();
#ifdef _WIN32
    {
        BinaryFile file;
        Open(file, kOpenRead, path);
    }
    EXPECT_EQ(std::remove(path.c_str()), 0);  // Windows refuses to remove an open file
#endif
}

TEST_F(BinaryFileTest, SetNameOnAnOpenFileKeepsItsDescriptor) {
    BinaryFile file;
    Open(file, kOpenWrite, path);
    const std::string other = dir.Path("other.bin");
    file.SetName(other.c_str());
    file.WriteU8(0x42);
    file.Close();
    EXPECT_EQ(ReadWholeFile(path), Bytes{0x42});
    EXPECT_FALSE(test::FileExists(other));
}

TEST_F(BinaryFileTest, SystemFailuresBecomeCodes) {
    WriteWholeFile(path, {1, 2, 3, 4});
    BinaryFile file;
    Open(file, kOpenRead, path);
    {
        // A failed read is a failed descriptor whatever errno says.
        IoFault fault(IoFault::kFailingRead, 1, ENOSPC);
        EXPECT_EQ(file.ReadU8(), 1);
        uint8_t buffer[2];
        EXPECT_EQ(CodeOf([&] { file.Read(buffer, 2); }), ErrBadHandle);
        EXPECT_EQ(CodeOf([&] { file.ReadU16BE(); }), ErrBadHandle);
        EXPECT_EQ(fault.Calls(), 3);
    }
    file.Close();

    Open(file, kOpenWrite, path);
    {
        IoFault fault(IoFault::kFailingWrite, 2, ENOSPC);
        file.WriteU8(1);
        file.WriteU16BE(2);
        EXPECT_EQ(CodeOf([&] { file.WriteU32LE(3); }), ErrDiskFull);
        EXPECT_EQ(CodeOf([&] { file.Write("x", 0); }), ErrDiskFull);  // even 0 bytes calls
    }
    {
        IoFault fault(IoFault::kFailingWrite, 0, EACCES);
        EXPECT_EQ(CodeOf([&] { file.WriteU8(1); }), ErrBadMode);
    }
    {
        IoFault fault(IoFault::kFailingWrite, 0, EBADF);
        EXPECT_EQ(CodeOf([&] { file.WriteU8(1); }), ErrBadHandle);
    }
    {
        // Fewer bytes than asked, with no error from the system: a general failure.
        IoFault fault(IoFault::kShortWrite, 0, 0);
        EXPECT_EQ(CodeOf([&] { file.WriteU32BE(7); }), ErrGeneral);
    }
    file.Close();
    EXPECT_EQ(ReadWholeFile(path), (Bytes{1, 0, 2, 0, 0, 0}));
}

#ifndef _WIN32
// The real thing, where the system can give it.
TEST_F(BinaryFileTest, RealSystemFailures) {
    BinaryFile file;
    file.SetName("/dev/full");
    file.Open(kOpenWrite);
    EXPECT_EQ(CodeOf([&] { file.WriteU8(1); }), ErrDiskFull);
    file.Close();

    // A directory opens for reading here, and then fails to read.
    BinaryFile folder;
    const std::string sub = dir.Path("sub");
    std::filesystem::create_directory(sub);
    folder.SetName(sub.c_str());
    folder.Open(kOpenRead);
    EXPECT_EQ(CodeOf([&] { folder.ReadU8(); }), ErrBadHandle);
    folder.Close();
    EXPECT_EQ(CodeOf([&] { folder.Open(kOpenWrite); }), ErrGeneral);  // EISDIR
}
#endif

// Both tables, on this runtime's errno values, which match those of the other.
TEST(ErrnoTables, OpenAndGeneralColumns) {
    struct Row {
        int error, value;
        ErrorCode open, general;
    };
    const Row rows[] = {
        {ENOENT, 2, 10, 8},   {E2BIG, 7, 1, 21},   {EBADF, 9, 1, 20},    {EAGAIN, 11, 1, 9},
        {ENOMEM, 12, 1, 2},   {EACCES, 13, 14, 5}, {EEXIST, 17, 12, 31}, {EXDEV, 18, 1, 17},
        {EINVAL, 22, 12, 21}, {EMFILE, 24, 9, 9},  {ENOSPC, 28, 1, 22},  {ERANGE, 34, 1, 29},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.error, row.value);
        EXPECT_EQ(ErrorForOpenErrno(row.error), row.open) << "errno " << row.value;
        EXPECT_EQ(ErrorForErrno(row.error), row.general) << "errno " << row.value;
        EXPECT_EQ(CodeOf([&] { ThrowErrno(row.error); }), row.general);
    }
    for (int other : {0, EPERM, EIO, EISDIR, ENOTDIR, EPIPE, 999}) {
        EXPECT_EQ(ErrorForOpenErrno(other), ErrGeneral) << "errno " << other;
        EXPECT_EQ(ErrorForErrno(other), ErrGeneral) << "errno " << other;
    }
}

}  // namespace
}  // namespace tessellum
