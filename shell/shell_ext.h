// The object that starts the find dialog. The shell knows it as a context menu extension that adds
// no entry; other modules of the application create it, start the dialog through the same
// InvokeCommand, and drive the open dialog by a few operations of their own.
#pragma once

#include <memory>

#include "dialog/find_dialog.h"
#include "module/module_api.h"

inline constexpr CLSID CLSID_SRxShellExt = {
    0x8D1F08A5, 0x3521, 0x11D6, {0x98, 0x8B, 0x00, 0x10, 0xB5, 0x7A, 0x8B, 0xB7}};

// Counted, and made with a count of 0: the first QueryInterface makes it the caller's. An open
// dialog holds a reference, since its results are written into this object.
class SR_API SRxShellExt : public IContextMenu, public IShellExtInit {
public:
    SRxShellExt();
    SRxShellExt(const SRxShellExt&) = delete;
    SRxShellExt& operator=(const SRxShellExt&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    // Adds nothing.
    HRESULT STDMETHODCALLTYPE QueryContextMenu(HMENU menu, UINT index, UINT firstId, UINT lastId,
                                               UINT flags) override;
    // Opens the find dialog and returns: 0 with a window, 1 without. The record's `lpVerb` is null
    // for the shell. For any other caller `lpParameters` is the value of an SRxShellExtParameters
    // (may be null), `lpDirectory` a chain of MDxFileNameNode to search (may be null), and with it
    // `nShow` an eAccessPoint.
    HRESULT STDMETHODCALLTYPE InvokeCommand(CMINVOKECOMMANDINFO* info) override;
    // `name` holds `maxChars` units, or bytes for the types that aren't wide.
    HRESULT STDMETHODCALLTYPE GetCommandString(UINT_PTR command, UINT type, UINT* reserved,
                                               char* name, UINT maxChars) override;
    virtual ~SRxShellExt();

    // Takes the first of the files that `newData` (may be null) carries.
    HRESULT STDMETHODCALLTYPE Initialize(LPCITEMIDLIST folder, IDataObject* newData,
                                         HKEY key) override;

    // Before InvokeCommand; the listener stays the caller's.
    void SetFindDlgNotif(SRxFindDlgNotify* notify);
    eLookFor GetLookForType() const;
    // Null, and nothing, when no dialog is open any more.
    HWND GetFindDialogHWND() const;
    void CloseDialog();
    // The chain of documents to search out of the `lpDirectory` of a record, and the chain found,
    // a new one, into it. Both are the caller's.
    void SetCmdInfo(CMINVOKECOMMANDINFO* info);
    void FillCmdInfo(CMINVOKECOMMANDINFO* info) const;
    HINSTANCE GetResourceHandle() const;

private:
    void TellNoDialog() const;
    HRESULT StartDialog(CMINVOKECOMMANDINFO& info);
    void SetUpForShell(const CMINVOKECOMMANDINFO& info);
    void SetUpForApplication(CMINVOKECOMMANDINFO& info, const SRxShellExtParameters& parameters);

    WCHAR selectedFile[kPathLength] = {};
    ULONG refCount = 0;
    IDataObject* dataObject = nullptr;  // one reference
    LPCITEMIDLIST folderIdList = nullptr;
    eLookFor lookFor = eLookForNone;
    SRxFindDlgNotify* findDlgNotify = nullptr;
    // Frees itself once it has a window, and clears this.
    SRxFindDialog* findDialog = nullptr;
    MDxFileNameNode* selection = nullptr;  // the caller's
    // The dialog of the last InvokeCommand when it got no window.
    std::unique_ptr<SRxFindDialog> windowless;
};
