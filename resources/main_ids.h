// The Main page: numbers of its template, its controls and its help contexts, for the driver's
// scripts and sources. Macros only.
#ifndef KV_RESOURCES_MAIN_IDS_H
#define KV_RESOURCES_MAIN_IDS_H

#define IDD_MAIN 6747
#define IDI_MAIN 6241

/* Mode */
#define IDC_MAIN_MODE_GROUP 5053
#define IDC_MAIN_MODE_PICTURE 5130
#define IDC_MAIN_AUTOMATIC 5041
#define IDC_MAIN_ADVANCED 5042
#define IDC_MAIN_LEVEL_PLACE 7300 /* hidden: the trackbar is made over its rectangle */
#define IDC_MAIN_LEVEL 2147       /* the trackbar, in no template */
#define IDC_MAIN_LEVEL_LEFT 5146
#define IDC_MAIN_LEVEL_RIGHT 5147
#define IDC_MAIN_SETTINGS 5040
#define IDC_MAIN_MORE 2017
#define IDC_MAIN_SAVE 2019

/* Media and ink */
#define IDC_MAIN_MEDIA_LABEL 5131
#define IDC_MAIN_MEDIA 5079
#define IDC_MAIN_INK_GROUP 5144
#define IDC_MAIN_INK_PICTURE 5133
#define IDC_MAIN_COLOR 5044
#define IDC_MAIN_BLACK 5047

/* Current Settings: a line each, with a small picture before it */
#define IDC_MAIN_CURRENT_LABEL 5145
#define IDC_MAIN_CURRENT_GROUP 5134
#define IDC_MAIN_PAPER 5142
#define IDC_MAIN_PAPER_PICTURE 2020
#define IDC_MAIN_ORIENTATION 5143
#define IDC_MAIN_ORIENTATION_PICTURE 2021
#define IDC_MAIN_RESOLUTION 5140
#define IDC_MAIN_RESOLUTION_PICTURE 5135
#define IDC_MAIN_MW 5141
#define IDC_MAIN_MW_PICTURE 5136
#define IDC_MAIN_HS 5137
#define IDC_MAIN_HS_PICTURE 5132
#define IDC_MAIN_INTENT 5149
#define IDC_MAIN_INTENT_PICTURE 5148

/* The foot of the page */
#define IDC_MAIN_ABOUT 2018
#define IDC_MAIN_MAKER 5210

#define HELP_MAIN 256
#define HELP_MAIN_MODE 261
#define HELP_MAIN_MEDIA 272
#define HELP_MAIN_AUTOMATIC 277
#define HELP_MAIN_ADVANCED 288
#define HELP_MAIN_INK 293
#define HELP_MAIN_CURRENT 304
#define HELP_MAIN_ABOUT 309

#endif
