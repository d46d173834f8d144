// A model's three files from one input: two 16-bit lengths, then .dat, .cfg and .ucf. Everything
// that reads them is called.
#include <vector>

#include "datafile/loader.h"
#include "datafile/mw.h"
#include "datafile/queries.h"
#include "datafile/records.h"
#include "settings/defaults.h"
#include "settings/merge.h"
#include "tests/fuzz/fuzz.h"

static constexpr size_t MOST_SOURCES = 4;

static void PutFiles(Input input)
{
    const size_t cbDat = TakeValue<uint16_t>(input);
    const size_t cbCfg = TakeValue<uint16_t>(input);
    kvp::PutMemoryFile(std::string(WINDOWS_DIR) + "KV1.dat", Take(input, cbDat));
    kvp::PutMemoryFile(std::string(WINDOWS_DIR) + "KV1.cfg", Take(input, cbCfg));
    const std::string ucf = std::string(SYSTEM_DIR) + "KV1.ucf";
    if (input.empty())
        kvp::PutAbsentFile(ucf);
    else
        kvp::PutMemoryFile(ucf, input);
}

template <class Entry>
static void List(DWORD (*query)(const DriverDevMode *, Entry *), const DriverDevMode &record)
{
    std::vector<Entry> entries(query(&record, nullptr));
    Must(query(&record, entries.data()) == entries.size());
}

static void AskAll(const DriverDevMode &record)
{
    PaperSize size;
    PaperMargin margin;
    List<WORD>(Get_PaperIndexs, record);
    List<WORD>(Get_BinIndexs, record);
    List<PaperSize>(Get_PaperSize, record);
    Must(Get_CurPaperSize(&record, record.dm.dmPaperSize, &size));
    Must(Get_CurPaperMargin(&record, &margin));
    Get_MaxPrintable(&record, &size);
    Get_MinPrintable(&record, &size);
    Get_PaperNames(&record, nullptr, nullptr);
}

static void MakeRecords(const DriverDevMode &record)
{
    for (const WORD selector : {RESOURCE_MMPS, RESOURCE_PRINTER})
        GlobalFree(KVGetResource(RESOURCE_PRINTER, selector, &record));
    HGLOBAL hRecord = nullptr;
    int id = 0;
    KVGetPrinterNameToRes(MODEL, &hRecord, &id, &record);
    DriverDevMode defaults = EmptyRecord();
    KVGetDefDevmode(&defaults, hRecord, nullptr);
    Must(defaults.dwPairCount <= KV_MAXPAIRS);
    GlobalFree(hRecord);
}

// The defaults merged into themselves from one source after the other, with papers that there may
// be.
static void MergeAll(DriverDevMode record)
{
    std::vector<WORD> sources(Get_BinIndexs(&record, nullptr));
    Get_BinIndexs(&record, sources.data());
    DriverDevMode foreign = record;
    foreign.dm.dmFields = 0xFFFFFFFF;
    for (size_t i = 0; i < sources.size() && i < MOST_SOURCES; ++i) {
        foreign.dm.dmDefaultSource = static_cast<int16_t>(sources[i]);
        foreign.dm.dmPaperSize = static_cast<int16_t>(i % 2 ? KV_PAPER_USER : 768 + i);
        Must(KVMergeDevMode(&record, &foreign, nullptr, nullptr));
        GetMWData(&record);
    }
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const bool started = (StartMachine(), LoadDataFile() > 0);
    Must(started);
    PutFiles({data, size});
    DriverDevMode record = EmptyRecord();
    InitPrinterDevMode(&record, nullptr, nullptr);
    if (Get_DATFile(&record))
        Must(UIInstance.dat.lpPapers.size() >= UIInstance.dat.nPapers);
    Free_DATFile(&record);
    AskAll(record);
    MakeRecords(record);
    MergeAll(record);
    GetMWData(&record);
    Must(kvp::CurrentlyHeld().nBlocks == 0 && kvp::CurrentlyHeld().nFiles == 0);
    return 0;
}
