// The find dialog, opened and worked as a person does it: through its controls and their commands.
#pragma once

#include "dialog/find_dialog.h"
#include "host/srfind/report.h"
#include "platform/wtext.h"

class FindSession {
public:
    // What the dialog asks and tells goes to the report, its picks to `slot` (may be null).
    FindSession(SearchReport& report, MDxFileNameNode** slot);
    // Closes the dialog and its found dialogs.
    ~FindSession();
    FindSession(const FindSession&) = delete;
    FindSession& operator=(const FindSession&) = delete;

    // The window. `files`: the search goes over the chain on the slot. False when it can't be made.
    bool Open(bool files);
    SRxFindDialog& Dialog() const { return *dialog_; }

    // The row that a new list begins with goes, since only what is typed counts.
    void ClearList();
    // Starts the search, and waits for its end; false when none started.
    bool Find();
    // The dialog with the hits of the last search.
    HWND Found() const;

private:
    DeskScope desk_;
    SRxFindDialog* dialog_;  // frees itself when its window goes
    bool open_ = false;
};
