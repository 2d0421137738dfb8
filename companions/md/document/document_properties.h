// What the rest of the system asks a document: its kind and the values of its property sets. The
// answers are kept apart everywhere: a value, absent, could not be read.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "companions/md/document/property_set.h"

namespace mddoc {

enum class eSetKind {
    Summary,          // \005SummaryInformation
    DocumentSummary,  // first section of \005DocumentSummaryInformation
    UserDefined,      // its section of named properties
    Product,          // \005DesignProperties, the set of this system
};
inline constexpr std::size_t kSetKinds = 4;

// The published formats of the office sets.
inline constexpr GUID kSummaryFormat = {
    0xF29F85E0, 0x4FF9, 0x1068, {0xAB, 0x91, 0x08, 0x00, 0x2B, 0x27, 0xB3, 0xD9}};
inline constexpr GUID kDocumentSummaryFormat = {
    0xD5CDD502, 0x2E9C, 0x101B, {0x93, 0x97, 0x08, 0x00, 0x2B, 0x2C, 0xF9, 0xAE}};
inline constexpr GUID kUserDefinedFormat = {
    0xD5CDD505, 0x2E9C, 0x101B, {0x93, 0x97, 0x08, 0x00, 0x2B, 0x2C, 0xF9, 0xAE}};
inline constexpr const WCHAR* kSummaryStream = TEXT("\005SummaryInformation");
inline constexpr const WCHAR* kDocumentSummaryStream = TEXT("\005DocumentSummaryInformation");

// The product's own set; docs/document-format.md describes it.
inline constexpr GUID kProductFormat = {
    0x8D5A2C41, 0x6E0B, 0x4F7C, {0x9B, 0x1D, 0x3A, 0x52, 0xC7, 0x0E, 0x94, 0xF6}};
inline constexpr const WCHAR* kProductStream = TEXT("\005DesignProperties");

struct PropertyEntry {
    DWORD id = 0;
    WText name;             // of the user-defined set; empty where the dictionary has none
    HRESULT status = S_OK;  // negative: the value is there and could not be read
    PropertyValue value;
};

// One document at a time; opened again for the next one it keeps its buffers. The file stays open
// until Close, since sets are read when they are asked for.
class DocumentProperties {
public:
    // S_OK; S_FALSE when the file is no compound file, so that everything is absent; negative when
    // it could not be read (a status of FileBytes, STG_E_DOCFILECORRUPT).
    [[nodiscard]] HRESULT Open(const DocumentPath& path, bool isPlainFile = false);
    void Close();

    // All zeros where there is none.
    const GUID& RootClass() const { return file_.RootClass(); }
    // Of the file as it was opened; also when it is no compound file.
    const FileStamp& Stamp() const { return file_.Stamp(); }

    // S_OK present, S_FALSE absent, negative damaged or unreadable: then so is each of its values.
    [[nodiscard]] HRESULT SetStatus(eSetKind kind);
    // S_OK, S_FALSE absent, negative unreadable. `value` is VT_EMPTY unless the result is S_OK.
    [[nodiscard]] HRESULT Find(eSetKind kind, DWORD id, PropertyValue& value);
    // A user-defined property; names count without case.
    [[nodiscard]] HRESULT FindByName(WTextView name, PropertyValue& value);
    // The bytes of a VT_BLOB or VT_CF; STG_E_READFAULT when they are more than `cbMost`.
    [[nodiscard]] HRESULT FindBlob(eSetKind kind, DWORD id, std::uint32_t cbMost,
                                   std::vector<BYTE>& bytes);
    // In the order of the set, without its dictionary. The result is that of SetStatus.
    [[nodiscard]] HRESULT List(eSetKind kind, std::vector<PropertyEntry>& entries);

    // Another stream of the root storage; the window is good until the document is closed. S_OK,
    // S_FALSE absent, negative.
    [[nodiscard]] HRESULT OpenStream(WTextView name, StreamWindow& stream);

    // What the open document has cost so far.
    const CompoundFile::Effort& Spent() const { return file_.Spent(); }

private:
    static constexpr std::size_t kStreams = 3;
    struct StreamState {
        bool isLoaded = false;
        HRESULT status = S_FALSE;
        PropertySetStream stream;
    };
    struct SetState {
        bool isLoaded = false;
        HRESULT status = S_FALSE;
        PropertySection section;
    };

    StreamState& StreamOf(eSetKind kind);
    HRESULT LoadStream(StreamState& state, WTextView name);
    HRESULT LoadSet(eSetKind kind, SetState& state);
    HRESULT ReadSlot(eSetKind kind, const PropertySection::Slot& slot, PropertyValue& value);

    HRESULT status_ = S_FALSE;
    CompoundFile file_;
    TextDecoder decoder_;
    std::array<StreamState, kStreams> streams_;
    std::array<SetState, kSetKinds> sets_;
};

}  // namespace mddoc
