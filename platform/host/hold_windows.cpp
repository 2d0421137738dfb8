#include <cstdio>
#include <utility>

#include "platform/host/hold.h"

namespace {

HANDLE endEvent = nullptr;

BOOL CALLBACK OnControl(DWORD control) {
    if (control != CTRL_C_EVENT && control != CTRL_BREAK_EVENT) return FALSE;
    SetEvent(endEvent);
    return TRUE;
}

// Reading can't be broken off, so it has a thread of its own, which ends with the process at last.
DWORD CALLBACK ReadLine(void*) {
    for (int c = std::getchar(); c != EOF && c != '\n'; c = std::getchar())
        continue;
    SetEvent(endEvent);
    return 0;
}

}  // namespace

HeldFile::HeldFile(const NativePath& path) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) file_ = reinterpret_cast<std::intptr_t>(file);
}

HeldFile::~HeldFile() {
    if (file_ != kNoFile) CloseHandle(reinterpret_cast<HANDLE>(file_));
}

HeldFile::HeldFile(HeldFile&& other) noexcept : file_(std::exchange(other.file_, kNoFile)) {}

EndRequest::EndRequest() {
    // Not closed: the thread that reads may outlive this object.
    if (endEvent == nullptr) endEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    signals_ = reinterpret_cast<std::intptr_t>(endEvent);
    ResetEvent(endEvent);
    SetConsoleCtrlHandler(OnControl, TRUE);
}

EndRequest::~EndRequest() {
    SetConsoleCtrlHandler(OnControl, FALSE);
}

void EndRequest::Wait() {
    const HANDLE thread = CreateThread(nullptr, 0, ReadLine, nullptr, 0, nullptr);
    if (thread != nullptr) CloseHandle(thread);
    WaitForSingleObject(reinterpret_cast<HANDLE>(signals_), INFINITE);
}
