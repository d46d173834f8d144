// Default records.
#include "tools/kvmodel/defaults.h"

#include "base/units.h"

namespace kvm
{

PaperRecord DefaultPaper(const ModelFiles &model, size_t nPosition, int64_t nWidth, int64_t nLength)
{
    PaperRecord paper{};
    paper.wWidth = static_cast<int16_t>(nWidth);
    paper.wLength = static_cast<int16_t>(nLength);
    paper.wLeft = paper.wTop = paper.wRight = 42;
    paper.wBottom = 198;
    paper.wMaxWidth = paper.wMinWidth = static_cast<int16_t>(From360ToMM(nWidth));
    paper.wMaxLength = paper.wMinLength = static_cast<int16_t>(From360ToMM(nLength));
    const size_t nSources = model.sources.size();
    paper.wBinMask = static_cast<int16_t>(nSources < 16 ? (1u << nSources) - 1 : 0xFFFFu);
    paper.wIndex = static_cast<int16_t>(nPosition);
    return paper;
}

MedResRule DefaultRule()
{
    MedResRule rule{};
    rule.bHTAllowed = 0xF;
    rule.sIntents = 0xF;
    return rule;
}

const MedResRule *RuleOf(const ModelFiles &model, int64_t nResolution, int64_t nInk)
{
    for (const MedResRule &rule : model.rules)
        if (rule.sRes == nResolution && rule.sInk == nInk)
            return &rule;
    return nullptr;
}

SettingsRecord DefaultSetting(const ModelFiles &model, size_t nPosition, int64_t nResolution,
                              int64_t nInk)
{
    SettingsRecord setting{};
    setting.wIndex = static_cast<uint16_t>(nPosition);
    setting.wResolution = static_cast<int16_t>(nResolution);
    setting.wInk = static_cast<uint16_t>(nInk);
    setting.wInkCode = nInk == 1 ? 6 : 3;
    if (nResolution >= 0 && nResolution < static_cast<int64_t>(model.resolutions.size())) {
        const ResolutionRecord &res = model.resolutions[static_cast<size_t>(nResolution)];
        setting.wMedia = res.wMedia;
        setting.wDotScale = res.wDotScale;
    }
    if (const MedResRule *rule = RuleOf(model, nResolution, nInk))
        setting.wRule = rule->wRule;
    return setting;
}

DriverDevMode DefaultTemplate(const ModelFiles &model, int64_t nSource)
{
    DriverDevMode tmpl{};
    tmpl.dm.dmSpecVersion = KV_SPECVERSION;
    tmpl.dm.dmDriverVersion = KV_DRIVERVERSION;
    tmpl.dm.dmSize = KV_PUBLICSIZE;
    tmpl.dm.dmDriverExtra = KV_PRIVATESIZE;
    tmpl.dm.dmFields = KV_DM_ORIENTATION | KV_DM_PAPERSIZE | KV_DM_PAPERLENGTH | KV_DM_PAPERWIDTH |
                       KV_DM_COPIES | KV_DM_DEFAULTSOURCE;
    tmpl.dm.dmOrientation = 1;
    tmpl.dm.dmScale = 100;
    tmpl.dm.dmCopies = 1;
    tmpl.dm.dmDuplex = 1;
    tmpl.nBin = static_cast<int32_t>(nSource);
    if (nSource >= 0 && nSource < static_cast<int64_t>(model.sources.size()))
        tmpl.dm.dmDefaultSource =
            static_cast<int16_t>(model.sources[static_cast<size_t>(nSource)].wId);
    tmpl.bAutoMode = 1;
    tmpl.nPrintArea = 1;
    return tmpl;
}

PrinterRecordHead DefaultPrinter()
{
    PrinterRecordHead printer{};
    printer.wMaxCopies = 99;
    return printer;
}

} // namespace kvm
