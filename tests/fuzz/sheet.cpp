// What a person does on the sheet of the large sample, of an input's bytes: each decides on one
// thing. The sheet is then left, by OK or by Cancel as the first byte says.
#include <memory>

#include "base/module.h"
#include "interface/entry.h"
#include "tests/fuzz/windows.h"
#include "tests/support/driver.h"
#include "tests/support/wanderer.h"

namespace
{
constexpr size_t MOST_ACTIONS = 100;

struct Studio {
    Studio()
    {
        std::filesystem::copy(KV_SAMPLE_ROOT, root.path, std::filesystem::copy_options::recursive);
        kvp::Machine machine;
        machine.strRoot = root.path;
        kvp::Configure(machine);
        kvp::SetHostile(true);
        kvp::ConfigureScreen(
            {.strDisplay = "headless", .nScale = 1, .strScript = "", .strShots = ""});
        HMODULE hResources = kvp::LoadHostLibrary(KV_DRIVER_RESOURCES);
        Must(hResources && DllInitialize(hResources, DLL_PROCESS_ATTACH, nullptr));
        queue = std::make_unique<OpenQueue>("Studio", "KORVA KJ-820 Pro");
    }
    // What an earlier input saved would change what this one finds.
    void Forget() const
    {
        std::filesystem::remove(kvp::HostPath(std::string(SYSTEM_DIR) + "KJ820PRO.ucf"));
    }

    TemporaryRoot root;
    std::unique_ptr<OpenQueue> queue;
};
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const Studio studio;
    studio.Forget();
    Input input(data, size);
    const bool confirms = TakeValue<uint8_t>(input) % 2;
    const auto nActions = static_cast<int>(std::min(input.size(), MOST_ACTIONS));
    Wanderer wanderer([&](uint32_t n) { return TakeValue<uint8_t>(input) % n; }, nActions,
                      confirms ? "ok" : "cancel");
    kvp::SetInputSource([&] { return wanderer.Next(); });
    DriverDevMode out{};
    const LONG result = DrvDocumentProperties(nullptr, studio.queue->hPrinter, nullptr, &out,
                                              nullptr, DM_PROMPT | DM_COPY);
    kvp::SetInputSource(nullptr);
    Must(!kvp::CurrentPlay().bFailed && result == (confirms ? IDOK : IDCANCEL));
    Must(out.dm.dmCopies >= 1 && out.dm.dmCopies <= 99);
    Must(kvp::CurrentlyHeld().nBlocks == 0 && kvp::CurrentlyHeld().nFiles == 0);
    return 0;
}
