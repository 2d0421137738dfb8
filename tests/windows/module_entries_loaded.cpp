// The module as a program finds it that knows its file alone.
#include "tests/windows/module_entries_loaded.h"

#include <gtest/gtest.h>

HMODULE LoadModule() {
    static const HMODULE module = LoadLibraryW(TEXT("Sr.dll"));
    return module;
}

namespace {

template <typename Function>
void Find(Function& function, const char* name) {
    const FARPROC found = GetProcAddress(LoadModule(), name);
    EXPECT_NE(nullptr, found) << name;
    function = reinterpret_cast<Function>(found);
}

}  // namespace

const ModuleEntries& Module() {
    static const ModuleEntries entries = [] {
        ModuleEntries found{};
        Find(found.getClassObject, "DllGetClassObject");
        Find(found.canUnloadNow, "DllCanUnloadNow");
        Find(found.resources, "SrResReturnHandle");
        Find(found.findFiles, "FindFiles");
        Find(found.setFindDlgNotif, "_ZN11SRxShellExt15SetFindDlgNotifEP16SRxFindDlgNotify");
        Find(found.lookForType, "_ZNK11SRxShellExt14GetLookForTypeEv");
        Find(found.dialogWindow, "_ZNK11SRxShellExt17GetFindDialogHWNDEv");
        Find(found.closeDialog, "_ZN11SRxShellExt11CloseDialogEv");
        Find(found.setCmdInfo, "_ZN11SRxShellExt10SetCmdInfoEP20_CMINVOKECOMMANDINFO");
        Find(found.fillCmdInfo, "_ZNK11SRxShellExt11FillCmdInfoEP20_CMINVOKECOMMANDINFO");
        Find(found.makeParameters, "_ZN21SRxShellExtParametersC1Ev");
        Find(found.textOfParameters, "_ZNK21SRxShellExtParameterscvPKcEv");
        Find(found.setServer, "_ZN21SRxShellExtParameters9SetServerEP16IQxLecternServer");
        Find(found.destroyParameters, "_ZN21SRxShellExtParameters7DestroyEv");
        return found;
    }();
    return entries;
}
