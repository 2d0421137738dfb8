#include <cassert>
#include <optional>

#include "criteria/or_groups.h"
#include "search/file_faults.h"
#include "search/property_criteria.h"
#include "search/search.h"
#include "search/search_sink.h"

namespace {

// Reports what came of the reading of a file's properties.
void ReportReading(SRxSearchRun& run, const MDxFileNameNode& node, HRESULT status) {
    run.sink->OnPropertiesRead(node.GetFileName(), status);
    const bool inUse = status == STG_E_SHAREVIOLATION || status == STG_E_LOCKVIOLATION;
    if (inUse && !run.sharingMessageShown) {
        run.sink->OnFileInUse(node.GetFileName());
        run.sharingMessageShown = true;
    }
}

// Opens the file for its properties. Reports a failure.
HRESULT OpenProperties(SRxSearchRun& run, MDxFileNameNode& node, MDxProperties& properties) {
    HRESULT status = properties.Initialize(nullptr, false);
    if (status >= 0) status = properties.InitProps(node, 0, nullptr);
    if (status < 0) ReportReading(run, node, status);
    return status;
}

// One record for each criterion, in list order.
void LeaveRecords(const SRxSearchRun& run, MDxFileNameNode& node) {
    const CriterionOutcome* outcome = run.outcomes.data();
    [[maybe_unused]] const CriterionOutcome* const end = outcome + run.outcomes.size();
    for (const SRxCriteriaNode* c = run.query.criteria; c != nullptr;
         c = c->nextCriterion, ++outcome) {
        assert(outcome != end);
        MDxCritNode record;
        record.SetJoinType(c->joinType == JOIN_OR ? eJoinOr : eJoinAnd);
        if (c->IsOccurrenceCategory()) {
            CarryOccurrenceCriterion(run.query.matchCase, *c, &record);
        } else if (outcome->undecided) {
            record.CritProperties(c);
        }
        if (!record.HaveCrit()) record.NoCrit(outcome->result);
        node.AddOccCriteria(record);
    }
}

}  // namespace

bool TestFile(SRxSearchRun& run, const WCHAR* folder, const WCHAR* name, MDxFileNameNode* node,
              bool needProperties, int& insertIndex) {
    // A node that comes back carries nothing of an earlier search.
    if (node->HaveOccCriteria()) node->GetOccCritList().clear();
    node->ForgetFacts();
    bool tested = false;
    ForFile(run, node->GetFileName(), [&] {
        run.sink->OnFile(run);
        if (MatchFile(run, node, needProperties))
            run.sink->OnHit(run, folder, name, *node, insertIndex);
        tested = true;
    });
    if (!tested) node->GetOccCritList().clear();
    return true;
}

bool MatchFile(SRxSearchRun& run, MDxFileNameNode* node, bool needProperties) {
    const bool passedOver =
        needProperties &&
        !PassesFileTypeFilter(run.query.criteria, run.query.propSearchType, node->GetFileName());
    if (passedOver) run.sink->OnPassedOver();
    // They hold the file open, so they go with this test.
    std::optional<MDxProperties> properties;
    if (needProperties && !passedOver) properties.emplace(false, nullptr);
    HRESULT status = passedOver ? E_FAIL : S_OK;
    if (properties) status = OpenProperties(run, *node, *properties);
    const FileAtHand file = {*node, properties ? &*properties : nullptr, status, needProperties,
                             passedOver};
    SRxJoinRule join;
    HRESULT failure = S_OK;
    run.outcomes.clear();
    for (const SRxCriteriaNode* c = run.query.criteria; c != nullptr; c = c->nextCriterion) {
        const CriterionOutcome outcome =
            c->IsOccurrenceCategory()
                ? CriterionOutcome{CarryOccurrenceCriterion(run.query.matchCase, *c, nullptr)}
                : EvaluateFileCriterion(run, file, *c);
        run.outcomes.push_back(outcome);
        if (failure == S_OK) failure = outcome.failure;
        join.Take(outcome.result, *c);
    }
    if (run.keepsRecords || (join.Total() && run.hitsHaveRecords)) LeaveRecords(run, *node);
    // Only now it is known what was asked for.
    if (failure < 0) {
        ReportReading(run, *node, failure);
    } else if (properties && status >= 0) {
        ReportReading(run, *node, status);
    }
    return join.Total();
}
