// Numbers of the texts in a model's resource library, for the models' scripts and the driver's
// sources. Macros only. Where a table of the model's data gives a number of its own (a media's, a
// preset's), the text is the first of its kind plus that number. A paper's name has the paper's id
// as its number.
#ifndef KV_RESOURCES_TEXT_IDS_H
#define KV_RESOURCES_TEXT_IDS_H

#define PAPER_USER 256

#define MEDIA_NAME 1100
#define RESOLUTION_NAME 1200
#define HT_CHOICE 1300
#define INTENT_NAME 1400
#define SOURCE_NAME 1500
#define PRESET_NAME 1600
#define PRESET_CUSTOM 1650 /* settings chosen by hand */
#define LEVEL_LEFT 1700    /* beside the trackbar: pairs of labels */
#define LEVEL_RIGHT 1710

/* Current Settings */
#define TEXT_PORTRAIT 6401
#define TEXT_LANDSCAPE 6402
#define TEXT_SLOTS_FULL 6403
#define TEXT_MW_ON 6404
#define TEXT_MW_OFF 6405
#define TEXT_OPTION_ON 6406
#define TEXT_HS_ON 6407
#define TEXT_HS_OFF 6408
#define TEXT_PAPER 6655

/* Entry points of the maintenance library */
#define ENTRY_ALIGNMENT 6658
#define ENTRY_NOZZLE 6659
#define ENTRY_CLEANING 6660

/* Saved settings and saved paper sizes */
#define CAPTION_SLOTS_FULL 6671
#define TEXT_DELETE 6672
#define CAPTION_DELETE 6673
#define TEXT_REPLACE 6674
#define CAPTION_REPLACE 6677
#define TEXT_SETTING_LOST 6800
#define CAPTION_SETTING_LOST 6801
#define TEXT_PAPER_RESERVED 6803
#define CAPTION_PAPER 6804
#define TEXT_PAPERS_FULL 6805
#define TEXT_PAPER_REPLACE 6806

/* The message of printer properties, a line each */
#define PROPERTIES_LINE_1 6900
#define PROPERTIES_LINE_2 6901
#define PROPERTIES_LINE_3 6902
#define PROPERTIES_LINE_4 6903
#define PROPERTIES_LINE_5 6904
#define PROPERTIES_LINE_6 6905

#define LABEL_SOURCE 7102

#endif
