// The Main page's settings list: the predefined settings of the ink, then what the user has saved.
// Item data tell the two apart: a preset's number is below the first user slot's position, a saved
// setting's is its position. The label of custom settings, which has data 0, stands last, and only
// while the list is closed.
#include "dialogs/dial_bas.h"

#include <algorithm>
#include <vector>

#include "dialogs/helpers.h"
#include "dialogs/rules.h"
#include "resources/text_ids.h"

// ---- filling ----------------------------------------------------------------------------------

static LRESULT SelectItem(HWND hDlg, LRESULT nItem)
{
    return SendDlgItemMessageA(hDlg, IDC_MAIN_SETTINGS, CB_SETCURSEL, static_cast<WPARAM>(nItem),
                               0);
}

// Presets are named by the model, for all their records alike.
static std::string PresetName(const UIINSTANCE *lpInstance, int nPreset)
{
    return LoadText(lpInstance->hResLib, PRESET_NAME + static_cast<UINT>(nPreset));
}

// A preset that stands for several media is listed once; the case of letters counts.
static void ListPresets(HWND hDlg, UIINSTANCE *lpInstance)
{
    const int32_t nFirstSlot = FirstUserSlot(lpInstance);
    std::vector<std::string> aNames;
    for (auto i = static_cast<int32_t>(lpInstance->dat.nAuto); i < nFirstSlot; i++) {
        const SettingsRecord *lpRecord = SettingAt(lpInstance, i);
        if (!lpRecord || lpRecord->wInk != lpInstance->bInk || lpRecord->wPreset >= nFirstSlot)
            continue;
        const std::string strName = PresetName(lpInstance, lpRecord->wPreset);
        const auto it = std::ranges::find(aNames, strName);
        if (it == aNames.end()) {
            AppendItem(hDlg, IDC_MAIN_SETTINGS, strName.c_str(), lpRecord->wPreset);
            aNames.push_back(strName);
        } else {
            SendDlgItemMessageA(hDlg, IDC_MAIN_SETTINGS, CB_SETITEMDATA,
                                static_cast<WPARAM>(it - aNames.begin()), lpRecord->wPreset);
        }
    }
}

// The newest is the first slot and the last item.
static void FillList(HWND hDlg, UIINSTANCE *lpInstance)
{
    EmptyList(hDlg, IDC_MAIN_SETTINGS);
    ListPresets(hDlg, lpInstance);
    const auto saved = UserSettings(lpInstance);
    for (size_t k = saved.size(); k-- > 0;)
        AppendItem(hDlg, IDC_MAIN_SETTINGS, SettingName(saved[k]).c_str(),
                   FirstUserSlot(lpInstance) + static_cast<LPARAM>(k));
}

// ---- selecting --------------------------------------------------------------------------------

// Appended for the occasion; the next filling takes it away.
static void SelectCustomLabel(HWND hDlg, const UIINSTANCE *lpInstance)
{
    const std::string strLabel = LoadText(lpInstance->hResLib, PRESET_CUSTOM);
    SelectItem(hDlg, AppendItem(hDlg, IDC_MAIN_SETTINGS, strLabel.c_str(), 0));
}

// A longer name that begins alike, or one that differs in case, may come first. The search goes
// round the list once. Whether there is an item of exactly this text.
static bool SelectExactly(HWND hDlg, const std::string &strName)
{
    LRESULT nLast = CB_ERR;
    for (;;) {
        const LRESULT nItem = SelectText(hDlg, IDC_MAIN_SETTINGS, strName.c_str(), nLast);
        if (nItem <= nLast)
            return false;
        if (ItemText(hDlg, IDC_MAIN_SETTINGS, nItem) == strName)
            return true;
        nLast = nItem;
    }
}

// An Automatic record, or none at all, has no entry; where nothing is current, the first one stands
// for the rest.
static void SelectCurrent(HWND hDlg, UIINSTANCE *lpInstance)
{
    if (lpInstance->nCurSetting == KV_CUSTOM_SETTINGS) {
        SelectItem(hDlg, 0);
        return;
    }
    const SettingsRecord *lpCurrent = CurrentSetting(lpInstance);
    const bool bSaved = IsUserSlot(lpInstance);
    const bool bListed =
        lpCurrent && (bSaved || lpInstance->nCurSetting >= int64_t{lpInstance->dat.nAuto});
    if (bListed && !bSaved)
        lpInstance->nListState = LIST_FOUND;
    const std::string strName = !bListed ? ""
                                : bSaved ? SettingName(*lpCurrent)
                                         : PresetName(lpInstance, lpCurrent->wPreset);
    if (!bListed || !SelectExactly(hDlg, strName))
        SelectCustomLabel(hDlg, lpInstance);
}

// The open list offers entries only, so what has none is shown as the first one meanwhile. Its old
// text is asked for before it is emptied.
void SetManualData(HWND hDlg, DriverDevMode *, BOOL bDropDown)
{
    UIINSTANCE *lpInstance = BasicCB(hDlg)->lpInstance;
    const std::string strOld = DlgItemText(hDlg, IDC_MAIN_SETTINGS);
    FillList(hDlg, lpInstance);
    const bool bShowedLabel = strOld == LoadText(lpInstance->hResLib, PRESET_CUSTOM);
    if (IsCustom(lpInstance) && !bDropDown)
        SelectCustomLabel(hDlg, lpInstance);
    else if (IsCustom(lpInstance) || (bDropDown && bShowedLabel && !IsUserSlot(lpInstance)))
        SelectItem(hDlg, 0);
    else
        SelectCurrent(hDlg, lpInstance);
}

