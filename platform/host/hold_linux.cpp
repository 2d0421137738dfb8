#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <utility>

#include "platform/host/hold.h"

namespace {

sigset_t EndSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    return signals;
}

}  // namespace

HeldFile::HeldFile(const NativePath& path) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (file < 0) return;
    if (flock(file, LOCK_EX | LOCK_NB) != 0) {
        close(file);
        return;
    }
    file_ = file;
}

HeldFile::~HeldFile() {
    if (file_ != kNoFile) close(static_cast<int>(file_));
}

HeldFile::HeldFile(HeldFile&& other) noexcept : file_(std::exchange(other.file_, kNoFile)) {}

EndRequest::EndRequest() {
    const sigset_t signals = EndSignals();
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    signals_ = signalfd(-1, &signals, SFD_CLOEXEC);
}

EndRequest::~EndRequest() {
    if (signals_ >= 0) close(static_cast<int>(signals_));
    const sigset_t signals = EndSignals();
    sigprocmask(SIG_UNBLOCK, &signals, nullptr);
}

void EndRequest::Wait() {
    pollfd sources[] = {{STDIN_FILENO, POLLIN, 0}, {static_cast<int>(signals_), POLLIN, 0}};
    for (;;) {
        if (poll(sources, 2, -1) < 0) {
            if (errno == EINTR) continue;
            return;
        }
        if (sources[1].revents != 0) {
            // Taken, or it would kill the process as soon as signals are let through again.
            signalfd_siginfo taken;
            while (read(sources[1].fd, &taken, sizeof taken) < 0 && errno == EINTR)
                continue;
            return;
        }
        char byte = '\n';
        const ssize_t got = read(STDIN_FILENO, &byte, 1);
        if (got < 0 && (errno == EINTR || errno == EAGAIN)) continue;
        if (got <= 0 || byte == '\n') return;
    }
}
