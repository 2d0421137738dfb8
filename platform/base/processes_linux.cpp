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

#include "platform/base/file_lock.h"
#include "platform/processes.h"
#include "platform/registry/registry_file.h"

bool IsProcessRunning(DWORD id) {
    // 0 and negative numbers would ask about groups of processes.
    const pid_t process = static_cast<pid_t>(id);
    if (process <= 0) return false;
    return kill(process, 0) == 0 || errno == EPERM;
}

bool TakeFileLock(int file, const std::string& path) {
    constexpr std::chrono::milliseconds kPause(5);
    const auto end = LockWait::End();
    while (flock(file, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) return false;
        if (std::chrono::steady_clock::now() >= end) {
            LockWait::GiveUp(wtext::FromUtf8(path));
            errno = EWOULDBLOCK;
            return false;
        }
        std::this_thread::sleep_for(kPause);
    }
    return true;
}

struct ProcessLock::State {
    int file = -1;
};

// The lock is a file beside the user's registry: what it guards lies there.
ProcessLock::ProcessLock(const char* name) : state_(std::make_unique<State>()) {
    const std::string registry = RegistryFile::UserPath();
    if (!RegistryFile::IsPlain(registry)) return;
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(registry).parent_path(), ignored);
    const std::string path = registry + "." + name + ".lock";
    state_->file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    held_ = state_->file >= 0 && TakeFileLock(state_->file, path);
}

ProcessLock::~ProcessLock() {
    if (state_->file >= 0) close(state_->file);
}
