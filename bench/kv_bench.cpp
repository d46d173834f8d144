// What the driver costs, in one table. Work with files is given in multiples of the floor: opening,
// reading whole and closing the model's three files with plain system calls, measured in the same
// run, so that the limits mean the same on every machine. Painting is given in multiples of a plain
// fill of the page, switching pages in repaints.
//
//   kv_bench [--check] [--queries] [options of the benchmark library]
//
// With --check the exit status is 1 when a limit is broken. With --queries a million capability
// queries are made as well, to see what they leave.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <limits>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include "bench/holdings.h"
#include "bench/sheet.h"
#include "datafile/loader.h"
#include "tests/support/alloc_count.h"
#include "tests/support/driver.h"
#include "tests/support/large_model.h"
#include "tests/support/peak_memory.h"
#include "tests/support/syscall_count.h"

namespace
{

constexpr const char *MODEL = "KORVA KJ-820 Pro";
constexpr const char *BASE = "KJ820PRO";

Bytes BytesOnDisk(const std::string &dosPath)
{
    std::ifstream file(kvp::HostPath(dosPath), std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(file), {});
}

// A user's file with every slot free, as large as the model's .cfg says.
Bytes FreeUserFile()
{
    const Bytes cfg = BytesOnDisk(std::string(WINDOWS_DIR) + BASE + ".cfg");
    CfgHeader header{};
    if (cfg.size() < sizeof(header))
        std::abort();
    std::memcpy(&header, cfg.data(), sizeof(header));
    Model slots;
    slots.wUserSlots = header.wUserSlots;
    slots.wUserPaperSlots = header.wUserPaperSlots;
    return slots.Ucf();
}

// A machine on disk with the sample models installed and the larger one in use, removed at the
// end.
struct BenchMachine {
    BenchMachine()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "kvbench.XXXXXX").string();
        if (!mkdtemp(pattern.data()))
            std::abort();
        machine.strRoot = pattern;
        kvp::Configure(machine);
        std::filesystem::copy(KV_SAMPLE_ROOT, pattern, std::filesystem::copy_options::recursive);
        PutOnDisk(std::string(SYSTEM_DIR) + BASE + ".ucf", FreeUserFile());
    }
    ~BenchMachine()
    {
        std::error_code ignored;
        std::filesystem::remove_all(machine.strRoot, ignored);
    }
    BenchMachine(const BenchMachine &) = delete;
    BenchMachine &operator=(const BenchMachine &) = delete;

    kvp::Machine machine;
};

#pragma pack(push, 1)
struct Caller {
    KVDDBLOCK block;
    DriverDevMode record;
};
#pragma pack(pop)

constexpr const char *FLOOR = "floor";
constexpr const char *QUEUE = "Bench";
constexpr int OPENINGS = 1000, QUERIES = 1000000;
constexpr long MOST_KILOBYTES = 32 * 1024; // of a process that shows the sheet
constexpr int CANCELLED = 3;               // its exit status

// ---- what is measured ------------------------------------------------------------------------

void ReadWhole(const std::string &path)
{
    static std::array<char, 0x10000> buffer;
    const int file = open(path.c_str(), O_RDONLY);
    if (file < 0 || read(file, buffer.data(), buffer.size()) <= 0)
        std::abort();
    close(file);
}

std::function<void()> Floor()
{
    std::array<std::string, 3> paths;
    paths[0] = kvp::HostPath(std::string(WINDOWS_DIR) + BASE + ".dat");
    paths[1] = kvp::HostPath(std::string(WINDOWS_DIR) + BASE + ".cfg");
    paths[2] = kvp::HostPath(std::string(SYSTEM_DIR) + BASE + ".ucf");
    return [paths] {
        for (const std::string &path : paths)
            ReadWhole(path);
    };
}

