// The sample models as they are built: every text and preview that their data asks for is there,
// and the model table leads to the files.
#include <fstream>
#include <iterator>
#include <set>

#include "base/modeltable.h"
#include "resources/pictures.h"
#include "tests/support/machine.h"
#include "tests/support/model_builder.h"
#include "tools/kvmodel/model.h"

namespace
{

Bytes FileBytes(const std::string &name)
{
    std::ifstream stream(KV_SAMPLE_ROOT "/c/winnt35/" + name, std::ios::binary);
    EXPECT_TRUE(stream) << name;
    return {std::istreambuf_iterator<char>(stream), {}};
}

// The numbers of all texts that a model's tables name, and of those that every model has.
std::set<UINT> TextsOf(const kvm::ModelFiles &model)
{
    std::set<UINT> ids = {1650, 6655, 6671, 6672, 6673, 6674, 6677, 6800, 6801, 7102};
    const auto add = [&](int first, int n) { ids.insert(static_cast<UINT>(first + n)); };
    for (const auto &[first, n] :
         {std::pair(1300, 4), {1400, 4}, {6401, 8}, {6658, 3}, {6803, 4}, {6900, 3}})
        for (int i = 0; i < n; ++i)
            add(first, i);
    for (const PaperRecord &paper : model.papers)
        add(0, paper.wId);
    for (const MediaRecord &media : model.media)
        add(1100, media.wName);
    for (const int16_t name : model.resNames)
        add(1200, name);
    for (const BinRecord &source : model.sources)
        add(1500, source.wKind);
    for (const SettingsRecord &preset : model.presets)
        add(1600, preset.wPreset);
    for (const SettingsRecord &setting : model.automatic) {
        add(1700, setting.wAutoLabel);
        add(1710, setting.wAutoLabel);
    }
    return ids;
}

struct Sample {
    const char *name, *data, *ui;
};
constexpr Sample aSamples[] = {{"KORVA KJ-150", "KJ150", "KJ150UI"},
                               {"KORVA KJ-820 Pro", "KJ820PRO", "KJ820UI"}};

class Samples : public MachineTest
{
  protected:
    // A sample's library, as if it stood on this machine.
    static HMODULE LibraryOf(const Sample &sample)
    {
        const std::string name = sample.ui + std::string(".DLL");
        kvp::PutMemoryFile(DRIVER_DIR + name, FileBytes("system32/spool/drivers/w32x86/1/" + name));
        return LoadLibraryA((DRIVER_DIR + name).c_str());
    }

    static void ReadData(const Sample &sample, kvm::ModelFiles &model)
    {
        const std::string base = sample.data;
        kvm::Problems problems;
        ASSERT_TRUE(kvm::ReadModel(FileBytes(base + ".dat"), FileBytes(base + ".cfg"), model,
                                   problems, problems));
    }
};

TEST_F(Samples, EveryTextIsThereInBothLanguages)
{
    for (const Sample &sample : aSamples) {
        kvm::ModelFiles model;
        ReadData(sample, model);
        std::set<std::u16string> english;
        for (const LANGID language : {LANGID{0x0409}, LANGID{0x0411}}) {
            machine.wLang = language;
            Apply();
            HMODULE module = LibraryOf(sample);
            ASSERT_NE(module, nullptr);
            for (const UINT id : TextsOf(model)) {
                SCOPED_TRACE(std::to_string(id) + " " + sample.name);
                WCHAR text[256];
                EXPECT_GT(LoadStringW(module, id, text, 256), 0);
                // Papers may be called the same everywhere; entry points are.
                const bool bTranslated = id >= 1100 && (id < 6658 || id > 6660);
                if (language == 0x0409)
                    english.insert(text);
                else
                    EXPECT_TRUE(!bTranslated || !english.contains(text)) << "not translated";
            }
            FreeLibrary(module);
        }
    }
}

// The user-defined paper is what remains of a saved size that is gone, whatever the source.
bool MayLieIn(const PaperRecord &paper, const BinRecord &source)
{
    return paper.wId == KV_PAPER_USER || (paper.wBinMask >> source.wKind & 1);
}

TEST_F(Samples, EveryPaperHasItsPreviewsFromEverySource)
{
    for (const Sample &sample : aSamples) {
        kvm::ModelFiles model;
        ReadData(sample, model);
        HMODULE module = LibraryOf(sample);
        ASSERT_NE(module, nullptr);
        for (const PaperRecord &paper : model.papers)
            for (size_t source = 0; source < model.sources.size(); ++source)
                for (const int turned : {0, 50, 10, 60}) {
                    const int id =
                        PICTURE_PREVIEW + 500 * paper.w14 + 100 * static_cast<int>(source) + turned;
                    HBITMAP bitmap = LoadBitmapA(module, MAKEINTRESOURCEA(id));
                    EXPECT_TRUE(bitmap || !MayLieIn(paper, model.sources[source]))
                        << sample.name << " " << id;
                    DeleteObject(bitmap);
                }
        FreeLibrary(module);
    }
}

TEST_F(Samples, ModelTableLeadsToTheFilesInEveryLanguage)
{
    kvm::ModelTable table;
    kvm::Problems problems;
    ASSERT_TRUE(kvm::ReadTable(FileBytes("system32/kv_model.dat"), table, problems));
    std::set<int> languages;
    for (const kvm::TableSectionRecords &section : table.sections) {
        languages.insert(section.head.cLanguage);
        std::string names;
        for (const ModelRecord &record : section.records)
            names += std::string(record.szModel) + "," + record.szDat + "," + record.szUIRc + ";";
        EXPECT_EQ(names, "KORVA KJ-150,KJ150,KJ150UI;KORVA KJ-820 Pro,KJ820PRO,KJ820UI;");
    }
    EXPECT_EQ(languages, (std::set<int>{7, 9, 0x11}));
}

} // namespace
