// Installing the samples, and playing a person before them.
#include "tests/support/samples.h"

#include <filesystem>

SampleTest::SampleTest()
{
    std::filesystem::copy(KV_SAMPLE_ROOT, machine.strRoot,
                          std::filesystem::copy_options::recursive);
    machine.wLang = 0x0409;
    machine.uAnsiCodePage = 1252;
    Apply();
    kvp::SetBoxHandler(nullptr);
}

void SampleTest::Start(const char *model)
{
    ASSERT_TRUE(driver.Load());
    queue = std::make_unique<OpenQueue>("Studio", model);
    ASSERT_EQ(
        driver.DrvDocumentProperties(nullptr, queue->hPrinter, nullptr, &in, nullptr, DM_COPY),
        IDOK);
}

LONG SampleTest::Show(std::vector<Person::Step> steps)
{
    person.Will(std::move(steps));
    const LONG lResult = driver.DrvDocumentProperties(nullptr, queue->hPrinter, nullptr, &out, &in,
                                                      DM_PROMPT | DM_MODIFY | DM_COPY);
    person.ExpectDone();
    return lResult;
}

LONG SampleTest::ShowAgain(std::vector<Person::Step> steps)
{
    in = out;
    return Show(std::move(steps));
}
