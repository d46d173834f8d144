// Writes what the fuzz targets start from, made of the sample models and of models made in code.
//
//   kv_fuzz_seeds SAMPLE-SOURCES SAMPLE-ROOT OUTPUT
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/fuzz/fuzz.h"
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

void WriteSamples(const fs::path &sources, const fs::path &root)
{
    for (const auto &entry : fs::recursive_directory_iterator(sources))
        if (entry.path().extension() == ".toml") {
            const bool table = entry.path().stem() == "models";
            Write("toml", entry.path().filename().string(),
                  Joined({{static_cast<uint8_t>(table)}, ReadFile(entry.path())}));
        }
    for (const auto &entry : fs::recursive_directory_iterator(root)) {
        const fs::path path = entry.path();
        fs::path cfg = path;
        cfg.replace_extension(".cfg");
        if (path.filename() == "kv_model.dat")
            WriteTable("samples", ReadFile(path));
        else if (path.extension() == ".dat")
            WriteModel(path.stem().string(), ReadFile(path), ReadFile(cfg), {});
        else if (path.extension() == ".DLL")
            Write("resource", path.filename().string(), ReadFile(path));
    }
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 4)
        return 2;
    g_output = argv[3];
    WriteSamples(argv[1], argv[2]);
    const Model small = SmallModel(), large = LargeModel();
    WriteModel("small", small.Dat(), small.Cfg(), small.Ucf());
    WriteModel("large", large.Dat(), large.Cfg(), large.Ucf());
    WriteModel("no-user-file", small.Dat(), small.Cfg(), {});
    WriteTable("two-languages",
               ModelTableBytes({{9, {MakeModelRecord(MODEL, "KV1"), MakeModelRecord("B", "KV2")}},
                                {17, {MakeModelRecord(MODEL, "KV1J")}}}));
    WriteRecords(small.tmpl);
    return 0;
}
