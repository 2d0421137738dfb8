#include "platform/live_windows.h"

#include "platform/win.h"

int CountLiveWindows() {
    int count = 0;
    const auto child = [](HWND, LPARAM total) -> BOOL {
        ++*reinterpret_cast<int*>(total);
        return TRUE;
    };
    static WNDENUMPROC countOne = child;
    const auto topLevel = [](HWND window, LPARAM total) -> BOOL {
        countOne(window, total);
        EnumChildWindows(window, countOne, total);
        return TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), topLevel, reinterpret_cast<LPARAM>(&count));
    return count;
}
