// The messages of the found dialog and its ends. The search runs inside a timer message, so that
// the pump of its progress text brings every other message in its middle: what would end the dialog
// then stops the search instead, and the record outlives the search.
#include "found/found_dialog.h"

#include <cassert>
#include <cstdlib>
#include <new>
#include <utility>

#include "found/found_rows.h"
#include "module/dialog_help.h"
#include "module/file_chain.h"
#include "module/message_kinds.h"
#include "outside/md_context_menu.h"
#include "outside/md_window_aids.h"
#include "platform/new_or_null.h"
#include "resource/control_ids.h"
#include "resource/string_ids.h"
#include "search/search.h"

namespace {

constexpr INT_PTR kPicked = 1;
constexpr INT_PTR kCancelled = 2;
constexpr UINT kFoundTimerMs = 10;

WText TextOfRow(const SRxFoundList& list, int row, int column) {
    constexpr std::size_t kLongest = 0x10000;
    for (std::size_t size = 512;; size *= 2) {
        WText text(size, 0);
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = row;
        item.iSubItem = column;
        item.pszText = text.data();
        item.cchTextMax = static_cast<int>(size);
        if (!SendToFoundList(list, LVM_GETITEMW, 0, &item)) return {};
        text = WText(item.pszText);
        // One that fills the buffer may have been cut.
        if (text.size() + 1 < size || size >= kLongest) return text;
    }
}

// False when there was no memory for it; `*chain` is null then.
bool BuildChain(const SRxFoundList& list, MDxFileNameNode** chain) {
    *chain = nullptr;
    MDxFileNameNode* last = nullptr;
    try {
        constexpr auto kNone = static_cast<LRESULT>(-1);
        for (LRESULT row = kNone;;) {
            row = SendDlgItemMessageW(list.window, IDC_FOUND_LIST, LVM_GETNEXTITEM,
                                      static_cast<WPARAM>(row), MAKELPARAM(LVNI_SELECTED, 0));
            if (row < 0) return true;
            const WText path = PathOfRow(list, static_cast<int>(row));
            auto* node = new MDxFileNameNode(path.c_str(), -1, list.dialog->InApp());
            node->AddRef();
            if (last == nullptr) {
                *chain = node;
            } else {
                last->SetNextNode(node);
            }
            last = node;
        }
    } catch (const std::bad_alloc&) {
        ReleaseChain(*chain);
        return false;
    }
}

// In mid-search the search has to end first.
void EndFoundDialog(SRxFoundList& list, INT_PTR result) {
    if (list.stage == eFoundStage::Searching) {
        list.run.stopRequested = true;
        list.pendingResult = static_cast<int>(result);
        return;
    }
    ReleaseRowStrings(list);
    if (list.timerId != 0) KillTimer(list.window, std::exchange(list.timerId, 0));
    if (list.dialog->IsModal()) {
        EndDialog(list.window, result);
    } else {
        DestroyWindow(list.window);
    }
}

void GiveUpSearch(SRxFoundList& list) {
    list.dialog->SearchComplete(false);
    list.dialog->TellIncomplete(list.window);
    list.run.stopRequested = true;  // the status bar shows it
    try {
        if (!list.windowGone) CloseFoundSearch(list);
    } catch (...) {
        // The texts stay as they were; the buttons are those of a finished search.
    }
    list.run.stopRequested = false;
}

// One search in the life of a dialog.
void RunSearchOnce(SRxFoundList& list) {
    if (list.stage != eFoundStage::Prepared || list.dialog->IsClosing()) return;
    list.stage = eFoundStage::Searching;
    try {
        RunSearch(list.run);
    } catch (...) {
        GiveUpSearch(list);
    }
    list.stage = eFoundStage::Finished;
    if (list.windowGone) {
        delete &list;
    } else if (list.pendingResult != 0) {
        EndFoundDialog(list, list.pendingResult);
    }
}

void ShowContextMenu(SRxFoundList& list) {
    const auto menu = NewOrNull<MDxContextMenu>();
    if (menu == nullptr) return;
    menu->Initialize();
    // The menu has its files also where no selection goes back.
    MDxFileNameNode* chain = nullptr;
    const bool gives = std::exchange(list.returnSelection, true);
    CollectSelection(list, &chain);
    list.returnSelection = gives;
    if (chain == nullptr) return;
    // The menu waits in a loop of its own, in which the dialog may go: the record isn't touched
    // behind it.
    const HWND window = list.window;
    if (chain->GetNextNode() != nullptr) {
        menu->DisplayContextMenu(chain, window, nullptr, 0, IDC_FOUND_LIST);
    } else {
        menu->DisplayExplorerMenu(chain, window);
    }
}

bool StartDialog(SRxFoundList& list, HWND window) {
    list.window = window;
    SetUpFoundList(list);
    list.timerId = SetTimer(window, kFoundTimer, kFoundTimerMs, nullptr);
    return list.timerId != 0;
}

void OnCommand(SRxFoundList& list, int id) {
    switch (id) {
        case IDOK:
            CollectSelection(list, nullptr);
            EndFoundDialog(list, kPicked);
            break;
        case IDCANCEL:
            if (list.stage == eFoundStage::Searching) {
                list.run.stopRequested = true;
            } else {
                EndFoundDialog(list, kCancelled);
            }
            break;
        case IDC_FOUND_SAVE:
            ExportResults(list);
            break;
        case IDC_FOUND_STOP:
            list.run.stopRequested = true;
            break;
        default:
            break;
    }
}

void OnListNotice(SRxFoundList& list, const NMHDR& notice) {
    switch (notice.code) {
        case LVN_COLUMNCLICK: {
            const auto column = reinterpret_cast<const NMLISTVIEW&>(notice).iSubItem;
            SendMessageW(notice.hwndFrom, LVM_SORTITEMS, static_cast<WPARAM>(column),
                         reinterpret_cast<LPARAM>(CompareRows));
            break;
        }
        case NM_DBLCLK:
            if (CollectSelection(list, nullptr) && list.dialog->IsModal()) {
                EndFoundDialog(list, kPicked);
            }
            break;
        case NM_RCLICK:
            if (!list.dialog->InApp()) ShowContextMenu(list);
            break;
        default:
            break;
    }
}

void OnDestroyed(SRxFoundList& list) {
    SRxFoundListOwner& dialog = *list.dialog;
    SetWindowLongPtrW(list.window, DWLP_USER, 0);
    ReleaseRowStrings(list);
    if (list.stage == eFoundStage::Searching) {
        list.windowGone = true;
        list.run.stopRequested = true;
        return;
    }
    // Closed before its search began: the find dialog waits for the end of it.
    if (list.stage == eFoundStage::Prepared) dialog.SearchComplete(false);
    delete &list;
}

// The messages that need the record.
void ReceiveWithRecord(SRxFoundList& list, UINT message, WPARAM wParam, LPARAM lParam) {
    const SRxOwnerWork working(*list.dialog);
    switch (message) {
        case WM_TIMER:
            KillTimer(list.window, list.timerId);
            if (wParam == kFoundTimer) RunSearchOnce(list);
            break;
        case WM_COMMAND:
            OnCommand(list, LOWORD(wParam));
            break;
        case WM_NOTIFY: {
            const auto& notice = *reinterpret_cast<const NMHDR*>(lParam);
            if (notice.idFrom == IDC_FOUND_LIST) OnListNotice(list, notice);
            break;
        }
        case WM_SIZE:
            // What is minimized has no size worth keeping.
            if (wParam == SIZE_MINIMIZED) break;
            LayOutFoundDialog(list, LOWORD(static_cast<ULONG_PTR>(lParam)),
                              HIWORD(static_cast<ULONG_PTR>(lParam)));
            break;
        case WM_DESTROY:
            OnDestroyed(list);
            break;
        default:
            break;
    }
}

// Null once the record has gone.
SRxFoundList* ListOf(HWND window) {
    return reinterpret_cast<SRxFoundList*>(GetWindowLongPtrW(window, DWLP_USER));
}

// A dialog that isn't set up whole, or has no timer, would never search.
void GiveUp(HWND window) {
    if (const SRxFoundList* list = ListOf(window)) list->dialog->TellOutOfMemory(window);
    PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
}

INT_PTR Receive(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    SRxFoundList* const list = ListOf(window);
    switch (message) {
        case WM_INITDIALOG:
            SetWindowLongPtrW(window, DWLP_USER, lParam);
            MDxSubstituteShellFont(window);
            SetWindowContextHelpId(window, IDD_SR_FINDLIST);
            if (lParam == 0) return TRUE;
            if (!StartDialog(*reinterpret_cast<SRxFoundList*>(lParam), window)) GiveUp(window);
            return FALSE;  // the focus is set
        case WM_TIMER:
        case WM_COMMAND:
        case WM_NOTIFY:
        case WM_SIZE:
        case WM_DESTROY:
            if (list != nullptr) ReceiveWithRecord(*list, message, wParam, lParam);
            return TRUE;
        case WM_SYSCOLORCHANGE:
            for (const int control : {IDC_FOUND_LIST, IDC_FOUND_STATUS})
                SendDlgItemMessageW(window, control, message, wParam, lParam);
            return TRUE;
        case WM_CONTEXTMENU:
            // A right click on the rows has a menu of its own.
            if (GetDlgCtrlID(reinterpret_cast<HWND>(wParam)) == IDC_FOUND_LIST) return TRUE;
            [[fallthrough]];
        default:
            return AnswerHelpMessage(message, wParam, lParam) ? TRUE : FALSE;
    }
}

}  // namespace

