#include "outside/md_property_rows.h"

bool FindPropID(LONG number, LONG category, LONG* stringId, int, int) {
    for (const PropertyRow& row : kPropertyRows) {
        if (row.number == number && row.category == category) {
            *stringId = row.stringId;
            return true;
        }
    }
    return false;
}

bool FindPropString(LONG stringId, LONG* number, LONG* category, int, int) {
    for (const PropertyRow& row : kPropertyRows) {
        if (row.stringId == stringId) {
            *number = row.number;
            *category = row.category;
            return true;
        }
    }
    return false;
}
