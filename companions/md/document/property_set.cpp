#include "companions/md/document/property_set.h"

#include <algorithm>
#include <numeric>

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
// More properties than this aren't kept room for in the next set.
constexpr std::size_t kMostKept = 4096;
constexpr std::size_t kFewNames = 16;  // are looked through sooner than put in order

}  // namespace

HRESULT PropertySetStream::Open(CompoundFile& file, const CompoundFile::Stream& stream) {
    sections_.clear();
    if (stream.size > kMostSetBytes) return STG_E_DOCFILECORRUPT;
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
    if (slots_.capacity() + names_.capacity() > kMostKept || texts_.capacity() > kMostKept) {
        *this = PropertySection();
    }
    slots_.clear();
    byId_.clear();
    names_.clear();
    byText_.clear();
    texts_.clear();
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
    if (length < kSectionHeadBytes || count > kMostProperties ||
        count > (length - kSectionHeadBytes) / kSlotBytes) {
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
    HRESULT status = window.File().Book(count * (sizeof(Slot) + sizeof(std::uint32_t)));
    if (FAILED(status)) return status;
    const BYTE* bytes = nullptr;
    status = window.Fetch(offset + kSectionHeadBytes, count * kSlotBytes, bytes);
    if (FAILED(status)) return status;
    slots_.reserve(count);
    byId_.reserve(count);
    for (std::uint32_t i = 0; i < count; ++i, bytes += kSlotBytes) {
        const std::uint32_t id = Load32(bytes);
        const std::uint32_t at = Load32(bytes + 4);
        if (at < valuesBegin || at > length || length - at < kLeastValueBytes) {
            return STG_E_DOCFILECORRUPT;
        }
        if (id == kDictionaryId) {
            if (dictionary_ != 0) return STG_E_DOCFILECORRUPT;
            dictionary_ = offset + at;
        } else {
            byId_.push_back(static_cast<std::uint32_t>(slots_.size()));
            slots_.push_back({id, offset + at, kNoName});
        }
    }
    const auto isLess = [this](std::uint32_t a, std::uint32_t b) {
        return slots_[a].id < slots_[b].id;
    };
    if (!std::is_sorted(byId_.begin(), byId_.end(), isLess)) {
        std::sort(byId_.begin(), byId_.end(), isLess);
    }
    // Which of two values under one id is meant can't be told.
    const auto isSame = [this](std::uint32_t a, std::uint32_t b) {
        return slots_[a].id == slots_[b].id;
    };
    const bool isTwice = std::adjacent_find(byId_.begin(), byId_.end(), isSame) != byId_.end();
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
    WText text;
    for (std::uint32_t i = 0; i < count; ++i) {
        if (end_ - offset < kNameHeadBytes) return STG_E_DOCFILECORRUPT;
        status = window.Fetch(offset, kNameHeadBytes, bytes);
        if (FAILED(status)) return status;
        const std::uint32_t id = Load32(bytes);
        const std::uint32_t length = Load32(bytes + 4);
        offset += kNameHeadBytes;
        if (length > (end_ - offset) / (isWide ? 2 : 1)) return STG_E_DOCFILECORRUPT;
        const std::uint32_t cb = isWide ? 2 * length : length;
        if (cb > kMostTextBytes) return STG_E_DOCFILECORRUPT;
        status = window.Fetch(offset, cb, bytes);
        if (FAILED(status)) return status;
        status = decoder.Decode(codePage_, bytes, cb, text);
        if (SUCCEEDED(status)) status = AddName(window, id, text);
        if (FAILED(status)) return status;
        offset += cb;
        // Only names of two-byte units are padded.
        if (isWide) offset += std::min((4 - cb % 4) % 4, end_ - offset);
    }
    return S_OK;
}

HRESULT PropertySection::AddName(StreamWindow& window, std::uint32_t id, WTextView text) {
    const Slot* slot = Find(id);
    if (slot == nullptr) return S_OK;
    // A buffer holds its old and its new form while it grows.
    const std::size_t cb = 3 * (sizeof(Name) + text.size() * sizeof(WCHAR));
    const HRESULT status = window.File().Book(cb + sizeof(std::uint32_t));
    if (FAILED(status)) return status;
    const auto index = static_cast<std::size_t>(slot - slots_.data());
    if (slot->name == kNoName) slots_[index].name = static_cast<std::uint32_t>(names_.size());
    names_.push_back({static_cast<std::uint32_t>(index), static_cast<std::uint32_t>(texts_.size()),
                      static_cast<std::uint32_t>(text.size())});
    texts_ += text;
    return S_OK;
}

const PropertySection::Slot* PropertySection::Find(std::uint32_t id) const {
    const auto at = std::lower_bound(
        byId_.begin(), byId_.end(), id,
        [this](std::uint32_t slot, std::uint32_t wanted) { return slots_[slot].id < wanted; });
    return at != byId_.end() && slots_[*at].id == id ? &slots_[*at] : nullptr;
}

WTextView PropertySection::NameOf(const Slot& slot) const {
    return slot.name == kNoName ? WTextView() : TextOf(names_[slot.name]);
}

const PropertySection::Slot* PropertySection::FindName(WTextView name) {
    if (names_.size() <= kFewNames) {
        for (const Name& own : names_) {
            const bool isIt = own.cch == name.size() && CompareWithoutCase(TextOf(own), name) == 0;
            if (isIt) return &slots_[own.slot];
        }
        return nullptr;
    }
    if (byText_.size() != names_.size()) {
        byText_.resize(names_.size());
        std::iota(byText_.begin(), byText_.end(), 0u);
        std::sort(byText_.begin(), byText_.end(), [this](std::uint32_t a, std::uint32_t b) {
            const int order = CompareWithoutCase(TextOf(names_[a]), TextOf(names_[b]));
            return order != 0 ? order < 0 : a < b;
        });
    }
    const auto at = std::lower_bound(byText_.begin(), byText_.end(), name,
                                     [this](std::uint32_t own, WTextView wanted) {
                                         return CompareWithoutCase(TextOf(names_[own]), wanted) < 0;
                                     });
    if (at == byText_.end() || CompareWithoutCase(TextOf(names_[*at]), name) != 0) return nullptr;
    return &slots_[names_[*at].slot];
}

ValueReader PropertySection::Reader(StreamWindow& window, TextDecoder& decoder) const {
    ValueReader reader(window, decoder);
    reader.SetRange(begin_, end_);
    reader.SetCodePage(codePage_);
    return reader;
}

}  // namespace mddoc
