// A printer model and a model table between their three forms: the TOML source that a person
// writes, plain structures, and the bytes of the files.
//
//   source -> ParseModel -> ModelFiles -> CheckModel -> DatBytes, CfgBytes
//   bytes  -> ReadModel  -> ModelFiles -> PrintModel -> source
//
// Each step that can fail adds to a list of problems and goes on as long as that makes sense, so
// that one run tells everything. The structures can hold whatever the bytes can: reading, printing
// and parsing again gives the same bytes also for a model that the check refuses.
#ifndef KVMODEL_MODEL_H
#define KVMODEL_MODEL_H

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/modeltable.h"
#include "datafile/formats.h"
#include "tools/kvmodel/problems.h"

namespace kvm
{

using Bytes = std::vector<uint8_t>;

struct ModelFiles {
    DatHeader header{}; // the counts are those of the vectors below; here they stay 0
    std::vector<PaperRecord> papers;
    std::vector<BinRecord> sources;
    std::vector<int16_t> resNames;
    std::vector<MediaRecord> media;
    std::vector<AuxRecord> aux;
    std::vector<ResolutionRecord> resolutions;
    std::vector<MedResRule> rules;
    std::vector<MWRecord> mw;
    DriverDevMode tmpl{};
    PrinterRecordHead printer{};
    Bytes printerTail; // of PrinterTailSize() bytes
    Bytes datTrailer;  // whatever follows the printer record

    CfgHeader cfg{}; // without the counts of settings
    std::vector<SettingsRecord> automatic, presets;
    Bytes cfgTrailer;

    size_t PrinterTailSize() const
    {
        return 2 * papers.size() + 4 * (sources.size() + resNames.size());
    }
};

bool ParseModel(std::string_view source, ModelFiles &model, Lines &lines, Problems &problems);
// Everything that the driver relies on. False, with the problems, when something is not so.
bool CheckModel(const ModelFiles &model, const Lines &lines, Problems &problems);
Bytes DatBytes(const ModelFiles &model);
Bytes CfgBytes(const ModelFiles &model);
// Both files are read, whatever is wrong with one of them.
bool ReadModel(std::span<const uint8_t> dat, std::span<const uint8_t> cfg, ModelFiles &model,
               Problems &datProblems, Problems &cfgProblems);
std::string PrintModel(const ModelFiles &model);

struct TableSectionRecords {
    LanguageSectionHead head{}; // its count is that of the records
    std::vector<ModelRecord> records;
};
struct ModelTable {
    ModelTableHead head{}; // its count is that of the sections
    std::vector<TableSectionRecords> sections;
    Bytes trailer;
};

bool ParseTable(std::string_view source, ModelTable &table, Lines &lines, Problems &problems);
bool CheckTable(const ModelTable &table, const Lines &lines, Problems &problems);
Bytes TableBytes(const ModelTable &table);
bool ReadTable(std::span<const uint8_t> bytes, ModelTable &table, Problems &problems);
std::string PrintTable(const ModelTable &table);

} // namespace kvm

#endif
