#include "companions/md/document/compound_file.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "companions/md/document/little_endian.h"

namespace mddoc {

namespace {

constexpr BYTE kSignature[] = {0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1};
constexpr std::size_t kHeaderBytes = 512;
constexpr std::uint32_t kLastRegularSector = 0xFFFFFFF9;
constexpr std::uint32_t kEndOfChain = 0xFFFFFFFE;
constexpr std::uint32_t kNoEntry = 0xFFFFFFFF;
constexpr std::uint32_t kMiniShift = 6;
constexpr std::uint32_t kMiniStreamCutoff = 4096;
constexpr std::uint32_t kEntryBytes = 128;
constexpr std::uint32_t kIdBytes = 4;  // of a sector in the tables
constexpr std::uint64_t kToTheEnd = std::numeric_limits<std::uint64_t>::max();
constexpr std::uint64_t kNoBlock = std::numeric_limits<std::uint64_t>::max();
constexpr std::size_t kMostChainSectors = 1u << 20;
// Buffers that a file has made larger than this are not kept for the next one.
constexpr std::size_t kMostKept = 1u << 20;

// Offsets in the header.
constexpr std::size_t kMajorVersion = 26;
constexpr std::size_t kByteOrder = 28;
constexpr std::size_t kSectorShift = 30;
constexpr std::size_t kMiniSectorShift = 32;
constexpr std::size_t kFatSectorCount = 44;
constexpr std::size_t kDirectoryStart = 48;
constexpr std::size_t kCutoff = 56;
constexpr std::size_t kMiniFatStart = 60;
constexpr std::size_t kMoreFatStart = 68;
constexpr std::size_t kFatSectors = 76;

// Offsets in a directory entry.
constexpr std::size_t kNameBytes = 64;
constexpr std::size_t kEntryType = 66;
constexpr std::size_t kLeft = 68;
constexpr std::size_t kRight = 72;
constexpr std::size_t kChild = 76;
constexpr std::size_t kClass = 80;
constexpr std::size_t kStart = 116;
constexpr std::size_t kSize = 120;

enum eEntryType : BYTE { kStorageEntry = 1, kStreamEntry = 2, kRootEntry = 5 };

std::uint64_t RoundedUp(std::uint64_t bytes, std::uint32_t shift) {
    return (bytes >> shift) + ((bytes & ((std::uint64_t{1} << shift) - 1)) != 0 ? 1 : 0);
}

}  // namespace

// Tells whether a chain has come back to one of its sectors (Brent's method). It needs no memory
// and at most three times as many links as the chain has different sectors.
class CompoundFile::LoopCheck {
public:
    explicit LoopCheck(std::uint32_t start) : mark_(start) {}

