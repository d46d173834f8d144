// A dialog of the large sample opened by itself, on blocks of the test's own.
#ifndef KV_TESTS_DIALOGS_DIALOG_TEST_H
#define KV_TESTS_DIALOGS_DIALOG_TEST_H

#include "base/modeltable.h"
#include "base/text.h"
#include "datafile/instance.h"
#include "tests/support/samples.h"

class DialogTest : public SampleTest
{
  protected:
    DialogTest() { Prepare(); }
    ~DialogTest() override { Release(); }
    // The model table and the library, in the machine's language; nothing of the model's files.
    void Prepare()
    {
        LoadDataFile();
        UIInstance = UIINSTANCE{};
        const WCHAR wszName[32] = u"KORVA KJ-820 Pro";
        KVMemcpy(dm.wszModelName, wszName, sizeof wszName);
        UIInstance.hResLib = LoadLibraryA((std::string(DRIVER_DIR) + "KJ820UI.DLL").c_str());
        block = {&dm, &UIInstance, UIInstance.hResLib, nullptr, nullptr};
    }
    void Release()
    {
        FreeLibrary(UIInstance.hResLib);
        UIInstance = UIINSTANCE{};
        FreeDataFile();
    }
    // The dialog's result, after all of these steps.
    INT_PTR OpenDialog(int idDialog, DLGPROC proc, std::vector<Person::Step> steps)
    {
        person.Will(std::move(steps));
        const INT_PTR nResult = DialogBoxParamA(UIInstance.hResLib, MAKEINTRESOURCEA(idDialog),
                                                nullptr, proc, reinterpret_cast<LPARAM>(&block));
        person.ExpectDone();
        return nResult;
    }

    DriverDevMode dm{};
    CBSTRUC block{};
};

#endif
