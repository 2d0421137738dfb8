#include "criteria/criteria_node.h"

#include <utility>

#include "platform/wtext.h"

SRxCriteriaNode::SRxCriteriaNode(LONG number, LONG category, LONG condition, LONG join,
                                 const WCHAR* text)
    : propertyNumber(number), propertyCategory(category), joinType(join) {
    SetTest(condition, text, FindPropID(number, category, &propertyStringId, 0, 1));
}

SRxCriteriaNode::SRxCriteriaNode(LONG stringId, LONG condition, LONG join, const WCHAR* text)
    : SRxCriteriaNode(stringId, condition, join, text, kNoId) {}

SRxCriteriaNode::SRxCriteriaNode(LONG stringId, LONG condition, LONG join, const WCHAR* text,
                                 LONG listEntry)
    : propertyStringId(stringId), joinType(join), valueId(listEntry) {
    SetTest(condition, text, FindPropString(stringId, &propertyNumber, &propertyCategory, 0, 1));
}

SRxCriteriaNode::SRxCriteriaNode(const WCHAR* name, LONG condition, LONG join, const WCHAR* text)
    : propertyCategory(eCategoryCustom), customName(name), joinType(join) {
    SetTest(condition, text, true);
}

SRxCriteriaNode::~SRxCriteriaNode() {
    // One at a time: a list of any length takes no stack.
    for (SRxCriteriaNode* node = std::exchange(nextCriterion, nullptr); node != nullptr;) {
        delete std::exchange(node, std::exchange(node->nextCriterion, nullptr));
    }
}

void SRxCriteriaNode::SetTest(LONG condition, const WCHAR* text, bool found) {
    if (!found) {
        propertyNumber = propertyCategory = propertyStringId = kNoId;
        return;
    }
    conditionId = condition;
    if (text != nullptr) (void)wtext::CopyWhole(value, kValueLength, text);
}

bool SRxCriteriaNode::NeedsDocumentProperties() const {
    return propertyStringId != PROP_FILE_TYPE && propertyStringId != PROP_FILE_NAME &&
           !IsOccurrenceCategory();
}

bool SameProperty(const SRxCriteriaNode& a, const SRxCriteriaNode& b) {
    if (a.propertyNumber != b.propertyNumber) return false;
    return a.propertyNumber != kNoId || a.customName == b.customName;
}
