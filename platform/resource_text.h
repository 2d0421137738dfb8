// Texts of the resource library, for both builds.
#pragma once

#include "platform/wtext.h"

// The whole string; empty when the library lacks it.
WText ResourceText(HINSTANCE resources, UINT id);
