// Export marks of the closed libraries: a caller imports, the library that is being built exports.
#pragma once

#include "platform/export.h"

#ifdef MD_BUILD
#define MD_API SR_DLL_EXPORT
#else
#define MD_API SR_DLL_IMPORT
#endif
#ifdef PS_BUILD
#define PS_API SR_DLL_EXPORT
#else
#define PS_API SR_DLL_IMPORT
#endif
#ifdef BLX_BUILD
#define BLX_API SR_DLL_EXPORT
#else
#define BLX_API SR_DLL_IMPORT
#endif
#ifdef BLXSHARED_BUILD
#define BLXSHARED_API SR_DLL_EXPORT
#else
#define BLXSHARED_API SR_DLL_IMPORT
#endif
