#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "platform/processes.h"
#include "platform/registry/registry_file.h"

bool IsProcessRunning(DWORD id) {
    // 0 and negative numbers would ask about groups of processes.
    const pid_t process = static_cast<pid_t>(id);
    if (process <= 0) return false;
    return kill(process, 0) == 0 || errno == EPERM;
}

struct ProcessLock::State {
    int file = -1;
};

// The lock is a file beside the user's registry: what it guards lies there.
ProcessLock::ProcessLock(const char* name, DWORD ms) : state_(std::make_unique<State>()) {
    constexpr std::chrono::milliseconds kPause(5);
    const std::string registry = RegistryFile::UserPath();
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(registry).parent_path(), ignored);
    state_->file =
        open((registry + "." + name + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (state_->file < 0) return;
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms);
    for (;;) {
        held_ = flock(state_->file, LOCK_EX | LOCK_NB) == 0;
        if (held_ || (errno != EWOULDBLOCK && errno != EINTR)) return;
        if (std::chrono::steady_clock::now() >= end) return;
        std::this_thread::sleep_for(kPause);
    }
}

ProcessLock::~ProcessLock() {
    if (state_->file >= 0) close(state_->file);
}
