// The four pictures of a preset, for the models' scripts: NAME.bmp and its variants. Macros only.
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

#endif
