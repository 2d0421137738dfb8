#include "host/srfind/dialog_controls.h"

namespace {

struct ControlRow {
    int id;
    const WCHAR* className;
    DWORD style;
};
constexpr ControlRow kControls[] = {
    {IDC_PATH_LIST, TEXT("ComboBox"), CBS_DROPDOWN},
    {IDC_MATCH_CASE, TEXT("Button"), BS_AUTOCHECKBOX},
    {IDC_LOOK_FOLDER, TEXT("Button"), BS_AUTORADIOBUTTON},
    {IDC_LOOK_SUBFOLDERS, TEXT("Button"), BS_AUTORADIOBUTTON},
    {IDC_LOOK_RELATED, TEXT("Button"), BS_AUTORADIOBUTTON},
    {IDC_ADD, TEXT("Button"), 0},
    {IDC_DELETE, TEXT("Button"), 0},
    {IDC_SAVE_SEARCH, TEXT("Button"), 0},
    {IDOK, TEXT("Button"), 0},
    {IDCANCEL, TEXT("Button"), 0},
};

HMENU ControlId(int id) {
    return reinterpret_cast<HMENU>(static_cast<ULONG_PTR>(id));
}

}  // namespace

DialogControls::DialogControls()
    : window_(CreateWindowExW(0, TEXT("Static"), TEXT(""), WS_POPUP, 0, 0, 400, 300, nullptr,
                              nullptr, nullptr, nullptr)) {
    for (const ControlRow& row : kControls) {
        const HWND control =
            window_ == nullptr
                ? nullptr
                : CreateWindowExW(0, row.className, TEXT(""), WS_CHILD | row.style, 0, 0, 100, 100,
                                  window_, ControlId(row.id), nullptr, nullptr);
        if (control == nullptr && window_ != nullptr) {
            DestroyWindow(window_);
            window_ = nullptr;
        }
    }
}

DialogControls::~DialogControls() {
    if (window_ != nullptr) DestroyWindow(window_);
}

void DialogControls::SetLookIn(const WText& path) {
    SetDlgItemTextW(window_, IDC_PATH_LIST, path.c_str());
}

void DialogControls::Check(int control, bool checked) {
    SendDlgItemMessageW(window_, control, BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED, 0);
}
