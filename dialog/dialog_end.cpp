// How an opening of the find dialog ends: what waits while the object is at work, what goes first,
// and what is kept for the next opening.
#include <cassert>

#include "dialog/find_dialog.h"
#include "found/found_dialog.h"
#include "module/module_state.h"
#include "module/registry_key.h"
#include "outside/blx_registry.h"
#include "outside/md_registry.h"
#include "platform/processes.h"

namespace {

void SavePlace(HWND window) try {
    RECT rect{};
    if (!GetWindowRect(window, &rect)) return;
    const LockWait once(0);
    WCHAR path[kPathLength] = TEXT("\\FindExt\\LastPos");
    const RegistryKeyOwner key(MDxCreateRegistryKey(HKEY_CURRENT_USER, path, kPathLength));
    if (!key) return;
    // Left, top, width, height. Closing goes on when they can't be kept.
    const LONG place[] = {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
    (void)BLxPref_Reg::Write(key.get(), nullptr, REG_BINARY, place, sizeof(place));
} catch (...) {
    // Nor without memory for it.
}

}  // namespace

SRxDialogLife::~SRxDialogLife() {
    if (gone_ != nullptr) *gone_ = true;
    HoldLender(nullptr, nullptr);
}

void SRxDialogLife::HoldLender(IUnknown* lender, SRxFindDialog** known) {
    if (knownTo_ != nullptr && *knownTo_ == &dialog_) *knownTo_ = nullptr;
    knownTo_ = known;
    if (lender != nullptr) lender->AddRef();
    if (lender_ != nullptr) lender_->Release();
    lender_ = lender;
}

void SRxDialogLife::EndWork() {
    assert(works_ > 0);
    if (--works_ > 0) return;
    if (end_ == eEnd::Asked || end_ == eEnd::AskedByUser) Run(end_ == eEnd::AskedByUser);
}

void SRxDialogLife::EndSearches() {
    end_ = eEnd::Running;
    while (!dialog_.searches.empty())
        EndSearch(*dialog_.searches.back());
}

void SRxDialogLife::Close(bool byUser) {
    if (dialog_.notifying || end_ == eEnd::Running) return;
    if (works_ > 0) {
        PutOff(byUser);
    } else {
        Run(byUser);
    }
}

void SRxDialogLife::PutOff(bool byUser) {
    // A caller who closes the dialog himself may free what he lent right after.
    if (!byUser) {
        dialog_.notify = nullptr;
        dialog_.lookForOut = nullptr;
        dialog_.selectionSlot = nullptr;
    }
    const bool first = end_ == eEnd::None;
    if (first || !byUser) end_ = byUser ? eEnd::AskedByUser : eEnd::Asked;
    for (SRxFoundList* list : dialog_.searches)
        AbandonSearch(*list, !byUser);
    if (!first) return;
    if (dialog_.nestedDialog != nullptr) EndDialog(dialog_.nestedDialog, 0);
    if (dialog_.dialogWindow != nullptr) ShowWindow(dialog_.dialogWindow, SW_HIDE);
}

void SRxDialogLife::Run(bool byUser) {
    EndSearches();
    if (const HWND window = dialog_.dialogWindow; window != nullptr) {
        dialog_.OnExit();
        dialog_.dialogWindow = nullptr;
        SetWindowLongPtrW(window, DWLP_USER, 0);  // no message reaches the object any more
        if (dialog_.modal) {
            EndDialog(window, 0);
        } else {
            DestroyWindow(window);
        }
    }
    if (!dialog_.modal && byUser) {
        dialog_.notifying = true;
        dialog_.NotifyOnCancel();
        dialog_.notifying = false;
    }
    delete &dialog_;
}

void SRxDialogLife::OnWindowDestroyed() {
    if (end_ == eEnd::Running) return;
    dialog_.OnExit();
    SetWindowLongPtrW(dialog_.dialogWindow, DWLP_USER, 0);
    dialog_.dialogWindow = nullptr;
    // Nobody asked for it, so the caller's listener hears of it as of a close by the user.
    Close(true);
}

SRxFindDialog::~SRxFindDialog() {
    life.EndSearches();
    delete criteriaHead;
    criteriaHead = nullptr;
    --objectCount;
    if (server != nullptr) server->Release();
}

void SRxFindDialog::CloseDialog(bool notifyCaller) {
    life.Close(notifyCaller);
}

bool SRxFindDialog::OnExit() {
    SavePlace(dialogWindow);
    for (const int button : {IDC_BROWSE, IDHELP}) {
        const LRESULT icon = SendDlgItemMessageW(dialogWindow, button, BM_GETIMAGE, IMAGE_ICON, 0);
        if (icon != 0) DestroyIcon(reinterpret_cast<HICON>(icon));
    }
    const LRESULT icon = SendMessageW(dialogWindow, WM_SETICON, ICON_SMALL, 0);
    if (icon != 0) DestroyIcon(reinterpret_cast<HICON>(icon));
    return true;
}
