// What lives as long as the module: the count of its objects and the resource library.
#pragma once

#include "module/module_api.h"
#include "platform/system.h"

// Objects of the module that are alive; it may be unloaded at 0. One thread, so a plain number.
extern LONG objectCount;

// The resource library, loaded on first need; null when it can't be loaded, and then tried again at
// the next call.
extern "C" SR_API HINSTANCE SrResReturnHandle();
// Gives the library up; for the module's unloading.
void ReleaseResourceLibrary();
