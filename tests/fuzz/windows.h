// For targets whose bytes are shown: a resource library made round them, and a person who goes
// through a dialog.
#ifndef KV_TESTS_FUZZ_WINDOWS_H
#define KV_TESTS_FUZZ_WINDOWS_H

#include <initializer_list>
#include <string>
#include <vector>

#include "platform/win32.h"
#include "tests/fuzz/fuzz.h"

constexpr uint16_t TYPE_BITMAP = 2, TYPE_ICON = 3, TYPE_DIALOG = 5, TYPE_ICONS = 14;
constexpr int ONE = 1; // the number of every resource

// A machine with a screen that nobody sees.
kvp::Machine StartScreen();

struct Resource {
    uint16_t wType; // ascending, each once
    Input bytes;
};
// A resource-only PE file. The last resource ends where the file does, so that a read beyond it
// is one beyond the file.
Bytes LibraryWith(std::initializer_list<Resource> resources);
// Loaded while this lives.
struct Library {
    explicit Library(std::initializer_list<Resource> resources);
    ~Library();
    Library(const Library &) = delete;
    Library &operator=(const Library &) = delete;

    HMODULE module;
};

// A small dialog with one button, as resources hold it.
Bytes PlainDialog();
// Ends a dialog on OK and Cancel.
INT_PTR CALLBACK EndOnCommand(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam);
// What the person does, each only while a window is open; in the end presses Escape until none
// is. Everything is painted in between.
void Will(std::vector<std::string> actions);
// Nothing of the layer's is left.
void MustBeTidy();

#endif
