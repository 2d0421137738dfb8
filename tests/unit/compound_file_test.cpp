#include "companions/md/document/compound_file.h"

#include <gtest/gtest.h>

#include <functional>

#include "host/srsample/compound_writer.h"
#include "tests/unit/document_support.h"

namespace {

using mddoc::CompoundFile;
using eVersion = CompoundWriter::eVersion;

constexpr GUID kClass = {0x01020304, 0x0506, 0x0708, {9, 10, 11, 12, 13, 14, 15, 16}};
constexpr std::uint32_t kEndOfChain = 0xFFFFFFFE;

FileContents Pattern(std::size_t size, std::uint32_t seed) {
    FileContents bytes(size);
    std::mt19937 random(seed);
    for (auto& value : bytes)
        value = static_cast<std::uint8_t>(random());
    return bytes;
}

struct Sample {
    WText name;
    FileContents bytes;
};

// Two short streams in the mini stream, two long ones, one empty.
const std::vector<Sample>& Samples() {
    static const std::vector<Sample> samples = {{TEXT("Short"), Pattern(200, 1)},
                                                {TEXT("\005Edge"), Pattern(4095, 2)},
                                                {TEXT("Whole"), Pattern(4096, 3)},
                                                {TEXT("Long"), Pattern(9001, 4)},
                                                {TEXT("Empty"), {}}};
    return samples;
}

FileContents GoodFile(eVersion version = eVersion::Three) {
    CompoundWriter writer(version);
    writer.SetRootClass(kClass);
    for (const Sample& sample : Samples())
        writer.AddStream(sample.name, sample.bytes);
    return writer.Build();
}

// Where the parts of a version 3 file stand.
struct Map {
    explicit Map(const FileContents& bytes)
        : fat(At(Get32(bytes, 76))),
          directory(At(Get32(bytes, 48))),
          miniFat(At(Get32(bytes, 60))) {}
    static std::size_t At(std::uint32_t sector) { return (std::size_t{sector} + 1) * 512; }
    std::size_t Entry(std::size_t index) const { return directory + index * 128; }
    std::size_t Fat(std::size_t sector) const { return fat + sector * 4; }

