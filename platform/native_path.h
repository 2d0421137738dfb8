// A path as the operating system takes it: UTF-16 text in the Windows build, bytes natively.
#pragma once

#include <string>

#include "platform/wtext.h"

#ifdef _WIN32
using NativePath = WText;
#else
using NativePath = std::string;
#endif
