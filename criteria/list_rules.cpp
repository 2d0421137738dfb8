// How a criterion enters the list and leaves it, and which classes of files the list implies.
#include <algorithm>

#include "dialog/find_dialog.h"
#include "outside/md_messages.h"
#include "outside/ps_property_specifics.h"

namespace {

// The properties that office documents carry as well as models.
constexpr LONG kOfficeProperties[] = {
    PROP_TEXT_19125, PROP_PERSON_19133, PROP_TEXT_19134, PROP_TEXT_19136,   PROP_TEXT_19140,
    PROP_TEXT_19142, PROP_TEXT_19143,   PROP_TEXT_19144, PROP_PERSON_19145,
};

eFileTypeSearch ClassOfFileType(LONG conditionId) {
    switch (conditionId) {
        case FILETYPE_MODELS:
        case FILETYPE_ASSEMBLIES:
        case FILETYPE_PRESENTATIONS:
        case FILETYPE_PARTS:
        case FILETYPE_DRAWINGS:
        case FILETYPE_DESIGN_ELEMENTS:
        case FILETYPE_WIRE:
            return FILE_SEARCH_MODELS;
        case FILETYPE_OFFICE:
        case FILETYPE_DOC:
        case FILETYPE_PPT:
        case FILETYPE_XLS:
            return FILE_SEARCH_OFFICE;
        case FILETYPE_IMPORT:
        case FILETYPE_SAT:
        case FILETYPE_STEP:
        case FILETYPE_CVD:
            return FILE_SEARCH_IMPORT;
        default:
            return FILE_SEARCH_ANY;
    }
}

// Two of one property can hold at once only side by side with Or, save for ranges.
constexpr LONG kExactConditions[] = {COND_NUM_EQUALS, COND_EQUALS, COND_IS_NO, COND_IS_YES};
constexpr LONG kRangeConditions[] = {COND_GREATER_THAN, COND_DIFFERS, COND_LESS_THAN,
                                     COND_NUM_DIFFERS, COND_NOT_ON_DATE};
// Of these several with different values can stand side by side with And.
constexpr LONG kRepeatableConditions[] = {COND_DIFFERS, COND_NUM_DIFFERS, COND_NOT_ON_DATE};

template <std::size_t size>
bool Holds(const LONG (&list)[size], LONG conditionId) {
    return std::find(std::begin(list), std::end(list), conditionId) != std::end(list);
}

bool IsSameTest(const SRxCriteriaNode& a, const SRxCriteriaNode& b) {
    return a.conditionId == b.conditionId &&
           CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE | NORM_IGNOREWIDTH, a.value, -1,
                          b.value, -1) == CSTR_EQUAL;
}

// Joined by And, the two could hardly hold for one file.
bool Excludes(const SRxCriteriaNode& node, const SRxCriteriaNode& present) {
    return Holds(kExactConditions, node.conditionId) || present.conditionId == COND_EQUALS ||
           present.conditionId == COND_NUM_EQUALS;
}

bool AsksForOr(const SRxCriteriaNode& node, const SRxCriteriaNode& present) {
    return Excludes(node, present) || !(Holds(kRangeConditions, node.conditionId) ||
                                        Holds(kRangeConditions, present.conditionId));
}

bool IsRefusedByAnd(const SRxCriteriaNode& node, const SRxCriteriaNode& present) {
    return node.IsFileTypeCriterion() || Excludes(node, present) ||
           (node.conditionId == present.conditionId &&
            !Holds(kRepeatableConditions, node.conditionId));
}

}  // namespace

bool SRxFindDialog::AddNode(SRxCriteriaNode* node, bool appendOnly, int* outIndex,
                            bool* outReplaced) {
    int index = 0;
    bool replaced = false;
    bool added = true;
    if (node != nullptr) {
        if (criteriaHead == nullptr) {
            criteriaHead = node;  // whatever it says
        } else {
            added = MayEnter(*node) && PlaceNode(node, appendOnly, index, replaced);
        }
        if (added && node->IsFileTypeCriterion()) {
            fileSearchType = GetFileSearchType(*node);
        } else if (added) {
            SetPropSearchType(*node);
        }
    }
    // A row of the list box: the first node of a part environment has none.
    if (outIndex != nullptr) *outIndex = IsPartEnv() ? index - 1 : index;
    if (outReplaced != nullptr) *outReplaced = replaced;
    return added;
}

