// Ink and media on the Main page. Each mode has its own way from a choice to the settings that go
// with it.
#include "dialogs/dial_bas.h"
#include "dialogs/helpers.h"
#include "dialogs/rules.h"

// ---- ink --------------------------------------------------------------------------------------

// By the program: the button that a person pressed has checked itself already.
void ShowInk(HWND hDlg, const Ink &ink)
{
    CheckRadioButton(hDlg, IDC_MAIN_COLOR, IDC_MAIN_BLACK, ink.idMainButton);
    BasicCB(hDlg)->lpInstance->idInkBitmap = ink.idPicture;
    RedrawControl(hDlg, IDC_MAIN_INK_PICTURE);
}

// The Automatic record of the ink that is nearest to the current one: same media and level, same
// media, any. The adjustments being edited stay.
static void ChangeInkAutomatic(HWND hDlg, DriverDevMode *lpDM, UIINSTANCE *lpInstance, BYTE bInk)
{
    const auto Find = [&](auto fits) {
        return FindAutomatic(lpInstance, NO_SETTING, [&](const SettingsRecord &record) {
            return record.wInk == bInk && fits(record);
        });
    };
    int32_t nFound = NO_SETTING;
    if (const SettingsRecord *lpCurrent = CurrentSetting(lpInstance)) {
        const auto SameMedia = [&](const SettingsRecord &record) {
            return record.wMedia == lpCurrent->wMedia;
        };
        nFound = Find([&](const SettingsRecord &record) {
            return SameMedia(record) && record.wAutoLevel == lpCurrent->wAutoLevel;
        });
        if (nFound == NO_SETTING)
            nFound = Find(SameMedia);
    }
    if (nFound == NO_SETTING)
        nFound = Find([](const SettingsRecord &) { return true; });
    if (nFound != NO_SETTING)
        MakeCurrent(lpInstance, nFound);
    lpDM->Settings.wIndex = static_cast<uint16_t>(lpInstance->nCurSetting);
    TakeCurrent(lpInstance, Take::Modes);
    CheckTrackbarData(hDlg, lpDM);
    UpdateCurSet(hDlg, lpDM);
    SetModeBitmap(hDlg, lpDM);
    SetPaperKind(hDlg, lpDM, MEDIA_AUTOMATIC);
}

// The same predefined setting in the other ink, also for a saved setting, which still knows the
// preset that it was made from.
static void TakeTwin(HWND hDlg, DriverDevMode *lpDM, UIINSTANCE *lpInstance, int32_t nTwin)
{
    lpInstance->nCurSetting = nTwin;
    lpDM->Settings.wIndex = static_cast<uint16_t>(nTwin);
    TakeCurrent(lpInstance, Take::Modes);
    UpdateCurSet(hDlg, lpDM);
    SetManualData(hDlg, lpDM, FALSE);
    SetPaperKind(hDlg, lpDM, MEDIA_PRESET);
    SetModeBitmap(hDlg, lpDM);
}

// The settings, which have become custom, get HT and options of a predefined setting of the ink.
// Colour takes no more of it than that: Settings stays the old entry, whose ink is black. Black
// takes the whole record. Either copy overwrites the ink code just set. Programs see all of this.
static void TakeBase(DriverDevMode *lpDM, UIINSTANCE *lpInstance, const SettingsRecord &current,
                     BYTE bInk)
{
    if (bInk == 0) {
        PutInk(&lpDM->Settings, 0);
        lpInstance->bInk = 0;
    }
    const auto HasInk = [&](const SettingsRecord &record) { return record.wInk == bInk; };
    const int32_t nAny = FindPreset(lpInstance, NO_SETTING, HasInk);
    const int32_t nBase = FindPreset(lpInstance, nAny, [&](const SettingsRecord &record) {
        return HasInk(record) && record.wMedia == current.wMedia;
    });
    const SettingsRecord *lpBase = SettingAt(lpInstance, nBase);
    if (!lpBase)
        return;
    lpInstance->nCurSetting = nBase;
    if (bInk == 0)
        lpDM->Settings = *lpBase;
    TakeCurrent(lpInstance, Take::Modes);
}

