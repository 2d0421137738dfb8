#include "criteria/list_rules.h"

#include <algorithm>
#include <cassert>

#include "criteria/text_equality.h"
#include "outside/ps_property_specifics.h"

namespace {

// The properties that office documents carry as well as models.
constexpr LONG kOfficeProperties[] = {
    kRevisionNumber, kAuthor, kKeywords, kComments, kTitle, kCompany, kCategory, kSubject, kManager,
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
    return a.conditionId == b.conditionId && TextsEqual(a.value, b.value, kFoldName);
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

bool MayEnter(const SRxCriteriaListRef& list, SRxCriteriaNode& node, SRxListAsker& asker) {
    bool good = IsValidSearch(node, list.fileSearchType, list.propSearchType);
    if (!good) asker.Say(MSG_TYPE_CLASH);
    if (node.propertyStringId == PROP_DESIGN_STATE) {
        node.numericValue = PSxPropertySpecifics::DesignStateStringToInt(node.value);
        if (node.numericValue == 0.0) {
            asker.Say(MSG_BAD_DESIGN_STATE);
            good = false;
        }
    }
    return good;
}

bool PlaceNode(SRxCriteriaNode*& head, SRxCriteriaNode* node, bool appendOnly, SRxListAsker& asker,
               int& index, bool& replaced) {
    bool asked = false;
    bool agreedToOr = false;
    // False when no pointer into the list can be trusted any more.
    const auto ask = [&](UINT question, bool& agreed) {
        const SRxListImage before(head);
        agreed = asker.Ask(question);
        return before.Shows(head);
    };
    SRxCriteriaNode** link = &head;
    for (; *link != nullptr; link = &(*link)->nextCriterion, ++index) {
        SRxCriteriaNode* const current = *link;
        if (appendOnly || !SameProperty(*current, *node)) continue;
        if (IsSameTest(*current, *node)) {
            bool agreed = false;
            if (!ask(MSG_ASK_REPLACE, agreed) || !(agreed || agreedToOr)) return false;
            node->nextCriterion = current->nextCriterion;
            current->nextCriterion = nullptr;
            delete current;
            *link = node;
            replaced = true;
            return true;
        }
        if (node->joinType == JOIN_AND && !asked && AsksForOr(*node, *current)) {
            asked = true;
            if (!ask(MSG_ASK_JOIN_OR, agreedToOr)) return false;
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

}  // namespace

SRxListImage::SRxListImage(const SRxCriteriaNode* head) {
    for (; head != nullptr; head = head->nextCriterion)
        entries_.push_back(EntryOf(*head));
}

bool SRxListImage::Shows(const SRxCriteriaNode* head) const {
    for (const Entry& entry : entries_) {
        if (head == nullptr || head != entry.node || EntryOf(*head) != entry) return false;
        head = head->nextCriterion;
    }
    return head == nullptr;
}

SRxListImage::Entry SRxListImage::EntryOf(const SRxCriteriaNode& node) {
    return {&node, node.joinType, node.propertyStringId, node.conditionId,
            WText(node.value) + TEXT("\n") + node.customName.c_str()};
}

bool AddNode(SRxCriteriaListRef list, SRxCriteriaNode* node, bool appendOnly, SRxListAsker& asker,
             int& index, bool& replaced) {
    index = 0;
    replaced = false;
    if (node == nullptr) return true;
    assert(node->nextCriterion == nullptr);
    if (list.head == nullptr) {
        list.head = node;  // whatever it says
    } else if (!MayEnter(list, *node, asker) ||
               !PlaceNode(list.head, node, appendOnly, asker, index, replaced)) {
        return false;
    }
    if (node->IsFileTypeCriterion()) {
        list.fileSearchType = FileSearchTypeWith(*node, list.fileSearchType);
    } else {
        list.propSearchType = PropSearchTypeWith(*node, list.propSearchType);
    }
    return true;
}

void DeleteNode(SRxCriteriaNode*& head, SRxCriteriaNode*& node) {
    SRxCriteriaNode** link = &head;
    while (*link != nullptr && *link != node)
        link = &(*link)->nextCriterion;
    if (*link == nullptr) return;  // not of this list
    SRxCriteriaNode* const removed = *link;
    *link = removed->nextCriterion;
    removed->nextCriterion = nullptr;
    delete removed;
    node = nullptr;
}

bool IsValidSearch(const SRxCriteriaNode& node, eFileTypeSearch fileSearchType,
                   eFileTypeSearch propSearchType) {
    if (node.IsFileTypeCriterion()) {
        const eFileTypeSearch type = FileSearchTypeWith(node, fileSearchType);
        if (propSearchType == FILE_SEARCH_MODELS) return type == FILE_SEARCH_MODELS;
        return propSearchType != FILE_SEARCH_OFFICE || type != FILE_SEARCH_IMPORT;
    }
    if (PropSearchTypeOf(node) == FILE_SEARCH_OFFICE) return fileSearchType != FILE_SEARCH_IMPORT;
    return fileSearchType < FILE_SEARCH_OFFICE;
}

eFileTypeSearch FileSearchTypeWith(const SRxCriteriaNode& node, eFileTypeSearch present) {
    const eFileTypeSearch type =
        node.IsFileTypeCriterion() ? ClassOfFileType(node.conditionId) : FILE_SEARCH_ANY;
    return type > present ? type : present;
}

eFileTypeSearch PropSearchTypeOf(const SRxCriteriaNode& node) {
    for (const LONG property : kOfficeProperties) {
        if (node.propertyStringId == property) return FILE_SEARCH_OFFICE;
    }
    const bool fact =
        node.propertyStringId == PROP_FILE_TYPE || node.propertyStringId == PROP_FILE_NAME;
    return fact ? FILE_SEARCH_IMPORT : FILE_SEARCH_MODELS;
}

eFileTypeSearch PropSearchTypeWith(const SRxCriteriaNode& node, eFileTypeSearch present) {
    // 0 is no limit yet; else the narrower class wins.
    const eFileTypeSearch type = PropSearchTypeOf(node);
    return present == FILE_SEARCH_ANY || type < present ? type : present;
}
