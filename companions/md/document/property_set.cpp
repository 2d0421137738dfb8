#include "companions/md/document/property_set.h"

#include <algorithm>

#include "companions/md/document/little_endian.h"

namespace mddoc {

namespace {

constexpr std::uint32_t kHeadBytes = 28;
constexpr std::uint32_t kSectionCount = 24;  // offset in the head
constexpr std::uint32_t kSectionEntryBytes = 20;
constexpr std::uint32_t kSectionHeadBytes = 8;
constexpr std::uint32_t kSlotBytes = 8;
constexpr std::uint32_t kNameHeadBytes = 8;
constexpr std::uint32_t kLeastValueBytes = 4;
constexpr std::uint16_t kByteOrderMark = 0xFFFE;
constexpr std::uint32_t kDefaultCodePage = 1252;

}  // namespace

HRESULT PropertySetStream::Open(CompoundFile& file, const CompoundFile::Stream& stream) {
    sections_.clear();
    window_.Attach(file, stream);
    const BYTE* bytes = nullptr;
    HRESULT status = window_.Fetch(0, kHeadBytes, bytes);
    if (FAILED(status)) return status;
    if (Load16(bytes) != kByteOrderMark || Load16(bytes + 2) > 1) return STG_E_DOCFILECORRUPT;
    const std::uint32_t count = Load32(bytes + kSectionCount);
    if (count == 0 || count > (window_.Size() - kHeadBytes) / kSectionEntryBytes)
        return STG_E_DOCFILECORRUPT;
    for (std::uint32_t i = 0; i < count; ++i) {
        status = window_.Fetch(kHeadBytes + i * kSectionEntryBytes, kSectionEntryBytes, bytes);
        if (FAILED(status)) return status;
        sections_.push_back({LoadGuid(bytes), Load32(bytes + sizeof(GUID))});
    }
    return S_OK;
}

void PropertySection::Reset() {
    slots_.clear();
    names_.clear();
    begin_ = end_ = 0;
    dictionary_ = 0;
    codePage_ = kDefaultCodePage;
}

HRESULT PropertySection::Load(StreamWindow& window, TextDecoder& decoder, std::uint32_t offset) {
    Reset();
    const BYTE* bytes = nullptr;
    HRESULT status = window.Fetch(offset, kSectionHeadBytes, bytes);
    if (FAILED(status)) return status;
    // Some writers count a few bytes too many; each value is checked against what is there.
    const std::uint32_t available = window.Size() - offset;
    const std::uint32_t length = std::min(Load32(bytes), available);
    const std::uint32_t count = Load32(bytes + 4);
    if (length < kSectionHeadBytes || count > (length - kSectionHeadBytes) / kSlotBytes) {
        return STG_E_DOCFILECORRUPT;
    }
    begin_ = offset;
    end_ = offset + length;
    status = ReadSlots(window, offset, count);
    if (FAILED(status)) return status;
    ValueReader reader = Reader(window, decoder);
    status = ReadCodePage(reader);
    if (SUCCEEDED(status)) status = CheckValues(reader);
    if (SUCCEEDED(status) && dictionary_ != 0) {
        status = ReadNames(window, decoder, dictionary_);
    }
    return status;
}

HRESULT PropertySection::ReadSlots(StreamWindow& window, std::uint32_t offset,
                                   std::uint32_t count) {
    const std::uint32_t valuesBegin = kSectionHeadBytes + count * kSlotBytes;
    const std::uint32_t length = end_ - begin_;
    sorted_.clear();
    const BYTE* bytes = nullptr;
    const HRESULT status = window.Fetch(offset + kSectionHeadBytes, count * kSlotBytes, bytes);
    if (FAILED(status)) return status;
    for (std::uint32_t i = 0; i < count; ++i, bytes += kSlotBytes) {
        const std::uint32_t id = Load32(bytes);
        const std::uint32_t at = Load32(bytes + 4);
        if (at < valuesBegin || at > length || length - at < kLeastValueBytes) {
            return STG_E_DOCFILECORRUPT;
        }
        sorted_.push_back(id);
        if (id == kDictionaryId) {
            dictionary_ = offset + at;
        } else {
            slots_.push_back({id, offset + at});
        }
    }
    // Which of two values under one id is meant can't be told.
    if (!std::is_sorted(sorted_.begin(), sorted_.end())) std::sort(sorted_.begin(), sorted_.end());
    const bool isTwice = std::adjacent_find(sorted_.begin(), sorted_.end()) != sorted_.end();
    return isTwice ? STG_E_DOCFILECORRUPT : S_OK;
}

HRESULT PropertySection::ReadCodePage(ValueReader& reader) {
    const Slot* slot = Find(kCodePageId);
    if (slot == nullptr) return S_OK;
    PropertyValue value;
    const HRESULT status = reader.Read(slot->offset, value);
    if (FAILED(status)) return status;
    if (value.type != VT_I2) return STG_E_DOCFILECORRUPT;
    codePage_ = static_cast<std::uint16_t>(value.number);
    reader.SetCodePage(codePage_);
    return S_OK;
}

HRESULT PropertySection::CheckValues(ValueReader& reader) const {
    // Values may share bytes in theory. In practice each has its own, and the sum bounds the work
    // that a section of overlapping vectors could make.
    std::uint64_t left = 2 * static_cast<std::uint64_t>(end_ - begin_);
    for (const Slot& slot : slots_) {
        VARTYPE type = VT_EMPTY;
        std::uint32_t cb = 0;
        const HRESULT status = reader.Measure(slot.offset, type, cb);
        if (FAILED(status)) return status;
        if (cb > left) return STG_E_DOCFILECORRUPT;
        left -= cb;
    }
    return S_OK;
}

HRESULT PropertySection::ReadNames(StreamWindow& window, TextDecoder& decoder,
                                   std::uint32_t offset) {
    const BYTE* bytes = nullptr;
    HRESULT status = window.Fetch(offset, 4, bytes);
    if (FAILED(status)) return status;
    const std::uint32_t count = Load32(bytes);
    offset += 4;
    if (count > (end_ - offset) / kNameHeadBytes) return STG_E_DOCFILECORRUPT;
    const bool isWide = codePage_ == kUtf16CodePage;
    for (std::uint32_t i = 0; i < count; ++i) {
        if (end_ - offset < kNameHeadBytes) return STG_E_DOCFILECORRUPT;
        status = window.Fetch(offset, kNameHeadBytes, bytes);
        if (FAILED(status)) return status;
        const std::uint32_t id = Load32(bytes);
        const std::uint32_t length = Load32(bytes + 4);
        offset += kNameHeadBytes;
        if (length > (end_ - offset) / (isWide ? 2 : 1)) return STG_E_DOCFILECORRUPT;
        const std::uint32_t cb = isWide ? 2 * length : length;
        status = window.Fetch(offset, cb, bytes);
        if (FAILED(status)) return status;
        Name& name = names_.emplace_back();
        name.id = id;
        status = decoder.Decode(codePage_, bytes, cb, name.text);
        if (FAILED(status)) return status;
        offset += cb;
        // Only names of two-byte units are padded.
        if (isWide) offset += std::min((4 - cb % 4) % 4, end_ - offset);
    }
    return S_OK;
}

const PropertySection::Slot* PropertySection::Find(std::uint32_t id) const {
    for (const Slot& slot : slots_) {
        if (slot.id == id) return &slot;
    }
    return nullptr;
}

const WText* PropertySection::NameOf(std::uint32_t id) const {
    for (const Name& name : names_) {
        if (name.id == id) return &name.text;
    }
    return nullptr;
}

bool PropertySection::FindName(WTextView name, std::uint32_t& id) const {
    for (const Name& own : names_) {
        // The table may name what the set no longer holds.
        if (!EqualWithoutCase(own.text, name) || Find(own.id) == nullptr) continue;
        id = own.id;
        return true;
    }
    return false;
}

ValueReader PropertySection::Reader(StreamWindow& window, TextDecoder& decoder) const {
    ValueReader reader(window, decoder);
    reader.SetRange(begin_, end_);
    reader.SetCodePage(codePage_);
    return reader;
}

}  // namespace mddoc
