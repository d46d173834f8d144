// The exported functions for companion programs: find the item and the record, then leave the
// work to the item's function.
#include "api/dev_api.h"

#include <algorithm>
#include <cstring>

#include "base/module.h"
#include "base/text.h"
#include "settings/defaults.h"

static constexpr SHORT DRIVINFO_VALUE = 48;
static constexpr size_t DRIVERNAME_MAX = 31;

static_assert(sizeof(KVDDBLOCK) == 160 && offsetof(KVDDBLOCK, sDistance) == 122 &&
              offsetof(KVDDBLOCK, szDriver) == 128);
static_assert(sizeof(KVDDDRIVINFO) == 34 && offsetof(KVDDDRIVINFO, szDriver) == 2);

struct Item {
    uint32_t dwItem;
    int32_t lLevel;
    bool bPointer; // its value is an address
    int32_t (*lpRange)(const DriverDevMode *, void *);
    int32_t (*lpGet)(const DriverDevMode *, void *);
    int32_t (*lpSet)(DriverDevMode *, intptr_t);
};

// A function that an item lacks is null: the item is unknown there.
static constexpr Item aItems[] = {
    {.dwItem = KVDD_COPIES,
     .lLevel = 2,
     .bPointer = false,
     .lpRange = RangeOfCopies,
     .lpGet = GetCopies,
     .lpSet = SetCopies},
    {.dwItem = KVDD_ORIENTATION,
     .lLevel = 1,
     .bPointer = false,
     .lpRange = nullptr,
     .lpGet = GetOrientation,
     .lpSet = SetOrientation},
    {.dwItem = KVDD_PAPER,
     .lLevel = 2,
     .bPointer = true,
     .lpRange = RangeOfPaper,
     .lpGet = GetPaper,
     .lpSet = SetPaper},
    {.dwItem = KVDD_SOURCE,
     .lLevel = 2,
     .bPointer = false,
     .lpRange = RangeOfSource,
     .lpGet = GetSource,
     .lpSet = SetSource},
    {.dwItem = KVDD_COLOR,
     .lLevel = 2,
     .bPointer = false,
     .lpRange = RangeOfColor,
     .lpGet = GetColor,
     .lpSet = nullptr},
    {.dwItem = KVDD_MEDIA,
     .lLevel = 2,
     .bPointer = false,
     .lpRange = RangeOfMedia,
     .lpGet = GetMedia,
     .lpSet = nullptr},
    {.dwItem = KVDD_PRINTMODE,
     .lLevel = 2,
     .bPointer = true,
     .lpRange = RangeOfPrintMode,
     .lpGet = GetPrintMode,
     .lpSet = SetPrintMode},
    {.dwItem = KVDD_PRINTAREA,
     .lLevel = 3,
     .bPointer = false,
     .lpRange = RangeOfPrintArea,
     .lpGet = GetPrintArea,
     .lpSet = SetPrintArea},
    {.dwItem = KVDD_APIFLAG,
     .lLevel = 3,
     .bPointer = false,
     .lpRange = RangeOfApiFlag,
     .lpGet = GetApiFlag,
     .lpSet = SetApiFlag},
};
static_assert(std::ranges::adjacent_find(aItems, std::ranges::greater_equal{}, &Item::dwItem) ==
                  std::end(aItems),
              "an item stands twice, or out of order");

static const Item *FindItem(uint32_t dwItem)
{
    const Item *lpItem = std::ranges::find(aItems, dwItem, &Item::dwItem);
    return lpItem != std::end(aItems) ? lpItem : nullptr;
}

// Packed structures only: the block and the record may lie at odd addresses.
static DriverDevMode *RecordOf(const void *lpBlock)
{
    const int16_t sDistance = static_cast<const KVDDBLOCK *>(lpBlock)->sDistance;
    const uintptr_t address = reinterpret_cast<uintptr_t>(lpBlock);
    return reinterpret_cast<DriverDevMode *>(address + static_cast<intptr_t>(sDistance));
}

int32_t KVDD_GetOrgDevMode(void *, DriverDevMode *lpDM)
{
    return Guarded(0, [=] { return lpDM && InitPrinterDevMode(lpDM, nullptr, nullptr) ? 1 : 0; });
}

int32_t KVDD_GetDrivInfo(const void *lpBlock, void *lpInfo)
{
    if (!lpBlock)
        return 0;
    if (lpInfo) {
        // The caller's block may end with the name's terminator: nothing behind it is read.
        const char *lpName = static_cast<const KVDDBLOCK *>(lpBlock)->szDriver;
        KVDDDRIVINFO info{};
        info.wValue = DRIVINFO_VALUE;
        KVMemcpy(info.szDriver, lpName, strnlen(lpName, DRIVERNAME_MAX));
        KVMemcpy(lpInfo, &info, sizeof(info));
    }
    return sizeof(KVDDDRIVINFO);
}

int32_t KVDD_GetCmdLevel(const void *, uint32_t dwItem)
{
    const Item *lpItem = FindItem(dwItem);
    return lpItem ? lpItem->lLevel : KVDD_UNKNOWN;
}

int32_t KVDD_GetRange(void *lpBlock, uint32_t dwItem, void *lpRange)
{
    const Item *lpItem = FindItem(dwItem);
    if (!lpItem || !lpItem->lpRange)
        return KVDD_UNKNOWN;
    if (!lpBlock || !lpRange)
        return KVDD_NOT_ALLOWED;
    return Guarded(KVDD_NO_DATA, [=] { return lpItem->lpRange(RecordOf(lpBlock), lpRange); });
}

int32_t KVDD_GetData(const void *lpBlock, uint32_t dwItem, void *lpData)
{
    const Item *lpItem = FindItem(dwItem);
    if (!lpItem || !lpItem->lpGet)
        return KVDD_UNKNOWN;
    if (!lpBlock || !lpData)
        return KVDD_NOT_ALLOWED;
    return Guarded(KVDD_NO_DATA, [=] { return lpItem->lpGet(RecordOf(lpBlock), lpData); });
}

int32_t KVDD_SetData(void *lpBlock, uint32_t dwItem, intptr_t lpValue)
{
    const Item *lpItem = FindItem(dwItem);
    if (!lpItem || !lpItem->lpSet)
        return KVDD_UNKNOWN;
    if (!lpBlock || (lpItem->bPointer && !lpValue))
        return KVDD_NOT_ALLOWED;
    DriverDevMode *lpDM = RecordOf(lpBlock);
    const DriverDevMode before = *lpDM;
    const int32_t lResult = Guarded(KVDD_NO_DATA, [=] { return lpItem->lpSet(lpDM, lpValue); });
    if (lResult != KVDD_OK)
        KVMemcpy(lpDM, &before, sizeof(before));
    return lResult;
}
