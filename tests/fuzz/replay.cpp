// Runs a fuzz target without a fuzzer, on files: what it starts from, what it once found.
//
//   kv_replay_TARGET [FILE-OR-FOLDER...] [--vary MOST-BYTES FILE-OR-FOLDER...]
//
// Behind --vary, each file of at most so many bytes is run in all its variations too.
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include "tests/fuzz/vary.h"

namespace fs = std::filesystem;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

void EveryTruncation(Input whole, const Run &run)
{
    for (size_t cb = 0; cb < whole.size(); ++cb)
        run(Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(cb)));
}

void EveryByteChanged(Input whole, const Run &run)
{
    Bytes bytes(whole.begin(), whole.end());
    for (uint8_t &byte : bytes) {
        const uint8_t was = byte;
        for (const int now : {0x00, 0xFF, 0x7F, 0x80, was ^ 0x01, was + 1, was - 1, was ^ 0x10}) {
            byte = static_cast<uint8_t>(now);
            if (byte != was)
                run(bytes);
        }
        byte = was;
    }
}

// Where a target's input has no parts of its own.
[[gnu::weak]] void Vary(Input seed, const Run &run)
{
    EveryTruncation(seed, run);
    EveryByteChanged(seed, run);
}

namespace
{
size_t g_runs, g_mostVaried;

// Each run gets memory of its own, to the byte, so that a sanitizer sees a read beyond it.
void RunOne(const Bytes &bytes)
{
    const Bytes exact(bytes);
    LLVMFuzzerTestOneInput(exact.data(), exact.size());
    ++g_runs;
}

void RunFile(const fs::path &path)
{
    std::ifstream file(path, std::ios::binary);
    const Bytes bytes((std::istreambuf_iterator<char>(file)), {});
    RunOne(bytes);
    if (bytes.size() <= g_mostVaried)
        Vary(bytes, RunOne);
}
} // namespace

int main(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--vary" && i + 1 < argc)
            g_mostVaried = std::stoul(argv[++i]);
        else if (!fs::is_directory(argument))
            RunFile(argument);
        else
            for (const auto &entry : fs::directory_iterator(argument))
                RunFile(entry.path());
    }
    std::cout << g_runs << " runs\n";
    return g_runs > 0 ? 0 : 1;
}
