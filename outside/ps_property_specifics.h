// PS.dll: values that have a number behind their text.
#pragma once

#include "outside/library_api.h"
#include "platform/system.h"

class PS_API PSxPropertySpecifics {
public:
    // The number of a design state, 0 for a text that is none. Case and surrounding blanks play no
    // part; the number itself in decimal is a text of it.
    static LONG DesignStateStringToInt(const WCHAR* text);
    // The text of a state, null for a number that is none.
    static const WCHAR* DesignStateIntToString(LONG state);
};
