#include "search/found_rows.h"

#include <algorithm>
#include <cstdlib>

#include "outside/md_small_aids.h"
#include "outside/md_window_aids.h"
#include "platform/resource_text.h"
#include "resource/control_ids.h"
#include "search/search.h"
#include "search/search_observer.h"

namespace {

constexpr unsigned kTextsBetweenPumps = 10;
constexpr int kFoundColumns = 2;
constexpr WPARAM kWholeStatusBar = SBT_NOBORDERS;  // part 0
constexpr std::size_t kShownFolder = 261;          // units that a row's folder is read with

WText TextOf(const SRxFoundList& list, UINT id) {
    return ResourceText(list.dialog->resourceInstance, id);
}

void SetStatus(const SRxFoundList& list, const WText& text) {
    SendMessageW(list.statusBar, SB_SETTEXTW, kWholeStatusBar,
                 reinterpret_cast<LPARAM>(text.c_str()));
}

LRESULT SendToList(const SRxFoundList& list, UINT message, WPARAM wParam, const void* lParam) {
    return SendDlgItemMessageW(list.window, IDC_FOUND_LIST, message, wParam,
                               reinterpret_cast<LPARAM>(lParam));
}

bool IsFolderOfRow(const SRxFoundList& list, LRESULT row, WTextView folder) {
    // Twice the folder's own length: another form of the same text fits, and a text that is cut
    // can't be equal.
    WText text(std::max(kShownFolder, 2 * folder.size() + 2), 0);
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = static_cast<int>(row);
    item.iSubItem = 1;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    if (!SendToList(list, LVM_GETITEMW, 0, &item)) return false;
    return CompareStringW(LOCALE_USER_DEFAULT,
                          NORM_IGNORECASE | NORM_IGNOREKANATYPE | NORM_IGNOREWIDTH, item.pszText,
                          -1, folder.data(), static_cast<int>(folder.size())) == CSTR_EQUAL;
}

// The row of this name and folder; negative when there is none.
LRESULT FindRow(const SRxFoundList& list, const WCHAR* folder, const WCHAR* name) {
    LVFINDINFOW wanted{};
    wanted.flags = LVFI_STRING;
    wanted.psz = name;
    for (LRESULT row = -1;;) {
        row = SendToList(list, LVM_FINDITEMW, static_cast<WPARAM>(row), &wanted);
        if (row < 0 || IsFolderOfRow(list, row, folder)) return row;
    }
}

// Where letters' case tells files apart, a row can stand for another file than the one at hand.
void TellLeftOut(const SRxFoundList& list, LRESULT row, const WCHAR* fullName) {
    LVITEMW item{};
    item.mask = LVIF_PARAM;
    item.iItem = static_cast<int>(row);
    if (list.dialog->observer == nullptr || !SendToList(list, LVM_GETITEMW, 0, &item)) return;
    const auto* shown = reinterpret_cast<const WCHAR*>(item.lParam);
    if (shown != nullptr && wtext::Compare(shown, fullName) != 0) {
        list.dialog->observer->OnLeftOut(fullName, shown);
    }
}

// Hands every waiting message out. Escape asks for a stop, and so does the end of the thread's
// loop, which is asked for again when the search is over.
void PumpMessages(SRxFoundList& list) {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            list.stopRequested = true;
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
        if (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE) list.stopRequested = true;
    }
}

}  // namespace

bool ShowProgress(SRxFoundList& list, const WCHAR* path) {
    constexpr UINT kPaintNow = RDW_INTERNALPAINT | RDW_UPDATENOW;
    if (list.statusBar == nullptr) return !list.stopRequested;
    SetStatus(list, wtext::Format(TextOf(list, STR_SEARCHING_IN), {path}));
    RedrawWindow(list.statusBar, nullptr, nullptr, kPaintNow);
    if (++list.pumpCounter > kTextsBetweenPumps) {
        RedrawWindow(list.window, nullptr, nullptr, kPaintNow);
        list.pumpCounter = 0;
        PumpMessages(list);
    }
    return !list.stopRequested;
}

void AddFoundRow(SRxFoundList& list, const WCHAR* folder, const WCHAR* name,
                 const MDxFileNameNode& node, int& insertIndex) {
    const LRESULT same = FindRow(list, folder, name);
    if (same >= 0) {
        TellLeftOut(list, same, node.GetFileName());
        return;
    }
    // The row owns the copy.
    WCHAR* fullName = nullptr;
    SetStringPtr(&fullName, node.GetFileName());
    LVITEMW item{};
    item.mask = LVIF_TEXT | LVIF_PARAM;
    item.iItem = insertIndex;
    item.pszText = const_cast<WCHAR*>(name);
    item.lParam = reinterpret_cast<LPARAM>(fullName);
    const LRESULT row = SendToList(list, LVM_INSERTITEMW, 0, &item);
    if (row < 0) {
        std::free(fullName);
        return;
    }
    LVITEMW folderItem{};
    folderItem.iSubItem = 1;
    folderItem.pszText = const_cast<WCHAR*>(folder);
    SendToList(list, LVM_SETITEMTEXTW, static_cast<WPARAM>(row), &folderItem);
    insertIndex = static_cast<int>(row) + 1;
}

void CloseFoundSearch(SRxFoundList& list) {
    const LRESULT count = SendToList(list, LVM_GETITEMCOUNT, 0, nullptr);
    WText head;
    WText tail;
    if (count < 1) {
        head = TextOf(list, STR_NOTHING_FOUND);
    } else {
        tail = wtext::Format(TextOf(list, STR_FILES_FOUND), {wtext::FromNumber(count)});
    }
    if (list.stopRequested) head = TextOf(list, STR_STOPPED);
    SetListWidth(list.window, IDC_FOUND_LIST, kFoundColumns);
    SetStatus(list, head + tail);
    EnableWindow(GetDlgItem(list.window, IDC_FOUND_STOP), FALSE);
    EnableWindow(GetDlgItem(list.window, IDOK), TRUE);
    SendMessageW(list.window, DM_SETDEFID, IDOK, 0);
    SetFocus(GetDlgItem(list.window, IDOK));
    EnableWindow(GetDlgItem(list.window, IDC_FOUND_SAVE), TRUE);
}
