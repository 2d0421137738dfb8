// How the rows of the found list sort.
#pragma once

#include "platform/system.h"

// Compares two rows by their full names, pointers to null-terminated texts, either may be null: by
// folder for column 1, else by name. -1, 0 or 1.
int CALLBACK CompareRows(LPARAM a, LPARAM b, LPARAM column);
