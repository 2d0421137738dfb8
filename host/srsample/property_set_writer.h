// Writes property sets: values into sections, sections into the bytes of a stream.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/srsample/byte_writer.h"

// One section. Every id at most once; id 1 is the code page, which the constructor writes.
class PropertySectionWriter {
public:
    // Texts are stored as VT_LPSTR in the code page, one that AppendEncoded knows; for 1200 as
    // VT_LPWSTR.
    PropertySectionWriter(const GUID& format, std::uint16_t codePage);

    void AddText(std::uint32_t id, WTextView text);
    void AddNumber(std::uint32_t id, std::int32_t value);
    void AddYesNo(std::uint32_t id, bool value);
    void AddReal(std::uint32_t id, double value);
    void AddTime(std::uint32_t id, std::uint64_t ticks);
    void AddCurrency(std::uint32_t id, std::int64_t tenThousandths);
    void AddId(std::uint32_t id, const GUID& value);
    void AddTexts(std::uint32_t id, const std::vector<WText>& texts);
    void AddPicture(std::uint32_t id, const std::vector<std::uint8_t>& bytes);
    // Gives the property of that id a name.
    void AddName(std::uint32_t id, WTextView name);

    const GUID& Format() const { return format_; }
    std::vector<std::uint8_t> Build() const;

private:
    struct Value {
        std::uint32_t id;
        ByteWriter bytes;
    };
    struct Name {
        std::uint32_t id;
        WText text;
    };

    ByteWriter& Add(std::uint32_t id, std::uint32_t type);
    std::vector<std::uint8_t> Encoded(WTextView text) const;
    std::vector<std::uint8_t> Dictionary() const;

    GUID format_;
    std::uint16_t codePage_;
    std::vector<Value> values_;
    std::vector<Name> names_;
};

std::vector<std::uint8_t> BuildPropertySet(const std::vector<PropertySectionWriter>& sections);
