// The file calls: finding by name, and one table of open files for both families of handles, as
// either family's calls take the other's handles.
#include <array>
#include <cstddef>
#include <cstring>
#include <mutex>

#include "platform/kernel/counts.h"
#include "platform/kernel/disk.h"
#include "platform/kernel/errors.h"
#include "platform/kernel/internal.h"
#include "platform/kernel/reader.h"
#include "platform/kernel/search.h"
#include "platform/kernel/writer.h"

namespace kvp
{
namespace
{

struct OpenedFile {
    int nHandle = 0; // 0: the slot is free
    uint64_t nPosition = 0;
    FileReader reader;
    std::unique_ptr<FileWriter> writer; // null: open for reading
};

// A handle is a multiple of 4 made of slot and turn: a closed one stays wrong for a long while
// after its slot is in use again.
constexpr int SLOTS = 256;
constexpr int TURNS = 0x100000;

std::mutex g_lock;
std::array<OpenedFile, SLOTS> g_aFiles;
int g_nTurn = 0;

OpenedFile *FileOf(int handle)
{
    OpenedFile &file = g_aFiles[static_cast<size_t>(handle / 4) % SLOTS];
    return handle > 0 && file.nHandle == handle ? &file : nullptr;
}

// HFILE_ERROR when the table is full.
int NewHandle(FileReader &&reader, std::unique_ptr<FileWriter> writer)
{
    const std::lock_guard guard(g_lock);
    for (int i = 0; i < SLOTS; ++i) {
        OpenedFile &file = g_aFiles[static_cast<size_t>(i)];
        if (file.nHandle != 0)
            continue;
        g_nTurn = g_nTurn % TURNS + 1;
        file.nHandle = 4 * (g_nTurn * SLOTS + i);
        file.nPosition = 0;
        file.reader = std::move(reader);
        file.writer = std::move(writer);
        g_nFiles.fetch_add(1, std::memory_order_relaxed);
        return file.nHandle;
    }
    return Fail(ERROR_TOO_MANY_OPEN_FILES, HFILE_ERROR);
}

int HandleNumber(HANDLE handle)
{
    const auto n = reinterpret_cast<intptr_t>(handle);
    return n > 0 && n <= INT32_MAX ? static_cast<int>(n) : 0;
}

DWORD ReadFrom(int handle, void *to, size_t cb, size_t *pcbRead)
{
    const std::lock_guard guard(g_lock);
    *pcbRead = 0;
    OpenedFile *file = FileOf(handle);
    if (!file)
        return ERROR_INVALID_HANDLE;
    if (file->writer)
        return ERROR_ACCESS_DENIED;
    if (!to && cb != 0)
        return ERROR_NOACCESS;
    if (ShouldFail(Call::Read) || !file->reader.Read(file->nPosition, to, cb, pcbRead))
        return ERROR_READ_FAULT;
    file->nPosition += *pcbRead;
    SpoilRest(static_cast<uint8_t *>(to) + *pcbRead, cb - *pcbRead);
    return ERROR_SUCCESS;
}

DWORD WriteTo(int handle, const void *from, size_t cb)
{
    const std::lock_guard guard(g_lock);
    OpenedFile *file = FileOf(handle);
    if (!file)
        return ERROR_INVALID_HANDLE;
    if (!file->writer)
        return ERROR_ACCESS_DENIED;
    if (!from && cb != 0)
        return ERROR_NOACCESS;
    const DWORD dwError = file->writer->Write(file->nPosition, from, cb);
    if (dwError == ERROR_SUCCESS)
        file->nPosition += cb;
    return dwError;
}

bool SizeOf(const OpenedFile &file, uint64_t *pcb)
{
    if (!file.writer)
        return file.reader.Size(pcb);
    *pcb = file.writer->Size();
    return true;
}

// The handle is gone afterwards, whatever the result.
DWORD CloseOpened(int handle)
{
    FileReader reader;
    std::unique_ptr<FileWriter> writer;
    {
        const std::lock_guard guard(g_lock);
        OpenedFile *file = FileOf(handle);
        if (!file)
            return ERROR_INVALID_HANDLE;
        reader = std::move(file->reader);
        writer = std::move(file->writer);
        file->nHandle = 0;
        g_nFiles.fetch_sub(1, std::memory_order_relaxed);
    }
    if (ShouldFail(Call::Close))
        return writer ? ERROR_DISK_FULL : ERROR_GEN_FAILURE;
    return writer ? writer->Commit() : ERROR_SUCCESS;
}

// Names come in the ANSI code page; most need no conversion.
class NameUtf8
{
  public:
    explicit NameUtf8(LPCSTR name) : m_view(name)
    {
        if (IsAscii(m_view))
            return;
        m_strConverted = AnsiToUtf8(m_view);
        m_view = m_strConverted;
    }
    std::string_view View() const { return m_view; }

