#include "dialog/saved_search_commands.h"

#include "criteria/list_rules.h"
#include "dialog/criteria_rows.h"
#include "dialog/dialog_messages.h"
#include "module/controls.h"
#include "outside/md_messages.h"
#include "platform/new_or_null.h"
#include "platform/processes.h"
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

bool WriteSearch(SRxFindDialog& dialog, const WCHAR* name, bool lastSearch) {
    if (dialog.criteriaHead == nullptr || *name == 0) return true;
    StoredSearch search;
    search.matchCase = static_cast<LONG>(SendTo(dialog.dialogWindow, IDC_MATCH_CASE, BM_GETCHECK));
    search.lookFor = static_cast<LONG>(dialog.lookFor);
    search.environment = static_cast<LONG>(dialog.accessPoint);
    search.criteria = ToStored(dialog.criteriaHead);
    std::vector<WText> finished;
    WText lock;
    const eStoredWrite result = [&] {
        const LockWait wait(kMostLockWait);
        const eStoredWrite written =
            lastSearch ? WriteLastSearch(name, search) : WriteSavedSearch(name, search, finished);
        lock = wait.GivenUp();
        return written;
    }();
    SayFinishedSaves(dialog, finished);
    switch (result) {
        case eStoredWrite::Whole:
            return true;
        case eStoredWrite::NoKey:
            return false;  // passed over in silence, like a store that isn't there
        case eStoredWrite::CutShort:
            Say(dialog, MSG_SAVE_CUT_SHORT);
            return false;
        case eStoredWrite::KeptOld:
            SayAboutSearch(dialog, MSG_SAVE_FAILED, name, lock);
            return false;
        case eStoredWrite::SetAside:
            SayAboutSearch(dialog, MSG_SAVE_SET_ASIDE, name);
            return false;
    }
    return false;
}

bool SRxFindDialog::OnCommandSaveSearch(bool lastSearch) {
    if (criteriaHead == nullptr) return true;
    WCHAR name[kPathLength] = {};
    if (lastSearch) {
        GetLastSearchName(name, kPathLength);
        WriteSearch(*this, name, true);
        return true;
    }
    const auto record = NewOrNull<SRxSearchListRecord>(&links, accessPoint);
    if (record == nullptr) {
        Say(*this, MSG_OUT_OF_MEMORY);
        return false;
    }
    const INT_PTR result =
        DialogBoxParamW(resourceInstance, MAKEINTRESOURCEW(IDD_SR_SAVESEARCH), dialogWindow,
                        SaveSearchDlgProc, reinterpret_cast<LPARAM>(record.get()));
    constexpr INT_PTR kNamed = 1;
    if (result == kNamed) WriteSearch(*this, record->name, false);
    return true;
}

bool SRxFindDialog::OnCommandOpenSearch(bool lastSearch) {
    if (lastSearch) {
        WCHAR name[kPathLength] = {};
        GetLastSearchName(name, kPathLength);
        return ReadSearch(*this, name);
    }
    const auto record = NewOrNull<SRxSearchListRecord>(&links, accessPoint);
    if (record == nullptr) {
        Say(*this, MSG_OUT_OF_MEMORY);
        return false;
    }
    DialogBoxParamW(resourceInstance, MAKEINTRESOURCEW(IDD_SR_OPENSEARCH), dialogWindow,
                    OpenSearchDlgProc, reinterpret_cast<LPARAM>(record.get()));
    return life.IsClosing() || ReadSearch(*this, record->name);
}

bool ReadSearch(SRxFindDialog& dialog, const WCHAR* name) {
    if (*name == 0) {
        dialog.EnableButtons(dialog.criteriaHead != nullptr);
        return true;
    }
    // Without memory for it the list stays as it is, rows and all.
    StoredSearch search;
    const eStoredRead read = ReadSavedSearch(name, search);
    SendTo(dialog.dialogWindow, IDC_CRITERIA_LIST, LB_RESETCONTENT);
    dialog.fileSearchType = dialog.propSearchType = FILE_SEARCH_ANY;
    bool result = true;
    bool skipped = false;
    if (read == eStoredRead::Absent) {
        result = dialog.OnCommandNewSearch();
    } else {
        SendTo(dialog.dialogWindow, IDC_MATCH_CASE, BM_SETCHECK,
               search.matchCase != 0 ? BST_CHECKED : BST_UNCHECKED);
        dialog.SetLookForType(static_cast<eLookFor>(search.lookFor), true);
        delete dialog.criteriaHead;
        dialog.criteriaHead = nullptr;
        bool changed = false;  // while a message stood: the rest belongs to no list any more
        const auto take = [&](std::unique_ptr<SRxCriteriaNode> node) {
            if (changed) return false;
            const SRxListImage before(dialog.criteriaHead);
            if (node == nullptr) Say(dialog, MSG_OUT_OF_MEMORY);
            if (node != nullptr && AppendCriterion(dialog, std::move(node))) return true;
            changed = !before.Shows(dialog.criteriaHead);
            return false;
        };
        result = TakeStored(search, dialog.onlyAssemblies, skipped, take);
    }
    SendTo(dialog.dialogWindow, IDC_CRITERIA_LIST, LB_SETCURSEL, 0);
    dialog.OnCommandCriterList();
    if (skipped) {
        DisplayMessageId(dialog.resourceInstance, MSG_CRITERIA_SKIPPED, MB_OK, eKindWarning, 0,
                         dialog.dialogWindow);
    }
    if (read == eStoredRead::Incomplete) SayAboutSearch(dialog, MSG_OPEN_INCOMPLETE, name);
    SetFocus(GetDlgItem(dialog.dialogWindow, IDC_CRITERIA_LIST));
    dialog.EnableButtons(dialog.criteriaHead != nullptr);
    return result;
}