// A twin has the same preset number and media. Without one the settings become custom: they go on
// from the entry, and what it has of the old ink is replaced piece by piece.
static void ChangeInkOfEntry(HWND hDlg, DriverDevMode *lpDM, UIINSTANCE *lpInstance,
                             const SettingsRecord &current, BYTE bInk)
{
    const int32_t nTwin = FindPreset(lpInstance, NO_SETTING, [&](const SettingsRecord &record) {
        return record.wMedia == current.wMedia && record.wPreset == current.wPreset &&
               record.wInk == bInk;
    });
    if (nTwin != NO_SETTING)
        return TakeTwin(hDlg, lpDM, lpInstance, nTwin);
    lpDM->Settings = current;
    lpInstance->nListState = LIST_CUSTOM;
    TakeBase(lpDM, lpInstance, current, bInk);
    lpDM->Settings.wIndex = KV_CUSTOM_SETTINGS;
    UpdateCurSet(hDlg, lpDM);
    SetManualData(hDlg, lpDM, FALSE);
    SetPaperKind(hDlg, lpDM, MEDIA_CUSTOM);
    SetModeBitmap(hDlg, lpDM);
}

// The same resolution and media are looked for in the other ink by the names that the page shows.
// Rule and dot scale are those of the resolution that the ink leaves.
static void ChangeInkCustom(HWND hDlg, DriverDevMode *lpDM, UIINSTANCE *lpInstance, const Ink &ink)
{
    PutInk(&lpDM->Settings, ink.bInk);
    lpInstance->bInk = ink.bInk;
    lpDM->dm.dmColor = ink.dmColor;
    lpDM->Settings.wRule = CurrentRule(lpInstance).wRule;
    if (const ResolutionRecord *lpRes = Resolution(lpInstance, lpInstance->nCurRes))
        lpDM->Settings.wDotScale = lpRes->wDotScale;
    SetModeBitmap(hDlg, lpDM);
    const std::string strResolution = DlgItemText(hDlg, IDC_MAIN_RESOLUTION);
    const std::string strMedia = DlgItemText(hDlg, IDC_MAIN_MEDIA);
    lpInstance->nCurRes =
        GetMedRes(hDlg, lpDM, lpInstance, strResolution.c_str(), strMedia.c_str());
    SetPaperKind(hDlg, lpDM, MEDIA_CUSTOM);
    if (const MediaRecord *lpMedia = MediaOf(lpInstance, lpInstance->nCurRes))
        lpDM->Settings.wMedia = lpMedia->wName;
    CheckDetail(hDlg, lpDM);
    CheckMW(hDlg, lpDM, MW_RECORD);
    UpdateCurSet(hDlg, lpDM);
}

// The ink that is in use already changes nothing, though its button was pressed. Of an entry that
// leads nowhere the record's own settings are worked on, as they are shown.
void ChangeInk(HWND hDlg, DriverDevMode *lpDM, const Ink &ink)
{
    UIINSTANCE *lpInstance = BasicCB(hDlg)->lpInstance;
    if (lpInstance->bInk == ink.bInk)
        return;
    const SettingsRecord *lpCurrent = CurrentSetting(lpInstance);
    ShowInk(hDlg, ink);
    lpDM->Settings.wInkCode = ink.wCode;
    if (lpDM->bAutoMode)
        ChangeInkAutomatic(hDlg, lpDM, lpInstance, ink.bInk);
    else if (IsCustom(lpInstance) || !lpCurrent)
        ChangeInkCustom(hDlg, lpDM, lpInstance, ink);
    else
        ChangeInkOfEntry(hDlg, lpDM, lpInstance, *lpCurrent, ink.bInk);
}

// ---- media ------------------------------------------------------------------------------------

static void TakeMediaRecord(DriverDevMode *lpDM, UIINSTANCE *lpInstance, int32_t nSetting)
{
    lpInstance->nCurSetting = nSetting;
    TakeCurrent(lpInstance, Take::Modes);
    lpDM->Settings.wIndex = static_cast<uint16_t>(nSetting);
}

