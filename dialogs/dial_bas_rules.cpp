// What a model allows, applied to the settings being edited: the resolution for a choice of ink and
// media, the options and HT choices that go with it, and the lists of media to choose from.
#include "dialogs/rules.h"

#include <algorithm>
#include <span>

#include "dialogs/helpers.h"
#include "dialogs/settings_table.h"
#include "resources/detail_ids.h"
#include "resources/main_ids.h"
#include "resources/text_ids.h"

static CBSTRUC *GetCB(HWND hDlg)
{
    return RequireCB(hDlg, "dial_bas");
}

// ---- looking up -----------------------------------------------------------------------------

static std::span<const MedResRule> Rules(const DatFile &block)
{
    return std::span(block.lpMedRes).first(std::min<size_t>(block.nMedRes, block.lpMedRes.size()));
}

static const MedResRule *FindRule(const DatFile &block, int nRes, int nInk)
{
    const auto rules = Rules(block);
    const auto it = std::ranges::find_if(
        rules, [&](const MedResRule &rule) { return rule.sRes == nRes && rule.sInk == nInk; });
    return it == rules.end() ? nullptr : &*it;
}

MedResRule CurrentRule(const UIINSTANCE *lpInstance)
{
    const MedResRule *lpRule = FindRule(lpInstance->dat, lpInstance->nCurRes, lpInstance->bInk);
    return lpRule ? *lpRule : MedResRule{};
}

bool HasRule(const DatFile &block, int nRes, int nInk)
{
    return FindRule(block, nRes, nInk) != nullptr;
}

const ResolutionRecord *Resolution(const UIINSTANCE *lpInstance, int nRes)
{
    return RecordAt(lpInstance->dat.lpRes, lpInstance->dat.nRes, nRes);
}

static std::string NumberedText(const UIINSTANCE *lpInstance, UINT idFirst, int n)
{
    return n < 0 ? "" : LoadText(lpInstance->hResLib, idFirst + static_cast<UINT>(n));
}

std::string ResolutionNameAt(const UIINSTANCE *lpInstance, int nPosition)
{
    const int16_t *lpName =
        RecordAt(lpInstance->dat.lpResNames, lpInstance->dat.nResNames, nPosition);
    return lpName ? NumberedText(lpInstance, RESOLUTION_NAME, *lpName) : "";
}

std::string ResolutionName(const UIINSTANCE *lpInstance, int nRes)
{
    const ResolutionRecord *lpRes = Resolution(lpInstance, nRes);
    return lpRes ? ResolutionNameAt(lpInstance, lpRes->wResName) : "";
}

std::string MediaName(const UIINSTANCE *lpInstance, int nMedia)
{
    return NumberedText(lpInstance, MEDIA_NAME, nMedia);
}

static std::string NameOfMediaAt(const UIINSTANCE *lpInstance, int nPosition)
{
    const MediaRecord *lpMedia =
        RecordAt(lpInstance->dat.lpMedia, lpInstance->dat.nMedia, nPosition);
    return lpMedia ? MediaName(lpInstance, lpMedia->wName) : "";
}

std::string MediaNameByIndex(const UIINSTANCE *lpInstance, int nRes)
{
    const ResolutionRecord *lpRes = Resolution(lpInstance, nRes);
    return lpRes ? NameOfMediaAt(lpInstance, lpRes->wMedia) : "";
}

std::string MediaNameByNumber(const UIINSTANCE *lpInstance, int nRes)
{
    const ResolutionRecord *lpRes = Resolution(lpInstance, nRes);
    if (!lpRes)
        return "";
    const DatFile &block = lpInstance->dat;
    const auto media =
        std::span(block.lpMedia).first(std::min<size_t>(block.nMedia, block.lpMedia.size()));
    if (std::ranges::any_of(media, [&](const auto &m) { return m.wName == lpRes->wMedia; }))
        return MediaName(lpInstance, lpRes->wMedia);
    return NameOfMediaAt(lpInstance, lpRes->wMedia);
}