    std::size_t fat;
    std::size_t directory;
    std::size_t miniFat;
};

// The directory entry of a stream, found by its name's first letter.
std::size_t EntryOf(const FileContents& bytes, char letter) {
    const Map map(bytes);
    for (std::size_t i = 1; i < 8; ++i) {
        if (bytes.at(map.Entry(i)) == static_cast<std::uint8_t>(letter)) return map.Entry(i);
    }
    throw std::runtime_error("no such entry");
}

// The first failure of opening the file and reading all of it, S_OK when each byte is right.
HRESULT ReadAll(CompoundFile& file, const NativePath& path) {
    HRESULT status = file.Open(path);
    if (FAILED(status)) return status;
    EXPECT_TRUE(file.RootClass() == kClass);
    FileContents bytes;
    for (const Sample& sample : Samples()) {
        CompoundFile::Stream stream;
        status = file.FindStream(sample.name, stream);
        if (status != S_OK) return status;
        EXPECT_LE(stream.size, sample.bytes.size());
        if (stream.size > sample.bytes.size()) return E_FAIL;
        bytes.assign(static_cast<std::size_t>(stream.size), 0);
        status = file.Read(stream, 0, bytes.data(), bytes.size());
        if (FAILED(status)) return status;
        EXPECT_EQ(sample.bytes, bytes);
    }
    return S_OK;
}

TEST(CompoundFile, ReadsBothSectorSizesAtAnyOffset) {
    const TempFolder folder;
    CompoundFile file;
    for (const eVersion version : {eVersion::Three, eVersion::Four}) {
        const NativePath path = folder.Write("good", GoodFile(version));
        EXPECT_EQ(S_OK, ReadAll(file, path));
        ASSERT_EQ(S_OK, file.Open(path));
        CompoundFile::Stream stream;
        EXPECT_EQ(S_FALSE, file.FindStream(TEXT("Shor"), stream));
        EXPECT_EQ(S_OK, file.FindStream(TEXT("sHORT"), stream));
        for (const Sample& sample : Samples()) {
            ASSERT_EQ(S_OK, file.FindStream(sample.name, stream));
            std::uint8_t byteRead = 0;
            for (const std::size_t at : {0, 63, 64, 199, 511, 512, 4094, 8999}) {
                if (at >= sample.bytes.size()) continue;
                ASSERT_EQ(S_OK, file.Read(stream, at, &byteRead, 1));
                EXPECT_EQ(sample.bytes[at], byteRead) << at;
            }
            EXPECT_EQ(STG_E_READFAULT, file.Read(stream, sample.bytes.size(), &byteRead, 1));
            EXPECT_EQ(S_OK, file.Read(stream, sample.bytes.size(), &byteRead, 0));
        }
    }
}

struct Damage {
    const char* label;
    std::function<void(FileContents&)> change;
    HRESULT wanted;
};

// With `sparse` the file seems to have 1 GB, and costs what the few stored bytes cost.
void ExpectEach(const std::vector<Damage>& rows, bool sparse = false) {
    const TempFolder folder;
    CompoundFile file;
    const FileContents good = GoodFile();
    for (const Damage& row : rows) {
        SCOPED_TRACE(row.label);
        FileContents bytes = good;
        row.change(bytes);
        const NativePath path = folder.Write("bad", bytes);
        if (sparse) std::filesystem::resize_file(path, 1u << 30);
        EXPECT_EQ(row.wanted, ReadAll(file, path));
        EXPECT_GE(good.size(), file.Spent().links);
        EXPECT_GE(4 * good.size(), file.Spent().cbRead);
        EXPECT_GE(good.size(), file.Spent().cbAllocated);
    }
}

Damage Number(const char* label, std::size_t offset, std::uint32_t value, HRESULT wanted) {
    return {label, [=](FileContents& bytes) { Put32(bytes, offset, value); }, wanted};
}

constexpr HRESULT kCorrupt = STG_E_DOCFILECORRUPT;
constexpr HRESULT kForeign = STG_E_FILEALREADYEXISTS;

TEST(CompoundFile, HeaderIsChecked) {
    ExpectEach({
        {"untouched", [](FileContents&) {}, S_OK},
        {"empty", [](FileContents& b) { b.clear(); }, kForeign},
        {"part of a signature", [](FileContents& b) { b.resize(7); }, kForeign},
        {"other signature", [](FileContents& b) { b[0] = 'P'; }, kForeign},
        {"signature only", [](FileContents& b) { b.resize(8); }, kCorrupt},
        {"header only", [](FileContents& b) { b.resize(512); }, kCorrupt},
        {"byte order", [](FileContents& b) { b[28] = 0xFF; }, kCorrupt},
        {"sector shift 0", [](FileContents& b) { Put16(b, 30, 0); }, kCorrupt},
        {"sector shift 8", [](FileContents& b) { Put16(b, 30, 8); }, kCorrupt},
        {"sector shift 65535", [](FileContents& b) { Put16(b, 30, 0xFFFF); }, kCorrupt},
        {"mini sector shift 31", [](FileContents& b) { Put16(b, 32, 31); }, kCorrupt},
        Number("cutoff 0", 56, 0, kCorrupt),
        Number("no FAT sector", 44, 0, kCorrupt),
        Number("four billion FAT sectors", 44, 0xFFFFFFFF, S_OK),
        Number("FAT behind the end", 76, 0x00FFFFFF, kCorrupt),
        Number("FAT at a special id", 76, kEndOfChain, kCorrupt),
        Number("directory behind the end", 48, 0x00FFFFFF, kCorrupt),
        Number("no directory", 48, kEndOfChain, kCorrupt),
        Number("mini FAT behind the end", 60, 0x00FFFFFF, kCorrupt),
        Number("no mini FAT", 60, kEndOfChain, kCorrupt),
        Number("version 3 with a CLSID", 8, 0x12345678, S_OK),
        Number("transactions counted", 52, 7, S_OK),
    });
}

TEST(CompoundFile, ChainsAreChecked) {
    const auto fatOf = [](char letter, std::size_t step) {
        return [=](FileContents& b, std::uint32_t value) {
            Put32(b, Map(b).Fat(Get32(b, EntryOf(b, letter) + 116) + step), value);
        };
    };
    const auto toStart = [=](FileContents& b, std::size_t from) {
        fatOf('L', from)(b, Get32(b, EntryOf(b, 'L') + 116));
    };
    const std::vector<Damage> rows = {
        {"chain back to its start", [=](FileContents& b) { toStart(b, 3); }, kCorrupt},
        {"last sector to the start", [=](FileContents& b) { toStart(b, 17); }, kCorrupt},
        {"sector to itself", [=](FileContents& b) { toStart(b, 0); }, kCorrupt},
        {"chain too short", [=](FileContents& b) { fatOf('L', 16)(b, kEndOfChain); }, kCorrupt},
        {"chain to a free sector", [=](FileContents& b) { fatOf('L', 2)(b, 0xFFFFFFFF); },
         kCorrupt},
        {"chain out of the file", [=](FileContents& b) { fatOf('L', 2)(b, 0x7FFFFFFF); }, kCorrupt},
        {"pieces out of order",
         [](FileContents& b) {
             const std::uint32_t first = Get32(b, EntryOf(b, 'L') + 116) + 3;
             const std::uint32_t second = first + 4;
             for (std::size_t i = 0; i < 512; ++i) {
                 std::swap(b[Map::At(first) + i], b[Map::At(second) + i]);
             }
             Put32(b, Map(b).Fat(first - 1), second);
             Put32(b, Map(b).Fat(second), first + 1);
             Put32(b, Map(b).Fat(second - 1), first);
             Put32(b, Map(b).Fat(first), second + 1);
         },
         S_OK},
        {"space kept behind the end", [=](FileContents& b) { fatOf('W', 7)(b, 0); }, S_OK},
        {"directory loop",
         [](FileContents& b) { Put32(b, Map(b).Fat(Get32(b, 48)), Get32(b, 48)); }, kCorrupt},
        {"mini FAT sector loop",
         [](FileContents& b) { Put32(b, Map(b).Fat(Get32(b, 60)), Get32(b, 60)); }, kCorrupt},
        {"mini chain loop", [](FileContents& b) { Put32(b, Map(b).miniFat + 8, 1); }, kCorrupt},
        {"mini chain out of range", [](FileContents& b) { Put32(b, Map(b).miniFat, 0x10000); },
         kCorrupt},
        {"mini chain too short", [](FileContents& b) { Put32(b, Map(b).miniFat, kEndOfChain); },
         kCorrupt},
        {"mini stream loop",
         [](FileContents& b) {
             const std::uint32_t start = Get32(b, Map(b).Entry(0) + 116);
             Put32(b, Map(b).Fat(start + 1), start);
         },
         kCorrupt},
    };
    for (const bool sparse : {false, true})
        ExpectEach(rows, sparse);
}

TEST(CompoundFile, DirectoryIsChecked) {
    const auto root = [](std::size_t field, std::uint32_t value) {
        return [=](FileContents& b) { Put32(b, Map(b).Entry(0) + field, value); };
    };
    const auto stream = [](char letter, std::size_t field, std::uint32_t value) {
        return [=](FileContents& b) { Put32(b, EntryOf(b, letter) + field, value); };
    };
    const auto childOf = [](const FileContents& b) { return Get32(b, Map(b).Entry(0) + 76); };
    ExpectEach({
        {"root is no root", [](FileContents& b) { b[Map(b).Entry(0) + 66] = 1; }, kCorrupt},
        {"no children", root(76, 0xFFFFFFFF), S_FALSE},
        {"child out of range", root(76, 1000), kCorrupt},
        {"child of four billion", root(76, 0xFFFFFFFD), kCorrupt},
        {"child is the root", root(76, 0), kCorrupt},
        {"child is unused", root(76, 6), kCorrupt},
        {"mini stream of no bytes", root(120, 0), kCorrupt},
        {"mini stream of four billion", root(120, 0xFFFFFFFF), kCorrupt},
        {"mini stream elsewhere", root(116, 0x00FFFFFF), kCorrupt},
        {"sibling loop", [=](FileContents& b) { Put32(b, Map(b).Entry(1) + 68, childOf(b)); },
         kCorrupt},
        {"two ways to one entry",
         [=](FileContents& b) {
             const std::size_t top = Map(b).Entry(childOf(b));
             Put32(b, top + 68, Get32(b, top + 72));
         },
         kCorrupt},
        {"entry of no type", [](FileContents& b) { b[EntryOf(b, 'S') + 66] = 9; }, kCorrupt},
        {"a storage in its place", [](FileContents& b) { b[EntryOf(b, 'S') + 66] = 1; }, S_FALSE},
        {"name of no length", [](FileContents& b) { Put16(b, EntryOf(b, 'S') + 64, 0); }, kCorrupt},
        {"name of odd length", [](FileContents& b) { Put16(b, EntryOf(b, 'S') + 64, 11); },
         kCorrupt},
        {"name too long", [](FileContents& b) { Put16(b, EntryOf(b, 'S') + 64, 66); }, kCorrupt},
        {"two streams of a name",
         [](FileContents& b) {
             std::copy_n(b.begin() + static_cast<std::ptrdiff_t>(EntryOf(b, 'S')), 66,
                         b.begin() + static_cast<std::ptrdiff_t>(EntryOf(b, 'E')));
         },
         kCorrupt},
        {"stream larger than the file", stream('L', 120, 0x00FFFFFF), kCorrupt},
        {"stream of four billion", stream('S', 120, 0xFFFFFFFF), kCorrupt},
        {"stream elsewhere", stream('L', 116, 0x00FFFFFF), kCorrupt},
        {"upper half of a size in version 3", stream('L', 124, 0xCCCCCCCC), S_OK},
    });
}

// More FAT sectors than the header lists: two further lists.
TEST(CompoundFile, FurtherListsOfTheFat) {
    const TempFolder folder;
    const FileContents large = Pattern(std::size_t{16} << 20, 5);
    CompoundWriter writer;
    writer.AddStream(TEXT("Large"), large);
    FileContents bytes = writer.Build();
    const std::size_t firstList = Map::At(Get32(bytes, 68));
    const std::size_t next = firstList + 127 * 4;
    ASSERT_NE(kEndOfChain, Get32(bytes, next)) << "the sample needs two lists";
    const auto readLast = [&](const FileContents& contents) {
        CompoundFile file;
        CompoundFile::Stream stream;
        std::uint8_t last[2] = {0, 0};
        HRESULT status = file.Open(folder.Write("large", contents));
        if (status == S_OK) status = file.FindStream(TEXT("Large"), stream);
        if (status == S_OK) status = file.Read(stream, large.size() - 2, last, 2);
        EXPECT_TRUE(status != S_OK || last[1] == large.back());
        return status;
    };
    EXPECT_EQ(S_OK, readLast(bytes));
    const std::uint32_t second = Get32(bytes, next);
    for (const std::uint32_t id : {Get32(bytes, 68), 0x00FFFFFFu, kEndOfChain, 0xFFFFFFFFu}) {
        Put32(bytes, next, id);
        EXPECT_EQ(kCorrupt, readLast(bytes)) << id;
    }
    Put32(bytes, next, second);
    Put32(bytes, 68, 0x00FFFFFF);
    EXPECT_EQ(kCorrupt, readLast(bytes));
}

}  // namespace
