// The system's registry as the BLx interface needs it: on Windows its calls, natively a text file
// of the user. Each call returns ERROR_SUCCESS or the error.
#pragma once

#include <vector>

#include "outside/blx_registry.h"
#include "platform/wtext.h"

namespace registry_calls {

// `*key` is null on failure.
DWORD OpenKey(HKEY root, const WCHAR* path, REGSAM access, HKEY* key);
DWORD CreateKey(HKEY root, const WCHAR* path, HKEY* key);
DWORD CloseKey(HKEY key);
// `data` may be null, for the type and the size alone. ERROR_MORE_DATA reports them as well. A
// stored text has its terminator.
DWORD ReadValue(HKEY key, const WCHAR* name, DWORD* type, void* data, DWORD* cb);
DWORD WriteValue(HKEY key, const WCHAR* name, DWORD type, const void* data, DWORD cb);
DWORD DeleteValue(HKEY key, const WCHAR* name);
// Refuses a key with subkeys.
DWORD DeleteKey(HKEY root, const WCHAR* path);
DWORD DeleteTree(HKEY root, const WCHAR* path);
// In no particular order; none if the key can't be read.
std::vector<WText> SubkeyNames(HKEY key);

}  // namespace registry_calls
