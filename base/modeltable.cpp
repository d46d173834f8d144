// The model table in memory. The image is read whole, then every section and record that lies
// inside it is copied out once with each text terminated behind its field, so that a lookup
// checks no bounds and hands out its pointers as they are.
#include "base/modeltable.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <string>
#include <vector>

#include "base/handles.h"

namespace
{

constexpr int LANG_ENGLISH = 9;
constexpr LANGID PRIMARY_LANGUAGE = 0x3FF;

// A record's texts; each has room for a terminator that the field itself may lack.
struct ModelNames {
    char szModel[sizeof(ModelRecord::szModel) + 1];
    char szUIRc[sizeof(ModelRecord::szUIRc) + 1];
    char szHelp[sizeof(ModelRecord::szHelp) + 1];
    char szDat[sizeof(ModelRecord::szDat) + 1];
    char szStm[sizeof(ModelRecord::szStm) + 1];
    char szUtil[sizeof(ModelRecord::szUtil) + 1];
};

struct Section {
    int nLanguage;
    std::vector<ModelNames> records;
};

std::vector<Section> aSections;

template <size_t N>
void CopyField(char (&to)[N], const char (&from)[N - 1])
{
    std::memcpy(to, from, N - 1);
}

ModelNames NamesOf(const ModelRecord &record)
{
    ModelNames names{};
    CopyField(names.szModel, record.szModel);
    CopyField(names.szUIRc, record.szUIRc);
    CopyField(names.szHelp, record.szHelp);
    CopyField(names.szDat, record.szDat);
    CopyField(names.szStm, record.szStm);
    CopyField(names.szUtil, record.szUtil);
    return names;
}

// Takes a T off the front of the image; false, and nothing taken, when it does not lie inside.
template <class T>
bool Take(std::span<const BYTE> &image, T *lpTo)
{
    if (image.size() < sizeof(T))
        return false;
    std::memcpy(lpTo, image.data(), sizeof(T));
    image = image.subspan(sizeof(T));
    return true;
}

void ReadSections(std::span<const BYTE> image)
{
    ModelTableHead head;
    LanguageSectionHead section;
    ModelRecord record;
    if (!Take(image, &head))
        return;
    for (int i = 0; i < head.sSections && Take(image, &section); ++i) {
        Section &taken = aSections.emplace_back(Section{section.cLanguage, {}});
        for (int k = 0; k < section.sRecords && Take(image, &record); ++k)
            taken.records.push_back(NamesOf(record));
    }
}

// The whole file in one read; nothing when it cannot be had.
GlobalPtr<BYTE> ReadImage(LPCSTR lpPath, DWORD *lpcb)
{
    *lpcb = 0;
    HANDLE hFile = CreateFileA(lpPath, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                               FILE_ATTRIBUTE_NORMAL, nullptr);
    if (hFile == INVALID_HANDLE_VALUE)
        return nullptr;
    GlobalPtr<BYTE> image;
    const DWORD cbFile = GetFileSize(hFile, nullptr);
    if (cbFile != INVALID_FILE_SIZE && cbFile != 0)
        image.reset(static_cast<BYTE *>(GlobalAlloc(GMEM_FIXED, cbFile)));
    if (image && !ReadFile(hFile, image.get(), cbFile, lpcb, nullptr))
        *lpcb = 0;
    CloseHandle(hFile);
    return image;
}

// The record of this name in the first section of the language; later ones are never searched.
const ModelNames *FindIn(int nLanguage, LPCSTR lpModel)
{
    const auto section = std::ranges::find(aSections, nLanguage, &Section::nLanguage);
    if (section == aSections.end())
        return nullptr;
    for (const ModelNames &names : section->records)
        if (CompareStringA(LOCALE_USER_DEFAULT, 0, lpModel, -1, names.szModel, -1) == CSTR_EQUAL)
            return &names;
    return nullptr;
}

// Never fails: a name that is nowhere is answered by the table's first record, so that an unknown
// model still gets files, and without a table by empty texts.
const ModelNames &Find(LPCSTR lpModel)
{
    static constexpr ModelNames nill{};
    if (const ModelNames *lpOwn = FindIn(GetUserDefaultLangID() & PRIMARY_LANGUAGE, lpModel))
        return *lpOwn;
    if (const ModelNames *lpEnglish = FindIn(LANG_ENGLISH, lpModel))
        return *lpEnglish;
    if (aSections.empty() || aSections.front().records.empty())
        return nill;
    return aSections.front().records.front();
}

} // namespace

DWORD LoadDataFile()
{
    char szDirectory[MAX_PATH];
    const UINT cch = GetSystemDirectoryA(szDirectory, sizeof szDirectory);
    if (cch == 0 || cch >= sizeof szDirectory)
        return 0;
    DWORD cb = 0;
    const GlobalPtr<BYTE> image =
        ReadImage((std::string(szDirectory) + "\\kv_model.dat").c_str(), &cb);
    if (cb == 0)
        return 0;
    FreeDataFile();
    ReadSections({image.get(), cb});
    return cb;
}

void FreeDataFile()
{
    aSections = {};
}

LPCSTR Get_UIRcName(LPCSTR lpModel)
{
    return Find(lpModel).szUIRc;
}

LPCSTR Get_HelpName(LPCSTR lpModel)
{
    return Find(lpModel).szHelp;
}

LPCSTR Get_DATName(LPCSTR lpModel)
{
    return Find(lpModel).szDat;
}

LPCSTR Get_STMName(LPCSTR lpModel)
{
    return Find(lpModel).szStm;
}

LPCSTR Get_UtilName(LPCSTR lpModel)
{
    return Find(lpModel).szUtil;
}