void AddItemRows(std::vector<Row> &rows, const LoadedDriver &driver, Caller &caller)
{
    for (const uint32_t item : {KVDD_COPIES, KVDD_ORIENTATION, KVDD_APIFLAG}) {
        rows.push_back({fmt::format("KVDD_GetData {}", item),
                        [&driver, &caller, item] {
                            int16_t word = 0;
                            benchmark::DoNotOptimize(driver.KVDD_GetData(&caller, item, &word));
                        },
                        "", 30, 0, 0});
        rows.push_back({fmt::format("KVDD_SetData {}", item),
                        [&driver, &caller, item] {
                            benchmark::DoNotOptimize(driver.KVDD_SetData(&caller, item, 1));
                        },
                        "", 120, 0, 0});
    }
}

std::vector<Row> Rows(const LoadedDriver &driver, HANDLE hPrinter, Caller &caller)
{
    std::vector<Row> rows;
    rows.push_back({FLOOR, Floor(), FLOOR, 1.0, -1, -1});
    rows.push_back({"Get_DATFile, Free_DATFile",
                    [&caller] {
                        if (!Get_DATFile(&caller.record))
                            std::abort();
                        Free_DATFile(&caller.record);
                    },
                    FLOOR, 2.0, 14, -1});
    rows.push_back({"DrvDeviceCapabilities, papers",
                    [&driver, hPrinter] {
                        std::array<WORD, 64> papers;
                        if (driver.DrvDeviceCapabilities(hPrinter, nullptr, DC_PAPERS,
                                                         papers.data(), nullptr) == 0)
                            std::abort();
                    },
                    FLOOR, 30, -1, -1});
    rows.push_back({"DrvDocumentProperties, copy",
                    [&driver, hPrinter, &caller] {
                        DriverDevMode out;
                        if (driver.DrvDocumentProperties(nullptr, hPrinter, nullptr, &out,
                                                         &caller.record, DM_COPY) != 1)
                            std::abort();
                    },
                    FLOOR, 30, -1, -1});
    AddItemRows(rows, driver, caller);
    for (Row &row : SheetRows(driver, hPrinter, FLOOR))
        rows.push_back(std::move(row));
    return rows;
}

// ---- measuring -------------------------------------------------------------------------------

// Many short runs in random order, of which the best counts: it met no other program.
constexpr int REPETITIONS = 150, SLOW_REPETITIONS = 30;
constexpr double SECONDS_EACH = 0.001;

// Keeps the best time of every row and prints nothing.
class BestTimes : public benchmark::BenchmarkReporter
{
  public:
    bool ReportContext(const Context &) override { return true; }
    void ReportRuns(const std::vector<Run> &runs) override
    {
        for (const Run &run : runs) {
            if (run.run_type != Run::RT_Iteration)
                continue;
            const auto [it, isNew] =
                best.try_emplace(run.run_name.function_name, std::numeric_limits<double>::max());
            it->second = std::min(it->second, run.GetAdjustedRealTime());
        }
    }
    std::map<std::string, double> best; // nanoseconds
};

struct Counts {
    long calls, allocations, left;
};

Counts CountsOf(const Row &row)
{
    row.act(); // what is kept from now on is kept
    const auto calls = SystemCallsOf(row.act);
    const Allocations before = AllocationsSoFar();
    row.act();
    const Allocations after = AllocationsSoFar();
    return {calls ? static_cast<long>(calls->size()) : -1, after.made - before.made,
            after.held - before.held};
}

// One line of the table; whether the row keeps its limits.
bool Report(const Row &row, double nanoseconds, double measure, const Counts &counts)
{
    const double value = nanoseconds / measure;
    const bool kept = value <= row.limit && (row.mostCalls < 0 || counts.calls <= row.mostCalls) &&
                      (row.mostAllocations < 0 || counts.allocations <= row.mostAllocations) &&
                      counts.left == 0;
    fmt::print("{:<30} {:>10.1f} {:>8.2f} {:<20} {:>6.1f} {:>6.2f} {:>6} {:>6} {:>5}  {}\n",
               row.name, nanoseconds, value, row.measure.empty() ? "ns" : row.measure, row.limit,
               value / row.limit, counts.calls, counts.allocations, counts.left,
               kept ? "" : "over its limit");
    return kept;
}

void Run(benchmark::State &state, const Row &row)
{
    for ([[maybe_unused]] auto _ : state)
        if (row.seconds)
            state.SetIterationTime(row.seconds());
        else
            row.act();
}

