// What the Main page shows of the settings: the summary, the pictures, the items of its lists.
#include "datafile/tables.h"
#include "dialogs/dial_bas.h"
#include "dialogs/helpers.h"
#include "dialogs/rules.h"
#include "resources/text_ids.h"

// ResolutionRecord.wFlags: the summary says that MW is on, whatever the options are.
static constexpr WORD RES_SUMMARY_MW = 0x100;

// Automatic records show the coarse picture up to here, by the number of their resolution's name.
static constexpr int FIRST_FINE_NAME = 2;

// Buttons that always show the same.
static constexpr struct {
    WORD idButton, idPicture;
} aPictures[] = {
    {IDC_MAIN_PAPER_PICTURE, PICTURE_LINE_PAPER},
    {IDC_MAIN_ORIENTATION_PICTURE, PICTURE_LINE_ORIENTATION},
    {IDC_MAIN_RESOLUTION_PICTURE, PICTURE_LINE_RESOLUTION},
    {IDC_MAIN_MW_PICTURE, PICTURE_LINE_MW},
    {IDC_MAIN_HS_PICTURE, PICTURE_LINE_HS},
    {IDC_MAIN_INTENT_PICTURE, PICTURE_LINE_INTENT},
    {IDC_MAIN_MAKER, PICTURE_MAKER},
};

// ---- the paper's line -------------------------------------------------------------------------

// Dimensions begin with a digit after a space.
static std::string WithoutDimensions(const std::string &strName)
{
    for (size_t i = 0; i + 1 < strName.size(); i++)
        if (strName[i] == ' ' && strName[i + 1] >= '0' && strName[i + 1] <= '9')
            return strName.substr(0, i);
    return strName;
}

static std::string TextOfPaper(const UIINSTANCE *lpInstance, const PaperRecord &paper)
{
    return LoadText(lpInstance->hResLib, static_cast<WORD>(paper.wId));
}

// Past the model's papers stand the user's; past those the user-defined paper, of whose name the
// first word is shown, or nothing in a model without one.
static std::string PaperName(const DriverDevMode *lpDM, const UIINSTANCE *lpInstance)
{
    const DatFile &block = lpInstance->dat;
    if (const PaperRecord *lpPaper = RecordAt(block.lpPapers, block.nPapers, lpDM->nPaper))
        return WithoutDimensions(TextOfPaper(lpInstance, *lpPaper));
    const int64_t nSlot = int64_t{lpDM->nPaper} - block.nPapers;
    if (const UserPaperRecord *lpSlot = RecordAt(block.lpUserPapers, block.nUserPaperUsed, nSlot))
        return SlotName(*lpSlot);
    const PaperRecord *lpUser = FindPaper(block, KV_PAPER_USER);
    const std::string strName = lpUser ? TextOfPaper(lpInstance, *lpUser) : "";
    return strName.substr(0, strName.find(' '));
}

static std::string PaperLine(const DriverDevMode *lpDM, const UIINSTANCE *lpInstance)
{
    const std::string strLabel = LoadText(lpInstance->hResLib, TEXT_PAPER);
    const std::string strName = PaperName(lpDM, lpInstance);
    return strLabel.empty() ? strName : strLabel + " : " + strName;
}

// ---- the other lines --------------------------------------------------------------------------

// A resolution can speak for both options; else the second one says more than the first.
static UINT MWLine(const UIINSTANCE *lpInstance, int nRes)
{
    const ResolutionRecord *lpRes = Resolution(lpInstance, nRes);
    if (lpRes && (lpRes->wFlags & RES_SUMMARY_MW))
        return TEXT_MW_ON;
    if (lpInstance->wFlags & KV_FLAG_OPT)
        return TEXT_OPTION_ON;
    return lpInstance->wFlags & KV_FLAG_MW ? TEXT_MW_ON : TEXT_MW_OFF;
}

// A choice that this version does not know reads as the first one.
static UINT IntentLine(BYTE bIntent)
{
    return bIntent <= 3 ? INTENT_NAME + bIntent : INTENT_NAME;
}

// An ink that is neither leaves the buttons as they are.
static void ShowCurrentInk(HWND hDlg, DriverDevMode *lpDM, const UIINSTANCE *lpInstance)
{
    if (const Ink *lpInk = FindInk(lpInstance->bInk)) {
        ShowInk(hDlg, *lpInk);
        lpDM->dm.dmColor = lpInk->dmColor;
    }
}

// Flags and ink are the working state's, resolution and intent those of the settings in force: the
// summary shows what would be applied. Black knows no intent.
BOOL UpdateCurSet(HWND hDlg, DriverDevMode *lpDM)
{
    UIINSTANCE *lpInstance = BasicCB(hDlg)->lpInstance;
    const HMODULE hResLib = lpInstance->hResLib;
    SetDlgItemTextA(hDlg, IDC_MAIN_PAPER, PaperLine(lpDM, lpInstance).c_str());
    RequireOrientation(lpDM, "dial_bas");
    SetStaticText(hResLib, hDlg, IDC_MAIN_ORIENTATION,
                  lpDM->dm.dmOrientation == 1 ? TEXT_PORTRAIT : TEXT_LANDSCAPE);
    const SettingsRecord &now = SettingsInForce(lpDM, lpInstance);
    SetDlgItemTextA(hDlg, IDC_MAIN_RESOLUTION, ResolutionName(lpInstance, now.wResolution).c_str());
    SetStaticText(hResLib, hDlg, IDC_MAIN_MW, MWLine(lpInstance, now.wResolution));
    SetStaticText(hResLib, hDlg, IDC_MAIN_HS,
                  lpInstance->wFlags & KV_FLAG_HS ? TEXT_HS_ON : TEXT_HS_OFF);
    ShowCurrentInk(hDlg, lpDM, lpInstance);
    SetStaticText(hResLib, hDlg, IDC_MAIN_INTENT, IntentLine(now.bIntent));
    return EnableWindow(GetDlgItem(hDlg, IDC_MAIN_INTENT), now.wInk != 0);
}

