// A compound file, read only: the root storage's class and its streams. Sectors are read when they
// are needed; every id, count and chain is checked against the file's size before it is followed.
// What a file can make the reader do is bounded by what is stored in it, not by its apparent size.
// An object can be opened again for the next file and keeps its buffers, except large ones.
#pragma once

#include <array>
#include <cstdint>
#include <unordered_set>
#include <vector>

#include "companions/md/document/file_bytes.h"
#include "platform/wtext.h"

namespace mddoc {

// A document that needs more counts as damaged.
inline constexpr std::size_t kMostAllocated = 16u << 20;

class CompoundFile {
public:
    // Where a stream of the root storage lies. Belongs to the file that was open when it was found.
    struct Stream {
        std::uint32_t start = 0;
        std::uint64_t size = 0;
        bool inMiniStream = false;
    };

    CompoundFile();

    // S_OK; STG_E_FILEALREADYEXISTS when the file isn't a compound file at all (as an empty one);
    // STG_E_DOCFILECORRUPT when it is one and damaged; a status of FileBytes.
    [[nodiscard]] HRESULT Open(const DocumentPath& path, bool isPlainFile = false);
    void Close();

    const GUID& RootClass() const { return rootClass_; }
    // Of the file that was opened last, a compound file or not.
    const FileStamp& Stamp() const { return file_.Stamp(); }

    // What the open file has cost so far.
    struct Effort {
        std::uint64_t links = 0;      // of chains that were followed
        std::uint64_t cbRead = 0;     // from the file
        std::size_t cbAllocated = 0;  // for the file's sake, by whoever reads it
    };
    const Effort& Spent() const { return spent_; }
    // To be called before memory is allocated whose amount the file decides.
    // STG_E_DOCFILECORRUPT beyond kMostAllocated in total.
    [[nodiscard]] HRESULT Book(std::size_t cb);

    // S_OK, S_FALSE when the root storage has no stream of that name, STG_E_DOCFILECORRUPT when it
    // has several or when the stream claims to be larger than the file. ASCII letters count without
    // case.
    [[nodiscard]] HRESULT FindStream(WTextView name, Stream& found) const;

    // All `cb` bytes or a failure. A range that leaves the stream is STG_E_READFAULT.
    [[nodiscard]] HRESULT Read(const Stream& stream, std::uint64_t offset, void* buffer,
                               std::size_t cb);

private:
    // What is asked of a document lies in few places: larger blocks would be copied for nothing.
    static constexpr std::size_t kBlockBytes = 4096;
    static constexpr std::size_t kBlocks = 24;
    static constexpr std::uint32_t kHeaderFatSectors = 109;
    static constexpr std::size_t kNameUnits = 31;

    struct RootStream {
        Stream place;
        std::uint32_t cchName;
        std::array<WCHAR, kNameUnits> name;
    };

    // A chain's sectors in their order.
    struct Chain {
        std::vector<std::uint32_t> sectors;
        std::size_t cbBooked = 0;
        bool loaded = false;
    };
    class LoopCheck;

    HRESULT ReadHeader();
    HRESULT ReadDirectory();
    HRESULT ReadEntry(std::uint32_t entry, const BYTE*& bytes);
    HRESULT AddChild(const BYTE* bytes);
    HRESULT BookChain(Chain& chain);
    Stream PlaceOf(const BYTE* bytes) const;

    HRESULT View(std::uint64_t offset, std::size_t cb, const BYTE*& bytes);
    HRESULT LoadBlock(std::uint64_t block, std::size_t slot);
    HRESULT ReadRun(std::uint64_t offset, BYTE* buffer, std::size_t cb);

    HRESULT FatSector(std::uint32_t index, std::uint32_t& sector);
    HRESULT NextSector(std::uint32_t sector, std::uint32_t& next);
    HRESULT NextMiniSector(std::uint32_t sector, std::uint32_t& next);
    HRESULT Next(bool mini, std::uint32_t sector, std::uint32_t& next);
    HRESULT LoadChain(bool mini, std::uint32_t start, std::uint64_t cbNeeded, Chain& chain);
    HRESULT FinishChain(bool mini, std::uint32_t sector, LoopCheck& loop);
    HRESULT LoadMiniStream();

    std::uint64_t SectorOffset(std::uint32_t sector) const {
        return (static_cast<std::uint64_t>(sector) + 1) << sectorShift_;
    }
    std::uint64_t MiniSectorOffset(std::uint32_t sector) const;
    std::uint32_t SectorBytes() const { return std::uint32_t{1} << sectorShift_; }

    FileBytes file_;
    Effort spent_;
    std::uint32_t sectorShift_ = 9;
    std::uint32_t sectorCount_ = 0;  // a last one that is cut short included
    bool hasLargeSizes_ = false;     // sizes have 64 bits
    std::uint32_t fatSectorCount_ = 0;
    std::array<std::uint32_t, kHeaderFatSectors> headerFat_ = {};
    std::uint32_t directoryStart_ = 0;
    std::uint32_t miniFatStart_ = 0;
    std::uint32_t moreFatStart_ = 0;
    std::vector<std::uint32_t> moreFat_;  // sectors that list further FAT sectors, as far as known
    std::unordered_set<std::uint32_t> moreFatSet_;

    GUID rootClass_ = {};
    std::vector<RootStream> streams_;
    Stream miniStream_;
    Chain directory_;
    Chain miniFat_;
    Chain miniStreamChain_;
    Chain streamChain_;  // of the stream that was read last
    Stream chainOf_;
    std::vector<std::uint32_t> pending_;
    std::vector<bool> visited_;

    std::vector<BYTE> blocks_;
    std::array<std::uint64_t, kBlocks> blockOf_ = {};
    std::size_t lastSlot_ = 0;
    std::size_t nextSlot_ = 0;
};

}  // namespace mddoc
