// Searches over real documents: each property that office documents carry, by its values in the
// manifest, finds exactly the files that the manifest gives.
#include <algorithm>
#include <set>

#include "criteria/text_equality.h"
#include "platform/native_layer.h"
#include "tests/unit/corpus.h"
#include "tests/unit/search_fixture.h"

namespace {

namespace fs = std::filesystem;

struct OfficeProperty {
    const char* name;
    const char* set;
    const char* id;
};
constexpr OfficeProperty kProperties[] = {
    {"Title", "summary", "2"},       {"Subject", "summary", "3"},
    {"Author", "summary", "4"},      {"Keywords", "summary", "5"},
    {"Comments", "summary", "6"},    {"Revision number", "summary", "9"},
    {"Category", "docsummary", "2"}, {"Manager", "docsummary", "14"},
    {"Company", "docsummary", "15"},
};

std::string Unescaped(const std::string& text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            out += text[i];
            continue;
        }
        switch (text[++i]) {
            case 't':
                out += '\t';
                break;
            case 'n':
                out += '\n';
                break;
            case 'r':
                out += '\r';
                break;
            case 'u':
                out += static_cast<char>(std::stoi(text.substr(i + 1, 4), nullptr, 16));
                i += 4;
                break;
            default:
                out += text[i];
        }
    }
    return out;
}

bool IsSearched(const std::string& file) {
    const WText name = wtext::FromUtf8(file);
    return CompareFileType(name.c_str(), FILETYPE_OFFICE) ||
           CompareFileType(name.c_str(), FILETYPE_MODELS);
}

class CorpusSearch : public SearchTest {
protected:
    void SetUp() override {
        std::string reason;
        if (!corpus_.Load(reason)) GTEST_SKIP() << reason;
    }

    // The value of a property by file, of all files that such a search looks at.
    std::map<std::string, WText> ValuesOf(const OfficeProperty& property) {
        std::map<std::string, WText> values;
        for (const auto& [file, rows] : corpus_.wanted) {
            if (!IsSearched(file)) continue;
            for (const Row& row : rows) {
                if (row[kSet] == property.set && row[kId] == property.id) {
                    values[file] = wtext::FromUtf8(Unescaped(row[kValue]));
                }
            }
        }
        return values;
    }

    std::vector<std::string> Find(const OfficeProperty& property, const char* condition,
                                  const WText& value) {
        ClearCriteria();
        Criterion(std::string(property.name) + " " + condition + " " + wtext::ToUtf8(value));
        std::vector<std::string> hits;
        for (const std::string& path : RunAt(corpus_.folder / "files")) {
            const std::string file = path.substr(path.find_last_of("/\\") + 1);
            // Of a damaged container any answer will do.
            const auto damage = corpus_.damage.find(file);
            if (damage == corpus_.damage.end() || damage->second != "container") {
                hits.push_back(file);
            }
        }
        return Sorted(hits);
    }

    Corpus corpus_;
};

TEST_F(CorpusSearch, FindsExactlyWhatTheManifestGives) {
    // Under Wine a search takes as long as a hundred do natively.
    const std::size_t most = IsNativeLayer() ? 1000 : 4;
    std::size_t searches = 0;
    for (const OfficeProperty& property : kProperties) {
        const std::map<std::string, WText> values = ValuesOf(property);
        std::set<WText> tried;
        for (const auto& [file, whole] : values) {
            if (whole.empty() || whole.size() >= kValueLength) continue;
            if (tried.size() == most || !tried.insert(whole).second) continue;
            const std::size_t half = (whole.size() + 1) / 2;
            const struct {
                const char* condition;
                WText value;
                bool (*holds)(const WText& have, const WText& value);
            } kRows[] = {
                {"equals", whole,
                 [](const WText& have, const WText& value) {
                     return TextsEqual(have, value, kFoldText);
                 }},
                {"begins with", whole.substr(0, half),
                 [](const WText& have, const WText& value) {
                     return TextsEqual(have.substr(0, value.size()), value, kFoldText);
                 }},
                {"contains", whole.substr(whole.size() - half),
                 [](const WText& have, const WText& value) {
                     for (std::size_t at = 0; at + value.size() <= have.size(); ++at) {
                         if (TextsEqual(have.substr(at, value.size()), value, kFoldText)) {
                             return true;
                         }
                     }
                     return false;
                 }},
            };
            for (const auto& row : kRows) {
                SCOPED_TRACE(std::string(property.name) + " " + row.condition + " " +
                             wtext::ToUtf8(row.value));
                std::vector<std::string> wanted;
                for (const auto& [other, have] : values) {
                    if (!have.empty() && row.holds(have, row.value)) wanted.push_back(other);
                }
                EXPECT_EQ(Sorted(wanted), Find(property, row.condition, row.value));
                ++searches;
            }
        }
        EXPECT_FALSE(tried.empty()) << property.name;
    }
    EXPECT_LT(50u, searches);
}

}  // namespace
