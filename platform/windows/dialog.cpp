#include "platform/windows/dialog.h"

#include <span>
#include <utility>

#include "platform/resources/library.h"
#include "platform/resources/resource_image.h"

namespace platform {

namespace {

int Scale(int units, int base, int divisor) {
    const int product = units * base;
    return (product + (product < 0 ? -divisor / 2 : divisor / 2)) / divisor;
}

bool AddControls(Dialog& dialog, const DialogTemplate& read) {
    for (const DialogItemTemplate& item : read.items) {
        const auto control = MakeWindow(
            {item.className, item.text.c_str(), item.style | WS_CHILD, dialog.PixelsAcross(item.x),
             dialog.PixelsDown(item.y), dialog.PixelsAcross(item.width),
             dialog.PixelsDown(item.height), dialog.handle, static_cast<INT_PTR>(item.id)});
        if (control != nullptr) {
            control->helpId = item.helpId;
            if (control->Role() == eRole::defaultButton) {
                dialog.defaultId = static_cast<WORD>(item.id);
            }
        } else {
            return false;
        }
    }
    return true;
}

// Null and the last error when it can't be made.
HWND CreateFrom(const std::optional<DialogTemplate>& read, HWND parent, DLGPROC procedure,
                LPARAM parameter) {
    if (!read) return nullptr;
    if (procedure == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    if (read->hasClass) {
        SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
        return nullptr;
    }
    if (parent != nullptr && RequireWindow(parent) == nullptr) return nullptr;
    const auto dialog = std::make_shared<Dialog>(procedure, (read->style & DS_SETFONT) != 0);
    EnterTree(dialog,
              {TEXT(""), read->title.c_str(), read->style & ~WS_VISIBLE,
               dialog->PixelsAcross(read->x), dialog->PixelsDown(read->y),
               dialog->PixelsAcross(read->width), dialog->PixelsDown(read->height), parent, 0});
    dialog->helpId = read->helpId;
    const HWND handle = dialog->handle;
    if (!AddControls(*dialog, *read)) {
        DestroyWindow(handle);
        SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
        return nullptr;
    }
    const auto focus = reinterpret_cast<WPARAM>(dialog->NextTabStop(nullptr));
    if (SendMessageW(handle, WM_INITDIALOG, focus, parameter) != 0 && IsWindow(handle)) {
        // What was disabled meanwhile is passed over.
        if (const HWND first = dialog->NextTabStop(nullptr)) SetFocus(first);
    }
    if (!IsWindow(handle)) return nullptr;
    if ((read->style & WS_VISIBLE) != 0) ShowWindow(handle, SW_SHOW);
    return handle;
}

// Runs the dialog until it ends; -1 where nothing could ever end it.
INT_PTR RunModal(HWND handle, HWND owner, bool ownerWasEnabled) {
    const std::shared_ptr<Window> window = FindWindowObject(handle);
    if (window == nullptr) return -1;
    auto& dialog = static_cast<Dialog&>(*window);
    INT_PTR result = -1;
    MSG message{};
    while (!dialog.ended && IsWindow(handle)) {
        // Shown once nothing waits any more, as on Windows: what ends at once is never seen.
        if (!PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE)) ShowWindow(handle, SW_SHOW);
        const BOOL got = GetMessageW(&message, nullptr, 0, 0);
        if (got < 0) break;
        if (got == 0) {
            PostQuitMessage(static_cast<int>(message.wParam));
            break;
        }
        if (IsDialogMessageW(handle, &message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    if (dialog.ended) result = dialog.result;
    if (ownerWasEnabled) EnableWindow(owner, TRUE);
    if (IsWindow(handle)) DestroyWindow(handle);
    return result;
}

INT_PTR RunFrom(const std::optional<DialogTemplate>& read, HWND owner, DLGPROC procedure,
                LPARAM parameter) {
    const bool ownerWasEnabled = owner != nullptr && IsWindowEnabled(owner);
    if (ownerWasEnabled) EnableWindow(owner, FALSE);
    const HWND handle = CreateFrom(read, owner, procedure, parameter);
    if (handle != nullptr) return RunModal(handle, owner, ownerWasEnabled);
    if (ownerWasEnabled) EnableWindow(owner, TRUE);
    return -1;
}

// Null and the last error for what is no sound template.
std::optional<DialogTemplate> Read(std::span<const std::byte> bytes) {
    auto read = ReadDialogTemplate(bytes);
    if (!read) SetLastError(ERROR_INVALID_DATA);
    return read;
}

std::optional<DialogTemplate> TemplateOf(HINSTANCE module, LPCWSTR name) {
    if (!IS_INTRESOURCE(name)) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return std::nullopt;
    }
    const auto bytes = FindLibraryResource(
        module, kResourceDialog, static_cast<std::uint32_t>(reinterpret_cast<ULONG_PTR>(name)));
    return bytes.empty() ? std::nullopt : Read(bytes);
}

}  // namespace

int Dialog::PixelsAcross(int units) const {
    return Scale(units, hasFont ? 6 : 7, 4);
}

int Dialog::PixelsDown(int units) const {
    return Scale(units, hasFont ? 13 : 16, 8);
}

void Dialog::SetDefault(WORD newId) {
    defaultId = newId;
    ShowDefault(nullptr);
}

// One push button has the look of the default one: that with the focus, else that of the number.
void Dialog::ShowDefault(const Window* focused) {
    const bool isOwn = focused != nullptr && (focused->Role() == eRole::pushButton ||
                                              focused->Role() == eRole::defaultButton);
    for (const HWND child : children) {
        const auto button = FindWindowObject(child);
        if (button->Role() != eRole::pushButton && button->Role() != eRole::defaultButton) continue;
        button->MakeDefault(isOwn ? button.get() == focused : button->id == defaultId);
    }
}

void Dialog::MoveFocus(HWND control) {
    SetFocus(control);
    // The one who lost it may have ended this one.
    if (IsWindow(handle)) ShowDefault(FindWindowObject(control).get());
}

LRESULT Dialog::ReceiveByDefault(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CLOSE:
            PostMessageW(handle, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED),
                         reinterpret_cast<LPARAM>(GetDlgItem(handle, IDCANCEL)));
            return 0;
        case DM_SETDEFID:
            SetDefault(static_cast<WORD>(wParam));
            return 1;
        default:
            return Window::Receive(message, wParam, lParam);
    }
}

LRESULT Dialog::Receive(UINT message, WPARAM wParam, LPARAM lParam) {
    const INT_PTR answer = procedure(handle, message, wParam, lParam);
    if (message == WM_INITDIALOG) return answer;
    if (answer != 0) return 0;
    return IsWindow(handle) ? ReceiveByDefault(message, wParam, lParam) : 0;
}

LONG_PTR GetDialogNumber(Window& dialog, int index) {
    auto& own = static_cast<Dialog&>(dialog);
    if (index == DWLP_USER) return own.user;
    SetLastError(ERROR_INVALID_INDEX);
    return 0;
}

LONG_PTR SetDialogNumber(Window& dialog, int index, LONG_PTR value) {
    auto& own = static_cast<Dialog&>(dialog);
    if (index == DWLP_USER) return std::exchange(own.user, value);
    SetLastError(ERROR_INVALID_INDEX);
    return 0;
}

}  // namespace platform

