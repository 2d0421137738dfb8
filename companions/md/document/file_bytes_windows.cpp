// The Windows half of FileBytes. It shares everything with everybody, so that only a process that
// keeps the file to itself is in the way.
#include "companions/md/document/file_bytes.h"

namespace mddoc {

namespace {

// From this length on an absolute path is taken only with its prefix.
constexpr std::size_t kLongPath = 248;

HRESULT StatusOfError(DWORD error) {
    switch (error) {
        case ERROR_FILE_NOT_FOUND:
            return STG_E_FILENOTFOUND;
        case ERROR_PATH_NOT_FOUND:
        case ERROR_BAD_PATHNAME:
        case ERROR_INVALID_NAME:
        case ERROR_DIRECTORY:
        case ERROR_FILENAME_EXCED_RANGE:
            return STG_E_PATHNOTFOUND;
        case ERROR_TOO_MANY_OPEN_FILES:
            return STG_E_TOOMANYOPENFILES;
        case ERROR_NOT_ENOUGH_MEMORY:
        case ERROR_OUTOFMEMORY:
            return STG_E_INSUFFICIENTMEMORY;
        case ERROR_ACCESS_DENIED:
            return STG_E_ACCESSDENIED;
        case ERROR_SHARING_VIOLATION:
            return STG_E_SHAREVIOLATION;
        case ERROR_LOCK_VIOLATION:
            return STG_E_LOCKVIOLATION;
        default:
            return STG_E_READFAULT;
    }
}

bool HasDrive(const WText& path) {
    return path.size() > 2 && path[1] == TEXT(':') && path[2] == TEXT('\\');
}

// The path as it is, or with the prefix that lifts the limit of its length.
WText Openable(const WText& path) {
    if (path.size() < kLongPath && HasDrive(path)) return path;
    if (path.compare(0, 4, TEXT("\\\\?\\")) == 0 || path.compare(0, 4, TEXT("\\\\.\\")) == 0) {
        return path;
    }
    const DWORD needed = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    if (needed < kLongPath) return path;
    WText full(needed, 0);
    const DWORD cch = GetFullPathNameW(path.c_str(), needed, full.data(), nullptr);
    if (cch == 0 || cch >= needed) return path;
    full.resize(cch);
    if (full.compare(0, 2, TEXT("\\\\")) == 0) return TEXT("\\\\?\\UNC\\") + full.substr(2);
    return TEXT("\\\\?\\") + full;
}

std::uint64_t Joined(DWORD high, DWORD low) {
    return (static_cast<std::uint64_t>(high) << 32) | low;
}

// Of either of the two records of a file's facts.
template <typename Facts>
FileStamp StampFrom(const Facts& facts) {
    return {Joined(facts.nFileSizeHigh, facts.nFileSizeLow),
            Joined(facts.ftLastWriteTime.dwHighDateTime, facts.ftLastWriteTime.dwLowDateTime),
            Joined(facts.ftCreationTime.dwHighDateTime, facts.ftCreationTime.dwLowDateTime)};
}

}  // namespace

FileStamp StampOf(const DocumentPath& path) {
    WIN32_FILE_ATTRIBUTE_DATA facts = {};
    const bool found =
        GetFileAttributesExW(Openable(path).c_str(), GetFileExInfoStandard, &facts) != FALSE;
    return found ? StampFrom(facts) : FileStamp{};
}

HRESULT FileBytes::Open(const DocumentPath& path, bool) {
    Close();
    const HANDLE file =
        CreateFileW(Openable(path).c_str(), GENERIC_READ,
                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_RANDOM_ACCESS, nullptr);
    if (file == INVALID_HANDLE_VALUE) return StatusOfError(GetLastError());
    file_ = reinterpret_cast<std::intptr_t>(file);
    BY_HANDLE_FILE_INFORMATION facts = {};
    HRESULT status = S_OK;
    if (GetFileType(file) != FILE_TYPE_DISK) {
        status = STG_E_ACCESSDENIED;
    } else if (!GetFileInformationByHandle(file, &facts)) {
        status = StatusOfError(GetLastError());
    }
    if (FAILED(status)) {
        Close();
        return status;
    }
    stamp_ = StampFrom(facts);
    size_ = stamp_.size;
    return S_OK;
}

void FileBytes::Close() {
    if (file_ != kNoFile) CloseHandle(reinterpret_cast<HANDLE>(file_));
    file_ = kNoFile;
    size_ = 0;
}

HRESULT FileBytes::ReadAt(std::uint64_t offset, void* buffer, std::size_t cb) {
    constexpr std::size_t kMost = std::size_t{1} << 30;
    BYTE* to = static_cast<BYTE*>(buffer);
    while (cb > 0) {
        OVERLAPPED place = {};
        place.Offset = static_cast<DWORD>(offset & 0xFFFFFFFFu);
        place.OffsetHigh = static_cast<DWORD>(offset >> 32);
        DWORD got = 0;
        const DWORD wanted = static_cast<DWORD>(cb < kMost ? cb : kMost);
        if (!ReadFile(reinterpret_cast<HANDLE>(file_), to, wanted, &got, &place)) {
            return StatusOfError(GetLastError());
        }
        if (got == 0) return STG_E_READFAULT;
        to += got;
        offset += got;
        cb -= got;
    }
    return S_OK;
}

}  // namespace mddoc
