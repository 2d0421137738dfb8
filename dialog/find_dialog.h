// The object behind one opening of the find dialog: the criteria, the mode that its entry chose,
// the reading server and the slot through which picked files go back to the caller.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <span>
#include <vector>

#include "criteria/catalogue.h"
#include "criteria/list_rules.h"
#include "criteria/modes.h"
#include "dialog/dialog_life.h"
#include "dialog/find_dialog_links.h"
#include "module/message_kinds.h"
#include "module/module_api.h"
#include "module/shell_ext_parameters.h"
#include "module/text_lengths.h"
#include "outside/md_file_name_node.h"
#include "platform/wtext.h"
#include "resource/control_ids.h"

struct SRxFoundList;
struct StoredSearch;

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

// The window of the modeless find dialog that was opened last, null when there is none.
extern HWND modelessDialog;
// Hands the keys of the thread to the open modeless dialogs, while there are find dialogs.
extern HHOOK keyboardHook;

// Where a saved window coordinate lies on a screen of this size.
LONG CorrectedPlace(LONG saved, LONG screen);

// All its operations are defined out of line, since only such ones leave the module.
//
// Made with new by every entry, and frees itself when its window ends: by CloseDialog, or with the
// window's owner. One whose window could not be made is freed by its entry.
class SR_API SRxFindDialog {
public:
    // All but the first may be null. `server` gets a reference; the other three stay the caller's
    // and outlive the object, or until their owner is held by it.
    SRxFindDialog(HINSTANCE resourceInstance, MDxFileNameNode** selectionSlot,
                  IQxLecternServer* server, eLookFor* lookForOut, SRxFindDlgNotify* notify);
    ~SRxFindDialog();
    SRxFindDialog(const SRxFindDialog&) = delete;
    SRxFindDialog& operator=(const SRxFindDialog&) = delete;

    // The user's names, for the conditions that ask for them. `inApp` is set before.
    bool Initialize();
    // Makes the window, modal or modeless, with `parent` (may be null) as its owner. 0 when there
    // was one; without one 1, or -1 for a modal dialog, and the object is the caller's to free. A
    // modal dialog has ended when this returns, and the object is gone.
    LONG InvokeCommand(HWND parent);
    // Ends the found dialogs, then the dialog's own window, and frees the object. `notifyCaller`:
    // the user closed it, and a listener of a modeless dialog hears of it, the window being gone
    // and the object not yet. Does nothing while that listener is being told. While a handler, a
    // notification or a search of this object is on the stack, the search is stopped, the windows
    // hide, the caller's pointers are let go at once, and the rest waits for the stack to unwind.
    void CloseDialog(bool notifyCaller);
    // Keeps the window's place for the next opening and frees the icons of the buttons. Always
    // true.
    bool OnExit();
    // The reading server, created on first need outside the application; null without one. `hr` and
    // `text` (`textSize` units) may be null; the text names the context that the server works in,
    // empty when none is known or it doesn't fit.
    IQxLecternServer* GetServer(HRESULT* hr, WCHAR* text, std::size_t textSize);
    // Shares the caller's block.
    void SetParams(const SRxShellExtParameters& newParams);
    MDxFileNameNode* GetSelection() const;
    void SetSelection(MDxFileNameNode** slot);

    void NotifyOnOK();
    void NotifyOnFindDone();
    void NotifyOnCancel();
    // The end of a search: the dialog can be used again. Gives `result` back.
    bool SearchComplete(bool result);
    void EnableButtons(BOOL enable);

    void AllowMultiSelect(bool allow);
    bool AllowsMultiSelect() const;
    void SetModal(bool value);
    bool IsModal() const;
    void SetInApp(bool value);
    bool InApp() const;
    void SetOnlyAssem(bool value);
    bool SearchOnlyAssem() const;
    void SetAccessPoint(eAccessPoint value);

    // Places a criterion in the list: in the place of an equal one, behind the others of its
    // property, or at the end; asks and refuses in between. `appendOnly`: at the end, and nothing
    // is asked. True: it is in the list, which owns it now. `outIndex` gets the row of the list box
    // to replace or to insert at, `outReplaced` whether an equal one went; both may be null.
    [[nodiscard]] bool AddNode(SRxCriteriaNode* node, bool appendOnly, int* outIndex,
                               bool* outReplaced);
    // Takes a node out of the list, destroys it and clears the pointer; one that the list doesn't
    // have stays as it is. Always true.
    bool DeleteNode(SRxCriteriaNode** node);
    // The text of a criterion's row, `bufferSize` units with the terminator. False only for a null
    // buffer.
    bool BuildCriteriaString(const SRxCriteriaNode* node, WCHAR* buffer,
                             std::size_t bufferSize) const;
    // Whether a criterion fits the classes of files that the list implies.
    bool IsValidSearch(const SRxCriteriaNode& node) const;
    // Starts the list, which is empty, with the criterion of the environment, and gives it a row
    // where it has one.
    [[nodiscard]] bool InitDefaultCriteria();

