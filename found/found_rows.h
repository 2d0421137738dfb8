// What a search writes into the found dialog: rows, progress, the closing state.
#pragma once

#include "found/found_list.h"

// A row for the hit, unless one of this name and folder is there, whatever the case of letters and
// the width of characters. `insertIndex` is where it goes, and becomes the place behind it.
void AddFoundRow(SRxFoundList& list, const WCHAR* folder, const WCHAR* name,
                 const MDxFileNameNode& node, int& insertIndex);

// A message to the list of hits; 0 when it isn't there any more.
LRESULT SendToFoundList(const SRxFoundList& list, UINT message, WPARAM wParam = 0,
                        const void* lParam = nullptr);
// The status bar says that `path` is searched; may be empty.
void ShowSearchedPath(const SRxFoundList& list, const WCHAR* path);

// The list is painted only between whiles, until the search is closed.
void OpenFoundSearch(SRxFoundList& list);

// How the search ended, the columns fitted, and the dialog ready for picks.
void CloseFoundSearch(SRxFoundList& list);
