// The Main page's two modes: Automatic with its trackbar, Advanced with its list, and the ways
// between them.
#include "dialogs/dial_bas.h"
#include "dialogs/helpers.h"
#include "dialogs/rules.h"
#include "resources/text_ids.h"

static constexpr int aAdvancedControls[] = {IDC_MAIN_SETTINGS, IDC_MAIN_MORE, IDC_MAIN_SAVE};
static constexpr int aLevelControls[] = {IDC_MAIN_LEVEL, IDC_MAIN_LEVEL_LEFT, IDC_MAIN_LEVEL_RIGHT};

static constexpr int LEAST_LEVEL = 1, MOST_LEVEL = 2;

// ---- what can be used -------------------------------------------------------------------------

// In Automatic these are seen but of no use.
static void EnableAdvanced(HWND hDlg, bool bEnable)
{
    for (const int id : aAdvancedControls)
        EnableControl(hDlg, id, bEnable);
}

// A label without its trackbar would mean nothing: the three come and go together.
static void ShowLevel(HWND hDlg, bool bShow)
{
    for (const int id : aLevelControls)
        ShowWindow(GetDlgItem(hDlg, id), bShow ? SW_SHOW : SW_HIDE);
}

// Whether the trackbar is seen its record decides.
void ShowAutomatic(HWND hDlg)
{
    CheckRadioButton(hDlg, IDC_MAIN_AUTOMATIC, IDC_MAIN_ADVANCED, IDC_MAIN_AUTOMATIC);
    EnableAdvanced(hDlg, false);
    for (const int id : aLevelControls)
        EnableControl(hDlg, id, true);
}

void ShowAdvanced(HWND hDlg)
{
    CheckRadioButton(hDlg, IDC_MAIN_AUTOMATIC, IDC_MAIN_ADVANCED, IDC_MAIN_ADVANCED);
    EnableAdvanced(hDlg, true);
    ShowLevel(hDlg, false);
}

// ---- the trackbar -----------------------------------------------------------------------------

// A pair of labels has one number; a negative one names none.
static void SetLevelLabels(HWND hDlg, HMODULE hResLib, int nPair)
{
    const auto Text = [&](UINT idFirst) {
        return nPair < 0 ? std::string() : LoadText(hResLib, idFirst + static_cast<UINT>(nPair));
    };
    SetDlgItemTextA(hDlg, IDC_MAIN_LEVEL_LEFT, Text(LEVEL_LEFT).c_str());
    SetDlgItemTextA(hDlg, IDC_MAIN_LEVEL_RIGHT, Text(LEVEL_RIGHT).c_str());
}

// Level 0 says that a media and ink know one quality only, so there is nothing to slide.
void CheckTrackbarData(HWND hDlg, DriverDevMode *)
{
    UIINSTANCE *lpInstance = BasicCB(hDlg)->lpInstance;
    const SettingsRecord *lpCurrent = CurrentSetting(lpInstance);
    if (!lpCurrent)
        return ShowLevel(hDlg, false);
    SendDlgItemMessageA(hDlg, IDC_MAIN_LEVEL, TBM_SETRANGE, TRUE,
                        MAKELONG(LEAST_LEVEL, MOST_LEVEL));
    SendDlgItemMessageA(hDlg, IDC_MAIN_LEVEL, TBM_SETPAGESIZE, 0, 1);
    SendDlgItemMessageA(hDlg, IDC_MAIN_LEVEL, TBM_SETPOS, TRUE, lpCurrent->wAutoLevel);
    SetLevelLabels(hDlg, lpInstance->hResLib, lpCurrent->wAutoLabel);
    ShowLevel(hDlg, lpCurrent->wAutoLevel != 0);
}

