// A person before a sample dialog: the dialog's notices are kept in the order in which they come,
// and the person's actions are lines of a script with looks at the state between them.
#ifndef KV_TESTS_PLATFORM_USER_FIXTURE_H
#define KV_TESTS_PLATFORM_USER_FIXTURE_H

#include <functional>
#include <map>
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
    UserTest();
    ~UserTest() override;

    using Step = ::Person::Step;
    void Person(std::vector<Step> steps);
    // The play must have gone through to its last step by the time a dialog or sheet ends, unless
    // it is to fail.
    bool bPlayFails = false;
    // Runs a sample dialog, or the sheet of the first three.
    INT_PTR Dialog(int id);
    INT_PTR Sheet();

    // What has come since the last call.
    std::vector<std::string> Taken();
    // The same, only what begins with one of these.
    std::vector<std::string> Taken(std::vector<std::string> kinds);

    std::string TextOf(int id);
    void SetText(int id, const char *text);
    HWND Item(int id) { return GetDlgItem(hDlg, id); }
    LRESULT Send(int id, UINT msg, WPARAM wParam = 0, LPARAM lParam = 0);
    void Fill(int id, std::vector<const char *> texts); // a combo box
    COLORREF PixelIn(int id, int x, int y);             // of a control

    HINSTANCE hSample = nullptr;
    HWND hDlg = nullptr;              // the dialog or page that had WM_INITDIALOG last
    std::map<std::string, HWND> page; // by template number
    std::vector<std::string> log;
    // First look at every message: gives the procedure's result, or nothing to leave it to the
    // fixture.
    std::function<std::optional<INT_PTR>(HWND, UINT, WPARAM, LPARAM)> onMessage;
    std::function<void()> onInit;

  private:
    static INT_PTR CALLBACK Procedure(HWND, UINT, WPARAM, LPARAM);
    INT_PTR Handle(HWND, UINT, WPARAM, LPARAM);
    void Log(HWND, UINT, WPARAM, LPARAM);
    void CheckPlay();
    class ::Person person;
};

#endif
