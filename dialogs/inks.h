// The two inks: what the record says of each, and what the pages show for it.
#ifndef KV_DIALOGS_INKS_H
#define KV_DIALOGS_INKS_H

#include "platform/win32.h"
#include "resources/detail_ids.h"
#include "resources/main_ids.h"
#include "resources/pictures.h"

struct Ink {
    BYTE bInk;
    WORD wCode;                        // Settings.wInkCode, once its button was pressed
    int16_t dmColor;                   // of the record
    WORD idMainButton, idDetailButton; // on the Main page and in More Settings
    WORD idPicture;
};
constexpr Ink inkBlack = {.bInk = 0,
                          .wCode = 3,
                          .dmColor = 1,
                          .idMainButton = IDC_MAIN_BLACK,
                          .idDetailButton = IDC_DETAIL_BLACK,
                          .idPicture = PICTURE_INK_BLACK},
              inkColor = {.bInk = 1,
                          .wCode = 6,
                          .dmColor = 2,
                          .idMainButton = IDC_MAIN_COLOR,
                          .idDetailButton = IDC_DETAIL_COLOR,
                          .idPicture = PICTURE_INK_COLOR};

// Null for an ink that is neither, from a damaged record.
constexpr const Ink *FindInk(BYTE bInk)
{
    if (bInk == inkBlack.bInk)
        return &inkBlack;
    return bInk == inkColor.bInk ? &inkColor : nullptr;
}

#endif
