// The Save Settings dialog, which is the model's: numbers of its template and controls. Macros
// only.
#ifndef KV_RESOURCES_SAVE_IDS_H
#define KV_RESOURCES_SAVE_IDS_H

#define IDD_SAVE 6785

#define IDC_SAVE_NAME 5204
#define IDC_SAVE_LIST 5226
#define IDC_SAVE_SAVE 5230
#define IDC_SAVE_DELETE 2017

#endif
