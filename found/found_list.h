// The record of a found dialog: its window, the search that it carries and the slot for what is
// picked. On the assembly-only route there is no window, and the slot takes the hits themselves.
#pragma once

#include "found/found_list_owner.h"
#include "found/found_row_index.h"
#include "platform/win.h"
#include "search/search_sink.h"

// How far the found dialog has come with its search.
enum class eFoundStage { Prepared, Searching, Finished };

// Shows a search in the found dialog: rows, status bar, message pump, buttons.
class SRxFoundRowsSink final : public SRxSearchSink {
public:
    explicit SRxFoundRowsSink(SRxFoundList& list) : list_(list) {}

    void Begin(SRxSearchRun& run) override;
    bool End(SRxSearchRun& run, bool result) override;
    bool OnProgress(SRxSearchRun& run, const WCHAR* path) override;
    void OnHit(SRxSearchRun& run, const WCHAR* folder, const WCHAR* name, MDxFileNameNode& node,
               int& insertIndex) override;
    void OnFolderFailed(const WCHAR* folder) override;
    void OnFileInUse(const WCHAR* file) override;
    void OnFileFailed(SRxSearchRun& run, const WCHAR* file, HRESULT status) override;

private:
    SRxFoundList& list_;
    HCURSOR earlierCursor_ = nullptr;
};

// Hangs the hits of a search on the record's slot, each file once.
class SRxHitChainSink final : public SRxSearchSink {
public:
    explicit SRxHitChainSink(SRxFoundList& list) : list_(list) {}

    void Begin(SRxSearchRun& run) override;
    bool End(SRxSearchRun& run, bool result) override;
    bool OnProgress(SRxSearchRun&, const WCHAR*) override { return false; }
    void OnHit(SRxSearchRun& run, const WCHAR* folder, const WCHAR* name, MDxFileNameNode& node,
               int& insertIndex) override;
    void OnFolderFailed(const WCHAR* folder) override;
    void OnFileInUse(const WCHAR* file) override;
    void OnFileFailed(SRxSearchRun& run, const WCHAR* file, HRESULT status) override;

private:
    SRxFoundList& list_;
    HCURSOR earlierCursor_ = nullptr;
};

struct SRxFoundList {
    // `slot` is the caller's, for the picked files or the hits; may be null.
    SRxFoundList(SRxFoundListOwner& owner, MDxFileNameNode** slot);
    ~SRxFoundList();
    SRxFoundList(const SRxFoundList&) = delete;
    SRxFoundList& operator=(const SRxFoundList&) = delete;

    SRxFoundListOwner* dialog;
    HWND window = nullptr;  // the found dialog; null where none exists
    MDxFileNameNode** selectionSlot;
    MDxFileNameNode* ownSelection = nullptr;
    bool returnSelection;
    bool multiSelect = true;
    UINT_PTR timerId = 0;
    HWND statusBar = nullptr;
    LONG bottomMargin = -1;
    LONG rightMargin = -1;
    LONG buttonGap = -1;
    LONG statusBottomMargin = -1;
    LONG statusLeft = -1;
    LONG listBottomMargin = -1;

    SRxFoundRowsSink rowsSink{*this};
    SRxHitChainSink chainSink{*this};
    SRxSearchRun run;
    unsigned pumpCounter = 10;  // so that the first progress text pumps
    eFoundStage stage = eFoundStage::Prepared;
    // The window was destroyed in mid-search: the record lives on until the search has ended.
    bool windowGone = false;
    int pendingResult = 0;    // what the dialog ends with after a search that was told to stop
    bool rowsUnseen = false;  // rows were added since the list was painted
    FoundRowIndex rowIndex;
    WText shownPath;  // in the progress text
    // Set to true by the destructor, for one who has to know; may be null.
    bool* destroyed = nullptr;
};
