#include "dialog/find_dialog.h"

#include "module/module_state.h"
#include "module/running_application.h"
#include "module/user_names.h"
#include "outside/md_messages.h"
#include "outside/md_server.h"
#include "platform/wtext.h"

namespace {

constexpr std::size_t kContextLength = 261;  // units of a context's name with its terminator

HRESULT ReadServerContext(SRxFindDialog& dialog, BSTR* name) {
    IQxWorkContext* context = nullptr;
    const HRESULT status = dialog.server->GetWorkContext(&context);
    if (context == nullptr) return status;
    const HRESULT named = context->GetWorkContextName(name);
    context->Release();
    return named;
}

}  // namespace

SRxFindDialog::SRxFindDialog(HINSTANCE instance, MDxFileNameNode** slot, IQxLecternServer* reader,
                             eLookFor* mirror, SRxFindDlgNotify* listener)
    : resourceInstance(instance),
      selectionSlot(slot),
      callerOwnsSelection(slot != nullptr),
      server(reader),
      lookForOut(mirror),
      lookForStrings{{eLookForDocuments, STR_LOOK_FOR_DOCUMENTS},
                     {eLookForConstraints, STR_LOOK_FOR_CONSTRAINTS},
                     {eLookForFasAssembly, STR_LOOK_FOR_FAS_ASSEMBLY},
                     {eLookForWelds, STR_LOOK_FOR_WELDS},
                     {eLookForFasSketch, STR_LOOK_FOR_FAS_SKETCH},
                     {eLookForFasPart, STR_LOOK_FOR_FAS_PART},
                     {eLookForFiles, FILETYPE_DESIGN_DOCS}},
      notify(listener) {
    ++objectCount;
    if (server != nullptr) server->AddRef();
}

bool SRxFindDialog::Initialize() {
    INITCOMMONCONTROLSEX classes = {};
    classes.dwSize = sizeof(classes);
    classes.dwICC = ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES | ICC_DATE_CLASSES;
    const bool ready = InitCommonControlsEx(&classes) != FALSE;
    if (GetServer(nullptr, nullptr, 0) != nullptr) ReadApplicationUserName(*server, appUserName);
    ReadLoginUserName(loginUserName);
    return ready;
}

IQxLecternServer* SRxFindDialog::GetServer(HRESULT* hr, WCHAR* text, std::size_t textSize) {
    WCHAR name[kContextLength] = {};
    HRESULT status = S_OK;
    if (!inApp && server == nullptr) {
        status = MDxGetLecternServer(&server, true, name, kContextLength);
    }
    if (text != nullptr) {
        // The server's own answer wins over what came with the server; the application is asked
        // when neither gave one.
        BSTR context = nullptr;
        if (server != nullptr) status = ReadServerContext(*this, &context);
        if (name[0] == 0 && context == nullptr) {
            const HRESULT asked = ReadApplicationContext(&context);
            // A failure there takes nothing away from the server's answer.
            if (SUCCEEDED(asked) || (server == nullptr && SUCCEEDED(status))) status = asked;
        }
        if (SysStringLen(context) != 0) {
            TakeText(name, kContextLength, context);
        } else {
            SysFreeString(context);
        }
        (void)wtext::CopyWhole(text, textSize, name);
    }
    if (hr != nullptr) *hr = status;
    return server;
}

MDxFileNameNode* SRxFindDialog::GetSelection() const {
    return selectionSlot != nullptr ? *selectionSlot : nullptr;
}

void SRxFindDialog::SetSelection(MDxFileNameNode** slot) {
    selectionSlot = slot;
    if (slot != nullptr) callerOwnsSelection = true;
}

void SRxFindDialog::SetParams(const SRxShellExtParameters& newParams) {
    params = newParams;
}

void SRxFindDialog::AllowMultiSelect(bool allow) {
    allowMultiSelect = allow;
}

bool SRxFindDialog::AllowsMultiSelect() const {
    return allowMultiSelect;
}

void SRxFindDialog::SetModal(bool value) {
    modal = value;
}

bool SRxFindDialog::IsModal() const {
    return modal;
}

void SRxFindDialog::SetInApp(bool value) {
    inApp = value;
}

bool SRxFindDialog::InApp() const {
    return inApp;
}

void SRxFindDialog::SetOnlyAssem(bool value) {
    onlyAssemblies = value;
}

bool SRxFindDialog::SearchOnlyAssem() const {
    return onlyAssemblies;
}

void SRxFindDialog::SetAccessPoint(eAccessPoint value) {
    accessPoint = value;
}

void SRxFindDialog::NotifyOnOK() {
    if (notify == nullptr) return;
    const SRxCriteriaNode* node = criteriaHead;
    while (node != nullptr && !node->NeedsDocumentProperties())
        node = node->nextCriterion;
    notify->OnOK(node != nullptr);
}

void SRxFindDialog::NotifyOnFindDone() {
    if (notify != nullptr) notify->OnFindDone();
}

void SRxFindDialog::NotifyOnCancel() {
    if (notify != nullptr) notify->OnCancel();
}

bool SRxFindDialog::SearchComplete(bool result) {
    searching = false;
    EnableWindow(dialogWindow, TRUE);
    if (criteriaHead != nullptr) EnableButtons(TRUE);
    EnableWindow(GetDlgItem(dialogWindow, IDCANCEL), TRUE);
    return result;
}

void SRxFindDialog::EnableButtons(BOOL enable) {
    for (const int control : {IDC_DELETE, IDC_SAVE_SEARCH, IDOK}) {
        EnableWindow(GetDlgItem(dialogWindow, control), enable);
    }
    if (!enable && !searching) EnableWindow(GetDlgItem(dialogWindow, IDC_ADD), TRUE);
}
