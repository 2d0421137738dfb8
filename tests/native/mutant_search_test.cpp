// Whole searches over documents that were changed at random. Each is read, holds nothing, or can't
// be read; none is a hit by a value that it doesn't hold, and none makes a search read on and on.
// MUTANTS says how many, SEED which.
#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <random>

#include "host/srsample/sample_library.h"
#include "tests/unit/corpus.h"
#include "tests/unit/search_fixture.h"

// In front of the C library's.
std::size_t bytesRead = 0;
extern "C" ssize_t pread(int file, void* buffer, std::size_t cb, off_t offset) {
    bytesRead += cb;
    return syscall(SYS_pread64, file, buffer, cb, offset);
}

namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<std::uint8_t>;

constexpr const char* kNowhere = "zq9xk7v";  // in no document

std::size_t NumberFrom(const char* variable, std::size_t usual) {
    const char* text = std::getenv(variable);
    return text != nullptr ? std::strtoul(text, nullptr, 10) : usual;
}

struct Original {
    std::string name;
    Bytes bytes;
    std::string title;  // plain ASCII that stands in the bytes in one piece, or empty
};

// A text as it may stand in a document: a byte or two for each letter, in any case.
bool Holds(const Bytes& bytes, const std::string& text) {
    const auto same = [](std::uint8_t byte, char letter) {
        return wtext::FoldAscii(byte) == wtext::FoldAscii(static_cast<std::uint8_t>(letter));
    };
    const auto wide = [&](std::size_t at) {
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (!same(bytes[at + 2 * i], text[i]) || bytes[at + 2 * i + 1] != 0) return false;
        }
        return true;
    };
    if (std::search(bytes.begin(), bytes.end(), text.begin(), text.end(), same) != bytes.end()) {
        return true;
    }
    for (std::size_t at = 0; at + 2 * text.size() <= bytes.size(); ++at) {
        if (wide(at)) return true;
    }
    return false;
}

class MutantSearch : public SearchTest {
protected:
    void Add(const std::string& name, const Bytes& bytes, const std::string& title) {
        const bool plain = !title.empty() && title.size() < kValueLength &&
                           std::all_of(title.begin(), title.end(), [](char c) {
                               return std::isalnum(static_cast<unsigned char>(c)) != 0;
                           });
        originals_.push_back({name, bytes, plain && Holds(bytes, title) ? title : ""});
    }

    void AddSamples() {
        for (const bool isUtf16 : {false, true}) {
            SampleDocument document;
            document.kind = eSampleKind::Part;
            if (isUtf16) document.codePage = 1200;
            SampleProperty title{mddoc::eSetKind::Summary, 2, {}, {}};
            title.value.type = isUtf16 ? VT_LPWSTR : VT_LPSTR;
            title.value.text = TEXT("Bracket");
            document.properties.push_back(title);
            Add("sample.hpa", BuildDocument(document), "Bracket");
        }
    }

    void AddCorpus() {
        Corpus corpus;
        std::string reason;
        if (!corpus.Load(reason)) return;
        for (const auto& [file, rows] : corpus.wanted) {
            std::string title;
            for (const Row& row : rows) {
                if (row[kSet] == "summary" && row[kId] == "2") title = row[kValue];
            }
            std::ifstream in(corpus.folder / "files" / file, std::ios::binary);
            const Bytes bytes((std::istreambuf_iterator<char>(in)), {});
            Add("corpus.doc", bytes, title);
        }
    }

    Bytes Mutate(Bytes bytes) {
        const auto below = [this](std::size_t end) {
            return std::uniform_int_distribution<std::size_t>(0, end - 1)(random_);
        };
        constexpr std::array<std::uint32_t, 8> kNumbers = {
            0, 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0xFFFFFFFE, 0xFFFFFFFC, 0x1000};
        for (std::size_t change = 0, count = 1 + below(6); change < count; ++change) {
            const std::size_t at = below(bytes.size());
            switch (below(6)) {
                case 0:
                    bytes[at] ^= static_cast<std::uint8_t>(1u << below(8));
                    break;
                case 1:
                    bytes[at] = static_cast<std::uint8_t>(below(256));
                    break;
                case 2: {  // a number of the format
                    std::uint32_t number = kNumbers[below(kNumbers.size())];
                    for (std::size_t i = at & ~std::size_t{3}; i < bytes.size() && i < (at | 3) + 1;
                         ++i, number >>= 8) {
                        bytes[i] = static_cast<std::uint8_t>(number);
                    }
                    break;
                }
                case 3: {  // one part in the place of another
                    const std::size_t from = below(bytes.size());
                    const std::size_t size =
                        std::min(1 + below(128), bytes.size() - std::max(at, from));
                    for (std::size_t i = 0; i < size; ++i)
                        bytes[at + i] = bytes[from + i];
                    break;
                }
                case 4:  // in the head, where the chains begin
                    bytes[below(std::min<std::size_t>(bytes.size(), 512))] =
                        static_cast<std::uint8_t>(below(256));
                    break;
                default:
                    if (below(8) == 0) bytes.resize(at + 1);
                    break;
            }
        }
        return bytes;
    }

    // Whether the mutant is a hit.
    bool IsHit(const std::string& criterion) {
        ClearCriteria();
        Criterion(criterion);
        bytesRead = 0;
        const bool hit = !RunSelection({file_}).empty();
        EXPECT_GE(fs::file_size(folder_ / file_), bytesRead);
        return hit;
    }
    bool Failed() const {
        return std::any_of(statuses_.begin(), statuses_.end(),
                           [](const auto& each) { return each.second < 0; });
    }

    std::vector<Original> originals_;
    std::mt19937_64 random_{NumberFrom("SEED", 1)};
    std::string file_;
};

// Says nothing that a test would have to expect.
class SilentDesk : public Desk {
public:
    int AnswerMessageBox(const MessageBoxQuestion&) override { return IDOK; }
};

TEST_F(MutantSearch, NoneIsAWrongHit) {
    SilentDesk silent;
    const DeskScope scope(silent);
    AddSamples();
    AddCorpus();
    std::size_t read = 0;
    std::size_t failed = 0;
    std::size_t hits = 0;
    const std::size_t count = NumberFrom("MUTANTS", 400);
    for (std::size_t mutant = 0; mutant < count && !HasFailure(); ++mutant) {
        const Original& original = originals_[mutant % originals_.size()];
        SCOPED_TRACE("mutant " + std::to_string(mutant));
        const Bytes bytes = Mutate(original.bytes);
        file_ = original.name;
        WriteFile(file_, bytes);
        EXPECT_FALSE(IsHit(std::string("Title contains ") + kNowhere));
        const bool isDifferent = IsHit(std::string("Title differs from ") + kNowhere);
        EXPECT_FALSE(isDifferent && Failed()) << "a hit by what can't be read";
        Failed() ? ++failed : ++read;
        if (original.title.empty()) continue;
        const bool isSame = IsHit("Title equals " + original.title);
        EXPECT_FALSE(isSame && (Failed() || !Holds(bytes, original.title)));
        hits += isSame ? 1 : 0;
    }
    EXPECT_LT(0u, hits);
    EXPECT_LT(0u, failed);
    EXPECT_LT(failed, read) << "most are still documents";
    std::printf(
        "%zu mutants of %zu documents: %zu read or without properties, %zu not readable, "
        "%zu hits by their title\n",
        count, originals_.size(), read, failed, hits);
}

}  // namespace
