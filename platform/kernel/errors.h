// Error numbers that the layer sets, beyond those that the driver asks for, and the way from the
// host's errno to them.
#ifndef KV_PLATFORM_KERNEL_ERRORS_H
#define KV_PLATFORM_KERNEL_ERRORS_H

#include "platform/win32.h"

namespace kvp
{

constexpr DWORD ERROR_FILE_NOT_FOUND = 2;
constexpr DWORD ERROR_PATH_NOT_FOUND = 3;
constexpr DWORD ERROR_TOO_MANY_OPEN_FILES = 4;
constexpr DWORD ERROR_ACCESS_DENIED = 5;
constexpr DWORD ERROR_INVALID_HANDLE = 6;
constexpr DWORD ERROR_NOT_ENOUGH_MEMORY = 8;
constexpr DWORD ERROR_WRITE_PROTECT = 19;
constexpr DWORD ERROR_READ_FAULT = 30;
constexpr DWORD ERROR_GEN_FAILURE = 31;
constexpr DWORD ERROR_DISK_FULL = 112;
constexpr DWORD ERROR_INVALID_LEVEL = 124;
constexpr DWORD ERROR_MOD_NOT_FOUND = 126;
constexpr DWORD ERROR_PROC_NOT_FOUND = 127;
constexpr DWORD ERROR_NEGATIVE_SEEK = 131;
constexpr DWORD ERROR_NOT_LOCKED = 158;
constexpr DWORD ERROR_BUSY = 170;
constexpr DWORD ERROR_BAD_EXE_FORMAT = 193;
constexpr DWORD ERROR_FILENAME_EXCED_RANGE = 206;
constexpr DWORD ERROR_MORE_DATA = 234;
constexpr DWORD ERROR_NOACCESS = 998;
constexpr DWORD ERROR_INVALID_FLAGS = 1004;
constexpr DWORD ERROR_BADDB = 1009;
constexpr DWORD ERROR_DLL_INIT_FAILED = 1114;
constexpr DWORD ERROR_INVALID_PRINTER_NAME = 1801;
constexpr DWORD ERROR_INVALID_ENVIRONMENT = 1805;

DWORD ErrorFromErrno(int error);

// Sets the last error and hands on a call's failure result.
template <class Result>
Result Fail(DWORD error, Result result)
{
    SetLastError(error);
    return result;
}

} // namespace kvp

#endif
