// How an errno from the C runtime becomes an ErrorCode. Opening a file has a table of
// its own; every other operation of the file stream uses the general one.
#pragma once

#include "storage/error_code.h"

namespace tessellum {

ErrorCode ErrorForOpenErrno(int error);
ErrorCode ErrorForErrno(int error);

// Throws ErrorForErrno(error).
[[noreturn]] void ThrowErrno(int error);

}  // namespace tessellum
