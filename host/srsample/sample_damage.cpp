#include "host/srsample/sample_damage.h"

#include <algorithm>

#include "companions/md/document/little_endian.h"
#include "host/srsample/byte_writer.h"
#include "host/srsample/sample_library.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t kFarAway = 0x7FFFFFF0;
constexpr std::size_t kSectorBytes = 512;
constexpr std::size_t kFirstSetBytes = 28;  // of a property set, before its first section's id

// Places in a compound file's header and in an entry of its directory.
constexpr std::size_t kSectorShift = 30;
constexpr std::size_t kDirectoryStart = 48;
constexpr std::size_t kFirstFatSector = 76;
constexpr std::size_t kEntryBytes = 128;
constexpr std::size_t kLeft = 68;

std::uint32_t Get(const Bytes& bytes, std::size_t offset) {
    return mddoc::Load32(&bytes.at(offset));
}

void Put(Bytes& bytes, std::size_t offset, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i)
        bytes.at(offset + i) = static_cast<std::uint8_t>(value >> (8 * i));
}

std::size_t SectorOffset(std::uint32_t sector) {
    return (std::size_t{sector} + 1) * kSectorBytes;
}

// Calls `damage` with the place of each section id of the document's property sets.
template <typename Damage>
void AtEachSection(Bytes& bytes, const Damage& damage) {
    for (const GUID& format : {mddoc::kSummaryFormat, mddoc::kDocumentSummaryFormat,
                               mddoc::kUserDefinedFormat, mddoc::kProductFormat}) {
        ByteWriter id;
        id.Id(format);
        const auto found =
            std::search(bytes.begin(), bytes.end(), id.Done().begin(), id.Done().end());
        if (found != bytes.end()) damage(static_cast<std::size_t>(found - bytes.begin()));
    }
}

void CutInHalf(Bytes& bytes) {
    bytes.resize(bytes.size() / 2);
}

void CutInHeader(Bytes& bytes) {
    bytes.resize(kSectorBytes / 2);
}

void BreakHeader(Bytes& bytes) {
    Put(bytes, kSectorShift, Get(bytes, kSectorShift) ^ 0x5A);
}

// The directory's first sector becomes its own successor.
void CloseChain(Bytes& bytes) {
    const std::uint32_t start = Get(bytes, kDirectoryStart);
    Put(bytes, SectorOffset(Get(bytes, kFirstFatSector)) + 4 * start, start);
}

// The first stream's entry becomes its own neighbour.
void CloseTree(Bytes& bytes) {
    Put(bytes, SectorOffset(Get(bytes, kDirectoryStart)) + kEntryBytes + kLeft, 1);
}

void MoveSetsAway(Bytes& bytes) {
    AtEachSection(bytes, [&](std::size_t id) { Put(bytes, id + sizeof(GUID), kFarAway); });
}

void OvercountProperties(Bytes& bytes) {
    AtEachSection(bytes, [&](std::size_t id) {
        // Only a first section's begin is known from its id alone; a second one's is moved away.
        const std::size_t offset = Get(bytes, id + sizeof(GUID));
        const bool isFirst = Get(bytes, id - kFirstSetBytes) == 0x0000FFFE;
        if (isFirst) {
            Put(bytes, id - kFirstSetBytes + offset + 4, ~0u);
        } else {
            Put(bytes, id + sizeof(GUID), kFarAway);
        }
    });
}

void Empty(Bytes& bytes) {
    bytes.clear();
}

void WriteText(Bytes& bytes) {
    constexpr char kText[] = "This drawing was sent by mail; only its cover text was kept.\r\n";
    bytes.assign(kText, kText + sizeof kText - 1);
}

struct DamageRow {
    const WCHAR* name;
    const char* what;
    bool isDocument;
    void (*damage)(Bytes& bytes);
};
constexpr DamageRow kDamages[] = {
    {TEXT("Bracket cut off"), "the second half of the file is missing", true, CutInHalf},
    {TEXT("Shaft cut short"), "the file ends within its header", true, CutInHeader},
    {TEXT("Flange 5A"), "the header names an impossible sector size", true, BreakHeader},
    {TEXT("Gear ring"), "the chain of the directory's sectors runs in a circle", true, CloseChain},
    {TEXT("Cover ring"), "the tree of the directory runs in a circle", true, CloseTree},
    {TEXT("Lever far"), "the property sets begin behind the end of the file", true, MoveSetsAway},
    {TEXT("Plate many"), "the property sets claim four billion properties", true,
     OvercountProperties},
    {TEXT("Clamp empty"), "the file has no bytes", false, Empty},
    {TEXT("Rail mail"), "the file is a text, not a document", false, WriteText},
};

}  // namespace

std::vector<DamagedSample> MakeDamagedSamples(std::uint64_t seed) {
    std::vector<DamagedSample> samples;
    for (const DamageRow& row : kDamages) {
        // The first document of any library is a part.
        SampleLibrary library(1, seed + samples.size());
        SampleDocument document;
        if (!library.MakeNext(document)) continue;
        const WText path = WText(TEXT("Damaged\\")) + row.name + ExtensionOf(document.kind, 0);
        DamagedSample& sample =
            samples.emplace_back(DamagedSample{path, row.what, row.isDocument, {}});
        sample.bytes = BuildDocument(document);
        row.damage(sample.bytes);
    }
    return samples;
}
