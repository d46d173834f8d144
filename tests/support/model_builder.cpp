// The fresh model's tables, and the bytes of its files.
#include "tests/support/model_builder.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "platform/host.h"
#include "tests/support/machine.h"
#include "tools/kvmodel/append.h"

namespace
{

using kvm::Append;

PaperRecord Paper(int16_t id, int16_t width, int16_t length, int16_t preferred, int16_t mask)
{
    PaperRecord paper{};
    paper.wId = id;
    paper.wWidth = width;
    paper.wLength = length;
    paper.wLeft = 42;
    paper.wTop = 60;
    paper.wRight = 42;
    paper.wBottom = 198;
    paper.wMaxWidth = 2413;
    paper.wMaxLength = 11176;
    paper.wMinWidth = 890;
    paper.wMinLength = 1270;
    paper.wDefault = preferred;
    paper.wBinMask = mask;
    return paper;
}

SettingsRecord Setting(uint16_t index, int16_t level, int16_t resolution, int16_t media,
                       uint16_t ink)
{
    SettingsRecord setting{};
    setting.wIndex = index;
    setting.wPreset = index;
    setting.wAutoLevel = level;
    setting.wResolution = resolution;
    setting.wMedia = media;
    setting.wInk = ink;
    return setting;
}

template <size_t N>
void PutText(char (&field)[N], const std::string &text)
{
    std::strncpy(field, text.c_str(), N - 1);
}

} // namespace

Model::Model()
{
    header.wVersion = FILE_VERSION;
    papers = {Paper(9, 2976, 4209, 1, 3), Paper(1, 3060, 3960, 2, 3), Paper(256, 2976, 4209, 0, 1)};
    for (size_t i = 0; i < papers.size(); ++i)
        papers[i].wIndex = static_cast<int16_t>(i);
    bins = {{7, 0, 0}, {4, 0x100, 1}};
    resNames = {0, 1};
    media = {{10, 0}, {20, 1}};
    aux = {AuxRecord{{1, 2, 3}}};
    resolutions = {{0, 0, 0, 0, 0, 0, 360, 360}, {1, 1, 1, 0, 1, 0, 720, 720}};
    for (int16_t res = 0; res < 2; ++res)
        for (int16_t ink = 0; ink < 2; ++ink)
            rules.push_back({res, ink, 0, 0, 0, 0, 0, 0xF, 0, 0, 0xF});
    mw = {{360, 360, 360, 360, MW_ANY, MW_ANY, MW_ANY, {1, 2, 3, 4, 5, 6, 7, 8}}};
    tmpl.dm.dmSpecVersion = KV_SPECVERSION;
    tmpl.dm.dmDriverVersion = KV_DRIVERVERSION;
    tmpl.dm.dmSize = KV_PUBLICSIZE;
    tmpl.dm.dmDriverExtra = KV_PRIVATESIZE;
    tmpl.dm.dmFields = 0x30F;
    tmpl.dm.dmOrientation = 1;
    tmpl.dm.dmCopies = 1;
    tmpl.dm.dmDefaultSource = 7;
    tmpl.dwModelTag = 0x4B563031;
    tmpl.bAutoMode = 1;
    tmpl.nPrintArea = 1;
    tmpl.lMaxPrintWidth = 2880;
    std::strcpy(tmpl.szTmplName, "TEMPLATE");
    printer.sModelId = 5;
    printer.wMaxCopies = 99;
    printer.sPairCount = 2;
    printerTail = {1, 0, 2, 0, 3, 0, 4, 0};
    autoSettings = {Setting(0, 1, 0, 0, 1), Setting(1, 2, 1, 1, 0)};
    presets = {Setting(2, 0, 1, 1, 1)};
}

