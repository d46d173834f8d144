// A record from outside, of any length, merged into a valid one: directly, through the document
// settings, and (first byte 1, 17, 33, ...: a store is slow) through the spooler's store. The
// buffer is exactly as long as the record says of itself.
#include <memory>
#include <vector>

#include "datafile/records.h"
#include "interface/entry.h"
#include "settings/defaults.h"
#include "settings/merge.h"
#include "tests/fuzz/fuzz.h"
#include "tests/support/driver.h"

namespace
{

constexpr size_t HEAD = 72; // up to dmDriverExtra

// A store below a temporary root, and a queue of the small model.
struct Printer {
    Printer()
    {
        StartMachine(root.path);
        SmallModel().Install("KV1");
        Must(DllInitialize(nullptr, DLL_PROCESS_ATTACH, nullptr));
        queue = std::make_unique<OpenQueue>("Fuzz", MODEL);
        Must(InitPrinterDevMode(&defaults, nullptr, nullptr));
    }
    TemporaryRoot root;
    std::unique_ptr<OpenQueue> queue;
    DriverDevMode defaults = EmptyRecord();
};

// As long as its head says, and at least a head.
std::vector<uint8_t> AsLongAsItSays(Input input)
{
    std::vector<uint8_t> bytes(input.begin(), input.end());
    bytes.resize(std::max(bytes.size(), HEAD));
    uint16_t sizes[2];
    std::memcpy(sizes, bytes.data() + HEAD - sizeof(sizes), sizeof(sizes));
    bytes.resize(std::max<size_t>(HEAD, size_t{sizes[0]} + sizes[1]));
    bytes.shrink_to_fit();
    return bytes;
}

void MustBeValid(const DriverDevMode &record)
{
    Must(record.dm.dmSpecVersion == KV_SPECVERSION && record.dm.dmSize == KV_PUBLICSIZE);
    Must(record.dm.dmDriverVersion == KV_DRIVERVERSION &&
         record.dm.dmDriverExtra == KV_PRIVATESIZE);
    Must(record.dm.dmCopies >= 1 && record.dm.dmCopies <= 99);
    Must(record.dm.dmOrientation == 1 || record.dm.dmOrientation == 2);
}

void ThroughTheStore(const Printer &printer, const std::vector<uint8_t> &bytes)
{
    kvp::SetQueueDefault("Fuzz", bytes);
    DriverDevMode record = EmptyRecord();
    KVGetRegDevmode(printer.queue->hPrinter, &record, nullptr);
    HGLOBAL hRecord = KVGetResource(RESOURCE_PRINTER, RESOURCE_PRINTER, &printer.defaults);
    record = EmptyRecord();
    if (KVGetRegDevmode(printer.queue->hPrinter, &record, hRecord))
        MustBeValid(record);
    GlobalFree(hRecord);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static Printer printer;
    Input input(data, size);
    const bool store = TakeValue<uint8_t>(input) % 16 == 1;
    const std::vector<uint8_t> bytes = AsLongAsItSays(input);
    if (store)
        ThroughTheStore(printer, bytes);
    const auto *foreign = reinterpret_cast<const DriverDevMode *>(bytes.data());
    DriverDevMode record = printer.defaults;
    Must(KVMergeDevMode(&record, foreign, nullptr, nullptr));
    MustBeValid(record);

    std::vector<uint8_t> given = bytes;
    DriverDevMode out{};
    if (DrvDocumentProperties(nullptr, printer.queue->hPrinter, nullptr, &out,
                              reinterpret_cast<DriverDevMode *>(given.data()),
                              DM_COPY | DM_MODIFY) == 1)
        MustBeValid(out);
    Must(given == bytes);
    Must(kvp::CurrentlyHeld().nBlocks == 0);
    return 0;
}