// ---- the mode's picture -----------------------------------------------------------------------

// One kind of current settings: its picture in each ink, upright and mirrored.
struct ModePictures {
    int nColor, nBlack, nColorMirror, nBlackMirror;
};
static constexpr ModePictures CUSTOM_PICTURES = {PICTURE_CUSTOM_COLOR, PICTURE_CUSTOM_BLACK,
                                                 PICTURE_CUSTOM_COLOR_MIRROR,
                                                 PICTURE_CUSTOM_BLACK_MIRROR},
                              DRAFT_PICTURES = {PICTURE_DRAFT_COLOR, PICTURE_DRAFT_BLACK,
                                                PICTURE_DRAFT_COLOR_MIRROR,
                                                PICTURE_DRAFT_BLACK_MIRROR},
                              FINE_PICTURES = {PICTURE_FINE_COLOR, PICTURE_FINE_BLACK,
                                               PICTURE_FINE_COLOR_MIRROR,
                                               PICTURE_FINE_BLACK_MIRROR};

static ModePictures PresetPictures(int nPreset)
{
    return {PICTURE_PRESET_COLOR + nPreset, PICTURE_PRESET_BLACK + nPreset,
            PICTURE_PRESET_COLOR_MIRROR + nPreset, PICTURE_PRESET_BLACK_MIRROR + nPreset};
}

// The number of the name decides, not its place among the names.
static ModePictures AutomaticPictures(const UIINSTANCE *lpInstance, const SettingsRecord &record)
{
    const DatFile &block = lpInstance->dat;
    const ResolutionRecord *lpRes = Resolution(lpInstance, record.wResolution);
    const int16_t *lpName =
        lpRes ? RecordAt(block.lpResNames, block.nResNames, lpRes->wResName) : nullptr;
    return !lpName || *lpName < FIRST_FINE_NAME ? DRAFT_PICTURES : FINE_PICTURES;
}

// Saved settings look like custom ones, which they are to the model.
static ModePictures PicturesOfMode(UIINSTANCE *lpInstance)
{
    const SettingsRecord *lpCurrent = CurrentSetting(lpInstance);
    if (!lpCurrent || IsCustom(lpInstance) || IsUserSlot(lpInstance))
        return CUSTOM_PICTURES;
    if (lpInstance->nCurSetting >= static_cast<int32_t>(lpInstance->dat.nAuto))
        return PresetPictures(lpCurrent->wPreset);
    return AutomaticPictures(lpInstance, *lpCurrent);
}

void SetModeBitmap(HWND hDlg, DriverDevMode *)
{
    UIINSTANCE *lpInstance = BasicCB(hDlg)->lpInstance;
    const ModePictures pictures = PicturesOfMode(lpInstance);
    const bool bMirror = lpInstance->wFlags & KV_FLAG_MIRROR;
    lpInstance->idModeBitmap = lpInstance->bInk
                                   ? (bMirror ? pictures.nColorMirror : pictures.nColor)
                                   : (bMirror ? pictures.nBlackMirror : pictures.nBlack);
    RedrawControl(hDlg, IDC_MAIN_MODE_PICTURE);
}

// ---- owner-drawn items ------------------------------------------------------------------------

// 0, no picture, for buttons that others draw.
static WORD PictureOf(const UIINSTANCE *lpInstance, UINT idButton)
{
    if (idButton == IDC_MAIN_MODE_PICTURE)
        return static_cast<WORD>(lpInstance->idModeBitmap);
    if (idButton == IDC_MAIN_INK_PICTURE)
        return static_cast<WORD>(lpInstance->idInkBitmap);
    for (const auto &picture : aPictures)
        if (picture.idButton == idButton)
            return picture.idPicture;
    return 0;
}

void DrawBasicControl(HWND hDlg, const DRAWITEMSTRUCT &item, const DriverDevMode *)
{
    const UIINSTANCE *lpInstance = BasicCB(hDlg)->lpInstance;
    if (item.CtlType == ODT_BUTTON)
        DrawPictureButton(item, lpInstance->hResLib, PictureOf(lpInstance, item.CtlID));
}

// The last slot in use is the first of the user's entries.
static bool IsFirstOfUser(const UIINSTANCE *lpInstance, const DRAWITEMSTRUCT &item)
{
    const int64_t nLastSlot = int64_t{FirstUserSlot(lpInstance)} + lpInstance->dat.nUserUsed - 1;
    return lpInstance->dat.nUserUsed > 0 && static_cast<int64_t>(item.itemData) == nLastSlot;
}

void DrawManualPreset(HWND hDlg, const DRAWITEMSTRUCT &item, const DriverDevMode *)
{
    if (item.CtlID != IDC_MAIN_SETTINGS && item.CtlID != IDC_MAIN_MEDIA)
        return;
    const bool bApart = item.CtlID == IDC_MAIN_SETTINGS && IsInOpenList(item) &&
                        IsFirstOfUser(BasicCB(hDlg)->lpInstance, item);
    DrawListItem(item, DrawnText(item).c_str(), bApart ? Apart::Above : Apart::No);
}
