// Writes what the fuzz targets start from, made of the sample models and of models made in code.
//
//   kv_fuzz_seeds SAMPLE-SOURCES SAMPLE-ROOT DRIVER-RESOURCES OUTPUT
#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/resource/pe.h"
#include "tests/fuzz/windows.h"
#include "tests/support/large_model.h"

namespace fs = std::filesystem;

namespace
{

fs::path g_output;

void Write(const std::string &target, const std::string &name, const Bytes &bytes)
{
    fs::create_directories(g_output / target);
    std::ofstream(g_output / target / name, std::ios::binary)
        .write(reinterpret_cast<const char *>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

Bytes ReadFile(const fs::path &path)
{
    std::ifstream file(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(file), {});
}

Bytes Joined(std::initializer_list<Bytes> parts)
{
    Bytes all;
    for (const Bytes &part : parts)
        std::copy(part.begin(), part.end(), std::back_inserter(all));
    return all;
}

template <class Value>
Bytes BytesOf(const Value &value)
{
    const auto *from = reinterpret_cast<const uint8_t *>(&value);
    return Bytes(from, from + sizeof(value));
}

Bytes LengthOf(const Bytes &bytes)
{
    return BytesOf(static_cast<uint16_t>(bytes.size()));
}

void WriteModel(const std::string &name, const Bytes &dat, const Bytes &cfg, const Bytes &ucf)
{
    Write("files", name, Joined({LengthOf(dat), LengthOf(cfg), dat, cfg, ucf}));
    Write("toml", name + "-bytes", Joined({{2}, LengthOf(dat), dat, cfg}));
}

void WriteTable(const std::string &name, const Bytes &table)
{
    Write("modeltable", name, table);
    Write("toml", name + "-bytes", Joined({{3}, table}));
}

void WriteRecords(const DriverDevMode &record)
{
    for (uint8_t i = 0; i < 2; ++i)
        Write("record", "template-" + std::to_string(i), Joined({{i}, BytesOf(record)}));
    Write("record", "public-only", Joined({{0}, BytesOf(record.dm)}));
    const int16_t values[][4] = {{1, 0, 0, 0}, {1000, 1500, 256, 0}, {4, 0, 0, 0}, {1, 2, 20, 1}};
    for (uint8_t item = 0; item < 10; ++item)
        for (uint8_t place = 0; place < 8; ++place) {
            const Bytes head = {item, place};
            Bytes words = BytesOf(values[place % 4]);
            words.resize(14);
            Write("block", std::to_string(item) + "-" + std::to_string(place),
                  Joined({head, words}));
        }
}

constexpr size_t MOST_PICTURE = 8192; // bytes; larger ones teach a fuzzer nothing

// Dialogs and pictures of a library, in English or of no language.
void WriteResources(const std::string &name, const Bytes &file)
{
    kvp::PeFile pe;
    if (!kvp::OpenPe(file, pe))
        return;
    const auto find = [&](uint16_t type, uint16_t id) {
        const auto found = kvp::FindInPe(pe, type, id, 0x0409);
        return Bytes(found.begin(), found.end());
    };
    for (uint16_t id = 1; id < 0x8000; ++id) {
        const std::string numbered = name + "-" + std::to_string(id);
        if (const Bytes dialog = find(TYPE_DIALOG, id); !dialog.empty())
            Write("dialog", numbered, dialog);
        const Bytes bitmap = find(TYPE_BITMAP, id), group = find(TYPE_ICONS, id);
        if (!bitmap.empty() && bitmap.size() <= MOST_PICTURE)
            Write("picture", numbered, Joined({{0}, bitmap}));
        if (group.size() < 20)
            continue;
        Bytes renumbered = group; // the target has only one icon
        renumbered[18] = ONE, renumbered[19] = 0;
        const auto icon = static_cast<uint16_t>(group[18] | group[19] << 8);
        Write("picture", "icon-" + numbered,
              Joined({{1}, LengthOf(group), renumbered, find(TYPE_ICON, icon)}));
    }
}

void WriteLibrary(const fs::path &path)
{
    Write("resource", path.filename().string(), ReadFile(path));
    WriteResources(path.stem().string(), ReadFile(path));
}

// Things to do on the sheet, and calls: any numbers are.
void WriteActions()
{
    for (uint8_t i = 0; i < 24; ++i) {
        Bytes actions = {i};
        for (unsigned j = 1; j <= 60; ++j)
            actions.push_back(static_cast<uint8_t>((i * 37u + 11u) * j * j + j * 5u));
        Write("sheet", std::to_string(i), actions);
        Write("calls", std::to_string(i), actions);
    }
}

void WriteSamples(const fs::path &sources, const fs::path &root)
{
    for (const auto &entry : fs::recursive_directory_iterator(sources))
        if (entry.path().extension() == ".toml") {
            const bool table = entry.path().stem() == "models";
            Write("toml", entry.path().filename().string(),
                  Joined({{static_cast<uint8_t>(table)}, ReadFile(entry.path())}));
        }
    for (const auto &entry : fs::recursive_directory_iterator(root)) {
        const fs::path &path = entry.path();
        fs::path cfg = path;
        cfg.replace_extension(".cfg");
        if (path.filename() == "kv_model.dat")
            WriteTable("samples", ReadFile(path));
        else if (path.extension() == ".dat")
            WriteModel(path.stem().string(), ReadFile(path), ReadFile(cfg), {});
        else if (path.extension() == ".DLL")
            WriteLibrary(path);
        else if (path.extension() == ".HLP")
            Write("help", path.filename().string(), ReadFile(path));
    }
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 5)
        return 2;
    g_output = argv[4];
    WriteSamples(argv[1], argv[2]);
    WriteResources("driver", ReadFile(argv[3]));
    Write("dialog", "plain", PlainDialog());
    const Model small = SmallModel(), large = LargeModel();
    WriteModel("small", small.Dat(), small.Cfg(), small.Ucf());
    WriteModel("large", large.Dat(), large.Cfg(), large.Ucf());
    WriteModel("no-user-file", small.Dat(), small.Cfg(), {});
    WriteTable("two-languages",
               ModelTableBytes({{9, {MakeModelRecord(MODEL, "KV1"), MakeModelRecord("B", "KV2")}},
                                {17, {MakeModelRecord(MODEL, "KV1J")}}}));
    WriteRecords(small.tmpl);
    WriteActions();
    return 0;
}
