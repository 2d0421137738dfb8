// The order of names in which runs of digits compare by their value.
#pragma once

#include "platform/wtext.h"

// Without regard to the case of ASCII letters; names that are equal so far are ordered exactly, so
// that the order is total.
bool NaturalLess(const WText& a, const WText& b);
