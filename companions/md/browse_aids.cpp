// What the dialog for a file of a library shows, and where.
#include <algorithm>

#include "outside/md_window_aids.h"
#include "platform/wtext.h"

namespace {

// A name and a pattern each; the patterns of a search's own file types come first.
constexpr const WCHAR* kFilters[] = {
    TEXT("Design documents"), TEXT("*.hpa;*.hsb;*.hdg;*.hpr;*.hdx;*.cvd;*.cvp;*.cvw"),
    TEXT("Assemblies"),       TEXT("*.hsb"),
    TEXT("Drawings"),         TEXT("*.hdg;*.cvd"),
    TEXT("All files"),        TEXT("*.*"),
};

void MoveToMiddle(HWND dialog, HWND owner) {
    RECT around{};
    RECT own{};
    if (!GetWindowRect(owner, &around) || !GetWindowRect(dialog, &own)) return;
    const LONG x = (around.left + around.right - (own.right - own.left)) / 2;
    const LONG y = (around.top + around.bottom - (own.bottom - own.top)) / 2;
    SetWindowPos(dialog, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    MDxCalcSizeDialog(dialog, true);
}

}  // namespace

void GetDataFileFilter(WCHAR* buffer, DWORD cch) {
    WText filter;
    for (const WCHAR* text : kFilters) {
        filter += text;
        filter += static_cast<WCHAR>(0);
    }
    filter += static_cast<WCHAR>(0);
    if (filter.size() <= cch) {
        std::copy(filter.begin(), filter.end(), buffer);
    } else {
        std::fill_n(buffer, std::min<DWORD>(cch, 2), static_cast<WCHAR>(0));
    }
}

UINT_PTR CALLBACK BrowseFileCallbackProc(HWND hook, UINT message, WPARAM, LPARAM lParam) {
    if (message != WM_NOTIFY) return 0;
    const auto& notice = *reinterpret_cast<const OFNOTIFYW*>(lParam);
    // The hook's window lies inside the dialog.
    if (notice.hdr.code == CDN_INITDONE && notice.lpOFN->hwndOwner != nullptr) {
        MoveToMiddle(GetParent(hook), notice.lpOFN->hwndOwner);
    }
    return 0;
}
