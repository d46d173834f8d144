// The samples' maintenance library as the Utility page uses it: found by the model table, its
// functions by the names that the model's texts give.
#include <gmock/gmock.h>

#include "base/handles.h"
#include "base/modeltable.h"
#include "resources/text_ids.h"
#include "tests/models/delivered.h"

using testing::HasSubstr;

using UtilityProc = void(WINAPI *)(LPCSTR lpPrinter, LPCSTR lpModel, DWORD, DWORD);

static constexpr struct {
    UINT idEntry;
    const char *title; // what the page calls the function that must be run
} aFunctions[] = {
    {ENTRY_ALIGNMENT, "Print Head Alignment"},
    {ENTRY_NOZZLE, "Nozzle Check"},
    {ENTRY_CLEANING, "Head Cleaning"},
};

// What the library is to hand back to a person: the printer's name in the user's own code page.
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
        EXPECT_GT(LoadStringA(ui.get(), idEntry, szName, sizeof szName), 0);
        return reinterpret_cast<UtilityProc>(GetProcAddress(hLibrary, szName));
    }
};

TEST_F(Maintenance, EachFunctionSaysWhatItWouldDoWithWhichPrinter)
{
    for (const auto &user : aUsers) {
        Speak(user.wLang, user.uCodePage);
        for (const char *model : aModels) {
            const LibraryPtr library(
                LoadLibraryA((std::string(Get_UtilName(model)) + ".dll").c_str()));
            ASSERT_TRUE(library) << Get_UtilName(model);
            for (const auto &function : aFunctions) {
                SCOPED_TRACE(std::string(function.title) + " of " + model);
                const UtilityProc proc = Function(library.get(), model, function.idEntry);
                ASSERT_NE(proc, nullptr);
                aBoxes.clear();
                proc(user.printer, model, 0, 0);
                ASSERT_EQ(aBoxes.size(), 1u);
                EXPECT_EQ(aBoxes[0].strCaption, function.title);
                EXPECT_EQ(aBoxes[0].uType, MB_OK | MB_ICONINFORMATION);
                EXPECT_THAT(aBoxes[0].strText, HasSubstr("Printer: " + std::string(user.shown) +
                                                         "\nModel: " + model + "\n"));
            }
        }
    }
    EXPECT_EQ(kvp::CurrentlyHeld().nLibraries, 0u);
}
