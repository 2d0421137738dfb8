// Who hears what a search looks at: a host that counts and reports. Calls come on the search's
// thread in the middle of the search; an observer may set `stopRequested` of the record.
#pragma once

#include "platform/win.h"

class MDxFileNameNode;
struct SRxFoundList;

class SRxSearchObserver {
public:
    virtual void OnFolder(SRxFoundList& list, const WCHAR* folder) = 0;
    // The folder could not be listed, or not to its end.
    virtual void OnFolderFailed(const WCHAR* folder) = 0;
    virtual void OnFile(SRxFoundList& list) = 0;
    // The type filter spared a read of the file's properties.
    virtual void OnPassedOver() = 0;
    // Once for each file that was opened for its properties: with its result when that failed, else
    // behind the judgement, with what it met. `status` is negative on failure, or a positive result
    // of MDxProperties.
    virtual void OnPropertiesRead(const WCHAR* file, HRESULT status) = 0;
    // The documents that a file refers to can't be told; `status` is negative.
    virtual void OnReferencesFailed(const WCHAR* file, HRESULT status) = 0;
    // A document that a file refers to isn't there.
    virtual void OnReferenceMissing(const WCHAR* file, const WCHAR* missing) = 0;
    // A hit has got a row in the found dialog; the node has its records, and goes.
    virtual void OnRow(const MDxFileNameNode& hit) = 0;
    // A hit has no row, since that of another file, `shown`, counts as the same.
    virtual void OnLeftOut(const WCHAR* file, const WCHAR* shown) = 0;

protected:
    ~SRxSearchObserver() = default;
};
