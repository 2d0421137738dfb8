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

HWND ShownDialogWith(int control) {
    struct Search {
        int control;
        HWND found;
    } search = {control, nullptr};
    const auto look = [](HWND window, LPARAM parameter) -> BOOL {
        auto& wanted = *reinterpret_cast<Search*>(parameter);
        if (!IsWindowVisible(window) || GetDlgItem(window, wanted.control) == nullptr) return TRUE;
        wanted.found = window;
        return FALSE;
    };
    EnumThreadWindows(GetCurrentThreadId(), look, reinterpret_cast<LPARAM>(&search));
    return search.found;
}