  private:
    std::string m_strConverted;
    std::string_view m_view;
};

DWORD FileExists(const Place &place)
{
    const MemoryAnswer memory = LookInMemory(place);
    if (memory.bKnown)
        return memory.bytes ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
    return Reach(place, IsHostFile);
}

// What one OpenFile has come to.
struct Opening {
    Place place; // of the file found
    FileReader reader;
    std::unique_ptr<FileWriter> writer;
};

DWORD OpenBy(std::string_view name, UINT uStyle, Opening &opening)
{
    constexpr UINT KNOWN_STYLES = OF_READ | OF_WRITE | OF_EXIST | OF_CREATE;
    if (uStyle & ~KNOWN_STYLES)
        return ERROR_INVALID_PARAMETER;
    if (uStyle & (OF_CREATE | OF_WRITE) && !(uStyle & OF_EXIST))
        opening.writer = std::make_unique<FileWriter>();
    if (uStyle & OF_CREATE) { // made where it is named, not where one of its name is found
        if (!PlaceOf(name, opening.place))
            return ERROR_PATH_NOT_FOUND;
        return opening.writer ? opening.writer->Open(opening.place, true) : ERROR_INVALID_PARAMETER;
    }
    return SearchFor(name, [&](const Place &place) {
        opening.place = place;
        if (opening.writer)
            return opening.writer->Open(place, false);
        return uStyle & OF_EXIST ? FileExists(place) : opening.reader.Open(place);
    });
}

HFILE Refused(OFSTRUCT *of, DWORD error)
{
    of->nErrCode = static_cast<WORD>(error);
    return Fail(error, HFILE_ERROR);
}

} // namespace

std::optional<FoundFile> FindFile(std::string_view name)
{
    FoundFile found;
    const DWORD dwError = SearchFor(name, [&](const Place &place) -> DWORD {
        found.strDosPath = place.DosPath();
        const MemoryAnswer memory = LookInMemory(place);
        found.memory = memory.bytes;
        if (memory.bKnown)
            return memory.bytes ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
        return Reach(place, [&found](const char *path) {
            found.strHostPath = path;
            return IsHostFile(path);
        });
    });
    if (dwError != ERROR_SUCCESS)
        return Fail(dwError, std::optional<FoundFile>());
    return found;
}

std::string HostPath(std::string_view dosPath)
{
    Place place;
    return PlaceOf(dosPath, place) ? HostPathOf(place) : std::string();
}

} // namespace kvp

HANDLE WINAPI CreateFileA(LPCSTR lpFileName, DWORD dwDesiredAccess, DWORD, LPVOID,
                          DWORD dwCreationDisposition, DWORD, HANDLE)
{
    if (!lpFileName || dwDesiredAccess != GENERIC_READ || dwCreationDisposition != OPEN_EXISTING)
        return kvp::Fail(ERROR_INVALID_PARAMETER, INVALID_HANDLE_VALUE);
    if (kvp::ShouldFail(kvp::Call::OpenFile))
        return kvp::Fail(kvp::ERROR_ACCESS_DENIED, INVALID_HANDLE_VALUE);
    kvp::Place place;
    kvp::FileReader reader;
    if (!kvp::PlaceOf(kvp::NameUtf8(lpFileName).View(), place))
        return kvp::Fail(kvp::ERROR_PATH_NOT_FOUND, INVALID_HANDLE_VALUE);
    if (const DWORD dwError = reader.Open(place); dwError != ERROR_SUCCESS)
        return kvp::Fail(dwError, INVALID_HANDLE_VALUE);
    const int nHandle = kvp::NewHandle(std::move(reader), nullptr);
    return reinterpret_cast<HANDLE>(static_cast<intptr_t>(nHandle)); // HFILE_ERROR fits as well
}

DWORD WINAPI GetFileSize(HANDLE hFile, LPDWORD lpFileSizeHigh)
{
    const std::lock_guard guard(kvp::g_lock);
    const kvp::OpenedFile *file = kvp::FileOf(kvp::HandleNumber(hFile));
    uint64_t cb = 0;
    if (!file)
        return kvp::Fail(kvp::ERROR_INVALID_HANDLE, INVALID_FILE_SIZE);
    if (!kvp::SizeOf(*file, &cb))
        return kvp::Fail(kvp::ERROR_GEN_FAILURE, INVALID_FILE_SIZE);
    if (lpFileSizeHigh)
        *lpFileSizeHigh = static_cast<DWORD>(cb >> 32);
    SetLastError(ERROR_SUCCESS); // a size whose lower half looks like the failure is told apart
    return static_cast<DWORD>(cb);
}

BOOL WINAPI ReadFile(HANDLE hFile, LPVOID lpBuffer, DWORD nNumberOfBytesToRead,
                     LPDWORD lpNumberOfBytesRead, LPVOID lpOverlapped)
{
    if (!lpNumberOfBytesRead || lpOverlapped)
        return kvp::Fail(ERROR_INVALID_PARAMETER, FALSE);
    size_t cbRead = 0;
    const DWORD dwError =
        kvp::ReadFrom(kvp::HandleNumber(hFile), lpBuffer, nNumberOfBytesToRead, &cbRead);
    *lpNumberOfBytesRead = static_cast<DWORD>(cbRead);
    return dwError == ERROR_SUCCESS ? TRUE : kvp::Fail(dwError, FALSE);
}

