// Loaded libraries: PE files, mapped for their resources, and shared objects, which also run. The
// same file loaded again is the same module with one reference more.
#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "platform/kernel/errors.h"
#include "platform/kernel/internal.h"
#include "platform/resource/elf.h"
#include "platform/resource/pe.h"
#include "platform/resource/resource.h"
#include "platform/start/start.h"

namespace kvp
{

namespace
{

constexpr DWORD PROCESS_DETACH = 0;
constexpr DWORD PROCESS_ATTACH = 1;
using Initialize = BOOL(WINAPI *)(HINSTANCE, DWORD, LPVOID);

// A library's file: a mapping of one on disk, or one in memory. Which file it is, device and
// inode tell for one on disk, the bytes' address for one in memory, which lives as long as this.
struct LibraryFile {
    LibraryFile() = default;
    LibraryFile(const LibraryFile &) = delete;
    LibraryFile &operator=(const LibraryFile &) = delete;
    ~LibraryFile()
    {
        if (mapping)
            munmap(mapping, bytes.size());
    }
    bool SameAs(const LibraryFile &other) const
    {
        return memory || other.memory ? memory == other.memory
                                      : device == other.device && inode == other.inode;
    }

    Bytes bytes;
    void *mapping = nullptr;
    std::shared_ptr<const std::vector<uint8_t>> memory;
    dev_t device = 0;
    ino_t inode = 0;
};

struct Library {
    std::unique_ptr<LibraryFile> file;
    PeFile pe;              // without a directory when there are no resources
    void *object = nullptr; // a shared object's handle
    int nReferences = 1;    // 0 while it is being detached
};

// Why a load failed, for GetLastError and in words.
struct Failure {
    DWORD error = 0;
    std::string reason;
};

// One at a time attaches or detaches; a DllInitialize may load, free and read libraries itself.
std::recursive_mutex &LoaderLock()
{
    static std::recursive_mutex lock;
    return lock;
}

// Whether this thread is mapping a shared object here, which is then started here as well.
thread_local bool t_bMapping = false;

std::vector<std::unique_ptr<Library>> &Loaded()
{
    static std::vector<std::unique_ptr<Library>> loaded;
    return loaded;
}

HMODULE HandleOf(const Library &library)
{
    return reinterpret_cast<HMODULE>(const_cast<Library *>(&library));
}

// The library that a handle stands for; null when it stands for none.
Library *FromHandle(HMODULE module)
{
    for (const auto &library : Loaded())
        if (HandleOf(*library) == module)
            return library.get();
    return nullptr;
}

// From now on its handle stands for none. Null when that is so already: a DllInitialize may free
// its own module.
std::unique_ptr<Library> TakeOut(const Library *library)
{
    const auto at = std::ranges::find(Loaded(), library, &std::unique_ptr<Library>::get);
    if (at == Loaded().end())
        return nullptr;
    std::unique_ptr<Library> taken = std::move(*at);
    Loaded().erase(at);
    return taken;
}

std::unique_ptr<LibraryFile> MapFile(const std::string &hostPath)
{
    // Not blocking: a name that turns out to be a pipe must not hold the caller.
    const int fd = open(hostPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0)
        return nullptr;
    auto file = std::make_unique<LibraryFile>();
    struct stat status = {};
    if (fstat(fd, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0) {
        const auto size = static_cast<size_t>(status.st_size);
        void *mapping = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, fd, 0);
        if (mapping != MAP_FAILED) {
            file->mapping = mapping;
            file->bytes = {static_cast<const uint8_t *>(mapping), size};
        }
    }
    file->device = status.st_dev;
    file->inode = status.st_ino;
    close(fd);
    return file;
}

std::unique_ptr<LibraryFile> HoldMemoryFile(std::shared_ptr<const std::vector<uint8_t>> memory)
{
    auto file = std::make_unique<LibraryFile>();
    file->bytes = *memory;
    file->memory = std::move(memory);
    return file;
}

// dlsym looks in the object's own dependencies too, whose functions are not its exports.
FARPROC Export(void *object, const char *name)
{
    void *address = dlsym(object, name);
    link_map *own = nullptr, *holder = nullptr;
    Dl_info info;
    if (!address || dlinfo(object, RTLD_DI_LINKMAP, &own) != 0 ||
        dladdr1(address, &info, reinterpret_cast<void **>(&holder), RTLD_DL_LINKMAP) == 0 ||
        own != holder)
        return nullptr;
    return reinterpret_cast<FARPROC>(address);
}

// TRUE also for an object without a DllInitialize.
BOOL Notify(const Library &library, DWORD reason)
{
    if (!library.object)
        return TRUE;
    const auto initialize = reinterpret_cast<Initialize>(Export(library.object, "DllInitialize"));
    return initialize ? initialize(HandleOf(library), reason, nullptr) : TRUE;
}

// Loads the code of a shared object. Its resources, if it has any, are a PE file in a section.
bool OpenObject(Library &library, const std::string &hostPath, Failure &failure)
{
    if (library.file->memory) {
        failure = {ERROR_BAD_EXE_FORMAT, "a shared object must be a file on disk"};
        return false;
    }
    // Without a slash the name would be looked for elsewhere.
    const std::string path = hostPath.find('/') == std::string::npos ? "./" + hostPath : hostPath;
    const bool bOuter = std::exchange(t_bMapping, true);
    library.object = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    t_bMapping = bOuter;
    if (!library.object) {
        failure = {ERROR_BAD_EXE_FORMAT, dlerror()};
        return false;
    }
    OpenPe(ElfSection(library.file->bytes, ".rsrc"), library.pe);
    return true;
}

void Close(std::unique_ptr<Library> library)
{
    if (library && library->object)
        dlclose(library->object);
}

// The module is known by its handle from before its DllInitialize is called until after its last
// call, so that it can read its own resources there.
HMODULE Attach(std::unique_ptr<Library> opened, const std::string &name, Failure &failure)
{
    const Library *library = Loaded().emplace_back(std::move(opened)).get();
    HMODULE module = HandleOf(*library);
    if (Notify(*library, PROCESS_ATTACH)) {
        CountLibrary(1);
        return module;
    }
    Close(TakeOut(library));
    failure = {ERROR_DLL_INIT_FAILED, name + " refused to start"};
    return nullptr;
}

HMODULE Open(std::unique_ptr<LibraryFile> file, const std::string &name, Failure &failure)
{
    for (const auto &library : Loaded()) {
        if (library->nReferences > 0 && library->file->SameAs(*file)) {
            ++library->nReferences;
            return HandleOf(*library);
        }
    }
    auto library = std::make_unique<Library>();
    library->file = std::move(file);
    const Bytes bytes = library->file->bytes;
    if (IsElf(bytes)) {
        if (!OpenObject(*library, name, failure))
            return nullptr;
    } else if (!OpenPe(bytes, library->pe)) {
        failure = {ERROR_BAD_EXE_FORMAT, name + " is not a library"};
        return nullptr;
    }
    return Attach(std::move(library), name, failure);
}

HMODULE LoadFile(const FoundFile &found, Failure &failure)
{
    const std::lock_guard lock(LoaderLock());
    if (ShouldFail(Call::LoadLibrary)) {
        failure = {ERROR_NOT_ENOUGH_MEMORY, "out of memory"};
        return nullptr;
    }
    if (found.memory)
        return Open(HoldMemoryFile(found.memory), found.strDosPath, failure);
    auto file = MapFile(found.strHostPath);
    if (!file) {
        failure = {ERROR_MOD_NOT_FOUND,
                   "cannot open " + found.strHostPath + ": " + std::strerror(errno)};
        return nullptr;
    }
    return Open(std::move(file), found.strHostPath, failure);
}

// A name without an extension means a library's; a point at its end means none.
std::string WithExtension(std::string name)
{
    const size_t nameAt = name.find_last_of("\\/:") + 1;
    const size_t point = name.find('.', nameAt);
    if (point == std::string::npos)
        name += ".DLL";
    else if (name.ends_with('.'))
        name.pop_back();
    return name;
}

} // namespace

HMODULE LoadHostLibrary(const std::string &hostPath, std::string *reason)
{
    Failure failure;
    FoundFile file;
    file.strHostPath = hostPath;
    HMODULE module = LoadFile(file, failure);
    if (!module) {
        SetLastError(failure.error);
        if (reason)
            *reason = failure.reason;
    }
    return module;
}

void StartLinkedLibrary(const void *inside)
{
    Dl_info info;
    if (t_bMapping || dladdr(inside, &info) == 0 || !info.dli_fname)
        return;
    std::string reason;
    if (LoadHostLibrary(info.dli_fname, &reason))
        return;
    fmt::print(stderr, "{}\n", reason);
    std::_Exit(EXIT_FAILURE);
}

FARPROC FindProc(HMODULE module, const char *name)
{
    const std::lock_guard lock(LoaderLock());
    const Library *library = FromHandle(module);
    return library && library->object && name ? Export(library->object, name) : nullptr;
}

std::span<const uint8_t> FindResource(HMODULE module, ResourceType type, uint16_t id, LANGID wLang)
{
    const std::lock_guard lock(LoaderLock());
    const Library *library = FromHandle(module);
    return library ? FindInPe(library->pe, type, id, wLang) : Bytes{};
}

std::span<const uint8_t> FindResource(HMODULE module, ResourceType type, uint16_t id)
{
    return FindResource(module, type, id, CurrentMachine().wLang);
}

} // namespace kvp

