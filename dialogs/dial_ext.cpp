// The More Settings dialog: every setting of the print mode one by one. It edits the sheet's record
// and working state in place and keeps copies of both, which Cancel puts back.
#include "dialogs/dial_ext.h"

#include <algorithm>

#include "base/text.h"
#include "dialogs/helpers.h"
#include "dialogs/inks.h"
#include "dialogs/pages.h"
#include "dialogs/rules.h"
#include "dialogs/settings_table.h"
#include "resources/detail_ids.h"

CBSTRUC *GetDetailCB(HWND hDlg)
{
    return RequireCB(hDlg, "dial_ext");
}

// ---- opening --------------------------------------------------------------------------------

// The colour group as the record's ink and intent want it. A record whose b16 isn't 0 keeps what
// it can adjust, unless the ink or the intent takes it away.
static void FillBalance(HWND hDlg, DriverDevMode *lpDM)
{
    UIINSTANCE *lpInstance = GetDetailCB(hDlg)->lpInstance;
    if (lpDM->Settings.b16 == 0) {
        lpInstance->nIntent = lpDM->Settings.bIntent;
        EnableColBalance(hDlg, BALANCE_ALL, lpDM);
    }
    if (lpInstance->bInk == 1 && lpDM->Settings.bIntent == INTENT_NONE)
        EnableColBalance(hDlg, BALANCE_NONE, lpDM);
    if (lpInstance->bInk == 0)
        EnableColBalance(hDlg, BALANCE_BLACK, lpDM);
}

// The order counts: the list of media reads the resolution shown, the mirror box counts only while
// it is enabled, and the rows write to trackbars that are made here. The MW boxes come last, when
// the HS rule has said which flags are the user's.
static void UpdateDetail(HWND hDlg, DriverDevMode *lpDM)
{
    SetResData(hDlg, lpDM);
    SetPaperKind(hDlg, lpDM, MEDIA_DETAIL);
    FillInkOption(hDlg, lpDM);
    SetHTData(hDlg, lpDM);
    CheckHS(hDlg, lpDM, true);
    EnableControl(hDlg, IDC_DETAIL_MIRROR, true);
    CheckMirror(hDlg, lpDM, 1);
    CheckFD(hDlg, lpDM);
    CheckKRJNL(hDlg, lpDM);
    CreateTrackbars(hDlg);
    FillRows(hDlg);
    SetIntent(hDlg, lpDM);
    FillBalance(hDlg, lpDM);
    CheckMW(hDlg, lpDM, MW_OWN_BOTH);
}

// What Cancel puts back, beside the record.
static void KeepWorkingState(UIINSTANCE *lpInstance)
{
    lpInstance->bSavedInk = lpInstance->bInk;
    lpInstance->bSavedHT = lpInstance->bHT;
    lpInstance->wSavedFlags = lpInstance->wFlags;
    lpInstance->wSavedFlags3 = lpInstance->wFlags3;
    lpInstance->nSavedListState = lpInstance->nListState;
    std::ranges::copy(lpInstance->nAdjust, lpInstance->nSavedAdjust);
}

// An entry of the settings table becomes custom settings that begin as the entry is.
static void InitDetailDlg(HWND hDlg, DriverDevMode *lpDM)
{
    CBSTRUC *lpcbstruc = GetDetailCB(hDlg);
    UIINSTANCE *lpInstance = lpcbstruc->lpInstance;
    KVMemcpy(lpcbstruc->lpSaveDevMode, lpDM, sizeof *lpDM);
    KeepWorkingState(lpInstance);
    if (lpInstance->nListState != LIST_CUSTOM) {
        if (const SettingsRecord *lpEntry = CurrentSetting(lpInstance))
            lpDM->Settings = *lpEntry;
        lpInstance->nListState = LIST_CUSTOM;
    }
    lpInstance->nCurRes = lpDM->Settings.wResolution;
    UpdateDetail(hDlg, lpDM);
}

