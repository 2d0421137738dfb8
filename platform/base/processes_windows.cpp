#include <algorithm>
#include <string>

#include "platform/processes.h"

bool IsProcessRunning(DWORD id) {
    const HANDLE process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id);
    if (process == nullptr) return GetLastError() == ERROR_ACCESS_DENIED;
    DWORD code = 0;
    const bool running = GetExitCodeProcess(process, &code) && code == STILL_ACTIVE;
    CloseHandle(process);
    return running;
}

struct ProcessLock::State {
    HANDLE mutex = nullptr;
};

ProcessLock::ProcessLock(const char* name) : state_(std::make_unique<State>()) {
    const std::string narrow = std::string("Local\\SrFind") + name;
    const std::wstring whole(narrow.begin(), narrow.end());
    state_->mutex = CreateMutexW(nullptr, FALSE, whole.c_str());
    if (state_->mutex == nullptr) return;
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        LockWait::End() - std::chrono::steady_clock::now());
    const auto ms = static_cast<DWORD>(std::max<long long>(left.count(), 0));
    const DWORD wait = WaitForSingleObject(state_->mutex, ms);
    held_ = wait == WAIT_OBJECT_0 || wait == WAIT_ABANDONED;
    if (!held_) LockWait::GiveUp(whole);
}

ProcessLock::~ProcessLock() {
    if (held_) ReleaseMutex(state_->mutex);
    if (state_->mutex != nullptr) CloseHandle(state_->mutex);
}
