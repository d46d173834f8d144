// The pages' background, and the 3-D look where the machine has a library of it.
#include "tests/dialogs/dialogs_fixture.h"

namespace
{

using ::testing::IsEmpty;

class Look : public DialogsTest
{
  protected:
    std::string Module() const
    {
        return std::to_string(reinterpret_cast<uintptr_t>(driver.hModule));
    }
    // "%" stands for the driver's module.
    std::vector<std::string> Calls(std::vector<std::string> calls) const
    {
        for (std::string &call : calls) {
            if (call.ends_with('%'))
                call.replace(call.size() - 1, 1, Module());
            call.insert(0, "3-D: ");
        }
        return calls;
    }
};

TEST_F(Look, The3dLibraryIsUsedAsFarAsItGoes)
{
    Start();
    const struct {
        const char *why, *library;
        Bytes program; // none: no file
        std::vector<std::string> before, after;
        size_t nBrushes; // the pages' own
    } aRows[] = {
        {"none", nullptr, {}, {}, {}, 1},
        {"a whole one",
         KV_TEST_CTL3D,
         {},
         {"loaded", "register %", "subclass %"},
         {"unregister %", "freed"},
         0},
        {"names are looked up to the first that lacks",
         KV_TEST_CTL3D_UNSUBCLASSED,
         {},
         {"loaded"},
         {"freed"},
         0},
        {"what was found is called",
         KV_TEST_CTL3D_UNCOLORED,
         {},
         {"loaded"},
         {"unregister %", "freed"},
         0},
        {"a 32-bit program",
         KV_TEST_CTL3D,
         ProgramOf("PE", 64),
         {"loaded", "register %", "subclass %"},
         {"unregister %", "freed"},
         0},
        {"a 16-bit program", KV_TEST_CTL3D, ProgramOf("NE", 64), {"loaded", "freed"}, {}, 1},
        {"a 16-bit program, library not whole",
         KV_TEST_CTL3D_UNCOLORED,
         ProgramOf("NE", 64),
         {"loaded"},
         {"unregister %", "freed"},
         0},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        kvp::ClearMemoryFiles();
        InstallFiles();
        InstallUILibrary();
        if (row.library)
            InstallLibrary(row.library, CTL3D);
        if (!row.program.empty())
            InstallProgram(row.program);
        const auto look = [&] {
            EXPECT_EQ(BoxesShown(), Calls(row.before));
            EXPECT_EQ(kvp::CurrentlyHeldGui().nObjects, row.nBrushes);
        };
        EXPECT_EQ(Show({look, "page \"Paper\"", "ok"}), 1);
        EXPECT_EQ(BoxesShown(), Calls(row.after));
        EXPECT_EQ(kvp::CurrentlyHeldGui().nObjects, 0u);
    }
}

TEST_F(Look, PagesPassOnThatTheSystemsColoursHaveChanged)
{
    Start();
    InstallLibrary(KV_TEST_CTL3D, CTL3D);
    const auto change = [this] {
        BoxesShown();
        SendMessageA(kvp::TopWindow(), WM_SYSCOLORCHANGE, 0, 0);
        EXPECT_EQ(BoxesShown(), Calls({"colors"}));
    };
    EXPECT_EQ(Show({change, "page \"Paper\"", change, "page \"Utility\"", change, "ok"}), 1);
    InstallLibrary(KV_TEST_CTL3D_UNCOLORED, CTL3D);
    const auto silent = [this] {
        BoxesShown();
        SendMessageA(kvp::TopWindow(), WM_SYSCOLORCHANGE, 0, 0);
        EXPECT_THAT(BoxesShown(), IsEmpty());
    };
    EXPECT_EQ(Show({silent, "ok"}), 1);
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
