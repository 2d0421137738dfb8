// The module's entry on Windows: what it holds from its load to its unload.
#include "module/module_state.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        // Without it the module stays all the same; each later need tries again.
        SrResReturnHandle();
        DisableThreadLibraryCalls(module);
    } else if (reason == DLL_PROCESS_DETACH) {
        ReleaseResourceLibrary();
    }
    return TRUE;
}
