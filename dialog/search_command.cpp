// The command that starts a search: what is still open is settled, the find dialog steps back, and
// the found dialog takes over.
#include "dialog/find_dialog.h"
#include "found/found_dialog.h"
#include "outside/md_messages.h"
#include "platform/new_or_null.h"
#include "platform/resource_text.h"
#include "search/search.h"

bool SRxFindDialog::OnCommandSearchNow() {
    const SRxDialogActivity working(*this);
    if (!IsWindowEnabled(GetDlgItem(dialogWindow, IDC_ADD))) pendingCriterion = false;
    if (pendingCriterion) {
        const WText text = wtext::Format(ResourceText(resourceInstance, MSG_UNADDED_CRITERION),
                                         {ReadControlText(dialogWindow, IDC_PROPERTY_LIST)});
        switch (DisplayMessageStringEx(nullptr, text.c_str(), MB_YESNOCANCEL, eKindQuestion, 0,
                                       dialogWindow)) {
            case IDYES:
                if (!OnCommandAdd()) return false;
                break;
            case IDNO:
                break;
            default:
                return true;
        }
        pendingCriterion = false;
    }
    const BLxWString lookIn = ReadControlText(dialogWindow, IDC_PATH_LIST);
    if (!PathFileExistsW(lookIn.c_str()) && !inApp) {
        DisplayMessageFileName(resourceInstance, lookIn.c_str(), MSG_PATH_NOT_FOUND, kHelpFind,
                               dialogWindow, MB_OK);
        return false;
    }
    if (IsClosing()) return false;  // while one of the questions stood
    auto record = NewOrNull<SRxFoundList>(*this, selectionSlot);
    if (record == nullptr) {
        Say(MSG_OUT_OF_MEMORY);
        return false;
    }
    record->multiSelect = allowMultiSelect;
    searching = true;
    EnableButtons(FALSE);
    EnableWindow(GetDlgItem(dialogWindow, IDCANCEL), FALSE);
    EnableWindow(dialogWindow, FALSE);
    return StartFoundDialog(*record.release(), params);
}

namespace {

bool StartModeless(std::unique_ptr<SRxFoundList> list, SRxFindDialog& dialog) {
    bool gone = false;
    list->destroyed = &gone;
    const HWND window =
        CreateDialogParamW(dialog.resourceInstance, MAKEINTRESOURCEW(IDD_SR_FINDLIST), nullptr,
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

bool StartModal(std::unique_ptr<SRxFoundList> list, SRxFindDialog& dialog) {
    bool gone = false;
    list->destroyed = &gone;
    const INT_PTR result =
        DialogBoxParamW(dialog.resourceInstance, MAKEINTRESOURCEW(IDD_SR_FINDLIST),
                        dialog.dialogWindow, FoundDlgProc, reinterpret_cast<LPARAM>(list.get()));
    if (gone) {
        (void)list.release();
        return result == IDOK;
    }
    list->destroyed = nullptr;
    dialog.SearchComplete(false);
    if (result < 0) {
        DisplayMessageId(dialog.resourceInstance, MSG_DIALOG_FAILED, MB_OK, eKindError, kHelpFind,
                         dialog.dialogWindow);
    }
    return false;
}

}  // namespace

bool StartFoundDialog(SRxFoundList& list, const SRxShellExtParameters& params) {
    std::unique_ptr<SRxFoundList> record(&list);
    SRxFindDialog& dialog = *list.dialog;
    list.params = params;
    if (dialog.SearchOnlyAssem()) {
        try {
            RunSearch(list);
        } catch (const std::bad_alloc&) {
            dialog.SearchComplete(false);
            dialog.TellOutOfMemory(dialog.dialogWindow);
        }
        return true;
    }
    return dialog.IsModal() ? StartModal(std::move(record), dialog)
                            : StartModeless(std::move(record), dialog);
}
