#include "dialog/find_dialog_links.h"

#include <utility>

#include "dialog/dialog_messages.h"
#include "module/controls.h"

SRxSearchQuery SRxFindDialogLinks::ReadQuery() {
    const HWND window = dialog_.dialogWindow;
    const auto isChecked = [window](int control) {
        return SendDlgItemMessageW(window, control, BM_GETCHECK, 0, 0);
    };
    SRxSearchQuery query;
    query.criteria = dialog_.criteriaHead;
    query.propSearchType = dialog_.propSearchType;
    query.users = {dialog_.appUserName, dialog_.loginUserName};
    query.inApp = dialog_.InApp();
    query.matchCase = isChecked(IDC_MATCH_CASE) != 0;
    query.remembersPlaces = true;
    if (dialog_.SearchOnlyAssem()) {
        query.route = eSearchRoute::Selection;
    } else if (isChecked(IDC_LOOK_RELATED) != 0) {
        query.route = eSearchRoute::RelatedDocuments;
    } else {
        query.route = eSearchRoute::Folders;
        query.subfolders = static_cast<LONG>(isChecked(IDC_LOOK_SUBFOLDERS));
    }
    return query;
}

BLxWString SRxFindDialogLinks::LookIn() {
    return ReadControlText(dialog_.dialogWindow, IDC_PATH_LIST);
}

std::vector<WText> SRxFindDialogLinks::ListedFiles() {
    const HWND window = dialog_.dialogWindow;
    const LRESULT count = SendDlgItemMessageW(window, IDC_PATH_LIST, CB_GETCOUNT, 0, 0);
    std::vector<WText> files;
    for (LRESULT item = 0; item < count; ++item)
        files.push_back(ReadComboEntry(window, IDC_PATH_LIST, item));
    return files;
}

IQxLecternServer* SRxFindDialogLinks::Server() {
    return dialog_.GetServer(nullptr, nullptr, 0);
}

MDxFileNameNode* SRxFindDialogLinks::TakeSelection() {
    MDxFileNameNode** const slot = dialog_.selectionSlot;
    return slot != nullptr ? std::exchange(*slot, nullptr) : nullptr;
}

HINSTANCE SRxFindDialogLinks::Resources() const {
    return dialog_.resourceInstance;
}

HWND SRxFindDialogLinks::Window() const {
    return dialog_.dialogWindow;
}

bool SRxFindDialogLinks::InApp() const {
    return dialog_.InApp();
}

bool SRxFindDialogLinks::IsModal() const {
    return dialog_.IsModal();
}

bool SRxFindDialogLinks::SearchOnlyAssem() const {
    return dialog_.SearchOnlyAssem();
}

bool SRxFindDialogLinks::IsClosing() const {
    return dialog_.life.IsClosing();
}

bool SRxFindDialogLinks::SearchComplete(bool result) {
    return dialog_.SearchComplete(result);
}

void SRxFindDialogLinks::TellOutOfMemory(HWND owner) const noexcept {
    SayOutOfMemory(dialog_, owner);
}

void SRxFindDialogLinks::TellIncomplete(HWND owner) const noexcept {
    SayOutOfMemory(dialog_, owner, MSG_SEARCH_INCOMPLETE);
}

void SRxFindDialogLinks::Enter(SRxFoundList* list) {
    dialog_.searches.push_back(list);
}

void SRxFindDialogLinks::Leave(SRxFoundList* list) noexcept {
    std::erase(dialog_.searches, list);
}

void SRxFindDialogLinks::BeginWork() noexcept {
    dialog_.life.BeginWork();
}

void SRxFindDialogLinks::EndWork() noexcept {
    dialog_.life.EndWork();
}

void SRxFindDialogLinks::SetNestedDialog(HWND dialog) {
    dialog_.nestedDialog = dialog;
}

void SRxFindDialogLinks::TellOfFinishedSaves(const std::vector<WText>& names) const {
    SayFinishedSaves(dialog_, names);
}

void SRxFindDialogLinks::SayAboutSearch(UINT id, const WCHAR* name, const WText& lock) const {
    ::SayAboutSearch(dialog_, id, name, lock);
}
