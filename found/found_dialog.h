// The found dialog: it carries one search, shows its hits and gives back what a person picks. Its
// record is SRxFoundList, which the dialog frees when its window goes.
#pragma once

#include "found/found_list.h"
#include "found/row_order.h"
#include "module/module_api.h"

inline constexpr UINT_PTR kFoundTimer = 49650;

// Takes the record over and frees it: at once on the assembly-only route, else with the dialog, or
// when no dialog can be made. True when a search and its dialog started, for a modal dialog when it
// ended with OK.
bool StartFoundDialog(SRxFoundList& list, const SRxShellExtParameters& params);

// The find dialog ends: the search is to stop, the found dialog hides, a modal one ends behind it.
// `letGo`: what was found and picked goes to nobody from now on.
void AbandonSearch(SRxFoundList& list, bool letGo);
// Ends the found dialog and frees the record. Nothing of this search is on the stack.
void EndSearch(SRxFoundList& list);

extern "C" SR_API INT_PTR CALLBACK FoundDlgProc(HWND window, UINT message, WPARAM wParam,
                                                LPARAM lParam);

// The selected rows as a chain in row order, each node with one reference, in `*out` or, for null,
// in the place of an earlier chain in the record's slot. False without a selected row, and when the
// record gives no selection back. Without memory nothing is picked, and the user is told.
bool CollectSelection(SRxFoundList& list, MDxFileNameNode** out);
// The full names that the rows own; the rows go with them. Always true.
bool ReleaseRowStrings(SRxFoundList& list);

// The rows of the list.
int CountRows(const SRxFoundList& list);
// Folder and name of a row, whole.
WText PathOfRow(const SRxFoundList& list, int row);

// The list and the controls around it, before the search. Always true.
bool SetUpFoundList(SRxFoundList& list);
// Places the controls in a dialog of this client size, which the next found dialog opens with.
void LayOutFoundDialog(SRxFoundList& list, int width, int height);
// The client size that the last found dialog reported; -1 before the first.
extern LONG foundWidth;
extern LONG foundHeight;

// Writes all rows to a text file that the user names. False when no file was named.
bool ExportResults(SRxFoundList& list);
