#include "module/module_state.h"

#include <new>

#include "outside/blx_util.h"
#include "resource/control_ids.h"

namespace {

HINSTANCE resourceLibrary = nullptr;

// The help ids of the dialogs are known as long as the module is there.
const BLxContextHelpId findHelp(IDD_MDFIND, TEXT("IDD_MDFIND"));
const BLxContextHelpId foundHelp(IDD_SR_FINDLIST, TEXT("IDD_SR_FINDLIST"));
const BLxContextHelpId openSearchHelp(IDD_SR_OPENSEARCH, TEXT("IDD_SR_OPENSEARCH"));
const BLxContextHelpId saveSearchHelp(IDD_SR_SAVESEARCH, TEXT("IDD_SR_SAVESEARCH"));

}  // namespace

LONG objectCount = 0;

HINSTANCE SrResReturnHandle() {
    if (resourceLibrary != nullptr) return resourceLibrary;
    try {
        const BLxWString path = BLxUtil::GetLPResourceDLLPath(TEXT("SrRes.dll"));
        // A container of resources: its entry point doesn't run.
        resourceLibrary = LoadLibraryExW(path.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
    } catch (...) {
        return nullptr;
    }
    return resourceLibrary;
}

void ReleaseResourceLibrary() {
    if (resourceLibrary != nullptr) FreeLibrary(resourceLibrary);
    resourceLibrary = nullptr;
}
