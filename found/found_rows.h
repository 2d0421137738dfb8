// What a search writes into the found dialog: rows, progress, the closing state.
#pragma once

#include "found/found_list.h"

// A message to the list of hits; 0 when it isn't there any more.
LRESULT SendToFoundList(const SRxFoundList& list, UINT message, WPARAM wParam = 0,
                        const void* lParam = nullptr);
// The status bar says that `path` is searched; may be empty.
void ShowSearchedPath(const SRxFoundList& list, const WCHAR* path);

// How the search ended, the columns fitted, and the dialog ready for picks.
void CloseFoundSearch(SRxFoundList& list);
