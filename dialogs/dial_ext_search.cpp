// What a change in the More Settings dialog makes of the resolution. A model has several
// resolutions of one name, for its media and for the options that only a resolution of its own can
// print; a change of list or box looks for the one that fits the dialog best.
//
// The records are walked in the order of the table. Each passes tests, one level after the other,
// until it fails one; the first record of the highest level is taken, unless one matches exactly,
// which ends the walk. Each list and box has tests, a start value and further effects of its own.
#include "dialogs/dial_ext.h"

#include <iterator>
#include <string>

#include "dialogs/helpers.h"
#include "dialogs/rules.h"
#include "resources/detail_ids.h"

// What is looked for: the names shown, a box's new state, and the resolution so far.
struct Search {
    const UIINSTANCE *lpInstance;
    std::string strResolution, strMedia;
    bool bChecked;
    const ResolutionRecord *lpCurrent; // null when there is none
};
struct Candidate {
    int nRes; // position
    const ResolutionRecord &record;
};
struct Found {
    LONG lRes;
    bool bExact;
};

static constexpr WORD RES_HS = RES_HS_ON | RES_HS_OFF;
static constexpr WORD RES_OPT = RES_OPT_ON | RES_OPT_OFF;

// ---- tests ----------------------------------------------------------------------------------

static bool HasName(const Search &search, const Candidate &candidate)
{
    return ResolutionName(search.lpInstance, candidate.nRes) == search.strResolution;
}

static bool HasMedia(const Search &search, const Candidate &candidate)
{
    return MediaNameByIndex(search.lpInstance, candidate.nRes) == search.strMedia;
}

static bool HasMediaByNumber(const Search &search, const Candidate &candidate)
{
    return MediaNameByNumber(search.lpInstance, candidate.nRes) == search.strMedia;
}

static bool TakesInk(const Search &search, const Candidate &candidate)
{
    return HasRule(search.lpInstance->dat, candidate.record.wRes0, search.lpInstance->bInk);
}

// Whether the record is the variant that an option's box asks for. What it is by the other option
// doesn't count here: a model may have no twin that differs in the one alone, and then the
// resolution of the right names, option and FD state is still to be found.
static bool IsVariant(const Candidate &candidate, WORD wGroup, WORD wWanted)
{
    return (candidate.record.wFlags & wGroup) == wWanted;
}

static bool HasOption(const Search &search, const Candidate &candidate)
{
    return IsVariant(candidate, RES_OPT, search.bChecked ? RES_OPT_ON : RES_OPT_OFF);
}

static bool HasHS(const Search &search, const Candidate &candidate)
{
    return IsVariant(candidate, RES_HS, search.bChecked ? RES_HS_ON : RES_HS_OFF);
}

static bool HasFD(const Search &search, const Candidate &candidate)
{
    return candidate.record.wRes3 == (search.bChecked ? 1 : 0);
}

static bool KeepsFD(const Search &search, const Candidate &candidate)
{
    return search.lpCurrent && candidate.record.wRes3 == search.lpCurrent->wRes3;
}

// Where there is a choice, the other option stays what it is: its box isn't looked at again.
static bool KeepsOption(const Search &search, const Candidate &candidate)
{
    return IsVariant(candidate, RES_OPT, search.lpCurrent->wFlags & RES_OPT);
}

static bool KeepsHS(const Search &search, const Candidate &candidate)
{
    return IsVariant(candidate, RES_HS, search.lpCurrent->wFlags & RES_HS);
}

// The current resolution's whole word is compared, so that one with any other flag has no exact
// twin.
static bool KeepsVariants(const Search &search, const Candidate &candidate)
{
    return search.lpCurrent &&
           search.lpCurrent->wFlags == (candidate.record.wFlags & (RES_HS | RES_OPT));
}

static bool Always(const Search &, const Candidate &)
{
    return true;
}

// ---- effects --------------------------------------------------------------------------------

