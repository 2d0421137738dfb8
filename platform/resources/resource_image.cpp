#include "platform/resources/resource_image.h"

#include <cstring>

namespace platform {

namespace {

constexpr std::size_t kPeOffsetAt = 0x3C;
constexpr std::size_t kFileHeaderBytes = 24;       // signature and file header
constexpr std::size_t kResourceDirectoryAt = 128;  // third data directory, in a PE32+ header
constexpr std::size_t kSectionHeaderBytes = 40;
constexpr std::uint16_t kPe32Plus = 0x20B;
constexpr std::uint32_t kSubdirectory = 0x80000000u;
constexpr std::size_t kDirectoryHeaderBytes = 16;
constexpr std::size_t kDirectoryEntryBytes = 8;

}  // namespace

template <typename T>
std::optional<T> ResourceImage::Read(std::span<const std::byte> bytes, std::size_t offset) const {
    if (offset > bytes.size() || bytes.size() - offset < sizeof(T)) return std::nullopt;
    T value;
    std::memcpy(&value, bytes.data() + offset, sizeof(T));
    return value;
}

std::optional<ResourceImage> ResourceImage::Parse(std::span<const std::byte> file) {
    ResourceImage image(file);
    const auto dos = image.Read<std::uint16_t>(file, 0);
    const auto pe = image.Read<std::uint32_t>(file, kPeOffsetAt);
    if (dos != 0x5A4D || !pe || image.Read<std::uint32_t>(file, *pe) != 0x00004550u) {
        return std::nullopt;
    }
    const std::size_t optional = std::size_t{*pe} + kFileHeaderBytes;
    const auto rva = image.Read<std::uint32_t>(file, optional + kResourceDirectoryAt);
    if (image.Read<std::uint16_t>(file, optional) != kPe32Plus || !rva || *rva == 0 ||
        !image.LocateSection(*rva)) {
        return std::nullopt;
    }
    return image;
}

bool ResourceImage::LocateSection(std::uint32_t rva) {
    const std::size_t pe = *Read<std::uint32_t>(file_, kPeOffsetAt);
    const auto count = Read<std::uint16_t>(file_, pe + 6);
    const auto optionalBytes = Read<std::uint16_t>(file_, pe + 20);
    if (!count || !optionalBytes) return false;
    for (std::size_t i = 0; i < *count; ++i) {
        const std::size_t header = pe + kFileHeaderBytes + *optionalBytes + i * kSectionHeaderBytes;
        const auto start = Read<std::uint32_t>(file_, header + 12);
        const auto bytes = Read<std::uint32_t>(file_, header + 16);
        const auto offset = Read<std::uint32_t>(file_, header + 20);
        if (!start || !bytes || !offset) return false;
        if (rva < *start || rva - *start >= *bytes) continue;
        if (*offset > file_.size() || file_.size() - *offset < *bytes) return false;
        section_ = file_.subspan(*offset, *bytes);
        sectionRva_ = *start;
        root_ = rva - *start;
        return true;
    }
    return false;
}

std::optional<std::uint32_t> ResourceImage::Entry(std::uint32_t directory,
                                                  std::optional<std::uint32_t> id) const {
    const std::size_t at = std::size_t{root_} + directory;
    const auto named = Read<std::uint16_t>(section_, at + 12);
    const auto numbered = Read<std::uint16_t>(section_, at + 14);
    if (!named || !numbered) return std::nullopt;
    const std::size_t count = std::size_t{*named} + *numbered;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t entry = at + kDirectoryHeaderBytes + i * kDirectoryEntryBytes;
        const auto name = Read<std::uint32_t>(section_, entry);
        const auto offset = Read<std::uint32_t>(section_, entry + 4);
        if (!name || !offset) return std::nullopt;
        if (!id || *id == *name) return offset;
    }
    return std::nullopt;
}

std::span<const std::byte> ResourceImage::Find(std::uint32_t type, std::uint32_t id) const {
    const auto byType = Entry(0, type);
    if (!byType || (*byType & kSubdirectory) == 0) return {};
    const auto byId = Entry(*byType & ~kSubdirectory, id);
    if (!byId || (*byId & kSubdirectory) == 0) return {};
    const auto leaf = Entry(*byId & ~kSubdirectory, std::nullopt);
    if (!leaf || (*leaf & kSubdirectory) != 0) return {};
    const std::size_t at = std::size_t{root_} + *leaf;
    const auto rva = Read<std::uint32_t>(section_, at);
    const auto bytes = Read<std::uint32_t>(section_, at + 4);
    if (!rva || !bytes || *rva < sectionRva_) return {};
    const std::size_t start = *rva - sectionRva_;
    if (start > section_.size() || section_.size() - start < *bytes) return {};
    return section_.subspan(start, *bytes);
}

}  // namespace platform