HWND CreateDialogParamW(HINSTANCE module, LPCWSTR name, HWND parent, DLGPROC procedure,
                        LPARAM parameter) {
    return platform::CreateFrom(platform::TemplateOf(module, name), parent, procedure, parameter);
}

INT_PTR DialogBoxParamW(HINSTANCE module, LPCWSTR name, HWND owner, DLGPROC procedure,
                        LPARAM parameter) {
    return platform::RunFrom(platform::TemplateOf(module, name), owner, procedure, parameter);
}

BOOL EndDialog(HWND dialog, INT_PTR result) {
    const auto window = platform::RequireWindow(dialog);
    if (window == nullptr || !window->IsDialog()) return FALSE;
    auto& own = static_cast<platform::Dialog&>(*window);
    own.ended = true;
    own.result = result;
    ShowWindow(dialog, SW_HIDE);
    return TRUE;
}

BOOL MapDialogRect(HWND dialog, RECT* rect) {
    const auto window = platform::RequireWindow(dialog);
    if (window == nullptr || !window->IsDialog()) return FALSE;
    const auto& own = static_cast<const platform::Dialog&>(*window);
    *rect = {own.PixelsAcross(rect->left), own.PixelsDown(rect->top), own.PixelsAcross(rect->right),
             own.PixelsDown(rect->bottom)};
    return TRUE;
}
