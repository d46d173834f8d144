// A person before a sample dialog: the dialog's notices are kept in the order in which they come,
// and the person's actions are lines of a script with looks at the state between them.
#ifndef KV_TESTS_PLATFORM_USER_FIXTURE_H
#define KV_TESTS_PLATFORM_USER_FIXTURE_H

#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "tests/platform/user_ids.h"
#include "tests/support/machine.h"
#include "tests/support/person.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class UserTest : public MachineTest
{
  protected:
    using Step = ::Person::Step;
    using Steps = std::vector<Step>;
    using Lines = std::vector<std::string>;

    UserTest();
    ~UserTest() override;

    // Runs a sample dialog, or the sheet of the first three. With steps, all of them must have been
    // done by its end; without, the person is whoever was there before.
    INT_PTR Dialog(int id, std::optional<Steps> steps = {});
    INT_PTR Sheet(std::optional<Steps> steps = {});
    // The same, cancelled in the end.
    void InDialog(Steps steps);
    void InSheet(Steps steps);

    // What has come since the last call, only what begins with one of these: "PAINT|DRAW 206".
    Lines Taken(const std::string &beginnings = "");
    // Looks: exactly this has come; this control has the focus; this window is on top.
    Step Came(std::string beginnings, Lines lines);
    Step Focused(int id);
    Step OnTop(int id);

    std::string TextOf(int id);
    void SetText(int id, const char *text) { SetDlgItemTextA(hDlg, id, text); }
    HWND Item(int id) { return GetDlgItem(hDlg, id); }
    LRESULT Send(int id, UINT msg, WPARAM wParam = 0, LPARAM lParam = 0);
    void Fill(int id, UINT insert, const std::vector<const char *> &texts);
    COLORREF PixelIn(int id, int x, int y); // of a control

    HINSTANCE hSample = nullptr;
    HWND hDlg = nullptr; // the dialog or page that had WM_INITDIALOG last
    Lines log;
    // First look at every message: gives the procedure's result, or nothing to leave it to the
    // fixture.
    std::function<std::optional<INT_PTR>(HWND, UINT, WPARAM, LPARAM)> onMessage;
    std::function<void()> onInit;
    std::function<void(int id, int code)> onCommand;

  private:
    static INT_PTR CALLBACK Procedure(HWND, UINT, WPARAM, LPARAM);
    INT_PTR Handle(HWND, UINT, WPARAM, LPARAM);
    INT_PTR Play(std::optional<Steps> steps, const std::function<INT_PTR()> &run);
    Person person;
};

#endif
