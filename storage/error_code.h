// The program's one kind of failure: a number thrown by value and caught where the work
// is done. No text belongs to a code; the numbers never reach the user.
#pragma once

#include <cstdint>

namespace tessellum {

using ErrorCode = int32_t;

// Named constants of type ErrorCode, so that `throw ErrBadData` throws an ErrorCode.
// Codes not listed (3, 6, 7, 13, 16, 19, 23 to 26, 30) are not in use.
constexpr ErrorCode ErrGeneral = 1;
constexpr ErrorCode ErrNoMemory = 2;
constexpr ErrorCode ErrNoFileName = 4;
constexpr ErrorCode ErrBadMode = 5;
constexpr ErrorCode ErrPathNotFound = 8;
constexpr ErrorCode ErrTooManyFiles = 9;
constexpr ErrorCode ErrFileNotFound = 10;
constexpr ErrorCode ErrAlreadyOpen = 11;
constexpr ErrorCode ErrWrongAccess = 12;
constexpr ErrorCode ErrAccessDenied = 14;
constexpr ErrorCode ErrNotOpen = 15;
constexpr ErrorCode ErrCrossDevice = 17;
constexpr ErrorCode ErrEndOfFile = 18;
constexpr ErrorCode ErrBadHandle = 20;
constexpr ErrorCode ErrBadArgument = 21;
constexpr ErrorCode ErrDiskFull = 22;
constexpr ErrorCode ErrEmptyPalette = 27;
constexpr ErrorCode ErrBadData = 28;
constexpr ErrorCode ErrOutOfRange = 29;
constexpr ErrorCode ErrFileExists = 31;
constexpr ErrorCode ErrBadMagic = 32;

// Throws an ErrorCode; the one way the program reports a failure.
[[noreturn]] inline void Throw(ErrorCode code) {
    throw code;
}

}  // namespace tessellum
