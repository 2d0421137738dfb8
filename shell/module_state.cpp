#include "shell/module_state.h"

#include "outside/blx_util.h"

namespace {

HINSTANCE resourceLibrary = nullptr;

}  // namespace

LONG objectCount = 0;

HINSTANCE SrResReturnHandle() {
    if (resourceLibrary == nullptr) {
        const BLxWString path = BLxUtil::GetLPResourceDLLPath(TEXT("SrRes.dll"));
        // A container of resources: its entry point doesn't run.
        resourceLibrary = LoadLibraryExW(path.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
    }
    return resourceLibrary;
}

void ReleaseResourceLibrary() {
    if (resourceLibrary != nullptr) FreeLibrary(resourceLibrary);
    resourceLibrary = nullptr;
}
