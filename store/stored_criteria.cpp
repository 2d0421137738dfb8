#include "store/stored_criteria.h"

#include "platform/new_or_null.h"

namespace {

std::unique_ptr<SRxCriteriaNode> ToNode(const StoredCriterion& stored) {
    auto node = stored.number >= 0
                    ? NewOrNull<SRxCriteriaNode>(stored.number, stored.category, stored.condition,
                                                 stored.join, stored.value.c_str())
                    : NewOrNull<SRxCriteriaNode>(stored.customName.c_str(), stored.condition,
                                                 stored.join, stored.value.c_str());
    if (node != nullptr) node->valueId = stored.valueId;
    return node;
}

}  // namespace

std::vector<StoredCriterion> ToStored(const SRxCriteriaNode* criteria) {
    std::vector<StoredCriterion> all;
    for (const SRxCriteriaNode* node = criteria; node != nullptr; node = node->nextCriterion) {
        StoredCriterion& stored = all.emplace_back();
        stored.join = node->joinType;
        stored.number = node->propertyNumber;
        stored.category = node->propertyCategory;
        stored.customName = node->customName.c_str();
        stored.condition = node->conditionId;
        stored.value = node->value;
        stored.valueId = node->valueId;
    }
    return all;
}

bool TakeStored(const StoredSearch& search, bool componentsToo, bool& skipped,
                const std::function<bool(std::unique_ptr<SRxCriteriaNode>)>& take) {
    bool result = true;
    bool skippedBefore = false;
    LONG rememberedJoin = 0;  // of the last criterion before a skipped one
    for (StoredCriterion criterion : search.criteria) {
        if (criterion.number >= 0) {
            if (criterion.condition == COND_STORED_LIBRARY) {
                criterion.number = kFactLibrary;
                criterion.category = eCategoryFile;
                criterion.condition = COND_LIBRARY_YES;
            }
            if (!componentsToo && criterion.category == eCategoryComponent) {
                skipped = skippedBefore = true;
                continue;
            }
            // The criterion after a skipped one takes its place in the joins.
            if (skippedBefore) {
                if (criterion.join != JOIN_AND) criterion.join = rememberedJoin;
            } else {
                rememberedJoin = criterion.join;
            }
            skippedBefore = false;
        }
        auto node = ToNode(criterion);
        const bool made = node != nullptr;
        result = take(std::move(node)) && result;
        if (!made) return false;
    }
    return result;
}
