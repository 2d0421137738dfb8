// How a search starts: in a found dialog, or without one over a chain of files.
#include <memory>
#include <new>

#include "found/found_dialog.h"
#include "module/message_kinds.h"
#include "outside/md_messages.h"
#include "resource/control_ids.h"
#include "resource/string_ids.h"
#include "search/search.h"

namespace {

bool StartModeless(std::unique_ptr<SRxFoundList> list, SRxFoundListOwner& dialog) {
    bool gone = false;
    list->destroyed = &gone;
    const HWND window =
        CreateDialogParamW(dialog.Resources(), MAKEINTRESOURCEW(IDD_SR_FINDLIST), nullptr,
                           FoundDlgProc, reinterpret_cast<LPARAM>(list.get()));
    if (gone) {
        (void)list.release();
        return true;
    }
    list->destroyed = nullptr;  // the list may outlive this call
    if (window == nullptr) {
        dialog.SearchComplete(false);
    } else {
        (void)list.release();
        ShowWindow(window, SW_SHOW);
    }
    return true;
}

bool StartModal(std::unique_ptr<SRxFoundList> list, SRxFoundListOwner& dialog) {
    bool gone = false;
    list->destroyed = &gone;
    const INT_PTR result =
        DialogBoxParamW(dialog.Resources(), MAKEINTRESOURCEW(IDD_SR_FINDLIST), dialog.Window(),
                        FoundDlgProc, reinterpret_cast<LPARAM>(list.get()));
    if (gone) {
        (void)list.release();
        return result == IDOK;
    }
    list->destroyed = nullptr;
    dialog.SearchComplete(false);
    if (result < 0) {
        DisplayMessageId(dialog.Resources(), MSG_DIALOG_FAILED, MB_OK, eKindError, kHelpFind,
                         dialog.Window());
    }
    return false;
}

}  // namespace

bool StartFoundDialog(SRxFoundList& list, const SRxShellExtParameters& params) {
    std::unique_ptr<SRxFoundList> record(&list);
    SRxFoundListOwner& dialog = *list.dialog;
    list.run.params = params;
    if (dialog.SearchOnlyAssem()) {
        list.run.sink = &list.chainSink;
        list.run.hitsHaveRecords = true;
        try {
            RunSearch(list.run);
        } catch (...) {
            dialog.SearchComplete(false);
            dialog.TellIncomplete(dialog.Window());
        }
        return true;
    }
    return dialog.IsModal() ? StartModal(std::move(record), dialog)
                            : StartModeless(std::move(record), dialog);
}
