// The Paper page: numbers of its template, its controls and its help contexts, for the driver's
// scripts and sources. Macros only.
#ifndef KV_RESOURCES_PAPER_IDS_H
#define KV_RESOURCES_PAPER_IDS_H

#define IDD_PAPER 6748
#define IDI_PAPER 6244

#define IDC_PAPER_SIZE_LABEL 5145
#define IDC_PAPER_SIZE 5040
#define IDC_PAPER_SOURCE_LABEL 5146 /* its text is the model's */
#define IDC_PAPER_SOURCE 5041

#define IDC_PAPER_COPIES_GROUP 5154
#define IDC_PAPER_COPIES_LABEL 5156
#define IDC_PAPER_COPIES 5160
#define IDC_PAPER_COPIES_ARROWS 5161

/* Known to the page and its help, but not in its template */
#define IDC_PAPER_COLLATE 5157
#define IDC_PAPER_COLLATE_PICTURE 5158
#define IDC_PAPER_PICTURE 5159

#define IDC_PAPER_ORIENTATION_GROUP 5148
#define IDC_PAPER_PORTRAIT 5042
#define IDC_PAPER_LANDSCAPE 5043

#define IDC_PAPER_AREA_GROUP 5150
#define IDC_PAPER_MAXIMUM 5047
#define IDC_PAPER_CENTERED 5050

#define IDC_PAPER_PREVIEW 5147
#define IDC_PAPER_MAKER 5211

#define HELP_PAPER 512
#define HELP_PAPER_SIZE 517
#define HELP_PAPER_SOURCE 528
#define HELP_PAPER_COPIES 533
#define HELP_PAPER_ORIENTATION 544
#define HELP_PAPER_AREA 549

#endif
