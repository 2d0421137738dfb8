// One run of a search as plain data: what is looked for, where it comes from, and how far the run
// has come. First argument of every function of the engine.
#pragma once

#include <vector>

#include "criteria/criteria_node.h"
#include "criteria/file_types.h"
#include "criteria/user_names.h"
#include "module/shell_ext_parameters.h"
#include "outside/md_file_name_node.h"
#include "outside/md_properties.h"
#include "platform/wtext.h"

class SRxSearchSink;

enum class eSearchRoute { Selection, Folders, RelatedDocuments };

// What is looked for, as it is when the search starts.
struct SRxSearchQuery {
    // The list; the maker keeps it alive. The run works out its `numericValue` fields.
    SRxCriteriaNode* criteria = nullptr;
    eFileTypeSearch propSearchType = FILE_SEARCH_ANY;  // what the properties of the list allow
    SRxUserNames users;
    bool matchCase = false;
    // A custom property of any type decides about a file. Else only dates and yes/no do, and the
    // rest is left to whoever gets the hit's records.
    bool decidesCustom = false;
    bool inApp = false;  // for every node that is made
    eSearchRoute route = eSearchRoute::Folders;
    LONG subfolders = 0;           // on the folder route: above 0, the whole tree
    bool remembersPlaces = false;  // what is looked in is kept in the registry
};

// What a search is given. Each is asked for when the run needs it.
class SRxSearchSource {
public:
    virtual SRxSearchQuery ReadQuery() = 0;
    // The folder or the start document; asked for again at the end of a folder search.
    virtual BLxWString LookIn() = 0;
    // The documents that were looked in before, in the order of their list.
    virtual std::vector<WText> ListedFiles() = 0;
    // The reading server; null without one. No reference for the caller.
    virtual IQxLecternServer* Server() = 0;
    // The chain to search, given up by its slot; may be null.
    virtual MDxFileNameNode* TakeSelection() = 0;

protected:
    ~SRxSearchSource() = default;
};

// What one criterion said of the file at hand.
struct CriterionOutcome {
    bool result = false;
    // The file alone can't decide it: it counts as true and travels on the record.
    bool undecided = false;
    // Negative: what it asks for is there and could not be read.
    HRESULT failure = S_OK;
};

struct SRxSearchRun {
    SRxSearchRun(SRxSearchSource& from, SRxSearchSink& to) : source(&from), sink(&to) {}
    ~SRxSearchRun() { delete rootNode; }
    SRxSearchRun(const SRxSearchRun&) = delete;
    SRxSearchRun& operator=(const SRxSearchRun&) = delete;

    SRxSearchSource* source;
    SRxSearchSink* sink;
    SRxSearchQuery query;
    MDxFileNameNode* rootNode = nullptr;  // the work chain, owned
    IQxLecternServer* server = nullptr;   // not owned; on the route of related documents
    SRxShellExtParameters params;         // gets the reduced criteria
    bool stopRequested = false;           // by the sink or whoever holds the run
    bool sharingMessageShown = false;     // that a file is in use was said in this run
    bool failureMessageShown = false;     // that a file could not be looked into was said
    bool skippedCriterionSeen = false;    // one that only the caller can test was evaluated
    // Hits carry a record for each criterion; someone looks at them.
    bool hitsHaveRecords = true;
    // The route hands the caller's own nodes to the file test: each gets its records, hit or not.
    bool keepsRecords = false;
    std::vector<CriterionOutcome> outcomes;  // of the file at hand, in list order
};
