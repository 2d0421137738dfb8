// What another program finds in the module by name, so that the same tests judge the module's
// objects, linked, and the library, loaded at run time.
#pragma once

#include "shell/shell_ext.h"

struct ModuleEntries {
    HRESULT(STDMETHODCALLTYPE* getClassObject)(REFCLSID rclsid, REFIID riid, LPVOID* ppv);
    HRESULT(STDMETHODCALLTYPE* canUnloadNow)();
    HINSTANCE (*resources)();
    bool (*findFiles)(HWND owner, WCHAR* name, unsigned nameSize, bool multiSelect);
    // Members of the exported classes, the object first.
    void (*setFindDlgNotif)(SRxShellExt*, SRxFindDlgNotify*);
    eLookFor (*lookForType)(const SRxShellExt*);
    HWND (*dialogWindow)(const SRxShellExt*);
    void (*closeDialog)(SRxShellExt*);
    void (*setCmdInfo)(SRxShellExt*, CMINVOKECOMMANDINFO*);
    void (*fillCmdInfo)(const SRxShellExt*, CMINVOKECOMMANDINFO*);
    void (*makeParameters)(void* place);
    const char* (*textOfParameters)(const SRxShellExtParameters*);
    bool (*setServer)(SRxShellExtParameters*, IQxLecternServer*);
    bool (*destroyParameters)(SRxShellExtParameters*);
};
const ModuleEntries& Module();
