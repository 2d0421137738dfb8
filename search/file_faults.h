// One file that can't be looked into ends no search.
#pragma once

#include <new>

#include "search/search_sink.h"

// Does some work on a file. What it fails with is told with the file's name; a sink that can't tell
// it ends the work around by an exception of its own.
template <typename Work>
void ForFile(SRxSearchRun& run, const WCHAR* file, const Work& work) {
    HRESULT status = S_OK;
    try {
        work();
    } catch (const std::bad_alloc&) {
        status = E_OUTOFMEMORY;
    } catch (...) {
        status = E_FAIL;
    }
    if (status != S_OK) run.sink->OnFileFailed(run, file, status);
}
