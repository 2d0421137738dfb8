// The native half of FileBytes. Files have no sharing modes here: an exclusive flock of another
// process counts as one, and its fcntl write locks as locks of those bytes.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <limits>

#include "companions/md/document/file_bytes.h"

namespace mddoc {

namespace {

bool FolderExists(const std::string& path) {
    const std::size_t slash = path.find_last_of('/');
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    struct stat facts;
    return stat(folder.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

HRESULT StatusOfOpen(int error, const std::string& path) {
    switch (error) {
        case ENOENT:
            return FolderExists(path) ? STG_E_FILENOTFOUND : STG_E_PATHNOTFOUND;
        case ENOTDIR:
        case ELOOP:
        case ENAMETOOLONG:
            return STG_E_PATHNOTFOUND;
        case EMFILE:
        case ENFILE:
            return STG_E_TOOMANYOPENFILES;
        case ENOMEM:
            return STG_E_INSUFFICIENTMEMORY;
        case EAGAIN:  // another process holds a lease and would have to give it back first
            return STG_E_SHAREVIOLATION;
        case EACCES:
        case EPERM:
        case ENXIO:  // a socket or a device without a driver
        case ENODEV:
            return STG_E_ACCESSDENIED;
        default:
            return STG_E_READFAULT;
    }
}

// Whether another process holds a write lock in the range; `cb` 0 reaches to the end.
bool IsLocked(int file, std::uint64_t offset, std::uint64_t cb) {
    struct flock lock = {};
    lock.l_type = F_RDLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = static_cast<off_t>(offset);
    lock.l_len = static_cast<off_t>(cb);
    // A file system without locks can't hold one.
    return fcntl(file, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

// There is no way to ask for a flock without taking it; it is given back at once.
bool IsKeptExclusively(int file) {
    if (flock(file, LOCK_SH | LOCK_NB) != 0) return errno == EWOULDBLOCK;
    flock(file, LOCK_UN);
    return false;
}

FileStamp StampFrom(const struct stat& facts) {
    constexpr std::uint64_t kNanoseconds = 1000000000;
    return {static_cast<std::uint64_t>(facts.st_size),
            static_cast<std::uint64_t>(facts.st_mtim.tv_sec) * kNanoseconds +
                static_cast<std::uint64_t>(facts.st_mtim.tv_nsec),
            static_cast<std::uint64_t>(facts.st_ino)};
}

}  // namespace

FileStamp StampOf(const DocumentPath& path) {
    struct stat facts;
    return stat(path.c_str(), &facts) == 0 ? StampFrom(facts) : FileStamp{};
}

HRESULT FileBytes::Open(const DocumentPath& path, bool isPlainFile) {
    Close();
    // The kind comes first: opening a pipe takes what its writer has for somebody else, and opening
    // a device may do anything.
    struct stat facts;
    if (!isPlainFile) {
        if (stat(path.c_str(), &facts) != 0) return StatusOfOpen(errno, path);
        if (!S_ISREG(facts.st_mode)) return STG_E_ACCESSDENIED;
    }
    // O_NONBLOCK: no lease may hold us up, nor a pipe that has just taken the file's place.
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (file < 0) return StatusOfOpen(errno, path);
    file_ = file;
    HRESULT status = S_OK;
    // Another plain file is fine: a program that saves puts a new one in the old one's place.
    if (fstat(file, &facts) != 0) {
        status = STG_E_READFAULT;
    } else if (!S_ISREG(facts.st_mode)) {
        status = STG_E_ACCESSDENIED;
    } else if (IsKeptExclusively(file)) {
        status = STG_E_SHAREVIOLATION;
    }
    if (FAILED(status)) {
        Close();
        return status;
    }
    stamp_ = StampFrom(facts);
    size_ = stamp_.size;
    hasLocks_ = IsLocked(file, 0, 0);
    return S_OK;
}

void FileBytes::Close() {
    if (file_ != kNoFile) close(static_cast<int>(file_));
    file_ = kNoFile;
    size_ = 0;
    hasLocks_ = false;
}

HRESULT FileBytes::ReadAt(std::uint64_t offset, void* buffer, std::size_t cb) {
    const int file = static_cast<int>(file_);
    if (cb == 0) return S_OK;
    if (offset > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max()) - cb) {
        return STG_E_READFAULT;
    }
    if (hasLocks_ && IsLocked(file, offset, cb)) return STG_E_LOCKVIOLATION;
    char* to = static_cast<char*>(buffer);
    while (cb > 0) {
        const ssize_t got = pread(file, to, cb, static_cast<off_t>(offset));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return STG_E_READFAULT;
        to += got;
        offset += static_cast<std::uint64_t>(got);
        cb -= static_cast<std::size_t>(got);
    }
    return S_OK;
}

}  // namespace mddoc
