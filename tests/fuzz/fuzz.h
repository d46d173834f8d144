// What every fuzz target starts from: a machine whose files are in memory, with every message box
// answered, and one small model, "KORVA One".
#ifndef KV_TESTS_FUZZ_FUZZ_H
#define KV_TESTS_FUZZ_FUZZ_H

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <span>
#include <string>

#include "kvui/kvdd.h"
#include "platform/host.h"
#include "tests/support/machine.h"
#include "tests/support/model_builder.h"

using Input = std::span<const uint8_t>;

constexpr char MODEL[] = "KORVA One";
constexpr char16_t WIDE_MODEL[] = u"KORVA One";

// Takes bytes off an input's front, at most as many as there are.
inline Input Take(Input &input, size_t cb)
{
    const Input front = input.first(std::min(cb, input.size()));
    input = input.subspan(front.size());
    return front;
}

// A plain value off the front; zeros behind the input's end.
template <class Value>
Value TakeValue(Input &input)
{
    Value value{};
    const Input bytes = Take(input, sizeof(Value));
    if (!bytes.empty())
        std::memcpy(&value, bytes.data(), bytes.size());
    return value;
}

// What must hold, whatever the input was.
inline void Must(bool holds)
{
    if (!holds)
        std::abort();
}

// A root directory for as long as this lives, where writing waits for no disk if there is such a
// place.
class TemporaryRoot
{
  public:
    TemporaryRoot()
    {
        namespace fs = std::filesystem;
        const bool inMemory = fs::is_directory("/dev/shm");
        path = ((inMemory ? fs::path("/dev/shm") : fs::temp_directory_path()) / "kvfuzz.XXXXXX")
                   .string();
        Must(mkdtemp(path.data()) != nullptr);
    }
    ~TemporaryRoot() { std::filesystem::remove_all(path); }
    TemporaryRoot(const TemporaryRoot &) = delete;
    TemporaryRoot &operator=(const TemporaryRoot &) = delete;

    std::string path;
};

// No drives on disk but for what the spooler's store needs, if a root is given.
inline kvp::Machine StartMachine(const std::string &root = {})
{
    kvp::Machine machine;
    machine.strRoot = root;
    kvp::Configure(machine);
    kvp::SetHostile(true);
    kvp::SetBoxHandler([](const kvp::Box &) { return 1; });
    InstallModelTable({{9, {MakeModelRecord(MODEL, "KV1")}}});
    return machine;
}

// The model with something in every table, a saved paper and a user's file.
inline Model SmallModel()
{
    Model model;
    model.AddUserPaper("Card", 1000, 1500, 1, 3);
    model.AddUserPaper("Inches", 850, 1100, 2, 2);
    return model;
}

inline DriverDevMode EmptyRecord()
{
    DriverDevMode record{};
    std::memcpy(record.wszModelName, WIDE_MODEL, sizeof(WIDE_MODEL));
    return record;
}

#endif
