// The resource library cut short: fewer resources, never a read outside
// the file. Each image is a block of its own, so that a sanitizer sees the byte behind it.
#include "platform/resources/resource_image.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <string>

#include "platform/wtext.h"
#include "resource/string_ids.h"

namespace {

constexpr std::uint32_t kTypes[] = {3, 5, 6, 14, 16};

std::string SoundLibrary() {
    WCHAR path[1024];
    GetModuleFileNameW(nullptr, path, 1024);
    *PathFindFileNameW(path) = 0;
    std::string name = wtext::ToUtf8(path).substr(2) + "SrRes.dll";
    for (char& c : name)
        c = c == '\\' ? '/' : c;
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Reads every byte that the image gives out; the count of bytes, or -1 when it is no image.
long ReadAll(std::string_view bytes) {
    const auto block = std::make_unique<std::byte[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), reinterpret_cast<char*>(block.get()));
    const auto image = platform::ResourceImage::Parse({block.get(), bytes.size()});
    if (!image) return -1;
    long count = 0;
    unsigned sum = 0;
    for (const std::uint32_t type : kTypes) {
        // The library's string blocks, and numbers that it has not.
        for (std::uint32_t id = 1190; id < 1370; ++id) {
            const auto found = image->Find(type, id);
            count += static_cast<long>(found.size());
            for (const std::byte byte : found)
                sum += std::to_integer<unsigned>(byte);
        }
    }
    return count + (sum == 0 && count > 0 ? 1 : 0);
}

TEST(ResourceImage, CutShort) {
    const std::string sound = SoundLibrary();
    const long whole = ReadAll(sound);
    ASSERT_LT(1000, whole);
    int refused = 0;
    for (std::size_t length = 0; length < sound.size(); length += length < 1024 ? 1 : 97) {
        const long read = ReadAll(sound.substr(0, length));
        ASSERT_LE(read, whole) << length;
        refused += read < 0 ? 1 : 0;
    }
    EXPECT_LT(1000, refused);
}

}  // namespace
