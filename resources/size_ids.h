// The user-defined paper size dialog, which is the model's: numbers of its template and controls.
// Macros only.
#ifndef KV_RESOURCES_SIZE_IDS_H
#define KV_RESOURCES_SIZE_IDS_H

#define IDD_SIZE 6320

/* The size, and the limits that the model sets to it */
#define IDC_SIZE_WIDTH 5227
#define IDC_SIZE_WIDTH_ARROWS 5231
#define IDC_SIZE_WIDTH_LARGEST 5056
#define IDC_SIZE_WIDTH_SMALLEST 5055
#define IDC_SIZE_LENGTH 5054
#define IDC_SIZE_LENGTH_ARROWS 5232
#define IDC_SIZE_LENGTH_LARGEST 5058
#define IDC_SIZE_LENGTH_SMALLEST 5057

#define IDC_SIZE_MM 5041   /* 0.1 mm */
#define IDC_SIZE_INCH 5042 /* 0.01 inch */

/* Saved sizes */
#define IDC_SIZE_LIST 5255
#define IDC_SIZE_NAME 5256
#define IDC_SIZE_SAVE 5257
#define IDC_SIZE_DELETE 5258

#endif
