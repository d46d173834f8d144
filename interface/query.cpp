// Whether a job can be printed.
#include "interface/entry.h"

// Every job and every record is accepted: the identifier 0 says that nothing speaks against it.
BOOL WINAPI DevQueryPrint(HANDLE, DriverDevMode *, DWORD *lpId)
{
    if (lpId)
        *lpId = 0;
    return TRUE;
}
