#include "shell/find_files.h"

#include <memory>

#include "dialog/find_dialog.h"
#include "module/module_state.h"
#include "platform/new_or_null.h"

namespace {

bool FindAndPick(HWND owner, WCHAR* name, unsigned nameSize, bool multiSelect) {
    MDxFileNameNode* picked = nullptr;
    auto dialog = NewOrNull<SRxFindDialog>(SrResReturnHandle(), &picked, nullptr, nullptr, nullptr);
    if (dialog == nullptr) return true;
    dialog->SetInApp(true);
    dialog->Initialize();
    dialog->AllowMultiSelect(multiSelect);
    dialog->SetModal(true);
    dialog->SetAccessPoint(eAccessFindFiles);
    // After its end it is gone; without a window it is still ours.
    SRxFindDialog* const open = dialog.release();
    if (open->InvokeCommand(owner) != 0) dialog.reset(open);

    const std::unique_ptr<MDxFileNameNode> chain(picked);
    if (name == nullptr) return true;
    name[0] = 0;
    return chain != nullptr && wtext::CopyWhole(name, nameSize, chain->GetFileName());
}

}  // namespace

bool FindFiles(HWND owner, WCHAR* name, unsigned nameSize, bool multiSelect) {
    try {
        return FindAndPick(owner, name, nameSize, multiSelect);
    } catch (...) {
        // As without memory for the dialog.
        return true;
    }
}
