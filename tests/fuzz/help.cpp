// The bytes of a help file: topics looked for, shown and scrolled through.
#include "tests/fuzz/windows.h"

static INT_PTR CALLBACK AskForHelp(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    if (uMsg == WM_HELP)
        for (const ULONG_PTR context : {0, 1, 65535, 512, 256})
            WinHelpA(hDlg, "FUZZ.HLP", HELP_CONTEXT, context);
    return EndOnCommand(hDlg, uMsg, wParam, lParam);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const kvp::Machine machine = StartScreen();
    static const Bytes shape = PlainDialog();
    kvp::PutMemoryFile(std::string(SYSTEM_DIR) + "FUZZ.HLP", {data, size});
    {
        const Library library({{TYPE_DIALOG, shape}});
        Will({"key F1", "key PageDown", "key Down", "key Up", "key PageUp"});
        DialogBoxParamA(library.module, MAKEINTRESOURCEA(ONE), nullptr, AskForHelp, 0);
    }
    MustBeTidy();
    return 0;
}
