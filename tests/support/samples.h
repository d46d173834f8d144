// A machine with the sample models installed as they are delivered, and a person before the sheet
// of one of them. Message boxes are windows that the person answers ("box ok").
#ifndef KV_TESTS_SUPPORT_SAMPLES_H
#define KV_TESTS_SUPPORT_SAMPLES_H

#include <memory>

#include "tests/support/driver.h"
#include "tests/support/person.h"

constexpr const char *LARGE_SAMPLE = "KORVA KJ-820 Pro", *SMALL_SAMPLE = "KORVA KJ-150";

class SampleTest : public MachineTest
{
  protected:
    // English (United States), metric; a test that wants another user says so before Start().
    SampleTest();
    // The driver loaded and a queue opened; `in` is its default record.
    void Start(const char *model = LARGE_SAMPLE);
    // The sheet on `in`, while the person does all of this. The result; the record is in `out`.
    LONG Show(std::vector<Person::Step> steps);
    // Once more on what the last sheet gave.
    LONG ShowAgain(std::vector<Person::Step> steps);

    Person person;
    LoadedDriver driver;
    std::unique_ptr<OpenQueue> queue;
    DriverDevMode in{}, out{};
};

#endif
