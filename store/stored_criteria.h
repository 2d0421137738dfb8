// Criteria of a list as the store keeps them, and back.
#pragma once

#include <functional>
#include <memory>

#include "criteria/criteria_node.h"
#include "store/saved_search.h"

std::vector<StoredCriterion> ToStored(const SRxCriteriaNode* criteria);

// Gives the criteria of a stored search to `take`, one after the other, null for one that memory
// was too short for, which ends it. True when `take` took each. Without `componentsToo` those about
// things inside an assembly are left out, which `skipped` tells.
[[nodiscard]] bool TakeStored(const StoredSearch& search, bool componentsToo, bool& skipped,
                              const std::function<bool(std::unique_ptr<SRxCriteriaNode>)>& take);
