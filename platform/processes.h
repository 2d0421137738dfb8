// Other processes of this machine, for both builds.
#pragma once

#include <chrono>
#include <memory>

#include "platform/system.h"
#include "platform/wtext.h"

// Whether a process with this id runs. One that the user may not look at runs.
bool IsProcessRunning(DWORD id);

// A lock is waited for no longer than this.
inline constexpr DWORD kMostLockWait = 5000;  // ms

// While it lives all locks together are waited for so long, and not longer than a LockWait around
// it allows: natively those of the registry's file too. With 0 each is tried once.
class LockWait {
public:
    explicit LockWait(DWORD ms);
    ~LockWait();
    LockWait(const LockWait&) = delete;
    LockWait& operator=(const LockWait&) = delete;

    // The lock that another process didn't let go of, natively the path of its file; empty when all
    // could be had.
    const WText& GivenUp() const { return givenUp_; }

    // For whoever waits: until when, and that it was in vain.
    static std::chrono::steady_clock::time_point End();
    static void GiveUp(const WText& lock);

private:
    LockWait* outer_;
    std::chrono::steady_clock::time_point end_;
    WText givenUp_;
};

// While it is held no other process of the user holds the lock of this name. A process that ends
// lets go of it.
class ProcessLock {
public:
    // Waits for the lock. `name`: letters and digits, not null.
    explicit ProcessLock(const char* name);
    ~ProcessLock();
    ProcessLock(const ProcessLock&) = delete;
    ProcessLock& operator=(const ProcessLock&) = delete;

    bool IsHeld() const { return held_; }

private:
    struct State;
    std::unique_ptr<State> state_;
    bool held_ = false;
};
