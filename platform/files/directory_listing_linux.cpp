#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "platform/files/directory_listing.h"
#include "platform/files/path_mapping.h"

namespace {

// A folder of some 1,500 entries comes with one call. A larger buffer would come from the system
// anew for each folder.
constexpr std::size_t kBufferBytes = 64 * 1024;

struct KernelEntry {
    std::uint64_t inode;
    std::int64_t offset;
    unsigned short length;
    unsigned char type;
    char name[1];
};

}  // namespace

struct DirectoryListing::State {
    int descriptor = -1;
    std::unique_ptr<char[]> buffer = std::make_unique_for_overwrite<char[]>(kBufferBytes);
    std::size_t at = 0;
    std::size_t end = 0;
    bool failed = false;
    bool ready = false;  // `pending` was found by Open and not given yet
    Entry pending{};
    WText name;
    WText prefix;  // what stands in front of the star, without the folder

    ~State() { Close(); }
    void Close() {
        if (descriptor >= 0) close(descriptor);
        descriptor = -1;
        at = end = 0;
        failed = ready = false;
    }
    bool Fill();
    void Classify(const KernelEntry& raw, Entry& entry) const;
    bool HasPrefix() const;
};

bool DirectoryListing::State::Fill() {
    const long got = syscall(SYS_getdents64, descriptor, buffer.get(), kBufferBytes);
    at = 0;
    end = got > 0 ? static_cast<std::size_t>(got) : 0;
    failed = got < 0;
    if (failed) SetLastError(platform::ErrorFromErrno(errno));
    return got > 0;
}

void DirectoryListing::State::Classify(const KernelEntry& raw, Entry& entry) const {
    unsigned char type = raw.type;
    struct stat status {};
    if (type == DT_UNKNOWN && fstatat(descriptor, raw.name, &status, AT_SYMLINK_NOFOLLOW) == 0) {
        type = IFTODT(status.st_mode);
    }
    entry.isFolderLink =
        type == DT_LNK && fstatat(descriptor, raw.name, &status, 0) == 0 && S_ISDIR(status.st_mode);
    entry.isDirectory = type == DT_DIR || entry.isFolderLink;
    entry.isPlainFile = type == DT_REG;
    entry.isDot =
        raw.name[0] == '.' && (raw.name[1] == 0 || (raw.name[1] == '.' && raw.name[2] == 0));
}

bool DirectoryListing::State::HasPrefix() const {
    if (prefix.empty()) return true;
    if (name.size() < prefix.size()) return false;
    const int cch = static_cast<int>(prefix.size());
    return CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE | NORM_IGNOREWIDTH, name.c_str(),
                          cch, prefix.c_str(), cch) == CSTR_EQUAL;
}

DirectoryListing::DirectoryListing() : state_(std::make_unique<State>()) {}
DirectoryListing::~DirectoryListing() = default;
DirectoryListing::DirectoryListing(DirectoryListing&&) noexcept = default;
DirectoryListing& DirectoryListing::operator=(DirectoryListing&&) noexcept = default;

bool DirectoryListing::Open(const WCHAR* pattern, bool followsLink) {
    state_->Close();
    const WTextView text(pattern);
    const std::size_t separator = text.find_last_of(TEXT("\\/"));
    const std::size_t nameAt = separator == WTextView::npos ? 0 : separator + 1;
    const WTextView name = text.substr(nameAt);
    if (name.empty() || name.find_first_of(TEXT("*?")) != name.size() - 1 || name.back() != '*') {
        SetLastError(ERROR_NOT_SUPPORTED);
        return false;
    }
    state_->prefix = name.substr(0, name.size() - 1);
    std::string folder;
    if (!platform::PathToBytes(text.substr(0, nameAt), folder)) return false;
    if (folder.empty()) folder = ".";
    int flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK;
    if (!followsLink) {
        // A slash at the end would follow the link.
        folder.resize(std::max<std::size_t>(folder.find_last_not_of('/') + 1, 1));
        flags |= O_NOFOLLOW;
    }
    state_->descriptor = open(folder.c_str(), flags);
    if (state_->descriptor < 0) {
        // Windows calls any missing folder of a pattern a missing path, and tells a file apart.
        DWORD error = platform::ErrorFromErrno(errno);
        if (error == ERROR_FILE_NOT_FOUND) error = ERROR_PATH_NOT_FOUND;
        struct stat status {};
        folder.resize(folder.find_last_not_of('/') + 1);
        if (errno == ENOTDIR && stat(folder.c_str(), &status) == 0) error = ERROR_DIRECTORY;
        SetLastError(error);
        return false;
    }
    // Only what is really there can be listed: the first match decides.
    state_->ready = Next(state_->pending);
    if (state_->ready) return true;
    const bool failed = state_->failed;
    state_->Close();
    if (!failed) SetLastError(ERROR_FILE_NOT_FOUND);
    return false;
}

bool DirectoryListing::Next(Entry& entry) {
    State& state = *state_;
    if (state.ready) {
        entry = state.pending;
        state.ready = false;
        return true;
    }
    for (;;) {
        if (state.descriptor < 0) return false;
        if (state.at >= state.end && !state.Fill()) return false;
        const auto* raw = reinterpret_cast<const KernelEntry*>(state.buffer.get() + state.at);
        state.at += raw->length;
        state.name.clear();
        platform::AppendNameFromBytes(state.name, raw->name);
        if (!state.HasPrefix()) continue;
        state.Classify(*raw, entry);
        entry.name = state.name;
        return true;
    }
}

bool DirectoryListing::Failed() const {
    return state_->failed;
}
