// The numbers of the driver's own resources, for its scripts and its sources: macros only.
#ifndef KV_RESOURCES_IDS_H
#define KV_RESOURCES_IDS_H

// The missing-driver-files message: the texts from FIRST to LAST joined, each with a line break
// of its own. The last number is kept for a longer message; no language has a text for it.
#define IDS_INSTALL_FIRST 6910
#define IDS_INSTALL_1 6910
#define IDS_INSTALL_2 6911
#define IDS_INSTALL_3 6912
#define IDS_INSTALL_4 6913
#define IDS_INSTALL_5 6914
#define IDS_INSTALL_LAST 6915

// The wrong-system-version message, made the same way. The last three numbers are kept.
#define IDS_VERSION_FIRST 6920
#define IDS_VERSION_1 6920
#define IDS_VERSION_2 6921
#define IDS_VERSION_3 6922
#define IDS_VERSION_LAST 6925

#endif
