// Memory that runs out in the middle of the driver's own work.
#include <cstdlib>
#include <functional>
#include <new>

#include "datafile/mw.h"
#include "datafile/queries.h"
#include "datafile/writer.h"
#include "tests/datafile/model_test.h"
#include "tests/support/driver.h"

static int g_nUntilRefused = -1;

void *operator new(size_t cb)
{
    if (g_nUntilRefused >= 0 && g_nUntilRefused-- == 0)
        throw std::bad_alloc();
    if (void *lp = std::malloc(cb))
        return lp;
    throw std::bad_alloc();
}
void operator delete(void *lp) noexcept
{
    std::free(lp);
}
void operator delete(void *lp, size_t) noexcept
{
    std::free(lp);
}

// Each piece of memory is refused once; whatever was open or loaded by then is given back.
TEST_F(ModelTest, MemoryThatRunsOutLeavesNothingOpen)
{
    const OpenQueue queue("Office", "KORVA One");
    model.AddUserPaper("Card", 850, 550, 2, 1);
    Install();
    InstallNames(KV_TEST_NAMES_LIBRARY);
    std::vector<WCHAR> names(64 * 8);
    const std::function<void()> aActs[] = {
        [&] { Get_DATFile(&dm); },
        [&] { GetMWData(&dm); },
        [&] { Get_PaperNames(&dm, names.data(), queue.hPrinter); },
        [&] { WriteUcfFile(&dm, &UIInstance); },
    };
    for (const auto &act : aActs) {
        bool bRefused = true;
        for (int n = 0; bRefused; ++n) {
            try {
                g_nUntilRefused = n;
                act();
            } catch (const std::bad_alloc &) {
            }
            bRefused = g_nUntilRefused < 0;
            g_nUntilRefused = -1;
            EXPECT_TRUE(NothingHeld()) << n;
        }
    }
}
