// How an opening of the find dialog ends: what waits while the object is at work, what goes first,
// and what is kept for the next opening.
#include "dialog/find_dialog.h"
#include "dialog/registry_key.h"
#include "found/found_dialog.h"
#include "outside/blx_registry.h"
#include "outside/md_registry.h"
#include "search/found_list.h"
#include "shell/module_state.h"

SRxDialogActivity::~SRxDialogActivity() {
    if (--dialog_.activity > 0) return;
    using eEnd = SRxFindDialog::eDialogEnd;
    if (dialog_.ending == eEnd::Asked || dialog_.ending == eEnd::AskedByUser) {
        dialog_.RunEnd(dialog_.ending == eEnd::AskedByUser);
    }
}

SRxFindDialog::~SRxFindDialog() {
    ending = eDialogEnd::Running;
    while (!searches.empty())
        EndSearch(*searches.back());
    delete criteriaHead;
    criteriaHead = nullptr;
    --objectCount;
    if (server != nullptr) server->Release();
    if (gone != nullptr) *gone = true;
    HoldLender(nullptr, nullptr);
}

bool SRxFindDialog::IsClosing() const {
    return ending != eDialogEnd::None;
}

void SRxFindDialog::CloseDialog(bool notifyCaller) {
    if (notifying || ending == eDialogEnd::Running) return;
    if (activity > 0) {
        PutOffEnd(notifyCaller);
    } else {
        RunEnd(notifyCaller);
    }
}

void SRxFindDialog::PutOffEnd(bool byUser) {
    // A caller who closes the dialog himself may free what he lent right after.
    if (!byUser) {
        notify = nullptr;
        lookForOut = nullptr;
        selectionSlot = nullptr;
    }
    const bool first = ending == eDialogEnd::None;
    if (first || !byUser) ending = byUser ? eDialogEnd::AskedByUser : eDialogEnd::Asked;
    for (SRxFoundList* list : searches)
        AbandonSearch(*list, !byUser);
    if (!first) return;
    if (nestedDialog != nullptr) EndDialog(nestedDialog, 0);
    if (dialogWindow != nullptr) ShowWindow(dialogWindow, SW_HIDE);
}

void SRxFindDialog::RunEnd(bool byUser) {
    ending = eDialogEnd::Running;
    while (!searches.empty())
        EndSearch(*searches.back());
    if (const HWND window = dialogWindow; window != nullptr) {
        OnExit();
        dialogWindow = nullptr;
        SetWindowLongPtrW(window, DWLP_USER, 0);  // no message reaches the object any more
        if (modal) {
            EndDialog(window, 0);
        } else {
            DestroyWindow(window);
        }
    }
    if (!modal && byUser) {
        notifying = true;
        NotifyOnCancel();
        notifying = false;
    }
    delete this;
}

void SRxFindDialog::OnWindowDestroyed() {
    if (ending == eDialogEnd::Running) return;
    OnExit();
    SetWindowLongPtrW(dialogWindow, DWLP_USER, 0);
    dialogWindow = nullptr;
    // Nobody asked for it, so the caller's listener hears of it as of a close by the user.
    CloseDialog(true);
}

bool SRxFindDialog::OnExit() {
    SavePlace();
    for (const int button : {IDC_BROWSE, IDHELP}) {
        const LRESULT icon = SendDlgItemMessageW(dialogWindow, button, BM_GETIMAGE, IMAGE_ICON, 0);
        if (icon != 0) DestroyIcon(reinterpret_cast<HICON>(icon));
    }
    const LRESULT icon = SendMessageW(dialogWindow, WM_SETICON, ICON_SMALL, 0);
    if (icon != 0) DestroyIcon(reinterpret_cast<HICON>(icon));
    return true;
}

void SRxFindDialog::SavePlace() const try {
    RECT rect{};
    if (!GetWindowRect(dialogWindow, &rect)) return;
    WCHAR path[kPathLength] = TEXT("\\FindExt\\LastPos");
    const RegistryKeyOwner key(MDxCreateRegistryKey(HKEY_CURRENT_USER, path, kPathLength));
    if (!key) return;
    // Left, top, width, height. Closing goes on when they can't be kept.
    const LONG place[] = {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
    (void)BLxPref_Reg::Write(key.get(), nullptr, REG_BINARY, place, sizeof(place));
} catch (const std::bad_alloc&) {
    // Nor without memory for it.
}
