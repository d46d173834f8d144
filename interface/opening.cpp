// The opening that all entry points but DevQueryPrint share.
#include "interface/opening.h"

#include "base/module.h"
#include "base/printer.h"
#include "base/text.h"
#include "datafile/install.h"
#include "datafile/records.h"
#include "settings/merge.h"

Opening OpenModel(HANDLE hPrinter, OpenedPrinter *lpPrinter)
{
    *lpPrinter = {};
    WCHAR wszModel[sizeof(DriverDevMode::wszModelName) / sizeof(WCHAR)];
    if (!KVGetPrinterInfo(hPrinter, wszModel))
        return Opening::NoModel;
    lpPrinter->ansiModel.reset(KVUnicodeToShiftJIS(wszModel));
    if (!lpPrinter->ansiModel)
        return Opening::NoText;
    KVMemcpy(lpPrinter->dm.wszModelName, wszModel, KVWStrlen(wszModel) + sizeof(WCHAR));
    if (!InstallCheck(&lpPrinter->dm)) {
        InstallErrMsg();
        return Opening::NoFiles;
    }
    HGLOBAL lpRecord = nullptr;
    int nModelId = -1;
    KVGetPrinterNameToRes(lpPrinter->ansiModel.get(), &lpRecord, &nModelId, &lpPrinter->dm);
    lpPrinter->printerRecord.reset(lpRecord);
    return nModelId < 0 ? Opening::NoPrinterRecord : Opening::Done;
}

Opening FillSettings(HANDLE hPrinter, OpenedPrinter *lpPrinter)
{
    HGLOBAL lpRecord = lpPrinter->printerRecord.get();
    const bool bFilled = KVGetRegDevmode(hPrinter, &lpPrinter->dm, lpRecord) ||
                         KVGetDefDevmode(&lpPrinter->dm, lpRecord, hPrinter);
    return bFilled ? Opening::Done : Opening::NoSettings;
}

bool HasSettings(const DriverDevMode &dm)
{
    return dm.dm.dmOrientation != 0;
}

Opening OpenSettings(HANDLE hPrinter, OpenedPrinter *lpPrinter)
{
    Opening opened = OpenModel(hPrinter, lpPrinter);
    if (opened == Opening::Done)
        opened = FillSettings(hPrinter, lpPrinter);
    if (opened == Opening::Done && !HasSettings(lpPrinter->dm))
        opened = Opening::NoSettings;
    return opened;
}
