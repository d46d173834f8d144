// kvmodel: model sources to binary files and back.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include <CLI/CLI.hpp>

#include "tools/kvmodel/model.h"

namespace
{

namespace fs = std::filesystem;

constexpr int EXIT_GOOD = 0, EXIT_BAD = 1, EXIT_USAGE = 2;

int Fail(const std::string &file, const std::string &text)
{
    std::cerr << kvm::Format(file, {0, "", text}) << "\n";
    return EXIT_BAD;
}

int Fail(const std::string &file, const kvm::Problems &problems)
{
    for (const kvm::Problem &problem : problems)
        std::cerr << kvm::Format(file, problem) << "\n";
    return EXIT_BAD;
}

bool ReadWhole(const std::string &file, std::string &text)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream || fs::is_directory(file))
        return false;
    text.assign(std::istreambuf_iterator<char>(stream), {});
    return !stream.bad();
}

std::span<const uint8_t> AsBytes(const std::string &text)
{
    return {reinterpret_cast<const uint8_t *>(text.data()), text.size()};
}

// Written beside the old file first, so that a full disk leaves no half of a file.
bool WriteWhole(const fs::path &file, const kvm::Bytes &bytes)
{
    const fs::path fresh = file.string() + ".new";
    std::ofstream stream(fresh, std::ios::binary | std::ios::trunc);
    stream.write(reinterpret_cast<const char *>(bytes.data()),
                 static_cast<std::streamsize>(bytes.size()));
    stream.close();
    std::error_code error;
    if (!stream.fail())
        fs::rename(fresh, file, error);
    if (!stream.fail() && !error)
        return true;
    fs::remove(fresh, error);
    return false;
}

// The base name of the two files is that of the source.
int CompileModel(const std::string &file, const std::string &folder, const std::string &base)
{
    std::string source;
    if (!ReadWhole(file, source))
        return Fail(file, "cannot be read");
    kvm::ModelFiles model;
    kvm::Lines lines;
    kvm::Problems problems;
    if (!kvm::ParseModel(source, model, lines, problems) ||
        !kvm::CheckModel(model, lines, problems))
        return Fail(file, problems);
    const fs::path stem = fs::path(folder) / (base.empty() ? fs::path(file).stem().string() : base);
    const std::string dat = stem.string() + ".dat", cfg = stem.string() + ".cfg";
    std::error_code error;
    fs::create_directories(folder, error);
    if (!WriteWhole(dat, kvm::DatBytes(model)))
        return Fail(dat, "cannot be written");
    if (!WriteWhole(cfg, kvm::CfgBytes(model)))
        return Fail(cfg, "cannot be written");
    return EXIT_GOOD;
}

int CompileTable(const std::string &file, const std::string &out)
{
    std::string source;
    if (!ReadWhole(file, source))
        return Fail(file, "cannot be read");
    kvm::ModelTable table;
    kvm::Lines lines;
    kvm::Problems problems;
    if (!kvm::ParseTable(source, table, lines, problems) ||
        !kvm::CheckTable(table, lines, problems))
        return Fail(file, problems);
    if (!WriteWhole(out, kvm::TableBytes(table)))
        return Fail(out, "cannot be written");
    return EXIT_GOOD;
}

int PrintModelFiles(const std::string &dat, const std::string &cfg)
{
    std::string datBytes, cfgBytes;
    if (!ReadWhole(dat, datBytes))
        return Fail(dat, "cannot be read");
    if (!ReadWhole(cfg, cfgBytes))
        return Fail(cfg, "cannot be read");
    kvm::ModelFiles model;
    kvm::Problems problems;
    if (!kvm::ReadModel(AsBytes(datBytes), AsBytes(cfgBytes), model, problems))
        return Fail(dat, problems);
    std::cout << kvm::PrintModel(model) << std::flush;
    return std::cout ? EXIT_GOOD : EXIT_BAD;
}

int PrintTableFile(const std::string &file)
{
    std::string bytes;
    if (!ReadWhole(file, bytes))
        return Fail(file, "cannot be read");
    kvm::ModelTable table;
    kvm::Problems problems;
    if (!kvm::ReadTable(AsBytes(bytes), table, problems))
        return Fail(file, problems);
    std::cout << kvm::PrintTable(table) << std::flush;
    return std::cout ? EXIT_GOOD : EXIT_BAD;
}

int Run(int argc, char **argv)
{
    CLI::App app("Compiles printer models and model tables, and prints them back.");
    app.require_subcommand(1);
    std::string file, second, out, base;
    int result = EXIT_GOOD;

    CLI::App *compile = app.add_subcommand("compile", "a model's source to its .dat and .cfg");
    compile->add_option("source", file, "MODEL.toml")->required();
    compile->add_option("-o,--output", out, "the folder for the two files")->required();
    compile->add_option("-n,--name", base, "their base name; default: that of the source");
    compile->callback([&] { result = CompileModel(file, out, base); });

    CLI::App *table = app.add_subcommand("table", "a model table's source to its file");
    table->add_option("source", file, "TABLE.toml")->required();
    table->add_option("-o,--output", out, "the file, kv_model.dat")->required();
    table->callback([&] { result = CompileTable(file, out); });

    CLI::App *print =
        app.add_subcommand("print", "a model's files as a source, to standard output");
    print->add_option("dat", file, "BASE.dat")->required();
    print->add_option("cfg", second, "BASE.cfg")->required();
    print->callback([&] { result = PrintModelFiles(file, second); });

    CLI::App *printTable =
        app.add_subcommand("print-table", "a model table's file as a source, to standard output");
    printTable->add_option("file", file, "kv_model.dat")->required();
    printTable->callback([&] { result = PrintTableFile(file); });

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? EXIT_GOOD : EXIT_USAGE;
    }
    return result;
}

} // namespace

int main(int argc, char **argv)
{
    try {
        return Run(argc, argv);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "kvmodel: %s\n", error.what());
        return EXIT_BAD;
    }
}