static void TakeVariant(DriverDevMode *lpDM, const UIINSTANCE *lpInstance, const Found &found)
{
    const ResolutionRecord *lpRes = Resolution(lpInstance, found.lRes);
    if (found.bExact && lpRes)
        lpDM->Settings.wFlags = WithVariant(lpDM->Settings.wFlags, *lpRes);
}

// Only here is the list of media filled anew: the resolution's name decides on it. HS is looked at
// before the MW options, whose flags it hands to the user.
static void AfterResolution(HWND hDlg, DriverDevMode *lpDM, const Found &found, bool)
{
    TakeVariant(lpDM, GetDetailCB(hDlg)->lpInstance, found);
    EnableControl(hDlg, IDC_DETAIL_HS, true);
    SetPaperKind(hDlg, lpDM, MEDIA_DETAIL);
    FillInkOption(hDlg, lpDM);
    SetHTData(hDlg, lpDM);
    CheckHS(hDlg, lpDM, false);
    CheckFD(hDlg, lpDM);
    CheckMW(hDlg, lpDM, MW_DIALOG);
    CheckMirror(hDlg, lpDM, 1);
}

// Here the MW options come first, so that they are still the user's own.
static void AfterMedia(HWND hDlg, DriverDevMode *lpDM, const Found &found, bool)
{
    const UIINSTANCE *lpInstance = GetDetailCB(hDlg)->lpInstance;
    TakeVariant(lpDM, lpInstance, found);
    if (const ResolutionRecord *lpRes = Resolution(lpInstance, found.lRes))
        lpDM->Settings.wMedia = lpRes->wMedia;
    EnableControl(hDlg, IDC_DETAIL_HS, true);
    FillInkOption(hDlg, lpDM);
    SetHTData(hDlg, lpDM);
    CheckMW(hDlg, lpDM, MW_DIALOG);
    CheckHS(hDlg, lpDM, false);
    CheckFD(hDlg, lpDM);
    CheckMirror(hDlg, lpDM, 1);
}

// The rule's lock on the second option itself waits for the next change.
static void AfterOption(HWND hDlg, DriverDevMode *lpDM, const Found &, bool)
{
    SetHTData(hDlg, lpDM);
    CheckMW(hDlg, lpDM, MW_OWN_SECOND);
    CheckFD(hDlg, lpDM);
}

// A resolution that stays leaves the MW options to the user.
static int ModeFor(bool bSame)
{
    return bSame ? MW_OWN_BOTH : MW_DIALOG;
}

static void AfterHS(HWND hDlg, DriverDevMode *lpDM, const Found &, bool bSame)
{
    FillInkOption(hDlg, lpDM);
    SetHTData(hDlg, lpDM);
    CheckMW(hDlg, lpDM, ModeFor(bSame));
    CheckFD(hDlg, lpDM);
}

static void AfterFD(HWND hDlg, DriverDevMode *lpDM, const Found &, bool bSame)
{
    FillInkOption(hDlg, lpDM);
    SetHTData(hDlg, lpDM);
    CheckMW(hDlg, lpDM, ModeFor(bSame));
    CheckHS(hDlg, lpDM, false);
}

// ---- the walk -------------------------------------------------------------------------------

using Test = bool (*)(const Search &, const Candidate &);
struct Trigger {
    Test aLevels[4]; // null: every record passes, without reaching the level
    Test exact;      // of a record that has passed all levels
    void (*after)(HWND hDlg, DriverDevMode *lpDM, const Found &found, bool bSame);
    WORD idControl;
    bool bStartsAtCurrent;
};
static constexpr Trigger aTriggers[] = {
    {.aLevels = {HasName, TakesInk, HasMediaByNumber},
     .exact = Always,
     .after = AfterResolution,
     .idControl = IDC_DETAIL_RESOLUTION,
     .bStartsAtCurrent = false},
    {.aLevels = {HasMedia, nullptr, HasName},
     .exact = Always,
     .after = AfterMedia,
     .idControl = IDC_DETAIL_MEDIA,
     .bStartsAtCurrent = false},
    {.aLevels = {HasOption, HasMedia, HasName, KeepsFD},
     .exact = KeepsHS,
     .after = AfterOption,
     .idControl = IDC_DETAIL_MW_OPTION,
     .bStartsAtCurrent = true},
    {.aLevels = {HasHS, HasMedia, HasName, KeepsFD},
     .exact = KeepsOption,
     .after = AfterHS,
     .idControl = IDC_DETAIL_HS,
     .bStartsAtCurrent = true},
    {.aLevels = {HasFD, HasMedia, HasName},
     .exact = KeepsVariants,
     .after = AfterFD,
     .idControl = IDC_DETAIL_FD,
     .bStartsAtCurrent = false},
};

