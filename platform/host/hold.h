// Files that a program keeps from all others for a while, and its wait for the end of that while.
#pragma once

#include <cstdint>
#include <string>

#include "platform/native_path.h"

// While this object lives, no other process may read the file: natively one that respects an
// exclusive flock, in the Windows build any, by the sharing mode. Ends with the process, however.
class HeldFile {
public:
    explicit HeldFile(const NativePath& path);
    ~HeldFile();
    HeldFile(HeldFile&& other) noexcept;
    HeldFile& operator=(HeldFile&&) = delete;

    // False when the file can't be opened, or somebody else holds it.
    bool IsHeld() const { return file_ != kNoFile; }

private:
    static constexpr std::intptr_t kNoFile = -1;

    std::intptr_t file_ = kNoFile;  // descriptor or handle
};

// From its making on, a request to end (SIGINT or SIGTERM, in the Windows build Ctrl-C or
// Ctrl-Break) no longer kills the process but is kept for Wait. One at a time.
class EndRequest {
public:
    EndRequest();
    ~EndRequest();
    EndRequest(const EndRequest&) = delete;
    EndRequest& operator=(const EndRequest&) = delete;

    // Returns after such a request, a line on standard input, or its end.
    void Wait();

private:
    std::intptr_t signals_;  // descriptor or handle
};
