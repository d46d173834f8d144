// A machine with one model, a queue for it and the driver's library, for tests that call the
// exported entry points.
#ifndef KV_TESTS_INTERFACE_FIXTURE_H
#define KV_TESTS_INTERFACE_FIXTURE_H

#include <string>
#include <vector>

#include "tests/support/driver.h"
#include "tests/support/machine.h"
#include "tests/support/model_builder.h"

// The text of strings 6910 to 6914 in English, in its box.
extern const char *const INSTALL_MESSAGE;

// A caller's record in memory of its own, at an odd address, with nothing but guards around it.
class PlacedRecord
{
  public:
    DriverDevMode *Get() { return reinterpret_cast<DriverDevMode *>(bytes.data() + cbGuard); }
    Bytes Content() const { return Bytes(bytes.begin() + cbGuard, bytes.end() - cbGuard); }
    // Nothing was written but, if anything, the record's first bytes.
    bool UntouchedFrom(size_t cb) const;
    bool Untouched() const { return UntouchedFrom(0); }

  private:
    static constexpr size_t cbGuard = 9;
    Bytes bytes = Bytes(cbGuard + KV_DEVMODESIZE + cbGuard, 0xCD);
};

Bytes BytesOf(const DriverDevMode &dm);

class InterfaceTest : public MachineTest
{
  protected:
    InterfaceTest();

    void InstallFiles();
    void CutTheDat(); // within the printer record, behind everything that a query reads
    void InstallUILibrary(const std::string &base = "KVUI");
    // Everything in place: files, table, UI library, the driver loaded, a queue opened.
    void Start();
    // The calls for the queue, with a last error that no entry point sets.
    LONG Document(DriverDevMode *lpOut, DriverDevMode *lpIn, DWORD dwFlags);
    LONG Advanced(DriverDevMode *lpOut, DriverDevMode *lpIn);
    // The record that the driver gives for the queue.
    DriverDevMode Settings();
    // An application's record: ours, with seven copies.
    DriverDevMode SevenCopies();

    Model model;
    LoadedDriver driver;
    std::unique_ptr<OpenQueue> queue;
    HANDLE hPrinter = nullptr;
};

// What is stored with the printer under the driver's name for it; empty when nothing is.
Bytes StoredWith(HANDLE hPrinter);
void StoreWith(HANDLE hPrinter, Bytes value);

#endif
