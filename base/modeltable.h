// The model table: maps a model name, per user language, to the base names of the model's files.
// The image of kv_model.dat, read at process attach and unchanged until detach.
//
//   0   20  not interpreted
//   20   2  number of sections, signed
//   22      sections: 1 primary language, 1 not read, 2 number of records (signed), records
//
// A section or record that runs past the image's end does not exist.
#ifndef KV_BASE_MODELTABLE_H
#define KV_BASE_MODELTABLE_H

#include "platform/win32.h"

#pragma pack(push, 1)
struct ModelRecord {
    char szModel[52]; // the printer driver's name as the spooler reports it
    char szUIRc[10];  // UI resource library, without ".DLL"
    char szHelp[10];  // help file, without ".HLP"
    char szDat[40];   // data files, without ".dat", ".cfg", ".ucf"
    char szStm[10];
    char szUtil[50]; // maintenance library, without ".dll"
};
struct ModelTableHead {
    BYTE ab0[20];
    SHORT sSections;
};
struct LanguageSectionHead {
    signed char cLanguage; // primary language; a value above 127 never matches
    BYTE b1;
    SHORT sRecords;
};
#pragma pack(pop)
static_assert(sizeof(ModelRecord) == 172 && sizeof(ModelTableHead) == 22 &&
              sizeof(LanguageSectionHead) == 4);
static_assert(offsetof(ModelRecord, szUIRc) == 52 && offsetof(ModelRecord, szHelp) == 62 &&
              offsetof(ModelRecord, szDat) == 72 && offsetof(ModelRecord, szStm) == 112 &&
              offsetof(ModelRecord, szUtil) == 122);

// Bytes read from the system directory's kv_model.dat; 0: no table.
DWORD LoadDataFile();
void FreeDataFile();

// The field of the model's record in the user's language, else in English, else of the first
// record of the first section; "" without a table. ANSI in and out. The text lies in the table:
// never freed or changed, valid until FreeDataFile.
LPCSTR Get_UIRcName(LPCSTR lpModel);
LPCSTR Get_HelpName(LPCSTR lpModel);
LPCSTR Get_DATName(LPCSTR lpModel);
LPCSTR Get_STMName(LPCSTR lpModel);
LPCSTR Get_UtilName(LPCSTR lpModel);

#endif
