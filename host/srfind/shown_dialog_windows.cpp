#include <functional>

#include "dialog/criteria_rows.h"
#include "dialog/saved_search_commands.h"
#include "host/srfind/criterion_text.h"
#include "host/srfind/shown_dialog.h"
#include "module/module_state.h"
#include "store/saved_search.h"

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

// What is refused or damaged is said by the dialog itself.
void Prepare(SRxFindDialog& dialog, const Options& options, const WText& lookIn,
             SearchReport& report) {
    if (options.openSearch.given) {
        const WText name = wtext::FromUtf8(options.openSearch.text);
        if (HasSavedSearch(name.c_str())) {
            (void)ReadSearch(dialog, name.c_str());
        } else {
            report.Tell("there is no saved search \"" + options.openSearch.text + "\"");
        }
    }
    if (options.matchCase) {
        SendDlgItemMessageW(dialog.dialogWindow, IDC_MATCH_CASE, BM_SETCHECK, BST_CHECKED, 0);
    }
    const CriterionParser parser(dialog.resourceInstance);
    for (const CriterionOption& option : options.criteria) {
        std::string fault;
        auto node = parser.Parse(option.text, option.isOr ? JOIN_OR : JOIN_AND, fault);
        if (node == nullptr) {
            report.Tell(fault);
        } else if (!AppendCriterion(dialog, std::move(node))) {
            report.Tell("the criterion \"" + option.text + "\" was refused");
        }
    }
    const auto press = [&dialog](int button) {
        SendMessageW(GetDlgItem(dialog.dialogWindow, button), BM_CLICK, 0, 0);
    };
    if (lookIn.empty()) return;
    if (options.related) press(IDC_LOOK_RELATED);
    if (options.subfolders) press(IDC_LOOK_SUBFOLDERS);
    SetDlgItemTextW(dialog.dialogWindow, IDC_PATH_LIST, lookIn.c_str());
}

}  // namespace

bool CanShowFindDialog() {
    return true;
}

bool ShowFindDialog(const Options& options, const WText& lookIn, SearchReport& report,
                    MDxFileNameNode** picks) {
    const std::function<void(SRxFindDialog&)> prepare = [&](SRxFindDialog& dialog) {
        Prepare(dialog, options, lookIn, report);
    };
    Closing closing;
    auto* dialog = new SRxFindDialog(SrResReturnHandle(), picks, nullptr, nullptr, &closing);
    dialog->SetAccessPoint(eAccessShellNoWindow);
    dialog->Initialize();
    const bool modeless = options.modeless;
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