    // The lists of the dialog, filled from the catalogue. Each refill loses what was chosen before.
    bool InitProperties();
    void LoadUserProps();
    void InitConditions();
    // For a custom property: `item` of the property list, -1 for its selection.
    void InitCustomConditions(int item);
    // Shows the value control that property and condition ask for.
    bool EnableValueEdit();
    eInputType GetInputType(int propertyStringId) const;
    // Whether `text` may be taken as the value.
    bool IsInputOk(int propertyStringId, const WCHAR* text, int conditionId) const;
    // False when the string isn't there: nothing is added or set then.
    bool LoadAString(int control, int stringId);
    bool SetAString(int control, int stringId);
    // False when the list refuses the text.
    bool StoreAString(int control, const WCHAR* text, int itemData);

    // What is looked for: title, list of properties, the caller's variable. `selectItem`: the list
    // of kinds follows. Without arguments the selected kind is taken.
    void SetLookForType(eLookFor value, bool selectItem);
    void SetLookForType();

    // The commands of the dialog.
    bool OnCommandAdd();
    bool OnCommandDelete();
    bool OnCommandCriterList();
    bool OnCommandPropertyList(WPARAM wParam);
    bool OnCommandPropertyListKillFocus();
    bool OnCommandConditionList();
    bool OnCommandValueEdit();
    bool OnCommandValueList();
    bool OnNotifyValueDate(const NMDATETIMECHANGE* change);
    bool OnCommandNewSearch();
    // Starts a search and its found dialog: true when there is one. A modal one has ended by then,
    // and if this object was closed meanwhile it is gone.
    bool OnCommandSearchNow();

    bool OnCommandBrowse();
    bool OnCommandFolder();
    bool OnCommandPathKillFocus();
    // The look-in box turns into the list of recent files.
    bool OnCommandRelatedDocs();
    // Fills the look-in box from its text: the folder, its subfolders, the drives, the last place.
    bool InitPaths();
    // Makes a full path of an entry of a folder's listing; false when it is none, which clears one
    // of less than two units.
    bool PathReformat(const WText& base, WText& entry) const;
    // Fills the controls of a dialog that opens, by the mode that its entry chose.
    bool InitDialogControls();
    // Asks for a name, or takes that of the last search. False only without memory for the dialog.
    bool OnCommandSaveSearch(bool lastSearch);
    bool OnCommandOpenSearch(bool lastSearch);

    // The name under which this process keeps the last search of the environment; empty where none
    // is kept.
    void GetLastSearchName(WCHAR* name, std::size_t size) const;
    void AddCurrentProcessId(WCHAR* name, std::size_t size) const;
    // Those of every environment and process.
    void DeleteLastSearches();
    bool IsAssemblyEnv() const;
    bool IsPartEnv() const;
    bool IsHalvrineEnv() const;
    // The argument is not used.
    void SetDialogTitle(unsigned);
    // Cuts a text at its first "<", in place.
    void RemoveSand(const WCHAR* text);

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

    // After the fields that other modules know.
    SRxFindDialogLinks links{*this};
    // The searches whose records are alive, each with its found dialog if it has one. The records
    // lead here, so they end with this object.
    std::vector<SRxFoundList*> searches;
    HWND nestedDialog = nullptr;  // the open dialog of the saved searches
    SRxDialogLife life{*this};
};

// While it lives, what the controls tell is the dialog's own doing.
class SRxQuietControls {
public:
    explicit SRxQuietControls(SRxFindDialog& dialog) : dialog_(dialog) {
        dialog_.updatingControls = true;
    }
    ~SRxQuietControls() { dialog_.updatingControls = false; }
    SRxQuietControls(const SRxQuietControls&) = delete;
    SRxQuietControls& operator=(const SRxQuietControls&) = delete;

private:
    SRxFindDialog& dialog_;
};

// The exported dialog procedure of the find dialog; the object is its parameter.
extern "C" SR_API INT_PTR CALLBACK FindDlgProc(HWND window, UINT message, WPARAM wParam,
                                               LPARAM lParam);