bool SRxFindDialog::MayEnter(SRxCriteriaNode& node) const {
    bool good = IsValidSearch(node);
    if (!good) Say(MSG_TYPE_CLASH);
    if (node.propertyStringId == PROP_DESIGN_STATE) {
        node.numericValue = PSxPropertySpecifics::DesignStateStringToInt(node.value);
        if (node.numericValue == 0.0) {
            Say(MSG_BAD_DESIGN_STATE);
            good = false;
        }
    }
    return good;
}

bool SRxFindDialog::PlaceNode(SRxCriteriaNode* node, bool appendOnly, int& index, bool& replaced) {
    bool asked = false;
    bool agreedToOr = false;
    SRxCriteriaNode** link = &criteriaHead;
    for (; *link != nullptr; link = &(*link)->nextCriterion, ++index) {
        SRxCriteriaNode* const current = *link;
        if (appendOnly || !SameProperty(*current, *node)) continue;
        if (IsSameTest(*current, *node)) {
            if (!Ask(MSG_ASK_REPLACE) && !agreedToOr) return false;
            node->nextCriterion = current->nextCriterion;
            current->nextCriterion = nullptr;
            delete current;
            *link = node;
            replaced = true;
            return true;
        }
        if (node->joinType == JOIN_AND && !asked && AsksForOr(*node, *current)) {
            asked = true;
            agreedToOr = Ask(MSG_ASK_JOIN_OR);
            if (agreedToOr) node->joinType = JOIN_OR;
        }
        if (node->joinType == JOIN_AND && IsRefusedByAnd(*node, *current)) return false;
        // Criteria on one property stand side by side; the new one ends their run.
        if (current->nextCriterion == nullptr || !SameProperty(*current->nextCriterion, *node)) {
            node->nextCriterion = current->nextCriterion;
            current->nextCriterion = node;
            ++index;
            return true;
        }
    }
    *link = node;
    return true;
}

bool SRxFindDialog::DeleteNode(SRxCriteriaNode** node) {
    if (node == nullptr || *node == nullptr) return true;
    SRxCriteriaNode** link = &criteriaHead;
    while (*link != nullptr && *link != *node)
        link = &(*link)->nextCriterion;
    if (*link == nullptr) return true;  // not of this list
    SRxCriteriaNode* const removed = *link;
    *link = removed->nextCriterion;
    removed->nextCriterion = nullptr;
    delete removed;
    *node = nullptr;
    return true;
}

bool SRxFindDialog::IsValidSearch(const SRxCriteriaNode& node) const {
    if (node.IsFileTypeCriterion()) {
        const eFileTypeSearch type = GetFileSearchType(node);
        if (propSearchType == FILE_SEARCH_MODELS) return type == FILE_SEARCH_MODELS;
        return propSearchType != FILE_SEARCH_OFFICE || type != FILE_SEARCH_IMPORT;
    }
    if (GetPropSearchType(node) == FILE_SEARCH_OFFICE) return fileSearchType != FILE_SEARCH_IMPORT;
    return fileSearchType < FILE_SEARCH_OFFICE;
}

eFileTypeSearch SRxFindDialog::GetFileSearchType(const SRxCriteriaNode& node) const {
    const eFileTypeSearch type =
        node.IsFileTypeCriterion() ? ClassOfFileType(node.conditionId) : FILE_SEARCH_ANY;
    return type > fileSearchType ? type : fileSearchType;
}

eFileTypeSearch SRxFindDialog::GetPropSearchType(const SRxCriteriaNode& node) const {
    for (const LONG property : kOfficeProperties) {
        if (node.propertyStringId == property) return FILE_SEARCH_OFFICE;
    }
    const bool fact =
        node.propertyStringId == PROP_FILE_TYPE || node.propertyStringId == PROP_FILE_NAME;
    return fact ? FILE_SEARCH_IMPORT : FILE_SEARCH_MODELS;
}

bool SRxFindDialog::SetPropSearchType(const SRxCriteriaNode& node) {
    // 0 is no limit yet; else the narrower class wins.
    const eFileTypeSearch type = GetPropSearchType(node);
    if (propSearchType == FILE_SEARCH_ANY || type < propSearchType) propSearchType = type;
    return true;
}
