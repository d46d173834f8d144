// A model's default settings: the template of its .dat, the default paper of the user's locale,
// the default settings record, its resolution and media, and the MW row for them.
#include "settings/defaults.h"

#include <algorithm>
#include <cstring>

#include "base/module.h"
#include "base/units.h"
#include "datafile/files.h"
#include "datafile/mw.h"
#include "datafile/tables.h"

// What the defaults are made of; released as a whole.
struct DefaultSource {
    std::vector<PaperRecord> papers;
    std::vector<MediaRecord> media;
    std::vector<ResolutionRecord> resolutions;
    std::vector<MWRecord> mw;
    DriverDevMode tmpl;
    std::vector<SettingsRecord> settings;
};

template <class Record>
static const Record *At(const std::vector<Record> &table, int64_t nIndex)
{
    return RecordAt(table, static_cast<uint32_t>(table.size()), nIndex);
}

// ---- reading ----------------------------------------------------------------------------------

// TRUE when read; a file that is not found has been told to the user.
static BOOL Accept(FileState state, const std::string &strName)
{
    if (state == FileState::NotFound)
        NotifyFileNotFound(strName.c_str());
    return state == FileState::Read;
}

static BOOL ReadModel(const std::string &strName, DefaultSource *lpSource)
{
    DatReader reader;
    if (!Accept(OpenDat(strName.c_str(), Versions::Any, &reader), strName))
        return FALSE;
    ReadTable(&reader, PART_PAPERS, &lpSource->papers);
    ReadTable(&reader, PART_MEDIA, &lpSource->media);
    ReadTable(&reader, PART_RES, &lpSource->resolutions);
    ReadTable(&reader, PART_MW, &lpSource->mw);
    ReadPart(&reader, PART_TEMPLATE, &lpSource->tmpl, sizeof lpSource->tmpl);
    return CloseDat(&reader) == FileState::Read;
}

// Slots of another version stay zero here, while a missing file frees them.
static void ReadUserSettings(const std::string &strName, const CfgHeader &cfg,
                             std::vector<SettingsRecord> *lpSettings)
{
    const DWORD nFirst = FixedSettings(cfg);
    const auto slots = std::span(*lpSettings).subspan(nFirst, cfg.wUserSlots);
    const UserFileState state = ReadUcf(strName.c_str(), cfg, slots, {});
    if (state == UserFileState::Missing)
        FreeSettingsSlots(slots, nFirst);
    if (state == UserFileState::OtherVersion)
        Notify("Version Error of ucf file");
}

static BOOL ReadSource(const DriverDevMode *lpDM, DefaultSource *lpSource)
{
    const ModelFiles files = FilesOfModel(lpDM);
    if (!ReadModel(files.strDat, lpSource))
        return FALSE;
    CfgHeader cfg;
    if (!Accept(ReadCfg(files.strCfg.c_str(), Versions::Any, &cfg, &lpSource->settings),
                files.strCfg))
        return FALSE;
    ReadUserSettings(files.strUcf, cfg, &lpSource->settings);
    return TRUE;
}

// ---- filling ----------------------------------------------------------------------------------

