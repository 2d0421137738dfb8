#include "platform/host/host_files.h"

#include <csignal>
#include <cstdio>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#else
#include <unistd.h>
#endif

namespace {

volatile std::sig_atomic_t interrupted = 0;

void OnInterrupt(int) {
    interrupted = 1;
}

std::FILE* OpenForReading(const NativePath& path) {
#ifdef _WIN32
    if (path == TEXT("-")) {
        _setmode(_fileno(stdin), _O_BINARY);
        return stdin;
    }
    return _wfopen(path.c_str(), TEXT("rb"));
#else
    return path == "-" ? stdin : std::fopen(path.c_str(), "rbe");
#endif
}

}  // namespace

bool ReadHostFile(const NativePath& path, std::string& bytes) {
    std::FILE* file = OpenForReading(path);
    if (file == nullptr) return false;
    bytes.clear();
    char buffer[65536];
    for (std::size_t got = 0; (got = std::fread(buffer, 1, sizeof(buffer), file)) != 0;) {
        bytes.append(buffer, got);
    }
    const bool whole = std::ferror(file) == 0;
    if (file != stdin) std::fclose(file);
    return whole;
}

NativePath NativePathFromLine(std::string_view line) {
#ifdef _WIN32
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    return wtext::FromUtf8(line);
#else
    return NativePath(line);
#endif
}

bool IsErrorTerminal() {
#ifdef _WIN32
    return _isatty(_fileno(stderr)) != 0;
#else
    return isatty(STDERR_FILENO) != 0;
#endif
}

void NoteInterrupts() {
    std::signal(SIGINT, OnInterrupt);
}

bool WasInterrupted() {
    return interrupted != 0;
}
