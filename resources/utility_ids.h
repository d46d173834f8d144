// The Utility page: numbers of its template, its controls and its help contexts, for the driver's
// scripts and sources. Macros only.
#ifndef KV_RESOURCES_UTILITY_IDS_H
#define KV_RESOURCES_UTILITY_IDS_H

#define IDD_UTILITY 6750
#define IDI_UTILITY 6246

/* Each utility: its button, its title and what it is for */
#define IDC_UTILITY_NOZZLE 2020
#define IDC_UTILITY_NOZZLE_TITLE 5175
#define IDC_UTILITY_NOZZLE_TEXT 5176
#define IDC_UTILITY_CLEANING 2018
#define IDC_UTILITY_CLEANING_TITLE 5171
#define IDC_UTILITY_CLEANING_TEXT 5172
#define IDC_UTILITY_ALIGNMENT 2019
#define IDC_UTILITY_ALIGNMENT_TITLE 5173
#define IDC_UTILITY_ALIGNMENT_TEXT 5174

/* The printer's status program: known to the page and its help, but not in its template */
#define IDC_UTILITY_STATUS_TITLE 5169
#define IDC_UTILITY_STATUS 5170

#define IDC_UTILITY_MAKER 5212

#define HELP_UTILITY 768
#define HELP_UTILITY_STATUS 773
#define HELP_UTILITY_NOZZLE 784
#define HELP_UTILITY_CLEANING 789
#define HELP_UTILITY_ALIGNMENT 800

#endif