    bool IsBack(std::uint32_t sector) {
        if (sector == mark_) return true;
        if (--left_ == 0) {
            mark_ = sector;
            span_ *= 2;
            left_ = span_;
        }
        return false;
    }

private:
    std::uint32_t mark_;
    std::uint64_t span_ = 1;
    std::uint64_t left_ = 1;
};

CompoundFile::CompoundFile() : blocks_(kBlocks * kBlockBytes) {
    Close();
}

void CompoundFile::Close() {
    file_.Close();
    rootClass_ = {};
    streams_.clear();
    miniStream_ = {};
    if (spent_.cbAllocated > kMostKept) {
        directory_ = miniFat_ = miniStreamChain_ = streamChain_ = Chain();
        std::vector<RootStream>().swap(streams_);
        std::vector<std::uint32_t>().swap(moreFat_);
    }
    for (Chain* chain : {&directory_, &miniFat_, &miniStreamChain_, &streamChain_}) {
        chain->sectors.clear();
        chain->cbBooked = 0;
        chain->loaded = false;
    }
    moreFat_.clear();
    if (!moreFatSet_.empty()) moreFatSet_ = {};
    spent_ = {};
    blockOf_.fill(kNoBlock);
    lastSlot_ = 0;
    nextSlot_ = 1;
}

HRESULT CompoundFile::Book(std::size_t cb) {
    if (cb > kMostAllocated - spent_.cbAllocated) return STG_E_DOCFILECORRUPT;
    spent_.cbAllocated += cb;
    return S_OK;
}

HRESULT CompoundFile::Open(const DocumentPath& path, bool isPlainFile) {
    Close();
    HRESULT status = file_.Open(path, isPlainFile);
    if (SUCCEEDED(status)) status = ReadHeader();
    if (SUCCEEDED(status)) status = ReadDirectory();
    if (FAILED(status)) Close();
    return status;
}

HRESULT CompoundFile::ReadHeader() {
    const std::uint64_t size = file_.Size();
    if (size < sizeof kSignature) return STG_E_FILEALREADYEXISTS;
    const HRESULT status = LoadBlock(0, 0);
    if (FAILED(status)) return status;
    const BYTE* header = blocks_.data();
    if (std::memcmp(header, kSignature, sizeof kSignature) != 0) return STG_E_FILEALREADYEXISTS;
    if (size < kHeaderBytes) return STG_E_DOCFILECORRUPT;

    // Some writers give version 3 with sectors of 4096 bytes; the size counts.
    sectorShift_ = Load16(header + kSectorShift);
    const bool sound = Load16(header + kByteOrder) == 0xFFFE &&
                       (sectorShift_ == 9 || sectorShift_ == 12) &&
                       Load16(header + kMiniSectorShift) == kMiniShift &&
                       Load32(header + kCutoff) == kMiniStreamCutoff;
    if (!sound || size <= SectorBytes()) return STG_E_DOCFILECORRUPT;
    const std::uint64_t sectors = RoundedUp(size, sectorShift_) - 1;
    sectorCount_ = static_cast<std::uint32_t>(std::min<std::uint64_t>(sectors, kLastRegularSector));
    // Up to version 3 the upper half of a size is undefined.
    hasLargeSizes_ = Load16(header + kMajorVersion) >= 4;
    fatSectorCount_ = Load32(header + kFatSectorCount);
    directoryStart_ = Load32(header + kDirectoryStart);
    miniFatStart_ = Load32(header + kMiniFatStart);
    moreFatStart_ = Load32(header + kMoreFatStart);
    for (std::size_t i = 0; i < kHeaderFatSectors; ++i) {
        headerFat_[i] = Load32(header + kFatSectors + i * kIdBytes);
    }
    return S_OK;
}

// ---- bytes

HRESULT CompoundFile::LoadBlock(std::uint64_t block, std::size_t slot) {
    const std::uint64_t offset = block * kBlockBytes;
    const auto cb =
        static_cast<std::size_t>(std::min<std::uint64_t>(kBlockBytes, file_.Size() - offset));
    blockOf_[slot] = kNoBlock;
    spent_.cbRead += cb;
    const HRESULT status = file_.ReadAt(offset, blocks_.data() + slot * kBlockBytes, cb);
    if (SUCCEEDED(status)) blockOf_[slot] = block;
    return status;
}

// A few bytes that don't cross a block's edge; valid until the next view.
HRESULT CompoundFile::View(std::uint64_t offset, std::size_t cb, const BYTE*& bytes) {
    bytes = nullptr;
    if (cb > file_.Size() || offset > file_.Size() - cb) return STG_E_DOCFILECORRUPT;
    const std::uint64_t block = offset / kBlockBytes;
    if (blockOf_[lastSlot_] != block) {
        const auto found = std::find(blockOf_.begin(), blockOf_.end(), block);
        if (found != blockOf_.end()) {
            lastSlot_ = static_cast<std::size_t>(found - blockOf_.begin());
        } else {
            lastSlot_ = nextSlot_;
            nextSlot_ = (nextSlot_ + 1) % kBlocks;
            const HRESULT status = LoadBlock(block, lastSlot_);
            if (FAILED(status)) return status;
        }
    }
    bytes = blocks_.data() + lastSlot_ * kBlockBytes + offset % kBlockBytes;
    return S_OK;
}

HRESULT CompoundFile::ReadRun(std::uint64_t offset, BYTE* buffer, std::size_t cb) {
    if (cb > file_.Size() || offset > file_.Size() - cb) return STG_E_DOCFILECORRUPT;
    if (cb >= kBlockBytes) {
        spent_.cbRead += cb;
        return file_.ReadAt(offset, buffer, cb);
    }
    while (cb > 0) {
        const auto inBlock = static_cast<std::size_t>(
            std::min<std::uint64_t>(cb, kBlockBytes - offset % kBlockBytes));
        const BYTE* bytes = nullptr;
        const HRESULT status = View(offset, inBlock, bytes);
        if (FAILED(status)) return status;
        std::memcpy(buffer, bytes, inBlock);
        buffer += inBlock;
        offset += inBlock;
        cb -= inBlock;
    }
    return S_OK;
}

// ---- sectors

// The sector that holds part `index` of the FAT.
HRESULT CompoundFile::FatSector(std::uint32_t index, std::uint32_t& sector) {
    sector = kEndOfChain;
    if (index >= fatSectorCount_) return STG_E_DOCFILECORRUPT;
    if (index < kHeaderFatSectors) {
        sector = headerFat_[index];
        return sector < sectorCount_ ? S_OK : STG_E_DOCFILECORRUPT;
    }
    // Each of the further lists gives its last place to the next list's sector.
    const std::uint32_t each = SectorBytes() / kIdBytes - 1;
    const std::uint32_t list = (index - kHeaderFatSectors) / each;
    const BYTE* bytes = nullptr;
    while (moreFat_.size() <= list) {
        std::uint32_t next = moreFatStart_;
        if (!moreFat_.empty()) {
            const std::uint64_t last = SectorOffset(moreFat_.back()) + each * kIdBytes;
            const HRESULT status = View(last, kIdBytes, bytes);
            if (FAILED(status)) return status;
            next = Load32(bytes);
        }
        constexpr std::size_t kEachList = 16 * sizeof next;  // in both, roughly
        if (next >= sectorCount_ || FAILED(Book(kEachList))) return STG_E_DOCFILECORRUPT;
        if (!moreFatSet_.insert(next).second) return STG_E_DOCFILECORRUPT;
        moreFat_.push_back(next);
    }
    const std::uint32_t place = (index - kHeaderFatSectors) % each;
    const HRESULT status = View(SectorOffset(moreFat_[list]) + place * kIdBytes, kIdBytes, bytes);
    if (FAILED(status)) return status;
    sector = Load32(bytes);
    return sector < sectorCount_ ? S_OK : STG_E_DOCFILECORRUPT;
}

HRESULT CompoundFile::NextSector(std::uint32_t sector, std::uint32_t& next) {
    next = kEndOfChain;
    const std::uint32_t idsShift = sectorShift_ - 2;
    std::uint32_t fatSector = 0;
    HRESULT status = FatSector(sector >> idsShift, fatSector);
    if (FAILED(status)) return status;
    const std::uint32_t place = sector & ((std::uint32_t{1} << idsShift) - 1);
    const BYTE* bytes = nullptr;
    status = View(SectorOffset(fatSector) + place * kIdBytes, kIdBytes, bytes);
    if (SUCCEEDED(status)) next = Load32(bytes);
    return status;
}

HRESULT CompoundFile::NextMiniSector(std::uint32_t sector, std::uint32_t& next) {
    next = kEndOfChain;
    const std::uint32_t idsShift = sectorShift_ - 2;
    const std::uint32_t index = sector >> idsShift;
    if (index >= miniFat_.sectors.size()) return STG_E_DOCFILECORRUPT;
    const std::uint32_t place = sector & ((std::uint32_t{1} << idsShift) - 1);
    const BYTE* bytes = nullptr;
    const std::uint64_t offset = SectorOffset(miniFat_.sectors[index]) + place * kIdBytes;
    const HRESULT status = View(offset, kIdBytes, bytes);
    if (SUCCEEDED(status)) next = Load32(bytes);
    return status;
}

HRESULT CompoundFile::Next(bool mini, std::uint32_t sector, std::uint32_t& next) {
    ++spent_.links;
    return mini ? NextMiniSector(sector, next) : NextSector(sector, next);
}

// The sectors of the first `cbNeeded` bytes. A chain that runs on behind them is legal (space kept
// for later), one that comes back to itself never is: its bytes would be somebody else's.
HRESULT CompoundFile::LoadChain(bool mini, std::uint32_t start, std::uint64_t cbNeeded,
                                Chain& chain) {
    chain.sectors.clear();
    chain.loaded = false;
    const std::uint64_t limit = mini ? RoundedUp(miniStream_.size, kMiniShift) : sectorCount_;
    const bool toTheEnd = cbNeeded == kToTheEnd;
    const std::uint64_t needed =
        toTheEnd ? limit : RoundedUp(cbNeeded, mini ? kMiniShift : sectorShift_);
    if (needed > limit) return STG_E_DOCFILECORRUPT;
    std::uint32_t sector = start;
    LoopCheck loop(start);
    while (chain.sectors.size() < needed && !(toTheEnd && sector == kEndOfChain)) {
        if (sector >= limit) return STG_E_DOCFILECORRUPT;
        if (chain.sectors.size() == chain.sectors.capacity()) {
            const HRESULT status = BookChain(chain);
            if (FAILED(status)) return status;
        }
        chain.sectors.push_back(sector);
        const HRESULT status = Next(mini, sector, sector);
        if (FAILED(status)) return status;
        if (loop.IsBack(sector)) return STG_E_DOCFILECORRUPT;
    }
    if (needed > 0 && sector != kEndOfChain) {
        const HRESULT status = FinishChain(mini, sector, loop);
        if (FAILED(status)) return status;
    }
    chain.loaded = true;
    return S_OK;
}

HRESULT CompoundFile::FinishChain(bool mini, std::uint32_t sector, LoopCheck& loop) {
    const std::uint64_t limit = mini ? RoundedUp(miniStream_.size, kMiniShift) : sectorCount_;
    for (std::size_t steps = 0; steps < kMostChainSectors; ++steps) {
        if (sector >= limit) return S_OK;
        const HRESULT status = Next(mini, sector, sector);
        // What lies behind the needed bytes can't make them wrong, but a failing disk counts.
        if (status == STG_E_DOCFILECORRUPT) return S_OK;
        if (FAILED(status)) return status;
        if (loop.IsBack(sector)) break;
    }
    return STG_E_DOCFILECORRUPT;
}

// Before the chain's buffer grows.
HRESULT CompoundFile::BookChain(Chain& chain) {
    const std::size_t count = chain.sectors.size();
    if (count >= kMostChainSectors) return STG_E_DOCFILECORRUPT;
    // The old buffer, and one of twice its length.
    const std::size_t cb = 3 * count * sizeof(std::uint32_t);
    if (cb <= chain.cbBooked) return S_OK;
    const HRESULT status = Book(cb - chain.cbBooked);
    if (SUCCEEDED(status)) chain.cbBooked = cb;
    return status;
}

// ---- directory

HRESULT CompoundFile::ReadEntry(std::uint32_t entry, const BYTE*& bytes) {
    const std::uint32_t perSector = SectorBytes() / kEntryBytes;
    const std::uint32_t sector = directory_.sectors[entry / perSector];
    return View(SectorOffset(sector) + (entry % perSector) * kEntryBytes, kEntryBytes, bytes);
}

CompoundFile::Stream CompoundFile::PlaceOf(const BYTE* bytes) const {
    Stream place;
    place.start = Load32(bytes + kStart);
    place.size = hasLargeSizes_ ? Load64(bytes + kSize) : Load32(bytes + kSize);
    place.inMiniStream = place.size < kMiniStreamCutoff;
    return place;
}

HRESULT CompoundFile::AddChild(const BYTE* bytes) {
    const BYTE type = bytes[kEntryType];
    // The buffer, and one of twice its length while it grows.
    const HRESULT status = Book(3 * sizeof(RootStream));
    if (FAILED(status)) return status;
    if (type == kStorageEntry) return S_OK;
    if (type != kStreamEntry) return STG_E_DOCFILECORRUPT;
    const std::uint32_t cbName = Load16(bytes + kNameBytes);
    if (cbName < 2 || cbName % 2 != 0 || cbName > 2 * (kNameUnits + 1)) return STG_E_DOCFILECORRUPT;
    RootStream& stream = streams_.emplace_back();
    stream.cchName = cbName / 2 - 1;
    for (std::uint32_t i = 0; i < stream.cchName; ++i) {
        stream.name[i] = static_cast<WCHAR>(Load16(bytes + 2 * i));
    }
    stream.place = PlaceOf(bytes);
    return S_OK;
}

// The order of the siblings is not trusted: all that can be reached below the root are children.
HRESULT CompoundFile::ReadDirectory() {
    HRESULT status = LoadChain(false, directoryStart_, kToTheEnd, directory_);
    if (FAILED(status)) return status;
    if (directory_.sectors.empty()) return STG_E_DOCFILECORRUPT;
    const BYTE* bytes = nullptr;
    status = ReadEntry(0, bytes);
    if (FAILED(status)) return status;
    if (bytes[kEntryType] != kRootEntry) return STG_E_DOCFILECORRUPT;
    rootClass_ = LoadGuid(bytes + kClass);
    miniStream_ = PlaceOf(bytes);
    miniStream_.inMiniStream = false;

    const std::size_t entries = directory_.sectors.size() * (SectorBytes() / kEntryBytes);
    status = Book(entries / 8);
    if (FAILED(status)) return status;
    visited_.assign(entries, false);
    visited_[0] = true;
    pending_.assign(1, Load32(bytes + kChild));
    while (!pending_.empty()) {
        const std::uint32_t entry = pending_.back();
        pending_.pop_back();
        if (entry == kNoEntry) continue;
        if (entry >= entries || visited_[entry]) return STG_E_DOCFILECORRUPT;
        visited_[entry] = true;
        status = ReadEntry(entry, bytes);
        if (SUCCEEDED(status)) status = AddChild(bytes);
        if (FAILED(status)) return status;
        pending_.push_back(Load32(bytes + kLeft));
        pending_.push_back(Load32(bytes + kRight));
    }
    return S_OK;
}

HRESULT CompoundFile::FindStream(WTextView name, Stream& found) const {
    found = {};
    HRESULT status = S_FALSE;
    for (const RootStream& stream : streams_) {
        const WTextView own(stream.name.data(), stream.cchName);
        if (!wtext::EqualsAsciiFold(own, name)) continue;
        if (status == S_OK) return STG_E_DOCFILECORRUPT;
        // Whoever reads the stream allocates by its size.
        if (stream.place.size > file_.Size()) return STG_E_DOCFILECORRUPT;
        found = stream.place;
        status = S_OK;
    }
    return status;
}

// ---- streams

HRESULT CompoundFile::LoadMiniStream() {
    if (miniFat_.loaded && miniStreamChain_.loaded) return S_OK;
    HRESULT status = LoadChain(false, miniFatStart_, kToTheEnd, miniFat_);
    if (SUCCEEDED(status)) {
        status = LoadChain(false, miniStream_.start, miniStream_.size, miniStreamChain_);
    }
    return status;
}

std::uint64_t CompoundFile::MiniSectorOffset(std::uint32_t sector) const {
    const std::uint64_t place = static_cast<std::uint64_t>(sector) << kMiniShift;
    const auto index = static_cast<std::size_t>(place >> sectorShift_);
    return SectorOffset(miniStreamChain_.sectors[index]) + (place & (SectorBytes() - 1));
}

HRESULT CompoundFile::Read(const Stream& stream, std::uint64_t offset, void* buffer,
                           std::size_t cb) {
    if (cb > stream.size || offset > stream.size - cb) return STG_E_READFAULT;
    if (cb == 0) return S_OK;
    const bool mini = stream.inMiniStream;
    const bool isSame = streamChain_.loaded && chainOf_.start == stream.start &&
                        chainOf_.size == stream.size && chainOf_.inMiniStream == mini;
    HRESULT status = mini ? LoadMiniStream() : S_OK;
    if (SUCCEEDED(status) && !isSame) {
        chainOf_ = stream;
        status = LoadChain(mini, stream.start, stream.size, streamChain_);
    }
    if (FAILED(status)) return status;

    const std::uint32_t shift = mini ? kMiniShift : sectorShift_;
    const std::uint64_t unit = std::uint64_t{1} << shift;
    BYTE* to = static_cast<BYTE*>(buffer);
    while (cb > 0) {
        const auto index = static_cast<std::size_t>(offset >> shift);
        const std::uint64_t inUnit = offset & (unit - 1);
        const auto place = [&](std::size_t i) {
            const std::uint32_t sector = streamChain_.sectors[i];
            return mini ? MiniSectorOffset(sector) : SectorOffset(sector);
        };
        // Neighbours in the file are read together.
        const std::uint64_t from = place(index);
        std::uint64_t run = unit - inUnit;
        for (std::size_t i = index + 1; run < cb && place(i) == from + inUnit + run; ++i) {
            run += unit;
        }
        const auto part = static_cast<std::size_t>(std::min<std::uint64_t>(run, cb));
        status = ReadRun(from + inUnit, to, part);
        if (FAILED(status)) return status;
        to += part;
        offset += part;
        cb -= part;
    }
    return S_OK;
}

}  // namespace mddoc
