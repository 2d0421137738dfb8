// The list of the find dialog to and from the store.
#pragma once

#include "dialog/find_dialog.h"

// Stores the list under a name; an empty list and an empty name store nothing. False when not all
// of it is stored, which is said. `lastSearch`: for this process alone.
bool WriteSearch(SRxFindDialog& dialog, const WCHAR* name, bool lastSearch);
// Puts a saved search in the place of the list; a name that isn't there gives a new list, an empty
// one changes nothing. False when a criterion was refused or got no row.
SR_API bool ReadSearch(SRxFindDialog& dialog, const WCHAR* name);
