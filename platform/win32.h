// Everything that the driver asks of the outside: types, constants and calls with the names that
// the Win32 interfaces have, grouped by the folder that implements them, and nothing that the
// driver does not use. With this header exchanged for the vendor's own, the driver is plain
// Win32 source.
//
// Handles and message parameters are pointer-sized; every field of a stored structure has the
// width that its name says. Wide text is UTF-16 in WCHAR, other text is bytes in the ANSI code
// page. A call that fails sets the calling thread's last error.
#ifndef KV_PLATFORM_WIN32_H
#define KV_PLATFORM_WIN32_H

#include <cstddef>
#include <cstdint>

#define WINAPI
#define CALLBACK
#define KV_IMPORT extern "C" __attribute__((visibility("default")))

// ---------------------------------------------------------------------------------------------
// Types

using BOOL = int;
using BYTE = uint8_t;
using CHAR = char;
using WORD = uint16_t;
using SHORT = int16_t;
using UINT = uint32_t;
using INT = int32_t;
using DWORD = uint32_t;
using LONG = int32_t;
using WCHAR = char16_t;
using LANGID = WORD;
using LCID = DWORD;
using HFILE = int;
using NTSTATUS = int32_t;
using LPVOID = void *;
using LPCVOID = const void *;
using LPSTR = char *;
using LPCSTR = const char *;
using LPWSTR = WCHAR *;
using LPCWSTR = const WCHAR *;
using LPBYTE = BYTE *;
using LPDWORD = DWORD *;
using HANDLE = void *;
using HGLOBAL = void *;
using HLOCAL = void *;
using HWND = struct HWND__ *;
using HINSTANCE = struct HINSTANCE__ *;
using HMODULE = HINSTANCE;
using FARPROC = void (*)();

constexpr BOOL TRUE = 1;
constexpr BOOL FALSE = 0;
constexpr int MAX_PATH = 260;

// ---------------------------------------------------------------------------------------------
// kernel: errors, version, locale

constexpr DWORD ERROR_SUCCESS = 0;
constexpr DWORD ERROR_INVALID_PARAMETER = 87;
constexpr DWORD ERROR_INSUFFICIENT_BUFFER = 122;

struct OSVERSIONINFOW {
    DWORD dwOSVersionInfoSize; // must be the size of this structure, 276
    DWORD dwMajorVersion;
    DWORD dwMinorVersion;
    DWORD dwBuildNumber;
    DWORD dwPlatformId;
    WCHAR szCSDVersion[128];
};
static_assert(sizeof(OSVERSIONINFOW) == 276);

constexpr UINT CP_ACP = 0;
constexpr LCID LOCALE_USER_DEFAULT = 0x400;
constexpr DWORD LOCALE_IMEASURE = 0xD;
constexpr int CSTR_EQUAL = 2;

KV_IMPORT DWORD WINAPI GetLastError();
KV_IMPORT void WINAPI SetLastError(DWORD dwErrCode);
// FALSE unless dwOSVersionInfoSize is 276.
KV_IMPORT BOOL WINAPI GetVersionExW(OSVERSIONINFOW *lpVersionInformation);
KV_IMPORT LANGID WINAPI GetUserDefaultLangID();
// Characters written, terminator included; 0 when the type is unknown or the buffer too small.
KV_IMPORT int WINAPI GetLocaleInfoA(LCID Locale, DWORD LCType, LPSTR lpLCData, int cchData);
// CSTR_EQUAL for equal texts, 1 and 3 for less and greater, 0 on failure. A length of -1 stands
// for a terminated string. No flags: case matters.
KV_IMPORT int WINAPI CompareStringA(LCID Locale, DWORD dwCmpFlags, LPCSTR lpString1, int cchCount1,
                                    LPCSTR lpString2, int cchCount2);

// ---------------------------------------------------------------------------------------------
// kernel: code pages

// Units written, or the number needed when the output count is 0; 0 on failure. A source length
// of -1 takes the terminator along.
KV_IMPORT int WINAPI MultiByteToWideChar(UINT CodePage, DWORD dwFlags, LPCSTR lpMultiByteStr,
                                         int cbMultiByte, LPWSTR lpWideCharStr, int cchWideChar);
KV_IMPORT int WINAPI WideCharToMultiByte(UINT CodePage, DWORD dwFlags, LPCWSTR lpWideCharStr,
                                         int cchWideChar, LPSTR lpMultiByteStr, int cbMultiByte,
                                         LPCSTR lpDefaultChar, BOOL *lpUsedDefaultChar);