// The adjustments being edited and the list of media stay.
void ChangeAutoData(HWND hDlg, DriverDevMode *lpDM, int nLevel)
{
    UIINSTANCE *lpInstance = BasicCB(hDlg)->lpInstance;
    const SettingsRecord *lpCurrent = CurrentSetting(lpInstance);
    if (!lpCurrent)
        return;
    const int32_t nFound = FindAutomatic(lpInstance, NO_SETTING, [&](const SettingsRecord &record) {
        return record.wMedia == lpCurrent->wMedia && record.wAutoLevel == nLevel &&
               record.wInk == lpCurrent->wInk;
    });
    if (const SettingsRecord *lpFound = SettingAt(lpInstance, nFound)) {
        lpInstance->nCurSetting = lpFound->wIndex;
        TakeRecord(lpInstance, *lpFound);
    }
    if (const SettingsRecord *lpNow = CurrentSetting(lpInstance))
        SetLevelLabels(hDlg, lpInstance->hResLib, lpNow->wAutoLabel);
    UpdateCurSet(hDlg, lpDM);
}

// ---- the way to Automatic ---------------------------------------------------------------------

// The first Automatic record for a media and the ink being edited.
static int32_t AutomaticFor(UIINSTANCE *lpInstance, int nMedia)
{
    return FindAutomatic(lpInstance, NO_SETTING, [&](const SettingsRecord &record) {
        return record.wMedia == nMedia && record.wInk == lpInstance->bInk;
    });
}

// The Automatic record nearest to what is current, if there is one. Custom settings are asked for
// the media of their resolution; what they say themselves is not looked at.
static void MoveToAutomatic(UIINSTANCE *lpInstance)
{
    int32_t nFound = NO_SETTING;
    if (IsCustom(lpInstance)) {
        if (const ResolutionRecord *lpRes = Resolution(lpInstance, lpInstance->nCurRes))
            nFound = AutomaticFor(lpInstance, lpRes->wMedia);
    } else if (lpInstance->nCurSetting >= static_cast<int32_t>(lpInstance->dat.nAuto)) {
        if (const SettingsRecord *lpCurrent = CurrentSetting(lpInstance))
            nFound = AutomaticFor(lpInstance, lpCurrent->wMedia);
    }
    if (nFound != NO_SETTING)
        MakeCurrent(lpInstance, nFound);
}

// Pressed again it does nothing, so that what was chosen in Automatic stays. Where no Automatic
// record fits, the old one stays current under the other mode.
void SwitchToAutomatic(HWND hDlg, DriverDevMode *lpDM)
{
    UIINSTANCE *lpInstance = BasicCB(hDlg)->lpInstance;
    if (lpDM->bAutoMode == TRUE)
        return;
    lpInstance->bAdvancedVisited = FALSE;
    ShowAutomatic(hDlg);
    MoveToAutomatic(lpInstance);
    TakeCurrent(lpInstance, Take::Whole);
    UpdateCurSet(hDlg, lpDM);
    CheckTrackbarData(hDlg, lpDM);
    SetManualDataCustom(hDlg, lpDM);
    SetPaperKind(hDlg, lpDM, MEDIA_AUTOMATIC);
    lpInstance->nListState = LIST_ENTRY;
    lpDM->bAutoMode = TRUE;
    SetModeBitmap(hDlg, lpDM);
}

// ---- the way to Advanced ----------------------------------------------------------------------

// The Automatic record becomes custom settings, to go on from.
void SwitchToAdvanced(HWND hDlg, DriverDevMode *lpDM)
{
    UIINSTANCE *lpInstance = BasicCB(hDlg)->lpInstance;
    if (lpDM->bAutoMode == FALSE)
        return;
    ShowAdvanced(hDlg);
    if (!lpInstance->bAdvancedVisited) {
        if (const SettingsRecord *lpCurrent = CurrentSetting(lpInstance))
            lpDM->Settings = *lpCurrent;
        lpDM->Settings.wIndex = KV_CUSTOM_SETTINGS;
        lpInstance->nListState = LIST_CUSTOM;
    }
    SetManualData(hDlg, lpDM, FALSE);
    SetPaperKind(hDlg, lpDM, MEDIA_CUSTOM);
    lpInstance->bAdvancedVisited = TRUE;
    lpDM->bAutoMode = FALSE;
    SetModeBitmap(hDlg, lpDM);
}
