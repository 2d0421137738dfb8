// BLx.dll: the entries of one folder.
#pragma once

#include <memory>

#include "outside/blx_string.h"

class BLX_API DirectorySearch {
public:
    // `pattern` is a folder followed by a name with a star. `recursive` has to be false.
    DirectorySearch(const WCHAR* pattern, bool recursive);
    ~DirectorySearch();
    DirectorySearch(const DirectorySearch&) = delete;
    DirectorySearch& operator=(const DirectorySearch&) = delete;

    // Before Start: the folder isn't listed when it is a link. For a folder below the one to look
    // in.
    void RefuseLink();
    // The bare name of the first entry, the dot entries included; empty when there is none. The
    // reference holds until the next call.
    const BLxWString& Start();
    const BLxWString& Next();
    // There is no current entry. Right after Start: the folder couldn't be listed.
    bool Done() const;
    // The listing ended with a fault of the system before its end.
    bool Failed() const;
    // Of the current entry. A link to a folder is no folder to walk, and it is left out of the
    // listing; a link to a file is a file.
    bool IsDirectory() const;
    bool IsDot() const;
    // Neither a folder nor a link nor a pipe or device; false where the listing doesn't tell, too.
    bool IsPlainFile() const;
    // Leaves the dot entries out from the next entry on.
    void SetSkipDots(bool skip);

private:
    struct State;
    std::unique_ptr<State> state_;
};
