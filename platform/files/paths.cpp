// Native build: paths that are looked up in the file system.
#include <dlfcn.h>
#include <sys/auxv.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <vector>

#include "platform/files/files_api.h"
#include "platform/files/path_mapping.h"

namespace {

// Copies out as the Windows calls do: the units without the terminator, or, when it doesn't fit,
// the units needed with it and the buffer untouched.
DWORD CopyOrMeasure(const WText& text, DWORD cch, LPWSTR buffer) {
    if (text.size() + 1 > cch) return static_cast<DWORD>(text.size() + 1);
    text.copy(buffer, text.size());
    buffer[text.size()] = 0;
    return static_cast<DWORD>(text.size());
}

bool CurrentDirectory(WText& path) {
    std::vector<char> bytes(4096);
    while (getcwd(bytes.data(), bytes.size()) == nullptr) {
        if (errno != ERANGE) {
            SetLastError(platform::ErrorFromErrno(errno));
            return false;
        }
        bytes.resize(bytes.size() * 2);
    }
    path = platform::PathFromBytes(bytes.data());
    return true;
}

bool StatPath(LPCWSTR path, struct stat& status) {
    std::string bytes;
    if (path == nullptr || *path == 0) {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return false;
    }
    if (!platform::PathToBytes(path, bytes)) return false;
    if (stat(bytes.c_str(), &status) == 0) return true;
    DWORD error = platform::ErrorFromErrno(errno);
    if (error == ERROR_FILE_NOT_FOUND) {
        // Windows tells a missing folder on the way from a missing last component.
        const std::size_t end = bytes.find_last_not_of('/');
        const std::size_t slash = bytes.rfind('/', end);
        struct stat parent {};
        if (slash != std::string::npos && slash != 0 &&
            stat(bytes.substr(0, slash).c_str(), &parent) != 0) {
            error = ERROR_PATH_NOT_FOUND;
        }
    }
    SetLastError(error);
    return false;
}

// Appends the components of `path`, resolving the dot names.
void AppendComponents(std::vector<WTextView>& components, WTextView path) {
    while (!path.empty()) {
        std::size_t end = 0;
        while (end < path.size() && !platform::IsSeparator(path[end]))
            ++end;
        const WTextView name = path.substr(0, end);
        if (name == TEXT("..")) {
            if (!components.empty()) components.pop_back();
        } else if (!name.empty() && name != TEXT(".")) {
            components.push_back(name);
        }
        path.remove_prefix(end < path.size() ? end + 1 : end);
    }
}

}  // namespace

