#include "found/found_list.h"

#include "module/module_state.h"

SRxFoundList::SRxFoundList(SRxFindDialog& owner, MDxFileNameNode** slot)
    : dialog(&owner),
      selectionSlot(slot != nullptr ? slot : &ownSelection),
      returnSelection(slot != nullptr) {
    dialog->searches.push_back(this);
    ++objectCount;
}

SRxFoundList::~SRxFoundList() {
    if (!returnSelection && *selectionSlot != nullptr) {
        (*selectionSlot)->Release();
        if ((*selectionSlot)->GetReferenceCount() == 0) delete *selectionSlot;
    }
    delete rootNode;
    std::erase(dialog->searches, this);
    if (destroyed != nullptr) *destroyed = true;
    --objectCount;
}