// ---- options --------------------------------------------------------------------------------

// In the record and in the working state.
static void PutFlag(DriverDevMode *lpDM, UIINSTANCE *lpInstance, WORD wFlag, bool bOn)
{
    lpDM->Settings.wFlags = WithBits(lpDM->Settings.wFlags, wFlag, bOn);
    lpInstance->wFlags = WithBits(lpInstance->wFlags, wFlag, bOn);
}

// An MW option, which the record holds twice.
static void PutMWFlag(DriverDevMode *lpDM, UIINSTANCE *lpInstance, WORD wFlag, bool bOn)
{
    PutFlag(lpDM, lpInstance, wFlag, bOn);
    lpDM->Settings.wFlags2 = WithBits(lpDM->Settings.wFlags2, wFlag, bOn);
}

// What a rule's code makes of an option, and of its check box. The boxes of changeable codes are
// set first, and only where the user has no say; the others lock, whatever was set before.
enum class Box { Changeable, Locked, Hidden };
struct OptionState {
    bool bOn;
    Box box;
};
struct OptionCode {
    int16_t sCode;
    OptionState state;
};
static constexpr OptionCode aMWCodes[] = {
    {RULE_ON, {true, Box::Locked}},
    {RULE_OFF, {false, Box::Locked}},
    {3, {false, Box::Changeable}},
    {4, {true, Box::Changeable}},
};
static constexpr OptionCode aMWOptionCodes[] = {
    {RULE_ON, {true, Box::Locked}}, {RULE_OFF, {false, Box::Locked}}, {3, {true, Box::Hidden}},
    {4, {false, Box::Hidden}},      {5, {false, Box::Changeable}},    {6, {true, Box::Changeable}},
};

static void PutMWBox(HWND hDlg, const OptionState &state)
{
    CheckBox(hDlg, IDC_DETAIL_MW, state.bOn);
    EnableControl(hDlg, IDC_DETAIL_MW, state.box == Box::Changeable);
}

// A hidden box keeps whether it is enabled.
static void PutMWOptionBox(HWND hDlg, const OptionState &state)
{
    ShowWindow(GetDlgItem(hDlg, IDC_DETAIL_MW_OPTION),
               state.box == Box::Hidden ? SW_HIDE : SW_SHOW);
    if (state.box != Box::Hidden)
        EnableControl(hDlg, IDC_DETAIL_MW_OPTION, state.box == Box::Changeable);
    CheckBox(hDlg, IDC_DETAIL_MW_OPTION, state.bOn);
}

// One option under its rule. bOwn: the user's choice holds, whatever a changeable code says;
// bLocks: codes that lock do so.
struct Option {
    WORD wFlag;
    std::span<const OptionCode> codes;
    void (*PutBox)(HWND hDlg, const OptionState &state);
    int16_t sCode;
    bool bOwn, bLocks;
};

static void CheckOption(HWND hDlg, DriverDevMode *lpDM, const Option &option, bool bBoxes)
{
    UIINSTANCE *lpInstance = GetCB(hDlg)->lpInstance;
    const auto Put = [&](const OptionState &state) {
        PutMWFlag(lpDM, lpInstance, option.wFlag, state.bOn);
        if (bBoxes)
            option.PutBox(hDlg, state);
    };
    const auto it = std::ranges::find(option.codes, option.sCode, &OptionCode::sCode);
    const OptionCode *lpCode = it == option.codes.end() ? nullptr : &*it;
    const bool bLocking = lpCode && lpCode->state.box != Box::Changeable;
    if (option.bOwn || option.sCode == RULE_FREE)
        Put({(lpInstance->wFlags & option.wFlag) != 0, Box::Changeable});
    else if (lpCode && !bLocking)
        Put(lpCode->state);
    if (bLocking && option.bLocks)
        Put(lpCode->state);
}

