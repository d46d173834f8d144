// Finds and loads a model's UI resource library.
#include "base/uilibrary.h"

#include <string>

#include "base/modeltable.h"
#include "base/module.h"
#include "base/printer.h"

LibraryPtr LoadUILibrary(LPCSTR lpModel, HANDLE hPrinter)
{
    const LocalPtr<char> directory(GetPrinterDriverPath(hPrinter));
    const std::string strPath =
        (directory ? directory.get() : std::string()) + Get_UIRcName(lpModel) + ".DLL";
    LibraryPtr library(LoadLibraryA(strPath.c_str()));
    if (!library)
        NotifyFileNotFound(strPath.c_str());
    return library;
}
