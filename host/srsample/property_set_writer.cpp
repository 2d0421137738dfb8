#include "host/srsample/property_set_writer.h"

#include <bit>
#include <cstring>

#include "host/srsample/text_encoding.h"

namespace {

constexpr std::uint16_t kUtf16 = 1200;
constexpr std::uint32_t kSystem = 0x00020106;  // the writing system as documents name it
constexpr std::size_t kHeadBytes = 28;
constexpr std::size_t kSectionEntryBytes = 20;
constexpr std::size_t kSectionHeadBytes = 8;
constexpr std::size_t kSlotBytes = 8;

}  // namespace

PropertySectionWriter::PropertySectionWriter(const GUID& format, std::uint16_t codePage)
    : format_(format), codePage_(codePage) {
    Add(1, VT_I2).Number16(codePage);
}

ByteWriter& PropertySectionWriter::Add(std::uint32_t id, std::uint32_t type) {
    Value& value = values_.emplace_back();
    value.id = id;
    value.bytes.Number32(type);
    return value.bytes;
}

// With the final NUL.
std::vector<std::uint8_t> PropertySectionWriter::Encoded(WTextView text) const {
    ByteWriter out;
    AppendEncoded(codePage_, text, out);
    out.Byte(0);
    if (codePage_ == kUtf16) out.Byte(0);
    return out.Done();
}

void PropertySectionWriter::AddText(std::uint32_t id, WTextView text) {
    const bool isWide = codePage_ == kUtf16;
    ByteWriter& out = Add(id, isWide ? VT_LPWSTR : VT_LPSTR);
    const auto bytes = Encoded(text);
    out.Number32(static_cast<std::uint32_t>(isWide ? bytes.size() / 2 : bytes.size()));
    out.Bytes(bytes);
}

void PropertySectionWriter::AddNumber(std::uint32_t id, std::int32_t value) {
    Add(id, VT_I4).Number32(static_cast<std::uint32_t>(value));
}

void PropertySectionWriter::AddYesNo(std::uint32_t id, bool value) {
    Add(id, VT_BOOL).Number16(value ? 0xFFFF : 0);
}

void PropertySectionWriter::AddReal(std::uint32_t id, double value) {
    Add(id, VT_R8).Number64(std::bit_cast<std::uint64_t>(value));
}

void PropertySectionWriter::AddTime(std::uint32_t id, std::uint64_t ticks) {
    Add(id, VT_FILETIME).Number64(ticks);
}

void PropertySectionWriter::AddCurrency(std::uint32_t id, std::int64_t tenThousandths) {
    Add(id, VT_CY).Number64(static_cast<std::uint64_t>(tenThousandths));
}

void PropertySectionWriter::AddId(std::uint32_t id, const GUID& value) {
    Add(id, VT_CLSID).Id(value);
}

void PropertySectionWriter::AddTexts(std::uint32_t id, const std::vector<WText>& texts) {
    const bool isWide = codePage_ == kUtf16;
    ByteWriter& out =
        Add(id, static_cast<std::uint32_t>(VT_VECTOR) | (isWide ? VT_LPWSTR : VT_LPSTR));
    out.Number32(static_cast<std::uint32_t>(texts.size()));
    for (const WText& text : texts) {
        const auto bytes = Encoded(text);
        out.Number32(static_cast<std::uint32_t>(isWide ? bytes.size() / 2 : bytes.size()));
        out.Bytes(bytes);
        if (isWide) out.Pad(4);
    }
}

void PropertySectionWriter::AddPicture(std::uint32_t id, const std::vector<std::uint8_t>& bytes) {
    constexpr std::uint32_t kWindowsFormat = 0xFFFFFFFF;
    constexpr std::uint32_t kMetafile = 3;
    ByteWriter& out = Add(id, VT_CF);
    out.Number32(static_cast<std::uint32_t>(bytes.size()) + 8);
    out.Number32(kWindowsFormat);
    out.Number32(kMetafile);
    out.Bytes(bytes);
}

void PropertySectionWriter::AddName(std::uint32_t id, WTextView name) {
    names_.push_back({id, WText(name)});
}

std::vector<std::uint8_t> PropertySectionWriter::Dictionary() const {
    ByteWriter out;
    out.Number32(static_cast<std::uint32_t>(names_.size()));
    for (const Name& name : names_) {
        const auto bytes = Encoded(name.text);
        const std::size_t units = codePage_ == kUtf16 ? bytes.size() / 2 : bytes.size();
        out.Number32(name.id);
        out.Number32(static_cast<std::uint32_t>(units));
        out.Bytes(bytes);
        if (codePage_ == kUtf16) out.Pad(4);
    }
    return out.Done();
}

std::vector<std::uint8_t> PropertySectionWriter::Build() const {
    const std::size_t count = values_.size() + (names_.empty() ? 0 : 1);
    const auto valuesBegin = static_cast<std::uint32_t>(kSectionHeadBytes + count * kSlotBytes);
    ByteWriter slots;
    ByteWriter values;
    const auto place = [&](std::uint32_t id, const std::vector<std::uint8_t>& bytes) {
        slots.Number32(id);
        slots.Number32(valuesBegin + static_cast<std::uint32_t>(values.Size()));
        values.Bytes(bytes);
        values.Pad(4);
    };
    if (!names_.empty()) place(0, Dictionary());
    for (const Value& value : values_)
        place(value.id, value.bytes.Done());
    ByteWriter out;
    out.Number32(valuesBegin + static_cast<std::uint32_t>(values.Size()));
    out.Number32(static_cast<std::uint32_t>(count));
    out.Bytes(slots.Done());
    out.Bytes(values.Done());
    return out.Done();
}

std::vector<std::uint8_t> BuildPropertySet(const std::vector<PropertySectionWriter>& sections) {
    ByteWriter out;
    ByteWriter bodies;
    out.Number16(0xFFFE);
    out.Number16(0);
    out.Number32(kSystem);
    out.Id(GUID{});
    out.Number32(static_cast<std::uint32_t>(sections.size()));
    const std::size_t bodiesBegin = kHeadBytes + sections.size() * kSectionEntryBytes;
    for (const PropertySectionWriter& section : sections) {
        out.Id(section.Format());
        out.Number32(static_cast<std::uint32_t>(bodiesBegin + bodies.Size()));
        bodies.Bytes(section.Build());
    }
    out.Bytes(bodies.Done());
    return out.Done();
}
