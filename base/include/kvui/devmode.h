/* The settings record of one job or one printer, as it travels between the spooler, applications,
 * the rendering half and this driver, and as it is stored with a printer: 562 bytes, packed,
 * little-endian, no pointers. Whoever holds one owns its bytes and copies it whole.
 *
 * Sizes are in 0.1 mm or 1/360 inch as each field says. A record is one of ours when
 * dmSpecVersion, dmDriverVersion, dmSize and dmDriverExtra have the four values below.
 *
 * Plain C, so that companion programs can use it. */
#ifndef KVUI_DEVMODE_H
#define KVUI_DEVMODE_H

#include <stdint.h>

#ifdef __cplusplus
typedef char16_t KVWCHAR;
#else
typedef uint16_t KVWCHAR; /* one UTF-16 unit */
#endif

#define KV_SPECVERSION 0x0320
#define KV_DRIVERVERSION 0x035B
#define KV_PUBLICSIZE 188
#define KV_PRIVATESIZE 374
#define KV_DEVMODESIZE 562

#define KV_PAPER_USER 256        /* dmPaperSize: the freely sized user-defined paper */
#define KV_FIRST_USERSLOT_ID 768 /* dmPaperSize: saved user sizes have ids from here on */
#define KV_CUSTOM_SETTINGS 1000  /* Settings.wIndex: settings chosen by hand */
#define KV_MAXPAIRS 20
#define KV_MOST_COPIES 99

#pragma pack(push, 1)

/* The public part, version 0x0320 of the public layout. Fields that no comment explains are
 * carried from the model's template. */
typedef struct {
    KVWCHAR dmDeviceName[32]; /* printer's name; no terminator when all 32 are used */
    uint16_t dmSpecVersion;   /* KV_SPECVERSION */
    uint16_t dmDriverVersion; /* KV_DRIVERVERSION */
    uint16_t dmSize;          /* KV_PUBLICSIZE */
    uint16_t dmDriverExtra;   /* KV_PRIVATESIZE */
    uint32_t dmFields;        /* which fields the sender means: KV_DM_ values */
    int16_t dmOrientation;    /* 1 portrait, 2 landscape */
    int16_t dmPaperSize;      /* paper id; KV_PAPER_USER; KV_FIRST_USERSLOT_ID and up */
    int16_t dmPaperLength;    /* 0.1 mm */
    int16_t dmPaperWidth;     /* 0.1 mm */
    int16_t dmScale;
    int16_t dmCopies;        /* 1 to KV_MOST_COPIES */
    int16_t dmDefaultSource; /* paper source id */
    int16_t dmPrintQuality;  /* dpi, horizontal */
    int16_t dmColor;         /* 1 monochrome, 2 colour */
    int16_t dmDuplex;
    int16_t dmYResolution; /* dpi, vertical */
    int16_t dmTTOption;
    int16_t dmCollate;
    KVWCHAR dmFormName[32];
    uint16_t dmLogPixels;
    uint32_t dmBitsPerPel;
    uint32_t dmPelsWidth;
    uint32_t dmPelsHeight;
    uint32_t dmDisplayFlags;
    uint32_t dmDisplayFrequency;
} PublicDevMode;

/* One set of print-mode settings; also stored in a model's .cfg (fixed records) and .ucf (the
 * user's slots). */
typedef struct {
    uint16_t wIndex;     /* own position; in a device mode where it came from, or 1000 */
    uint16_t wPreset;    /* number of the preset's name and picture */
    int16_t wAutoLevel;  /* Automatic records: trackbar position 1 or 2; 0 no trackbar */
    int16_t wAutoLabel;  /* trackbar label pair; -1 in an empty user slot */
    int16_t wResolution; /* index of the resolution record */
    int16_t wMedia;      /* media number */
    uint16_t wInk;       /* 1 colour, 0 black */
    uint8_t bHT;         /* 0 to 3 */
    uint8_t b15;         /* carried */
    uint8_t b16;         /* carried */
    uint8_t bIntent;     /* colour intent, 0 to 3 */
    uint16_t w18;        /* carried */
    int16_t sAdj[6];     /* colour adjustments */
    uint16_t w32;        /* carried */
    uint16_t wInkCode;   /* 6 colour, 3 black */
    uint16_t wDotScale;  /* 1 horizontal, 2 vertical, 3 both resolutions doubled */
    uint16_t wRule;      /* from the media-resolution rule in force */
    uint16_t wFlags;     /* KV_FLAG_ options */
    uint16_t wFlags2;    /* follows KV_FLAG_MW and KV_FLAG_OPT of wFlags */
    uint16_t wFlags3;    /* bit 0: the KRJNL option */
    uint16_t wState;     /* stored user slots: 2 in use, 3 free */
    char szName[16];     /* user slot's name; no terminator when all 16 are used */
} SettingsRecord;

typedef struct {
    uint16_t wFirst, wSecond;
} DevModePair;

typedef struct {
    PublicDevMode dm;
    uint32_t dwModelTag;  /* records whose tags differ never exchange private parts */
    uint32_t dwUnit;      /* of user-defined sizes: 1 0.1 mm, 2 0.01 inch */
    int32_t lPaperWidth;  /* 0.1 mm */
    int32_t lPaperLength; /* 0.1 mm */
    uint32_t dwPairCount; /* entries of aPairs in use, 0 to KV_MAXPAIRS */
    DevModePair aPairs[KV_MAXPAIRS];
    KVWCHAR wszModelName[32]; /* the driver's name; finds the model's files */
    SettingsRecord Settings;  /* the current print-mode settings */
    uint32_t bAutoMode;       /* 1 Automatic, 0 Advanced */
    int32_t nPaper;           /* index in the paper table; from its count on, a user paper slot */
    int32_t nBin;             /* index in the source table */
    uint16_t wTmpl1;
    uint16_t wTmpl2;
    uint16_t wTmpl3;
    int32_t nPrintArea;       /* 1 maximum, 2 centred */
    int32_t lMediaCode;       /* of the media that the resolution in force is for */
    uint16_t wMarginLeft;     /* 1/360 inch */
    uint16_t wMarginTop;      /* 1/360 inch */
    uint16_t wMarginRight;    /* 1/360 inch */
    uint16_t wMarginBottom;   /* 1/360 inch */
    uint16_t wPaperWidth360;  /* 1/360 inch */
    uint16_t wPaperLength360; /* 1/360 inch */
    int32_t lMaxPrintWidth;   /* widest printable width, 1/360 inch */
    int32_t lResX;            /* dpi */
    int32_t lResY;            /* dpi */
    uint32_t adwTmpl[7];
    int32_t adwMWData[8]; /* row of the MW table in force; all zero when none is */
    uint32_t dwApiFlag;   /* 1: a length of 0 stands for 254 */
    char szTmplName[32];
} DriverDevMode;

#pragma pack(pop)

/* dmFields */
#define KV_DM_ORIENTATION 0x1u
#define KV_DM_PAPERSIZE 0x2u
#define KV_DM_PAPERLENGTH 0x4u
#define KV_DM_PAPERWIDTH 0x8u
#define KV_DM_COPIES 0x100u
#define KV_DM_DEFAULTSOURCE 0x200u

/* SettingsRecord.wFlags */
#define KV_FLAG_MW 0x1u
#define KV_FLAG_OPT 0x2u
#define KV_FLAG_HS 0x4u
#define KV_FLAG_MIRROR 0x8u

#endif
