// The samples' maintenance library as the Utility page uses it: found by the model table, its
// functions by the names that the model's texts give.
#include <gmock/gmock.h>

#include "base/handles.h"
#include "resources/text_ids.h"
#include "tests/models/delivered.h"

using testing::StartsWith;

using UtilityProc = void(WINAPI *)(LPCSTR lpPrinter, LPCSTR lpModel, DWORD, DWORD);

// What the page calls the functions, by the number of the text that has their name.
static constexpr std::pair<UINT, const char *> aFunctions[] = {
    {ENTRY_ALIGNMENT, "Print Head Alignment"},
    {ENTRY_NOZZLE, "Nozzle Check"},
    {ENTRY_CLEANING, "Head Cleaning"},
};

// The printer's name comes in the user's own code page.
static constexpr struct {
    LANGID wLang;
    UINT uCodePage;
    const char *printer, *shown;
} aUsers[] = {
    {0x0409, 1252, "B\xFCro, 2nd floor (100%s)", "Büro, 2nd floor (100%s)"},
    {0x0411, 932, "\x8E\x96\x96\xB1\x8F\x8A\x95\x5C", "事務所表"}, // a backslash as trail byte
};

class Maintenance : public DeliveredTest
{
  protected:
    // The function of this text's name; null when either is not there.
    static UtilityProc Function(HMODULE hLibrary, const char *model, UINT idEntry)
    {
        const std::string path = std::string(DRIVER_DIR) + Get_UIRcName(model) + ".DLL";
        const LibraryPtr ui(LoadLibraryA(path.c_str()));
        char szName[256] = "";
        LoadStringA(ui.get(), idEntry, szName, sizeof szName);
        return reinterpret_cast<UtilityProc>(GetProcAddress(hLibrary, szName));
    }
    void RunAll(const char *model, const char *printer, const std::string &shown)
    {
        const LibraryPtr library(LoadLibraryA((std::string(Get_UtilName(model)) + ".dll").c_str()));
        for (const auto &[idEntry, title] : aFunctions) {
            SCOPED_TRACE(std::string(title) + " of " + model);
            const UtilityProc proc = Function(library.get(), model, idEntry);
            ASSERT_NE(proc, nullptr);
            aBoxes.clear();
            proc(printer, model, 0, 0);
            ASSERT_EQ(aBoxes.size(), 1u);
            EXPECT_EQ(aBoxes[0].strCaption, title);
            EXPECT_EQ(aBoxes[0].uType, MB_OK | MB_ICONINFORMATION);
            EXPECT_THAT(aBoxes[0].strText,
                        StartsWith("Printer: " + shown + "\nModel: " + model + "\n\n"));
        }
    }
};

TEST_F(Maintenance, EachFunctionSaysWhatItWouldDoWithWhichPrinter)
{
    for (const auto &user : aUsers) {
        Speak(user.wLang, user.uCodePage);
        for (const char *model : aModels)
            RunAll(model, user.printer, user.shown);
    }
    EXPECT_EQ(kvp::CurrentlyHeld().nLibraries, 0u);
}