static void TakeTemplate(DriverDevMode *lpDM, const DriverDevMode &tmpl)
{
    PublicDevMode &dm = lpDM->dm;
    dm.dmSpecVersion = tmpl.dm.dmSpecVersion;
    dm.dmDriverVersion = tmpl.dm.dmDriverVersion;
    dm.dmSize = tmpl.dm.dmSize;
    dm.dmDriverExtra = tmpl.dm.dmDriverExtra;
    dm.dmFields = tmpl.dm.dmFields;
    dm.dmOrientation = tmpl.dm.dmOrientation != 0 ? tmpl.dm.dmOrientation : int16_t{1};
    dm.dmCopies = tmpl.dm.dmCopies;
    dm.dmDefaultSource = tmpl.dm.dmDefaultSource;
    dm.dmDuplex = tmpl.dm.dmDuplex;
    dm.dmCollate = tmpl.dm.dmCollate;
    dm.dmScale = tmpl.dm.dmScale;
    dm.dmBitsPerPel = tmpl.dm.dmBitsPerPel;
    dm.dmPelsWidth = tmpl.dm.dmPelsWidth;
    dm.dmPelsHeight = tmpl.dm.dmPelsHeight;
    dm.dmDisplayFlags = tmpl.dm.dmDisplayFlags;
    dm.dmDisplayFrequency = tmpl.dm.dmDisplayFrequency;
    lpDM->dwModelTag = tmpl.dwModelTag;
    lpDM->wTmpl1 = tmpl.wTmpl1;
    lpDM->wTmpl2 = tmpl.wTmpl2;
    lpDM->wTmpl3 = tmpl.wTmpl3;
    lpDM->lMediaCode = tmpl.lMediaCode;
    std::memcpy(lpDM->adwTmpl, tmpl.adwTmpl, sizeof tmpl.adwTmpl);
    lpDM->dwApiFlag = tmpl.dwApiFlag;
    // Up to its terminator, no further: the rest stays the caller's.
    const size_t cchName = strnlen(tmpl.szTmplName, sizeof tmpl.szTmplName);
    std::memcpy(lpDM->szTmplName, tmpl.szTmplName, std::min(cchName + 1, sizeof tmpl.szTmplName));
    lpDM->nBin = tmpl.nBin;
    lpDM->nPrintArea = tmpl.nPrintArea;
    lpDM->bAutoMode = tmpl.bAutoMode;
    lpDM->lMaxPrintWidth = tmpl.lMaxPrintWidth;
}

// As it is: neither centred nor limited in width.
static void TakePaper(DriverDevMode *lpDM, const PaperRecord &paper)
{
    lpDM->dm.dmPaperSize = paper.wId;
    PutPaperSize(lpDM, paper);
    lpDM->nPaper = paper.wIndex;
    lpDM->wMarginLeft = static_cast<WORD>(paper.wLeft);
    lpDM->wMarginTop = static_cast<WORD>(paper.wTop);
    lpDM->wMarginRight = static_cast<WORD>(paper.wRight);
    lpDM->wMarginBottom = static_cast<WORD>(paper.wBottom);
    lpDM->lPaperWidth = lpDM->dm.dmPaperWidth;
    lpDM->lPaperLength = lpDM->dm.dmPaperLength;
}

// 0 metric, 1 inch, -1 for any other answer of the locale.
static int LocaleMeasure()
{
    char szMeasure[3] = "";
    GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_IMEASURE, szMeasure, sizeof szMeasure);
    const bool bKnown = (szMeasure[0] == '0' || szMeasure[0] == '1') && szMeasure[1] == '\0';
    return bKnown ? szMeasure[0] - '0' : -1;
}

// A paper table that has no default for the locale leaves the paper as the caller cleared it.
static void TakeDefaultPaper(DriverDevMode *lpDM, const std::vector<PaperRecord> &papers)
{
    const int nMeasure = LocaleMeasure();
    if (nMeasure < 0)
        return;
    lpDM->dwUnit = nMeasure == 1 ? UNIT_INCH : UNIT_MM;
    const int nDefault = nMeasure == 1 ? 2 : 1;
    for (const PaperRecord &paper : papers)
        if (paper.wDefault == nDefault)
            return TakePaper(lpDM, paper);
}

// The default settings record and what follows from it. A record that leads nowhere leaves all of
// it cleared.
static void TakeSettings(DriverDevMode *lpDM, const DefaultSource &source)
{
    const SettingsRecord *lpSettings =
        At(source.settings, static_cast<int16_t>(source.tmpl.Settings.wIndex));
    if (lpSettings)
        lpDM->Settings = *lpSettings;
    const ResolutionRecord *lpResolution =
        lpSettings ? At(source.resolutions, lpSettings->wResolution) : nullptr;
    if (lpResolution) {
        PutResolution(lpDM, *lpResolution);
        if (const MediaRecord *lpMedia = At(source.media, lpResolution->wMedia))
            lpDM->lMediaCode = lpMedia->wCode;
        RefreshMWData(lpDM, source.mw);
    } else {
        SetMWData(lpDM, nullptr);
    }
    lpDM->dm.dmColor = lpDM->Settings.wInk == 1 ? 2 : 1;
}

BOOL InitPrinterDevMode(DriverDevMode *lpDM, LPVOID, LPVOID)
{
    DefaultSource source;
    if (!ReadSource(lpDM, &source))
        return FALSE;
    TakeTemplate(lpDM, source.tmpl);
    TakeDefaultPaper(lpDM, source.papers);
    TakeSettings(lpDM, source);
    return TRUE;
}
