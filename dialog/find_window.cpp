// The window of the find dialog: how it is made, which message goes to which handler, and the hook
// that gives a modeless dialog its keys on a message loop that isn't its own.
#include <new>
#include <vector>

#include "dialog/find_dialog.h"
#include "found/found_list.h"
#include "module/dialog_help.h"
#include "outside/md_window_aids.h"
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

LRESULT CALLBACK KeyboardHook(int code, WPARAM wParam, LPARAM lParam) {
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

INT_PTR Receive(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    SRxFindDialog* const dialog = DialogOf(window);
    switch (message) {
        case WM_INITDIALOG:
            EnterOpenWindows(window);
            SetWindowLongPtrW(window, DWLP_USER, lParam);
            MDxSubstituteShellFont(window);
            SetWindowContextHelpId(window, IDD_MDFIND);
            if (lParam != 0) reinterpret_cast<SRxFindDialog*>(lParam)->OnInitDialog(window);
            return TRUE;
        case WM_COMMAND:
            if (dialog != nullptr) dialog->OnCommand(wParam);
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
            if (dialog != nullptr) dialog->OnWindowDestroyed();
            return FALSE;
        default:
            return AnswerHelpMessage(message, wParam, lParam) ? TRUE : FALSE;
    }
}

}  // namespace

LONG SRxFindDialog::InvokeCommand(HWND parent) {
    bool ended = false;
    gone = &ended;
    const LONG result = modal ? RunModal(parent, ended) : RunModeless(parent);
    if (!ended) gone = nullptr;
    return result;
}

LONG SRxFindDialog::RunModal(HWND parent, const bool& ended) {
    (void)DialogBoxParamW(resourceInstance, MAKEINTRESOURCEW(IDD_MDFIND), parent, FindDlgProc,
                          reinterpret_cast<LPARAM>(this));
    // Not by the result: it is 0 also where the parent is no window, and -1 also where the window
    // went with its owner.
    constexpr LONG kNoWindow = -1;
    return ended ? 0 : kNoWindow;
}

LONG SRxFindDialog::RunModeless(HWND parent) {
    constexpr LONG kNoWindow = 1;
    // An end that comes while the dialog opens waits for the window.
    const SRxDialogActivity opening(*this);
    const HWND window = CreateDialogParamW(resourceInstance, MAKEINTRESOURCEW(IDD_MDFIND), parent,
                                           FindDlgProc, reinterpret_cast<LPARAM>(this));
    if (window == nullptr) return IsClosing() ? 0 : kNoWindow;
    modelessDialog = window;
    if (!IsClosing()) ShowWindow(window, SW_SHOW);
    return 0;
}

void SRxFindDialog::OnInitDialog(HWND window) {
    const SRxDialogActivity working(*this);
    dialogWindow = window;
    InitDialogControls();
    TellOfFinishedSaves(FinishCutSaves());
    OnCommandOpenSearch(true);
}

void SRxFindDialog::OnOkCommand() {
    SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    if (inApp) NotifyOnOK();
    const bool result = !IsClosing() && OnCommandSearchNow();
    if (inApp && result) NotifyOnFindDone();
    SetCursor(LoadCursorW(nullptr, IDC_ARROW));
}

void SRxFindDialog::OnCancelCommand() {
    {
        const SRxDialogActivity working(*this);
        try {
            DeleteLastSearches();
            OnCommandSaveSearch(true);
        } catch (const std::bad_alloc&) {
            // Closing frees memory; it goes on.
            TellOutOfMemory(dialogWindow);
        }
        // Closed in the middle of it: the object goes with the last one at work.
        if (IsClosing()) return;
    }
    CloseDialog(true);
}

void SRxFindDialog::OnCommand(WPARAM wParam) {
    const int control = LOWORD(wParam);
    const int code = HIWORD(wParam);
    if (searching || IsClosing()) return;
    if (control == IDCANCEL) {
        OnCancelCommand();
        return;
    }
    const SRxDialogActivity working(*this);
    const bool quiet = updatingControls;
    switch (control) {
        case IDOK:
            OnOkCommand();
            break;
        case IDHELP:
            ShowDialogHelp(dialogWindow, IDD_MDFIND);
            break;
        case IDC_ADD:
            OnCommandAdd();
            break;
        case IDC_BROWSE:
            OnCommandBrowse();
            break;
        case IDC_CONDITION_LIST:
            if (code == CBN_SELCHANGE && !quiet) OnCommandConditionList();
            break;
        case IDC_CRITERIA_LIST:
            if (code == LBN_SELCHANGE) OnCommandCriterList();
            break;
        case IDC_LOOK_FOLDER:
        case IDC_LOOK_SUBFOLDERS:
            if (code == BN_CLICKED && !lookInFolders) OnCommandFolder();
            break;
        case IDC_LOOK_RELATED:
            if (code == BN_CLICKED && lookInFolders) OnCommandRelatedDocs();
            break;
        case IDC_DELETE:
            OnCommandDelete();
            break;
        case IDC_VALUE_LIST:
            if (code == CBN_SELCHANGE && !quiet) OnCommandValueList();
            break;
        case IDC_LOOK_FOR:
            if (code != CBN_SELCHANGE) break;
            SetLookForType();
            OnCommandNewSearch();
            InitProperties();
            break;
        case IDC_NEW_SEARCH:
            OnCommandNewSearch();
            break;
        case IDC_OPEN_SEARCH:
            OnCommandOpenSearch(false);
            break;
        case IDC_SAVE_SEARCH:
            OnCommandSaveSearch(false);
            break;
        case IDC_PATH_LIST:
            if (code == CBN_KILLFOCUS) OnCommandPathKillFocus();
            break;
        case IDC_PROPERTY_LIST:
            OnPropertyNotice(wParam);
            break;
        case IDC_VALUE_EDIT:
            if ((code == EN_CHANGE || code == EN_UPDATE) && !quiet) OnCommandValueEdit();
            break;
        default:
            break;
    }
}

void SRxFindDialog::OnPropertyNotice(WPARAM wParam) {
    const int code = HIWORD(wParam);
    if (code == CBN_KILLFOCUS) {
        OnCommandPropertyListKillFocus();
    } else if ((code == CBN_SELCHANGE || code == CBN_EDITCHANGE) && !updatingControls) {
        OnCommandPropertyList(wParam);
    }
}

INT_PTR CALLBACK FindDlgProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    try {
        return Receive(window, message, wParam, lParam);
    } catch (const std::bad_alloc&) {
        // The object lives as long as its window knows it.
        if (const SRxFindDialog* dialog = DialogOf(window)) dialog->TellOutOfMemory(window);
        return TRUE;
    }
}