// Without memory for the copy nothing could be undone: the dialog ends as if cancelled.
static INT_PTR OnInitDialog(HWND hDlg, LPARAM lParam)
{
    auto *lpcbstruc = reinterpret_cast<CBSTRUC *>(lParam);
    SetCB(hDlg, lpcbstruc);
    HGLOBAL hSave = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DriverDevMode));
    lpcbstruc->lpSaveDevMode = static_cast<DriverDevMode *>(hSave ? GlobalLock(hSave) : nullptr);
    if (lpcbstruc->lpSaveDevMode)
        InitDetailDlg(hDlg, lpcbstruc->lpDevMode);
    else
        EndDialog(hDlg, 0);
    return FALSE;
}

// ---- ink ------------------------------------------------------------------------------------

// The record is custom from here on with this ink; a resolution that doesn't take it is left for
// one of the same name, and the HT choices follow the resolution.
static void TakeInk(HWND hDlg, CBSTRUC *lpcbstruc, const Ink &ink)
{
    DriverDevMode *lpDM = lpcbstruc->lpDevMode;
    CheckRadioButton(hDlg, IDC_DETAIL_BLACK, IDC_DETAIL_COLOR, ink.idDetailButton);
    PutInk(&lpDM->Settings, ink.bInk);
    lpcbstruc->lpInstance->bInk = ink.bInk;
    lpDM->dm.dmColor = ink.dmColor;
    lpDM->Settings.wInkCode = ink.wCode;
    ReselectResolution(hDlg, lpDM);
    SetHTData(hDlg, lpDM);
    SetHTBmp(hDlg, lpDM);
    lpcbstruc->lpInstance->idDetailInkBitmap = ink.idPicture;
    RedrawControl(hDlg, IDC_DETAIL_INK_PICTURE);
}

// The options, media and intents of the resolution that the ink has led to.
static void FillAfterInk(HWND hDlg, DriverDevMode *lpDM)
{
    CheckMW(hDlg, lpDM, MW_DIALOG);
    SetPaperKind(hDlg, lpDM, MEDIA_DETAIL);
    SetIntent(hDlg, lpDM);
}

static void OnBlack(HWND hDlg, CBSTRUC *lpcbstruc)
{
    if (lpcbstruc->lpInstance->bInk == inkBlack.bInk)
        return;
    DriverDevMode *lpDM = lpcbstruc->lpDevMode;
    TakeInk(hDlg, lpcbstruc, inkBlack);
    FillInkOption(hDlg, lpDM);
    EnableColBalance(hDlg, BALANCE_BLACK, lpDM);
    FillAfterInk(hDlg, lpDM);
}

static int BalanceOf(const DriverDevMode *lpDM)
{
    return lpDM->Settings.bIntent == INTENT_NONE ? BALANCE_NONE : BALANCE_ALL;
}

// Once disabled, the button for the media code stays so: it is for black ink and for the last HT
// choice.
static void OnColor(HWND hDlg, CBSTRUC *lpcbstruc)
{
    constexpr BYTE HT_LAST = 3;
    if (lpcbstruc->lpInstance->bInk == inkColor.bInk)
        return;
    DriverDevMode *lpDM = lpcbstruc->lpDevMode;
    TakeInk(hDlg, lpcbstruc, inkColor);
    EnableColBalance(hDlg, BalanceOf(lpDM), lpDM);
    if (lpcbstruc->lpInstance->bHT != HT_LAST)
        EnableControl(hDlg, IDC_DETAIL_MEDIA_CODE, false);
    FillInkOption(hDlg, lpDM);
    FillAfterInk(hDlg, lpDM);
}

// ---- resolution and media -------------------------------------------------------------------

static void OnResolution(HWND hDlg, CBSTRUC *lpcbstruc)
{
    ChooseResolution(hDlg, lpcbstruc->lpDevMode, IDC_DETAIL_RESOLUTION);
}

static void OnMedia(HWND hDlg, CBSTRUC *lpcbstruc)
{
    ChooseResolution(hDlg, lpcbstruc->lpDevMode, IDC_DETAIL_MEDIA);
}

