#include "tests/unit/dialog_controls.h"

namespace {

INT_PTR CALLBACK NobodyProc(HWND, UINT, WPARAM, LPARAM) {
    return FALSE;
}

HWND NewWindow(HINSTANCE resources) {
    const INITCOMMONCONTROLSEX classes = {sizeof(classes), ICC_DATE_CLASSES};
    if (!InitCommonControlsEx(&classes)) return nullptr;
    return CreateDialogParamW(resources, MAKEINTRESOURCEW(IDD_MDFIND), nullptr, NobodyProc, 0);
}

}  // namespace

DialogControls::DialogControls(HINSTANCE resources) : window_(NewWindow(resources)) {}

DialogControls::~DialogControls() {
    if (window_ != nullptr) DestroyWindow(window_);
}

void DialogControls::SetLookIn(const WText& path) {
    SetDlgItemTextW(window_, IDC_PATH_LIST, path.c_str());
}

void DialogControls::Check(int control, bool checked) {
    SendDlgItemMessageW(window_, control, BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED, 0);
}