int CountRows(const SRxFoundList& list) {
    return static_cast<int>(SendToFoundList(list, LVM_GETITEMCOUNT));
}

WText PathOfRow(const SRxFoundList& list, int row) {
    return TextOfRow(list, row, 1) + TextOfRow(list, row, 0);
}

bool CollectSelection(SRxFoundList& list, MDxFileNameNode** out) {
    if (!list.returnSelection) return false;
    if (out == nullptr) ReleaseChain(*list.selectionSlot);
    if (list.window == nullptr || CountRows(list) < 1) return false;
    MDxFileNameNode* chain = nullptr;
    const bool complete = BuildChain(list, &chain);
    if (chain != nullptr || !complete) *(out != nullptr ? out : list.selectionSlot) = chain;
    if (!complete) list.dialog->TellOutOfMemory(list.window);
    return chain != nullptr;
}

void AbandonSearch(SRxFoundList& list, bool letGo) {
    list.run.stopRequested = true;
    if (letGo && list.returnSelection) {
        list.returnSelection = false;
        list.selectionSlot = &list.ownSelection;
    }
    if (list.window == nullptr || list.windowGone) return;
    ShowWindow(list.window, SW_HIDE);
    if (list.stage == eFoundStage::Searching) {
        list.pendingResult = kCancelled;
    } else if (list.dialog->IsModal()) {
        EndDialog(list.window, kCancelled);
    }
}

void EndSearch(SRxFoundList& list) {
    assert(list.stage != eFoundStage::Searching);
    SRxFoundListOwner& dialog = *list.dialog;
    SRxFoundList* const record = &list;
    if (list.window != nullptr) DestroyWindow(list.window);
    // The record goes with the window; one without is its maker's.
    dialog.Leave(record);
}

bool ReleaseRowStrings(SRxFoundList& list) {
    list.rowIndex = {};
    const int count = CountRows(list);
    for (int row = 0; row < count; ++row) {
        LVITEMW item{};
        item.mask = LVIF_PARAM;
        item.iItem = row;
        if (SendToFoundList(list, LVM_GETITEMW, 0, &item)) {
            std::free(reinterpret_cast<WCHAR*>(item.lParam));
        }
    }
    // A row without its name can't be sorted any more.
    SendToFoundList(list, LVM_DELETEALLITEMS);
    return true;
}

INT_PTR CALLBACK FoundDlgProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    try {
        return Receive(window, message, wParam, lParam);
    } catch (...) {
        if (message == WM_INITDIALOG) {
            GiveUp(window);
        } else if (const SRxFoundList* list = ListOf(window)) {
            list->dialog->TellOutOfMemory(window);
        }
        return FALSE;
    }
}
