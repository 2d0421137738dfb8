#include "companions/md/document/references.h"

#include "companions/md/document/little_endian.h"

namespace mddoc {

namespace {

constexpr std::uint32_t kMostBytes = 8u << 20;
constexpr std::uint32_t kMostReferences = 65536;
constexpr std::uint32_t kMostPathUnits = 32767;
constexpr std::uint32_t kNumberBytes = 4;

// Takes what it is asked for from the front of the stream, or fails.
class Taker {
public:
    explicit Taker(StreamWindow& stream) : stream_(stream) {}

    std::uint32_t Left() const { return stream_.Size() - at_; }

    HRESULT Number(std::uint32_t& number) {
        const BYTE* bytes = nullptr;
        const HRESULT status = stream_.Fetch(at_, kNumberBytes, bytes);
        if (FAILED(status)) return status;
        number = Load32(bytes);
        at_ += kNumberBytes;
        return S_OK;
    }

    HRESULT Path(WText& path) {
        std::uint32_t cch = 0;
        HRESULT status = Number(cch);
        if (FAILED(status)) return status;
        if (cch > kMostPathUnits) return STG_E_DOCFILECORRUPT;
        const BYTE* bytes = nullptr;
        status = stream_.Fetch(at_, 2 * cch, bytes);
        if (FAILED(status)) return status;
        path.resize(cch);
        for (std::uint32_t i = 0; i < cch; ++i)
            path[i] = static_cast<WCHAR>(Load16(bytes + 2 * i));
        at_ += 2 * cch;
        return S_OK;
    }

private:
    StreamWindow& stream_;
    std::uint32_t at_ = 0;
};

HRESULT Parse(StreamWindow& stream, std::vector<DocumentReference>& references) {
    if (stream.Size() > kMostBytes) return STG_E_DOCFILECORRUPT;
    Taker taker(stream);
    std::uint32_t version = 0;
    HRESULT status = taker.Number(version);
    if (FAILED(status)) return status;
    if (version != kReferencesVersion) return STG_E_DOCFILECORRUPT;
    std::uint32_t count = 0;
    status = taker.Number(count);
    if (FAILED(status)) return status;
    if (count > kMostReferences || count > taker.Left() / (2 * kNumberBytes)) {
        return STG_E_DOCFILECORRUPT;
    }
    status = stream.File().Book(count * sizeof(DocumentReference) + stream.Size());
    if (FAILED(status)) return status;
    references.reserve(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        DocumentReference& reference = references.emplace_back();
        status = taker.Path(reference.relativePath);
        if (SUCCEEDED(status)) status = taker.Path(reference.fullPath);
        if (FAILED(status)) return status;
        if (reference.relativePath.empty() && reference.fullPath.empty()) {
            return STG_E_DOCFILECORRUPT;
        }
    }
    return taker.Left() == 0 ? S_OK : STG_E_DOCFILECORRUPT;
}

}  // namespace

HRESULT ReadReferences(DocumentProperties& document, std::vector<DocumentReference>& references) {
    references.clear();
    StreamWindow stream;
    HRESULT status = document.OpenStream(kReferencesStream, stream);
    if (status == S_OK) status = Parse(stream, references);
    if (status != S_OK) references.clear();
    return status;
}

}  // namespace mddoc
