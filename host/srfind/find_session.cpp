#include "host/srfind/find_session.h"

#include "found/found_list.h"
#include "module/module_state.h"

FindSession::FindSession(SearchReport& report, MDxFileNameNode** slot)
    : desk_(report),
      dialog_(new SRxFindDialog(SrResReturnHandle(), slot, nullptr, nullptr, nullptr)) {
    dialog_->observer = &report;
    dialog_->SetAccessPoint(eAccessShellNoWindow);
    // The block that the criteria left to the caller come back in.
    SRxShellExtParameters params;
    (void)params.SetCritForSkipped(nullptr);
    dialog_->SetParams(params);
}

FindSession::~FindSession() {
    if (open_) {
        dialog_->CloseDialog(false);
    } else {
        delete dialog_;
    }
}

bool FindSession::Open(bool files) {
    // A chain of files is searched as for the application, which looks in no folder.
    dialog_->SetInApp(files);
    dialog_->SetOnlyAssem(files);
    open_ = dialog_->Initialize() && dialog_->InvokeCommand(nullptr) == 0;
    return open_;
}

void FindSession::ClearList() {
    while (dialog_->criteriaHead != nullptr) {
        SRxCriteriaNode* head = dialog_->criteriaHead;
        dialog_->DeleteNode(&head);
    }
    SendDlgItemMessageW(dialog_->dialogWindow, IDC_CRITERIA_LIST, LB_RESETCONTENT, 0, 0);
}

bool FindSession::Find() {
    // As the Enter key, since the button is off while the list is empty.
    const std::size_t before = dialog_->searches.size();
    SendMessageW(dialog_->dialogWindow, WM_COMMAND, IDOK, 0);
    if (dialog_->SearchOnlyAssem()) return true;
    if (dialog_->searches.size() == before) return false;
    MSG message;
    while (dialog_->searching && GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return true;
}

HWND FindSession::Found() const {
    return dialog_->searches.back()->window;
}
