#include "support/Errno.h"

#include <cerrno>

status_t errorFromErrno(int error) {
    switch (error) {
    case 0: return B_OK;
    case EACCES: return B_PERMISSION_DENIED;
    case EAGAIN: return B_WOULD_BLOCK;
    case EBADF: return B_FILE_ERROR;
    case EBUSY: return B_BUSY;
    case EDQUOT: return B_DEVICE_FULL;
    case EEXIST: return B_FILE_EXISTS;
    case EFBIG: return B_DEVICE_FULL;
    case EINTR: return B_INTERRUPTED;
    case EINVAL: return B_BAD_VALUE;
    case EIO: return B_IO_ERROR;
    case EISDIR: return B_IS_A_DIRECTORY;
    case ELOOP: return B_LINK_LIMIT;
    case EMFILE: return B_NO_MORE_FDS;
    case ENAMETOOLONG: return B_NAME_TOO_LONG;
    case ENFILE: return B_NO_MORE_FDS;
    case ENODEV: return B_UNSUPPORTED;
    case ENOENT: return B_ENTRY_NOT_FOUND;
    case ENOMEM: return B_NO_MEMORY;
    case ENOSPC: return B_DEVICE_FULL;
    case ENOSYS: return B_UNSUPPORTED;
    case ENOTDIR: return B_NOT_A_DIRECTORY;
    case ENOTEMPTY: return B_DIRECTORY_NOT_EMPTY;
    case EOPNOTSUPP: return B_UNSUPPORTED;
    case EPERM: return B_NOT_ALLOWED;
    case EPIPE: return B_BUSTED_PIPE;
    case EROFS: return B_READ_ONLY_DEVICE;
    case ETIMEDOUT: return B_TIMED_OUT;
    case ETXTBSY: return B_NOT_ALLOWED;
    case EXDEV: return B_CROSS_DEVICE_LINK;
    default: return B_POSIX_ERROR_BASE + error;
    }
}

status_t lastError() {
    return errorFromErrno(errno);
}
