#include <cassert>
#include <new>

#include "criteria/skipped_criteria.h"
#include "module/file_chain.h"
#include "outside/ps_property_specifics.h"
#include "search/file_faults.h"
#include "search/search.h"
#include "search/search_sink.h"

namespace {

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
        if (counted_) ReleaseChain(head_);
    }
    HeldChain(const HeldChain&) = delete;
    HeldChain& operator=(const HeldChain&) = delete;

private:
    MDxFileNameNode* head_;
    bool counted_;  // one that nobody counts is its maker's to delete, behind the search
};

bool RunRoute(SRxSearchRun& run, bool needProperties) {
    switch (run.query.route) {
        case eSearchRoute::Selection:
            return SearchSelection(run, needProperties);
        case eSearchRoute::RelatedDocuments:
            return SearchRelatedDocs(run, needProperties);
        case eSearchRoute::Folders:
            return SearchFolders(run, run.query.subfolders, needProperties);
    }
    return false;
}

}  // namespace

bool RunSearch(SRxSearchRun& run) {
    assert(run.source != nullptr && run.sink != nullptr && run.rootNode == nullptr);
    run.sink->Begin(run);
    run.query = run.source->ReadQuery();
    const bool needProperties = PrepareCriteria(run.query.criteria);
    const bool result = RunRoute(run, needProperties);
    if (result) {
        SRxSkippedCritNode* skipped = BuildSkippedCriteria(run.query.criteria);
        if (!run.params.SetCritForSkipped(skipped)) delete skipped;
    }
    return run.sink->End(run, result);
}

bool ShowProgress(SRxSearchRun& run, const WCHAR* path, bool* pumped) {
    bool handedOut = true;
    try {
        handedOut = run.sink->OnProgress(run, path);
    } catch (const std::bad_alloc&) {
        // The search can do without the text.
    }
    if (pumped != nullptr) *pumped = handedOut;
    return !run.stopRequested;
}

const WCHAR* SplitFullName(const WCHAR* fullName, BLxWString& folder) {
    folder = fullName;
    PathRemoveFileSpecW(folder.data());
    folder.resize(wtext::Length(folder.c_str()));
    if (!folder.empty() && folder.back() != '\\') folder += static_cast<WCHAR>('\\');
    return PathFindFileNameW(fullName);
}

bool SearchSelection(SRxSearchRun& run, bool needProperties) {
    // A progress text for every eleventh file, the first one soon.
    int tick = 5;
    int insertIndex = 0;
    run.keepsRecords = true;
    MDxFileNameNode* node = run.source->TakeSelection();
    const HeldChain held(node);
    BLxWString folder;
    for (; node != nullptr && !run.stopRequested; node = node->GetNextNode()) {
        if (++tick > 10) {
            ShowProgress(run, node->GetFileName());
            tick = 0;
        }
        ForFile(run, node->GetFileName(), [&] {
            const WCHAR* name = SplitFullName(node->GetFileName(), folder);
            TestFile(run, folder.c_str(), name, node, needProperties, insertIndex);
        });
    }
    return true;
}
