// Windows build: a hook of the thread sees each message box as it becomes active, asks the desk and
// presses the button, so that no box waits for a person. Other dialogs are handed on.
#include "platform/windows/desk_windows.h"

#include <utility>

namespace {

constexpr int kMessageBoxTextId = 0xFFFF;

thread_local Desk* current = nullptr;
thread_local HHOOK activations = nullptr;
thread_local HHOOK messages = nullptr;
thread_local unsigned scopes = 0;
thread_local HMENU openMenu = nullptr;
thread_local bool menuWaits = false;

UINT ButtonsOf(HWND box) {
    if (GetDlgItem(box, IDYES) == nullptr) return MB_OK;
    return GetDlgItem(box, IDCANCEL) != nullptr ? MB_YESNOCANCEL : MB_YESNO;
}

// The system tells a thread also of the foreign window that comes to the front when its own goes.
bool IsOfThisThread(HWND window) {
    return GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId();
}

bool IsDialog(HWND window) {
    WCHAR name[16] = {};
    GetClassNameW(window, name, 16);
    return WTextView(name) == TEXT("#32770");
}

LRESULT CALLBACK SeeActivation(int code, WPARAM wParam, LPARAM lParam) {
    const auto window = reinterpret_cast<HWND>(wParam);
    const bool isDialog = code == HCBT_ACTIVATE && IsDialog(window) && IsOfThisThread(window);
    if (!isDialog || current == nullptr) {
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }
    if (GetDlgItem(window, kMessageBoxTextId) != nullptr) {
        const MessageBoxQuestion question = {
            platform::TextOfWindow(GetDlgItem(window, kMessageBoxTextId)),
            platform::TextOfWindow(window), ButtonsOf(window)};
        const int answer = current->AnswerMessageBox(question);
        PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(answer), 0);
    } else {
        platform::WatchDialog(window);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

// A menu waits for a choice: the desk makes it by the keys that a person would press.
void WorkMenu(HWND owner) {
    MenuQuestion question;
    std::vector<int> steps;  // of the down key, from the first entry that can be chosen
    int step = -1;
    const int count = GetMenuItemCount(openMenu);
    for (int i = 0; i < count; ++i) {
        WCHAR text[MAX_PATH] = {};
        MENUITEMINFOW item{};
        item.cbSize = sizeof item;
        item.fMask = MIIM_FTYPE | MIIM_STRING;
        item.dwTypeData = text;
        item.cch = MAX_PATH;
        GetMenuItemInfoW(openMenu, static_cast<UINT>(i), TRUE, &item);
        if ((item.fType & MFT_SEPARATOR) == 0) ++step;
        question.entries.emplace_back((item.fType & MFT_SEPARATOR) == 0 ? text : TEXT(""));
        steps.push_back(step);
    }
    const int answer = current->AnswerMenu(question);
    if (answer < 0 || answer >= count) {
        EndMenu();
        return;
    }
    for (int i = 0; i <= steps[static_cast<std::size_t>(answer)]; ++i)
        PostMessageW(owner, WM_KEYDOWN, VK_DOWN, 0);
    PostMessageW(owner, WM_KEYDOWN, VK_RETURN, 0);
}

LRESULT CALLBACK SeeSentMessage(int code, WPARAM wParam, LPARAM lParam) {
    const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (code == HC_ACTION && current != nullptr && IsDialog(sent.hwnd)) {
        // The first menu to open is the one asked about; its submenus aren't.
        if (sent.message == WM_ENTERMENULOOP) openMenu = nullptr;
        if (sent.message == WM_INITMENUPOPUP && openMenu == nullptr) {
            openMenu = reinterpret_cast<HMENU>(sent.wParam);
            menuWaits = true;
        }
        if (sent.message == WM_ENTERIDLE && sent.wParam == MSGF_MENU &&
            std::exchange(menuWaits, false)) {
            WorkMenu(sent.hwnd);
        }
        if (sent.message == BFFM_SETSELECTIONW && sent.wParam == TRUE && sent.lParam != 0) {
            platform::NoteSelection(sent.hwnd, reinterpret_cast<LPCWSTR>(sent.lParam));
        }
        if (sent.message == BFFM_ENABLEOK && sent.lParam == 0) {
            platform::NoteOkDisabled(sent.hwnd);
        }
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

}  // namespace

Desk* platform::CurrentDesk() {
    return current;
}

WText platform::TextOfWindow(HWND window) {
    WText text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, 0);
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

DeskScope::DeskScope(Desk& desk) : earlier_(current) {
    current = &desk;
    if (scopes++ == 0) {
        const DWORD thread = GetCurrentThreadId();
        activations = SetWindowsHookExW(WH_CBT, SeeActivation, nullptr, thread);
        messages = SetWindowsHookExW(WH_CALLWNDPROC, SeeSentMessage, nullptr, thread);
    }
}

DeskScope::~DeskScope() {
    current = earlier_;
    if (--scopes == 0) {
        for (HHOOK* hook : {&activations, &messages}) {
            if (*hook != nullptr) UnhookWindowsHookEx(*hook);
            *hook = nullptr;
        }
        platform::StopWatching();
    }
}
