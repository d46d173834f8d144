// The lists of the More Settings dialog, its ink buttons, and the check boxes of the options that
// it alone offers: filled, checked and locked as the model's rule for the current resolution says.
#include "dialogs/dial_ext.h"
#include "dialogs/helpers.h"
#include "dialogs/inks.h"
#include "dialogs/rules.h"
#include "resources/detail_ids.h"
#include "resources/pictures.h"
#include "resources/text_ids.h"

// ---- resolution -----------------------------------------------------------------------------

// The selection is the list's own: a name that begins with the resolution's may stand before it.
void SetResData(HWND hDlg, DriverDevMode *)
{
    const UIINSTANCE *lpInstance = GetDetailCB(hDlg)->lpInstance;
    EmptyList(hDlg, IDC_DETAIL_RESOLUTION);
    const auto nNames = static_cast<int>(lpInstance->dat.nResNames);
    for (int i = 0; i < nNames; i++)
        AppendItem(hDlg, IDC_DETAIL_RESOLUTION, ResolutionNameAt(lpInstance, i).c_str(), i);
    const std::string strCurrent = ResolutionName(lpInstance, lpInstance->nCurRes);
    SelectText(hDlg, IDC_DETAIL_RESOLUTION, strCurrent.c_str());
}

// ---- HT -------------------------------------------------------------------------------------

// An empty list has no last item: a model that allows no choice leaves the setting as it was.
static void TakeLastHT(HWND hDlg, DriverDevMode *lpDM, UIINSTANCE *lpInstance)
{
    const LRESULT nCount = SendDlgItemMessageA(hDlg, IDC_DETAIL_HT, CB_GETCOUNT, 0, 0);
    if (nCount <= 0)
        return;
    SendDlgItemMessageA(hDlg, IDC_DETAIL_HT, CB_SETCURSEL, static_cast<WPARAM>(nCount - 1), 0);
    lpInstance->bHT = static_cast<BYTE>(SelectedData(hDlg, IDC_DETAIL_HT));
    lpDM->Settings.bHT = lpInstance->bHT;
}

void SetHTData(HWND hDlg, DriverDevMode *lpDM)
{
    const CBSTRUC *lpcbstruc = GetDetailCB(hDlg);
    UIINSTANCE *lpInstance = lpcbstruc->lpInstance;
    const MedResRule rule = CurrentRule(lpInstance);
    EmptyList(hDlg, IDC_DETAIL_HT);
    for (BYTE bChoice = 0; bChoice < HT_CHOICES; bChoice++)
        if (AllowsHT(rule, bChoice))
            AppendItem(hDlg, IDC_DETAIL_HT,
                       LoadText(lpcbstruc->hResLib, HT_CHOICE + bChoice).c_str(), bChoice);
    const std::string strCurrent = LoadText(lpcbstruc->hResLib, HT_CHOICE + lpInstance->bHT);
    if (SelectText(hDlg, IDC_DETAIL_HT, strCurrent.c_str()) == CB_ERR)
        TakeLastHT(hDlg, lpDM, lpInstance);
    SetHTBmp(hDlg, lpDM);
    RedrawControl(hDlg, IDC_DETAIL_HT_PICTURE);
}

void SetHTBmp(HWND hDlg, DriverDevMode *lpDM)
{
    GetDetailCB(hDlg)->lpInstance->idHTBitmap = PICTURE_HT + lpDM->Settings.bHT;
}

// ---- colour intent --------------------------------------------------------------------------

// An intent that the rule does not allow is shown as the first one that it does; the record keeps
// its own until the user chooses.
void SetIntent(HWND hDlg, DriverDevMode *lpDM)
{
    const CBSTRUC *lpcbstruc = GetDetailCB(hDlg);
    const int16_t sIntents = CurrentRule(lpcbstruc->lpInstance).sIntents;
    EmptyList(hDlg, IDC_DETAIL_INTENT);
    for (UINT i = 0; i <= INTENT_NONE; i++)
        if (sIntents & (1u << i))
            AppendItem(hDlg, IDC_DETAIL_INTENT,
                       LoadText(lpcbstruc->hResLib, INTENT_NAME + i).c_str(),
                       static_cast<LPARAM>(i));
    const std::string strCurrent =
        LoadText(lpcbstruc->hResLib, INTENT_NAME + lpDM->Settings.bIntent);
    if (SelectText(hDlg, IDC_DETAIL_INTENT, strCurrent.c_str()) == CB_ERR)
        SendDlgItemMessageA(hDlg, IDC_DETAIL_INTENT, CB_SETCURSEL, 0, 0);
}

