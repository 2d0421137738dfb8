#include "platform/native_path.h"

NativePath NativePathFromWide(WTextView path) {
    return NativePath(path);
}

WText AbsoluteWidePath(const NativePath& path) {
    return FullWidePath(path);
}

std::string DisplayPath(WTextView path) {
    return wtext::ToUtf8(path);
}

WText WideNameFromTyped(std::string_view name) {
    return wtext::FromUtf8(name);
}

bool IsPlainFile(WTextView path) {
    const DWORD attributes = GetFileAttributesW(NativePath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) == 0;
}

bool FileSize(WTextView path, std::uint64_t& bytes) {
    bytes = 0;
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(NativePath(path).c_str(), GetFileExInfoStandard, &data)) return false;
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return false;
    bytes = (static_cast<std::uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
    return true;
}

WText FullWidePath(const WText& path) {
    const DWORD cch = path.empty() ? 0 : GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    if (cch == 0) return {};
    WText full(cch, 0);
    full.resize(GetFullPathNameW(path.c_str(), cch, full.data(), nullptr));
    return full;
}

WText CurrentWideFolder() {
    WText path(GetCurrentDirectoryW(0, nullptr), 0);
    path.resize(GetCurrentDirectoryW(static_cast<DWORD>(path.size()), path.data()));
    return path;
}
