// Small models made in code: records in vectors, written out as the three files and the model
// table. A fresh Model is valid: three papers, two sources, and every table filled.
#ifndef KV_TESTS_SUPPORT_MODEL_BUILDER_H
#define KV_TESTS_SUPPORT_MODEL_BUILDER_H

#include <cstdint>
#include <string>
#include <vector>

#include "base/modeltable.h"
#include "datafile/formats.h"

using Bytes = std::vector<uint8_t>;

struct Model {
    Model();

    DatHeader header{}; // counts are set from the vectors when the file is made
    std::vector<PaperRecord> papers;
    std::vector<BinRecord> bins;
    std::vector<int16_t> resNames;
    std::vector<MediaRecord> media;
    std::vector<AuxRecord> aux;
    std::vector<ResolutionRecord> resolutions;
    std::vector<MedResRule> rules;
    std::vector<MWRecord> mw;
    DriverDevMode tmpl{};
    PrinterRecordHead printer{};
    Bytes printerTail; // pairs and whatever follows the head; padded to the record's size

    uint16_t wCfgVersion = FILE_VERSION;
    std::vector<SettingsRecord> autoSettings, presets;
    uint16_t wUserSlots = 3, wUserPaperSlots = 4;

    bool bUcf = false; // whether there is a user file
    uint16_t wUcfVersion = FILE_VERSION;
    std::vector<SettingsRecord> userSettings; // filled up with free slots
    std::vector<UserPaperRecord> userPapers;  // filled up with free slots

    Bytes Dat() const;
    Bytes Cfg() const;
    Bytes Ucf() const;
    // Puts the files of this model on the machine (in memory) under a base name.
    void Install(const std::string &base) const;
    void AddUserPaper(const std::string &name, int16_t width, int16_t length, int16_t unit,
                      int16_t binMask);
};

struct TableSection {
    uint8_t language; // primary language
    std::vector<ModelRecord> records;
};
ModelRecord MakeModelRecord(const std::string &model, const std::string &base,
                            const std::string &uiRc = "KVUI", const std::string &help = "KVHELP",
                            const std::string &stm = "KVSTM", const std::string &util = "KVUTIL");
Bytes ModelTableBytes(const std::vector<TableSection> &sections);
// Puts the table where the driver looks for it.
void InstallModelTable(const std::vector<TableSection> &sections);

#endif
