#pragma once

#include "tests/unit/module_entries.h"

// Null when it can't be loaded.
HMODULE LoadModule();
