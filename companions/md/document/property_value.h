// A typed value of a property set, and the reader that checks and decodes one.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "companions/md/document/code_page.h"
#include "companions/md/document/stream_window.h"
#include "platform/wtext.h"

namespace mddoc {

// Longer texts are not decoded: nobody has written them by hand.
inline constexpr std::uint32_t kMostTextBytes = 1u << 20;

// Which field holds the value follows from the type.
struct PropertyValue {
    VARTYPE type = VT_EMPTY;
    WText text;               // VT_LPSTR, VT_LPWSTR, VT_BSTR, and the names of streams and storages
    std::int64_t number = 0;  // integers, VT_ERROR, VT_CY in ten-thousandths, VT_BOOL as 0 or 1
    double real = 0;          // VT_R4, VT_R8, VT_DATE
    FILETIME time = {};       // VT_FILETIME, as stored
    GUID guid = {};           // VT_CLSID
    std::uint32_t cbBlob = 0;  // VT_BLOB, VT_BLOB_OBJECT, VT_CF: bytes behind the length field
    std::vector<PropertyValue> elements;  // VT_VECTOR | anything

    void Clear();
    bool IsText() const { return type == VT_LPSTR || type == VT_LPWSTR || type == VT_BSTR; }
};

// Intervals of 100 ns since 1601, or of a duration.
inline std::uint64_t Ticks(const FILETIME& time) {
    return (static_cast<std::uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

// Reads values that lie between two offsets of a stream.
class ValueReader {
public:
    ValueReader(StreamWindow& window, TextDecoder& decoder) : window_(window), decoder_(decoder) {}

    void SetRange(std::uint32_t begin, std::uint32_t end);
    void SetCodePage(std::uint32_t codePage) { codePage_ = codePage; }
    std::uint32_t CodePage() const { return codePage_; }

    // The value's type, and its length in bytes with the type field. STG_E_DOCFILECORRUPT when it
    // is of no known type or leaves the range. Long contents are not read.
    [[nodiscard]] HRESULT Measure(std::uint32_t offset, VARTYPE& type, std::uint32_t& cb);
    // Besides: DISP_E_BADVARTYPE for a legal type that can't be shown here (arrays, decimals), and
    // DISP_E_OVERFLOW for a vector of more elements, or more bytes of text, than anybody needs.
    [[nodiscard]] HRESULT Read(std::uint32_t offset, PropertyValue& value);
    // The bytes of a blob that was measured before; STG_E_READFAULT when there are more than
    // `cbMost`, DISP_E_TYPEMISMATCH when it is no blob.
    [[nodiscard]] HRESULT ReadBlob(std::uint32_t offset, std::uint32_t cbMost,
                                   std::vector<BYTE>& bytes);

private:
    // How the elements of a vector follow each other. Writers disagree.
    struct Layout {
        bool isPadded;    // each text ends at a multiple of four bytes
        bool needsFinal;  // each text has its final NUL, which speaks for the layout
    };

    HRESULT ReadType(std::uint32_t offset, VARTYPE& type);
    HRESULT Fetch(std::uint32_t offset, std::uint32_t cb, const BYTE*& bytes);
    HRESULT ReadLength(std::uint32_t offset, std::uint32_t unit, std::uint32_t& cb);
    HRESULT Walk(VARTYPE type, std::uint32_t offset, PropertyValue* value, std::uint32_t& next);
    HRESULT WalkScalar(VARTYPE type, std::uint32_t offset, const Layout& layout,
                       PropertyValue* value, std::uint32_t& next);
    HRESULT WalkText(VARTYPE type, std::uint32_t offset, const Layout& layout, PropertyValue* value,
                     std::uint32_t& next);
    HRESULT WalkVector(VARTYPE element, std::uint32_t offset, PropertyValue* value,
                       std::uint32_t& next);
    HRESULT WalkElements(VARTYPE element, std::uint32_t offset, std::uint32_t count,
                         const Layout& layout, PropertyValue* value, std::uint32_t& next);

    StreamWindow& window_;
    TextDecoder& decoder_;
    std::uint32_t begin_ = 0;
    std::uint32_t end_ = 0;
    std::uint32_t codePage_ = 1252;
    std::uint32_t cbTextLeft_ = 0;  // that the value being read may still decode
};

}  // namespace mddoc
