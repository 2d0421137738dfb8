// Windows build: a hook of the thread sees each message box as it becomes active, asks the desk and
// presses the button, so that no box waits for a person.
#include "platform/desk.h"

namespace {

constexpr int kMessageBoxTextId = 0xFFFF;

thread_local Desk* current = nullptr;
thread_local HHOOK hook = nullptr;
thread_local unsigned scopes = 0;

WText TextOf(HWND window) {
    WText text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, 0);
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

UINT ButtonsOf(HWND box) {
    if (GetDlgItem(box, IDYES) == nullptr) return MB_OK;
    return GetDlgItem(box, IDCANCEL) != nullptr ? MB_YESNOCANCEL : MB_YESNO;
}

bool IsMessageBox(HWND window) {
    WCHAR name[16] = {};
    GetClassNameW(window, name, 16);
    return WTextView(name) == TEXT("#32770") && GetDlgItem(window, kMessageBoxTextId) != nullptr;
}

LRESULT CALLBACK SeeActivation(int code, WPARAM wParam, LPARAM lParam) {
    const auto window = reinterpret_cast<HWND>(wParam);
    if (code == HCBT_ACTIVATE && current != nullptr && IsMessageBox(window)) {
        const MessageBoxQuestion question = {TextOf(GetDlgItem(window, kMessageBoxTextId)),
                                             TextOf(window), ButtonsOf(window)};
        const int answer = current->AnswerMessageBox(question);
        PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(answer), 0);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

}  // namespace

DeskScope::DeskScope(Desk& desk) : earlier_(current) {
    current = &desk;
    if (scopes++ == 0) {
        hook = SetWindowsHookExW(WH_CBT, SeeActivation, nullptr, GetCurrentThreadId());
    }
}

DeskScope::~DeskScope() {
    current = earlier_;
    if (--scopes == 0 && hook != nullptr) {
        UnhookWindowsHookEx(hook);
        hook = nullptr;
    }
}
