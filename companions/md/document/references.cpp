#include "companions/md/document/references.h"

#include "companions/md/document/little_endian.h"

namespace mddoc {

namespace {

constexpr std::uint32_t kMostBytes = 64u << 20;
constexpr std::size_t kNumberBytes = 4;

// Takes what it is asked for from the front of the bytes, or fails.
class Taker {
public:
    explicit Taker(const std::vector<BYTE>& bytes) : at_(bytes.data()), left_(bytes.size()) {}

    std::size_t Left() const { return left_; }

    bool Number(std::uint32_t& number) {
        if (left_ < kNumberBytes) return false;
        number = Load32(at_);
        Skip(kNumberBytes);
        return true;
    }

    bool Text(WText& text) {
        std::uint32_t cch = 0;
        if (!Number(cch) || cch > left_ / 2) return false;
        text.resize(cch);
        for (std::uint32_t i = 0; i < cch; ++i) {
            text[i] = static_cast<WCHAR>(Load16(at_ + 2 * static_cast<std::size_t>(i)));
        }
        Skip(2 * static_cast<std::size_t>(cch));
        return true;
    }

private:
    void Skip(std::size_t cb) {
        at_ += cb;
        left_ -= cb;
    }

    const BYTE* at_;
    std::size_t left_;
};

bool Parse(const std::vector<BYTE>& bytes, std::vector<DocumentReference>& references) {
    Taker taker(bytes);
    std::uint32_t version = 0;
    std::uint32_t count = 0;
    if (!taker.Number(version) || version != kReferencesVersion) return false;
    if (!taker.Number(count) || count > taker.Left() / (2 * kNumberBytes)) return false;
    for (std::uint32_t i = 0; i < count; ++i) {
        DocumentReference& reference = references.emplace_back();
        if (!taker.Text(reference.relativePath) || !taker.Text(reference.fullPath)) return false;
    }
    return taker.Left() == 0;
}

}  // namespace

HRESULT ReadReferences(DocumentProperties& document, std::vector<DocumentReference>& references) {
    references.clear();
    std::vector<BYTE> bytes;
    const HRESULT status = document.ReadStream(kReferencesStream, kMostBytes, bytes);
    if (status != S_OK) return status;
    if (Parse(bytes, references)) return S_OK;
    references.clear();
    return STG_E_DOCFILECORRUPT;
}

}  // namespace mddoc
