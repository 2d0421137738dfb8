// Marks what leaves the module, or enters a program that links the module.
#pragma once

#include "platform/export.h"

#if defined(SR_BUILD)
#define SR_API SR_DLL_EXPORT
#else
#define SR_API  // a program that links the module, or its rooms
#endif
