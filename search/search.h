// The search engine: the driver, its routes and the file test.
#pragma once

#include "search/search_run.h"

// Runs one search from start to end; true when its route succeeded.
bool RunSearch(SRxSearchRun& run);

// The routes. `needProperties`: some criterion asks for properties of a document.
bool SearchSelection(SRxSearchRun& run, bool needProperties);
bool SearchFolders(SRxSearchRun& run, LONG subfolders, bool needProperties);
// The look-in document and everything that it and each document found refers to.
bool SearchRelatedDocs(SRxSearchRun& run, bool needProperties);

// Lists one folder and tests its files. True when it could be listed. `*newFolders` (may be null)
// becomes the chain of its subfolders when `subfolders` is above 0; the caller owns it, also when
// an exception ends the walk.
bool WalkDirectory(SRxSearchRun& run, const WCHAR* path, LONG subfolders, bool needProperties,
                   int& insertIndex, MDxFileNameNode** newFolders);

// What was searched last, kept for the look-in box, where the query remembers places. True when it
// was written.
bool RememberRecentPath(const SRxSearchRun& run, const WCHAR* path);
// Always true.
bool RememberRecentFiles(const SRxSearchRun& run, const WCHAR* path);

// A full name as the file test takes it: the folder with its backslash (empty without one) and the
// name, which points into `fullName`.
const WCHAR* SplitFullName(const WCHAR* fullName, BLxWString& folder);

// Tests one candidate and publishes a hit. `folder` ends in a backslash unless it is empty; `name`
// has no folder. The node stays the caller's. Always true.
bool TestFile(SRxSearchRun& run, const WCHAR* folder, const WCHAR* name, MDxFileNameNode* node,
              bool needProperties, int& insertIndex);
// Whether the file satisfies the list. Leaves a record for each criterion on the node when the
// file is a hit whose records are wanted, or `keepsRecords` is set.
bool MatchFile(SRxSearchRun& run, MDxFileNameNode* node, bool needProperties);

// Shows where the search is; true while no stop is requested. `*pumped` (may be null): messages
// were handed out.
bool ShowProgress(SRxSearchRun& run, const WCHAR* path, bool* pumped = nullptr);
