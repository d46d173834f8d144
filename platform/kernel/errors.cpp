// The last error, kept per thread.
#include "platform/kernel/errors.h"

#include <cerrno>

namespace
{
thread_local DWORD t_dwLastError = 0;
}

DWORD WINAPI GetLastError()
{
    return t_dwLastError;
}

void WINAPI SetLastError(DWORD dwErrCode)
{
    t_dwLastError = dwErrCode;
}

DWORD kvp::ErrorFromErrno(int error)
{
    switch (error) {
    case ENOENT: return ERROR_FILE_NOT_FOUND;
    case ENOTDIR: return ERROR_PATH_NOT_FOUND;
    case EMFILE:
    case ENFILE: return ERROR_TOO_MANY_OPEN_FILES;
    case EACCES:
    case EPERM:
    case EISDIR: return ERROR_ACCESS_DENIED;
    case ENOMEM: return ERROR_NOT_ENOUGH_MEMORY;
    case EROFS: return ERROR_WRITE_PROTECT;
    case EIO: return ERROR_READ_FAULT;
    case ENOSPC:
    case EDQUOT:
    case EFBIG: return ERROR_DISK_FULL;
    case ENAMETOOLONG: return ERROR_FILENAME_EXCED_RANGE;
    default: return ERROR_GEN_FAILURE;
    }
}
