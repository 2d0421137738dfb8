// Md.dll: keys of the product's branch of the registry.
#pragma once

#include "outside/library_api.h"
#include "platform/system.h"

// `path` begins with a backslash and lies in a buffer of `cch` units; the product's branch is put
// in front of it there. The open key for the caller to close, null on failure, also when the whole
// path doesn't fit, which leaves the buffer as it was.
MD_API HKEY MDxOpenRegistryKey(HKEY root, WCHAR* path, DWORD cch);
MD_API HKEY MDxCreateRegistryKey(HKEY root, WCHAR* path, DWORD cch);
// Removes the subkey with all below it.
MD_API bool MDxDeleteRegistryKey(HKEY key, const WCHAR* name);

// The product's branch, without a backslash at either end.
MD_API const WCHAR* MDxRegistryBranch();
