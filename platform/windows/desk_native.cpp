#include "platform/windows/desk_native.h"

namespace {
thread_local Desk* current = nullptr;
}  // namespace

Desk* platform::CurrentDesk() {
    return current;
}

DeskScope::DeskScope(Desk& desk) : earlier_(current) {
    current = &desk;
}

DeskScope::~DeskScope() {
    current = earlier_;
}

int MessageBoxW(HWND, LPCWSTR text, LPCWSTR caption, UINT type) {
    if (current == nullptr) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return 0;
    }
    return current->AnswerMessageBox(
        {text != nullptr ? text : TEXT(""), caption != nullptr ? caption : TEXT(""), type});
}
