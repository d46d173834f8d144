#include "tests/support/large_model.h"

#include <filesystem>
#include <fstream>

#include "platform/host.h"
#include "tests/support/machine.h"

static void AddPapers(Model &model)
{
    const PaperRecord userDefined = model.papers.back();
    PaperRecord paper = model.papers[1];
    paper.wDefault = 0;
    model.papers.pop_back();
    while (model.papers.size() < 24) {
        paper.wIndex = static_cast<int16_t>(model.papers.size());
        paper.wId = static_cast<int16_t>(40 + paper.wIndex);
        paper.wBinMask = static_cast<int16_t>(paper.wIndex % 15 + 1);
        model.papers.push_back(paper);
    }
    model.papers.push_back(userDefined);
    model.papers.back().wIndex = 24;
}

static void AddPrintModes(Model &model)
{
    for (int16_t i = 2; i < 8; ++i)
        model.media.push_back({static_cast<int16_t>(10 * (i + 1)), i});
    ResolutionRecord resolution = model.resolutions[1];
    for (int16_t i = 2; i < 16; ++i) {
        resolution.wRes0 = i;
        resolution.wMedia = static_cast<int16_t>(i % 8);
        model.resolutions.push_back(resolution);
        for (MedResRule rule : {model.rules[0], model.rules[1]}) {
            rule.sRes = i;
            model.rules.push_back(rule);
        }
    }
    MWRecord row = model.mw[0];
    while (model.mw.size() < 60) { // the row that fits the defaults comes last
        row.lResX = static_cast<int32_t>(100 + model.mw.size());
        model.mw.insert(model.mw.begin(), row);
    }
}

static void AddSettings(Model &model)
{
    const auto fill = [](std::vector<SettingsRecord> &settings, size_t count, size_t first) {
        settings.resize(count, settings[0]);
        for (size_t i = 0; i < count; ++i)
            settings[i].wIndex = static_cast<uint16_t>(first + i);
    };
    fill(model.autoSettings, 12, 0);
    fill(model.presets, 16, 12);
    model.wUserSlots = 10;
    model.wUserPaperSlots = 10;
    for (uint16_t i = 0; i < 3; ++i) {
        SettingsRecord slot = model.presets[i];
        slot.wIndex = static_cast<uint16_t>(28 + i);
        slot.wState = STATE_IN_USE;
        model.userSettings.push_back(slot);
        model.AddUserPaper("Card " + std::to_string(i), 1000, 1500, 1, 0xF);
    }
}

Model LargeModel()
{
    Model model;
    model.bins.push_back({15, 0x200, 2});
    model.bins.push_back({257, 0x400, 3});
    AddPapers(model);
    AddPrintModes(model);
    AddSettings(model);
    return model;
}

void PutOnDisk(const std::string &dosPath, const Bytes &bytes)
{
    const std::filesystem::path path = kvp::HostPath(dosPath);
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char *>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

void InstallOnDisk(const Model &model, const std::string &base, const std::string &directory)
{
    PutOnDisk(directory + base + ".dat", model.Dat());
    PutOnDisk(directory + base + ".cfg", model.Cfg());
    PutOnDisk(SYSTEM_DIR + base + ".ucf", model.Ucf());
}
