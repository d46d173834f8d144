/* For companion programs: reading and changing single settings of a DriverDevMode without any
 * window, with the checks that the settings pages make. Plain C.
 *
 * The functions are exported by the driver's library; one call at a time in a process.
 *
 * All results are 32-bit: KVDD_OK or one of the negative values below, unless stated. A refused
 * change leaves the record as it was. A null block, answer or structure is KVDD_NOT_ALLOWED, once
 * the item is known. Blocks, records and structures may lie at any address, odd ones too. Sizes
 * are in 0.1 mm. */
#ifndef KVUI_KVDD_H
#define KVUI_KVDD_H

#include <kvui/devmode.h>

#ifdef __cplusplus
extern "C" {
#endif

#define KVDD_API __attribute__((visibility("default")))

#define KVDD_OK 0
#define KVDD_UNKNOWN (-1)     /* no such item, or not with this function */
#define KVDD_NOT_ALLOWED (-2) /* a value that the model does not allow */
#define KVDD_NO_DATA (-7)     /* the model's files cannot be loaded, or nothing fits */

/* Items. */
#define KVDD_COPIES 10      /* get, range, set */
#define KVDD_ORIENTATION 20 /* get, set */
#define KVDD_PAPER 30       /* get, range, set */
#define KVDD_SOURCE 40      /* get, range, set */
#define KVDD_COLOR 50       /* get, range */
#define KVDD_MEDIA 60       /* get, range */
#define KVDD_PRINTMODE 70   /* get, range, set */
#define KVDD_PRINTAREA 80   /* get, range, set */
#define KVDD_APIFLAG 110    /* get, range, set */

#pragma pack(push, 1)

/* The caller's block. sDistance bytes from its start (negative, odd, any) lies the DriverDevMode
 * to work on; szDriver is read by KVDD_GetDrivInfo only. */
typedef struct {
    uint8_t ab0[122];
    int16_t sDistance;
    uint8_t ab124[4];
    char szDriver[32]; /* terminated, at most 31 bytes */
} KVDDBLOCK;

/* KVDD_GetDrivInfo's answer. */
typedef struct {
    int16_t wValue; /* 48 */
    char szDriver[32];
} KVDDDRIVINFO;

/* KVDD_GetRange's answer for KVDD_PAPER. dwIds is the address of an array for the ids, which must
 * lie below 4 GiB, or 0; without an array only wPapers is written. */
typedef struct {
    uint16_t wMaxWidth, wMaxLength, wMinWidth, wMinLength; /* of the user-defined paper */
    uint16_t wPapers;                                      /* papers of the current source */
    uint32_t dwIds;
} KVDDPAPERRANGE;

/* KVDD_GetRange's answer for KVDD_SOURCE and KVDD_MEDIA; dwValues as dwIds above. */
typedef struct {
    uint16_t wCount;
    uint16_t wTwo; /* 2 */
    uint32_t dwValues;
} KVDDLISTRANGE;

/* KVDD_GetData's answer for KVDD_PAPER. */
typedef struct {
    int16_t wWidth, wLength;
    int16_t wPrintWidth, wPrintLength;
    int16_t wLeft, wTop;
    int16_t wPaper; /* id */
} KVDDPAPER;

/* KVDD_SetData's value for KVDD_PAPER; size for paper 256 only. All four words are written: the
 * limits come back in them, whether or not the size was within. */
typedef struct {
    int16_t wWidth, wLength;
    int16_t wPaper; /* id; on return the smallest width */
    int16_t wMinLength;
} KVDDSETPAPER;

/* KVDD_GetData's answer and KVDD_SetData's value for KVDD_PRINTMODE. */
typedef struct {
    int16_t wMode;  /* 1 Automatic, 0 Advanced */
    int16_t wLevel; /* 1 or 2 */
    int16_t wMedia; /* media code */
    int16_t wColor; /* 1 monochrome, 2 colour */
} KVDDPRINTMODE;

#pragma pack(pop)

/* Fills lpDM, whose wszModelName must be set and whose rest must be zero, with the model's
 * defaults: 1, or 0 when they cannot be had or lpDM is null. */
KVDD_API int32_t KVDD_GetOrgDevMode(void *lpUnused, DriverDevMode *lpDM);
/* 34, the size of the answer, which is written when lpInfo is not null; 0 without a block. */
KVDD_API int32_t KVDD_GetDrivInfo(const void *lpBlock, void *lpInfo);
/* The level of an item, 1 to 3. */
KVDD_API int32_t KVDD_GetCmdLevel(const void *lpUnused, uint32_t dwItem);
/* lpRange: the first word, or a structure above. */
KVDD_API int32_t KVDD_GetRange(void *lpBlock, uint32_t dwItem, void *lpRange);
/* lpData: one signed word, or a structure above. */
KVDD_API int32_t KVDD_GetData(const void *lpBlock, uint32_t dwItem, void *lpData);
/* lpValue: the number itself as a 16-bit value, or the address of a structure above. */
KVDD_API int32_t KVDD_SetData(void *lpBlock, uint32_t dwItem, intptr_t lpValue);

#ifdef __cplusplus
}
#endif

#endif