void SetManualDataCustom(HWND hDlg, DriverDevMode *lpDM)
{
    UIINSTANCE *lpInstance = BasicCB(hDlg)->lpInstance;
    const int32_t nListState = lpInstance->nListState;
    lpInstance->nListState = LIST_CUSTOM;
    SetManualData(hDlg, lpDM, FALSE);
    lpInstance->nListState = nListState;
}

// ---- opening and closing ----------------------------------------------------------------------

// Media are listed for what a choice of the item shown would make current. Nothing is current while
// custom settings look for an entry; closing tells by that whether they are to come back.
static void OnDropDown(HWND hDlg, DriverDevMode *lpDM, UIINSTANCE *lpInstance)
{
    lpInstance->bListChanged = FALSE;
    SetManualData(hDlg, lpDM, TRUE);
    const LONG lData = SelectedData(hDlg, IDC_MAIN_SETTINGS);
    if (lData >= FirstUserSlot(lpInstance)) {
        if (const SettingsRecord *lpRecord = SettingAt(lpInstance, lData))
            lpDM->Settings.wResolution = lpRecord->wResolution;
        SetPaperKind(hDlg, lpDM, MEDIA_CUSTOM);
    } else if (IsCustom(lpInstance)) {
        lpInstance->nCurSetting = KV_CUSTOM_SETTINGS;
        SetPaperKind(hDlg, lpDM, MEDIA_CUSTOM);
    } else {
        lpInstance->nListState = LIST_ENTRY;
        SetPaperKind(hDlg, lpDM, MEDIA_PRESET);
    }
}

// After a choice, too, which comes before it. Only custom settings from which nothing was chosen
// become what they were.
static void OnCloseUp(HWND hDlg, DriverDevMode *lpDM, UIINSTANCE *lpInstance)
{
    if (lpInstance->nCurSetting != KV_CUSTOM_SETTINGS)
        lpInstance->nListState = LIST_FOUND;
    if (lpInstance->bListChanged || lpInstance->nListState == LIST_FOUND)
        return;
    lpInstance->nListState = LIST_CUSTOM;
    SetManualData(hDlg, lpDM, FALSE);
    SetPaperKind(hDlg, lpDM, MEDIA_CUSTOM);
    SetModeBitmap(hDlg, lpDM);
}

// ---- choosing ---------------------------------------------------------------------------------

// The record of the preset that fits media and ink, else the first of the preset. Only custom
// settings may take one of the other ink that way.
static void MoveToPreset(const DriverDevMode *lpDM, UIINSTANCE *lpInstance, LONG lPreset)
{
    const bool bCustom = IsCustom(lpInstance);
    const SettingsRecord &now = SettingsInForce(lpDM, lpInstance);
    const int nInk = bCustom ? now.wInk : lpInstance->bInk;
    const int32_t nAny = FindPreset(lpInstance, NO_SETTING, [&](const SettingsRecord &record) {
        return record.wPreset == lPreset && (bCustom || record.wInk == nInk);
    });
    const int32_t nFound = FindPreset(lpInstance, nAny, [&](const SettingsRecord &record) {
        return record.wPreset == lPreset && record.wMedia == now.wMedia && record.wInk == nInk;
    });
    if (const SettingsRecord *lpFound = SettingAt(lpInstance, nFound))
        lpInstance->nCurSetting = lpFound->wIndex;
}

// Comes twice for a choice in the open list, before and after it closes; the second time it finds
// its own work.
static void OnChosen(HWND hDlg, DriverDevMode *lpDM, UIINSTANCE *lpInstance)
{
    const LONG lData = SelectedData(hDlg, IDC_MAIN_SETTINGS);
    const bool bPreset = lData < FirstUserSlot(lpInstance);
    if (bPreset)
        MoveToPreset(lpDM, lpInstance, lData);
    else
        lpInstance->nCurSetting = lData;
    lpDM->Settings.wIndex = static_cast<uint16_t>(lpInstance->nCurSetting);
    TakeCurrent(lpInstance, Take::Whole);
    lpInstance->nListState = LIST_ENTRY;
    SetManualData(hDlg, lpDM, FALSE);
    UpdateCurSet(hDlg, lpDM);
    SetModeBitmap(hDlg, lpDM);
    const SettingsRecord *lpCurrent = CurrentSetting(lpInstance);
    if (!bPreset && lpCurrent)
        lpDM->Settings.wResolution = lpCurrent->wResolution;
    SetPaperKind(hDlg, lpDM, bPreset ? MEDIA_PRESET : MEDIA_CUSTOM);
    lpInstance->bListChanged = TRUE;
}

void OnSettingsList(HWND hDlg, DriverDevMode *lpDM, WORD wCode)
{
    UIINSTANCE *lpInstance = BasicCB(hDlg)->lpInstance;
    switch (wCode) {
    case CBN_DROPDOWN: return OnDropDown(hDlg, lpDM, lpInstance);
    case CBN_CLOSEUP: return OnCloseUp(hDlg, lpDM, lpInstance);
    case CBN_SELENDOK:
    case CBN_SELCHANGE: return OnChosen(hDlg, lpDM, lpInstance);
    default: return;
    }
}
