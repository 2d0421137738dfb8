// Where the hits, the progress and the messages of a search go. Calls come on the search's thread
// in the middle of the search; each may set `stopRequested` of the run. One that throws about a
// file ends the search of its folder, one that throws about a folder the search.
#pragma once

#include "search/search_run.h"

class SRxSearchSink {
public:
    // Before anything is read.
    virtual void Begin(SRxSearchRun& run) = 0;
    // The route has ended, with success or not. Gives `result` back.
    virtual bool End(SRxSearchRun& run, bool result) = 0;
    // Where the search is. True when messages were handed out: the current folder may be another.
    virtual bool OnProgress(SRxSearchRun& run, const WCHAR* path) = 0;
    // A file that satisfies the list. `folder` ends in a backslash unless it is empty; the node has
    // its records, and stays the caller's. `insertIndex` is the run's next row.
    virtual void OnHit(SRxSearchRun& run, const WCHAR* folder, const WCHAR* name,
                       MDxFileNameNode& node, int& insertIndex) = 0;
    // The folder could not be listed, or not to its end; or it has too long a name.
    virtual void OnFolderFailed(const WCHAR* folder) = 0;
    // Another program holds the file; the first one of a run.
    virtual void OnFileInUse(const WCHAR* file) = 0;

    // The file could not be looked into: E_OUTOFMEMORY without memory for it, else E_FAIL.
    virtual void OnFileFailed(SRxSearchRun& run, const WCHAR* file, HRESULT status) = 0;

    // What is looked at, for a sink that counts and reports.
    virtual void OnFolder(SRxSearchRun&, const WCHAR* /*folder*/) {}
    virtual void OnFile(SRxSearchRun&) {}
    // The type filter spared a read of the file's properties.
    virtual void OnPassedOver() {}
    // Once for each file that was opened for its properties, and for one whose kind could not be
    // looked at. `status` is the first failure that the file's criteria met, or the result of the
    // opening.
    virtual void OnPropertiesRead(const WCHAR* /*file*/, HRESULT /*status*/) {}
    // The documents that a file refers to can't be known; `status` is negative.
    virtual void OnReferencesFailed(const WCHAR* /*file*/, HRESULT /*status*/) {}
    // A document that a file refers to isn't there.
    virtual void OnReferenceMissing(const WCHAR* /*file*/, const WCHAR* /*missing*/) {}

protected:
    ~SRxSearchSink() = default;
};
