// How a criterion enters the list and leaves it, and which classes of files the list implies.
#pragma once

#include <vector>

#include "criteria/criteria_node.h"
#include "criteria/file_types.h"
#include "platform/wtext.h"

// The list with the classes of files that it implies, wherever its owner keeps them. The list owns
// its criteria.
struct SRxCriteriaListRef {
    SRxCriteriaNode*& head;
    eFileTypeSearch& fileSearchType;
    eFileTypeSearch& propSearchType;
};

// A list of its own.
struct SRxCriteriaList {
    SRxCriteriaList() = default;
    ~SRxCriteriaList() { delete head; }
    SRxCriteriaList(const SRxCriteriaList&) = delete;
    SRxCriteriaList& operator=(const SRxCriteriaList&) = delete;

    SRxCriteriaListRef Ref() { return {head, fileSearchType, propSearchType}; }

    SRxCriteriaNode* head = nullptr;
    eFileTypeSearch fileSearchType = FILE_SEARCH_ANY;
    eFileTypeSearch propSearchType = FILE_SEARCH_ANY;
};

// What a list holds at one moment. Whoever asks a person in the middle of his work sees by it
// whether the list was changed meanwhile, which may have freed its criteria.
class SRxListImage {
public:
    explicit SRxListImage(const SRxCriteriaNode* head);
    // Whether the list holds just that.
    bool Shows(const SRxCriteriaNode* head) const;

private:
    struct Entry {
        const SRxCriteriaNode* node;  // never looked into
        LONG join;
        LONG property;
        LONG condition;
        WText text;

        bool operator==(const Entry&) const = default;
    };
    static Entry EntryOf(const SRxCriteriaNode& node);

    std::vector<Entry> entries_;
};

// Who is asked and told about the list. The ids are those of the resource library. The list may be
// another after it.
class SRxListAsker {
public:
    virtual bool Ask(UINT question) = 0;  // true for yes
    virtual void Say(UINT message) = 0;

protected:
    ~SRxListAsker() = default;
};

// Places a criterion: in the place of an equal one, after the others of its property, or at the
// end; asks and refuses in between. `appendOnly`: at the end, and nothing is asked. True: it is in
// the list, which owns it now. A list that was changed while a question stood doesn't get it.
// `index` gets its place in the list, `replaced` whether an equal one
// went. A null `node` changes nothing and is no failure.
[[nodiscard]] bool AddNode(SRxCriteriaListRef list, SRxCriteriaNode* node, bool appendOnly,
                           SRxListAsker& asker, int& index, bool& replaced);
// Takes a node out of the list, destroys it and clears the pointer; one that the list doesn't have
// stays as it is.
void DeleteNode(SRxCriteriaNode*& head, SRxCriteriaNode*& node);

// Whether a criterion fits the classes of files that the list implies.
bool IsValidSearch(const SRxCriteriaNode& node, eFileTypeSearch fileSearchType,
                   eFileTypeSearch propSearchType);
// The class of files that the list implies with this criterion; never below the present one.
eFileTypeSearch FileSearchTypeWith(const SRxCriteriaNode& node, eFileTypeSearch present);
// The class that a criterion's property allows.
eFileTypeSearch PropSearchTypeOf(const SRxCriteriaNode& node);
// The narrower one of the present class and that of the criterion.
eFileTypeSearch PropSearchTypeWith(const SRxCriteriaNode& node, eFileTypeSearch present);