static void OnMediaCode(HWND, CBSTRUC *lpcbstruc)
{
    const UIINSTANCE *lpInstance = lpcbstruc->lpInstance;
    const ResolutionRecord *lpRes = Resolution(lpInstance, lpInstance->nCurRes);
    const MediaRecord *lpMedia =
        lpRes ? RecordAt(lpInstance->dat.lpMedia, lpInstance->dat.nMedia, lpRes->wMedia) : nullptr;
    if (lpMedia)
        lpcbstruc->lpDevMode->lMediaCode = lpMedia->wCode;
}

// ---- options --------------------------------------------------------------------------------

static bool IsChecked(HWND hDlg, int id)
{
    return IsDlgButtonChecked(hDlg, id) == BST_CHECKED;
}

// The box's state becomes the record's option. The working flags become the record's as a whole.
static void TakeFlag(CBSTRUC *lpcbstruc, WORD wFlag, bool bOn)
{
    DriverDevMode *lpDM = lpcbstruc->lpDevMode;
    lpDM->Settings.wFlags = WithBits(lpDM->Settings.wFlags, wFlag, bOn);
    lpcbstruc->lpInstance->wFlags = lpDM->Settings.wFlags;
}

// An MW option is kept in a second flag word as well.
static void TakeMWFlag(CBSTRUC *lpcbstruc, WORD wFlag, bool bOn)
{
    DriverDevMode *lpDM = lpcbstruc->lpDevMode;
    lpDM->Settings.wFlags2 = WithBits(lpDM->Settings.wFlags2, wFlag, bOn);
    TakeFlag(lpcbstruc, wFlag, bOn);
}

// The second option needs the first one. The rules that follow a click may give it back to the
// user, so it is taken away once more when they leave the first one off.
static void OnMW(HWND hDlg, CBSTRUC *lpcbstruc)
{
    const bool bOn = IsChecked(hDlg, IDC_DETAIL_MW);
    TakeMWFlag(lpcbstruc, KV_FLAG_MW, bOn);
    EnableControl(hDlg, IDC_DETAIL_MW_OPTION, bOn);
    CheckMW(hDlg, lpcbstruc->lpDevMode, MW_OWN_FIRST);
    if (!IsChecked(hDlg, IDC_DETAIL_MW))
        EnableControl(hDlg, IDC_DETAIL_MW_OPTION, false);
}

static void OnMWOption(HWND hDlg, CBSTRUC *lpcbstruc)
{
    TakeMWFlag(lpcbstruc, KV_FLAG_OPT, IsChecked(hDlg, IDC_DETAIL_MW_OPTION));
    ChooseResolution(hDlg, lpcbstruc->lpDevMode, IDC_DETAIL_MW_OPTION);
}

static void OnHS(HWND hDlg, CBSTRUC *lpcbstruc)
{
    TakeFlag(lpcbstruc, KV_FLAG_HS, IsChecked(hDlg, IDC_DETAIL_HS));
    ChooseResolution(hDlg, lpcbstruc->lpDevMode, IDC_DETAIL_HS);
}

// No flag stands for FD: the resolution found is one with it or one without.
static void OnFD(HWND hDlg, CBSTRUC *lpcbstruc)
{
    ChooseResolution(hDlg, lpcbstruc->lpDevMode, IDC_DETAIL_FD);
}

static void OnMirror(HWND hDlg, CBSTRUC *lpcbstruc)
{
    TakeFlag(lpcbstruc, KV_FLAG_MIRROR, IsChecked(hDlg, IDC_DETAIL_MIRROR));
}

static void OnKRJNL(HWND hDlg, CBSTRUC *lpcbstruc)
{
    DriverDevMode *lpDM = lpcbstruc->lpDevMode;
    lpDM->Settings.wFlags3 =
        WithBits(lpDM->Settings.wFlags3, FLAG3_KRJNL, IsChecked(hDlg, IDC_DETAIL_KRJNL));
    lpcbstruc->lpInstance->wFlags3 = lpDM->Settings.wFlags3;
}

// ---- HT and colour intent -------------------------------------------------------------------

