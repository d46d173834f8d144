// What the files of the Main page share. The settings being edited live twice, in the record and in
// the sheet's working state; the page is in one of three states:
//
//   Automatic              bAutoMode, nCurSetting is an Automatic record
//   Advanced, list entry   nListState LIST_ENTRY or LIST_FOUND, nCurSetting is a predefined setting
//                          or a user slot; of the record only Settings.wIndex follows until Apply
//   Advanced, custom       nListState LIST_CUSTOM, Settings of the record is what counts, and its
//                          wIndex is KV_CUSTOM_SETTINGS; nCurSetting is any
//
// A position without a record, from a damaged file or a foreign record, leaves things as they are.
#ifndef KV_DIALOGS_DIAL_BAS_H
#define KV_DIALOGS_DIAL_BAS_H

#include "dialogs/inks.h"
#include "dialogs/settings_table.h"
#include "resources/main_ids.h"
#include "resources/pictures.h"

// ---- the sheet's state, looked at ------------------------------------------------------------

CBSTRUC *BasicCB(HWND hDlg);

inline bool IsCustom(const UIINSTANCE *lpInstance)
{
    return lpInstance->nListState == LIST_CUSTOM;
}
inline bool IsUserSlot(const UIINSTANCE *lpInstance)
{
    return lpInstance->nCurSetting >= FirstUserSlot(lpInstance);
}
// Those of the record when they are custom, else those of the current record of the table.
const SettingsRecord &SettingsInForce(const DriverDevMode *lpDM, UIINSTANCE *lpInstance);
// Of a resolution, by position; null when there is none.
const MediaRecord *MediaOf(const UIINSTANCE *lpInstance, int nRes);

// The first of a part of the settings table that fits, or nElse.
template <class Fits>
int32_t FindSetting(UIINSTANCE *lpInstance, int32_t nFirst, int32_t nEnd, int32_t nElse, Fits fits)
{
    for (int32_t i = nFirst; i < nEnd; i++)
        if (const SettingsRecord *lpRecord = SettingAt(lpInstance, i); lpRecord && fits(*lpRecord))
            return i;
    return nElse;
}
constexpr int32_t NO_SETTING = -1;
template <class Fits>
int32_t FindAutomatic(UIINSTANCE *lpInstance, int32_t nElse, Fits fits)
{
    return FindSetting(lpInstance, 0, static_cast<int32_t>(lpInstance->dat.nAuto), nElse, fits);
}
template <class Fits>
int32_t FindPreset(UIINSTANCE *lpInstance, int32_t nElse, Fits fits)
{
    return FindSetting(lpInstance, static_cast<int32_t>(lpInstance->dat.nAuto),
                       FirstUserSlot(lpInstance), nElse, fits);
}

// An Automatic record that was found. Custom settings end with it.
void MakeCurrent(UIINSTANCE *lpInstance, int32_t nSetting);
// Ink, HT and options of the current record become those being edited; with Whole, the colour
// adjustments too.
enum class Take { Modes, Whole };
void TakeCurrent(UIINSTANCE *lpInstance, Take take);

// ---- ink -------------------------------------------------------------------------------------

void ShowInk(HWND hDlg, const Ink &ink); // its button and its picture

// ---- opening (dial_bas_open.cpp) ---------------------------------------------------------------

// FALSE when a file of the model is of another version: the page then stays as its template is, and
// nothing below may be called for it.
BOOL InitBasicUIDlg(HWND hDlg, DriverDevMode *lpDM);

// ---- modes (dial_bas_mode.cpp) -----------------------------------------------------------------

// What can be used in each mode, and which button is checked.
void ShowAutomatic(HWND hDlg);
void ShowAdvanced(HWND hDlg);
// Trackbar and labels of the current record.
void CheckTrackbarData(HWND hDlg, DriverDevMode *lpDM);
// The trackbar was moved.
void ChangeAutoData(HWND hDlg, DriverDevMode *lpDM, int nLevel);
void SwitchToAutomatic(HWND hDlg, DriverDevMode *lpDM);
void SwitchToAdvanced(HWND hDlg, DriverDevMode *lpDM);

// ---- ink and media (dial_bas_media.cpp) --------------------------------------------------------

void ChangeInk(HWND hDlg, DriverDevMode *lpDM, const Ink &ink);
void ChangeMedia(HWND hDlg, DriverDevMode *lpDM);

// ---- the settings list (dial_bas_list.cpp) -----------------------------------------------------

// Fills the list and selects what is current. bDropDown: the list is being opened.
void SetManualData(HWND hDlg, DriverDevMode *lpDM, BOOL bDropDown);
// The same for the disabled list of Automatic, which shows the label of custom settings.
void SetManualDataCustom(HWND hDlg, DriverDevMode *lpDM);
void OnSettingsList(HWND hDlg, DriverDevMode *lpDM, WORD wCode);

// ---- summary and drawing (dial_bas_draw.cpp) ---------------------------------------------------

// The lines of Current Settings, the ink and dmColor. The result of the last window call.
// Invalidates controls only, never the page: the page calls it whenever it is painted.
BOOL UpdateCurSet(HWND hDlg, DriverDevMode *lpDM);
void SetModeBitmap(HWND hDlg, DriverDevMode *lpDM);
void DrawBasicControl(HWND hDlg, const DRAWITEMSTRUCT &item, const DriverDevMode *lpDM);
void DrawManualPreset(HWND hDlg, const DRAWITEMSTRUCT &item, const DriverDevMode *lpDM);

#endif
