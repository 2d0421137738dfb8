#include <algorithm>

#include "platform/processes.h"

namespace {
thread_local LockWait* innermost = nullptr;
}

LockWait::LockWait(DWORD ms)
    : outer_(innermost), end_(std::chrono::steady_clock::now() + std::chrono::milliseconds(ms)) {
    if (outer_ != nullptr) end_ = std::min(end_, outer_->end_);
    innermost = this;
}

LockWait::~LockWait() {
    innermost = outer_;
}

std::chrono::steady_clock::time_point LockWait::End() {
    return innermost != nullptr ? innermost->end_ : LockWait(kMostLockWait).end_;
}

void LockWait::GiveUp(const WText& lock) {
    for (LockWait* wait = innermost; wait != nullptr; wait = wait->outer_)
        wait->givenUp_ = lock;
}
