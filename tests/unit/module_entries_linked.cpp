// The module as objects of this program.
#include <new>

#include "module/module_state.h"
#include "shell/find_files.h"
#include "tests/unit/module_entries.h"

const ModuleEntries& Module() {
    static const ModuleEntries entries = {
        DllGetClassObject,
        DllCanUnloadNow,
        SrResReturnHandle,
        FindFiles,
        [](SRxShellExt* self, SRxFindDlgNotify* notify) { self->SetFindDlgNotif(notify); },
        [](const SRxShellExt* self) { return self->GetLookForType(); },
        [](const SRxShellExt* self) { return self->GetFindDialogHWND(); },
        [](SRxShellExt* self) { self->CloseDialog(); },
        [](SRxShellExt* self, CMINVOKECOMMANDINFO* info) { self->SetCmdInfo(info); },
        [](const SRxShellExt* self, CMINVOKECOMMANDINFO* info) { self->FillCmdInfo(info); },
        [](void* place) { new (place) SRxShellExtParameters; },
        [](const SRxShellExtParameters* self) { return static_cast<const char*>(*self); },
        [](SRxShellExtParameters* self, IQxLecternServer* server) {
            return self->SetServer(server);
        },
        [](SRxShellExtParameters* self) { return self->Destroy(); },
    };
    return entries;
}
