// Numbers in text as the process's locale writes them, for both builds. The C library reads them
// from wide text only where wchar_t is a UTF-16 unit, so neither build asks it.
#pragma once

#include <cstddef>

#include "platform/wtext.h"

// Makes the user's locale that of the process: setlocale(LC_ALL, ""). False when it is unknown; the
// process then keeps its own.
bool SetUserLocale();

// Reads a number at the front as wcstod does: white space (ASCII), sign, digits with the locale's
// decimal separator, exponent; hexadecimal, infinity and nan too. Too large gives infinity, too
// small 0. `consumed` counts the units read. Without a number false, 0 and nothing consumed.
bool ParseReal(WTextView text, double& value, std::size_t& consumed);

// Reads a whole number at the front as wcstol does in base 10: white space, sign, digits. The value
// stops at the ends of LONG.
bool ParseInteger(WTextView text, LONG& value, std::size_t& consumed);
