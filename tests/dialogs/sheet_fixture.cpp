#include "tests/dialogs/sheet_fixture.h"

#include "base/modeltable.h"
#include "base/module.h"
#include "base/text.h"
#include "interface/sheet.h"

SheetTest::SheetTest()
{
    InstallFiles();
    InstallUILibrary();
    LoadDataFile();
    hModule = kvp::LoadHostLibrary(KV_DRIVER_RESOURCES);
    KVWStrcpy(wszName, u"KORVA A");
    KVMemcpy(dm.wszModelName, wszName, sizeof wszName);
    dm.dm.dmOrientation = 1;
    queue = std::make_unique<OpenQueue>("Office", "KORVA A");
    block.hPrinter = queue->hPrinter;
}

SheetTest::~SheetTest()
{
    FreeLibrary(hModule);
    hModule = nullptr;
    FreeDataFile();
}

LONG SheetTest::Enter(std::vector<Person::Step> steps)
{
    person.Will(std::move(steps));
    return UIEnterDevMode(&dm, hModule, nullptr, 0, &block);
}