void CheckMW(HWND hDlg, DriverDevMode *lpDM, int nMode)
{
    const UIINSTANCE *lpInstance = GetCB(hDlg)->lpInstance;
    const MedResRule rule = CurrentRule(lpInstance);
    const bool bBoxes = nMode != 0;
    CheckOption(hDlg, lpDM,
                {.wFlag = KV_FLAG_MW,
                 .codes = aMWCodes,
                 .PutBox = PutMWBox,
                 .sCode = rule.sMW,
                 .bOwn = nMode == MW_OWN_FIRST || nMode == MW_OWN_BOTH,
                 .bLocks = true},
                bBoxes);
    // Without the first option there is no second one; but a second one that its own rule leaves
    // to the user is given back to him below.
    if (rule.sMW == RULE_OFF && bBoxes) {
        CheckBox(hDlg, IDC_DETAIL_MW_OPTION, false);
        EnableControl(hDlg, IDC_DETAIL_MW_OPTION, false);
    }
    CheckOption(hDlg, lpDM,
                {.wFlag = KV_FLAG_OPT,
                 .codes = aMWOptionCodes,
                 .PutBox = PutMWOptionBox,
                 .sCode = rule.sOpt,
                 .bOwn = nMode == MW_OWN_SECOND || nMode == MW_OWN_BOTH,
                 .bLocks = nMode != MW_OWN_SECOND},
                bBoxes);
    const DatHeader *lpHeader = lpInstance->dat.lpDatHeader.get();
    if (lpHeader && lpHeader->wDat2 == 1 && bBoxes)
        ShowWindow(GetDlgItem(hDlg, IDC_DETAIL_MW_OPTION), SW_HIDE);
}

// Left to the user, the option stands only if he could choose it so far.
static void CheckFreeMirror(HWND hDlg, DriverDevMode *lpDM, UIINSTANCE *lpInstance)
{
    const bool bOn = (lpInstance->wFlags & KV_FLAG_MIRROR) &&
                     IsWindowEnabled(GetDlgItem(hDlg, IDC_DETAIL_MIRROR));
    CheckBox(hDlg, IDC_DETAIL_MIRROR, bOn);
    PutFlag(lpDM, lpInstance, KV_FLAG_MIRROR, bOn);
    EnableControl(hDlg, IDC_DETAIL_MIRROR, true);
}

void CheckMirror(HWND hDlg, DriverDevMode *lpDM, int nMode)
{
    UIINSTANCE *lpInstance = GetCB(hDlg)->lpInstance;
    const int16_t sRule = CurrentRule(lpInstance).sMirror;
    if (sRule == RULE_FREE && nMode != 0)
        return CheckFreeMirror(hDlg, lpDM, lpInstance);
    if (sRule != RULE_FREE && sRule != RULE_ON && sRule != RULE_OFF)
        return;
    // Away from its check box an option that the user may choose is dropped.
    PutFlag(lpDM, lpInstance, KV_FLAG_MIRROR, sRule == RULE_ON);
    if (nMode == 0)
        return;
    EnableControl(hDlg, IDC_DETAIL_MIRROR, false);
    CheckBox(hDlg, IDC_DETAIL_MIRROR, sRule == RULE_ON);
}

// ---- HT and all that hangs on the resolution ---------------------------------------------------

bool AllowsHT(const MedResRule &rule, uint8_t bChoice)
{
    static constexpr uint8_t aBits[HT_CHOICES] = {0x08, 0x02, 0x04, 0x01};
    return bChoice < HT_CHOICES && (rule.bHTAllowed & aBits[bChoice]);
}

// The choice itself or what takes its place; where the rule allows neither, it stays.
static uint8_t AllowedHT(const MedResRule &rule, uint8_t bHT)
{
    static constexpr uint8_t aInstead[HT_CHOICES][3] = {{3, 1, 2}, {3, 2, 0}, {3, 1, 0}, {1, 2, 0}};
    if (bHT >= HT_CHOICES || AllowsHT(rule, bHT))
        return bHT;
    for (const uint8_t bInstead : aInstead[bHT])
        if (AllowsHT(rule, bInstead))
            return bInstead;
    return bHT;
}

