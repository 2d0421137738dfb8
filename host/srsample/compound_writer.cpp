#include "host/srsample/compound_writer.h"

#include <algorithm>

namespace {

constexpr std::uint32_t kEndOfChain = 0xFFFFFFFE;
constexpr std::uint32_t kFatSector = 0xFFFFFFFD;
constexpr std::uint32_t kListSector = 0xFFFFFFFC;
constexpr std::uint32_t kFree = 0xFFFFFFFF;
constexpr std::uint32_t kNoEntry = 0xFFFFFFFF;
constexpr std::uint64_t kSignature = 0xE11AB1A1E011CFD0;
constexpr std::uint32_t kHeaderLists = 109;
constexpr std::uint32_t kMiniShift = 6;
constexpr std::uint32_t kMiniCutoff = 4096;
constexpr std::size_t kEntryBytes = 128;
constexpr std::size_t kNameBytes = 64;

WCHAR Upper(WCHAR unit) {
    return unit >= 'a' && unit <= 'z' ? static_cast<WCHAR>(unit - ('a' - 'A')) : unit;
}

// The order of a directory: short names first, then by capital letters.
bool ComesBefore(WTextView a, WTextView b) {
    if (a.size() != b.size()) return a.size() < b.size();
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](WCHAR x, WCHAR y) { return Upper(x) < Upper(y); });
}

std::uint32_t Count(std::size_t number) {
    return static_cast<std::uint32_t>(number);
}

}  // namespace

// The sectors behind the header and the table of their chains.
class CompoundWriter::Body {
public:
    explicit Body(std::uint32_t shift) : shift_(shift) {}

    std::uint32_t SectorBytes() const { return std::uint32_t{1} << shift_; }

    // The chain's first sector, or the end mark for no bytes.
    std::uint32_t AddChain(const std::vector<std::uint8_t>& bytes, std::uint8_t filler = 0) {
        if (bytes.empty()) return kEndOfChain;
        const std::uint32_t start = Count(fat_.size());
        bytes_.Bytes(bytes);
        bytes_.Pad(SectorBytes(), filler);
        const std::uint32_t end = Count(bytes_.Size() >> shift_);
        for (std::uint32_t next = start + 1; next < end; ++next)
            fat_.push_back(next);
        fat_.push_back(kEndOfChain);
        return start;
    }

    // The table itself, and the sectors that list its sectors where the header has no room.
    void Finish() {
        const std::uint32_t ids = SectorBytes() / 4;
        const std::uint32_t data = Count(fat_.size());
        std::uint32_t tables = 0;
        std::uint32_t lists = 0;
        while (tables * ids < data + tables + lists) {
            ++tables;
            lists = tables <= kHeaderLists ? 0 : (tables - kHeaderLists + ids - 2) / (ids - 1);
        }
        fat_.insert(fat_.end(), lists, kListSector);
        for (std::uint32_t i = 0; i < tables; ++i) {
            tables_.push_back(Count(fat_.size()));
            fat_.push_back(kFatSector);
        }
        fat_.resize(static_cast<std::size_t>(tables) * ids, kFree);
        listStart_ = lists == 0 ? kEndOfChain : data;
        listCount_ = lists;
        std::size_t listed = kHeaderLists;
        for (std::uint32_t list = 0; list < lists; ++list) {
            for (std::uint32_t i = 0; i + 1 < ids; ++i, ++listed) {
                bytes_.Number32(listed < tables_.size() ? tables_[listed] : kFree);
            }
            bytes_.Number32(list + 1 < lists ? data + list + 1 : kEndOfChain);
        }
        for (const std::uint32_t next : fat_)
            bytes_.Number32(next);
    }

    const std::vector<std::uint8_t>& Bytes() const { return bytes_.Done(); }
    const std::vector<std::uint32_t>& Tables() const { return tables_; }
    std::uint32_t ListStart() const { return listStart_; }
    std::uint32_t ListCount() const { return listCount_; }

private:
    std::uint32_t shift_;
    ByteWriter bytes_;
    std::vector<std::uint32_t> fat_;
    std::vector<std::uint32_t> tables_;
    std::uint32_t listStart_ = kEndOfChain;
    std::uint32_t listCount_ = 0;
};

CompoundWriter::CompoundWriter(eVersion version)
    : sectorShift_(version == eVersion::Three ? 9 : 12) {}

void CompoundWriter::AddStream(WTextView name, std::vector<std::uint8_t> bytes) {
    Stream stream{WText(name), std::move(bytes)};
    const auto place = std::find_if(streams_.begin(), streams_.end(), [&](const Stream& other) {
        return ComesBefore(stream.name, other.name);
    });
    streams_.insert(place, std::move(stream));
}

// Halving gives a tree that is full but for its deepest level; with that level red and all others
// black it is a red-black tree.
void CompoundWriter::BuildTree(std::size_t first, std::size_t count, std::uint32_t depth,
                               std::uint32_t deepest, std::vector<Sibling>& tree,
                               std::uint32_t& top) const {
    top = kNoEntry;
    if (count == 0) return;
    const std::size_t middle = first + count / 2;
    Sibling& own = tree[middle];
    own.isRed = depth == deepest && depth > 0;
    top = Count(middle + 1);  // entry 0 is the root storage
    BuildTree(first, middle - first, depth + 1, deepest, tree, own.left);
    BuildTree(middle + 1, first + count - middle - 1, depth + 1, deepest, tree, own.right);
}

