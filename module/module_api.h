// Marks what leaves the module, or enters a program that links the module.
#pragma once

#include "platform/export.h"

#if defined(SR_BUILD)
#define SR_API SR_DLL_EXPORT
#elif defined(SR_SHARED)
#define SR_API SR_DLL_IMPORT
#else
#define SR_API  // the module's objects, linked into a program
#endif
