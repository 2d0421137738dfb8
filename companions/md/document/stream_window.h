// A stream seen through a window: small pieces at any offset without a read for each.
#pragma once

#include <cstdint>
#include <vector>

#include "companions/md/document/compound_file.h"

namespace mddoc {

class StreamWindow {
public:
    // `file` has to stay open; what lies behind the first 4 GB of the stream is out of reach.
    void Attach(CompoundFile& file, const CompoundFile::Stream& stream);
    std::uint32_t Size() const { return size_; }
    CompoundFile& File() const { return *file_; }

    // `bytes` is valid until the next call. STG_E_DOCFILECORRUPT when the range leaves the stream.
    // In the header, since nearly every call finds its bytes in the window.
    [[nodiscard]] HRESULT Fetch(std::uint32_t offset, std::uint32_t cb, const BYTE*& bytes) {
        const bool isInside =
            offset >= begin_ && offset - begin_ <= length_ && cb <= length_ - (offset - begin_);
        if (!isInside) return FetchOutside(offset, cb, bytes);
        bytes = buffer_.data() + (offset - begin_);
        return S_OK;
    }

private:
    HRESULT FetchOutside(std::uint32_t offset, std::uint32_t cb, const BYTE*& bytes);

    CompoundFile* file_ = nullptr;
    CompoundFile::Stream stream_;
    std::uint32_t size_ = 0;
    std::uint32_t begin_ = 0;
    std::uint32_t length_ = 0;
    std::uint32_t misses_ = 0;
    std::uint32_t cbBooked_ = 0;
    std::vector<BYTE> buffer_;
};

}  // namespace mddoc
