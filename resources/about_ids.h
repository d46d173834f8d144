// The About dialog, which is the model's: numbers of its template and of the button that closes it.
// Macros only.
#ifndef KV_RESOURCES_ABOUT_IDS_H
#define KV_RESOURCES_ABOUT_IDS_H

#define IDD_ABOUT 6702

#define IDC_ABOUT_CLOSE 2123

#endif