void Register(const Row &row)
{
    auto *registered = benchmark::RegisterBenchmark(
        row.name.c_str(), [&row](benchmark::State &state) { Run(state, row); });
    // What brings its own clock finds the best time by itself and is slow.
    if (row.seconds)
        registered->UseManualTime()->Iterations(1)->Repetitions(SLOW_REPETITIONS);
    else
        registered->Repetitions(REPETITIONS)->MinTime(SECONDS_EACH);
}

bool Measure(const std::vector<Row> &rows)
{
    for (const Row &row : rows)
        Register(row);
    BestTimes times;
    benchmark::RunSpecifiedBenchmarks(&times);
    fmt::print("{:<30} {:>10} {:>8} {:<20} {:>6} {:>6} {:>6} {:>6} {:>5}\n", "", "ns", "value",
               "times", "limit", "ratio", "calls", "allocs", "left");
    bool allKept = true;
    for (const Row &row : rows)
        if (const auto time = times.best.find(row.name); time != times.best.end())
            allKept &= Report(row, time->second, row.measure.empty() ? 1 : times.best[row.measure],
                              CountsOf(row));
    return allKept;
}

// All queries in turn, with room for the answers.
bool QueriesLeaveNothing(const LoadedDriver &driver, HANDLE hPrinter)
{
    static std::array<BYTE, 0x10000> answer;
    WORD query = 0;
    return LeavesNothing("capability queries", QUERIES, [&] {
        query = static_cast<WORD>(query % DC_COPIES + 1);
        benchmark::DoNotOptimize(
            driver.DrvDeviceCapabilities(hPrinter, nullptr, query, answer.data(), nullptr));
    });
}

// A process of its own that opens the sheet on a machine like this one, looks at every page and
// leaves.
bool ProcessStaysSmall(const std::string &root)
{
    const std::string script = root + "/pages.txt";
    std::ofstream(script) << "page \"Paper\"\npage \"Utility\"\ncancel\n";
    const auto peak = PeakOf({KV_HOST_PATH, "settings", "-p", QUEUE, "--root", root, "--display",
                              "headless", "--script", script});
    if (!peak) {
        fmt::print("kvhost settings: its memory cannot be seen here\n");
        return true;
    }
    fmt::print("kvhost settings: at most {} KB, limit {}\n", peak->kilobytes, MOST_KILOBYTES);
    return peak->nStatus == CANCELLED && peak->kilobytes <= MOST_KILOBYTES;
}

} // namespace

int main(int argc, char **argv)
{
    bool check = false, queries = false;
    std::vector<char *> arguments = {argv[0]};
    std::string interleaved = "--benchmark_enable_random_interleaving=true";
    arguments.push_back(interleaved.data());
    for (int i = 1; i < argc; ++i)
        if (std::strcmp(argv[i], "--check") == 0)
            check = true;
        else if (std::strcmp(argv[i], "--queries") == 0)
            queries = true;
        else
            arguments.push_back(argv[i]);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 2;

    const BenchMachine machine;
    LoadedDriver driver;
    if (!driver.Load() || LoadDataFile() == 0)
        return 2;
    const OpenQueue queue(QUEUE, MODEL);
    Caller caller{};
    caller.block.sDistance = sizeof(KVDDBLOCK);
    const std::u16string model = kvp::ToWide(MODEL);
    std::memcpy(caller.record.wszModelName, model.data(), 2 * model.size());
    if (!queue.hPrinter || driver.KVDD_GetOrgDevMode(nullptr, &caller.record) != 1)
        return 2;
    // The layer believes a listing of a directory once nothing has changed there for a while.
    std::this_thread::sleep_for(std::chrono::seconds(3));
    kvp::ConfigureScreen({.strDisplay = "headless", .nScale = 1, .strScript = {}, .strShots = {}});
    bool kept = Measure(Rows(driver, queue.hPrinter, caller));
    kept &= OpeningsLeaveNothing(driver, queue.hPrinter, OPENINGS);
    if (queries)
        kept &= QueriesLeaveNothing(driver, queue.hPrinter);
    kept &= ProcessStaysSmall(machine.machine.strRoot);
    FreeDataFile();
    return check && !kept ? 1 : 0;
}
