// The bytes of a dialog template: shown, gone through by keyboard, closed.
#include "tests/fuzz/windows.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const kvp::Machine machine = StartScreen();
    {
        const Library library({{TYPE_DIALOG, {data, size}}});
        Will({"key Tab", "key Space", "key Down", "key Shift+Tab", "key Alt+A", "key Right"});
        DialogBoxParamA(library.module, MAKEINTRESOURCEA(ONE), nullptr, EndOnCommand, 0);
    }
    MustBeTidy();
    return 0;
}
