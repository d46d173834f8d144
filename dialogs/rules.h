// What a model allows: which inks, media, resolutions, HT choices and options go together. The
// model's tables say it; these functions apply them to the settings being edited, which live twice,
// in the record and in the sheet's working state. Both the Main page and More Settings call them
// after every change. Each reaches the sheet's state through its dialog.
#ifndef KV_DIALOGS_RULES_H
#define KV_DIALOGS_RULES_H

#include <string>

#include "datafile/instance.h"

// Codes of a rule that all options share. Codes that nobody names change nothing.
constexpr int16_t RULE_FREE = 0, RULE_ON = 1, RULE_OFF = 2;

// ResolutionRecord.wFlags: which variant it is, by the HS and by the second MW option.
constexpr WORD RES_HS_ON = 0x01, RES_HS_OFF = 0x02;
constexpr WORD RES_OPT_ON = 0x10, RES_OPT_OFF = 0x20;

constexpr WORD WithBits(WORD wWord, WORD wBits, bool bOn)
{
    return static_cast<WORD>(bOn ? wWord | wBits : wWord & ~wBits);
}
// Option flags with the second MW option as the resolution has it. One that is both clears it.
constexpr WORD WithVariant(WORD wFlags, const ResolutionRecord &res)
{
    if (res.wFlags & RES_OPT_ON)
        wFlags = WithBits(wFlags, KV_FLAG_OPT, true);
    return res.wFlags & RES_OPT_OFF ? WithBits(wFlags, KV_FLAG_OPT, false) : wFlags;
}

// The resolution record at a position; null when there is none.
const ResolutionRecord *Resolution(const UIINSTANCE *lpInstance, int nRes);
// The rule of the current resolution and ink: the first whose resolution is nCurRes and whose ink
// is bInk; all zero when there is none.
MedResRule CurrentRule(const UIINSTANCE *lpInstance);
// Whether any rule is for this resolution number and ink.
bool HasRule(const DatFile &block, int nRes, int nInk);

// Whether a rule allows an HT choice.
constexpr uint8_t HT_CHOICES = 4;
bool AllowsHT(const MedResRule &rule, uint8_t bChoice);

// Names of the UI resource library, empty where the tables or the library lack them.
std::string ResolutionName(const UIINSTANCE *lpInstance, int nRes);
// Of a position in the table of resolution names.
std::string ResolutionNameAt(const UIINSTANCE *lpInstance, int nPosition);
// Of a resolution: its media record taken by position.
std::string MediaNameByIndex(const UIINSTANCE *lpInstance, int nRes);
// Of a resolution: the first media record of its media number, by position when there is none.
std::string MediaNameByNumber(const UIINSTANCE *lpInstance, int nRes);
std::string MediaName(const UIINSTANCE *lpInstance, int nMedia); // of a media number

// Keeps the first value of the highest level reported. Starts with level 0.
void remarkmedres(LONG *lpLevel, LONG *lpValue, LONG lLevel, LONG lValue);
// A resolution becomes current, in the record and in the working state.
void TakeResolution(DriverDevMode *lpDM, UIINSTANCE *lpInstance, LONG lRes);
// The resolution of these display names for the current ink; becomes current. Its index.
LONG GetMedRes(HWND hDlg, DriverDevMode *lpDM, UIINSTANCE *lpInstance, LPCSTR lpResolution,
               LPCSTR lpMedia);
// Corrects the HT choice and the options to what the current resolution's rule allows.
void CheckDetail(HWND hDlg, DriverDevMode *lpDM);
// The MW options and, unless the mode is MW_RECORD, their check boxes in More Settings. In the
// last three modes a changeable option (the first, the second, both) stays as the user has it;
// MW_OWN_SECOND leaves out the locks on the second, too.
constexpr int MW_RECORD = 0, MW_DIALOG = 1, MW_OWN_FIRST = 2, MW_OWN_SECOND = 3, MW_OWN_BOTH = 4;
void CheckMW(HWND hDlg, DriverDevMode *lpDM, int nMode);
// The mirror option and, unless the mode is 0, its check box in More Settings.
void CheckMirror(HWND hDlg, DriverDevMode *lpDM, int nMode);

// Fills and selects in a list of media: More Settings' for MEDIA_DETAIL, else the Main page's. Item
// data are media numbers, but resolutions for MEDIA_CUSTOM and nothing for MEDIA_DETAIL. The
// result of the list's last message.
constexpr int MEDIA_AUTOMATIC = 0, MEDIA_DETAIL = 1, MEDIA_PRESET = 2, MEDIA_CUSTOM = 3;
LRESULT SetPaperKind(HWND hDlg, DriverDevMode *lpDM, int nMode);

#endif
