// The styles that the templates of pages and dialogs use, for the scripts: macros only.
#ifndef KV_RESOURCES_STYLES_H
#define KV_RESOURCES_STYLES_H

#define WS_CHILD 0x40000000
#define WS_VISIBLE 0x10000000
#define WS_DISABLED 0x08000000
#define WS_POPUP 0x80000000
#define WS_CAPTION 0x00C00000
#define WS_SYSMENU 0x00080000
#define WS_BORDER 0x00800000
#define WS_VSCROLL 0x00200000
#define WS_GROUP 0x00020000
#define WS_TABSTOP 0x00010000
#define BS_OWNERDRAW 0x000B
#define DS_3DLOOK 0x0004
#define DS_MODALFRAME 0x0080
#define SS_BLACKFRAME 0x0007
#define SS_LEFTNOWORDWRAP 0x000C
#define SS_BITMAP 0x000E
#define SS_NOPREFIX 0x0080
#define ES_AUTOHSCROLL 0x0080
#define ES_READONLY 0x0800
#define LBS_NOTIFY 0x0001
#define LBS_OWNERDRAWFIXED 0x0010
#define LBS_HASSTRINGS 0x0040
#define SBS_VERT 0x0001
#define CBS_DROPDOWNLIST 0x0003
#define CBS_OWNERDRAWFIXED 0x0010
#define CBS_SORT 0x0100
#define CBS_HASSTRINGS 0x0200

#define NO_ID 0xFFFF
#ifdef RC_INVOKED /* sources have them from the system */
#define IDOK 1
#define IDCANCEL 2
#endif

#define PAGE_STYLE WS_CHILD | WS_DISABLED | WS_CAPTION
#define DIALOG_STYLE WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_3DLOOK
#define DRAWN_LIST                                                                                 \
    CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS | CBS_SORT | WS_VSCROLL | WS_TABSTOP
#define DRAWN_LIST_BOX                                                                             \
    LBS_NOTIFY | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS | WS_BORDER | WS_VSCROLL | WS_TABSTOP
/* A number to be read, and to be copied, but not to be stopped at. */
#define SHOWN_NUMBER ES_AUTOHSCROLL | ES_READONLY | NOT WS_TABSTOP
#define TEXT_LIST CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP
/* Pictures that only show something take neither focus nor clicks. */
#define DRAWN_PICTURE BS_OWNERDRAW | WS_DISABLED
#define DRAWN_BUTTON BS_OWNERDRAW | WS_TABSTOP
/* Names of papers and settings are shown as they are, and cut where the room ends. */
#define SUMMARY_LINE SS_LEFTNOWORDWRAP | SS_NOPREFIX | WS_GROUP
#define RADIO_FIRST WS_GROUP | WS_TABSTOP

#endif
