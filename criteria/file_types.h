// The classes of files: which extensions each covers, and which files a list of criteria can need.
#pragma once

#include "criteria/criteria_node.h"

// How wide a class of files a search may touch.
enum eFileTypeSearch : unsigned {
    FILE_SEARCH_ANY = 0,
    FILE_SEARCH_MODELS = 1,
    FILE_SEARCH_OFFICE = 2,
    FILE_SEARCH_IMPORT = 3
};

// By the extension alone; what follows a '<' is no part of the name. `typeId` is a FILETYPE_ id.
bool CompareFileType(const WCHAR* fileName, unsigned typeId);
// Whether the list can hold for a file of that name: it would if every criterion on anything else
// did.
bool FileTypesAllow(const SRxCriteriaNode* criteria, const WCHAR* fileName);
// Whether reading the file's properties can matter to the list. An or-group of nothing but file
// types decides; where there is none, `propSearchType`, what the properties of the list allow.
// `criteria` may be null.
bool PassesFileTypeFilter(const SRxCriteriaNode* criteria, eFileTypeSearch propSearchType,
                          const WCHAR* fileName);
