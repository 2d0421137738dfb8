#include "platform/files/directory_listing.h"

namespace {

// A reparse point that names another place (a link, a mount point) has this bit in its tag; one
// that only marks where the content lies, as of a cloud store, hasn't, and is an ordinary folder.
// Tag 0 is what Wine gives for a link.
bool IsLinkTag(DWORD tag) {
    return tag == 0 || IsReparseTagNameSurrogate(tag);
}

}  // namespace

struct DirectoryListing::State {
    HANDLE find = INVALID_HANDLE_VALUE;
    WIN32_FIND_DATAW data{};
    bool ready = false;  // `data` holds an entry that Next has not given yet
    bool failed = false;

    ~State() { Close(); }
    void Close() {
        if (find != INVALID_HANDLE_VALUE) FindClose(find);
        find = INVALID_HANDLE_VALUE;
        ready = failed = false;
    }
};

DirectoryListing::DirectoryListing() : state_(std::make_unique<State>()) {}
DirectoryListing::~DirectoryListing() = default;
DirectoryListing::DirectoryListing(DirectoryListing&&) noexcept = default;
DirectoryListing& DirectoryListing::operator=(DirectoryListing&&) noexcept = default;

bool DirectoryListing::Open(const WCHAR* pattern, bool) {
    state_->Close();
    state_->find = FindFirstFileExW(pattern, FindExInfoBasic, &state_->data, FindExSearchNameMatch,
                                    nullptr, FIND_FIRST_EX_LARGE_FETCH);
    state_->ready = state_->find != INVALID_HANDLE_VALUE;
    return state_->ready;
}

bool DirectoryListing::Next(Entry& entry) {
    State& state = *state_;
    if (state.find == INVALID_HANDLE_VALUE) return false;
    if (!state.ready && !FindNextFileW(state.find, &state.data)) {
        state.failed = GetLastError() != ERROR_NO_MORE_FILES;
        return false;
    }
    state.ready = false;
    const DWORD attributes = state.data.dwFileAttributes;
    entry.name = state.data.cFileName;
    entry.isDirectory = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    entry.isFolderLink = entry.isDirectory && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
                         IsLinkTag(state.data.dwReserved0);
    entry.isPlainFile = !entry.isDirectory;
    entry.isDot = entry.name == TEXT(".") || entry.name == TEXT("..");
    return true;
}

bool DirectoryListing::Failed() const {
    return state_->failed;
}
