#include "found/found_rows.h"
#include "outside/md_messages.h"
#include "outside/ps_property_specifics.h"
#include "platform/wtext.h"
#include "search/search.h"

namespace {

bool IsChecked(const SRxFoundList& list, int control) {
    return SendDlgItemMessageW(list.dialog->dialogWindow, control, BM_GETCHECK, 0, 0) != 0;
}

// Works out once what every file needs: whether properties are asked for, and the numbers of the
// design states.
bool PrepareCriteria(SRxCriteriaNode* head) {
    bool needProperties = false;
    for (SRxCriteriaNode* c = head; c != nullptr; c = c->nextCriterion) {
        needProperties = needProperties || c->NeedsDocumentProperties();
        if (c->propertyStringId == PROP_DESIGN_STATE) {
            c->numericValue = PSxPropertySpecifics::DesignStateStringToInt(c->value);
        }
    }
    return needProperties;
}

// A caller who closes the dialog while a message of the search stands may give his chain up there:
// it lives until the search is through with it.
class HeldChain {
public:
    explicit HeldChain(MDxFileNameNode* head)
        : head_(head), counted_(head != nullptr && head->GetReferenceCount() > 0) {
        if (counted_) head_->AddRef();
    }
    ~HeldChain() {
        if (counted_ && head_->Release() == 0) delete head_;
    }
    HeldChain(const HeldChain&) = delete;
    HeldChain& operator=(const HeldChain&) = delete;

private:
    MDxFileNameNode* head_;
    bool counted_;  // one that nobody counts is its maker's to delete, behind the search
};

bool RunRoute(SRxFoundList& list, bool needProperties) {
    if (list.dialog->SearchOnlyAssem()) return SearchSelection(list, needProperties);
    if (IsChecked(list, IDC_LOOK_RELATED)) return SearchRelatedDocs(list, needProperties);
    const LRESULT subfolders =
        SendDlgItemMessageW(list.dialog->dialogWindow, IDC_LOOK_SUBFOLDERS, BM_GETCHECK, 0, 0);
    return SearchFolders(list, subfolders, needProperties);
}

}  // namespace

BLxWString ReadControlText(HWND dialog, int control) {
    const LRESULT length = SendDlgItemMessageW(dialog, control, WM_GETTEXTLENGTH, 0, 0);
    BLxWString text(static_cast<std::size_t>(length) + 1, 0);
    text.resize(GetDlgItemTextW(dialog, control, text.data(), static_cast<int>(text.size())));
    return text;
}

bool RunSearch(SRxFoundList& list) {
    const HCURSOR earlier = SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    list.matchCase = IsChecked(list, IDC_MATCH_CASE) ? 1 : 0;
    const bool needProperties = PrepareCriteria(list.dialog->criteriaHead);
    if (list.window != nullptr) OpenFoundSearch(list);
    const bool result = RunRoute(list, needProperties);
    if (result) {
        SRxSkippedCritNode* skipped = BuildSkippedCriteria(list);
        if (!list.params.SetCritForSkipped(skipped)) delete skipped;
    }
    const bool hasWindow = list.window != nullptr && !list.windowGone;
    if (hasWindow) CloseFoundSearch(list);
    if (list.window == nullptr && *list.selectionSlot == nullptr && !list.skippedCriterionSeen) {
        DisplayMessageId(list.dialog->resourceInstance, MSG_NO_HITS, MB_OK, eKindInformation,
                         kHelpFoundList, list.dialog->dialogWindow);
    }
    SetCursor(earlier);
    list.stopRequested = false;
    if (hasWindow) {
        RedrawWindow(list.window, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_INTERNALPAINT | RDW_UPDATENOW);
    }
    return list.dialog->SearchComplete(result);
}

const WCHAR* SplitFullName(const WCHAR* fullName, BLxWString& folder) {
    folder = fullName;
    PathRemoveFileSpecW(folder.data());
    folder.resize(wtext::Length(folder.c_str()));
    if (!folder.empty() && folder.back() != '\\') folder += static_cast<WCHAR>('\\');
    return PathFindFileNameW(fullName);
}

bool SearchSelection(SRxFoundList& list, bool needProperties) {
    // A progress text for every eleventh file, the first one soon.
    int tick = 5;
    int insertIndex = 0;
    list.keepsRecords = true;
    MDxFileNameNode* node = *list.selectionSlot;
    const HeldChain held(node);
    *list.selectionSlot = nullptr;
    BLxWString folder;
    for (; node != nullptr && !list.stopRequested; node = node->GetNextNode()) {
        if (++tick > 10) {
            ShowProgress(list, node->GetFileName());
            tick = 0;
        }
        const WCHAR* name = SplitFullName(node->GetFileName(), folder);
        TestFile(list, folder.c_str(), name, node, needProperties, insertIndex);
    }
    return true;
}
