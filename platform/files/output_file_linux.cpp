#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/native_path.h"
#include "platform/output_file.h"

bool OutputFile::Open(const WText& path) {
    constexpr mode_t kForAll = 0666;  // less what the user's mask takes away
    if (!Close()) return false;
    const NativePath native = NativePathFromWide(path);
    if (native.empty()) return false;
    file_ = open(native.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, kForAll);
    return file_ != kNone;
}

bool OutputFile::Write(const void* bytes, std::size_t cb) {
    const char* at = static_cast<const char*>(bytes);
    while (cb > 0) {
        const ssize_t written = write(static_cast<int>(file_), at, cb);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        at += written;
        cb -= static_cast<std::size_t>(written);
    }
    return true;
}

bool OutputFile::Close() {
    if (file_ == kNone) return true;
    return close(static_cast<int>(std::exchange(file_, kNone))) == 0;
}
