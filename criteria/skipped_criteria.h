// The criteria in the reduced form that a caller gets back after a search.
#pragma once

#include "criteria/criteria_node.h"
#include "module/shell_ext_parameters.h"

// In list order; null when there are none, or when a criterion that has no reduced form stands
// outside a group. The caller owns the chain.
SRxSkippedCritNode* BuildSkippedCriteria(const SRxCriteriaNode* criteria);
