/* What a companion program written in C relies on: the header by itself, its layouts, the calls. */
#include "c_caller.h"

#include <stddef.h>
#include <string.h>

_Static_assert(sizeof(KVWCHAR) == 2, "one UTF-16 unit");
_Static_assert(sizeof(DriverDevMode) == KV_DEVMODESIZE, "record");
_Static_assert(sizeof(PublicDevMode) == KV_PUBLICSIZE, "public part");
_Static_assert(sizeof(SettingsRecord) == 64, "settings");
_Static_assert(offsetof(DriverDevMode, wszModelName) == 288, "model name");
_Static_assert(offsetof(DriverDevMode, Settings) == 352, "settings");
_Static_assert(offsetof(DriverDevMode, dwApiFlag) == 526, "flag");
_Static_assert(offsetof(KVDDBLOCK, sDistance) == 122, "distance");
_Static_assert(offsetof(KVDDBLOCK, szDriver) == 128, "driver's name");
_Static_assert(sizeof(KVDDDRIVINFO) == 34, "driver information");
_Static_assert(offsetof(KVDDPAPERRANGE, wPapers) == 8, "paper range");
_Static_assert(offsetof(KVDDPAPERRANGE, dwIds) == 10, "paper range");
_Static_assert(offsetof(KVDDLISTRANGE, dwValues) == 4, "list range");
_Static_assert(offsetof(KVDDPAPER, wPaper) == 12, "paper");
_Static_assert(sizeof(KVDDSETPAPER) == 8 && sizeof(KVDDPRINTMODE) == 8, "values");

typedef struct {
    KVDDBLOCK block;
    DriverDevMode record;
} Caller;

int SetAndReadBack(const Functions *lpFunctions, const KVWCHAR *lpModel)
{
    Caller caller;
    KVDDSETPAPER size = {1000, 1500, KV_PAPER_USER, 0};
    KVDDPAPER paper;
    int16_t wCopies;
    size_t i;

    memset(&caller, 0, sizeof(caller));
    caller.block.sDistance = (int16_t)offsetof(Caller, record);
    for (i = 0; i < 31 && lpModel[i]; ++i)
        caller.record.wszModelName[i] = lpModel[i];
    if (lpFunctions->lpOrgDevMode(NULL, &caller.record) != 1)
        return 1;
    if (lpFunctions->lpSet(&caller, KVDD_COPIES, 7) != KVDD_OK ||
        lpFunctions->lpGet(&caller, KVDD_COPIES, &wCopies) != KVDD_OK || wCopies != 7)
        return 2;
    if (lpFunctions->lpSet(&caller, KVDD_PAPER, (intptr_t)&size) != KVDD_OK ||
        lpFunctions->lpGet(&caller, KVDD_PAPER, &paper) != KVDD_OK || paper.wWidth != 1000 ||
        paper.wLength != 1500 || paper.wPaper != KV_PAPER_USER)
        return 3;
    if (lpFunctions->lpSet(&caller, KVDD_COLOR, 1) != KVDD_UNKNOWN ||
        lpFunctions->lpCmdLevel(NULL, KVDD_COLOR) < 1)
        return 4;
    return lpFunctions->lpDrivInfo(NULL, NULL) == 0 ? 0 : 5;
}
