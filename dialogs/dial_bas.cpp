// The Main page: how print quality is set, and what the settings amount to. Here are its state, the
// dialogs that it opens, Apply, and the dispatch of messages; the rest is in the files that
// dial_bas.h names.
#include "dialogs/dial_bas.h"

#include "datafile/tables.h"
#include "dialogs/helpers.h"
#include "dialogs/pages.h"
#include "dialogs/rules.h"
#include "resources/about_ids.h"
#include "resources/detail_ids.h"
#include "resources/save_ids.h"

static HBRUSH hBrush; // of the page
// The page was initialised. Else the tables that its commands read may not be there: it stays as
// its template is, takes no command but About, and applies nothing.
static BOOL bUsable;

// ---- the sheet's state ------------------------------------------------------------------------

CBSTRUC *BasicCB(HWND hDlg)
{
    return RequireCB(hDlg, "dial_bas");
}

// A current position that leads nowhere leaves the record's own settings to be shown.
const SettingsRecord &SettingsInForce(const DriverDevMode *lpDM, UIINSTANCE *lpInstance)
{
    const SettingsRecord *lpCurrent = CurrentSetting(lpInstance);
    return IsCustom(lpInstance) || !lpCurrent ? lpDM->Settings : *lpCurrent;
}

const MediaRecord *MediaOf(const UIINSTANCE *lpInstance, int nRes)
{
    const ResolutionRecord *lpRes = Resolution(lpInstance, nRes);
    return lpRes ? RecordAt(lpInstance->dat.lpMedia, lpInstance->dat.nMedia, lpRes->wMedia)
                 : nullptr;
}

void MakeCurrent(UIINSTANCE *lpInstance, int32_t nSetting)
{
    lpInstance->nCurSetting = nSetting;
    lpInstance->nListState = LIST_ENTRY;
}

void TakeCurrent(UIINSTANCE *lpInstance, Take take)
{
    const SettingsRecord *lpCurrent = CurrentSetting(lpInstance);
    if (!lpCurrent)
        return;
    TakeRecord(lpInstance, *lpCurrent);
    if (take == Take::Whole)
        TakeAdjustments(lpInstance, *lpCurrent);
}

static INT_PTR OnInitDialog(HWND hDlg, LPARAM lParam)
{
    SetCB(hDlg, CBOfPage(lParam));
    bUsable = FALSE; // while boxes of the opening are up
    bUsable = InitBasicUIDlg(hDlg, BasicCB(hDlg)->lpDevMode);
    return TRUE;
}

// ---- dialogs ----------------------------------------------------------------------------------

// All dialogs are the model's. They run over the page, on the state that it has.
static INT_PTR RunDialog(HWND hDlg, WORD idTemplate, DLGPROC proc, const void *lpParameter)
{
    return DialogBoxParamA(BasicCB(hDlg)->lpInstance->hResLib, MAKEINTRESOURCEA(idTemplate), hDlg,
                           proc, reinterpret_cast<LPARAM>(lpParameter));
}

// A change there has made the settings custom; it lies in the record.
static void OnMore(HWND hDlg, DriverDevMode *lpDM, WORD, WORD)
{
    CBSTRUC *lpcbstruc = BasicCB(hDlg);
    UIINSTANCE *lpInstance = lpcbstruc->lpInstance;
    RunDialog(hDlg, IDD_DETAIL, DetailDlgProc, lpcbstruc);
    if (IsCustom(lpInstance)) {
        TakeRecord(lpInstance, lpDM->Settings);
        lpDM->bAutoMode = FALSE;
        UpdateCurSet(hDlg, lpDM);
        SetManualData(hDlg, lpDM, FALSE);
        SetPaperKind(hDlg, lpDM, MEDIA_CUSTOM);
    }
    SetModeBitmap(hDlg, lpDM);
}

// A dialog that could not be shown has saved nothing.
static void OnSave(HWND hDlg, DriverDevMode *lpDM, WORD, WORD)
{
    if (RunDialog(hDlg, IDD_SAVE, SaveDlgProc, BasicCB(hDlg)) <= 0)
        return;
    SetManualData(hDlg, lpDM, FALSE);
    SetPaperKind(hDlg, lpDM, MEDIA_CUSTOM);
    SetModeBitmap(hDlg, lpDM);
}

// About wants nothing of the sheet's state, so it gets the record alone.
static void OnAbout(HWND hDlg, DriverDevMode *lpDM, WORD, WORD)
{
    RunDialog(hDlg, IDD_ABOUT, AboutDlgProc, lpDM);
}

// ---- the page's own controls ------------------------------------------------------------------

static void OnMode(HWND hDlg, DriverDevMode *lpDM, WORD id, WORD)
{
    if (id == IDC_MAIN_AUTOMATIC)
        SwitchToAutomatic(hDlg, lpDM);
    else
        SwitchToAdvanced(hDlg, lpDM);
}

static void OnInk(HWND hDlg, DriverDevMode *lpDM, WORD id, WORD)
{
    ChangeInk(hDlg, lpDM, id == inkColor.idMainButton ? inkColor : inkBlack);
}

static void OnMedia(HWND hDlg, DriverDevMode *lpDM, WORD, WORD wCode)
{
    if (wCode == CBN_SELCHANGE)
        ChangeMedia(hDlg, lpDM);
}

static void OnSettings(HWND hDlg, DriverDevMode *lpDM, WORD, WORD wCode)
{
    OnSettingsList(hDlg, lpDM, wCode);
}