BOOL WINAPI CloseHandle(HANDLE hObject)
{
    const DWORD dwError = kvp::CloseOpened(kvp::HandleNumber(hObject));
    return dwError == ERROR_SUCCESS ? TRUE : kvp::Fail(dwError, FALSE);
}

HFILE WINAPI OpenFile(LPCSTR lpFileName, OFSTRUCT *lpReOpenBuff, UINT uStyle)
{
    constexpr HFILE FOUND_ONLY = 1; // no handle: those are multiples of 4
    if (!lpFileName || !lpReOpenBuff)
        return kvp::Fail(ERROR_INVALID_PARAMETER, HFILE_ERROR);
    std::memset(lpReOpenBuff, 0, offsetof(OFSTRUCT, szPathName) + 1);
    lpReOpenBuff->cBytes = sizeof(OFSTRUCT);
    if (kvp::ShouldFail(kvp::Call::OpenFile))
        return kvp::Refused(lpReOpenBuff, kvp::ERROR_ACCESS_DENIED);
    kvp::Opening opening;
    const DWORD dwError = kvp::OpenBy(kvp::NameUtf8(lpFileName).View(), uStyle, opening);
    if (dwError != ERROR_SUCCESS)
        return kvp::Refused(lpReOpenBuff, dwError);
    constexpr size_t cbRoom = sizeof lpReOpenBuff->szPathName - 1;
    const size_t cbPath = opening.place.DosPathAnsi(lpReOpenBuff->szPathName, cbRoom);
    if (cbPath == 0)
        return kvp::Refused(lpReOpenBuff, kvp::ERROR_FILENAME_EXCED_RANGE);
    lpReOpenBuff->fFixedDisk = 1;
    lpReOpenBuff->szPathName[cbPath] = '\0';
    kvp::SpoilRest(lpReOpenBuff->szPathName + cbPath + 1, cbRoom - cbPath);
    if (uStyle & OF_EXIST)
        return FOUND_ONLY;
    const HFILE hFile = kvp::NewHandle(std::move(opening.reader), std::move(opening.writer));
    return hFile == HFILE_ERROR ? kvp::Refused(lpReOpenBuff, GetLastError()) : hFile;
}

UINT WINAPI _lread(HFILE hFile, LPVOID lpBuffer, UINT uBytes)
{
    size_t cbRead = 0;
    const DWORD dwError = kvp::ReadFrom(hFile, lpBuffer, uBytes, &cbRead);
    return dwError == ERROR_SUCCESS ? static_cast<UINT>(cbRead)
                                    : kvp::Fail(dwError, static_cast<UINT>(HFILE_ERROR));
}

UINT WINAPI _lwrite(HFILE hFile, LPCVOID lpBuffer, UINT uBytes)
{
    const DWORD dwError = kvp::WriteTo(hFile, lpBuffer, uBytes);
    return dwError == ERROR_SUCCESS ? uBytes : kvp::Fail(dwError, static_cast<UINT>(HFILE_ERROR));
}

LONG WINAPI _llseek(HFILE hFile, LONG lOffset, int iOrigin)
{
    constexpr int FROM_END = 2;
    const std::lock_guard guard(kvp::g_lock);
    kvp::OpenedFile *file = kvp::FileOf(hFile);
    uint64_t cbFile = 0;
    if (!file)
        return kvp::Fail(kvp::ERROR_INVALID_HANDLE, HFILE_ERROR);
    if (iOrigin < FILE_BEGIN || iOrigin > FROM_END)
        return kvp::Fail(ERROR_INVALID_PARAMETER, HFILE_ERROR);
    if (iOrigin == FROM_END && !kvp::SizeOf(*file, &cbFile))
        return kvp::Fail(kvp::ERROR_GEN_FAILURE, HFILE_ERROR);
    const int64_t nFrom = iOrigin == FILE_BEGIN     ? 0
                          : iOrigin == FILE_CURRENT ? static_cast<int64_t>(file->nPosition)
                                                    : static_cast<int64_t>(cbFile);
    const int64_t nTo = nFrom + lOffset;
    if (nTo < 0)
        return kvp::Fail(kvp::ERROR_NEGATIVE_SEEK, HFILE_ERROR);
    if (nTo > INT32_MAX)
        return kvp::Fail(ERROR_INVALID_PARAMETER, HFILE_ERROR);
    file->nPosition = static_cast<uint64_t>(nTo);
    return static_cast<LONG>(nTo);
}

HFILE WINAPI _lclose(HFILE hFile)
{
    const DWORD dwError = kvp::CloseOpened(hFile);
    return dwError == ERROR_SUCCESS ? 0 : kvp::Fail(dwError, HFILE_ERROR);
}
