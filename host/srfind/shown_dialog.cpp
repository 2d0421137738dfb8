#include "host/srfind/shown_dialog.h"

#include "module/module_state.h"

namespace {

class Closing : public SRxFindDlgNotify {
public:
    virtual ~Closing() = default;
    void Reserved() override {}
    void OnOK(bool) override {}
    void OnFindDone() override {}
    void OnCancel() override { closed = true; }

    bool closed = false;
};

// A modal dialog has its message loop for itself, so the timer's turn comes once it is open.
struct Preparation {
    SRxFindDialog& dialog;
    const std::function<void(SRxFindDialog&)>& prepare;
};
Preparation* waiting = nullptr;

void CALLBACK OnTimer(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    if (waiting == nullptr || waiting->dialog.dialogWindow == nullptr) return;
    waiting->prepare(waiting->dialog);
    waiting = nullptr;
}

bool ShowModal(SRxFindDialog& dialog, const std::function<void(SRxFindDialog&)>& prepare) {
    Preparation preparation = {dialog, prepare};
    waiting = &preparation;
    SetTimer(nullptr, 0, 1, OnTimer);
    dialog.SetModal(true);
    const bool shown = dialog.InvokeCommand(nullptr) == 0;
    waiting = nullptr;
    return shown;
}

}  // namespace

bool ShowFindDialog(bool modeless, const std::function<void(SRxFindDialog&)>& prepare,
                    MDxFileNameNode** picks) {
    Closing closing;
    auto* dialog = new SRxFindDialog(SrResReturnHandle(), picks, nullptr, nullptr, &closing);
    dialog->SetAccessPoint(eAccessShellNoWindow);
    dialog->Initialize();
    const bool shown = modeless ? dialog->InvokeCommand(nullptr) == 0 : ShowModal(*dialog, prepare);
    if (!shown) {
        delete dialog;
        return false;
    }
    if (!modeless) return true;
    prepare(*dialog);
    MSG message;
    while (!closing.closed && GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return true;
}
