/* A companion program's part in plain C: it calls the driver through the functions it found. */
#ifndef KV_TESTS_API_C_CALLER_H
#define KV_TESTS_API_C_CALLER_H

#include <kvui/kvdd.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct {
    int32_t (*lpOrgDevMode)(void *, DriverDevMode *);
    int32_t (*lpDrivInfo)(const void *, void *);
    int32_t (*lpCmdLevel)(const void *, uint32_t);
    int32_t (*lpRange)(void *, uint32_t, void *);
    int32_t (*lpGet)(const void *, uint32_t, void *);
    int32_t (*lpSet)(void *, uint32_t, intptr_t);
} Functions;

/* Sets copies and a free paper size in the defaults of a model, and reads them back through the
 * driver. 0, or the number of the step that went wrong. */
int SetAndReadBack(const Functions *lpFunctions, const KVWCHAR *lpModel);

#ifdef __cplusplus
}
#endif

#endif
