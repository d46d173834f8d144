// kvmodel: model sources to binary files and back.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <span>

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

struct Output {
    std::string file;
    kvm::Bytes bytes;

    std::string Fresh() const { return file + ".new"; }
};

bool WriteFresh(const Output &output)
{
    std::ofstream stream(output.Fresh(), std::ios::binary | std::ios::trunc);
    stream.write(reinterpret_cast<const char *>(output.bytes.data()),
                 static_cast<std::streamsize>(output.bytes.size()));
    stream.close();
    return !stream.fail();
}

// All are written beside the old files first, so that a full disk leaves those as they were.
int WriteAll(std::span<const Output> outputs)
{
    std::error_code error;
    const Output *failed = nullptr;
    for (const Output &output : outputs)
        if (!failed && !WriteFresh(output))
            failed = &output;
    for (const Output &output : outputs) {
        if (!failed)
            fs::rename(output.Fresh(), output.file, error);
        if (!failed && error)
            failed = &output;
    }
    if (!failed)
        return EXIT_GOOD;
    for (const Output &output : outputs)
        fs::remove(output.Fresh(), error);
    return Fail(failed->file, "cannot be written");
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
    const std::string stem =
        (fs::path(folder) / (base.empty() ? fs::path(file).stem() : fs::path(base))).string();
    std::error_code ignored; // without the folder the files cannot be written, and that is told
    fs::create_directories(folder, ignored);
    const Output outputs[] = {{stem + ".dat", kvm::DatBytes(model)},
                              {stem + ".cfg", kvm::CfgBytes(model)}};
    return WriteAll(outputs);
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
    const Output outputs[] = {{out, kvm::TableBytes(table)}};
    return WriteAll(outputs);
}

int Print(const std::string &source)
{
    std::cout << source << std::flush;
    return std::cout ? EXIT_GOOD : Fail("standard output", "cannot be written");
}

int PrintModelFiles(const std::string &dat, const std::string &cfg)
{
    std::string datBytes, cfgBytes;
    if (!ReadWhole(dat, datBytes))
        return Fail(dat, "cannot be read");
    if (!ReadWhole(cfg, cfgBytes))
        return Fail(cfg, "cannot be read");
    kvm::ModelFiles model;
    kvm::Problems ofDat, ofCfg;
    if (!kvm::ReadModel(AsBytes(datBytes), AsBytes(cfgBytes), model, ofDat, ofCfg)) {
        Fail(dat, ofDat);
        return Fail(cfg, ofCfg);
    }
    return Print(kvm::PrintModel(model));
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
    return Print(kvm::PrintTable(table));
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
