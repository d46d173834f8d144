// The table of settings as the pages use it: the model's Automatic and predefined settings, then
// the user's slots. A position that leads outside names nothing, and neither does the one that
// stands for settings chosen by hand, however many records there are.
#ifndef KV_DIALOGS_SETTINGS_TABLE_H
#define KV_DIALOGS_SETTINGS_TABLE_H

#include <span>
#include <string>

#include "datafile/instance.h"

// UIINSTANCE.nListState: an entry of the table is current; the settings are custom; an entry again,
// found when the list was opened.
constexpr int32_t LIST_ENTRY = 0, LIST_CUSTOM = 1000, LIST_FOUND = 2000;

// Signed, because data of list items, which are positions, can be -1.
int32_t FirstUserSlot(const UIINSTANCE *lpInstance);
// Null when there is no such record.
SettingsRecord *SettingAt(UIINSTANCE *lpInstance, int32_t nSetting);
// That of nCurSetting.
SettingsRecord *CurrentSetting(UIINSTANCE *lpInstance);

// The user's slots, and the first of them, which are in use, the newest first.
std::span<SettingsRecord> UserSlots(UIINSTANCE *lpInstance);
std::span<SettingsRecord> UserSettings(UIINSTANCE *lpInstance);
// What a user's setting is called: at most 16 bytes.
std::string SettingName(const SettingsRecord &record);

// Of a record's ink the pages read and write the low byte; the high one is carried.
void PutInk(SettingsRecord *lpRecord, uint8_t bInk);
// Ink, HT and options become those being edited.
void TakeRecord(UIINSTANCE *lpInstance, const SettingsRecord &record);
// Colour adjustments, the last three of which are worked on negated.
void TakeAdjustments(UIINSTANCE *lpInstance, const SettingsRecord &record);
// Back into a record. ADJUST_MINUS is a 0 there.
void PutAdjustments(const UIINSTANCE *lpInstance, SettingsRecord *lpRecord);

// An adjustment of which only the minus sign stands so far.
constexpr int32_t ADJUST_MINUS = -100;

#endif
