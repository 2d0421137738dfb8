// Windows build: a hook of the thread sees each message box as it becomes active, asks the desk and
// presses the button, so that no box waits for a person. Other dialogs are handed on.
#include "platform/windows/desk_windows.h"

namespace {

constexpr int kMessageBoxTextId = 0xFFFF;

thread_local Desk* current = nullptr;
thread_local HHOOK activations = nullptr;
thread_local HHOOK messages = nullptr;
thread_local unsigned scopes = 0;

UINT ButtonsOf(HWND box) {
    if (GetDlgItem(box, IDYES) == nullptr) return MB_OK;
    return GetDlgItem(box, IDCANCEL) != nullptr ? MB_YESNOCANCEL : MB_YESNO;
}

bool IsDialog(HWND window) {
    WCHAR name[16] = {};
    GetClassNameW(window, name, 16);
    return WTextView(name) == TEXT("#32770");
}

LRESULT CALLBACK SeeActivation(int code, WPARAM wParam, LPARAM lParam) {
    const auto window = reinterpret_cast<HWND>(wParam);
    if (code != HCBT_ACTIVATE || current == nullptr || !IsDialog(window)) {
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

LRESULT CALLBACK SeeSentMessage(int code, WPARAM wParam, LPARAM lParam) {
    const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (code == HC_ACTION && current != nullptr && IsDialog(sent.hwnd)) {
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
