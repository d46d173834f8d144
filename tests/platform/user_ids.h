// Names of the sample dialogs' controls, for their script and for the tests.
#ifndef KV_TESTS_PLATFORM_USER_IDS_H
#define KV_TESTS_PLATFORM_USER_IDS_H

#define IDD_FIRST 100
#define IDD_SECOND 101
#define IDD_THIRD 102
#define IDD_PLAIN 111
#define IDD_EXTENDED 112
#define IDD_HUGE 113

#define IDC_AUTO 201
#define IDC_MANUAL 202
#define IDC_COLOR 203
#define IDC_BLACK 204
#define IDC_MIRROR 205
#define IDC_LIST 206
#define IDC_NUMBER 208
#define IDC_SPIN 209
#define IDC_TEXT 210
#define IDC_PICTURE 212
#define IDC_NAMES 213
#define IDC_TRACK 214
#define IDC_MORE 216
#define IDC_LABEL 217
#define IDC_OWNERNAMES 220

#define IDB_MONO 300
#define IDB_16 301
#define IDB_256 302
#define IDB_TRUE 303
#define IDB_WIDE 304
#define IDI_TAB 310

#endif