// Nothing is selected in a list that the rule leaves empty.
static void OnHT(HWND hDlg, CBSTRUC *lpcbstruc)
{
    const LONG lChoice = SelectedData(hDlg, IDC_DETAIL_HT);
    if (lChoice < 0)
        return;
    DriverDevMode *lpDM = lpcbstruc->lpDevMode;
    lpDM->Settings.bHT = static_cast<BYTE>(lChoice);
    lpcbstruc->lpInstance->bHT = lpDM->Settings.bHT;
    FillInkOption(hDlg, lpDM);
    SetHTBmp(hDlg, lpDM);
    RedrawControl(hDlg, IDC_DETAIL_HT_PICTURE);
}

static void OnIntent(HWND hDlg, CBSTRUC *lpcbstruc)
{
    const LONG lIntent = SelectedData(hDlg, IDC_DETAIL_INTENT);
    if (lIntent < 0)
        return;
    DriverDevMode *lpDM = lpcbstruc->lpDevMode;
    lpcbstruc->lpInstance->nIntent = lIntent;
    lpDM->Settings.bIntent = static_cast<BYTE>(lIntent);
    EnableColBalance(hDlg, BalanceOf(lpDM), lpDM);
}

// ---- the way out ----------------------------------------------------------------------------

static void DropCopy(CBSTRUC *lpcbstruc)
{
    HGLOBAL hSave = GlobalHandle(lpcbstruc->lpSaveDevMode);
    GlobalUnlock(hSave);
    GlobalFree(hSave);
    lpcbstruc->lpSaveDevMode = nullptr;
}

// The working state becomes the record's, as custom settings.
static void UpdatePreset(HWND hDlg, DriverDevMode *lpDM)
{
    UIINSTANCE *lpInstance = GetDetailCB(hDlg)->lpInstance;
    lpInstance->nListState = LIST_CUSTOM;
    PutInk(&lpDM->Settings, lpInstance->bInk);
    lpDM->Settings.bHT = lpInstance->bHT;
    lpDM->Settings.wFlags = lpInstance->wFlags;
}

// A resolution without a rule for the ink keeps the rule that the record had.
static void OnOK(HWND hDlg, CBSTRUC *lpcbstruc)
{
    UIINSTANCE *lpInstance = lpcbstruc->lpInstance;
    DriverDevMode *lpDM = lpcbstruc->lpDevMode;
    if (HasRule(lpInstance->dat, lpInstance->nCurRes, lpInstance->bInk))
        lpDM->Settings.wRule = CurrentRule(lpInstance).wRule;
    UpdatePreset(hDlg, lpDM);
    lpDM->Settings.wIndex = KV_CUSTOM_SETTINGS;
    DropMinuses(lpInstance);
    DropCopy(lpcbstruc);
    EndDialog(hDlg, 1);
}

// The current resolution and the intent in force are not put back: the Main page takes them from
// the record anew.
static void OnCancel(HWND hDlg, CBSTRUC *lpcbstruc)
{
    UIINSTANCE *lpInstance = lpcbstruc->lpInstance;
    KVMemcpy(lpcbstruc->lpDevMode, lpcbstruc->lpSaveDevMode, sizeof(DriverDevMode));
    lpInstance->bInk = lpInstance->bSavedInk;
    lpInstance->bHT = lpInstance->bSavedHT;
    lpInstance->wFlags = lpInstance->wSavedFlags;
    lpInstance->wFlags3 = lpInstance->wSavedFlags3;
    lpInstance->nListState = lpInstance->nSavedListState;
    std::ranges::copy(lpInstance->nSavedAdjust, lpInstance->nAdjust);
    DropCopy(lpcbstruc);
    EndDialog(hDlg, 0);
}

// ---- commands -------------------------------------------------------------------------------

static void OnHelp(HWND hDlg, CBSTRUC *lpcbstruc)
{
    ShowHelp(hDlg, lpcbstruc, DetailDlgHelpIDs, WM_COMMAND, 0);
}

