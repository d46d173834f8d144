// Save Settings: keeps the settings being edited under a name, or throws such a setting away. The
// user's slots stay packed, the newest first, and the user's file follows every change.
#include <algorithm>
#include <cstring>

#include "datafile/writer.h"
#include "dialogs/helpers.h"
#include "dialogs/pages.h"
#include "dialogs/settings_table.h"
#include "resources/save_ids.h"
#include "resources/text_ids.h"

static constexpr size_t NAME_SIZE = sizeof(SettingsRecord::szName);

static CBSTRUC *GetCB(HWND hDlg)
{
    return RequireCB(hDlg, "dial_bas");
}

// ---- opening --------------------------------------------------------------------------------

static void EnableButtons(HWND hDlg, std::initializer_list<int> aButtons, bool bEnable)
{
    for (const int id : aButtons)
        EnableControl(hDlg, id, bEnable);
}

static INT_PTR OnInitDialog(HWND hDlg, LPARAM lParam)
{
    SetCB(hDlg, reinterpret_cast<CBSTRUC *>(lParam));
    const CBSTRUC *lpcbstruc = GetCB(hDlg);
    UIINSTANCE *lpInstance = lpcbstruc->lpInstance;
    lpInstance->nSavedSetting = lpInstance->nCurSetting;
    // What is saved is always the record's settings.
    const SettingsRecord *lpCurrent = CurrentSetting(lpInstance);
    if (lpInstance->nListState != LIST_CUSTOM && lpCurrent)
        lpcbstruc->lpDevMode->Settings = *lpCurrent;
    LPARAM nSlot = FirstUserSlot(lpInstance);
    for (const SettingsRecord &record : UserSettings(lpInstance))
        AppendListItem(hDlg, IDC_SAVE_LIST, SettingName(record).c_str(), nSlot++);
    EnableButtons(hDlg, {IDC_SAVE_SAVE, IDC_SAVE_DELETE}, false);
    return TRUE;
}

// ---- the name -------------------------------------------------------------------------------

// The setting of a name; null when there is none.
static SettingsRecord *FindSetting(UIINSTANCE *lpInstance, const std::string &strName)
{
    const auto used = UserSettings(lpInstance);
    const auto it = std::ranges::find(used, strName, SettingName);
    return it == used.end() ? nullptr : &*it;
}

// Names that the Main page's list needs for something else.
static bool IsReserved(const UIINSTANCE *lpInstance, const std::string &strName)
{
    for (uint32_t k = 0; k < lpInstance->dat.nPreset; k++)
        if (strName == LoadText(lpInstance->hResLib, PRESET_NAME + k))
            return true;
    return strName == LoadText(lpInstance->hResLib, PRESET_CUSTOM);
}

static INT_PTR OnNameTyped(HWND hDlg)
{
    UIINSTANCE *lpInstance = GetCB(hDlg)->lpInstance;
    std::string strName = DlgItemText(hDlg, IDC_SAVE_NAME);
    if (IsBlank(strName) || IsReserved(lpInstance, strName)) {
        EnableButtons(hDlg, {IDC_SAVE_SAVE, IDC_SAVE_DELETE}, false);
        return TRUE;
    }
    EnableButtons(hDlg, {IDC_SAVE_SAVE}, true);
    // Putting the cut name back comes here once more, where what is left of it may prove to be
    // one that cannot be saved. Where the cut has split a character of another code page, the
    // field shows something else for its half, but never a longer name, so that this ends.
    if (CutName(&strName, NAME_SIZE))
        PutCutName(hDlg, IDC_SAVE_NAME, strName);
    EnableButtons(hDlg, {IDC_SAVE_DELETE}, FindSetting(lpInstance, strName) != nullptr);
    return TRUE;
}

static INT_PTR OnNamePicked(HWND hDlg)
{
    UIINSTANCE *lpInstance = GetCB(hDlg)->lpInstance;
    const LONG nPicked = SelectedListData(hDlg, IDC_SAVE_LIST) - FirstUserSlot(lpInstance);
    const auto used = UserSettings(lpInstance);
    if (nPicked < 0 || static_cast<size_t>(nPicked) >= used.size())
        return TRUE;
    SetDlgItemTextA(hDlg, IDC_SAVE_NAME, SettingName(used[static_cast<size_t>(nPicked)]).c_str());
    EnableButtons(hDlg, {IDC_SAVE_DELETE}, true);
    return TRUE;
}

static std::string TypedName(HWND hDlg)
{
    std::string strName = DlgItemText(hDlg, IDC_SAVE_NAME);
    CutName(&strName, NAME_SIZE);
    return strName;
}

// ---- moving slots ---------------------------------------------------------------------------

static int32_t SlotNumber(UIINSTANCE *lpInstance, const SettingsRecord *lpSlot)
{
    return static_cast<int32_t>(lpSlot - lpInstance->dat.lpSettings.data());
}

static void NumberSlots(UIINSTANCE *lpInstance, std::span<SettingsRecord> slots)
{
    for (SettingsRecord &slot : slots)
        slot.wIndex = static_cast<uint16_t>(SlotNumber(lpInstance, &slot));
}

// The first slot, with all those in use moved one place up. There must be a free one.
static SettingsRecord *MakeRoomInFront(UIINSTANCE *lpInstance)
{
    lpInstance->dat.nUserUsed++;
    const auto used = UserSettings(lpInstance);
    std::move_backward(used.begin(), used.end() - 1, used.end());
    NumberSlots(lpInstance, used.subspan(1));
    return &used.front();
}

