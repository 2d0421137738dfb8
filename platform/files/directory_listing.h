// The entries of one folder in the order in which the system gives them, for both builds: one large
// buffer, and the kind of an entry comes with its name.
#pragma once

#include <memory>

#include "platform/wtext.h"

class DirectoryListing {
public:
    struct Entry {
        WTextView name;  // null-terminated; holds until the next call
        bool isDirectory;
        bool isDot;  // "." or ".."
        // A link (or a mount point) to a folder; `isDirectory` is true as well. A link to a file is
        // a file, and so is one that leads nowhere.
        bool isFolderLink;
        bool isPlainFile;  // false where the system doesn't tell, too
    };

    DirectoryListing();
    ~DirectoryListing();
    DirectoryListing(DirectoryListing&&) noexcept;
    DirectoryListing& operator=(DirectoryListing&&) noexcept;

    // `pattern` is a folder, a backslash and a name with a star at its end, which stands for any
    // text; other wildcards fail with ERROR_NOT_SUPPORTED natively. Closes an earlier listing.
    // False with the last error when the folder can't be listed. Case of letters plays no part.
    // Without `followsLink` a folder that is a link fails natively, which tells one that has taken
    // the place of a folder since its own folder was listed.
    [[nodiscard]] bool Open(const WCHAR* pattern, bool followsLink = true);
    // False at the end (`Failed` then tells whether the system reported a fault there).
    [[nodiscard]] bool Next(Entry& entry);
    bool Failed() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};
