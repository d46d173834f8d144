// Every field of the settings record, once: where it stands, how wide it is and how it reads.
// The layout is asserted from this table, and a record is decoded from it.
#ifndef KV_BASE_DEVMODE_FIELDS_H
#define KV_BASE_DEVMODE_FIELDS_H

#include <cstddef>

#include "kvui/devmode.h"

enum class FieldKind { Unsigned, Signed, Hex, WideText, Text, UnsignedArray, SignedArray, Pairs };

//      field, offset, bytes in all, bytes of one element, kind
#define KV_DEVMODE_FIELDS(X)                                                                       \
    X(dm.dmDeviceName, 0, 64, 2, WideText)                                                         \
    X(dm.dmSpecVersion, 64, 2, 2, Hex)                                                             \
    X(dm.dmDriverVersion, 66, 2, 2, Hex)                                                           \
    X(dm.dmSize, 68, 2, 2, Unsigned)                                                               \
    X(dm.dmDriverExtra, 70, 2, 2, Unsigned)                                                        \
    X(dm.dmFields, 72, 4, 4, Hex)                                                                  \
    X(dm.dmOrientation, 76, 2, 2, Signed)                                                          \
    X(dm.dmPaperSize, 78, 2, 2, Signed)                                                            \
    X(dm.dmPaperLength, 80, 2, 2, Signed)                                                          \
    X(dm.dmPaperWidth, 82, 2, 2, Signed)                                                           \
    X(dm.dmScale, 84, 2, 2, Signed)                                                                \
    X(dm.dmCopies, 86, 2, 2, Signed)                                                               \
    X(dm.dmDefaultSource, 88, 2, 2, Signed)                                                        \
    X(dm.dmPrintQuality, 90, 2, 2, Signed)                                                         \
    X(dm.dmColor, 92, 2, 2, Signed)                                                                \
    X(dm.dmDuplex, 94, 2, 2, Signed)                                                               \
    X(dm.dmYResolution, 96, 2, 2, Signed)                                                          \
    X(dm.dmTTOption, 98, 2, 2, Signed)                                                             \
    X(dm.dmCollate, 100, 2, 2, Signed)                                                             \
    X(dm.dmFormName, 102, 64, 2, WideText)                                                         \
    X(dm.dmLogPixels, 166, 2, 2, Unsigned)                                                         \
    X(dm.dmBitsPerPel, 168, 4, 4, Unsigned)                                                        \
    X(dm.dmPelsWidth, 172, 4, 4, Unsigned)                                                         \
    X(dm.dmPelsHeight, 176, 4, 4, Unsigned)                                                        \
    X(dm.dmDisplayFlags, 180, 4, 4, Unsigned)                                                      \
    X(dm.dmDisplayFrequency, 184, 4, 4, Unsigned)                                                  \
    X(dwModelTag, 188, 4, 4, Hex)                                                                  \
    X(dwUnit, 192, 4, 4, Unsigned)                                                                 \
    X(lPaperWidth, 196, 4, 4, Signed)                                                              \
    X(lPaperLength, 200, 4, 4, Signed)                                                             \
    X(dwPairCount, 204, 4, 4, Unsigned)                                                            \
    X(aPairs, 208, 80, 4, Pairs)                                                                   \
    X(wszModelName, 288, 64, 2, WideText)                                                          \
    X(Settings.wIndex, 352, 2, 2, Unsigned)                                                        \
    X(Settings.wPreset, 354, 2, 2, Unsigned)                                                       \
    X(Settings.wAutoLevel, 356, 2, 2, Signed)                                                      \
    X(Settings.wAutoLabel, 358, 2, 2, Signed)                                                      \
    X(Settings.wResolution, 360, 2, 2, Signed)                                                     \
    X(Settings.wMedia, 362, 2, 2, Signed)                                                          \
    X(Settings.wInk, 364, 2, 2, Unsigned)                                                          \
    X(Settings.bHT, 366, 1, 1, Unsigned)                                                           \
    X(Settings.b15, 367, 1, 1, Unsigned)                                                           \
    X(Settings.b16, 368, 1, 1, Unsigned)                                                           \
    X(Settings.bIntent, 369, 1, 1, Unsigned)                                                       \
    X(Settings.w18, 370, 2, 2, Unsigned)                                                           \
    X(Settings.sAdj, 372, 12, 2, SignedArray)                                                      \
    X(Settings.w32, 384, 2, 2, Unsigned)                                                           \
    X(Settings.wInkCode, 386, 2, 2, Unsigned)                                                      \
    X(Settings.wDotScale, 388, 2, 2, Unsigned)                                                     \
    X(Settings.wRule, 390, 2, 2, Unsigned)                                                         \
    X(Settings.wFlags, 392, 2, 2, Hex)                                                             \
    X(Settings.wFlags2, 394, 2, 2, Hex)                                                            \
    X(Settings.wFlags3, 396, 2, 2, Hex)                                                            \
    X(Settings.wState, 398, 2, 2, Unsigned)                                                        \
    X(Settings.szName, 400, 16, 1, Text)                                                           \
    X(bAutoMode, 416, 4, 4, Unsigned)                                                              \
    X(nPaper, 420, 4, 4, Signed)                                                                   \
    X(nBin, 424, 4, 4, Signed)                                                                     \
    X(wTmpl1, 428, 2, 2, Unsigned)                                                                 \
    X(wTmpl2, 430, 2, 2, Unsigned)                                                                 \
    X(wTmpl3, 432, 2, 2, Unsigned)                                                                 \
    X(nPrintArea, 434, 4, 4, Signed)                                                               \
    X(lMediaCode, 438, 4, 4, Signed)                                                               \
    X(wMarginLeft, 442, 2, 2, Unsigned)                                                            \
    X(wMarginTop, 444, 2, 2, Unsigned)                                                             \
    X(wMarginRight, 446, 2, 2, Unsigned)                                                           \
    X(wMarginBottom, 448, 2, 2, Unsigned)                                                          \
    X(wPaperWidth360, 450, 2, 2, Unsigned)                                                         \
    X(wPaperLength360, 452, 2, 2, Unsigned)                                                        \
    X(lMaxPrintWidth, 454, 4, 4, Signed)                                                           \
    X(lResX, 458, 4, 4, Signed)                                                                    \
    X(lResY, 462, 4, 4, Signed)                                                                    \
    X(adwTmpl, 466, 28, 4, UnsignedArray)                                                          \
    X(adwMWData, 494, 32, 4, SignedArray)                                                          \
    X(dwApiFlag, 526, 4, 4, Unsigned)                                                              \
    X(szTmplName, 530, 32, 1, Text)

