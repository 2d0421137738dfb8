#include "outside/md_window_aids.h"

#include <algorithm>

#include "outside/blx_util.h"
#include "outside/md_messages.h"
#include "platform/owner.h"
#include "resource/control_ids.h"
#include "resource/string_ids.h"

namespace {

using Library = Owner<HMODULE, FreeLibrary>;

// The text for a help context; 0 for one that has none.
UINT HelpTextOf(DWORD_PTR context) {
    switch (context) {
        case IDD_MDFIND:
            return STR_HELP_TEXT;
        case IDD_SR_FINDLIST:
            return STR_HELP_FOUND;
        case IDD_SR_OPENSEARCH:
            return STR_HELP_OPEN_SEARCH;
        case IDD_SR_SAVESEARCH:
            return STR_HELP_SAVE_SEARCH;
        default:
            return 0;
    }
}

}  // namespace

void SetListWidth(HWND dialog, int control, int columns) {
    for (int column = 0; column < columns; ++column) {
        SendDlgItemMessageW(dialog, control, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column),
                            LVSCW_AUTOSIZE);
    }
}

void SetDropWidth(HWND dialog, int control) {
    constexpr int kUnitsOfLetter = 4;     // the average width in dialog units
    constexpr int kUnitsOfScrollBar = 8;  // and of the edge
    const LRESULT count = SendDlgItemMessageW(dialog, control, CB_GETCOUNT, 0, 0);
    LRESULT longest = 0;
    for (LRESULT item = 0; item < count; ++item) {
        longest = std::max(longest, SendDlgItemMessageW(dialog, control, CB_GETLBTEXTLEN,
                                                        static_cast<WPARAM>(item), 0));
    }
    RECT rect{};
    rect.right = static_cast<LONG>(longest) * kUnitsOfLetter + kUnitsOfScrollBar;
    if (!MapDialogRect(dialog, &rect)) return;
    // A drop-down is never narrower than its box.
    SendDlgItemMessageW(dialog, control, CB_SETDROPPEDWIDTH, static_cast<WPARAM>(rect.right), 0);
}

// The templates ask for it by DS_SHELLFONT, so that the dialog has it before its first message.
void MDxSubstituteShellFont(HWND) {}

void MDxCalcSizeDialog(HWND dialog, bool) {
    RECT rect{};
    if (!GetWindowRect(dialog, &rect)) return;
    const LONG right = GetSystemMetrics(SM_CXSCREEN);
    const LONG bottom = GetSystemMetrics(SM_CYSCREEN);
    const LONG left = std::max<LONG>(std::min(rect.left, right - (rect.right - rect.left)), 0);
    const LONG top = std::max<LONG>(std::min(rect.top, bottom - (rect.bottom - rect.top)), 0);
    if (left == rect.left && top == rect.top) return;
    SetWindowPos(dialog, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

bool MDxHelp(const HELPINFO* info, UINT) {
    if (info == nullptr) return false;
    const auto window = static_cast<HWND>(info->hItemHandle);
    UINT text = HelpTextOf(info->dwContextId);
    for (HWND at = window; text == 0 && at != nullptr; at = GetParent(at))
        text = HelpTextOf(GetWindowContextHelpId(at));
    const Library resources(LoadLibraryExW(BLxUtil::GetLPResourceDLLPath(TEXT("SrRes.dll")).c_str(),
                                           nullptr, DONT_RESOLVE_DLL_REFERENCES));
    if (text == 0 || !resources) return false;
    constexpr int kInformation = 1;
    return DisplayMessageId(resources.get(), text, MB_OK, kInformation, 0, window) != 0;
}
