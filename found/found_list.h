// The record of one search run, first argument of every function of the engine.
#pragma once

#include <memory>
#include <vector>

#include "dialog/find_dialog.h"
#include "found/found_row_index.h"
#include "outside/md_properties.h"

// What one criterion said of the file at hand.
struct CriterionOutcome {
    bool result = false;
    // The file alone can't decide it: it counts as true and travels on the record.
    bool undecided = false;
};

// How far the found dialog has come with its search.
enum class eFoundStage { Prepared, Searching, Finished };

struct SRxFoundList {
    // `slot` is the caller's, for the picked files or the hits; may be null.
    SRxFoundList(SRxFindDialog& owner, MDxFileNameNode** slot);
    ~SRxFoundList();
    SRxFoundList(const SRxFoundList&) = delete;
    SRxFoundList& operator=(const SRxFoundList&) = delete;

    SRxFindDialog* dialog;
    HWND window = nullptr;  // the found dialog; null where none exists
    MDxFileNameNode** selectionSlot;
    MDxFileNameNode* ownSelection = nullptr;
    MDxFileNameNode* rootNode = nullptr;  // the work chain, owned
    IQxLecternServer* server = nullptr;   // not owned
    unsigned matchCase = 0;               // nonzero: letters' case counts
    bool returnSelection;
    bool multiSelect = true;
    bool stopRequested = false;
    bool sharingMessageShown = false;
    SRxShellExtParameters params;
    bool skippedCriterionSeen = false;
    unsigned pumpCounter = 10;  // so that the first progress text pumps
    UINT_PTR timerId = 0;
    HWND statusBar = nullptr;
    LONG bottomMargin = -1;
    LONG rightMargin = -1;
    LONG buttonGap = -1;
    LONG statusBottomMargin = -1;
    LONG statusLeft = -1;
    LONG listBottomMargin = -1;

    // Behind the fields that other modules know.
    // The route hands the caller's own nodes to the file test: each leaves with a record for every
    // criterion, hit or not.
    bool keepsRecords = false;
    std::vector<CriterionOutcome> outcomes;
    eFoundStage stage = eFoundStage::Prepared;
    // The window was destroyed in mid-search: the record lives on until the search has ended.
    bool windowGone = false;
    int pendingResult = 0;    // what the dialog ends with behind a search that was told to stop
    bool rowsUnseen = false;  // rows were added since the list was painted
    FoundRowIndex rowIndex;
    WText shownPath;  // in the progress text
    // Set to true by the destructor, for one who has to know; may be null.
    bool* destroyed = nullptr;
};