void CheckDetail(HWND hDlg, DriverDevMode *lpDM)
{
    UIINSTANCE *lpInstance = GetCB(hDlg)->lpInstance;
    const MedResRule rule = CurrentRule(lpInstance);
    lpInstance->bHT = AllowedHT(rule, lpInstance->bHT);
    const struct {
        int16_t sCode;
        WORD wFlag;
    } aOptions[] = {{rule.sMW, KV_FLAG_MW}, {rule.sOpt, KV_FLAG_OPT}, {rule.sHS, KV_FLAG_HS}};
    for (const auto &option : aOptions)
        if (option.sCode == RULE_ON || option.sCode == RULE_OFF)
            lpInstance->wFlags =
                WithBits(lpInstance->wFlags, option.wFlag, option.sCode == RULE_ON);
    lpDM->Settings.wResolution = static_cast<int16_t>(lpInstance->nCurRes);
    lpDM->Settings.bHT = lpInstance->bHT;
    lpDM->Settings.wFlags = lpInstance->wFlags;
}

// ---- the resolution for a choice --------------------------------------------------------------

void remarkmedres(LONG *lpLevel, LONG *lpValue, LONG lLevel, LONG lValue)
{
    if (*lpLevel >= lLevel)
        return;
    *lpLevel = lLevel;
    *lpValue = lValue;
}

void TakeResolution(DriverDevMode *lpDM, UIINSTANCE *lpInstance, LONG lRes)
{
    lpDM->Settings.wResolution = static_cast<int16_t>(lRes);
    lpInstance->nCurRes = lRes;
}

static void TakeMedia(DriverDevMode *lpDM, const UIINSTANCE *lpInstance, LONG lRes)
{
    if (const ResolutionRecord *lpRes = Resolution(lpInstance, lRes))
        lpDM->Settings.wMedia = lpRes->wMedia;
}

// The second MW option is set in the record alone, so that CheckMW, which asks the working state,
// has its say.
static void TakeMatch(DriverDevMode *lpDM, UIINSTANCE *lpInstance, LONG lRes)
{
    TakeResolution(lpDM, lpInstance, lRes);
    if (const ResolutionRecord *lpRes = Resolution(lpInstance, lRes))
        lpDM->Settings.wFlags = WithVariant(lpDM->Settings.wFlags, *lpRes);
    TakeMedia(lpDM, lpInstance, lRes);
}

// The first of both names, else the first of the resolution's name, else the very first.
static void FindResolution(DriverDevMode *lpDM, UIINSTANCE *lpInstance, LPCSTR lpResolution,
                           LPCSTR lpMedia)
{
    LONG lLevel = 0, lRes = 0;
    for (const MedResRule &rule : Rules(lpInstance->dat)) {
        if (rule.sInk != lpInstance->bInk || ResolutionName(lpInstance, rule.sRes) != lpResolution)
            continue;
        remarkmedres(&lLevel, &lRes, 1, rule.sRes);
        if (MediaNameByIndex(lpInstance, rule.sRes) == lpMedia)
            return TakeMatch(lpDM, lpInstance, rule.sRes);
    }
    TakeResolution(lpDM, lpInstance, lRes);
    TakeMedia(lpDM, lpInstance, lRes);
}

// A resolution without a rule is judged by the first rule of all; a model without any leaves HS
// alone.
static MedResRule RuleForHS(const UIINSTANCE *lpInstance)
{
    const auto rules = Rules(lpInstance->dat);
    if (rules.empty() || HasRule(lpInstance->dat, lpInstance->nCurRes, lpInstance->bInk))
        return CurrentRule(lpInstance);
    return rules.front();
}

