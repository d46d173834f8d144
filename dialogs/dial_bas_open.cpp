// The Main page's opening: the model's files into the sheet's tables, the record's settings into
// the working state, then the page into the record's mode.
#include "base/module.h"
#include "datafile/files.h"
#include "datafile/tables.h"
#include "dialogs/dial_bas.h"
#include "dialogs/helpers.h"
#include "dialogs/rules.h"
#include "resources/text_ids.h"

// ---- files ------------------------------------------------------------------------------------

// A file that is not there was looked for before the sheet opened, so it is passed over here. One
// that is shorter than it says is none of this version. Whether the page can go on.
static bool CanGoOn(FileState state, LPCSTR lpMessage)
{
    if (state != FileState::OtherVersion && state != FileState::Short)
        return true;
    Notify(lpMessage);
    return false;
}

// lpUserFile gets whether the user's file counts as present. It does when it cannot be opened, too.
static bool LoadTables(const DriverDevMode *lpDM, DatFile *lpBlock, bool *lpUserFile)
{
    const ModelFiles files = FilesOfModel(lpDM);
    if (!CanGoOn(ReadDatTables(files.strDat.c_str(), lpBlock),
                 "Version Error of dat file. Please install again.") ||
        !CanGoOn(ReadCfgTables(files.strCfg.c_str(), lpBlock),
                 "Version Error of cfg file. Please install again."))
        return false;
    const UserFileState state = ReadUserTables(files.strUcf.c_str(), lpBlock);
    if (state == UserFileState::OtherVersion)
        Notify("Version Error of ucf file");
    *lpUserFile = state == UserFileState::Read || state == UserFileState::NotOpened;
    CountSlotsInUse(lpBlock);
    return true;
}

// ---- the record's settings --------------------------------------------------------------------

// The record itself is what is worked on; no record of the table is current.
static void TakeCustom(const DriverDevMode *lpDM, UIINSTANCE *lpInstance)
{
    lpInstance->nListState = LIST_CUSTOM;
    lpInstance->nCurSetting = KV_CUSTOM_SETTINGS;
    TakeRecord(lpInstance, lpDM->Settings);
    TakeAdjustments(lpInstance, lpDM->Settings);
}

// A saved setting that is gone becomes custom while the user has a file, for then he deleted it
// himself. Without a file he has lost it: Automatic, and the result tells to say so. Without any
// table of settings nobody can tell.
static bool TakeSettings(DriverDevMode *lpDM, UIINSTANCE *lpInstance, bool bUserFile)
{
    const bool bSaved = lpInstance->dat.nSettings > 0 &&
                        lpDM->Settings.wIndex != KV_CUSTOM_SETTINGS &&
                        lpDM->Settings.wIndex >= FirstUserSlot(lpInstance);
    if (bSaved && bUserFile && lpInstance->dat.nUserUsed == 0)
        lpDM->Settings.wIndex = KV_CUSTOM_SETTINGS;
    if (lpDM->Settings.wIndex == KV_CUSTOM_SETTINGS) {
        TakeCustom(lpDM, lpInstance);
        return false;
    }
    const bool bLost = bSaved && !bUserFile;
    if (bLost) {
        lpDM->Settings.wIndex = 0;
        lpDM->bAutoMode = TRUE;
    }
    lpInstance->nListState = LIST_ENTRY;
    lpInstance->nCurSetting = lpDM->Settings.wIndex;
    // One that leads nowhere is left as it is; what is shown and worked on is the record's then.
    const SettingsRecord &now = SettingsInForce(lpDM, lpInstance);
    TakeRecord(lpInstance, now);
    TakeAdjustments(lpInstance, now);
    return bLost;
}

// ---- the page ---------------------------------------------------------------------------------

// No template has the common control: the page's own placeholder, which is hidden, says where it
// lies, in every language.
static void MakeTrackbar(HWND hDlg)
{
    RECT rcPage{}, rc{};
    GetWindowRect(hDlg, &rcPage);
    GetWindowRect(GetDlgItem(hDlg, IDC_MAIN_LEVEL_PLACE), &rc);
    CreateSlideTrackBar(hDlg, rc.left - rcPage.left, rc.top - rcPage.top, rc.right - rc.left,
                        rc.bottom - rc.top, IDC_MAIN_LEVEL);
}

// The settings list, which is disabled, says that Automatic is none of its entries.
static void OpenAutomatic(HWND hDlg, DriverDevMode *lpDM, UIINSTANCE *lpInstance)
{
    ShowAutomatic(hDlg);
    CheckTrackbarData(hDlg, lpDM);
    SetPaperKind(hDlg, lpDM, MEDIA_AUTOMATIC);
    lpInstance->bAdvancedVisited = FALSE;
    SetManualDataCustom(hDlg, lpDM);
}

// A saved setting is shown like custom settings, by its resolution: its media need not be one of a
// predefined setting.
static void OpenAdvanced(HWND hDlg, DriverDevMode *lpDM, UIINSTANCE *lpInstance)
{
    ShowAdvanced(hDlg);
    SetManualData(hDlg, lpDM, FALSE);
    const bool bPreset = !IsCustom(lpInstance) && !IsUserSlot(lpInstance);
    SetPaperKind(hDlg, lpDM, bPreset ? MEDIA_PRESET : MEDIA_CUSTOM);
    lpInstance->bAdvancedVisited = TRUE;
}

// The message about a lost setting comes when the page shows what took its place.
BOOL InitBasicUIDlg(HWND hDlg, DriverDevMode *lpDM)
{
    UIINSTANCE *lpInstance = BasicCB(hDlg)->lpInstance;
    bool bUserFile = false;
    if (!LoadTables(lpDM, &lpInstance->dat, &bUserFile))
        return FALSE;
    const bool bLost = TakeSettings(lpDM, lpInstance, bUserFile);
    MakeTrackbar(hDlg);
    if (lpDM->bAutoMode)
        OpenAutomatic(hDlg, lpDM, lpInstance);
    else
        OpenAdvanced(hDlg, lpDM, lpInstance);
    SetModeBitmap(hDlg, lpDM);
    if (bLost)
        AskUser(hDlg, lpInstance->hResLib, TEXT_SETTING_LOST, CAPTION_SETTING_LOST, MB_OK);
    return TRUE;
}
