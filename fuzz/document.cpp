// A document of any bytes: every property set, the references, a blob, and each of them twice,
// since a second reading has to tell the same. Then all again in a file that seems to have 1 TB.
#include "companions/md/document/references.h"
#include "fuzz/fuzz_input.h"

namespace {

constexpr mddoc::eSetKind kKinds[] = {mddoc::eSetKind::Summary, mddoc::eSetKind::DocumentSummary,
                                      mddoc::eSetKind::UserDefined, mddoc::eSetKind::Product};
constexpr std::uint32_t kMostBlob = 1 << 20;
constexpr std::size_t kApparentBytes = std::size_t{1} << 40;
// Each value that is read may begin a chain anew.
constexpr std::size_t kMostLinksAByte = 64;

void RequireSame(const mddoc::PropertyValue& one, const mddoc::PropertyValue& other) {
    Require(one.type == other.type && one.text == other.text && one.number == other.number &&
            one.cbBlob == other.cbBlob && one.elements.size() == other.elements.size());
}

void ReadSet(mddoc::DocumentProperties& document, mddoc::eSetKind kind) {
    std::vector<mddoc::PropertyEntry> entries;
    const HRESULT status = document.List(kind, entries);
    Require(status == document.SetStatus(kind));
    Require(status == S_OK || entries.empty());
    for (const mddoc::PropertyEntry& entry : entries) {
        Require(entry.status == S_OK || entry.value.type == VT_EMPTY);
        mddoc::PropertyValue again;
        Require(document.Find(kind, entry.id, again) == entry.status);
        RequireSame(entry.value, again);
        if (kind == mddoc::eSetKind::UserDefined && !entry.name.empty()) {
            Require(document.FindByName(entry.name, again) != S_FALSE);
        }
        std::vector<BYTE> bytes;
        if (document.FindBlob(kind, entry.id, kMostBlob, bytes) == S_OK) {
            Require(bytes.size() <= kMostBlob && bytes.size() == entry.value.cbBlob);
        }
    }
}

void ReadAll(mddoc::DocumentProperties& document, const std::string& path, std::size_t size) {
    const HRESULT status = document.Open(path);
    for (const mddoc::eSetKind kind : kKinds) {
        const HRESULT set = document.SetStatus(kind);
        Require(status == S_OK || set == status);
        ReadSet(document, kind);
    }
    std::vector<mddoc::DocumentReference> references;
    const HRESULT read = mddoc::ReadReferences(document, references);
    Require(read == S_OK || references.empty());
    // What was stored bounds the work, not what the file claims.
    Require(document.Spent().links <= kMostLinksAByte * size);
    Require(document.Spent().cbAllocated <= mddoc::kMostAllocated);
    document.Close();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const InputFile file;
    // One object for all rounds, as in a search: what one document leaves must not reach the next.
    static mddoc::DocumentProperties document;
    file.Write(data, size);
    ReadAll(document, file.Path(), size);
    file.Lengthen(kApparentBytes);
    ReadAll(document, file.Path(), size);
    return 0;
}
