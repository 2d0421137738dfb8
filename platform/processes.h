// Other processes of this machine, for both builds.
#pragma once

#include <memory>

#include "platform/system.h"

// Whether a process with this id runs. One that the user may not look at runs.
bool IsProcessRunning(DWORD id);

// While it is held no other process of the user holds the lock of this name. A process that ends
// lets go of it.
class ProcessLock {
public:
    // Waits for the lock, `ms` at most. `name`: letters and digits, not null.
    ProcessLock(const char* name, DWORD ms);
    ~ProcessLock();
    ProcessLock(const ProcessLock&) = delete;
    ProcessLock& operator=(const ProcessLock&) = delete;

    bool IsHeld() const { return held_; }

private:
    struct State;
    std::unique_ptr<State> state_;
    bool held_ = false;
};
