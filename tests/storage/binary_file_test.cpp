// The checked file stream on the real descriptors of this system: natively POSIX, on
// Windows the C runtime's (run under Wine), whose binary mode, errno values and sharing
// differ.
#include "storage/binary_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

#include "tests/support/error_code_of.h"
#include "tests/support/scratch_directory.h"

namespace tessellum {
namespace {

using test::CodeOf;
using test::IoFault;
using test::ReadWholeFile;
using test::WriteWholeFile;
using Bytes = std::vector<uint8_t>;

class BinaryFileTest : public ::testing::Test {
protected:
    test::ScratchDirectory dir;
    std::string path = dir.Path("data.bin");

    void Open(BinaryFile& file, OpenMode mode, const std::string& at) {
        file.SetName(at.c_str());
        file.Open(mode);
    }
};

TEST_F(BinaryFileTest, ByteOrderIsTheCallersChoice) {
    BinaryFile file;
    Open(file, kOpenWrite, path);
    file.WriteU16BE(0xA1B2);
    file.WriteU16LE(0xA1B2);
    file.WriteU32BE(0xA1B2C3D4);
    file.WriteU32LE(0xA1B2C3D4);
    file.WriteU8(0xFE);
    file.Close();
    EXPECT_EQ(ReadWholeFile(path), (Bytes{0xA1, 0xB2, 0xB2, 0xA1, 0xA1, 0xB2, 0xC3, 0xD4, 0xD4,
                                          0xC3, 0xB2, 0xA1, 0xFE}));
    Open(file, kOpenRead, path);
    EXPECT_EQ(file.ReadU16BE(), 0xA1B2);
    EXPECT_EQ(file.ReadU16LE(), 0xA1B2);
    EXPECT_EQ(file.ReadU32BE(), 0xA1B2C3D4u);
    EXPECT_EQ(file.ReadU32LE(), 0xA1B2C3D4u);
    EXPECT_EQ(file.ReadU8(), 0xFE);
}

TEST_F(BinaryFileTest, StateAndDirectionChecks) {
    BinaryFile file;
    uint8_t byte = 0;
    EXPECT_EQ(CodeOf([&] { file.Open(kOpenRead); }), ErrNoFileName);
    file.SetName(dir.Path("no-such-folder/x.bin").c_str());
    EXPECT_EQ(CodeOf([&] { file.Open(kOpenWrite); }), ErrFileNotFound);
    file.SetName(path.c_str());
    EXPECT_EQ(CodeOf([&] { file.Open(kOpenRead); }), ErrFileNotFound);
    EXPECT_EQ(CodeOf([&] { file.Open(kOpenReadWrite); }), ErrFileNotFound);
    EXPECT_FALSE(std::filesystem::exists(path));  // mode 3 creates nothing

    // Closed, also after a failed open: every operation that needs an open file says so.
    EXPECT_EQ(CodeOf([&] { file.ReadU32BE(); }), ErrNotOpen);
    EXPECT_EQ(CodeOf([&] { file.Write(&byte, 0); }), ErrNotOpen);
    EXPECT_EQ(CodeOf([&] { file.Tell(); }), ErrNotOpen);
    EXPECT_EQ(CodeOf([&] { file.Length(); }), ErrNotOpen);
    EXPECT_EQ(CodeOf([&] { file.Commit(); }), ErrNotOpen);
    EXPECT_EQ(CodeOf([&] { file.Close(); }), ErrNotOpen);

    WriteWholeFile(path, {1, 2, 3, 4});
    file.Open(kOpenRead);
    EXPECT_EQ(CodeOf([&] { file.Open(kOpenRead); }), ErrAlreadyOpen);
    EXPECT_EQ(CodeOf([&] { file.WriteU16LE(1); }), ErrWrongAccess);
    EXPECT_EQ(CodeOf([&] { file.Write(&byte, 0); }), ErrWrongAccess);
    file.Close();
    EXPECT_EQ(CodeOf([&] { file.Open(0); }), ErrBadMode);
    EXPECT_EQ(CodeOf([&] { file.Open(4); }), ErrBadMode);
    file.Open(kOpenWrite);
    EXPECT_EQ(CodeOf([&] { file.ReadU16BE(); }), ErrWrongAccess);
    EXPECT_EQ(CodeOf([&] { file.Read(&byte, 0); }), ErrWrongAccess);
    EXPECT_EQ(CodeOf([&] { file.Seek(3, 0); }), ErrBadArgument);
    EXPECT_EQ(CodeOf([&] { file.Seek(-1, 0); }), ErrBadArgument);
    file.Close();
    // Seek tests no state of its own; on a closed file the system refuses the descriptor.
    EXPECT_EQ(CodeOf([&] { file.Seek(kSeekStart, 0); }), ErrBadHandle);
}

// Every byte value, with no translation of line ends or of the old end-of-file byte in
// either direction; the positions within it and reads at its end.
TEST_F(BinaryFileTest, EveryByteValueAndPositions) {
    Bytes all = {'\r', '\n', '\n', 0x1A, '\r', 0, '\n'};
    for (int i = 0; i < 256; ++i) all.push_back(static_cast<uint8_t>(i));
    BinaryFile file;
    Open(file, kOpenWrite, path);
    const std::string other = dir.Path("other.bin");
    file.SetName(other.c_str());  // the open descriptor stays on the first file
    EXPECT_EQ(file.Tell(), 0);
    file.Write(all.data(), 263);
    file.Write(all.data(), 0);  // a write of nothing does nothing
    EXPECT_EQ(file.Tell(), 263);
    EXPECT_EQ(file.Length(), 263);
    file.Close();
    EXPECT_FALSE(std::filesystem::exists(other));
    EXPECT_EQ(ReadWholeFile(path), all);

    Open(file, kOpenRead, path);
    Bytes back(300);
    file.Read(back.data(), 300);  // fewer left than asked: returns normally with them
    EXPECT_EQ(Bytes(back.begin(), back.begin() + 263), all);
    file.Read(back.data(), 0);  // no system call: the end goes unnoticed
    EXPECT_EQ(CodeOf([&] { file.Read(back.data(), 1); }), ErrEndOfFile);
    file.Seek(kSeekEnd, -1);  // an integer cut by the end has its missing byte zero
    EXPECT_EQ(file.ReadU16BE(), 0xFF00);
    EXPECT_EQ(CodeOf([&] { file.ReadU32LE(); }), ErrEndOfFile);
    file.Seek(kSeekEnd, -2);
    EXPECT_EQ(file.Tell(), 261);
    EXPECT_EQ(file.ReadU8(), 254);
    file.Seek(kSeekCurrent, -4);
    EXPECT_EQ(file.ReadU8(), 251);
    file.Seek(kSeekStart, 3);
    EXPECT_EQ(file.ReadU8(), 0x1A);
    EXPECT_EQ(CodeOf([&] { file.Seek(kSeekStart, -1); }), ErrBadArgument);  // EINVAL
    file.Seek(kSeekEnd, 3);  // beyond the end is allowed; reading there finds nothing
    EXPECT_EQ(file.Tell(), 266);
    EXPECT_EQ(CodeOf([&] { file.ReadU8(); }), ErrEndOfFile);
}

// Opens deny nothing to other openers; mode 3 empties nothing, mode 2 empties even under
// readers.
TEST_F(BinaryFileTest, OpensShareTheFile) {
    WriteWholeFile(path, {1, 2, 3});
    BinaryFile reader, writer, second;
    Open(reader, kOpenRead, path);
    Open(second, kOpenRead, path);
    Open(writer, kOpenReadWrite, path);
    EXPECT_EQ(writer.ReadU8(), 1);
    writer.WriteU8(7);
    EXPECT_EQ(writer.ReadU8(), 3);
    writer.Close();
    EXPECT_EQ(reader.ReadU8(), 1);
    EXPECT_EQ(reader.ReadU8(), 7);
    EXPECT_EQ(second.ReadU16BE(), 0x0107);
    Open(writer, kOpenWrite, path);
    writer.WriteU8(5);
    writer.Close();
    EXPECT_EQ(ReadWholeFile(path), Bytes{5});
}

TEST_F(BinaryFileTest, SystemFailuresBecomeCodes) {
    WriteWholeFile(path, {1, 2, 3, 4});
    BinaryFile file;
    Open(file, kOpenRead, path);
    {
        // A failed read is a failed descriptor whatever errno says.
        IoFault fault(IoFault::kFailingRead, 0, ENOSPC);
        EXPECT_EQ(CodeOf([&] { file.ReadU8(); }), ErrBadHandle);
    }
    EXPECT_EQ(file.ReadU16BE(), 0x0102) << "a failed read takes nothing";
    file.Close();

    // Writes gather and a fault shows when they go out, at Close at the latest. That
    // Close leaves the file open and drops the failed bytes, so the next one closes.
    Open(file, kOpenWrite, path);
    {
        IoFault fault(IoFault::kFailingWrite, 0, ENOSPC);
        file.WriteU8(1);
        file.WriteU16BE(2);
        file.Write("x", 0);
        EXPECT_EQ(CodeOf([&] { file.Close(); }), ErrDiskFull);
        EXPECT_TRUE(file.IsOpen());
        EXPECT_EQ(CodeOf([&] { file.Close(); }), 0) << "the failed bytes were dropped";
    }
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(ReadWholeFile(path), Bytes{});
    Open(file, kOpenWrite, path);
    {
        // Fewer bytes than asked, with no error from the system: a general failure.
        IoFault fault(IoFault::kShortWrite, 0, 0);
        file.WriteU32BE(7);
        EXPECT_EQ(CodeOf([&] { file.Commit(); }), ErrGeneral);
    }
    {
        // More than the buffer holds goes out at once, and fails at once.
        IoFault fault(IoFault::kFailingWrite, 0, ENOSPC);
        const Bytes big(BinaryFile::kBufferSize, 9);
        EXPECT_EQ(CodeOf([&] { file.Write(big.data(), BinaryFile::kBufferSize); }), ErrDiskFull);
    }
    file.Close();
}

// Files much larger than the buffer, written and read in every size of call, mixed
// with seeks and, in mode 3, reads and writes in turn: the bytes and positions are
// those of a stream without a buffer.
TEST_F(BinaryFileTest, LargeFilesAcrossTheBuffer) {
    const uint32_t runs = 2 * BinaryFile::kBufferSize + 7000;  // run lengths below this
    Bytes expected;
    BinaryFile file;
    Open(file, kOpenWrite, path);
    for (uint32_t i = 0; expected.size() < 8 * BinaryFile::kBufferSize; ++i) {
        const uint8_t v = static_cast<uint8_t>(i * 13);
        if (i % 3 == 0) {
            file.WriteU8(v);
            expected.push_back(v);
        } else if (i % 3 == 1) {
            file.WriteU16BE(static_cast<uint16_t>(v << 8 | 0x5A));
            expected.insert(expected.end(), {v, 0x5A});
        } else {
            const Bytes run(i * 7919 % runs, v);  // some runs exceed the buffer
            file.Write(run.data(), static_cast<uint32_t>(run.size()));
            expected.insert(expected.end(), run.begin(), run.end());
        }
        ASSERT_EQ(file.Tell(), static_cast<int32_t>(expected.size())) << "call " << i;
    }
    EXPECT_EQ(file.Length(), static_cast<int32_t>(expected.size()));
    file.Close();
    ASSERT_EQ(ReadWholeFile(path), expected);

    Open(file, kOpenReadWrite, path);
    Bytes back;
    for (uint32_t i = 0; back.size() < expected.size(); ++i) {
        if (i % 3 == 0) {
            back.push_back(file.ReadU8());
        } else {
            Bytes run(std::min<size_t>(i * 7919 % runs + 1, expected.size() - back.size()));
            file.Read(run.data(), static_cast<uint32_t>(run.size()));
            back.insert(back.end(), run.begin(), run.end());
        }
        ASSERT_EQ(file.Tell(), static_cast<int32_t>(back.size())) << "call " << i;
    }
    EXPECT_EQ(back, expected);
    EXPECT_EQ(CodeOf([&] { file.ReadU8(); }), ErrEndOfFile);
    // Reads and writes in turn, in the middle: each write lands where the reads stopped.
    file.Seek(kSeekStart, 1000);
    EXPECT_EQ(file.ReadU8(), expected[1000]);
    file.WriteU16BE(0xBEEF);
    EXPECT_EQ(file.ReadU8(), expected[1003]);
    file.Seek(kSeekCurrent, -2);
    EXPECT_EQ(file.ReadU8(), 0xEF);
    file.Close();
    expected[1001] = 0xBE;
    expected[1002] = 0xEF;
    EXPECT_EQ(ReadWholeFile(path), expected);
}

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
        EXPECT_EQ(CodeOf([&] { ThrowErrno(row.error); }), row.general) << "errno " << row.value;
    }
    for (int other : {0, EPERM, EIO, EISDIR, ENOTDIR, EPIPE, 999}) {
        EXPECT_EQ(ErrorForOpenErrno(other), ErrGeneral) << "errno " << other;
        EXPECT_EQ(ErrorForErrno(other), ErrGeneral) << "errno " << other;
    }
}

}  // namespace
}  // namespace tessellum