// The same predefined setting for the media.
static void ChangeMediaOfPreset(DriverDevMode *lpDM, UIINSTANCE *lpInstance, LONG lMedia)
{
    const SettingsRecord *lpCurrent = CurrentSetting(lpInstance);
    if (!lpCurrent)
        return;
    const int32_t nFound =
        FindPreset(lpInstance, lpInstance->nCurSetting, [&](const SettingsRecord &record) {
            return record.wMedia == lMedia && record.wPreset == lpCurrent->wPreset &&
                   record.wInk == lpCurrent->wInk;
        });
    TakeMediaRecord(lpDM, lpInstance, nFound);
}

// The list's data are resolutions here; the rules put the media's number in its place.
static void ChangeMediaCustom(HWND hDlg, DriverDevMode *lpDM, UIINSTANCE *lpInstance, LONG lData)
{
    lpDM->Settings.wMedia = static_cast<int16_t>(lData);
    const std::string strResolution = DlgItemText(hDlg, IDC_MAIN_RESOLUTION);
    const std::string strMedia = DlgItemText(hDlg, IDC_MAIN_MEDIA);
    lpInstance->nCurRes =
        GetMedRes(hDlg, lpDM, lpInstance, strResolution.c_str(), strMedia.c_str());
    CheckDetail(hDlg, lpDM);
}

// The level is not looked at: the first record of the media is taken. Custom settings for which
// Automatic has no record wait for a media here, in the ink that they have.
static void ChangeMediaAutomatic(HWND hDlg, DriverDevMode *lpDM, UIINSTANCE *lpInstance,
                                 LONG lMedia)
{
    const SettingsRecord *lpCurrent = CurrentSetting(lpInstance);
    const int nInk = lpCurrent ? lpCurrent->wInk : lpInstance->bInk;
    const int32_t nFound = FindAutomatic(lpInstance, NO_SETTING, [&](const SettingsRecord &record) {
        return record.wInk == nInk && record.wMedia == lMedia;
    });
    if (nFound != NO_SETTING)
        MakeCurrent(lpInstance, nFound);
    TakeMediaRecord(lpDM, lpInstance, lpInstance->nCurSetting);
    CheckTrackbarData(hDlg, lpDM);
}

// A user's own setting with another media is his no longer.
static void LeaveUserSlot(HWND hDlg, DriverDevMode *lpDM, UIINSTANCE *lpInstance)
{
    lpDM->Settings.wIndex = KV_CUSTOM_SETTINGS;
    lpInstance->nListState = LIST_CUSTOM;
    SetManualData(hDlg, lpDM, FALSE);
}

// The list's data mean what its last filling made them: media numbers, or resolutions for custom
// settings and saved ones. A new resolution may not be mirrored as the old one was.
void ChangeMedia(HWND hDlg, DriverDevMode *lpDM)
{
    UIINSTANCE *lpInstance = BasicCB(hDlg)->lpInstance;
    const LONG lData = SelectedData(hDlg, IDC_MAIN_MEDIA);
    const int32_t nOldRes = lpInstance->nCurRes;
    if (lpDM->bAutoMode)
        ChangeMediaAutomatic(hDlg, lpDM, lpInstance, lData);
    else if (IsCustom(lpInstance) || IsUserSlot(lpInstance))
        ChangeMediaCustom(hDlg, lpDM, lpInstance, lData);
    else
        ChangeMediaOfPreset(lpDM, lpInstance, lData);
    SetModeBitmap(hDlg, lpDM);
    UpdateCurSet(hDlg, lpDM);
    if (lpInstance->nCurRes != nOldRes) {
        CheckMirror(hDlg, lpDM, 0);
        SetModeBitmap(hDlg, lpDM);
    }
    if (!lpDM->bAutoMode && !IsCustom(lpInstance) && IsUserSlot(lpInstance))
        LeaveUserSlot(hDlg, lpDM, lpInstance);
}
