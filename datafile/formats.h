// The records of a model's three files, as they lie in them: little-endian, packed, nothing
// between tables.
//
//   .dat  DatHeader, then paper, source, resolution-name, media, auxiliary, resolution,
//         media-resolution rule and MW tables, a DriverDevMode template, the printer record
//   .cfg  CfgHeader, then wAutoCount + wPresetCount SettingsRecords
//   .ucf  version word, wUserSlots SettingsRecords, wUserPaperSlots UserPaperRecords
#ifndef KV_DATAFILE_FORMATS_H
#define KV_DATAFILE_FORMATS_H

#include <cstddef>
#include <cstdint>

#include "kvui/devmode.h"

constexpr uint16_t FILE_VERSION = 256; // of all three files
constexpr uint16_t STATE_IN_USE = 2;   // wState of a user slot
constexpr uint16_t STATE_FREE = 3;
constexpr uint16_t MARK_FREE = 0xFFFF; // wMark of a user paper slot never used

#pragma pack(push, 1)

struct DatHeader {
    uint16_t wDat0;
    uint16_t wVersion;
    uint16_t wDat2; // 1: More Settings hides its option 5045
    uint16_t wDat3; // 1: More Settings hides its FD option
    uint16_t wPaperCount;
    uint16_t wBinCount;
    uint16_t wResNameCount;
    uint16_t wMediaCount;
    uint16_t wAuxCount;
    uint16_t wResCount;
    uint16_t wMedResCount;
    uint16_t wMWCount;
};

struct PaperRecord {
    int16_t wId;                          // dmPaperSize, and the string id of the name
    int16_t wWidth, wLength;              // 1/360 inch
    int16_t wLeft, wTop, wRight, wBottom; // margins, 1/360 inch
    int16_t wMaxWidth, wMaxLength;        // 0.1 mm
    int16_t wMinWidth, wMinLength;        // 0.1 mm
    int16_t wDefault;                     // 1 default of metric locales, 2 of inch locales
    int16_t wBinMask;                     // bit k: fed from sources of kind k
    int16_t w13;
    int16_t w14;    // preview class
    int16_t wIndex; // own position
};

struct BinRecord {
    uint16_t wId;    // dmDefaultSource; compared as 16 bits
    uint16_t wFlags; // bits 0 to 3 collate rule, bits 8 to 11 printable-area rule
    uint16_t wKind;  // 0 to 15, equal to the position
};

struct MediaRecord {
    int16_t wCode; // lMediaCode
    int16_t wName; // media number, equal to the position
};

struct AuxRecord {
    uint16_t aw[3];
};

struct ResolutionRecord {
    int16_t wRes0;    // own number, as rules name it
    int16_t wMedia;   // index of the media record
    int16_t wResName; // index into the resolution-name table
    int16_t wRes3;    // FD state, not 0 = on
    uint16_t wDotScale;
    uint16_t wFlags;
    int16_t wResX, wResY; // dpi
};

struct MedResRule {
    int16_t sRes, sInk;
    uint16_t wRule;
    int16_t sHS, sMW, sOpt, sMirror;
    uint8_t bHTAllowed;
    uint8_t b15;
    int16_t sFD;
    int16_t sIntents;
};

struct MWRecord {
    int32_t lResY, lResX;
    int32_t lResY2, lResX2; // after dot scaling
    int32_t lSource;        // source id, or MW_ANY
    int32_t lMedia;         // media code, or MW_ANY
    int32_t lInk;           // 1 colour, 0 black, or MW_ANY
    int32_t adwData[8];
};
constexpr int32_t MW_ANY = 99;

struct CfgHeader {
    uint16_t wVersion;
    uint16_t wAutoCount;      // A: Automatic settings
    uint16_t wPresetCount;    // B: predefined Advanced settings
    uint16_t wUserSlots;      // S
    uint16_t wUserPaperSlots; // U
};

struct UserPaperRecord {
    PaperRecord paper; // sizes in the unit of paper.wDefault: 1 0.1 mm, else 0.01 inch
    uint16_t wMark;    // position while in use
    uint16_t wState;   // STATE_IN_USE or STATE_FREE
    char szName[32];   // at most 24 bytes of text, terminated
};

// The part of the printer record that this driver reads.
struct PrinterRecordHead {
    uint8_t ab0[2];
    int16_t sModelId;
    uint8_t ab4[50];
    int16_t wMaxCopies;
    uint8_t ab56[10];
    int16_t sPairCount;
    int16_t sPairOffset; // words from the end of this head
    uint8_t ab70[34];
};

#pragma pack(pop)

#define KV_FIELD_AT(rec, field, offset, width)                                                     \
    static_assert(offsetof(rec, field) == (offset) && sizeof(((rec *)nullptr)->field) == (width),  \
                  #rec "::" #field " moved: it is part of a stored format")

static_assert(sizeof(DatHeader) == 24 && sizeof(PaperRecord) == 32 && sizeof(BinRecord) == 6);
static_assert(sizeof(MediaRecord) == 4 && sizeof(AuxRecord) == 6 && sizeof(CfgHeader) == 10);
static_assert(sizeof(ResolutionRecord) == 16 && sizeof(MedResRule) == 20);
static_assert(sizeof(MWRecord) == 60 && sizeof(UserPaperRecord) == 68);
static_assert(sizeof(PrinterRecordHead) == 104);
KV_FIELD_AT(DatHeader, wVersion, 2, 2);
KV_FIELD_AT(DatHeader, wPaperCount, 8, 2);
KV_FIELD_AT(DatHeader, wMWCount, 22, 2);
KV_FIELD_AT(PaperRecord, wLeft, 6, 2);
KV_FIELD_AT(PaperRecord, wMaxWidth, 14, 2);
KV_FIELD_AT(PaperRecord, wDefault, 22, 2);
KV_FIELD_AT(PaperRecord, wBinMask, 24, 2);
KV_FIELD_AT(PaperRecord, w14, 28, 2);
KV_FIELD_AT(PaperRecord, wIndex, 30, 2);
KV_FIELD_AT(ResolutionRecord, wDotScale, 8, 2);
KV_FIELD_AT(ResolutionRecord, wResX, 12, 2);
KV_FIELD_AT(MedResRule, sHS, 6, 2);
KV_FIELD_AT(MedResRule, bHTAllowed, 14, 1);
KV_FIELD_AT(MedResRule, sFD, 16, 2);
KV_FIELD_AT(MedResRule, sIntents, 18, 2);
KV_FIELD_AT(MWRecord, lSource, 16, 4);
KV_FIELD_AT(MWRecord, adwData, 28, 32);
KV_FIELD_AT(CfgHeader, wUserPaperSlots, 8, 2);
KV_FIELD_AT(UserPaperRecord, wMark, 32, 2);
KV_FIELD_AT(UserPaperRecord, wState, 34, 2);
KV_FIELD_AT(UserPaperRecord, szName, 36, 32);
KV_FIELD_AT(PrinterRecordHead, sModelId, 2, 2);
KV_FIELD_AT(PrinterRecordHead, wMaxCopies, 54, 2);
KV_FIELD_AT(PrinterRecordHead, sPairCount, 66, 2);
KV_FIELD_AT(PrinterRecordHead, sPairOffset, 68, 2);

#endif