HMODULE WINAPI LoadLibraryA(LPCSTR lpLibFileName)
{
    kvp::Failure failure{ERROR_INVALID_PARAMETER, {}};
    HMODULE module = nullptr;
    if (lpLibFileName && *lpLibFileName) {
        failure.error = kvp::ERROR_MOD_NOT_FOUND;
        if (const auto found = kvp::FindFile(kvp::WithExtension(kvp::AnsiToUtf8(lpLibFileName))))
            module = kvp::LoadFile(*found, failure);
    }
    if (!module)
        SetLastError(failure.error);
    return module;
}

BOOL WINAPI FreeLibrary(HMODULE hLibModule)
{
    const std::lock_guard lock(kvp::LoaderLock());
    kvp::Library *library = kvp::FromHandle(hLibModule);
    if (!library || library->nReferences == 0)
        return kvp::Fail(kvp::ERROR_INVALID_HANDLE, FALSE);
    if (--library->nReferences > 0)
        return TRUE;
    kvp::Notify(*library, kvp::PROCESS_DETACH);
    kvp::CountLibrary(-1);
    kvp::Close(kvp::TakeOut(library));
    return TRUE;
}

FARPROC WINAPI GetProcAddress(HMODULE hModule, LPCSTR lpProcName)
{
    const FARPROC proc = kvp::FindProc(hModule, lpProcName);
    if (!proc)
        SetLastError(kvp::ERROR_PROC_NOT_FOUND);
    return proc;
}

// The machine's drives hold no program. By its name the running one would lie at their root, where
// a file may stand in for it.
DWORD WINAPI GetModuleFileNameA(HMODULE hModule, LPSTR lpFilename, DWORD nSize)
{
    if (hModule || !lpFilename || nSize == 0)
        return kvp::Fail<DWORD>(hModule ? kvp::ERROR_INVALID_HANDLE : ERROR_INVALID_PARAMETER, 0);
    const std::string path =
        kvp::WideToAnsi(kvp::ToWide("C:\\" + std::string(program_invocation_short_name) + ".EXE"));
    const size_t length = std::min<size_t>(path.size(), nSize - 1);
    std::memcpy(lpFilename, path.data(), length);
    lpFilename[length] = '\0';
    kvp::SpoilRest(lpFilename + length + 1, nSize - 1 - length);
    return static_cast<DWORD>(length);
}
