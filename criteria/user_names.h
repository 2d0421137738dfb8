// The names that the conditions on users compare with.
#pragma once

#include "platform/system.h"

// Null-terminated, empty for a name that isn't known; the buffers are the maker's.
struct SRxUserNames {
    const WCHAR* application = TEXT("");
    const WCHAR* login = TEXT("");
};
