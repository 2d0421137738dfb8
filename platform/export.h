// How a symbol leaves or enters a dynamic library.
#pragma once

#ifdef _WIN32
#define SR_DLL_EXPORT __declspec(dllexport)
#define SR_DLL_IMPORT __declspec(dllimport)
#else
#define SR_DLL_EXPORT __attribute__((visibility("default")))
#define SR_DLL_IMPORT
#endif
