#include "criteria/skipped_criteria.h"

#include <memory>

#include "criteria/or_groups.h"
#include "outside/md_property_rows.h"

namespace {

struct FileTypeCodeRow {
    LONG conditionId;
    unsigned code;
};
constexpr FileTypeCodeRow kFileTypeCodes[] = {
    {FILETYPE_ALL, 1},      {FILETYPE_ASSEMBLIES, 2},
    {FILETYPE_DRAWINGS, 3}, {FILETYPE_DESIGN_ELEMENTS, 4},
    {FILETYPE_PARTS, 5},    {FILETYPE_MODELS, 1},
};

unsigned FileTypeCode(LONG conditionId) {
    for (const FileTypeCodeRow& row : kFileTypeCodes) {
        if (row.conditionId == conditionId) return row.code;
    }
    return 0;
}

// Null for a file type that has no code.
SRxSkippedCritNode* MakeLink(const SRxCriteriaNode& criterion) {
    const auto join = static_cast<unsigned>(criterion.joinType);
    if (criterion.propertyCategory == eCategoryFile) {
        if (criterion.propertyNumber == kFactFileType) {
            const unsigned code = FileTypeCode(criterion.conditionId);
            if (code == 0) return nullptr;
            auto* link = new SRxSkippedCritNode(join, eSkippedKind::FileType);
            link->fileTypeCode = code;
            return link;
        }
        if (criterion.propertyNumber == kFactSkippedTest) {
            auto* link = new SRxSkippedCritNode(join, eSkippedKind::YesNo);
            link->flag = criterion.conditionId == COND_IS_YES;
            return link;
        }
    }
    return new SRxSkippedCritNode(join, eSkippedKind::Plain);
}

}  // namespace

SRxSkippedCritNode* BuildSkippedCriteria(const SRxCriteriaNode* criteria) {
    std::unique_ptr<SRxSkippedCritNode> head;
    SRxSkippedCritNode* last = nullptr;
    SRxOrGroups groups;
    for (const SRxCriteriaNode* c = criteria; c != nullptr; c = c->nextCriterion) {
        const bool wasOpen = groups.IsOpen();
        (void)groups.Next(*c);
        // The end of the list closes no group here.
        const bool inGroup = c->nextCriterion != nullptr ? groups.IsOpen() : wasOpen;
        if (SRxSkippedCritNode* link = MakeLink(*c)) {
            if (last == nullptr) {
                head.reset(link);
            } else {
                last->next = link;
            }
            last = link;
        } else if (!inGroup) {
            // Without such a term the rest would say more than the search did.
            return nullptr;
        }
    }
    return head.release();
}
