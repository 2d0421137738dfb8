// What a search writes into the found dialog: rows, progress, the closing state.
#pragma once

#include "search/found_list.h"

// A row for the hit, unless one of this name and folder is there, whatever the case of letters and
// the width of characters. `insertIndex` is where it goes, and becomes the place behind it.
void AddFoundRow(SRxFoundList& list, const WCHAR* folder, const WCHAR* name,
                 const MDxFileNameNode& node, int& insertIndex);

// The list is painted only between whiles, until the search is closed.
void OpenFoundSearch(SRxFoundList& list);

// How the search ended, the columns fitted, and the dialog ready for picks.
void CloseFoundSearch(SRxFoundList& list);
