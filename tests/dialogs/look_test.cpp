// The pages' background, and the 3-D look where the machine has a library of it.
#include "tests/dialogs/dialogs_fixture.h"

namespace
{

class Look : public DialogsTest
{
  protected:
    // What the library has told since the last call; "%" stands for the driver's module.
    std::string Calls()
    {
        const std::string strModule = std::to_string(reinterpret_cast<uintptr_t>(driver.hModule));
        std::string strCalls;
        for (std::string call : BoxesShown()) {
            if (call.ends_with(strModule))
                call.replace(call.size() - strModule.size(), strModule.size(), "%");
            strCalls += (strCalls.empty() ? "" : ", ") + call.substr(call.find(' ') + 1);
        }
        return strCalls;
    }
};

TEST_F(Look, The3dLibraryIsUsedAsFarAsItGoes)
{
    Start();
    constexpr const char *WHOLE = KV_TEST_CTL3D, *UNSUBCLASSED = KV_TEST_CTL3D_UNSUBCLASSED,
                         *UNCOLORED = KV_TEST_CTL3D_UNCOLORED,
                         *USED = "loaded, register %, subclass %", *LEFT = "unregister %, freed";
    const struct {
        const char *why, *library, *program, *before, *after;
        size_t nBrushes; // the pages' own
    } aRows[] = {
        {"none", nullptr, "", "", "", 1},
        {"a whole one", WHOLE, "", USED, LEFT, 0},
        {"names are looked up to the first that lacks", UNSUBCLASSED, "", "loaded", "freed", 0},
        {"what was found is called", UNCOLORED, "", "loaded", LEFT, 0},
        {"a 32-bit program", WHOLE, "PE", USED, LEFT, 0},
        {"a 16-bit program", WHOLE, "NE", "loaded, freed", "", 1},
        {"a 16-bit program, library not whole", UNCOLORED, "NE", "loaded", LEFT, 0},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        kvp::ClearMemoryFiles();
        InstallFiles();
        InstallUILibrary();
        if (row.library)
            InstallLibrary(row.library, CTL3D);
        if (*row.program)
            InstallProgram(ProgramOf(row.program, 64));
        const auto look = [&] {
            EXPECT_EQ(Calls(), row.before);
            EXPECT_EQ(kvp::CurrentlyHeldGui().nObjects, row.nBrushes);
        };
        EXPECT_EQ(Show({look, "page \"Paper\"", "ok"}), 1);
        EXPECT_EQ(Calls(), row.after);
        EXPECT_EQ(kvp::CurrentlyHeldGui().nObjects, 0u);
    }
}

TEST_F(Look, PagesPassOnThatTheSystemsColoursHaveChanged)
{
    Start();
    for (const char *library : {KV_TEST_CTL3D, KV_TEST_CTL3D_UNCOLORED}) {
        InstallLibrary(library, CTL3D);
        const auto change = [&] {
            Calls();
            SendMessageA(kvp::TopWindow(), WM_SYSCOLORCHANGE, 0, 0);
            EXPECT_EQ(Calls(), std::string(library) == KV_TEST_CTL3D ? "colors" : "");
        };
        EXPECT_EQ(Show({change, "page \"Paper\"", change, "page \"Utility\"", change, "ok"}), 1);
    }
}

TEST_F(Look, EveryShowingPaintsThePagesGrey)
{
    Start();
    const auto grey = [] {
        POINT at{1, 1};
        ClientToScreen(kvp::TopWindow(), &at);
        EXPECT_EQ(kvp::ScreenPixel(at.x, at.y), RGB(192, 192, 192));
    };
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(Show({grey, "page \"Paper\"", grey, "page \"Utility\"", grey, "ok"}), 1);
}

} // namespace
