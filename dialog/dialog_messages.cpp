#include "dialog/dialog_messages.h"

#include <new>

#include "outside/md_messages.h"
#include "platform/resource_text.h"

void Say(const SRxFindDialog& dialog, UINT id) {
    DisplayMessageId(dialog.resourceInstance, id, MB_OK, eKindError, 0, dialog.dialogWindow);
}

void SayAboutSearch(const SRxFindDialog& dialog, UINT id, const WCHAR* name, const WText& lock) {
    WText text = wtext::Format(ResourceText(dialog.resourceInstance, id), {name});
    if (!lock.empty()) {
        const WText held = ResourceText(dialog.resourceInstance, MSG_LOCK_HELD);
        text += TEXT(" ") + wtext::Format(held, {lock});
    }
    const HWND owner = dialog.nestedDialog != nullptr ? dialog.nestedDialog : dialog.dialogWindow;
    DisplayMessageStringEx(dialog.resourceInstance, text.c_str(), MB_OK, eKindWarning, 0, owner);
}

void SayFinishedSaves(const SRxFindDialog& dialog, const std::vector<WText>& names) {
    for (const WText& name : names)
        SayAboutSearch(dialog, MSG_SAVE_RECOVERED, name.c_str());
}

void SayOutOfMemory(const SRxFindDialog& dialog, HWND owner, UINT id) noexcept {
    try {
        DisplayMessageId(dialog.resourceInstance, id, MB_OK, eKindError,
                         owner == dialog.dialogWindow ? 0 : kHelpFoundList, owner);
    } catch (...) {
        // Nor for the usual box.
        WCHAR text[kLabelLength] = {};
        LoadStringW(dialog.resourceInstance, id, text, kLabelLength);
        MessageBoxW(owner, text, nullptr, MB_OK | MB_ICONERROR);
    }
}
