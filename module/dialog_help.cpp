#include "module/dialog_help.h"

#include "outside/md_window_aids.h"

namespace {

HELPINFO InfoFor(HWND window) {
    HELPINFO info{};
    info.cbSize = sizeof info;
    info.iContextType = HELPINFO_WINDOW;
    info.hItemHandle = window;
    return info;
}

}  // namespace

bool AnswerHelpMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_HELP) {
        MDxHelp(reinterpret_cast<const HELPINFO*>(lParam), HELP_WM_HELP);
        return true;
    }
    if (message != WM_CONTEXTMENU) return false;
    const auto control = reinterpret_cast<HWND>(wParam);
    HELPINFO info = InfoFor(control);
    info.iCtrlId = GetDlgCtrlID(control);
    info.dwContextId = GetWindowContextHelpId(control);
    MDxHelp(&info, HELP_CONTEXTPOPUP);
    return true;
}

void ShowDialogHelp(HWND dialog, DWORD context) {
    HELPINFO info = InfoFor(dialog);
    info.dwContextId = context;
    MDxHelp(&info, HELP_CONTENTS);
}