// Comes for every step of a drag and once more at its end; a position that is held already finds
// its record current. Anything but the two ends of the range is no choice.
static INT_PTR OnScroll(HWND hDlg, DriverDevMode *lpDM, LPARAM lParam)
{
    const auto hControl = reinterpret_cast<HWND>(lParam);
    if (GetDlgCtrlID(hControl) != IDC_MAIN_LEVEL)
        return TRUE;
    const auto nLevel = static_cast<int>(SendMessageA(hControl, TBM_GETPOS, 0, 0));
    if (nLevel == 1 || nLevel == 2)
        ChangeAutoData(hDlg, lpDM, nLevel);
    SetModeBitmap(hDlg, lpDM);
    return TRUE;
}

// ---- Apply ------------------------------------------------------------------------------------

// Custom settings are in the record already; ink, HT and options were put there as they changed.
static void ApplyEntry(DriverDevMode *lpDM, UIINSTANCE *lpInstance)
{
    const SettingsRecord *lpCurrent = CurrentSetting(lpInstance);
    if (IsCustom(lpInstance) || !lpCurrent)
        return;
    lpDM->Settings = *lpCurrent;
    PutInk(&lpDM->Settings, lpInstance->bInk);
    lpDM->Settings.bHT = lpInstance->bHT;
    lpDM->Settings.wFlags = lpInstance->wFlags;
    lpDM->Settings.wIndex = static_cast<uint16_t>(lpInstance->nCurSetting);
}

// What follows from the resolution is derived here once, for all three states: nothing on the way
// keeps it up to date.
static void ApplyResolution(DriverDevMode *lpDM, const UIINSTANCE *lpInstance)
{
    const ResolutionRecord *lpRes = Resolution(lpInstance, lpDM->Settings.wResolution);
    if (!lpRes)
        return;
    PutResolution(lpDM, *lpRes);
    lpDM->Settings.wDotScale = lpRes->wDotScale;
    if (const MediaRecord *lpMedia = MediaOf(lpInstance, lpDM->Settings.wResolution))
        lpDM->lMediaCode = lpMedia->wCode;
}

// Adjustments come last, and from the working state alone: it is theirs whatever was chosen since.
static INT_PTR OnApply(HWND, CBSTRUC *lpcbstruc)
{
    if (!bUsable)
        return TRUE;
    ApplyEntry(lpcbstruc->lpDevMode, lpcbstruc->lpInstance);
    ApplyResolution(lpcbstruc->lpDevMode, lpcbstruc->lpInstance);
    PutAdjustments(lpcbstruc->lpInstance, &lpcbstruc->lpDevMode->Settings);
    return TRUE;
}

// ---- dispatch ---------------------------------------------------------------------------------

static constexpr struct {
    WORD id;
    void (*run)(HWND hDlg, DriverDevMode *lpDM, WORD id, WORD wCode);
} aCommands[] = {
    {IDC_MAIN_AUTOMATIC, OnMode}, {IDC_MAIN_ADVANCED, OnMode},     {IDC_MAIN_COLOR, OnInk},
    {IDC_MAIN_BLACK, OnInk},      {IDC_MAIN_SETTINGS, OnSettings}, {IDC_MAIN_MEDIA, OnMedia},
    {IDC_MAIN_MORE, OnMore},      {IDC_MAIN_SAVE, OnSave},         {IDC_MAIN_ABOUT, OnAbout},
};

// The buttons' commands come by any notice, the lists' tell theirs apart.
static INT_PTR OnCommand(HWND hDlg, DriverDevMode *lpDM, WPARAM wParam)
{
    const WORD id = LOWORD(wParam);
    for (const auto &command : aCommands) {
        if (command.id != id)
            continue;
        if (bUsable || id == IDC_MAIN_ABOUT)
            command.run(hDlg, lpDM, id, HIWORD(wParam));
        return TRUE;
    }
    return FALSE;
}

// The summary is what the other page changes too, so it is read anew whenever the page is painted,
// which it is when it is shown.
static INT_PTR OnPaint(HWND hDlg, DriverDevMode *lpDM)
{
    if (bUsable)
        UpdateCurSet(hDlg, lpDM);
    return PaintNothing(hDlg);
}

// Each looks for its own controls and leaves the other's alone.
static INT_PTR OnDrawItem(HWND hDlg, const DriverDevMode *lpDM, LPARAM lParam)
{
    const auto &item = *reinterpret_cast<const DRAWITEMSTRUCT *>(lParam);
    DrawBasicControl(hDlg, item, lpDM);
    DrawManualPreset(hDlg, item, lpDM);
    return TRUE;
}

INT_PTR CALLBACK BasicUIDlgProc(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    if (const auto answer = AnswerColors(&hBrush, uMsg, wParam, lParam))
        return *answer;
    switch (uMsg) { // these need no state
    case WM_INITDIALOG: return OnInitDialog(hDlg, lParam);
    case WM_MEASUREITEM: return MeasureItem(hDlg, lParam, {IDC_MAIN_SETTINGS, IDC_MAIN_MEDIA});
    default: break;
    }
    if (!FindCB(hDlg)) // before WM_INITDIALOG
        return FALSE;
    CBSTRUC *lpcbstruc = BasicCB(hDlg);
    switch (uMsg) {
    case WM_PAINT: return OnPaint(hDlg, lpcbstruc->lpDevMode);
    case WM_COMMAND: return OnCommand(hDlg, lpcbstruc->lpDevMode, wParam);
    case WM_NOTIFY: return AnswerNotice(hDlg, lpcbstruc, BasicDlgHelpIDs, lParam, OnApply);
    case WM_HSCROLL: return OnScroll(hDlg, lpcbstruc->lpDevMode, lParam);
    case WM_DRAWITEM: return OnDrawItem(hDlg, lpcbstruc->lpDevMode, lParam);
    case WM_HELP:
    case WM_CONTEXTMENU: ShowHelp(hDlg, lpcbstruc, BasicDlgHelpIDs, uMsg, lParam); return TRUE;
    default: return FALSE;
    }
}
