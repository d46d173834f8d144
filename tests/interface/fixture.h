// A machine with one model, a queue for it and the driver's library, for tests that call the
// exported entry points.
#ifndef KV_TESTS_INTERFACE_FIXTURE_H
#define KV_TESTS_INTERFACE_FIXTURE_H

#include <string>
#include <vector>

#include "tests/support/driver.h"
#include "tests/support/machine.h"
#include "tests/support/model_builder.h"

// The text of strings 6910 to 6914 in English.
extern const char *const INSTALL_MESSAGE;

// A record in memory of its own: the given number of bytes at an odd address, with nothing but
// guards around it.
class PlacedRecord
{
  public:
    explicit PlacedRecord(size_t cb = KV_DEVMODESIZE, BYTE fill = 0xCD);
    DriverDevMode *Get();
    Bytes Content() const;
    bool Untouched() const; // every byte is still the fill, guards as well
    bool GuardsHold() const;
    void Put(const DriverDevMode &dm); // as many of its bytes as fit

  private:
    static constexpr size_t cbGuard = 9;
    size_t cb;
    BYTE fill;
    Bytes bytes;
};

class InterfaceTest : public MachineTest
{
  protected:
    InterfaceTest();

    void InstallFiles();
    void InstallUILibrary(const std::string &base = "KVUI");
    // Everything in place: files, table, UI library, the driver loaded, a queue opened.
    void Start();
    // The record that the driver gives for the queue.
    DriverDevMode Settings();
    // An application's record: ours, with seven copies.
    DriverDevMode SevenCopies();

    Model model;
    LoadedDriver driver;
    std::unique_ptr<OpenQueue> queue;
    HANDLE hPrinter = nullptr;
};

#endif
