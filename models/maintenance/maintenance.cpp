// The maintenance functions of the sample printers. There is no printer behind a sample, so each
// says in a message box what it would do, with which one. The names under which the functions are
// exported are texts of the models' resource libraries.
//
// All take the printer's and the model's name, as ANSI text, and two zeros, and return when the
// person has read the box.
#include <string>

#include "platform/win32.h"

#define MAINTENANCE extern "C" __attribute__((visibility("default"))) void WINAPI

// The names may be in any code page, so the texts around them are plain ASCII. Without an owner
// the box belongs to the window that the person works with.
static void Tell(LPCSTR lpTitle, LPCSTR lpSteps, LPCSTR lpPrinter, LPCSTR lpModel)
{
    const std::string strText = std::string("Printer: ") + (lpPrinter ? lpPrinter : "") +
                                "\nModel: " + (lpModel ? lpModel : "") + "\n\n" + lpSteps +
                                "\n\nThis is a sample: nothing is sent to the printer.";
    MessageBoxA(nullptr, strText.c_str(), lpTitle, MB_OK | MB_ICONINFORMATION);
}

MAINTENANCE KJ_NozzleCheck(LPCSTR lpPrinter, LPCSTR lpModel, DWORD, DWORD)
{
    Tell("Nozzle Check",
         "The printer would print a pattern with a short line for every nozzle. A line that is "
         "missing or broken belongs to a clogged nozzle.",
         lpPrinter, lpModel);
}

MAINTENANCE KJ_HeadCleaning(LPCSTR lpPrinter, LPCSTR lpModel, DWORD, DWORD)
{
    Tell("Head Cleaning",
         "The printer would draw ink through all nozzles and wipe the print heads, which takes "
         "about a minute and uses some ink of every color.",
         lpPrinter, lpModel);
}

MAINTENANCE KJ_HeadAlignment(LPCSTR lpPrinter, LPCSTR lpModel, DWORD, DWORD)
{
    Tell("Print Head Alignment",
         "The printer would print numbered pairs of vertical lines, ask which pair is straight, "
         "and keep the answer.",
         lpPrinter, lpModel);
}
