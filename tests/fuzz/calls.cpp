// Calls one after the other on one record of the small model, as an input's bytes say: a companion
// program's, an application's, a save of the user's file. A byte chooses the call, the next ones
// are its arguments.
#include <filesystem>
#include <memory>
#include <vector>

#include "datafile/loader.h"
#include "datafile/reader.h"
#include "datafile/writer.h"
#include "interface/entry.h"
#include "tests/fuzz/fuzz.h"
#include "tests/support/driver.h"

namespace
{

constexpr size_t MOST_CALLS = 60;
constexpr uint32_t ITEMS[] = {10, 20, 30, 40, 50, 60, 70, 80, 110};

// The small model, its user's file on disk below a temporary root, and a queue of it.
struct Printer {
    Printer()
    {
        StartMachine(root.path);
        kvp::PutMemoryFile(std::string(WINDOWS_DIR) + "KV1.dat", model.Dat());
        kvp::PutMemoryFile(std::string(WINDOWS_DIR) + "KV1.cfg", model.Cfg());
        std::filesystem::create_directories(kvp::HostPath(SYSTEM_DIR));
        Must(DllInitialize(nullptr, DLL_PROCESS_ATTACH, nullptr));
        queue = std::make_unique<OpenQueue>("Fuzz", MODEL);
    }
    // What an earlier input saved or stored would change what this one finds.
    void Forget() const
    {
        std::filesystem::remove(kvp::HostPath(std::string(SYSTEM_DIR) + "KV1.ucf"));
        kvp::SetQueueDefault("Fuzz", {});
    }

    Model model = SmallModel();
    TemporaryRoot root;
    std::unique_ptr<OpenQueue> queue;
};

// What the calls work on: a companion program's block with the record behind it.
struct Desk {
    KVDDBLOCK block{};
    DriverDevMode record = EmptyRecord();
    HANDLE hPrinter = nullptr;
    DWORD mostEntries = 0; // papers and slots, or sources
};

void SetItem(Desk &desk, Input &input)
{
    const uint32_t item = ITEMS[TakeValue<uint8_t>(input) % std::size(ITEMS)];
    int16_t words[4];
    for (int16_t &word : words)
        word = TakeValue<int16_t>(input);
    const DriverDevMode before = desk.record;
    const bool pointer = item == KVDD_PAPER || item == KVDD_PRINTMODE;
    if (KVDD_SetData(&desk.block, item, pointer ? reinterpret_cast<intptr_t>(words) : words[0]))
        Must(std::memcmp(&desk.record, &before, sizeof(before)) == 0);
}

void AskItem(Desk &desk, Input &input)
{
    const uint32_t item = ITEMS[TakeValue<uint8_t>(input) % std::size(ITEMS)];
    uint8_t answer[14] = {};
    const DriverDevMode before = desk.record;
    KVDD_GetData(&desk.block, item, answer);
    std::memset(answer, 0, sizeof(answer)); // no array for what a range lists
    KVDD_GetRange(&desk.block, item, answer);
    Must(std::memcmp(&desk.record, &before, sizeof(before)) == 0);
}

// Changes a few bytes of the record. Its sizes stay: a record is as long as it says.
void Scribble(Desk &desk, Input &input)
{
    const DriverDevMode before = desk.record;
    auto *bytes = reinterpret_cast<uint8_t *>(&desk.record);
    const size_t at = TakeValue<uint16_t>(input) % sizeof(desk.record);
    const Input damage = Take(input, std::min<size_t>(4, sizeof(desk.record) - at));
    std::copy(damage.begin(), damage.end(), bytes + at);
    desk.record.dm.dmSize = before.dm.dmSize;
    desk.record.dm.dmDriverExtra = before.dm.dmDriverExtra;
}

void AskCapability(Desk &desk, Input &input)
{
    constexpr WORD LISTS[] = {DC_PAPERS, DC_PAPERSIZE, DC_BINS, DC_BINNAMES, DC_PAPERNAMES};
    constexpr size_t LONGEST_ENTRY = 128; // bytes
    DriverDevMode given = desk.record;
    const WORD wQuery = LISTS[TakeValue<uint8_t>(input) % std::size(LISTS)];
    const auto count = DrvDeviceCapabilities(desk.hPrinter, nullptr, wQuery, nullptr, &given);
    Must(count <= desk.mostEntries);
    std::vector<uint8_t> list(count * LONGEST_ENTRY);
    const auto listed =
        count ? DrvDeviceCapabilities(desk.hPrinter, nullptr, wQuery, list.data(), &given) : 0;
    const bool names = wQuery == DC_BINNAMES || wQuery == DC_PAPERNAMES;
    Must(listed == (names ? 0 : count)); // there is no library to name anything
}

void Merge(Desk &desk, Input &)
{
    DriverDevMode given = desk.record, merged{};
    Must(DrvDocumentProperties(nullptr, desk.hPrinter, nullptr, &merged, &given,
                               DM_COPY | DM_MODIFY) == 1);
    Must(merged.dm.dmSize == KV_PUBLICSIZE && merged.dm.dmDriverExtra == KV_PRIVATESIZE);
    Must(merged.dm.dmCopies >= 1 && merged.dm.dmCopies <= 99);
    desk.record = merged;
}

// As the spooler keeps a queue's default.
void Store(Desk &desk, Input &)
{
    const auto *bytes = reinterpret_cast<const uint8_t *>(&desk.record);
    kvp::SetQueueDefault("Fuzz", {bytes, sizeof(desk.record)});
}

// Puts bytes into a slot of settings or of papers, saves, and reads what was saved.
void Save(Desk &, Input &input)
{
    const DriverDevMode record = EmptyRecord();
    Must(Get_DATFile(&record));
    DatFile &dat = UIInstance.dat;
    const uint8_t slot = TakeValue<uint8_t>(input);
    auto &settings = dat.lpSettings[FixedSettings(dat.CfgHeader) + slot % dat.CfgHeader.wUserSlots];
    auto &paper = dat.lpUserPapers[slot % dat.CfgHeader.wUserPaperSlots];
    if (slot & 0x80)
        settings = TakeValue<SettingsRecord>(input);
    else
        paper = TakeValue<UserPaperRecord>(input);
    const std::vector<UserPaperRecord> saved = dat.lpUserPapers;
    Must(WriteUcfFile(&record, &UIInstance) == 0);
    Free_DATFile(&record);
    Must(Get_DATFile(&record));
    Must(std::memcmp(saved.data(), dat.lpUserPapers.data(),
                     saved.size() * sizeof(UserPaperRecord)) == 0);
    Free_DATFile(&record);
}

constexpr void (*CALLS[])(Desk &, Input &) = {SetItem,       AskItem, Scribble, Merge,
                                              AskCapability, Store,   Save};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const Printer printer;
    printer.Forget();
    Desk desk;
    desk.hPrinter = printer.queue->hPrinter;
    desk.mostEntries =
        static_cast<DWORD>(printer.model.papers.size()) + printer.model.wUserPaperSlots;
    desk.block.sDistance = offsetof(Desk, record);
    Must(KVDD_GetOrgDevMode(nullptr, &desk.record) == 1);
    Input input(data, size);
    for (size_t i = 0; i < MOST_CALLS && !input.empty(); ++i) {
        CALLS[TakeValue<uint8_t>(input) % std::size(CALLS)](desk, input);
        Must(kvp::CurrentlyHeld().nBlocks == 0 && kvp::CurrentlyHeld().nFiles == 0);
    }
    return 0;
}
