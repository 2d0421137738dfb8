// Writes a compound file: streams in a root storage, short ones in the mini stream, the directory
// as a balanced tree.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/srsample/byte_writer.h"

class CompoundWriter {
public:
    // Version 3 has sectors of 512 bytes, version 4 of 4096.
    enum class eVersion { Three, Four };

    explicit CompoundWriter(eVersion version = eVersion::Three);

    void SetRootClass(const GUID& rootClass) { rootClass_ = rootClass; }
    // At most 31 units, each name once.
    void AddStream(WTextView name, std::vector<std::uint8_t> bytes);

    // The whole file.
    std::vector<std::uint8_t> Build() const;

private:
    struct Stream {
        WText name;
        std::vector<std::uint8_t> bytes;
    };
    struct Place {
        std::uint32_t start;
        std::uint64_t size;
    };
    struct Sibling {
        std::uint32_t left;
        std::uint32_t right;
        bool isRed;
    };
    class Body;

    void BuildTree(std::size_t first, std::size_t count, std::uint32_t depth, std::uint32_t deepest,
                   std::vector<Sibling>& tree, std::uint32_t& top) const;
    std::vector<std::uint8_t> Directory(const std::vector<Place>& places, Place miniStream) const;
    ByteWriter Header(const Body& body, std::uint32_t directory, std::uint32_t directorySectors,
                      std::uint32_t miniFat, std::uint32_t miniFatSectors) const;

    std::uint32_t sectorShift_;
    GUID rootClass_ = {};
    std::vector<Stream> streams_;  // in the order of the directory
};