// Sizes in bytes on both sides; a negative status is a failure. RtlUnicodeToMultiByteN cuts at a
// character's border when the output is too small.
KV_IMPORT NTSTATUS WINAPI RtlUnicodeToMultiByteSize(DWORD *BytesInMultiByteString,
                                                    const WCHAR *UnicodeString,
                                                    DWORD BytesInUnicodeString);
KV_IMPORT NTSTATUS WINAPI RtlUnicodeToMultiByteN(LPSTR MultiByteString,
                                                 DWORD MaxBytesInMultiByteString,
                                                 DWORD *BytesInMultiByteString,
                                                 const WCHAR *UnicodeString,
                                                 DWORD BytesInUnicodeString);

// ---------------------------------------------------------------------------------------------
// kernel: memory

constexpr UINT GMEM_FIXED = 0;
constexpr UINT GMEM_ZEROINIT = 0x40;
constexpr UINT LMEM_FIXED = 0;
constexpr UINT LMEM_ZEROINIT = 0x40;

// Null when memory runs out. Freed with GlobalFree and LocalFree, which take null as well.
KV_IMPORT HGLOBAL WINAPI GlobalAlloc(UINT uFlags, size_t dwBytes);
KV_IMPORT HGLOBAL WINAPI GlobalFree(HGLOBAL hMem);
// Bytes that a block was asked for with; 0 for null.
KV_IMPORT size_t WINAPI GlobalSize(HGLOBAL hMem);
KV_IMPORT HLOCAL WINAPI LocalAlloc(UINT uFlags, size_t uBytes);
KV_IMPORT HLOCAL WINAPI LocalFree(HLOCAL hMem);

// ---------------------------------------------------------------------------------------------
// kernel: files

#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(static_cast<intptr_t>(-1)))
constexpr DWORD INVALID_FILE_SIZE = 0xFFFFFFFF;
constexpr DWORD GENERIC_READ = 0x80000000;
constexpr DWORD FILE_SHARE_READ = 1;
constexpr DWORD OPEN_EXISTING = 3;
constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;

constexpr HFILE HFILE_ERROR = -1;
constexpr UINT OF_READ = 0;
constexpr UINT OF_EXIST = 0x4000;
constexpr int FILE_BEGIN = 0;

struct OFSTRUCT {
    BYTE cBytes;
    BYTE fFixedDisk;
    WORD nErrCode;
    WORD Reserved1;
    WORD Reserved2;
    CHAR szPathName[128];
};

// Length without the terminator; a result not below the buffer's size is the size needed.
KV_IMPORT UINT WINAPI GetSystemDirectoryA(LPSTR lpBuffer, UINT uSize);
// Full path of the file, or INVALID_HANDLE_VALUE. Released with CloseHandle.
KV_IMPORT HANDLE WINAPI CreateFileA(LPCSTR lpFileName, DWORD dwDesiredAccess, DWORD dwShareMode,
                                    LPVOID lpSecurityAttributes, DWORD dwCreationDisposition,
                                    DWORD dwFlagsAndAttributes, HANDLE hTemplateFile);
KV_IMPORT DWORD WINAPI GetFileSize(HANDLE hFile, LPDWORD lpFileSizeHigh);
KV_IMPORT BOOL WINAPI ReadFile(HANDLE hFile, LPVOID lpBuffer, DWORD nNumberOfBytesToRead,
                               LPDWORD lpNumberOfBytesRead, LPVOID lpOverlapped);
KV_IMPORT BOOL WINAPI CloseHandle(HANDLE hObject);

// A bare name is searched for in the current directory, the Windows directory, the system
// directory and the directories of the path, in this order. With OF_EXIST the file is only looked
// for: the result is then not HFILE_ERROR, and nothing is left open. Released with _lclose.
KV_IMPORT HFILE WINAPI OpenFile(LPCSTR lpFileName, OFSTRUCT *lpReOpenBuff, UINT uStyle);
// Bytes read, fewer at the end of the file, or HFILE_ERROR.
KV_IMPORT UINT WINAPI _lread(HFILE hFile, LPVOID lpBuffer, UINT uBytes);
// The new position from the start, or HFILE_ERROR. A position past the end is legal.
KV_IMPORT LONG WINAPI _llseek(HFILE hFile, LONG lOffset, int iOrigin);
KV_IMPORT HFILE WINAPI _lclose(HFILE hFile);

