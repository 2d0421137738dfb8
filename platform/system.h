// The part of the operating system's interface that knows no window: base types, text, files,
// registry, resources, COM. Headers for plain data include it in place of win.h, which has the
// windows too.
#pragma once

#ifdef _WIN32
#include "platform/win.h"
#else
#include "platform/base/types.h"
#include "platform/com/com_api.h"
#include "platform/com/dispatch_api.h"
#include "platform/files/files_api.h"
#include "platform/registry/registry_api.h"
#include "platform/resources/resources_api.h"
#include "platform/text/text_api.h"
#endif