std::vector<std::uint8_t> CompoundWriter::Directory(const std::vector<Place>& places,
                                                    Place miniStream) const {
    enum : std::uint8_t { kStream = 2, kRoot = 5, kRed = 0, kBlack = 1 };
    std::vector<Sibling> tree(streams_.size(), {kNoEntry, kNoEntry, false});
    std::uint32_t deepest = 0;
    while ((std::size_t{2} << deepest) <= streams_.size())
        ++deepest;
    std::uint32_t child = kNoEntry;
    BuildTree(0, streams_.size(), 0, deepest, tree, child);

    ByteWriter out;
    const auto entry = [&](WTextView name, std::uint8_t type, const Sibling& sibling,
                           std::uint32_t below, const GUID& id, const Place& place) {
        out.Units(name);
        out.Fill(0, kNameBytes - 2 * name.size());
        out.Number16(Count(2 * name.size() + 2));
        out.Byte(type);
        out.Byte(sibling.isRed ? kRed : kBlack);
        out.Number32(sibling.left);
        out.Number32(sibling.right);
        out.Number32(below);
        out.Id(id);
        out.Fill(0, 20);  // flags and times
        out.Number32(place.start);
        out.Number64(place.size);
    };
    entry(TEXT("Root Entry"), kRoot, {kNoEntry, kNoEntry, false}, child, rootClass_, miniStream);
    for (std::size_t i = 0; i < streams_.size(); ++i) {
        entry(streams_[i].name, kStream, tree[i], kNoEntry, GUID{}, places[i]);
    }
    return out.Done();
}

ByteWriter CompoundWriter::Header(const Body& body, std::uint32_t directory,
                                  std::uint32_t directorySectors, std::uint32_t miniFat,
                                  std::uint32_t miniFatSectors) const {
    const bool isFour = sectorShift_ == 12;
    ByteWriter out;
    out.Number64(kSignature);
    out.Fill(0, sizeof(GUID));
    out.Number16(0x3E);
    out.Number16(isFour ? 4 : 3);
    out.Number16(0xFFFE);
    out.Number16(sectorShift_);
    out.Number16(kMiniShift);
    out.Fill(0, 6);
    out.Number32(isFour ? directorySectors : 0);
    out.Number32(Count(body.Tables().size()));
    out.Number32(directory);
    out.Number32(0);  // transactions
    out.Number32(kMiniCutoff);
    out.Number32(miniFat);
    out.Number32(miniFatSectors);
    out.Number32(body.ListStart());
    out.Number32(body.ListCount());
    for (std::size_t i = 0; i < kHeaderLists; ++i) {
        out.Number32(i < body.Tables().size() ? body.Tables()[i] : kFree);
    }
    out.Pad(body.SectorBytes());
    return out;
}

std::vector<std::uint8_t> CompoundWriter::Build() const {
    Body body(sectorShift_);
    ByteWriter mini;
    ByteWriter miniFat;
    std::vector<Place> places;
    for (const Stream& stream : streams_) {
        const std::size_t size = stream.bytes.size();
        if (size >= kMiniCutoff) {
            places.push_back({body.AddChain(stream.bytes), size});
            continue;
        }
        const std::uint32_t start = Count(mini.Size() >> kMiniShift);
        mini.Bytes(stream.bytes);
        mini.Pad(std::size_t{1} << kMiniShift);
        const std::uint32_t end = Count(mini.Size() >> kMiniShift);
        for (std::uint32_t next = start + 1; next < end; ++next)
            miniFat.Number32(next);
        if (end > start) miniFat.Number32(kEndOfChain);
        places.push_back({end > start ? start : kEndOfChain, size});
    }
    const Place miniStream = {body.AddChain(mini.Done()), mini.Size()};
    const std::size_t sectorBytes = body.SectorBytes();
    const std::uint32_t miniFatSectors = Count((miniFat.Size() + sectorBytes - 1) / sectorBytes);
    const std::uint32_t miniFatStart = body.AddChain(miniFat.Done(), 0xFF);
    std::vector<std::uint8_t> directory = Directory(places, miniStream);
    // Places of no entry have no neighbours either.
    while (directory.size() % sectorBytes != 0) {
        ByteWriter empty;
        empty.Fill(0, 68);
        empty.Number32(kNoEntry);
        empty.Number32(kNoEntry);
        empty.Number32(kNoEntry);
        empty.Pad(kEntryBytes);
        directory.insert(directory.end(), empty.Done().begin(), empty.Done().end());
    }
    const std::uint32_t directorySectors = Count(directory.size() / sectorBytes);
    const std::uint32_t directoryStart = body.AddChain(directory);
    body.Finish();
    ByteWriter file = Header(body, directoryStart, directorySectors, miniFatStart, miniFatSectors);
    file.Bytes(body.Bytes());
    return file.Done();
}
