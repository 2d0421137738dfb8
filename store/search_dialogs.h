// The two dialogs between a person and the saved searches: one picks or deletes a search, the other
// asks for a name. Neither touches a criterion.
#pragma once

#include "criteria/modes.h"
#include "module/module_api.h"
#include "module/text_lengths.h"
#include "store/search_list_owner.h"

// One run of either dialog, its parameter.
struct SRxSearchListRecord {
    SRxSearchListRecord(SRxSearchListOwner* owner, eAccessPoint from);

    bool filling = false;  // the dialog fills its own controls
    HWND window = nullptr;
    SRxSearchListOwner* dialog;
    WCHAR name[kPathLength] = {};  // the chosen name, empty without one
    unsigned maxNameLength;        // units of the longest name that can be given
    unsigned accessPoint;
};

// Ends with 1 when a name was picked, with 0 on Cancel.
extern "C" SR_API INT_PTR CALLBACK OpenSearchDlgProc(HWND dialog, UINT message, WPARAM wParam,
                                                     LPARAM lParam);
// Ends with 1 when the name is to be used, with 0 on Cancel. What was saved under it stays until
// the new search is written.
extern "C" SR_API INT_PTR CALLBACK SaveSearchDlgProc(HWND dialog, UINT message, WPARAM wParam,
                                                     LPARAM lParam);
