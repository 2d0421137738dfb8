// Bytes put one behind the other, numbers with their least significant byte first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/wtext.h"

class ByteWriter {
public:
    void Byte(std::uint8_t value) { bytes_.push_back(value); }
    void Number16(std::uint32_t value) { Number(value, 2); }
    void Number32(std::uint32_t value) { Number(value, 4); }
    void Number64(std::uint64_t value) { Number(value, 8); }
    void Id(const GUID& guid) {
        Number32(guid.Data1);
        Number16(guid.Data2);
        Number16(guid.Data3);
        for (const std::uint8_t byteOfId : guid.Data4)
            Byte(byteOfId);
    }
    void Units(WTextView text) {
        for (const WCHAR unit : text)
            Number16(static_cast<std::uint16_t>(unit));
    }
    void Bytes(const std::vector<std::uint8_t>& bytes) {
        bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    }
    void Fill(std::uint8_t value, std::size_t count) { bytes_.insert(bytes_.end(), count, value); }
    // Up to a multiple of `step`.
    void Pad(std::size_t step, std::uint8_t value = 0) {
        while (bytes_.size() % step != 0)
            Byte(value);
    }
    // A number that was not known when its place was written.
    void Set32(std::size_t offset, std::uint32_t value) {
        for (std::size_t i = 0; i < 4; ++i) {
            bytes_[offset + i] = static_cast<std::uint8_t>(value >> (8 * i));
        }
    }

    std::size_t Size() const { return bytes_.size(); }
    const std::vector<std::uint8_t>& Done() const { return bytes_; }

private:
    void Number(std::uint64_t value, int count) {
        for (int i = 0; i < count; ++i)
            Byte(static_cast<std::uint8_t>(value >> (8 * i)));
    }

    std::vector<std::uint8_t> bytes_;
};
