// Messages whose texts are filled in by number, for both builds.
#pragma once

#include <initializer_list>

#include "platform/wtext.h"

// `format` with %1, %2 ... replaced by `inserts`, of which there must be as many as the format
// names; %% is a percent sign. Empty when the format can't be followed.
WText FormatInserts(LPCWSTR format, std::initializer_list<LPCWSTR> inserts);
