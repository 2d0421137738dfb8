#include "companions/md/document/property_value.h"

#include <algorithm>
#include <cstring>

#include "companions/md/document/little_endian.h"

namespace mddoc {

namespace {

constexpr std::uint32_t kTypeBytes = 4;  // the type and two bytes of padding
constexpr std::uint32_t kLengthBytes = 4;
constexpr VARTYPE kVersionedStream = 73;
constexpr VARTYPE kTypeOfElements = 0x0FFF;
// A vector of more elements is measured but not built: each costs far more than its bytes.
constexpr std::uint32_t kMostElements = 65536;

enum class eShape { Unknown, Fixed, Text, WideText, Blob, Opaque };

struct Shape {
    eShape shape;
    std::uint32_t cb;  // of a fixed one
};

Shape ShapeOf(VARTYPE type) {
    switch (type) {
        case VT_EMPTY:
        case VT_NULL:
            return {eShape::Fixed, 0};
        case VT_I1:
        case VT_UI1:
            return {eShape::Fixed, 1};
        case VT_I2:
        case VT_UI2:
        case VT_BOOL:
            return {eShape::Fixed, 2};
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_ERROR:
        case VT_R4:
            return {eShape::Fixed, 4};
        case VT_I8:
        case VT_UI8:
        case VT_R8:
        case VT_CY:
        case VT_DATE:
        case VT_FILETIME:
            return {eShape::Fixed, 8};
        case VT_CLSID:
            return {eShape::Fixed, 16};
        case VT_LPSTR:
        case VT_BSTR:
        case VT_STREAM:
        case VT_STORAGE:
        case VT_STREAMED_OBJECT:
        case VT_STORED_OBJECT:
            return {eShape::Text, 0};
        case VT_LPWSTR:
            return {eShape::WideText, 0};
        case VT_BLOB:
        case VT_BLOB_OBJECT:
        case VT_CF:
            return {eShape::Blob, 0};
        case VT_DECIMAL:
        case kVersionedStream:
            return {eShape::Opaque, 0};
        default:
            return {eShape::Unknown, 0};
    }
}

void StoreFixed(VARTYPE type, const BYTE* bytes, PropertyValue& value) {
    switch (type) {
        case VT_I1:
            value.number = static_cast<std::int8_t>(bytes[0]);
            break;
        case VT_UI1:
            value.number = bytes[0];
            break;
        case VT_I2:
            value.number = static_cast<std::int16_t>(Load16(bytes));
            break;
        case VT_UI2:
            value.number = Load16(bytes);
            break;
        case VT_BOOL:  // any value but 0, since not all writers keep to -1
            value.number = Load16(bytes) != 0 ? 1 : 0;
            break;
        case VT_I4:
        case VT_INT:
        case VT_ERROR:
            value.number = static_cast<std::int32_t>(Load32(bytes));
            break;
        case VT_UI4:
        case VT_UINT:
            value.number = Load32(bytes);
            break;
        case VT_I8:
        case VT_UI8:
        case VT_CY:
            value.number = static_cast<std::int64_t>(Load64(bytes));
            break;
        case VT_R4: {
            const std::uint32_t bits = Load32(bytes);
            float number = 0;
            std::memcpy(&number, &bits, sizeof number);
            value.real = static_cast<double>(number);
            break;
        }
        case VT_R8:
        case VT_DATE: {
            const std::uint64_t bits = Load64(bytes);
            std::memcpy(&value.real, &bits, sizeof value.real);
            break;
        }
        case VT_FILETIME:
            value.time.dwLowDateTime = Load32(bytes);
            value.time.dwHighDateTime = Load32(bytes + 4);
            break;
        case VT_CLSID:
            value.guid = LoadGuid(bytes);
            break;
        default:
            break;  // VT_EMPTY and VT_NULL have no bytes
    }
}

}  // namespace

void PropertyValue::Clear() {
    type = VT_EMPTY;
    text.clear();
    number = 0;
    real = 0;
    time = {};
    guid = {};
    cbBlob = 0;
    elements.clear();
}

void ValueReader::SetRange(std::uint32_t begin, std::uint32_t end) {
    begin_ = begin;
    end_ = end;
}

// No byte outside the range is ever looked at: the one behind it belongs to another section.
HRESULT ValueReader::Fetch(std::uint32_t offset, std::uint32_t cb, const BYTE*& bytes) {
    bytes = nullptr;
    if (offset < begin_ || offset > end_ || cb > end_ - offset) return STG_E_DOCFILECORRUPT;
    return window_.Fetch(offset, cb, bytes);
}

HRESULT ValueReader::ReadType(std::uint32_t offset, VARTYPE& type) {
    const BYTE* bytes = nullptr;
    const HRESULT status = Fetch(offset, kTypeBytes, bytes);
    if (SUCCEEDED(status)) type = static_cast<VARTYPE>(Load16(bytes));
    return status;
}

// A length field in front of that many units, all of which lie in the range.
HRESULT ValueReader::ReadLength(std::uint32_t offset, std::uint32_t unit, std::uint32_t& cb) {
    const BYTE* bytes = nullptr;
    const HRESULT status = Fetch(offset, kLengthBytes, bytes);
    if (FAILED(status)) return status;
    const std::uint32_t units = Load32(bytes);
    if (units > (end_ - offset - kLengthBytes) / unit) return STG_E_DOCFILECORRUPT;
    cb = units * unit;
    return S_OK;
}

HRESULT ValueReader::Measure(std::uint32_t offset, VARTYPE& type, std::uint32_t& cb) {
    cb = 0;
    HRESULT status = ReadType(offset, type);
    if (FAILED(status)) return status;
    std::uint32_t next = offset + kTypeBytes;
    status = Walk(type, next, nullptr, next);
    if (status == DISP_E_BADVARTYPE) status = S_OK;
    cb = next - offset;
    return status;
}

HRESULT ValueReader::Read(std::uint32_t offset, PropertyValue& value) {
    value.Clear();
    const HRESULT status = ReadType(offset, value.type);
    if (FAILED(status)) return status;
    std::uint32_t next = 0;
    cbTextLeft_ = kMostTextBytes;
    return Walk(value.type, offset + kTypeBytes, &value, next);
}

HRESULT ValueReader::ReadBlob(std::uint32_t offset, std::uint32_t cbMost,
                              std::vector<BYTE>& bytes) {
    bytes.clear();
    VARTYPE type = VT_EMPTY;
    HRESULT status = ReadType(offset, type);
    if (FAILED(status)) return status;
    if (ShapeOf(type).shape != eShape::Blob) return DISP_E_TYPEMISMATCH;
    std::uint32_t cb = 0;
    status = ReadLength(offset + kTypeBytes, 1, cb);
    if (FAILED(status)) return status;
    if (cb > cbMost) return STG_E_READFAULT;
    const BYTE* from = nullptr;
    status = Fetch(offset + kTypeBytes + kLengthBytes, cb, from);
    if (SUCCEEDED(status)) bytes.assign(from, from + cb);
    return status;
}

// `value` is null when the value is only measured.
HRESULT ValueReader::Walk(VARTYPE type, std::uint32_t offset, PropertyValue* value,
                          std::uint32_t& next) {
    next = offset;
    const auto element = static_cast<VARTYPE>(type & kTypeOfElements);
    const auto kind = static_cast<VARTYPE>(type & ~kTypeOfElements);
    if (kind == VT_VECTOR) return WalkVector(element, offset, value, next);
    if (kind == VT_ARRAY) {
        const bool isKnown = element == VT_VARIANT || ShapeOf(element).shape != eShape::Unknown;
        return isKnown ? DISP_E_BADVARTYPE : STG_E_DOCFILECORRUPT;
    }
    if (kind != 0) return STG_E_DOCFILECORRUPT;
    return WalkScalar(type, offset, Layout{true, false}, value, next);
}

HRESULT ValueReader::WalkScalar(VARTYPE type, std::uint32_t offset, const Layout& layout,
                                PropertyValue* value, std::uint32_t& next) {
    const Shape shape = ShapeOf(type);
    const BYTE* bytes = nullptr;
    HRESULT status = S_OK;
    switch (shape.shape) {
        case eShape::Unknown:
            return STG_E_DOCFILECORRUPT;
        case eShape::Opaque:
            return DISP_E_BADVARTYPE;
        case eShape::Text:
        case eShape::WideText:
            return WalkText(type, offset, layout, value, next);
        case eShape::Blob: {
            std::uint32_t cb = 0;
            status = ReadLength(offset, 1, cb);
            if (FAILED(status)) return status;
            if (value != nullptr) value->cbBlob = cb;
            next = offset + kLengthBytes + cb;
            return S_OK;
        }
        case eShape::Fixed:
            status = Fetch(offset, shape.cb, bytes);
            if (FAILED(status)) return status;
            if (value != nullptr) StoreFixed(type, bytes, *value);
            next = offset + shape.cb;
            return S_OK;
    }
    return STG_E_DOCFILECORRUPT;
}

HRESULT ValueReader::WalkText(VARTYPE type, std::uint32_t offset, const Layout& layout,
                              PropertyValue* value, std::uint32_t& next) {
    const bool isWide = type == VT_LPWSTR;
    const std::uint32_t cbUnit = isWide || codePage_ == kUtf16CodePage ? 2 : 1;
    std::uint32_t cb = 0;
    HRESULT status = ReadLength(offset, isWide ? 2 : 1, cb);
    if (FAILED(status)) return status;
    const std::uint32_t begin = offset + kLengthBytes;
    const BYTE* bytes = nullptr;
    if (layout.needsFinal && cb > 0) {
        if (cb < cbUnit) return STG_E_DOCFILECORRUPT;
        status = Fetch(begin + cb - cbUnit, cbUnit, bytes);
        if (FAILED(status)) return status;
        if (bytes[0] != 0 || bytes[cbUnit - 1] != 0) return STG_E_DOCFILECORRUPT;
    }
    if (value != nullptr) {
        if (cb > cbTextLeft_) return DISP_E_OVERFLOW;
        cbTextLeft_ -= cb;
        status = Fetch(begin, cb, bytes);
        if (FAILED(status)) return status;
        if (isWide) {
            DecodeUtf16(bytes, cb, value->text);
        } else {
            status = decoder_.Decode(codePage_, bytes, cb, value->text);
            if (FAILED(status)) return status;
        }
    }
    const std::uint32_t padding = layout.isPadded ? (4 - cb % 4) % 4 : 0;
    next = begin + cb + std::min(padding, end_ - begin - cb);
    return S_OK;
}

HRESULT ValueReader::WalkVector(VARTYPE element, std::uint32_t offset, PropertyValue* value,
                                std::uint32_t& next) {
    const BYTE* bytes = nullptr;
    HRESULT status = Fetch(offset, kLengthBytes, bytes);
    if (FAILED(status)) return status;
    const std::uint32_t count = Load32(bytes);
    const std::uint32_t begin = offset + kLengthBytes;
    const Shape shape = ShapeOf(element);
    if (element != VT_VARIANT && shape.shape == eShape::Unknown) return STG_E_DOCFILECORRUPT;
    if (shape.shape == eShape::Opaque) return DISP_E_BADVARTYPE;
    if (element == VT_EMPTY || element == VT_NULL) return STG_E_DOCFILECORRUPT;
    const std::uint32_t least = shape.shape == eShape::Fixed ? shape.cb : kLengthBytes;
    if (count > (end_ - begin) / least) return STG_E_DOCFILECORRUPT;
    if (value != nullptr && count > kMostElements) return DISP_E_OVERFLOW;
    if (value == nullptr && shape.shape == eShape::Fixed) {
        next = begin + count * shape.cb;
        return S_OK;
    }
    // Byte texts mostly follow each other without padding, wide ones mostly with it. The layout
    // in which each text ends with its NUL is the right one; where none does, the first that fits.
    const bool paddedFirst = element == VT_LPWSTR || codePage_ == kUtf16CodePage;
    const Layout layouts[] = {
        {paddedFirst, true}, {!paddedFirst, true}, {paddedFirst, false}, {!paddedFirst, false}};
    for (const Layout& layout : layouts) {
        if (value != nullptr) {
            value->elements.clear();
            value->elements.reserve(count);
            cbTextLeft_ = kMostTextBytes;
        }
        status = WalkElements(element, begin, count, layout, value, next);
        if (status != STG_E_DOCFILECORRUPT) return status;
    }
    return status;
}

HRESULT ValueReader::WalkElements(VARTYPE element, std::uint32_t offset, std::uint32_t count,
                                  const Layout& layout, PropertyValue* value, std::uint32_t& next) {
    next = offset;
    for (std::uint32_t i = 0; i < count; ++i) {
        VARTYPE type = element;
        if (element == VT_VARIANT) {
            const HRESULT status = ReadType(next, type);
            if (FAILED(status)) return status;
            next += kTypeBytes;
        }
        PropertyValue* part = nullptr;
        if (value != nullptr) {
            part = &value->elements.emplace_back();
            part->type = type;
        }
        const std::uint32_t begin = next;
        const HRESULT status = WalkScalar(type, begin, layout, part, next);
        if (FAILED(status)) return status;
        const eShape shape = ShapeOf(type).shape;
        const bool isText = shape == eShape::Text || shape == eShape::WideText;
        // Blobs are always padded, and so are the short numbers among variants.
        if (shape == eShape::Blob || (element == VT_VARIANT && !isText)) {
            next += std::min((4 - (next - begin) % 4) % 4, end_ - next);
        }
    }
    return S_OK;
}

}  // namespace mddoc
