#include <sys/stat.h>

#include "platform/files/path_mapping.h"
#include "platform/native_path.h"

NativePath NativePathFromWide(WTextView path) {
    std::string bytes;
    if (!platform::PathToBytes(path, bytes)) bytes.clear();
    return bytes;
}

WText AbsoluteWidePath(const NativePath& path) {
    return FullWidePath(platform::PathFromBytes(path));
}

std::string DisplayPath(WTextView path) {
    std::string bytes = NativePathFromWide(path);
    return bytes.empty() ? wtext::ToUtf8(path) : bytes;
}

WText WideNameFromTyped(std::string_view name) {
    WText wide;
    platform::AppendNameFromBytes(wide, name);
    return wide;
}

bool IsPlainFile(WTextView path) {
    struct stat status {};
    return stat(NativePathFromWide(path).c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool FileSize(WTextView path, std::uint64_t& bytes) {
    bytes = 0;
    struct stat status {};
    if (stat(NativePathFromWide(path).c_str(), &status) != 0) return false;
    if (!S_ISREG(status.st_mode)) return false;
    bytes = static_cast<std::uint64_t>(status.st_size);
    return true;
}