// ---------------------------------------------------------------------------------------------
// kernel: libraries; resource: what they hold

// Libraries are searched for as files are. A shared object's DllInitialize, when it exports one,
// can refuse the load. Null on failure; released with FreeLibrary.
KV_IMPORT HMODULE WINAPI LoadLibraryA(LPCSTR lpLibFileName);
KV_IMPORT BOOL WINAPI FreeLibrary(HMODULE hLibModule);

// Characters written without the terminator, cut to the buffer; 0 when there is no such string.
KV_IMPORT int WINAPI LoadStringA(HINSTANCE hInstance, UINT uID, LPSTR lpBuffer, int cchBufferMax);
KV_IMPORT int WINAPI LoadStringW(HINSTANCE hInstance, UINT uID, LPWSTR lpBuffer, int cchBufferMax);

// ---------------------------------------------------------------------------------------------
// user

constexpr UINT MB_OK = 0;
constexpr UINT MB_ICONEXCLAMATION = 0x30;
constexpr UINT MB_ICONINFORMATION = 0x40;
constexpr int IDOK = 1;

// The identifier of the button pressed: 1 OK, 2 Cancel.
KV_IMPORT int WINAPI MessageBoxA(HWND hWnd, LPCSTR lpText, LPCSTR lpCaption, UINT uType);

// ---------------------------------------------------------------------------------------------
// spooler

constexpr DWORD REG_BINARY = 3;

// The public settings record, as version 0x0320 of the interface has it: 188 bytes.
struct DEVMODEW {
    WCHAR dmDeviceName[32];
    WORD dmSpecVersion;
    WORD dmDriverVersion;
    WORD dmSize;
    WORD dmDriverExtra; // bytes of private data behind the public part
    DWORD dmFields;
    BYTE abRest[112];
};
static_assert(sizeof(DEVMODEW) == 188);

struct PRINTER_INFO_2W {
    LPWSTR pServerName;
    LPWSTR pPrinterName;
    LPWSTR pShareName;
    LPWSTR pPortName;
    LPWSTR pDriverName;
    LPWSTR pComment;
    LPWSTR pLocation;
    DEVMODEW *pDevMode; // null when the queue has no default record
};

struct PRINTER_INFO_2A {
    LPSTR pServerName;
    LPSTR pPrinterName;
    LPSTR pShareName;
    LPSTR pPortName;
    LPSTR pDriverName;
    LPSTR pComment;
    LPSTR pLocation;
    void *pDevMode;
};

struct DRIVER_INFO_2W {
    DWORD cVersion;
    LPWSTR pName;
    LPWSTR pEnvironment;
    LPWSTR pDriverPath;
    LPWSTR pDataFile;
    LPWSTR pConfigFile;
};

// The readers follow one pattern: with too small a buffer they give FALSE, the last error
// ERROR_INSUFFICIENT_BUFFER and the size needed in bytes. Texts lie in the caller's buffer.
KV_IMPORT BOOL WINAPI GetPrinterW(HANDLE hPrinter, DWORD Level, LPBYTE pPrinter, DWORD cbBuf,
                                  LPDWORD pcbNeeded);
KV_IMPORT BOOL WINAPI GetPrinterA(HANDLE hPrinter, DWORD Level, LPBYTE pPrinter, DWORD cbBuf,
                                  LPDWORD pcbNeeded);
KV_IMPORT BOOL WINAPI GetPrinterDriverW(HANDLE hPrinter, LPCWSTR pEnvironment, DWORD Level,
                                        LPBYTE pDriverInfo, DWORD cbBuf, LPDWORD pcbNeeded);
KV_IMPORT BOOL WINAPI GetPrinterDriverDirectoryA(LPCSTR pName, LPCSTR pEnvironment, DWORD Level,
                                                 LPBYTE pDriverDirectory, DWORD cbBuf,
                                                 LPDWORD pcbNeeded);
// ERROR_SUCCESS, ERROR_MORE_DATA with the size needed, or another error. A value that does not
// exist has size 0.
KV_IMPORT DWORD WINAPI GetPrinterDataW(HANDLE hPrinter, LPCWSTR pValueName, LPDWORD pType,
                                       LPBYTE pData, DWORD nSize, LPDWORD pcbNeeded);
KV_IMPORT DWORD WINAPI SetPrinterDataW(HANDLE hPrinter, LPCWSTR pValueName, DWORD Type,
                                       LPBYTE pData, DWORD cbData);

#endif
