// The search engine: the driver, its routes and the file test.
#pragma once

#include "found/found_list.h"

// Runs one search from start to end; true when its route succeeded.
bool RunSearch(SRxFoundList& list);

// The routes. `needProperties`: some criterion asks for properties of a document.
bool SearchSelection(SRxFoundList& list, bool needProperties);
bool SearchFolders(SRxFoundList& list, LRESULT subfolders, bool needProperties);
// The document in the look-in box and everything that it and each document found refers to.
bool SearchRelatedDocs(SRxFoundList& list, bool needProperties);

// Lists one folder and tests its files. True when it could be listed. `*newFolders` (may be null)
// becomes the chain of its subfolders when `subfolders` is above 0; the caller owns it.
bool WalkDirectory(SRxFoundList& list, const WCHAR* path, LRESULT subfolders, bool needProperties,
                   int& insertIndex, MDxFileNameNode** newFolders);

// What was searched last, kept for the look-in box. True when it was written.
bool RememberRecentPath(SRxFoundList& list, const WCHAR* path);
bool RememberRecentFiles(SRxFoundList& list, const WCHAR* path);

// A full name as the file test takes it: the folder with its backslash (empty without one) and the
// name, which points into `fullName`.
const WCHAR* SplitFullName(const WCHAR* fullName, BLxWString& folder);

// Tests one candidate and publishes a hit. `folder` ends in a backslash unless it is empty; `name`
// has no folder. The node stays the caller's. Always true.
bool TestFile(SRxFoundList& list, const WCHAR* folder, const WCHAR* name, MDxFileNameNode* node,
              bool needProperties, int& insertIndex);
// Whether the file satisfies the list. Leaves a record for each criterion on the node when the
// file is a hit or `keepsRecords` is set.
bool MatchFile(SRxFoundList& list, MDxFileNameNode* node, bool needProperties);

// Shows where the search is; true while no stop is requested.
bool ShowProgress(SRxFoundList& list, const WCHAR* path);

// The text of a control, whole.
BLxWString ReadControlText(HWND dialog, int control);

// The criteria in the reduced form that a caller gets back, in list order; null when there are none
// or when one of them can't be told. The caller owns the chain.
SRxSkippedCritNode* BuildSkippedCriteria(const SRxFoundList& list);
