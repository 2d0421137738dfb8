// The controls of the find dialog as it opens: place, items, icons, the text of the server, and the
// mode that the entry chose.
#include "dialog/find_dialog.h"
#include "outside/blx_registry.h"
#include "outside/md_registry.h"
#include "outside/md_window_aids.h"
#include "platform/resource_text.h"

namespace {

// A saved place so far out is moved in by this much.
constexpr LONG kScreenMargin = 20;
constexpr LONG kWayIn = 50;

}  // namespace

LONG CorrectedPlace(LONG saved, LONG screen) {
    const LONG most = screen - kScreenMargin;
    const LONG place = saved > most ? most - kWayIn : saved;
    return place < 0 ? 0 : place;
}

void SRxFindDialog::RestorePlace() const {
    WCHAR path[kPathLength] = TEXT("\\FindExt\\LastPos");
    const HKEY key = MDxOpenRegistryKey(HKEY_CURRENT_USER, path, kPathLength);
    if (key == nullptr) return;
    LONG place[4] = {};  // left, top, width, height
    DWORD type = REG_NONE;
    DWORD cb = sizeof(place);
    const DWORD code = BLxPref_Reg::Read(key, nullptr, &type, place, &cb);
    BLxPref_Reg::CloseKey(key);
    if (code != 0 || type != REG_BINARY || cb != sizeof(place)) return;
    SetWindowPos(dialogWindow, nullptr, CorrectedPlace(place[0], GetSystemMetrics(SM_CXSCREEN)),
                 CorrectedPlace(place[1], GetSystemMetrics(SM_CYSCREEN)), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOOWNERZORDER);
}

void SRxFindDialog::FillLookFor() {
    SendToControl(IDC_LOOK_FOR, CB_RESETCONTENT);
    if (IsAssemblyEnv()) {
        for (const LONG id : {STR_LOOK_FOR_DOCUMENTS, STR_LOOK_FOR_CONSTRAINTS,
                              STR_LOOK_FOR_FAS_ASSEMBLY, STR_LOOK_FOR_WELDS}) {
            LoadAString(IDC_LOOK_FOR, id);
        }
        SetLookForType(eLookForDocuments, false);
    } else if (IsPartEnv()) {
        for (const LONG id : {STR_LOOK_FOR_FAS_SKETCH, STR_LOOK_FOR_FAS_PART})
            LoadAString(IDC_LOOK_FOR, id);
        SetLookForType(eLookForFasSketch, false);
    } else if (!IsHalvrineEnv()) {
        LoadAString(IDC_LOOK_FOR, FILETYPE_DESIGN_DOCS);
    }
    if (IsAssemblyEnv() || IsPartEnv()) SetAString(IDC_LOOK_FOR_LABEL, STR_LOOK_FOR_LABEL);
    SetDropWidth(dialogWindow, IDC_LOOK_FOR);
    SendToControl(IDC_LOOK_FOR, CB_SETCURSEL, 0);
}

void SRxFindDialog::SetButtonIcon(int button, int icon) {
    const HANDLE image =
        LoadImageW(resourceInstance, MAKEINTRESOURCEW(icon), IMAGE_ICON, 0, 0, LR_DEFAULTSIZE);
    SendToControl(button, BM_SETIMAGE, IMAGE_ICON, image);
}

void SRxFindDialog::SetWindowIcon(int icon) {
    const HANDLE image =
        LoadImageW(resourceInstance, MAKEINTRESOURCEW(icon), IMAGE_ICON,
                   GetSystemMetrics(SM_CXSMICON), GetSystemMetrics(SM_CYSMICON), 0);
    if (image == nullptr) return;
    SendMessageW(dialogWindow, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(image));
}

void SRxFindDialog::ShowContext() {
    HRESULT status = S_OK;
    WCHAR text[kPathLength] = {};
    IQxLecternServer* const reader = GetServer(&status, text, kPathLength);
    if (status < 0 || reader == nullptr) return;  // the template's text stays
    const WText shown =
        *text != 0 ? WText(text) : ResourceText(resourceInstance, STR_DEFAULT_CONTEXT);
    SetDlgItemTextW(dialogWindow, IDC_CONTEXT_TEXT, shown.c_str());
}

// The search looks into one document: nothing else can be chosen.
void SRxFindDialog::SetUpForAssembly() {
    if (const MDxFileNameNode* document = GetSelection()) {
        SendToControl(IDC_PATH_LIST, CB_RESETCONTENT);
        SendToControl(IDC_PATH_LIST, CB_INSERTSTRING, 0, document->GetFileName());
        SendToControl(IDC_PATH_LIST, CB_SETCURSEL, 0);
    }
    for (const int control : {IDC_BROWSE, IDC_PATH_LIST})
        EnableWindow(GetDlgItem(dialogWindow, control), FALSE);
    for (const int control : {IDC_LOOK_FOLDER, IDC_LOOK_SUBFOLDERS, IDC_LOOK_RELATED}) {
        SendToControl(control, BM_SETCHECK, BST_UNCHECKED);
        EnableWindow(GetDlgItem(dialogWindow, control), FALSE);
        ShowWindow(GetDlgItem(dialogWindow, control), SW_HIDE);
    }
    ShowWindow(GetDlgItem(dialogWindow, IDC_ASSEMBLY_LABEL), SW_SHOW);
    SetDialogTitle(0);
}

bool SRxFindDialog::InitDialogControls() {
    const SRxQuietControls quiet(*this);
    MDxCalcSizeDialog(dialogWindow, true);
    RestorePlace();
    constexpr WPARAM kRowExtent = 32000;
    SendToControl(IDC_CRITERIA_LIST, LB_SETHORIZONTALEXTENT, kRowExtent);
    SendToControl(IDC_VALUE_EDIT, EM_LIMITTEXT, kValueLength);
    FillLookFor();
    bool result = InitProperties();
    SetButtonIcon(IDC_BROWSE, IDI_BROWSE);
    SetButtonIcon(IDHELP, IDI_HELP_BUTTON);
    SendToControl(IDC_JOIN_OR, BM_SETCHECK, BST_UNCHECKED);
    SendToControl(IDC_JOIN_AND, BM_SETCHECK, BST_CHECKED);
    // Without it the list is empty, which the buttons show.
    (void)InitDefaultCriteria();
    SendToControl(IDC_CRITERIA_LIST, LB_SETCURSEL, 0);
    SendToControl(IDC_PROPERTY_LIST, CB_SETCURSEL, static_cast<WPARAM>(-1));
    InitCustomConditions(kNoId);
    ShowContext();
    if (inApp && onlyAssemblies) {
        SetUpForAssembly();
        SetWindowIcon(IDI_FIND_IN_ASSEMBLY);
    } else {
        ShowWindow(GetDlgItem(dialogWindow, IDC_ASSEMBLY_LABEL), SW_HIDE);
        SendToControl(IDC_LOOK_SUBFOLDERS, BM_SETCHECK, BST_UNCHECKED);
        SendToControl(IDC_LOOK_RELATED, BM_SETCHECK, BST_UNCHECKED);
        SendToControl(IDC_LOOK_FOLDER, BM_SETCHECK, BST_CHECKED);
        result = InitPaths();
        SetWindowIcon(IDI_FIND);
    }
    SetFocus(GetDlgItem(dialogWindow, IDC_PROPERTY_LIST));
    return result;
}
