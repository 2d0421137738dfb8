// Makes an object of the registered class and opens and closes its dialog: 0 when that went well, 1
// when there is no such class, 2 for any other failure.
#include "shell/shell_ext.h"

extern "C" int wmain() {
    if (FAILED(CoInitialize(nullptr))) return 2;
    void* made = nullptr;
    if (FAILED(CoCreateInstance(CLSID_SRxShellExt, nullptr, CLSCTX_INPROC_SERVER, IID_IContextMenu,
                                &made))) {
        return 1;
    }
    auto* const extension = static_cast<IContextMenu*>(made);
    CMINVOKECOMMANDINFO info{};
    info.cbSize = sizeof info;
    if (extension->InvokeCommand(&info) != 0) return 2;
    const HWND window = FindWindowW(TEXT("#32770"), nullptr);
    if (GetDlgItem(window, IDC_CRITERIA_LIST) == nullptr) return 2;
    SendMessageW(window, WM_COMMAND, IDCANCEL, 0);
    if (extension->Release() != 0) return 2;
    CoFreeUnusedLibraries();
    CoUninitialize();
    return 0;
}
