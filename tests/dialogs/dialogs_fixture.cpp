#include "tests/dialogs/dialogs_fixture.h"

#include <cstring>
#include <filesystem>

namespace fs = std::filesystem;

void DialogsTest::InstallLibrary(const char *hostPath, const char *dosPath)
{
    const fs::path to = kvp::HostPath(dosPath);
    fs::create_directories(to.parent_path());
    fs::copy_file(hostPath, to, fs::copy_options::overwrite_existing);
}

LONG DialogsTest::Show(std::vector<Person::Step> steps)
{
    person.Will(std::move(steps));
    const LONG lResult =
        driver.DrvDocumentProperties(nullptr, hPrinter, nullptr, &out, nullptr, DM_PROMPT);
    person.ExpectDone();
    return lResult;
}

LONG DialogsTest::ShowUtility(std::vector<Person::Step> steps)
{
    steps.insert(steps.begin(), "page \"Utility\"");
    return Show(std::move(steps));
}

void InstallProgram(const Bytes &bytes)
{
    char szPath[MAX_PATH];
    ASSERT_GT(GetModuleFileNameA(nullptr, szPath, sizeof szPath), 0u);
    kvp::PutMemoryFile(szPath, bytes);
}

Bytes ProgramOf(const char *kind, uint32_t at)
{
    Bytes bytes(std::max<size_t>(64, at));
    bytes[0] = 'M';
    bytes[1] = 'Z';
    std::memcpy(&bytes[60], &at, sizeof at);
    bytes.resize(at);
    bytes.insert(bytes.end(), kind, kind + 2);
    bytes.insert(bytes.end(), 2, 0);
    return bytes;
}
