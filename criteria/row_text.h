// How a criterion reads as a row of a list.
#pragma once

#include "criteria/criteria_node.h"
#include "criteria/user_names.h"
#include "platform/wtext.h"

// Join, property, condition and value in the words of the resource library.
WText CriterionRowText(HINSTANCE resources, const SRxCriteriaNode& node, const SRxUserNames& users);