LONG GetMedRes(HWND hDlg, DriverDevMode *lpDM, UIINSTANCE *lpInstance, LPCSTR lpResolution,
               LPCSTR lpMedia)
{
    FindResolution(lpDM, lpInstance, lpResolution, lpMedia);
    const MedResRule rule = RuleForHS(lpInstance);
    if (rule.sHS == RULE_ON || rule.sHS == RULE_OFF)
        PutFlag(lpDM, lpInstance, KV_FLAG_HS, rule.sHS == RULE_ON);
    CheckMW(hDlg, lpDM, MW_RECORD);
    CheckMirror(hDlg, lpDM, 0);
    // An FD rule of either kind brings HS with it, whatever the rule for HS says.
    if (rule.sFD == RULE_ON || rule.sFD == RULE_OFF)
        PutFlag(lpDM, lpInstance, KV_FLAG_HS, true);
    return lpInstance->nCurRes;
}

// ---- lists of media ---------------------------------------------------------------------------

// The first item behind nAfter that begins with the name, ignoring case.
static LRESULT FindItem(HWND hDlg, int idCombo, const std::string &strName, LRESULT nAfter)
{
    return SendDlgItemMessageA(hDlg, idCombo, CB_FINDSTRING, static_cast<WPARAM>(nAfter),
                               reinterpret_cast<LPARAM>(strName.c_str()));
}

// A longer name that begins alike may come first, so the search goes on once, and once only: of
// three such names one may be listed twice.
static bool IsListed(HWND hDlg, int idCombo, const std::string &strName)
{
    LRESULT nItem = FindItem(hDlg, idCombo, strName, CB_ERR);
    if (nItem != CB_ERR && ItemText(hDlg, idCombo, nItem) != strName)
        nItem = FindItem(hDlg, idCombo, strName, nItem);
    return nItem != CB_ERR && ItemText(hDlg, idCombo, nItem) == strName;
}

// The media of the Automatic settings for the ink, each once. Its number comes from the record,
// its name from the record's resolution.
static LRESULT ListAutomatic(HWND hDlg, const DriverDevMode *lpDM, UIINSTANCE *lpInstance)
{
    EmptyList(hDlg, IDC_MAIN_MEDIA);
    for (uint32_t i = 0; i < lpInstance->dat.nAuto; i++) {
        const SettingsRecord *lpRecord = SettingAt(lpInstance, static_cast<int32_t>(i));
        if (!lpRecord)
            continue;
        const std::string strName = MediaNameByIndex(lpInstance, lpRecord->wResolution);
        if (!IsListed(hDlg, IDC_MAIN_MEDIA, strName) && lpRecord->wInk == lpInstance->bInk)
            AppendItem(hDlg, IDC_MAIN_MEDIA, strName.c_str(), lpRecord->wMedia);
    }
    const SettingsRecord *lpShown =
        lpInstance->nListState == LIST_CUSTOM ? &lpDM->Settings : CurrentSetting(lpInstance);
    const std::string strShown = lpShown ? MediaNameByIndex(lpInstance, lpShown->wResolution) : "";
    return SelectText(hDlg, IDC_MAIN_MEDIA, strShown.c_str());
}

// The media of the predefined settings that have the current one's name and ink.
static LRESULT ListPreset(HWND hDlg, UIINSTANCE *lpInstance)
{
    EmptyList(hDlg, IDC_MAIN_MEDIA);
    const SettingsRecord *lpCurrent = CurrentSetting(lpInstance);
    if (!lpCurrent)
        return CB_ERR;
    for (auto i = static_cast<int32_t>(lpInstance->dat.nAuto); i < FirstUserSlot(lpInstance); i++) {
        const SettingsRecord *lpRecord = SettingAt(lpInstance, i);
        if (lpRecord && lpRecord->wPreset == lpCurrent->wPreset &&
            lpRecord->wInk == lpCurrent->wInk)
            AppendItem(hDlg, IDC_MAIN_MEDIA, MediaName(lpInstance, lpRecord->wMedia).c_str(),
                       lpRecord->wMedia);
    }
    return SelectText(hDlg, IDC_MAIN_MEDIA, MediaName(lpInstance, lpCurrent->wMedia).c_str());
}

