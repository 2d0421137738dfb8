#include "found/found_list.h"

#include "module/file_chain.h"
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
    if (!returnSelection) ReleaseChain(*selectionSlot);
    dialog->Leave(this);
    if (destroyed != nullptr) *destroyed = true;
    --objectCount;
}