// The level that a record reaches, and whether it fails nowhere.
static bool Reaches(const Search &search, const Trigger &trigger, const Candidate &candidate,
                    LONG *lpLevel)
{
    for (size_t i = 0; i < std::size(trigger.aLevels); i++) {
        if (!trigger.aLevels[i])
            continue;
        if (!trigger.aLevels[i](search, candidate))
            return false;
        *lpLevel = static_cast<LONG>(i + 1);
    }
    return true;
}

static Found FindBest(const Search &search, const Trigger &trigger)
{
    const DatFile &dat = search.lpInstance->dat;
    LONG lBestLevel = 0, lBest = trigger.bStartsAtCurrent ? search.lpInstance->nCurRes : 0;
    for (LONG i = 0; const ResolutionRecord *lpRes = RecordAt(dat.lpRes, dat.nRes, i); i++) {
        const Candidate candidate{i, *lpRes};
        LONG lLevel = 0;
        if (Reaches(search, trigger, candidate, &lLevel) && trigger.exact(search, candidate))
            return {i, true};
        remarkmedres(&lBestLevel, &lBest, lLevel, i);
    }
    return {lBest, false};
}

// ---- entries --------------------------------------------------------------------------------

void ChooseResolution(HWND hDlg, DriverDevMode *lpDM, WORD idChanged)
{
    UIINSTANCE *lpInstance = GetDetailCB(hDlg)->lpInstance;
    const Search search{.lpInstance = lpInstance,
                        .strResolution = DlgItemText(hDlg, IDC_DETAIL_RESOLUTION),
                        .strMedia = DlgItemText(hDlg, IDC_DETAIL_MEDIA),
                        .bChecked = IsDlgButtonChecked(hDlg, idChanged) == BST_CHECKED,
                        .lpCurrent = Resolution(lpInstance, lpInstance->nCurRes)};
    const LONG lBefore = lpInstance->nCurRes;
    if (idChanged == IDC_DETAIL_MEDIA && MediaNameByIndex(lpInstance, lBefore) == search.strMedia)
        return;
    for (const Trigger &trigger : aTriggers)
        if (trigger.idControl == idChanged) {
            const Found found = FindBest(search, trigger);
            TakeResolution(lpDM, lpInstance, found.lRes);
            trigger.after(hDlg, lpDM, found, found.lRes == lBefore);
        }
}

// The record's own number is taken here, where the searches above take its position.
void ReselectResolution(HWND hDlg, DriverDevMode *lpDM)
{
    UIINSTANCE *lpInstance = GetDetailCB(hDlg)->lpInstance;
    const DatFile &dat = lpInstance->dat;
    if (HasRule(dat, lpInstance->nCurRes, lpInstance->bInk))
        return;
    const std::string strShown = DlgItemText(hDlg, IDC_DETAIL_RESOLUTION);
    for (int i = 0; const ResolutionRecord *lpRes = RecordAt(dat.lpRes, dat.nRes, i); i++)
        if (ResolutionName(lpInstance, i) == strShown &&
            HasRule(dat, lpRes->wRes0, lpInstance->bInk))
            return TakeResolution(lpDM, lpInstance, lpRes->wRes0);
}
