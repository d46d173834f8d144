// A machine with one model and a person before the driver's sheet. Libraries that run are files on
// the machine's disk; they and the driver speak through message boxes, which are kept in order.
#ifndef KV_TESTS_DIALOGS_DIALOGS_FIXTURE_H
#define KV_TESTS_DIALOGS_DIALOGS_FIXTURE_H

#include <gmock/gmock.h>

#include "tests/interface/fixture.h"
#include "tests/support/person.h"

// What the maintenance library is called on the machine.
constexpr const char *UTILITY = "C:\\winnt35\\system32\\KVUTIL.dll";
constexpr const char *CTL3D = "C:\\winnt35\\system32\\CTL3D32.DLL";

class DialogsTest : public InterfaceTest
{
  protected:
    // A file of the build becomes one of the machine.
    void InstallLibrary(const char *hostPath, const char *dosPath);
    // The sheet of the queue's document settings while the person does this, and everything of it.
    LONG Show(std::vector<Person::Step> steps);
    // Turns to the page and does this there.
    LONG ShowUtility(std::vector<Person::Step> steps);

    Person person;
    DriverDevMode out{};
};

// The program that runs, for its 32-bit check: a file of these bytes.
void InstallProgram(const Bytes &bytes);
// A program's headers: the old one, and at the given offset a newer one of this kind.
Bytes ProgramOf(const char *kind, uint32_t at);

#endif
