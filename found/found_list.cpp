#include "found/found_list.h"

#include "module/module_state.h"

SRxFoundList::SRxFoundList(SRxFoundListOwner& owner, MDxFileNameNode** slot)
    : dialog(&owner),
      selectionSlot(slot != nullptr ? slot : &ownSelection),
      returnSelection(slot != nullptr),
      run(owner, rowsSink) {
    run.hitsHaveRecords = false;  // a row has no room for them
    dialog->Enter(this);
    ++objectCount;
}

SRxFoundList::~SRxFoundList() {
    if (!returnSelection && *selectionSlot != nullptr) {
        (*selectionSlot)->Release();
        if ((*selectionSlot)->GetReferenceCount() == 0) delete *selectionSlot;
    }
    dialog->Leave(this);
    if (destroyed != nullptr) *destroyed = true;
    --objectCount;
}
