#include <algorithm>
#include <utility>

#include "platform/output_file.h"

bool OutputFile::Open(const WText& path) {
    if (!Close()) return false;
    file_ = reinterpret_cast<std::intptr_t>(CreateFileW(path.c_str(), GENERIC_WRITE,
                                                        FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                                        FILE_ATTRIBUTE_NORMAL, nullptr));
    return file_ != kNone;
}

bool OutputFile::Write(const void* bytes, std::size_t cb) {
    constexpr std::size_t kMost = 1u << 30;
    const char* at = static_cast<const char*>(bytes);
    while (cb > 0) {
        DWORD written = 0;
        const auto part = static_cast<DWORD>(std::min(cb, kMost));
        if (!WriteFile(reinterpret_cast<HANDLE>(file_), at, part, &written, nullptr)) return false;
        if (written == 0) return false;
        at += written;
        cb -= written;
    }
    return true;
}

bool OutputFile::Close() {
    if (file_ == kNone) return true;
    return CloseHandle(reinterpret_cast<HANDLE>(std::exchange(file_, kNone))) != FALSE;
}