// Every control but those of the colour rows, in the order of the dialog.
static constexpr struct {
    WORD id, code;
    void (*run)(HWND hDlg, CBSTRUC *lpcbstruc);
} aCommands[] = {
    {IDC_DETAIL_RESOLUTION, CBN_SELCHANGE, OnResolution},
    {IDC_DETAIL_MEDIA, CBN_SELCHANGE, OnMedia},
    {IDC_DETAIL_MEDIA_CODE, BN_CLICKED, OnMediaCode},
    {IDC_DETAIL_BLACK, BN_CLICKED, OnBlack},
    {IDC_DETAIL_COLOR, BN_CLICKED, OnColor},
    {IDC_DETAIL_HT, CBN_SELCHANGE, OnHT},
    {IDC_DETAIL_MW, BN_CLICKED, OnMW},
    {IDC_DETAIL_MW_OPTION, BN_CLICKED, OnMWOption},
    {IDC_DETAIL_HS, BN_CLICKED, OnHS},
    {IDC_DETAIL_MIRROR, BN_CLICKED, OnMirror},
    {IDC_DETAIL_FD, BN_CLICKED, OnFD},
    {IDC_DETAIL_KRJNL, BN_CLICKED, OnKRJNL},
    {IDC_DETAIL_INTENT, CBN_SELCHANGE, OnIntent},
    {IDC_DETAIL_HELP, BN_CLICKED, OnHelp},
};

static constexpr struct {
    WORD ColorRow::*control;
    WORD code;
    void (*run)(HWND hDlg, int nRow);
} aRowCommands[] = {
    {&ColorRow::idField, EN_CHANGE, OnFieldChanged},
    {&ColorRow::idField, EN_KILLFOCUS, OnFieldLeft},
    {&ColorRow::idSign, BN_CLICKED, OnSign},
};

static void RunCommand(HWND hDlg, CBSTRUC *lpcbstruc, WORD id, WORD code)
{
    for (const auto &command : aCommands)
        if (command.id == id && command.code == code)
            command.run(hDlg, lpcbstruc);
    for (const auto &command : aRowCommands)
        if (const int nRow = RowOf(id, command.control); nRow >= 0 && command.code == code)
            command.run(hDlg, nRow);
}

// TRUE for the two that end the dialog.
static INT_PTR OnCommand(HWND hDlg, CBSTRUC *lpcbstruc, WPARAM wParam)
{
    if (!lpcbstruc->lpSaveDevMode) // it has ended
        return FALSE;
    switch (LOWORD(wParam)) {
    case IDOK: OnOK(hDlg, lpcbstruc); return TRUE;
    case IDCANCEL: OnCancel(hDlg, lpcbstruc); return TRUE;
    default: RunCommand(hDlg, lpcbstruc, LOWORD(wParam), HIWORD(wParam)); return FALSE;
    }
}

// ---- other messages -------------------------------------------------------------------------

// The dialog is painted before its buttons, so that the ink's picture is chosen when it is drawn.
static void OnPaint(HWND hDlg, CBSTRUC *lpcbstruc)
{
    SetColor(hDlg, lpcbstruc->lpDevMode);
    PaintNothing(hDlg);
}

static void OnHScroll(HWND hDlg, CBSTRUC *lpcbstruc, LPARAM lParam)
{
    const int nRow = RowOf(GetDlgCtrlID(reinterpret_cast<HWND>(lParam)), &ColorRow::idBar);
    if (nRow < 0)
        return;
    OnTrackbar(hDlg, nRow);
    OnPaint(hDlg, lpcbstruc);
}

INT_PTR CALLBACK DetailDlgProc(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    if (uMsg == WM_INITDIALOG)
        return OnInitDialog(hDlg, lParam);
    CBSTRUC *lpcbstruc = FindCB(hDlg);
    if (!lpcbstruc) // before WM_INITDIALOG
        return FALSE;
    switch (uMsg) {
    case WM_COMMAND: return OnCommand(hDlg, lpcbstruc, wParam);
    case WM_PAINT: OnPaint(hDlg, lpcbstruc); return FALSE;
    case WM_HSCROLL: OnHScroll(hDlg, lpcbstruc, lParam); return FALSE;
    case WM_DRAWITEM:
        DrawDetailControl(hDlg, *reinterpret_cast<const DRAWITEMSTRUCT *>(lParam),
                          lpcbstruc->lpDevMode);
        return FALSE;
    case WM_HELP:
    case WM_CONTEXTMENU: ShowHelp(hDlg, lpcbstruc, DetailDlgHelpIDs, uMsg, lParam); return FALSE;
    default: return FALSE;
    }
}