Bytes Model::Dat() const
{
    DatHeader head = header;
    head.wPaperCount = static_cast<uint16_t>(papers.size());
    head.wBinCount = static_cast<uint16_t>(bins.size());
    head.wResNameCount = static_cast<uint16_t>(resNames.size());
    head.wMediaCount = static_cast<uint16_t>(media.size());
    head.wAuxCount = static_cast<uint16_t>(aux.size());
    head.wResCount = static_cast<uint16_t>(resolutions.size());
    head.wMedResCount = static_cast<uint16_t>(rules.size());
    head.wMWCount = static_cast<uint16_t>(mw.size());
    Bytes bytes;
    Append(bytes, head);
    Append(bytes, papers);
    Append(bytes, bins);
    Append(bytes, resNames);
    Append(bytes, media);
    Append(bytes, aux);
    Append(bytes, resolutions);
    Append(bytes, rules);
    Append(bytes, mw);
    Append(bytes, tmpl);
    const size_t cbTail = 2 * papers.size() + 4 * (bins.size() + resNames.size());
    Bytes tail = printerTail;
    tail.resize(cbTail);
    Append(bytes, printer);
    std::copy(tail.begin(), tail.end(), std::back_inserter(bytes));
    return bytes;
}

Bytes Model::Cfg() const
{
    const CfgHeader head = {wCfgVersion, static_cast<uint16_t>(autoSettings.size()),
                            static_cast<uint16_t>(presets.size()), wUserSlots, wUserPaperSlots};
    Bytes bytes;
    Append(bytes, head);
    Append(bytes, autoSettings);
    Append(bytes, presets);
    return bytes;
}

Bytes Model::Ucf() const
{
    std::vector<SettingsRecord> slots = userSettings;
    while (slots.size() < wUserSlots) {
        SettingsRecord slot{};
        slot.wIndex = static_cast<uint16_t>(autoSettings.size() + presets.size() + slots.size());
        slot.wAutoLabel = -1;
        slot.wState = STATE_FREE;
        slots.push_back(slot);
    }
    std::vector<UserPaperRecord> sizes = userPapers;
    while (sizes.size() < wUserPaperSlots) {
        UserPaperRecord slot{};
        slot.paper = papers.empty() ? PaperRecord{} : papers.back();
        slot.paper.wId = static_cast<int16_t>(KV_FIRST_USERSLOT_ID + sizes.size());
        slot.wMark = MARK_FREE;
        slot.wState = STATE_FREE;
        sizes.push_back(slot);
    }
    Bytes bytes;
    Append(bytes, wUcfVersion);
    Append(bytes, slots);
    Append(bytes, sizes);
    return bytes;
}

void Model::Install(const std::string &base) const
{
    kvp::PutMemoryFile(WINDOWS_DIR + base + ".dat", Dat());
    kvp::PutMemoryFile(WINDOWS_DIR + base + ".cfg", Cfg());
    const std::string ucf = SYSTEM_DIR + base + ".ucf";
    if (bUcf)
        kvp::PutMemoryFile(ucf, Ucf());
    else
        kvp::PutAbsentFile(ucf);
}

void Model::AddUserPaper(const std::string &name, int16_t width, int16_t length, int16_t unit,
                         int16_t binMask)
{
    UserPaperRecord slot{};
    slot.paper = papers.back();
    slot.paper.wId = static_cast<int16_t>(KV_FIRST_USERSLOT_ID + userPapers.size());
    slot.paper.wWidth = width;
    slot.paper.wLength = length;
    slot.paper.wDefault = unit;
    slot.paper.wBinMask = binMask;
    slot.wMark = static_cast<uint16_t>(userPapers.size());
    slot.wState = STATE_IN_USE;
    PutText(slot.szName, name);
    userPapers.push_back(slot);
    bUcf = true;
}

ModelRecord MakeModelRecord(const std::string &model, const std::string &base,
                            const std::string &uiRc, const std::string &help,
                            const std::string &stm, const std::string &util)
{
    ModelRecord record{};
    PutText(record.szModel, model);
    PutText(record.szUIRc, uiRc);
    PutText(record.szHelp, help);
    PutText(record.szDat, base);
    PutText(record.szStm, stm);
    PutText(record.szUtil, util);
    return record;
}

Bytes ModelTableBytes(const std::vector<TableSection> &sections)
{
    Bytes bytes;
    ModelTableHead head{};
    head.sSections = static_cast<SHORT>(sections.size());
    Append(bytes, head);
    for (const TableSection &section : sections) {
        Append(bytes, LanguageSectionHead{static_cast<signed char>(section.language), 0,
                                          static_cast<SHORT>(section.records.size())});
        Append(bytes, section.records);
    }
    return bytes;
}

void InstallModelTable(const std::vector<TableSection> &sections)
{
    kvp::PutMemoryFile(std::string(SYSTEM_DIR) + "kv_model.dat", ModelTableBytes(sections));
}
