// Finding and loading the driver, and the calls that more than one command makes.
#include "host/driver.h"

#include <array>
#include <filesystem>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "host/failure.h"

namespace
{
namespace fs = std::filesystem;

// Where the driver lies, seen from this program: beside it, installed, in the build tree.
constexpr std::array aDriverPlaces = {"libkvui.so", KVHOST_INSTALLED_DRIVER, KVHOST_BUILT_DRIVER};

std::string FindDriver()
{
    const fs::path here = fs::read_symlink("/proc/self/exe").parent_path();
    std::error_code error;
    for (const char *lpszPlace : aDriverPlaces)
        if (const fs::path driver = (here / lpszPlace).lexically_normal();
            fs::exists(driver, error))
            return driver.string();
    throw Failure(EXIT_REFUSED,
                  fmt::format("libkvui.so, the driver, is neither beside this program in {} nor "
                              "installed: install it, or put it there",
                              here.string()));
}

HMODULE LoadDriver()
{
    const std::string strPath = FindDriver();
    std::string strReason;
    HMODULE hLibrary = kvp::LoadHostLibrary(strPath, &strReason);
    if (!hLibrary)
        throw Failure(EXIT_REFUSED, fmt::format("the driver cannot be loaded: {}; check --os "
                                                "and the model table under --root",
                                                strReason));
    return hLibrary;
}

template <class Function>
void Find(HMODULE library, const char *name, Function *&function)
{
    function = reinterpret_cast<Function *>(kvp::FindProc(library, name));
    if (function)
        return;
    FreeLibrary(library);
    throw Failure(EXIT_REFUSED, fmt::format("the driver has no {}: install the one that came with "
                                            "this program",
                                            name));
}
} // namespace

Driver::Driver() : hLibrary(LoadDriver())
{
    Find(hLibrary, "DrvDocumentProperties", DrvDocumentProperties);
    Find(hLibrary, "DrvAdvancedDocumentProperties", DrvAdvancedDocumentProperties);
    Find(hLibrary, "PrinterProperties", PrinterProperties);
    Find(hLibrary, "DrvDeviceCapabilities", DrvDeviceCapabilities);
    Find(hLibrary, "KVDD_GetCmdLevel", KVDD_GetCmdLevel);
    Find(hLibrary, "KVDD_GetRange", KVDD_GetRange);
    Find(hLibrary, "KVDD_GetData", KVDD_GetData);
    Find(hLibrary, "KVDD_SetData", KVDD_SetData);
}

OpenedPrinter::OpenedPrinter(const std::string &name) : strName(name), strWide(kvp::ToWide(name))
{
    kvp::QueueDefault(name); // throws, in words, what an error number would only hint at
    if (!OpenPrinterW(strWide.data(), &hPrinter, nullptr))
        throw Failure(EXIT_REFUSED, fmt::format("the printer \"{}\" cannot be opened (error {}): "
                                                "try again",
                                                name, GetLastError()));
}

DriverDevMode DocumentSettings(const Driver &driver, OpenedPrinter &printer,
                               std::optional<DriverDevMode> in)
{
    DriverDevMode out{};
    const LONG nResult =
        driver.DrvDocumentProperties(nullptr, printer.hPrinter, printer.strWide.data(), &out,
                                     in ? &*in : nullptr, DM_COPY | (in ? DM_MODIFY : 0));
    NoteResult("DrvDocumentProperties", nResult);
    if (nResult <= 0)
        throw Failure(EXIT_REFUSED, fmt::format("the driver gave {} for the settings of \"{}\": "
                                                "check that the files of its model are installed",
                                                nResult, printer.strName));
    return out;
}

void NoteResult(const char *call, long result)
{
    const nlohmann::ordered_json event = {{"event", "result"}, {"call", call}, {"result", result}};
    kvp::WriteTranscript(event.dump());
}
