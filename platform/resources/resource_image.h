// Native build: read-only view of the resources of a 64-bit PE image. Every offset that the file
// holds is checked; a damaged image gives fewer resources, never a read outside the file.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace platform {

class ResourceImage {
public:
    // `file` must outlive the image. Empty when the bytes are no PE image with resources.
    static std::optional<ResourceImage> Parse(std::span<const std::byte> file);

    // The bytes of resource `id` of `type` in the first language that there is; empty when absent.
    std::span<const std::byte> Find(std::uint32_t type, std::uint32_t id) const;

private:
    explicit ResourceImage(std::span<const std::byte> file) : file_(file) {}
    bool LocateSection(std::uint32_t rva);
    // The offset that the entry `id` of the directory at `directory` holds (with its subdirectory
    // bit); `id` absent means the first entry.
    std::optional<std::uint32_t> Entry(std::uint32_t directory,
                                       std::optional<std::uint32_t> id) const;
    template <typename T>
    std::optional<T> Read(std::span<const std::byte> bytes, std::size_t offset) const;

    std::span<const std::byte> file_;
    std::span<const std::byte> section_;  // the resource section's bytes
    std::uint32_t sectionRva_ = 0;
    std::uint32_t root_ = 0;  // the root directory's offset in the section
};

inline constexpr std::uint32_t kResourceDialog = 5;
inline constexpr std::uint32_t kResourceString = 6;
inline constexpr std::uint32_t kResourceIconGroup = 14;

}  // namespace platform
