// The window of the find dialog: how it is made, which message goes to which handler, and the hook
// that gives a modeless dialog its keys on a message loop that isn't its own.
#include <new>
#include <vector>

#include "dialog/dialog_messages.h"
#include "found/found_list.h"
#include "module/dialog_help.h"
#include "outside/md_window_aids.h"
#include "platform/processes.h"
#include "store/saved_search.h"

HWND modelessDialog = nullptr;
HHOOK keyboardHook = nullptr;

namespace {

constexpr UINT kSwallowedMessage = 874;  // nobody handles it

// The find dialogs that are open, the latest last. They share the hook.
std::vector<HWND> openWindows;

// Null once the dialog has ended.
SRxFindDialog* DialogOf(HWND window) {
    return reinterpret_cast<SRxFindDialog*>(GetWindowLongPtrW(window, DWLP_USER));
}

bool TakesKey(HWND window, MSG& message) {
    return window != nullptr && IsDialogMessageW(window, &message);
}

// A key belongs to the dialog that its window lies in. Modeless found dialogs have no message loop
// of their own either. A key that is taken may have ended dialogs, so nothing is looked at behind
// it.
bool IsKeyOfOpenDialog(MSG& message) {
    for (const HWND window : openWindows) {
        const SRxFindDialog* dialog = DialogOf(window);
        if (dialog == nullptr || dialog->IsModal()) continue;
        if (TakesKey(window, message)) return true;
        for (const SRxFoundList* list : dialog->searches) {
            if (TakesKey(list->window, message)) return true;
        }
    }
    return false;
}

LRESULT CALLBACK KeyboardHook(int code, WPARAM wParam, LPARAM lParam) try {
    if (code >= 0 && wParam == PM_REMOVE) {
        MSG& message = *reinterpret_cast<MSG*>(lParam);
        const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
        if (isKey && IsKeyOfOpenDialog(message)) {
            // The host's loop gets an empty message in the place of the key.
            message.message = kSwallowedMessage;
            message.wParam = 0;
            message.lParam = 0;
        }
    }
    return CallNextHookEx(keyboardHook, code, wParam, lParam);
} catch (...) {
    // The host's loop is not ours to end: the key goes where it would have gone.
    return CallNextHookEx(keyboardHook, code, wParam, lParam);
}

void EnterOpenWindows(HWND window) {
    openWindows.push_back(window);
    if (keyboardHook != nullptr) return;
    keyboardHook = SetWindowsHookExW(WH_GETMESSAGE, KeyboardHook, nullptr, GetCurrentThreadId());
}

void LeaveOpenWindows(HWND window) {
    std::erase(openWindows, window);
    if (openWindows.empty() && keyboardHook != nullptr) {
        UnhookWindowsHookEx(keyboardHook);
        keyboardHook = nullptr;
    }
    if (modelessDialog != window) return;
    modelessDialog = nullptr;
    for (const HWND open : openWindows) {
        const SRxFindDialog* dialog = DialogOf(open);
        if (dialog != nullptr && !dialog->IsModal()) modelessDialog = open;
    }
}

LONG RunModal(SRxFindDialog& dialog, HWND parent, const bool& ended) {
    (void)DialogBoxParamW(dialog.resourceInstance, MAKEINTRESOURCEW(IDD_MDFIND), parent,
                          FindDlgProc, reinterpret_cast<LPARAM>(&dialog));
    // Not by the result: it is 0 also where the parent is no window, and -1 also where the window
    // went with its owner.
    constexpr LONG kNoWindow = -1;
    return ended ? 0 : kNoWindow;
}

LONG RunModeless(SRxFindDialog& dialog, HWND parent) {
    constexpr LONG kNoWindow = 1;
    // An end that comes while the dialog opens waits for the window.
    const SRxDialogWork opening(dialog.life);
    const HWND window = CreateDialogParamW(dialog.resourceInstance, MAKEINTRESOURCEW(IDD_MDFIND),
                                           parent, FindDlgProc, reinterpret_cast<LPARAM>(&dialog));
    if (window == nullptr) return dialog.life.IsClosing() ? 0 : kNoWindow;
    modelessDialog = window;
    if (!dialog.life.IsClosing()) ShowWindow(window, SW_SHOW);
    return 0;
}

void OnInitDialog(SRxFindDialog& dialog) {
    const SRxDialogWork working(dialog.life);
    dialog.InitDialogControls();
    SayFinishedSaves(dialog, FinishCutSaves());
    dialog.OnCommandOpenSearch(true);
}

void OnOkCommand(SRxFindDialog& dialog) {
    SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    if (dialog.inApp) dialog.NotifyOnOK();
    const bool result = !dialog.life.IsClosing() && dialog.OnCommandSearchNow();
    // A criterion still waits after Cancel alone: nothing was searched then.
    if (dialog.inApp && result && !dialog.pendingCriterion) dialog.NotifyOnFindDone();
    SetCursor(LoadCursorW(nullptr, IDC_ARROW));
}

void OnCancelCommand(SRxFindDialog& dialog) {
    {
        const SRxDialogWork working(dialog.life);
        try {
            constexpr DWORD kMostWait = 1000;  // ms; nobody waits long for a window to close
            const LockWait wait(kMostWait);
            dialog.DeleteLastSearches();
            dialog.OnCommandSaveSearch(true);
        } catch (...) {
            // Closing frees memory; it goes on.
            SayOutOfMemory(dialog, dialog.dialogWindow);
        }
        // Closed in the middle of it: the object goes with the last one at work.
        if (dialog.life.IsClosing()) return;
    }
    dialog.CloseDialog(true);
}

void OnPropertyNotice(SRxFindDialog& dialog, WPARAM wParam) {
    const int code = HIWORD(wParam);
    if (code == CBN_KILLFOCUS) {
        dialog.OnCommandPropertyListKillFocus();
    } else if ((code == CBN_SELCHANGE || code == CBN_EDITCHANGE) && !dialog.updatingControls) {
        dialog.OnCommandPropertyList(wParam);
    }
}

void OnCommand(SRxFindDialog& dialog, WPARAM wParam) {
    const int control = LOWORD(wParam);
    const int code = HIWORD(wParam);
    if (dialog.searching || dialog.life.IsClosing()) return;
    if (control == IDCANCEL) {
        OnCancelCommand(dialog);
        return;
    }
    const SRxDialogWork working(dialog.life);
    const bool quiet = dialog.updatingControls;
    switch (control) {
        case IDOK:
            OnOkCommand(dialog);
            break;
        case IDHELP:
            ShowDialogHelp(dialog.dialogWindow, IDD_MDFIND);
            break;
        case IDC_ADD:
            dialog.OnCommandAdd();
            break;
        case IDC_BROWSE:
            dialog.OnCommandBrowse();
            break;
        case IDC_CONDITION_LIST:
            if (code == CBN_SELCHANGE && !quiet) dialog.OnCommandConditionList();
            break;
        case IDC_CRITERIA_LIST:
            if (code == LBN_SELCHANGE) dialog.OnCommandCriterList();
            break;
        case IDC_LOOK_FOLDER:
        case IDC_LOOK_SUBFOLDERS:
            if (code == BN_CLICKED && !dialog.lookInFolders) dialog.OnCommandFolder();
            break;
        case IDC_LOOK_RELATED:
            if (code == BN_CLICKED && dialog.lookInFolders) dialog.OnCommandRelatedDocs();
            break;
        case IDC_DELETE:
            dialog.OnCommandDelete();
            break;
        case IDC_VALUE_LIST:
            if (code == CBN_SELCHANGE && !quiet) dialog.OnCommandValueList();
            break;
        case IDC_LOOK_FOR:
            if (code != CBN_SELCHANGE) break;
            dialog.SetLookForType();
            dialog.OnCommandNewSearch();
            dialog.InitProperties();
            break;
        case IDC_NEW_SEARCH:
            dialog.OnCommandNewSearch();
            break;
        case IDC_OPEN_SEARCH:
            dialog.OnCommandOpenSearch(false);
            break;
        case IDC_SAVE_SEARCH:
            dialog.OnCommandSaveSearch(false);
            break;
        case IDC_PATH_LIST:
            if (code == CBN_KILLFOCUS) dialog.OnCommandPathKillFocus();
            break;
        case IDC_PROPERTY_LIST:
            OnPropertyNotice(dialog, wParam);
            break;
        case IDC_VALUE_EDIT:
            if ((code == EN_CHANGE || code == EN_UPDATE) && !quiet) dialog.OnCommandValueEdit();
            break;
        default:
            break;
    }
}

INT_PTR Receive(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    SRxFindDialog* const dialog = DialogOf(window);
    switch (message) {
        case WM_INITDIALOG:
            // First, since a dialog that fails behind it has to be closed by its object.
            SetWindowLongPtrW(window, DWLP_USER, lParam);
            if (lParam != 0) reinterpret_cast<SRxFindDialog*>(lParam)->dialogWindow = window;
            EnterOpenWindows(window);
            MDxSubstituteShellFont(window);
            SetWindowContextHelpId(window, IDD_MDFIND);
            if (lParam != 0) OnInitDialog(*reinterpret_cast<SRxFindDialog*>(lParam));
            return TRUE;
        case WM_COMMAND:
            if (dialog != nullptr) OnCommand(*dialog, wParam);
            return TRUE;
        case WM_NOTIFY: {
            const auto* notice = reinterpret_cast<const NMHDR*>(lParam);
            if (dialog != nullptr && notice->code == DTN_DATETIMECHANGE &&
                notice->idFrom == IDC_VALUE_DATE) {
                dialog->OnNotifyValueDate(reinterpret_cast<const NMDATETIMECHANGE*>(notice));
            }
            return TRUE;
        }
        case WM_SYSCOLORCHANGE:
            SendDlgItemMessageW(window, IDC_VALUE_DATE, message, wParam, lParam);
            return TRUE;
        case WM_DESTROY:
            LeaveOpenWindows(window);
            if (dialog != nullptr) dialog->life.OnWindowDestroyed();
            return FALSE;
        default:
            return AnswerHelpMessage(message, wParam, lParam) ? TRUE : FALSE;
    }
}

}  // namespace

LONG SRxFindDialog::InvokeCommand(HWND parent) {
    bool ended = false;
    life.TellWhenGone(&ended);
    const LONG result = modal ? RunModal(*this, parent, ended) : RunModeless(*this, parent);
    if (!ended) life.TellWhenGone(nullptr);
    return result;
}

INT_PTR CALLBACK FindDlgProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    try {
        return Receive(window, message, wParam, lParam);
    } catch (...) {
        // The object lives as long as its window knows it.
        if (const SRxFindDialog* dialog = DialogOf(window)) SayOutOfMemory(*dialog, window);
        return TRUE;
    }
}
