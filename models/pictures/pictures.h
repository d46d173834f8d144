// The pictures of a preset, NAME.bmp and its variants, and those of a paper from a source, for the
// models' scripts. Macros only.
#ifndef KV_MODELS_PICTURES_H
#define KV_MODELS_PICTURES_H

#include "resources/pictures.h"

/* The script compiler takes no sums here, so the numbers are joined from digits. They are
   PICTURE_PRESET_COLOR and its like plus the preset, which has one digit. */
#define PICTURE_FILE(name) #name
#define PRESET_PICTURES(preset, name) \
    100##preset BITMAP PICTURE_FILE(name.bmp) \
    102##preset BITMAP PICTURE_FILE(name##_black.bmp) \
    104##preset BITMAP PICTURE_FILE(name##_mirror.bmp) \
    108##preset BITMAP PICTURE_FILE(name##_black_mirror.bmp)

/* PICTURE_PREVIEW and on, for a preview class and a source: `first` is the first two digits of the
   numbers, 40 + 5 * class + source. Every paper needs them for each source that can feed it, and
   the user-defined paper for all sources: it becomes current when a saved size is gone. */
#define PREVIEW_PICTURES(first, kind, feed) \
    first##00 BITMAP PICTURE_FILE(kind##_##feed##_portrait_maximum.bmp) \
    first##10 BITMAP PICTURE_FILE(kind##_##feed##_portrait_centered.bmp) \
    first##50 BITMAP PICTURE_FILE(kind##_##feed##_landscape_maximum.bmp) \
    first##60 BITMAP PICTURE_FILE(kind##_##feed##_landscape_centered.bmp)

#endif
