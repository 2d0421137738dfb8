// An open key of the registry that closes with its scope, also where memory runs out.
#pragma once

#include "outside/blx_registry.h"
#include "platform/owner.h"

using RegistryKeyOwner = Owner<HKEY, &BLxPref_Reg::CloseKey>;
