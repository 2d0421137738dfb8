#include "shell/shell_ext.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "module/module_state.h"
#include "outside/md_messages.h"
#include "platform/new_or_null.h"
#include "platform/number_text.h"

SRxShellExt::SRxShellExt() {
    ++objectCount;
    (void)GetResourceHandle();
}

SRxShellExt::~SRxShellExt() {
    if (dataObject != nullptr) dataObject->Release();
    --objectCount;
}

HRESULT STDMETHODCALLTYPE SRxShellExt::QueryInterface(REFIID riid, void** ppv) {
    *ppv = nullptr;
    if (riid == IID_IShellExtInit || riid == IID_IUnknown) {
        *ppv = static_cast<IShellExtInit*>(this);
    } else if (riid == IID_IContextMenu) {
        *ppv = static_cast<IContextMenu*>(this);
    } else {
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

ULONG STDMETHODCALLTYPE SRxShellExt::AddRef() {
    return ++refCount;
}

ULONG STDMETHODCALLTYPE SRxShellExt::Release() {
    const ULONG left = --refCount;
    if (left == 0) delete this;
    return left;
}

HRESULT STDMETHODCALLTYPE SRxShellExt::QueryContextMenu(HMENU, UINT, UINT, UINT, UINT) {
    return S_OK;
}

HRESULT STDMETHODCALLTYPE SRxShellExt::Initialize(LPCITEMIDLIST folder, IDataObject* newData,
                                                  HKEY) {
    if (newData == nullptr) return S_OK;
    newData->AddRef();
    if (dataObject != nullptr) dataObject->Release();
    dataObject = newData;
    folderIdList = folder;

    constexpr LONG kAllFiles = -1;
    FORMATETC format = {CF_HDROP, nullptr, DVASPECT_CONTENT, kAllFiles, TYMED_HGLOBAL};
    STGMEDIUM medium = {};
    const HRESULT status = dataObject->GetData(&format, &medium);
    if (FAILED(status)) return E_FAIL;
    DragQueryFileW(static_cast<HDROP>(medium.hGlobal), 0, selectedFile, kPathLength);
    ReleaseStgMedium(&medium);
    return status;
}

HRESULT STDMETHODCALLTYPE SRxShellExt::GetCommandString(UINT_PTR, UINT type, UINT*, char* name,
                                                        UINT maxChars) {
    const bool isWide = type == GCS_VERBW || type == GCS_HELPTEXTW || type == GCS_VALIDATEW;
    const std::size_t room = std::size_t{maxChars} * (isWide ? sizeof(WCHAR) : 1);
    // Empty for who reads units and for who reads bytes, as far as there is room.
    if (name != nullptr) std::memset(name, 0, std::min(room, sizeof(WCHAR)));
    if (!isWide) return E_INVALIDARG;
    if (type != GCS_HELPTEXTW || name == nullptr || maxChars == 0) return S_OK;
    WCHAR text[kLabelLength] = {};
    const auto units = static_cast<int>(std::min<std::size_t>(maxChars, kLabelLength));
    LoadStringW(GetResourceHandle(), STR_HELP_TEXT, text, units);  // cuts it
    std::memcpy(name, text, (wtext::Length(text) + 1) * sizeof(WCHAR));
    return S_OK;
}

HRESULT STDMETHODCALLTYPE SRxShellExt::InvokeCommand(CMINVOKECOMMANDINFO* info) {
    constexpr HRESULT kNoDialog = 1;
    AddRef();  // to live through the call
    HRESULT result = kNoDialog;
    try {
        result = StartDialog(*info);
    } catch (...) {
        // Not set up, so it has no window.
        findDialog = nullptr;
        windowless = nullptr;
        TellNoDialog();
    }
    Release();
    return result;
}

void SRxShellExt::TellNoDialog() const {
    try {
        DisplayMessageId(GetResourceHandle(), MSG_DIALOG_FAILED, MB_OK, eKindError,
                         STR_FIND_CONTEXT, nullptr);
    } catch (...) {
        // The result tells it as well.
    }
}

HRESULT SRxShellExt::StartDialog(CMINVOKECOMMANDINFO& info) {
    constexpr HRESULT kNoDialog = 1;
    const SRxShellExtParameters parameters(info.lpParameters);
    windowless = NewOrNull<SRxFindDialog>(GetResourceHandle(), nullptr, parameters.GetServer(),
                                          &lookFor, findDlgNotify);
    findDialog = windowless.get();
    if (findDialog == nullptr) {
        TellNoDialog();
        return kNoDialog;
    }
    if (info.lpVerb == nullptr) {
        SetUpForShell(info);
    } else {
        SetUpForApplication(info, parameters);
    }
    // The dialog owns itself from here on, and this object for as long as it may write into it.
    SRxFindDialog* const dialog = windowless.release();
    dialog->life.HoldLender(static_cast<IContextMenu*>(this), &findDialog);
    const LONG result = dialog->InvokeCommand(info.hwnd);
    if (result == 0) return result;
    dialog->life.HoldLender(nullptr, nullptr);
    windowless.reset(dialog);
    findDialog = dialog;
    return kNoDialog;
}

void SRxShellExt::SetUpForShell(const CMINVOKECOMMANDINFO& info) {
    findDialog->Initialize();
    findDialog->SetAccessPoint(info.hwnd != nullptr ? eAccessShellWindow : eAccessShellNoWindow);
    // Numbers are read as the user writes them.
    SetUserLocale();
}

void SRxShellExt::SetUpForApplication(CMINVOKECOMMANDINFO& info,
                                      const SRxShellExtParameters& parameters) {
    findDialog->SetInApp(true);
    findDialog->SetModal(false);
    findDialog->Initialize();
    if (info.lpDirectory != nullptr) {
        SetCmdInfo(&info);
        findDialog->SetSelection(&selection);
        findDialog->SetOnlyAssem(true);
        findDialog->SetAccessPoint(static_cast<eAccessPoint>(info.nShow));
    }
    findDialog->SetParams(parameters);
}

void SRxShellExt::SetFindDlgNotif(SRxFindDlgNotify* notify) {
    findDlgNotify = notify;
}

eLookFor SRxShellExt::GetLookForType() const {
    return lookFor;
}

HWND SRxShellExt::GetFindDialogHWND() const {
    return findDialog != nullptr ? findDialog->dialogWindow : nullptr;
}

void SRxShellExt::CloseDialog() {
    if (findDialog == nullptr) return;
    // One without a window frees itself in the same way.
    if (findDialog == windowless.get()) (void)windowless.release();
    std::exchange(findDialog, nullptr)->CloseDialog(false);
}

void SRxShellExt::SetCmdInfo(CMINVOKECOMMANDINFO* info) {
    selection = reinterpret_cast<MDxFileNameNode*>(const_cast<char*>(info->lpDirectory));
}

void SRxShellExt::FillCmdInfo(CMINVOKECOMMANDINFO* info) const {
    if (info == nullptr || info->lpVerb == nullptr) return;
    info->lpDirectory = reinterpret_cast<const char*>(selection);
}

HINSTANCE SRxShellExt::GetResourceHandle() const {
    return SrResReturnHandle();
}
