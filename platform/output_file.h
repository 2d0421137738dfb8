// A file that is written from its beginning, byte by byte as given.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/wtext.h"

class OutputFile {
public:
    OutputFile() = default;
    ~OutputFile() { (void)Close(); }
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Makes the file, or empties one that is there. The path is in the form of Windows.
    [[nodiscard]] bool Open(const WText& path);
    // False when not all of it could be written.
    [[nodiscard]] bool Write(const void* bytes, std::size_t cb);
    // True for a file that isn't open.
    [[nodiscard]] bool Close();

private:
    // The system's number or handle of the open file.
    std::intptr_t file_ = kNone;
    static constexpr std::intptr_t kNone = -1;
};
