#include <memory>

#include "search/search.h"

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
constexpr LONG kFileCategory = 7;
constexpr LONG kFileTypeNumber = 100;
constexpr LONG kSkippedTestNumber = 117;

unsigned FileTypeCode(LONG conditionId) {
    for (const FileTypeCodeRow& row : kFileTypeCodes) {
        if (row.conditionId == conditionId) return row.code;
    }
    return 0;
}

// Null for a file type that has no code.
SRxSkippedCritNode* MakeLink(const SRxCriteriaNode& criterion) {
    const auto join = static_cast<unsigned>(criterion.joinType);
    if (criterion.propertyCategory == kFileCategory) {
        if (criterion.propertyNumber == kFileTypeNumber) {
            const unsigned code = FileTypeCode(criterion.conditionId);
            if (code == 0) return nullptr;
            auto* link = new SRxSkippedCritNode(join, eSkippedKind::FileType);
            link->fileTypeCode = code;
            return link;
        }
        if (criterion.propertyNumber == kSkippedTestNumber) {
            auto* link = new SRxSkippedCritNode(join, eSkippedKind::YesNo);
            link->flag = criterion.conditionId == COND_IS_YES;
            return link;
        }
    }
    return new SRxSkippedCritNode(join, eSkippedKind::Plain);
}

}  // namespace

SRxSkippedCritNode* BuildSkippedCriteria(const SRxFoundList& list) {
    std::unique_ptr<SRxSkippedCritNode> head;
    SRxSkippedCritNode* last = nullptr;
    bool inGroup = false;
    for (const SRxCriteriaNode* c = list.dialog->criteriaHead; c != nullptr; c = c->nextCriterion) {
        const SRxCriteriaNode* n = c->nextCriterion;
        if (inGroup || c->joinType == JOIN_OR || (n != nullptr && n->joinType == JOIN_OR)) {
            if (c->joinType == JOIN_AND) {
                inGroup = true;
            } else if (n != nullptr && n->joinType == JOIN_AND) {
                inGroup = false;
            }
        }
        if (SRxSkippedCritNode* link = MakeLink(*c)) {
            if (last == nullptr) {
                head.reset(link);
            } else {
                last->next = link;
            }
            last = link;
        } else if (!inGroup) {
            // A term that can't be told makes the rest say more than the search did.
            return nullptr;
        }
    }
    return head.release();
}
