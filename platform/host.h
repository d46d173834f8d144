// What programs that run a driver, and tests, need of the layer beyond win32.h: where the
// machine's drives lie, who the user is, what was shown, and the spooler's administration.
// Everything here is process-wide. Texts are UTF-8 unless their type says otherwise.
#ifndef KV_PLATFORM_HOST_H
#define KV_PLATFORM_HOST_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/win32.h"

#define KV_API __attribute__((visibility("default")))

namespace kvp
{

// ---- configuration (kernel) -----------------------------------------------------------------

// Of the machine that the layer plays. Every field has a value after FromEnvironment.
struct Machine {
    // Host directory that holds the drives: ROOT/c is C:\. Empty: there are only files in memory.
    std::string strRoot;
    LANGID wLang = 0x0409;     // user language
    UINT uAnsiCodePage = 1252; // 932, 1250, 1252, ...
    int nMeasure = 0;          // 0 metric, 1 inch
    DWORD dwMajor = 3;         // system version
    DWORD dwMinor = 51;
    std::vector<std::string> aSearchPath; // further directories, as DOS paths
    std::string strTranscript;            // host file that receives the transcript; empty: none
};

// Reads KV_ROOT, KV_LANG, KV_ACP, KV_MEASURE, KV_OSVERSION, KV_PATH and KV_TRANSCRIPT with their
// defaults. Throws std::invalid_argument that names the variable and what it may hold.
KV_API Machine FromEnvironment();
// "de_DE" or "0x0407" to a language identifier; nothing when it is neither.
KV_API std::optional<LANGID> ParseLanguage(std::string_view text);
// "3.51" to {3, 51}; nothing when it is no version.
KV_API std::optional<std::pair<DWORD, DWORD>> ParseVersion(std::string_view text);
// Makes the layer play this machine from now on. Open files, loaded libraries and printer handles
// of the old one stay usable; the spooler's store is opened anew on next use.
KV_API void Configure(const Machine &machine);
KV_API const Machine &CurrentMachine();

// The host path of a DOS path on the machine, whether or not the file exists; empty when the path
// leads out of the drives, or there are none on disk.
KV_API std::string HostPath(std::string_view dosPath);

// ---- files in memory (kernel) ---------------------------------------------------------------

// A file that exists only in memory and hides one of the same name on disk. It is found, opened,
// read and (through OpenFile for writing) replaced as one on disk. An absent one: the name does
// not exist, whatever the disk holds.
KV_API void PutMemoryFile(std::string_view dosPath, std::span<const uint8_t> bytes);
KV_API void PutAbsentFile(std::string_view dosPath);
KV_API std::optional<std::vector<uint8_t>> MemoryFile(std::string_view dosPath);
KV_API void ClearMemoryFiles();

// ---- ordered failures and hostile memory (kernel) -------------------------------------------

enum class Call { OpenFile, Read, Write, Close, Alloc, Store, LoadLibrary, SystemVersion, Count };
// The n-th call of this kind from now on fails once (0 is the next one); -1 cancels.
KV_API void FailCall(Call call, int n);
// Calls of this kind since the last FailCall for it, so that a test knows when n was too large.
KV_API int CallsSeen(Call call);
// From now on fresh memory that is not asked to be zero holds 0xAB, and so does the unused rest
// of a buffer that a call fills.
KV_API void SetHostile(bool hostile);

// Blocks that GlobalAlloc and LocalAlloc have given out and nobody has freed, open file handles
// and loaded libraries: all 0 when nothing leaks.
struct Held {
    size_t nBlocks, nFiles, nLibraries;
};
KV_API Held CurrentlyHeld();

// An allocation below 4 GiB, for arrays that a 32-bit pointer names; null when there is none.
KV_API void *AllocLow(size_t bytes);
KV_API void FreeLow(void *block, size_t bytes);

// ---- libraries (kernel) ---------------------------------------------------------------------

// As LoadLibraryA, for a shared object named by its host path. When it gives null, why (in words)
// is in *reason if asked for: no such file, not a library, its DllInitialize refused.
KV_API HMODULE LoadHostLibrary(const std::string &hostPath, std::string *reason = nullptr);
// An exported function, or null.
KV_API FARPROC FindProc(HMODULE module, const char *name);

// ---- code pages -----------------------------------------------------------------------------

KV_API std::u16string ToWide(std::string_view utf8);
KV_API std::string ToUtf8(std::u16string_view wide);
KV_API std::string AnsiToUtf8(std::string_view ansi);

// ---- message boxes and the transcript (user) ------------------------------------------------

struct Box {
    std::string strText, strCaption; // UTF-8
    UINT uType;                      // MB_ values as passed
    bool bOwned;
};
// Answers every message box from now on, in place of the headless answer (the safest button:
// Cancel when there is one, else OK). Null: headless again, which also writes each box to
// standard error.
KV_API void SetBoxHandler(std::function<int(const Box &)> handler);
// One JSON object in a line of the transcript; nothing when there is no transcript.
KV_API void WriteTranscript(const std::string &jsonObject);

// ---- the screen and who sits before it (user, display) --------------------------------------

struct Screen {
    std::string strDisplay; // "sdl" or "headless"; empty: sdl where there is a display
    int nScale = 1;         // pixels per pixel, 1 to 4
    std::string strScript;  // host file with the actions of the person; empty: none
    std::string strShots;   // host folder for pictures; empty: the current one
};
// Reads KV_DISPLAY, KV_SCALE, KV_SCRIPT and KV_SHOTS. Throws std::invalid_argument that names the
// variable and what it may hold.
KV_API Screen ScreenFromEnvironment();
// Opens the display and the script. Throws std::runtime_error that says what is wrong and what to
// do: no such script, no display where one was asked for.
KV_API void ConfigureScreen(const Screen &screen);

// Plays the person from now on, in place of a script: called whenever the queue is empty and
// everything is painted, gives the next action as a script would, or nothing when none is left.
// An empty line does nothing. Null: nobody is there. Forgets what an earlier one failed at.
KV_API void SetInputSource(std::function<std::optional<std::string>()> source);
// How the play has gone so far. Failed: an action could not be carried out, or a modal window was
// up when no action was left.
struct Play {
    bool bFailed;
    int nLine; // of the action that failed, or the last one
    std::string strWhy;
};
KV_API Play CurrentPlay();
// The program ends: a play that has actions left has failed.
KV_API Play EndPlay();

// The window that the person works with: a dialog, the page shown, a message box or the help
// window. Null when there is none.
KV_API HWND TopWindow();
// The same as JSON, as the action "dump" writes it: painted up to date.
KV_API std::string DescribeTopWindow();
// The colour on the screen, painted up to date.
KV_API COLORREF ScreenPixel(int x, int y);
KV_API bool SaveScreen(const std::string &hostPath); // as a PNG file

// Drawing objects that are not stock, and device contexts that are out. Both 0 when nothing leaks.
struct GuiHeld {
    size_t nObjects, nContexts;
};
KV_API GuiHeld CurrentlyHeldGui();
// Windows painted since the start, each page, control and frame's inside by itself.
KV_API size_t PaintsSoFar();

// ---- the spooler's administration -----------------------------------------------------------

// Thrown by the functions below: what was wrong and what to do, one line.
struct SpoolError : std::runtime_error {
    using std::runtime_error::runtime_error;
};
struct Queue {
    std::string strName, strDriver, strServer;
    bool bHasDefault;
};
KV_API void AddQueue(const std::string &name, const std::string &driver,
                     const std::string &server = {});
KV_API void RemoveQueue(const std::string &name);
KV_API std::vector<Queue> Queues(); // by name
// The record that the spooler keeps for the queue; an empty vector stands for none.
KV_API std::vector<uint8_t> QueueDefault(const std::string &name);
KV_API void SetQueueDefault(const std::string &name, std::span<const uint8_t> record);

} // namespace kvp

// A printer handle, for hosts. Released with ClosePrinter.
KV_IMPORT BOOL WINAPI OpenPrinterA(LPSTR pPrinterName, HANDLE *phPrinter, LPVOID pDefault);
KV_IMPORT BOOL WINAPI OpenPrinterW(LPWSTR pPrinterName, HANDLE *phPrinter, LPVOID pDefault);
KV_IMPORT BOOL WINAPI ClosePrinter(HANDLE hPrinter);

#endif
