// The command that starts a search: what is still open is settled, the find dialog steps back, and
// the found dialog takes over.
#include "dialog/dialog_messages.h"
#include "dialog/find_dialog.h"
#include "found/found_dialog.h"
#include "module/controls.h"
#include "outside/md_messages.h"
#include "platform/new_or_null.h"
#include "platform/resource_text.h"

bool SRxFindDialog::OnCommandSearchNow() {
    const SRxDialogWork working(life);
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
    if (life.IsClosing() || searching) return false;  // while one of the questions stood
    auto record = NewOrNull<SRxFoundList>(links, selectionSlot);
    if (record == nullptr) {
        Say(*this, MSG_OUT_OF_MEMORY);
        return false;
    }
    record->multiSelect = allowMultiSelect;
    searching = true;
    EnableButtons(FALSE);
    EnableWindow(GetDlgItem(dialogWindow, IDCANCEL), FALSE);
    EnableWindow(dialogWindow, FALSE);
    return StartFoundDialog(*record.release(), params);
}
