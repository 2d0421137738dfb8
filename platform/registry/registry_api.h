// Native build: what the BLx interface of the registry (outside/blx_registry.h) is declared with.
// The calls of Windows don't exist here; the keys lie in one text file of the user
// (registry_file.h).
#pragma once

#include "platform/base/types.h"

using REGSAM = DWORD;
// The only root.
inline HKEY const HKEY_CURRENT_USER = reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0x80000001u));
inline constexpr REGSAM KEY_READ = 0x00020019;
inline constexpr REGSAM KEY_ALL_ACCESS = 0x000F003F;
inline constexpr DWORD REG_NONE = 0;
inline constexpr DWORD REG_SZ = 1;
inline constexpr DWORD REG_BINARY = 3;
inline constexpr DWORD REG_DWORD = 4;
