// Numbers of the pictures in a model's resource library, for the models' scripts and the driver's
// sources. Macros only.
#ifndef KV_RESOURCES_PICTURES_H
#define KV_RESOURCES_PICTURES_H

#define PICTURE_MAKER 6250 /* the maker's plate at the foot of each page */
#define PICTURE_FACE 6795  /* stretched over an owner-drawn button before its own picture */

/* Utilities */
#define PICTURE_CLEANING 6778
#define PICTURE_ALIGNMENT 6779
#define PICTURE_NOZZLE 6780

/* The Main page's mode: a preset's is the first of its kind plus the preset's number */
#define PICTURE_PRESET_COLOR 1000
#define PICTURE_PRESET_BLACK 1020
#define PICTURE_PRESET_COLOR_MIRROR 1040
#define PICTURE_PRESET_BLACK_MIRROR 1080
#define PICTURE_CUSTOM_COLOR 6327
#define PICTURE_CUSTOM_BLACK 6332
#define PICTURE_CUSTOM_COLOR_MIRROR 7228
#define PICTURE_CUSTOM_BLACK_MIRROR 7231
#define PICTURE_DRAFT_COLOR 6321 /* Automatic, coarse */
#define PICTURE_DRAFT_BLACK 6328
#define PICTURE_DRAFT_COLOR_MIRROR 7226
#define PICTURE_DRAFT_BLACK_MIRROR 7229
#define PICTURE_FINE_COLOR 6248 /* Automatic, fine */
#define PICTURE_FINE_BLACK 6365
#define PICTURE_FINE_COLOR_MIRROR 7227
#define PICTURE_FINE_BLACK_MIRROR 7230

/* Ink */
#define PICTURE_INK_BLACK 6752
#define PICTURE_INK_COLOR 6760

/* Before the lines of Current Settings */
#define PICTURE_LINE_PAPER 6291
#define PICTURE_LINE_ORIENTATION 6290
#define PICTURE_LINE_RESOLUTION 6292
#define PICTURE_LINE_MW 6762
#define PICTURE_LINE_HS 6299
#define PICTURE_LINE_INTENT 6285

/* Beside the controls of More Settings, with some of the above */
#define PICTURE_LINE_MW_OPTION 6337
#define PICTURE_LINE_HT 6764
#define PICTURE_LINE_MIRROR 6288
#define PICTURE_LINE_KRJNL 6286
#define PICTURE_LINE_FD 6298
#define PICTURE_LINE_INK 6287
#define PICTURE_LINE_MEDIA 6293

/* HT choices: the first one plus the choice, 0 to 3 */
#define PICTURE_HT 1350

/* The Paper page's preview: this plus 500 for each preview class, 100 for each source before the
   paper's, 50 for landscape and 10 for the centered area */
#define PICTURE_PREVIEW 4000
#define PREVIEW_CLASS 500
#define PREVIEW_SOURCE 100
#define PREVIEW_LANDSCAPE 50
#define PREVIEW_CENTERED 10

#endif
