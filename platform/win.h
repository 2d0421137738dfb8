// The one door to the operating system's interface. The Windows build gets the SDK headers, the
// native build gets declarations of the same names from the folders beside this file. Only names
// with a W suffix and only what the product calls exist on both sides.
#pragma once

#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef UNICODE
#define UNICODE
#endif
#ifndef _UNICODE
#define _UNICODE
#endif
#include <windows.h>
// Behind windows.h, which they need.
#include <cderr.h>
#include <commctrl.h>
#include <commdlg.h>
#include <objbase.h>
#include <oleauto.h>
#include <shellapi.h>
#include <shlobj.h>
#include <shlwapi.h>
#else
#include "platform/com/shell_api.h"
#include "platform/system.h"
#include "platform/windows/common_controls_api.h"
#include "platform/windows/common_dialogs_api.h"
#include "platform/windows/controls_api.h"
#include "platform/windows/windows_api.h"
#endif
