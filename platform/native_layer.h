// Which of the two builds this is: for tests that mark a known difference, and for programs whose
// user has to know.
#pragma once

// True where the native layer answers the calls of platform/win.h.
constexpr bool IsNativeLayer() {
#ifdef _WIN32
    return false;
#else
    return true;
#endif
}
