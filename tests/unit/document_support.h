// Files for the tests of the document reader: a folder that goes away with its object, and small
// changes to bytes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "platform/native_path.h"

using FileContents = std::vector<std::uint8_t>;

class TempFolder {
public:
    TempFolder() {
        std::random_device random;
        path_ = std::filesystem::temp_directory_path() /
                ("document_test_" + std::to_string(random()) + "_" + std::to_string(random()));
        std::filesystem::create_directories(path_);
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }

    NativePath Write(const std::string& name, const FileContents& bytes) const {
        std::ofstream file(path_ / name, std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        file.close();
        if (!file) throw std::runtime_error("a test's file can't be written");
        return (path_ / name).native();
    }

private:
    std::filesystem::path path_;
};

inline void Put16(FileContents& bytes, std::size_t offset, std::uint32_t value) {
    for (std::size_t i = 0; i < 2; ++i)
        bytes.at(offset + i) = static_cast<std::uint8_t>(value >> (8 * i));
}

inline void Put32(FileContents& bytes, std::size_t offset, std::uint32_t value) {
    Put16(bytes, offset, value);
    Put16(bytes, offset + 2, value >> 16);
}

inline std::uint32_t Get32(const FileContents& bytes, std::size_t offset) {
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;)
        value = (value << 8) | bytes.at(offset + i);
    return value;
}