// Closes the gap. What was the last one's keeps its bytes, but for the state.
static void RemoveSlot(UIINSTANCE *lpInstance, SettingsRecord *lpSlot)
{
    const auto used = UserSettings(lpInstance);
    const auto later = used.subspan(static_cast<size_t>(lpSlot - used.data()));
    std::move(later.begin() + 1, later.end(), later.begin());
    NumberSlots(lpInstance, later.first(later.size() - 1));
    used.back().wState = STATE_FREE;
    lpInstance->dat.nUserUsed--;
}

// ---- Save -----------------------------------------------------------------------------------

static void FillSlot(const CBSTRUC *lpcbstruc, SettingsRecord *lpSlot, const std::string &strName)
{
    UIINSTANCE *lpInstance = lpcbstruc->lpInstance;
    *lpSlot = lpcbstruc->lpDevMode->Settings;
    std::memset(lpSlot->szName, 0, NAME_SIZE);
    strName.copy(lpSlot->szName, NAME_SIZE);
    lpSlot->wState = STATE_IN_USE;
    NumberSlots(lpInstance, {lpSlot, 1});
    PutAdjustments(lpInstance, lpSlot);
}

// A full table takes no setting, not even one that would replace another.
static INT_PTR OnSave(HWND hDlg)
{
    const CBSTRUC *lpcbstruc = GetCB(hDlg);
    UIINSTANCE *lpInstance = lpcbstruc->lpInstance;
    if (UserSettings(lpInstance).size() >= UserSlots(lpInstance).size()) {
        AskUser(hDlg, lpInstance->hResLib, TEXT_SLOTS_FULL, CAPTION_SLOTS_FULL, MB_OK);
        EndDialog(hDlg, FALSE);
        return TRUE;
    }
    const std::string strName = TypedName(hDlg);
    SettingsRecord *lpSlot = FindSetting(lpInstance, strName);
    if (lpSlot &&
        AskUser(hDlg, lpInstance->hResLib, TEXT_REPLACE, CAPTION_REPLACE, MB_OKCANCEL) != IDOK)
        return TRUE;
    if (!lpSlot)
        lpSlot = MakeRoomInFront(lpInstance);
    FillSlot(lpcbstruc, lpSlot, strName);
    lpInstance->nCurSetting = SlotNumber(lpInstance, lpSlot);
    WriteUcfFile(lpcbstruc->lpDevMode, lpInstance);
    lpInstance->nListState = LIST_ENTRY;
    EndDialog(hDlg, TRUE);
    return TRUE;
}

// ---- Delete and Cancel ------------------------------------------------------------------------

static INT_PTR OnCancel(HWND hDlg)
{
    UIINSTANCE *lpInstance = GetCB(hDlg)->lpInstance;
    lpInstance->nCurSetting = lpInstance->nSavedSetting;
    EndDialog(hDlg, FALSE);
    return TRUE;
}

// What stands is followed after a slot has gone: the settings are those of the slot no more, or its
// number is another one. Whether the current one has gone.
static bool FollowDeletion(const CBSTRUC *lpcbstruc, int32_t nDeleted)
{
    UIINSTANCE *lpInstance = lpcbstruc->lpInstance;
    if (nDeleted == lpInstance->nCurSetting) {
        lpInstance->nListState = LIST_CUSTOM;
        lpInstance->nCurSetting = KV_CUSTOM_SETTINGS;
        lpcbstruc->lpDevMode->Settings.wIndex = KV_CUSTOM_SETTINGS;
        return true;
    }
    if (lpInstance->nCurSetting != KV_CUSTOM_SETTINGS && nDeleted < lpInstance->nCurSetting)
        lpInstance->nCurSetting--;
    return false;
}

static INT_PTR OnDelete(HWND hDlg)
{
    const CBSTRUC *lpcbstruc = GetCB(hDlg);
    UIINSTANCE *lpInstance = lpcbstruc->lpInstance;
    if (AskUser(hDlg, lpInstance->hResLib, TEXT_DELETE, CAPTION_DELETE, MB_OKCANCEL) != IDOK)
        return OnCancel(hDlg);
    SettingsRecord *lpSlot = FindSetting(lpInstance, TypedName(hDlg));
    if (!lpSlot)
        return TRUE;
    const int32_t nDeleted = SlotNumber(lpInstance, lpSlot);
    RemoveSlot(lpInstance, lpSlot);
    WriteUcfFile(lpcbstruc->lpDevMode, lpInstance);
    EndDialog(hDlg, FollowDeletion(lpcbstruc, nDeleted));
    return TRUE;
}

// ---- the dialog -----------------------------------------------------------------------------

static INT_PTR OnCommand(HWND hDlg, WPARAM wParam)
{
    switch (LOWORD(wParam)) {
    case IDC_SAVE_NAME: return HIWORD(wParam) == EN_CHANGE ? OnNameTyped(hDlg) : FALSE;
    case IDC_SAVE_LIST: return HIWORD(wParam) == LBN_SELCHANGE ? OnNamePicked(hDlg) : FALSE;
    case IDC_SAVE_SAVE: return OnSave(hDlg);
    case IDC_SAVE_DELETE: return OnDelete(hDlg);
    case IDCANCEL: return OnCancel(hDlg);
    default: return FALSE;
    }
}

INT_PTR CALLBACK SaveDlgProc(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    if (uMsg == WM_INITDIALOG)
        return OnInitDialog(hDlg, lParam);
    return uMsg == WM_COMMAND && FindCB(hDlg) ? OnCommand(hDlg, wParam) : FALSE;
}
