// How every entry point begins: from a printer handle to its model, the model's printer record
// and the printer's present settings.
#ifndef KV_INTERFACE_OPENING_H
#define KV_INTERFACE_OPENING_H

#include "base/handles.h"
#include "kvui/devmode.h"

// What stopped the opening. Each entry point has its own answer to each of these.
enum class Opening {
    Done,
    NoModel,         // the printer's driver cannot be read
    NoText,          // the model's name cannot be converted
    NoFiles,         // the model's files are missing; the user has been told
    NoPrinterRecord, // the model has no printer record, or one of a negative identifier
    NoSettings,      // neither the spooler's record nor the model's defaults can be had
};

struct OpenedPrinter {
    DriverDevMode dm;              // the entry point's working record
    GlobalPtr<char> ansiModel;     // the model's name
    GlobalPtr<void> printerRecord; // null where the model has none
};

// The model and its printer record; of the working record the model's name, the rest zero. After
// NoPrinterRecord a caller may still go on.
Opening OpenModel(HANDLE hPrinter, OpenedPrinter *lpPrinter);
// Fills an opened model's working record with the printer's settings: the spooler's default
// record, else the model's defaults. Done or NoSettings.
Opening FillSettings(HANDLE hPrinter, OpenedPrinter *lpPrinter);
// Both; NoSettings also when the record was filled but has no settings.
Opening OpenSettings(HANDLE hPrinter, OpenedPrinter *lpPrinter);

// Whether the model's files, when they were read for a record, gave it any settings: defaults whose
// files fail on the way are a record with names and nothing else, which no page can show and nobody
// can read back. Every other record has an orientation.
bool HasSettings(const DriverDevMode &dm);

#endif
