#include "found/found_rows.h"

#include <cstdlib>
#include <new>
#include <utility>

#include "module/message_kinds.h"
#include "outside/md_messages.h"
#include "outside/md_small_aids.h"
#include "outside/md_window_aids.h"
#include "platform/resource_text.h"
#include "resource/control_ids.h"
#include "resource/string_ids.h"

namespace {

constexpr unsigned kTextsBetweenPumps = 10;
constexpr int kFoundColumns = 2;
constexpr WPARAM kWholeStatusBar = SBT_NOBORDERS;  // part 0

WText TextOf(const SRxFoundList& list, UINT id) {
    return ResourceText(list.dialog->Resources(), id);
}

void SetStatus(const SRxFoundList& list, const WText& text) {
    SendMessageW(list.statusBar, SB_SETTEXTW, kWholeStatusBar,
                 reinterpret_cast<LPARAM>(text.c_str()));
}

// A list that paints itself anew with each row would take most of the search's time.
void HoldRedraw(SRxFoundList& list, bool hold) {
    SendToFoundList(list, WM_SETREDRAW, hold ? FALSE : TRUE);
    if (hold || !std::exchange(list.rowsUnseen, false)) return;
    InvalidateRect(GetDlgItem(list.window, IDC_FOUND_LIST), nullptr, TRUE);
}

// At once, and not with the next pump.
void ShowFirstRow(SRxFoundList& list) {
    HoldRedraw(list, false);
    UpdateWindow(GetDlgItem(list.window, IDC_FOUND_LIST));
    HoldRedraw(list, true);
}

// Hands every waiting message out. Escape asks for a stop, and so does the end of the thread's
// loop, which is asked for again when the search is over.
void PumpMessages(SRxFoundList& list) {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            list.run.stopRequested = true;
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
        if (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE)
            list.run.stopRequested = true;
    }
}

}  // namespace

LRESULT SendToFoundList(const SRxFoundList& list, UINT message, WPARAM wParam, const void* lParam) {
    return SendDlgItemMessageW(list.window, IDC_FOUND_LIST, message, wParam,
                               reinterpret_cast<LPARAM>(lParam));
}

void ShowSearchedPath(const SRxFoundList& list, const WCHAR* path) {
    SetStatus(list, wtext::Format(TextOf(list, STR_SEARCHING_IN), {path}));
}

void SRxFoundRowsSink::Begin(SRxSearchRun&) {
    earlierCursor_ = SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    // The list is painted only between whiles, until the search is closed.
    HoldRedraw(list_, true);
}

bool SRxFoundRowsSink::End(SRxSearchRun& run, bool result) {
    if (!list_.windowGone) CloseFoundSearch(list_);
    SetCursor(earlierCursor_);
    run.stopRequested = false;
    if (!list_.windowGone) {
        RedrawWindow(list_.window, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_INTERNALPAINT | RDW_UPDATENOW);
    }
    return list_.dialog->SearchComplete(result);
}

bool SRxFoundRowsSink::OnProgress(SRxSearchRun&, const WCHAR* path) {
    constexpr UINT kPaintNow = RDW_INTERNALPAINT | RDW_UPDATENOW;
    // The text of a folder stays the same for all its files.
    if (list_.shownPath != path) {
        list_.shownPath = path;
        ShowSearchedPath(list_, path);
        RedrawWindow(list_.statusBar, nullptr, nullptr, kPaintNow);
    }
    if (++list_.pumpCounter <= kTextsBetweenPumps) return false;
    HoldRedraw(list_, false);
    RedrawWindow(list_.window, nullptr, nullptr, kPaintNow);
    list_.pumpCounter = 0;
    PumpMessages(list_);
    HoldRedraw(list_, true);
    return true;
}

void SRxFoundRowsSink::OnFolderFailed(const WCHAR* folder) {
    if (list_.dialog->IsClosing()) return;  // nobody waits for this search any more
    DisplayMessageFileName(list_.dialog->Resources(), folder, MSG_PATH_NOT_FOUND, kHelpFind,
                           list_.window, MB_OK);
}

void SRxFoundRowsSink::OnFileInUse(const WCHAR* file) {
    if (list_.dialog->IsClosing()) return;
    DisplayMessageFileName(list_.dialog->Resources(), file, MSG_FILE_LOCKED, kHelpFoundList,
                           list_.window, MB_OK);
}

void SRxFoundRowsSink::OnFileFailed(SRxSearchRun& run, const WCHAR* file, HRESULT) {
    if (list_.dialog->IsClosing() || run.failureMessageShown) return;
    DisplayMessageFileName(list_.dialog->Resources(), file, MSG_FILE_FAILED, kHelpFoundList,
                           list_.window, MB_OK);
    run.failureMessageShown = true;
}

void SRxFoundRowsSink::OnHit(SRxSearchRun&, const WCHAR* folder, const WCHAR* name,
                             MDxFileNameNode& node, int& insertIndex) {
    SRxFoundList& list = list_;
    if (list.windowGone) return;
    // One row for a name in a folder, whatever the case of letters and the width of characters.
    const WCHAR** shown = list.rowIndex.PlaceOf(folder, name);
    if (*shown != nullptr) return;
    // The row owns the copy.
    WCHAR* fullName = nullptr;
    SetStringPtr(&fullName, node.GetFileName());
    if (fullName == nullptr) throw std::bad_alloc();
    LVITEMW item{};
    item.mask = LVIF_TEXT | LVIF_PARAM;
    item.iItem = insertIndex;
    item.pszText = const_cast<WCHAR*>(name);
    item.lParam = reinterpret_cast<LPARAM>(fullName);
    const LRESULT row = SendToFoundList(list, LVM_INSERTITEMW, 0, &item);
    if (row < 0) {
        std::free(fullName);
        throw std::bad_alloc();
    }
    *shown = fullName;
    LVITEMW folderItem{};
    folderItem.iSubItem = 1;
    folderItem.pszText = const_cast<WCHAR*>(folder);
    SendToFoundList(list, LVM_SETITEMTEXTW, static_cast<WPARAM>(row), &folderItem);
    insertIndex = static_cast<int>(row) + 1;
    list.rowsUnseen = true;
    if (insertIndex == 1) ShowFirstRow(list);
}

void CloseFoundSearch(SRxFoundList& list) {
    HoldRedraw(list, false);
    EnableWindow(GetDlgItem(list.window, IDC_FOUND_STOP), FALSE);
    EnableWindow(GetDlgItem(list.window, IDOK), TRUE);
    SendMessageW(list.window, DM_SETDEFID, IDOK, 0);
    SetFocus(GetDlgItem(list.window, IDOK));
    EnableWindow(GetDlgItem(list.window, IDC_FOUND_SAVE), TRUE);
    // The texts come last: for them alone memory is needed.
    const LRESULT count = SendToFoundList(list, LVM_GETITEMCOUNT);
    WText head;
    WText tail;
    if (count < 1) {
        head = TextOf(list, STR_NOTHING_FOUND);
    } else {
        tail = wtext::Format(TextOf(list, STR_FILES_FOUND), {wtext::FromNumber(count)});
    }
    if (list.run.stopRequested) head = TextOf(list, STR_STOPPED);
    SetListWidth(list.window, IDC_FOUND_LIST, kFoundColumns);
    SetStatus(list, head + tail);
}