// The media of all resolutions of a name for the ink. A name with which a listed one begins counts
// as listed. Whether there is any.
static bool ListMediaOf(HWND hDlg, int idCombo, const UIINSTANCE *lpInstance,
                        const std::string &strResolution)
{
    EmptyList(hDlg, idCombo);
    bool bAny = false;
    for (const MedResRule &rule : Rules(lpInstance->dat)) {
        if (rule.sInk != lpInstance->bInk || ResolutionName(lpInstance, rule.sRes) != strResolution)
            continue;
        const std::string strName = MediaNameByNumber(lpInstance, rule.sRes);
        if (FindItem(hDlg, idCombo, strName, CB_ERR) != CB_ERR)
            continue;
        AppendItem(hDlg, idCombo, strName.c_str(), idCombo == IDC_MAIN_MEDIA ? rule.sRes : 0);
        bAny = true;
    }
    return bAny;
}

static LRESULT SelectMediaOf(HWND hDlg, int idCombo, const UIINSTANCE *lpInstance, int nRes)
{
    const LRESULT nItem = SelectText(hDlg, idCombo, MediaNameByNumber(lpInstance, nRes).c_str());
    return nItem != CB_ERR ? nItem : SendDlgItemMessageA(hDlg, idCombo, CB_SETCURSEL, 0, 0);
}

static bool ListMediaOfCurrent(HWND hDlg, const DriverDevMode *lpDM, UIINSTANCE *lpInstance)
{
    lpInstance->nCurRes = lpDM->Settings.wResolution;
    return ListMediaOf(hDlg, IDC_MAIN_MEDIA, lpInstance,
                       ResolutionName(lpInstance, lpInstance->nCurRes));
}

// A resolution that is none for the ink gives way to the ink's first one. With an ink that no rule
// is for, the list stays empty.
static LRESULT ListCustom(HWND hDlg, DriverDevMode *lpDM, UIINSTANCE *lpInstance)
{
    if (!ListMediaOfCurrent(hDlg, lpDM, lpInstance)) {
        const auto rules = Rules(lpInstance->dat);
        const auto it = std::ranges::find_if(
            rules, [&](const MedResRule &rule) { return rule.sInk == lpInstance->bInk; });
        if (it != rules.end()) {
            TakeResolution(lpDM, lpInstance, it->sRes);
            ListMediaOfCurrent(hDlg, lpDM, lpInstance);
        }
    }
    return SelectMediaOf(hDlg, IDC_MAIN_MEDIA, lpInstance, lpDM->Settings.wResolution);
}

// More Settings may show a resolution that it has not yet made current.
static std::string ShownResolution(HWND hDlg)
{
    const LRESULT nItem = SendDlgItemMessageA(hDlg, IDC_DETAIL_RESOLUTION, CB_GETCURSEL, 0, 0);
    if (nItem != CB_ERR)
        return ItemText(hDlg, IDC_DETAIL_RESOLUTION, nItem);
    char szText[32] = "";
    GetDlgItemTextA(hDlg, IDC_DETAIL_RESOLUTION, szText, sizeof szText);
    return szText;
}

static LRESULT ListDetail(HWND hDlg, const DriverDevMode *lpDM, const UIINSTANCE *lpInstance)
{
    ListMediaOf(hDlg, IDC_DETAIL_MEDIA, lpInstance, ShownResolution(hDlg));
    return SelectMediaOf(hDlg, IDC_DETAIL_MEDIA, lpInstance, lpDM->Settings.wResolution);
}

LRESULT SetPaperKind(HWND hDlg, DriverDevMode *lpDM, int nMode)
{
    UIINSTANCE *lpInstance = GetCB(hDlg)->lpInstance;
    switch (nMode) {
    case MEDIA_AUTOMATIC: return ListAutomatic(hDlg, lpDM, lpInstance);
    case MEDIA_DETAIL: return ListDetail(hDlg, lpDM, lpInstance);
    case MEDIA_PRESET: return ListPreset(hDlg, lpInstance);
    case MEDIA_CUSTOM: return ListCustom(hDlg, lpDM, lpInstance);
    default: return 0;
    }
}
