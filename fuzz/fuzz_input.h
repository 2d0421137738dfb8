// What the fuzz targets share. Each target is one function over bytes; a fault is a sanitizer's
// finding, a limit that is passed, or a Require that doesn't hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>

#include <unistd.h>

#include "platform/native_path.h"

// Ends the run, so that the input is kept.
inline void Require(bool holds) {
    if (!holds) std::abort();
}

// A file in memory that holds the input of one round, for code that wants a path.
class InputFile {
public:
    InputFile() : path_("/dev/shm/fuzz-" + std::to_string(getpid())) {}
    ~InputFile() { unlink(path_.c_str()); }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    void Write(const void* bytes, std::size_t cb) const {
        std::ofstream file(path_, std::ios::binary | std::ios::trunc);
        file.write(static_cast<const char*>(bytes), static_cast<std::streamsize>(cb));
        Require(file.good());
    }
    // Nothing is stored behind the bytes that are there.
    void Lengthen(std::size_t cb) const {
        Require(truncate(path_.c_str(), static_cast<off_t>(cb)) == 0);
    }
    const std::string& Path() const { return path_; }

private:
    std::string path_;
};

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