// ---- ink ------------------------------------------------------------------------------------

void FillInkOption(HWND hDlg, DriverDevMode *)
{
    if (const Ink *lpInk = FindInk(GetDetailCB(hDlg)->lpInstance->bInk))
        CheckRadioButton(hDlg, IDC_DETAIL_BLACK, IDC_DETAIL_COLOR, lpInk->idDetailButton);
}

void SetColor(HWND hDlg, DriverDevMode *lpDM)
{
    UIINSTANCE *lpInstance = GetDetailCB(hDlg)->lpInstance;
    FillInkOption(hDlg, lpDM);
    if (const Ink *lpInk = FindInk(lpInstance->bInk))
        lpInstance->idDetailInkBitmap = lpInk->idPicture;
}

// ---- options --------------------------------------------------------------------------------

// The whole flag word is copied, so that what the record alone has got so far (the second MW
// option of a resolution just found) becomes the user's choice.
static void PutHS(HWND hDlg, DriverDevMode *lpDM, bool bOn, bool bChangeable)
{
    EnableControl(hDlg, IDC_DETAIL_HS, bChangeable);
    CheckBox(hDlg, IDC_DETAIL_HS, bOn);
    lpDM->Settings.wFlags = WithBits(lpDM->Settings.wFlags, KV_FLAG_HS, bOn);
    GetDetailCB(hDlg)->lpInstance->wFlags = lpDM->Settings.wFlags;
}

void CheckHS(HWND hDlg, DriverDevMode *lpDM, bool bInitial)
{
    constexpr int16_t RULE_SWITCH_OFF = 3, RULE_SWITCH_ON = 4;
    const UIINSTANCE *lpInstance = GetDetailCB(hDlg)->lpInstance;
    const int16_t sCode = CurrentRule(lpInstance).sHS;
    if (bInitial || sCode == RULE_FREE)
        PutHS(hDlg, lpDM, (lpInstance->wFlags & KV_FLAG_HS) != 0, true);
    const bool bSwitches = sCode == RULE_SWITCH_ON || sCode == RULE_SWITCH_OFF;
    if (bSwitches && !bInitial)
        PutHS(hDlg, lpDM, sCode == RULE_SWITCH_ON, true);
    if (sCode == RULE_ON || sCode == RULE_OFF)
        PutHS(hDlg, lpDM, sCode == RULE_ON, false);
}

// FD is no flag: the resolution is one of a pair, with FD or without.
void CheckFD(HWND hDlg, DriverDevMode *lpDM)
{
    const UIINSTANCE *lpInstance = GetDetailCB(hDlg)->lpInstance;
    const DatHeader *lpHeader = lpInstance->dat.lpDatHeader.get();
    if (lpHeader && lpHeader->wDat3 == 1)
        for (const int id : {IDC_DETAIL_FD, IDC_DETAIL_FD_LINE})
            ShowWindow(GetDlgItem(hDlg, id), SW_HIDE);
    const int16_t sCode = CurrentRule(lpInstance).sFD;
    if (sCode != RULE_FREE && sCode != RULE_ON && sCode != RULE_OFF)
        return;
    const ResolutionRecord *lpRes = Resolution(lpInstance, lpDM->Settings.wResolution);
    EnableControl(hDlg, IDC_DETAIL_FD, sCode == RULE_FREE);
    CheckBox(hDlg, IDC_DETAIL_FD,
             sCode == RULE_FREE ? lpRes && lpRes->wRes3 != 0 : sCode == RULE_ON);
}

void CheckKRJNL(HWND hDlg, DriverDevMode *lpDM)
{
    CheckBox(hDlg, IDC_DETAIL_KRJNL, (lpDM->Settings.wFlags3 & FLAG3_KRJNL) != 0);
}
