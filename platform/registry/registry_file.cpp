#include "platform/registry/registry_file.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "platform/base/file_lock.h"
#include "platform/registry/registry_text.h"

namespace {

constexpr char kPathVariable[] = "SR_REGISTRY";
constexpr char kDefaultName[] = "/sr/registry.reg";
constexpr int kMostDamagedFiles = 1000;

DWORD ErrorFromErrno(int error) {
    switch (error) {
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return ERROR_DISK_FULL;
        case EACCES:
        case EPERM:
        case EROFS:
            return ERROR_ACCESS_DENIED;
        case ENOENT:
        case ENOTDIR:
            return ERROR_PATH_NOT_FOUND;
        case EWOULDBLOCK:
            return ERROR_LOCK_VIOLATION;
        case EMFILE:
        case ENFILE:
            return ERROR_TOO_MANY_OPEN_FILES;
        default:
            return ERROR_REGISTRY_IO_FAILED;
    }
}

class Descriptor {
public:
    Descriptor(const std::string& path, int flags) : value_(open(path.c_str(), flags, 0600)) {}
    ~Descriptor() {
        if (value_ >= 0) close(value_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int get() const { return value_; }
    bool IsOpen() const { return value_ >= 0; }
    // False when the system tells only now that something wasn't written.
    bool Close() { return close(std::exchange(value_, -1)) == 0; }

private:
    int value_;
};

bool WriteAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

bool ReadAll(int file, std::string& bytes) {
    char buffer[65536];
    for (;;) {
        const ssize_t got = read(file, buffer, sizeof buffer);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return got == 0;
        bytes.append(buffer, static_cast<std::size_t>(got));
    }
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.find_last_of('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

bool MakeFolder(const std::string& path) {
    if (mkdir(path.c_str(), 0700) == 0 || errno == EEXIST) return true;
    if (errno != ENOENT || FolderOf(path) == path) return false;
    return MakeFolder(FolderOf(path)) && (mkdir(path.c_str(), 0700) == 0 || errno == EEXIST);
}

std::string HomeFolder() {
    const char* home = std::getenv("HOME");
    if (home != nullptr && *home != 0) return home;
    const struct passwd* entry = getpwuid(geteuid());
    return entry == nullptr ? "" : entry->pw_dir;
}

// Where a link leads, also one to a file that isn't there yet.
std::string FollowLinks(std::string path) {
    constexpr int kMostLinks = 40;
    for (int link = 0; link < kMostLinks; ++link) {
        char target[PATH_MAX];
        const ssize_t length = readlink(path.c_str(), target, sizeof target);
        if (length <= 0 || length == sizeof target) return path;
        const std::string next(target, static_cast<std::size_t>(length));
        path = next.front() == '/' ? next : FolderOf(path) + "/" + next;
    }
    return path;
}

std::string AskedPath() {
    const char* given = std::getenv(kPathVariable);
    if (given != nullptr && *given != 0) return given;
    const char* folder = std::getenv("XDG_CONFIG_HOME");
    // A relative folder counts as none.
    if (folder != nullptr && *folder == '/') return std::string(folder) + kDefaultName;
    return HomeFolder() + "/.config" + kDefaultName;
}

}  // namespace

std::atomic<int> openKeyCount = 0;

RegistryFile::RegistryFile(std::string path) : path_(std::move(path)) {}

RegistryFile::~RegistryFile() {
    if (held_ >= 0) close(held_);
}

std::string RegistryFile::UserPath() {
    const std::string path = AskedPath();
    // A link in /proc or /dev may lead to what has no path.
    return IsPlain(path) ? FollowLinks(path) : path;
}

bool RegistryFile::IsPlain(const std::string& path) {
    struct stat status = {};
    return stat(path.c_str(), &status) != 0 || S_ISREG(status.st_mode);
}

DWORD RegistryFile::RefuseFile() {
    if (!std::exchange(refused_, true)) {
        std::fprintf(stderr, "%s: the registry can't be kept there, since this is no plain file\n",
                     path_.c_str());
    }
    return ERROR_REGISTRY_IO_FAILED;
}

RegistryFile::Identity RegistryFile::IdentityOf(const struct stat& status) {
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
            status.st_mtim.tv_nsec};
}

DWORD RegistryFile::Reopen() {
    // Never waiting for the other end of a pipe that has come there meanwhile.
    const int file = open(path_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    const int error = errno;
    if (held_ >= 0) close(held_);
    held_ = file;
    identity_ = Identity{};
    if (file < 0) return error == ENOENT ? ERROR_SUCCESS : ErrorFromErrno(error);
    struct stat status = {};
    if (fstat(file, &status) != 0) return ErrorFromErrno(errno);
    identity_ = IdentityOf(status);
    return ERROR_SUCCESS;
}

DWORD RegistryFile::Refresh(bool& changed) {
    changed = false;
    struct stat status = {};
    const bool exists = stat(path_.c_str(), &status) == 0;
    if (!exists && errno != ENOENT) return ErrorFromErrno(errno);
    if (exists && !S_ISREG(status.st_mode)) return RefuseFile();
    if (known_ && identity_ == (exists ? IdentityOf(status) : Identity{})) return ERROR_SUCCESS;
    known_ = false;
    if (const DWORD error = Reopen(); error != ERROR_SUCCESS) return error;
    if (const DWORD error = Read(); error != ERROR_SUCCESS) return error;
    known_ = changed = true;
    return ERROR_SUCCESS;
}

DWORD RegistryFile::Read() {
    std::string text;
    if (held_ >= 0 && !ReadAll(held_, text)) return ErrorFromErrno(errno);
    RegistryParse parse = ParseRegistry(text);
    root_ = std::move(parse.root);
    damaged_ = parse.badLines != 0;
    if (damaged_) {
        std::fprintf(stderr, "%s:%zu: this line of the registry can't be read (%zu such lines)\n",
                     path_.c_str(), parse.firstBadLine, parse.badLines);
    }
    return ERROR_SUCCESS;
}

DWORD RegistryFile::Commit(const std::vector<RegistryChange>& changes) {
    if (!IsPlain(path_)) return RefuseFile();
    if (!MakeFolder(FolderOf(path_))) return ErrorFromErrno(errno);
    // The lock is a file of its own, since the rename puts another file in the registry's place. It
    // ends with the descriptor, so also with a killed process.
    const std::string lockPath = path_ + ".lock";
    const Descriptor lock(lockPath, O_RDWR | O_CREAT | O_CLOEXEC);
    if (!lock.IsOpen() || !TakeFileLock(lock.get(), lockPath)) return ErrorFromErrno(errno);
    bool changed = false;
    if (const DWORD error = Refresh(changed); error != ERROR_SUCCESS) return error;
    for (const RegistryChange& change : changes)
        ApplyChange(root_, change);
    // Until the new text is in place the tree is ahead of the file, and is read again after a
    // failure.
    known_ = false;
    if (const DWORD error = Replace(WriteRegistry(root_)); error != ERROR_SUCCESS) return error;
    damaged_ = false;
    known_ = Reopen() == ERROR_SUCCESS;
    return ERROR_SUCCESS;
}

DWORD RegistryFile::KeepDamaged() const {
    for (int n = 1; n <= kMostDamagedFiles; ++n) {
        const std::string copy = path_ + ".damaged-" + std::to_string(n);
        if (link(path_.c_str(), copy.c_str()) == 0) {
            std::fprintf(stderr, "%s: the damaged registry is kept as %s\n", path_.c_str(),
                         copy.c_str());
            return ERROR_SUCCESS;
        }
        if (errno != EEXIST) return ErrorFromErrno(errno);
    }
    return ERROR_REGISTRY_IO_FAILED;
}

DWORD RegistryFile::Replace(const std::string& text) const {
    const std::string fresh = path_ + ".new";
    const auto fail = [&fresh] {
        const DWORD error = ErrorFromErrno(errno);
        unlink(fresh.c_str());
        return error;
    };
    Descriptor file(fresh, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC);
    if (!file.IsOpen()) return ErrorFromErrno(errno);
    if (!WriteAll(file.get(), text) || fsync(file.get()) != 0 || !file.Close()) return fail();
    if (damaged_) {
        if (const DWORD error = KeepDamaged(); error != ERROR_SUCCESS) {
            unlink(fresh.c_str());
            return error;
        }
    }
    if (rename(fresh.c_str(), path_.c_str()) != 0) return fail();
    // The rename itself lasts when the folder is written; there is nothing to undo if that fails.
    const Descriptor folder(FolderOf(path_), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder.IsOpen()) fsync(folder.get());
    return ERROR_SUCCESS;
}
