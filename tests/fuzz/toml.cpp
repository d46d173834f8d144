// The model compiler on sources (first byte 0: a model, 1: a model table) and its printer on bytes
// (2: a .dat and a .cfg behind the 16-bit length of the first, 3: a model table). What it prints
// compiles to the same bytes.
#include "tests/fuzz/fuzz.h"
#include "tools/kvmodel/model.h"

static void CompileModel(std::string_view source)
{
    kvm::ModelFiles model;
    kvm::Lines lines;
    kvm::Problems problems;
    if (!kvm::ParseModel(source, model, lines, problems))
        return Must(!problems.empty());
    kvm::CheckModel(model, lines, problems);
    Must(kvm::DatBytes(model).size() >= sizeof(DatHeader));
    Must(kvm::CfgBytes(model).size() >= sizeof(CfgHeader));
}

static void CompileTable(std::string_view source)
{
    kvm::ModelTable table;
    kvm::Lines lines;
    kvm::Problems problems;
    if (!kvm::ParseTable(source, table, lines, problems))
        return Must(!problems.empty());
    kvm::CheckTable(table, lines, problems);
    Must(kvm::TableBytes(table).size() >= sizeof(ModelTableHead));
}

static void PrintModel(Input input)
{
    const size_t cbDat = TakeValue<uint16_t>(input);
    const Input dat = Take(input, cbDat);
    kvm::ModelFiles model, again;
    kvm::Lines lines;
    kvm::Problems problems;
    if (!kvm::ReadModel(dat, input, model, problems, problems))
        return Must(!problems.empty());
    Must(kvm::ParseModel(kvm::PrintModel(model), again, lines, problems));
    const kvm::Bytes datAgain = kvm::DatBytes(again), cfgAgain = kvm::CfgBytes(again);
    Must(std::equal(dat.begin(), dat.end(), datAgain.begin(), datAgain.end()));
    Must(std::equal(input.begin(), input.end(), cfgAgain.begin(), cfgAgain.end()));
}

static void PrintTable(Input input)
{
    kvm::ModelTable table, again;
    kvm::Lines lines;
    kvm::Problems problems;
    if (!kvm::ReadTable(input, table, problems))
        return Must(!problems.empty());
    Must(kvm::ParseTable(kvm::PrintTable(table), again, lines, problems));
    const kvm::Bytes bytes = kvm::TableBytes(again);
    Must(std::equal(input.begin(), input.end(), bytes.begin(), bytes.end()));
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Input input(data, size);
    const int kind = TakeValue<uint8_t>(input) % 4;
    const std::string_view source(reinterpret_cast<const char *>(input.data()), input.size());
    switch (kind) {
    case 0: CompileModel(source); break;
    case 1: CompileTable(source); break;
    case 2: PrintModel(input); break;
    default: PrintTable(input); break;
    }
    return 0;
}
