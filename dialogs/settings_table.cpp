// The table of settings: bounds, and the way from a record to the settings being edited.
#include "dialogs/settings_table.h"

#include <algorithm>
#include <cstring>

static constexpr int ADJUSTMENTS = 6, FIRST_NEGATED = 3;

int32_t FirstUserSlot(const UIINSTANCE *lpInstance)
{
    return static_cast<int32_t>(lpInstance->dat.nAuto + lpInstance->dat.nPreset);
}

SettingsRecord *SettingAt(UIINSTANCE *lpInstance, int32_t nSetting)
{
    if (nSetting == KV_CUSTOM_SETTINGS)
        return nullptr;
    return RecordAt(lpInstance->dat.lpSettings, lpInstance->dat.nSettings, nSetting);
}

SettingsRecord *CurrentSetting(UIINSTANCE *lpInstance)
{
    return SettingAt(lpInstance, lpInstance->nCurSetting);
}

std::span<SettingsRecord> UserSlots(UIINSTANCE *lpInstance)
{
    std::vector<SettingsRecord> &settings = lpInstance->dat.lpSettings;
    const size_t nEnd = std::min<size_t>(lpInstance->dat.nSettings, settings.size());
    const size_t nFirst = std::min(static_cast<size_t>(FirstUserSlot(lpInstance)), nEnd);
    return std::span(settings).subspan(nFirst, nEnd - nFirst);
}

std::span<SettingsRecord> UserSettings(UIINSTANCE *lpInstance)
{
    const auto slots = UserSlots(lpInstance);
    return slots.first(std::min<size_t>(lpInstance->dat.nUserUsed, slots.size()));
}

std::string SettingName(const SettingsRecord &record)
{
    return {record.szName, strnlen(record.szName, sizeof record.szName)};
}

void PutInk(SettingsRecord *lpRecord, uint8_t bInk)
{
    lpRecord->wInk = static_cast<uint16_t>((lpRecord->wInk & 0xFF00) | bInk);
}

void TakeRecord(UIINSTANCE *lpInstance, const SettingsRecord &record)
{
    lpInstance->bInk = static_cast<uint8_t>(record.wInk);
    lpInstance->bHT = record.bHT;
    lpInstance->wFlags = record.wFlags;
}

void TakeAdjustments(UIINSTANCE *lpInstance, const SettingsRecord &record)
{
    for (int k = 0; k < ADJUSTMENTS; k++)
        lpInstance->nAdjust[k] = k < FIRST_NEGATED ? record.sAdj[k] : -record.sAdj[k];
}

void PutAdjustments(const UIINSTANCE *lpInstance, SettingsRecord *lpRecord)
{
    for (int k = 0; k < ADJUSTMENTS; k++) {
        const int32_t n = lpInstance->nAdjust[k] == ADJUST_MINUS ? 0 : lpInstance->nAdjust[k];
        lpRecord->sAdj[k] = static_cast<int16_t>(k < FIRST_NEGATED ? n : -n);
    }
}