DWORD GetFileAttributesW(LPCWSTR path) {
    struct stat status {};
    if (!StatPath(path, status)) return INVALID_FILE_ATTRIBUTES;
    const WTextView text(path);
    const WTextView name = text.substr(text.find_last_of(TEXT("\\/:")) + 1);
    DWORD attributes = FILE_ATTRIBUTE_ARCHIVE;
    if (S_ISDIR(status.st_mode)) {
        struct stat link {};
        std::string bytes;
        const bool isLink = platform::PathToBytes(text, bytes) &&
                            lstat(bytes.c_str(), &link) == 0 && S_ISLNK(link.st_mode);
        attributes = FILE_ATTRIBUTE_DIRECTORY | (isLink ? FILE_ATTRIBUTE_REPARSE_POINT : 0);
    }
    if ((status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) {
        attributes |= FILE_ATTRIBUTE_READONLY;
    }
    const bool isDot = name == TEXT(".") || name == TEXT("..");
    if (!name.empty() && name[0] == '.' && !isDot) attributes |= FILE_ATTRIBUTE_HIDDEN;
    return attributes;
}

BOOL PathFileExistsW(LPCWSTR path) {
    return path != nullptr && GetFileAttributesW(path) != INVALID_FILE_ATTRIBUTES;
}

BOOL PathIsDirectoryW(LPCWSTR path) {
    if (path == nullptr) return FALSE;
    const DWORD attributes = GetFileAttributesW(path);
    if (attributes == INVALID_FILE_ATTRIBUTES) return FALSE;
    // Windows gives the attribute itself, not 1.
    return static_cast<BOOL>(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

BOOL SetCurrentDirectoryW(LPCWSTR path) {
    std::string bytes;
    if (path == nullptr || *path == 0) {
        SetLastError(ERROR_INVALID_NAME);
        return FALSE;
    }
    if (!platform::PathToBytes(path, bytes)) return FALSE;
    if (chdir(bytes.c_str()) == 0) return TRUE;
    struct stat status {};
    if (errno == ENOTDIR && stat(bytes.c_str(), &status) == 0) {
        SetLastError(ERROR_DIRECTORY);
        return FALSE;
    }
    (void)StatPath(path, status);
    return FALSE;
}

DWORD GetCurrentDirectoryW(DWORD cch, LPWSTR buffer) {
    WText path;
    if (!CurrentDirectory(path)) return 0;
    return CopyOrMeasure(path, cch, buffer);
}

DWORD GetFullPathNameW(LPCWSTR path, DWORD cch, LPWSTR buffer, LPWSTR* filePart) {
    if (filePart != nullptr) *filePart = nullptr;
    if (path == nullptr || *path == 0) {
        SetLastError(ERROR_INVALID_NAME);
        return 0;
    }
    WTextView text(path);
    WText drive;
    bool rooted = platform::IsSeparator(text[0]);
    if (text.size() >= 2 && text[1] == ':') {
        drive = text.substr(0, 2);
        text.remove_prefix(2);
        // Another drive has no current folder here, so its root stands for it.
        const bool isOther = drive[0] != 'Z' && drive[0] != 'z';
        rooted = isOther || (!text.empty() && platform::IsSeparator(text[0]));
    } else if (text.size() >= 2 && rooted && platform::IsSeparator(text[1])) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return 0;
    }
    WText base;
    if (!rooted && !CurrentDirectory(base)) return 0;
    std::vector<WTextView> components;
    AppendComponents(components, base.empty() ? WTextView() : WTextView(base).substr(2));
    AppendComponents(components, text);
    WText full = rooted && !drive.empty() ? drive : TEXT("Z:");
    for (const WTextView name : components) {
        full += static_cast<WCHAR>('\\');
        full += name;
    }
    const bool closed = !text.empty() && platform::IsSeparator(text.back());
    if (components.empty() || closed) full += static_cast<WCHAR>('\\');
    const DWORD length = CopyOrMeasure(full, cch, buffer);
    if (filePart != nullptr && length < cch && !components.empty() && !closed) {
        *filePart = buffer + (full.size() - components.back().size());
    }
    return length;
}

DWORD GetModuleFileNameW(HMODULE module, LPWSTR buffer, DWORD cch) {
    std::string bytes;
    if (module == nullptr) {
        bytes.resize(4096);
        const ssize_t length = readlink("/proc/self/exe", bytes.data(), bytes.size());
        bytes.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    } else {
        Dl_info info{};
        if (dladdr(module, &info) != 0 && info.dli_fname != nullptr) {
            if (char* absolute = realpath(info.dli_fname, nullptr)) {
                bytes = absolute;
                free(absolute);
            }
        }
    }
    if (bytes.empty()) {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return 0;
    }
    if (cch == 0) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }
    const WText path = platform::PathFromBytes(bytes);
    const std::size_t length = path.size() < cch ? path.size() : cch - 1;
    path.copy(buffer, length);
    buffer[length] = 0;
    if (length < path.size()) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return cch;
    }
    SetLastError(ERROR_SUCCESS);
    return static_cast<DWORD>(length);
}

BOOL GetModuleHandleExW(DWORD flags, LPCWSTR address, HMODULE* module) {
    *module = nullptr;
    if (flags !=
        (GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT)) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return FALSE;
    }
    Dl_info info{};
    const void* within = address;
    if (within == nullptr) within = reinterpret_cast<const void*>(getauxval(AT_ENTRY));
    if (dladdr(within, &info) == 0) {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return FALSE;
    }
    *module = reinterpret_cast<HMODULE>(info.dli_fbase);
    return TRUE;
}

DWORD GetCurrentProcessId() {
    return static_cast<DWORD>(getpid());
}
