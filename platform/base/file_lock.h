// Native build: the lock of an open file, which ends with the descriptor.
#pragma once

#include <string>

// Waits as a LockWait says. False, with errno set, when the lock can't be had; `path` names the
// file to whoever tells of it.
bool TakeFileLock(int file, const std::string& path);
