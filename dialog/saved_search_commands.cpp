// The dialog's side of the saved searches: the list and its rows to and from the store.
#include "dialog/find_dialog.h"
#include "outside/md_messages.h"
#include "platform/new_or_null.h"
#include "platform/resource_text.h"
#include "store/search_dialogs.h"
#include "store/stored_criteria.h"

void SRxFindDialog::GetLastSearchName(WCHAR* name, std::size_t size) const {
    const WTextView plain = IsAssemblyEnv() ? TEXT("_last_hlv_search_assy")
                            : IsPartEnv()   ? TEXT("_last_hlv_search_part")
                                            : TEXT("");
    if (wtext::CopyWhole(name, size, plain) && !plain.empty()) AddCurrentProcessId(name, size);
}

void SRxFindDialog::AddCurrentProcessId(WCHAR* name, std::size_t size) const {
    const WText whole = WText(name) + TEXT("_") + wtext::FromNumber(GetCurrentProcessId());
    (void)wtext::CopyWhole(name, size, whole);
}

void SRxFindDialog::DeleteLastSearches() {
    DeleteAllLastSearches();
}

void SRxFindDialog::SayAboutSearch(UINT id, const WCHAR* name) const {
    const WText text = wtext::Format(ResourceText(resourceInstance, id), {name});
    DisplayMessageStringEx(resourceInstance, text.c_str(), MB_OK, eKindWarning, 0,
                           nestedDialog != nullptr ? nestedDialog : dialogWindow);
}

bool SRxFindDialog::WriteSearch(const WCHAR* name, bool lastSearch) {
    if (criteriaHead == nullptr || *name == 0) return true;
    StoredSearch search;
    search.matchCase = static_cast<LONG>(SendToControl(IDC_MATCH_CASE, BM_GETCHECK));
    search.lookFor = static_cast<LONG>(lookFor);
    search.environment = static_cast<LONG>(accessPoint);
    search.criteria = ToStored(criteriaHead);
    std::vector<WText> finished;
    const eStoredWrite result =
        lastSearch ? WriteLastSearch(name, search) : WriteSavedSearch(name, search, finished);
    TellOfFinishedSaves(finished);
    switch (result) {
        case eStoredWrite::Whole:
            return true;
        case eStoredWrite::NoKey:
            return false;  // passed over in silence, like a store that isn't there
        case eStoredWrite::CutShort:
            Say(MSG_SAVE_CUT_SHORT);
            return false;
        case eStoredWrite::KeptOld:
            SayAboutSearch(MSG_SAVE_FAILED, name);
            return false;
        case eStoredWrite::SetAside:
            SayAboutSearch(MSG_SAVE_SET_ASIDE, name);
            return false;
    }
    return false;
}

bool SRxFindDialog::OnCommandSaveSearch(bool lastSearch) {
    if (criteriaHead == nullptr) return true;
    WCHAR name[kPathLength] = {};
    if (lastSearch) {
        GetLastSearchName(name, kPathLength);
        WriteSearch(name, true);
        return true;
    }
    const auto record = NewOrNull<SRxSearchListRecord>(&links, accessPoint);
    if (record == nullptr) {
        Say(MSG_OUT_OF_MEMORY);
        return false;
    }
    const INT_PTR result =
        DialogBoxParamW(resourceInstance, MAKEINTRESOURCEW(IDD_SR_SAVESEARCH), dialogWindow,
                        SaveSearchDlgProc, reinterpret_cast<LPARAM>(record.get()));
    constexpr INT_PTR kNamed = 1;
    if (result == kNamed) WriteSearch(record->name, false);
    return true;
}

bool SRxFindDialog::OnCommandOpenSearch(bool lastSearch) {
    if (lastSearch) {
        WCHAR name[kPathLength] = {};
        GetLastSearchName(name, kPathLength);
        return ReadSearch(name);
    }
    const auto record = NewOrNull<SRxSearchListRecord>(&links, accessPoint);
    if (record == nullptr) {
        Say(MSG_OUT_OF_MEMORY);
        return false;
    }
    DialogBoxParamW(resourceInstance, MAKEINTRESOURCEW(IDD_SR_OPENSEARCH), dialogWindow,
                    OpenSearchDlgProc, reinterpret_cast<LPARAM>(record.get()));
    return IsClosing() || ReadSearch(record->name);
}

bool SRxFindDialog::ReadSearch(const WCHAR* name) {
    if (*name == 0) {
        EnableButtons(criteriaHead != nullptr);
        return true;
    }
    // Without memory for it the list stays as it is, rows and all.
    StoredSearch search;
    const eStoredRead read = ReadSavedSearch(name, search);
    SendToControl(IDC_CRITERIA_LIST, LB_RESETCONTENT);
    fileSearchType = propSearchType = FILE_SEARCH_ANY;
    bool result = true;
    bool skipped = false;
    if (read == eStoredRead::Absent) {
        result = OnCommandNewSearch();
    } else {
        SendToControl(IDC_MATCH_CASE, BM_SETCHECK,
                      search.matchCase != 0 ? BST_CHECKED : BST_UNCHECKED);
        SetLookForType(static_cast<eLookFor>(search.lookFor), true);
        delete criteriaHead;
        criteriaHead = nullptr;
        const auto take = [this](std::unique_ptr<SRxCriteriaNode> node) {
            if (node == nullptr) Say(MSG_OUT_OF_MEMORY);
            return node != nullptr && AppendCriterion(std::move(node));
        };
        result = TakeStored(search, onlyAssemblies, skipped, take);
    }
    SendToControl(IDC_CRITERIA_LIST, LB_SETCURSEL, 0);
    OnCommandCriterList();
    if (skipped) {
        DisplayMessageId(resourceInstance, MSG_CRITERIA_SKIPPED, MB_OK, eKindWarning, 0,
                         dialogWindow);
    }
    if (read == eStoredRead::Incomplete) SayAboutSearch(MSG_OPEN_INCOMPLETE, name);
    SetFocus(GetDlgItem(dialogWindow, IDC_CRITERIA_LIST));
    EnableButtons(criteriaHead != nullptr);
    return result;
}

void SRxFindDialog::TellOfFinishedSaves(const std::vector<WText>& names) const {
    for (const WText& name : names)
        SayAboutSearch(MSG_SAVE_RECOVERED, name.c_str());
}
