// The object behind one opening of the find dialog: the criteria, the mode that its entry chose,
// the reading server and the slot through which picked files go back to the caller.
#pragma once

#include <cstddef>
#include <map>

#include "dialog/criteria_node.h"
#include "dialog/message_kinds.h"
#include "outside/md_file_name_node.h"
#include "resource/control_ids.h"
#include "shell/shell_ext_parameters.h"

class SRxSearchObserver;

inline constexpr std::size_t kLabelLength = 128;  // units of a label, a name, a loaded string
inline constexpr std::size_t kPathLength = 260;   // units of a path; each with its terminator

enum eLookFor : unsigned {
    eLookForNone = 0,
    eLookForDocuments = 1,
    eLookForConstraints = 2,
    eLookForFasAssembly = 3,
    eLookForWelds = 4,
    eLookForFasSketch = 5,
    eLookForFasPart = 6,
    eLookForFiles = 7
};

enum eAccessPoint : unsigned {
    eAccessNone = 0,
    eAccessAssembly = 1,
    eAccessAssemblyAlt = 2,
    eAccessPart = 3,
    eAccessPartAlt = 4,
    eAccessFindFiles = 5,
    eAccessShellWindow = 6,
    eAccessShellNoWindow = 7
};

// How wide a class of files a search may touch.
enum eFileTypeSearch : unsigned {
    FILE_SEARCH_ANY = 0,
    FILE_SEARCH_MODELS = 1,
    FILE_SEARCH_OFFICE = 2,
    FILE_SEARCH_IMPORT = 3
};

// A caller's listener; never owned.
class SRxFindDlgNotify {
public:
    virtual void Reserved() = 0;  // not called by this module
    // Before the search starts; the argument: some criterion needs a document's properties.
    virtual void OnOK(bool needsDocumentProperties) = 0;
    virtual void OnFindDone() = 0;
    // The user closed a modeless dialog: the window is gone, the object not yet.
    virtual void OnCancel() = 0;

protected:
    ~SRxFindDlgNotify() = default;
};

// The window of the open modeless find dialog, null otherwise. It hands its keys to that dialog.
extern HWND modelessDialog;

// Made with new by every entry; frees itself in CloseDialog.
class SRxFindDialog {
public:
    // All but the first may be null. `server` gets a reference; the other three stay the caller's
    // and outlive the object.
    SRxFindDialog(HINSTANCE resourceInstance, MDxFileNameNode** selectionSlot,
                  IQxLecternServer* server, eLookFor* lookForOut, SRxFindDlgNotify* notify);
    ~SRxFindDialog();
    SRxFindDialog(const SRxFindDialog&) = delete;
    SRxFindDialog& operator=(const SRxFindDialog&) = delete;

    // The user's names, for the conditions that ask for them. `inApp` is set before.
    bool Initialize();
    // Ends the dialog's window and frees the object. `notifyCaller`: the user closed it, and a
    // listener of a modeless dialog hears of it, the window being gone and the object not yet. Does
    // nothing while that listener is being told.
    void CloseDialog(bool notifyCaller);
    // Keeps the window's place for the next opening and frees the icons of the buttons. Always
    // true.
    bool OnExit();
    // The reading server, created on first need outside the application; null without one. `hr` and
    // `text` (`textSize` units) may be null; the text names the context that the server works in,
    // empty when none is known or it doesn't fit.
    IQxLecternServer* GetServer(HRESULT* hr, WCHAR* text, std::size_t textSize);
    // Shares the caller's block.
    void SetParams(const SRxShellExtParameters& newParams) { params = newParams; }
    MDxFileNameNode* GetSelection() const;
    void SetSelection(MDxFileNameNode** slot);

    void NotifyOnOK();
    void NotifyOnFindDone();
    void NotifyOnCancel();
    // The end of a search: the dialog can be used again. Gives `result` back.
    bool SearchComplete(bool result);
    void EnableButtons(BOOL enable);

    void AllowMultiSelect(bool allow) { allowMultiSelect = allow; }
    bool AllowsMultiSelect() const { return allowMultiSelect; }
    void SetModal(bool value) { modal = value; }
    bool IsModal() const { return modal; }
    void SetInApp(bool value) { inApp = value; }
    bool InApp() const { return inApp; }
    void SetOnlyAssem(bool value) { onlyAssemblies = value; }
    bool SearchOnlyAssem() const { return onlyAssemblies; }
    void SetAccessPoint(eAccessPoint value) { accessPoint = value; }

    // The class of files that the list implies with this criterion; never below the present one.
    eFileTypeSearch GetFileSearchType(const SRxCriteriaNode& node) const;
    // The class that a criterion's property allows.
    eFileTypeSearch GetPropSearchType(const SRxCriteriaNode& node) const;
    // Narrows `propSearchType` to what the criterion allows.
    bool SetPropSearchType(const SRxCriteriaNode& node);

    HINSTANCE resourceInstance;
    SRxCriteriaNode* criteriaHead = nullptr;  // owned
    WCHAR appUserName[kLabelLength] = {};
    WCHAR loginUserName[kLabelLength] = {};
    bool updatingControls = false;
    HWND dialogWindow = nullptr;
    bool allowMultiSelect = true;
    MDxFileNameNode** selectionSlot;
    bool callerOwnsSelection;
    bool modal = false;
    bool lookInFolders = true;
    bool inApp = false;
    bool onlyAssemblies = false;
    bool pendingCriterion = false;
    eFileTypeSearch fileSearchType = FILE_SEARCH_ANY;
    eFileTypeSearch propSearchType = FILE_SEARCH_ANY;
    bool searching = false;
    IQxLecternServer* server;  // one reference
    SRxShellExtParameters params;
    eAccessPoint accessPoint = eAccessNone;
    eLookFor lookFor = eLookForNone;
    eLookFor* lookForOut;
    std::map<eLookFor, LONG> lookForStrings;
    SRxFindDlgNotify* notify;
    bool notifying = false;

    // Behind the fields that other modules know: who hears what a search looks at; may be null.
    SRxSearchObserver* observer = nullptr;

private:
    void SavePlace() const;
    void ReadAppUserName();
    HRESULT ReadServerContext(WCHAR* text, std::size_t textSize);
};
