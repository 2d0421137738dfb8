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

bool FileSize(WTextView path, std::uint64_t& bytes) {
    bytes = 0;
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(NativePath(path).c_str(), GetFileExInfoStandard, &data)) return false;
    bytes = (static_cast<std::uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
    return true;
}
