#include <optional>

#include "found/found_rows.h"
#include "outside/md_messages.h"
#include "search/property_criteria.h"
#include "search/search.h"
#include "search/search_observer.h"
#include "search/value_comparison.h"

namespace {

// Tells what came of the reading of a file's properties.
void TellOfReading(SRxFoundList& list, const MDxFileNameNode& node, HRESULT status) {
    SRxSearchObserver* observer = list.dialog->observer;
    if (observer != nullptr) observer->OnPropertiesRead(node.GetFileName(), status);
    if ((status == STG_E_SHAREVIOLATION || status == STG_E_LOCKVIOLATION) &&
        !list.sharingMessageShown) {
        DisplayMessageFileName(list.dialog->resourceInstance, node.GetFileName(), MSG_FILE_LOCKED,
                               kHelpFoundList, list.window, MB_OK);
        list.sharingMessageShown = true;
    }
}

// Opens the file for its properties when that can matter. Tells of a failure.
HRESULT OpenProperties(SRxFoundList& list, MDxFileNameNode& node, MDxProperties& properties) {
    if (!PassesFileTypeFilter(list, node.GetFileName())) {
        SRxSearchObserver* observer = list.dialog->observer;
        if (observer != nullptr) observer->OnPassedOver();
        return E_FAIL;
    }
    HRESULT status = properties.Initialize(nullptr, false);
    if (status >= 0) status = properties.InitProps(node, 0, nullptr);
    if (status < 0) TellOfReading(list, node, status);
    return status;
}

// The conjunction of or-groups, fed with one result after the other.
class JoinRule {
public:
    // `n` is the criterion behind `c`, or null.
    void Take(bool result, const SRxCriteriaNode& c, const SRxCriteriaNode* n) {
        const bool orFollows = n != nullptr && n->joinType == JOIN_OR;
        if (inGroup_ || c.joinType == JOIN_OR || orFollows) {
            if (c.joinType == JOIN_AND) {
                inGroup_ = true;
                groupResult_ = result;
            } else if (n == nullptr || n->joinType == JOIN_AND) {
                inGroup_ = false;
                result = groupResult_ || result;
            } else {
                groupResult_ = groupResult_ || result;
            }
        }
        if (!inGroup_) {
            total_ = firstTerm_ ? result : total_ && result;
            firstTerm_ = false;
        }
    }
    bool Total() const { return total_; }

private:
    bool inGroup_ = false;
    bool groupResult_ = false;
    bool total_ = true;
    bool firstTerm_ = true;
};

// One record for each criterion, in list order.
void LeaveRecords(const SRxFoundList& list, MDxFileNameNode& node) {
    const CriterionOutcome* outcome = list.outcomes.data();
    for (const SRxCriteriaNode* c = list.dialog->criteriaHead; c != nullptr;
         c = c->nextCriterion, ++outcome) {
        MDxCritNode record;
        record.SetJoinType(c->joinType == JOIN_OR ? eJoinOr : eJoinAnd);
        if (c->IsOccurrenceCategory()) {
            CarryOccurrenceCriterion(list, *c, &record);
        } else if (outcome->undecided) {
            record.CritProperties(c);
        }
        if (!record.HaveCrit()) record.NoCrit(outcome->result);
        node.AddOccCriteria(record);
    }
}

}  // namespace

bool TestFile(SRxFoundList& list, const WCHAR* folder, const WCHAR* name, MDxFileNameNode* node,
              bool needProperties, int& insertIndex) {
    if (node->HaveOccCriteria()) node->GetOccCritList().clear();
    if (list.dialog->observer != nullptr) list.dialog->observer->OnFile(list);
    if (!MatchFile(list, node, needProperties)) return true;
    if (list.window != nullptr) {
        AddFoundRow(list, folder, name, *node, insertIndex);
        return true;
    }
    auto copy = std::make_unique<MDxFileNameNode>(node);
    if (copy->AddFileNodeUnique(list.selectionSlot)) (void)copy.release();
    return true;
}

bool MatchFile(SRxFoundList& list, MDxFileNameNode* node, bool needProperties) {
    // They hold the file open, so they go with this test.
    std::optional<MDxProperties> properties;
    if (needProperties) properties.emplace(false, nullptr);
    const HRESULT status = needProperties ? OpenProperties(list, *node, *properties) : S_OK;
    const FileAtHand file = {*node, needProperties ? &*properties : nullptr, status,
                             needProperties};
    JoinRule join;
    list.outcomes.clear();
    for (const SRxCriteriaNode* c = list.dialog->criteriaHead; c != nullptr; c = c->nextCriterion) {
        const CriterionOutcome outcome =
            c->IsOccurrenceCategory()
                ? CriterionOutcome{CarryOccurrenceCriterion(list, *c, nullptr)}
                : EvaluateFileCriterion(list, file, *c);
        list.outcomes.push_back(outcome);
        join.Take(outcome.result, *c, c->nextCriterion);
    }
    // A row has no room for records: only one who hears of it could see them.
    const bool heard = list.window == nullptr || list.dialog->observer != nullptr;
    const bool carried = join.Total() && heard;
    if (carried || list.keepsRecords) LeaveRecords(list, *node);
    // Only now it is known which sets were asked for.
    if (needProperties && status >= 0) {
        const HRESULT sets = properties->SetsStatus();
        TellOfReading(list, *node, sets != S_OK ? sets : status);
    }
    return join.Total();
}
