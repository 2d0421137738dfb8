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
#include "platform/native_path.h"

namespace {

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

BOOL PathFileExistsW(LPCWSTR path) {
    struct stat status {};
    return path != nullptr && StatPath(path, status);
}

BOOL PathIsDirectoryW(LPCWSTR path) {
    struct stat status {};
    return path != nullptr && StatPath(path, status) && S_ISDIR(status.st_mode);
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

WText CurrentWideFolder() {
    WText path;
    return CurrentDirectory(path) ? path : WText();
}

WText FullWidePath(const WText& path) {
    if (path.empty()) {
        SetLastError(ERROR_INVALID_NAME);
        return {};
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
        return {};
    }
    WText base;
    if (!rooted && !CurrentDirectory(base)) return {};
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
    return full;
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