struct DevModeField {
    const char *lpszName; // as in the record, with "dm." and "Settings." before nested ones
    size_t cbOffset, cbField, cbElement;
    FieldKind kind;
};

inline constexpr DevModeField aDevModeFields[] = {
#define KV_ROW(field, offset, bytes, element, kind)                                                \
    {#field, offset, bytes, element, FieldKind::kind},
    KV_DEVMODE_FIELDS(KV_ROW)
#undef KV_ROW
};

#define KV_ASSERT_FIELD(field, offset, bytes, element, kind)                                       \
    static_assert(offsetof(DriverDevMode, field) == (offset) &&                                    \
                      sizeof(((DriverDevMode *)nullptr)->field) == (bytes),                        \
                  #field " moved: it is part of a stored format");
KV_DEVMODE_FIELDS(KV_ASSERT_FIELD)
#undef KV_ASSERT_FIELD

consteval bool FieldsCoverTheRecord()
{
    size_t cb = 0;
    for (const DevModeField &field : aDevModeFields) {
        if (field.cbOffset != cb || field.cbField % field.cbElement != 0)
            return false;
        cb += field.cbField;
    }
    return cb == sizeof(DriverDevMode);
}
static_assert(FieldsCoverTheRecord(), "a byte of the record has no field, or two");
static_assert(sizeof(DriverDevMode) == KV_DEVMODESIZE && sizeof(PublicDevMode) == KV_PUBLICSIZE);
static_assert(sizeof(SettingsRecord) == 64);

#endif
