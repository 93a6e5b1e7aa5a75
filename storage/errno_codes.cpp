#include "storage/errno_codes.h"

#include <cerrno>

namespace tessellum {

ErrorCode ErrorForOpenErrno(int error) {
    switch (error) {
        case ENOENT: return ErrFileNotFound;
        case EACCES: return ErrAccessDenied;
        case EEXIST:
        case EINVAL: return ErrWrongAccess;
        case EMFILE: return ErrTooManyFiles;
        default: return ErrGeneral;
    }
}

ErrorCode ErrorForErrno(int error) {
    switch (error) {
        case ENOENT: return ErrPathNotFound;
        case E2BIG:
        case EINVAL: return ErrBadArgument;
        case EBADF: return ErrBadHandle;
        case EAGAIN:
        case EMFILE: return ErrTooManyFiles;
        case ENOMEM: return ErrNoMemory;
        case EACCES: return ErrBadMode;
        case EEXIST: return ErrFileExists;
        case EXDEV: return ErrCrossDevice;
        case ENOSPC: return ErrDiskFull;
        case ERANGE: return ErrOutOfRange;
        default: return ErrGeneral;
    }
}

void ThrowErrno(int error) {
    throw ErrorForErrno(error);
}

}  // namespace tessellum
