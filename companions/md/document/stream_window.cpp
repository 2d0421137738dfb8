#include "companions/md/document/stream_window.h"

#include <algorithm>
#include <limits>

namespace mddoc {

namespace {

constexpr std::uint32_t kWindowBytes = 4096;
// After so many misses the window doubles, so that values in a hostile order cost no more than a
// few readings of the whole stream.
constexpr std::uint32_t kMissesToGrow = 16;
constexpr std::uint32_t kMostDoublings = 18;
// A larger buffer isn't kept for the next stream.
constexpr std::size_t kMostKept = 64u << 10;

}  // namespace

void StreamWindow::Attach(CompoundFile& file, const CompoundFile::Stream& stream) {
    file_ = &file;
    stream_ = stream;
    size_ = static_cast<std::uint32_t>(
        std::min<std::uint64_t>(stream.size, std::numeric_limits<std::uint32_t>::max()));
    begin_ = 0;
    length_ = 0;
    misses_ = 0;
    cbBooked_ = 0;
    if (buffer_.size() > kMostKept) std::vector<BYTE>().swap(buffer_);
}

HRESULT StreamWindow::FetchOutside(std::uint32_t offset, std::uint32_t cb, const BYTE*& bytes) {
    bytes = nullptr;
    if (cb > size_ || offset > size_ - cb) return STG_E_DOCFILECORRUPT;
    const std::uint32_t doublings = std::min(misses_ / kMissesToGrow, kMostDoublings);
    ++misses_;
    const std::uint64_t window = static_cast<std::uint64_t>(kWindowBytes) << doublings;
    const std::uint32_t begin = window >= size_ ? 0 : offset;
    const auto length = static_cast<std::uint32_t>(
        std::min<std::uint64_t>(std::max<std::uint64_t>(window, cb), size_ - begin));
    length_ = 0;
    HRESULT status = S_OK;
    if (length > cbBooked_) {
        status = file_->Book(length - cbBooked_);
        if (FAILED(status)) return status;
        cbBooked_ = length;
    }
    if (buffer_.size() < length) {
        std::vector<BYTE>().swap(buffer_);  // not beside the larger one
        buffer_.resize(length);
    }
    status = file_->Read(stream_, begin, buffer_.data(), length);
    if (FAILED(status)) return status;
    begin_ = begin;
    length_ = length;
    bytes = buffer_.data() + (offset - begin_);
    return S_OK;
}

}  // namespace mddoc
