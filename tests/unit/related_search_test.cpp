// The route over a document and all that it refers to: over a sample library and over knots.
#include <algorithm>
#include <map>
#include <set>

#include "host/srsample/sample_library.h"
#include "tests/unit/search_fixture.h"

namespace {

class RelatedSearch : public SearchTest {
protected:
    // A document that refers to others by their paths from its folder.
    void Refer(const std::string& file, const std::vector<std::string>& targets) {
        SampleDocument document;
        document.kind = file.ends_with(".hsb") ? eSampleKind::Assembly : eSampleKind::Part;
        document.path = wtext::FromUtf8(file);
        // Behind a "|" the full path.
        for (const std::string& target : targets) {
            const std::size_t bar = target.find('|');
            document.references.push_back(
                {wtext::FromUtf8(target.substr(0, bar)),
                 wtext::FromUtf8(bar != target.npos ? target.substr(bar + 1) : "")});
        }
        WriteFile(file, BuildDocument(document));
    }
    std::vector<std::string> RunRelated(const std::string& start) {
        for (auto* list : {&failedReferences_, &missing_})
            list->clear();
        return SearchTest::RunRelated(Wide(start));
    }
};

// The path of a reference from the folder of the document that has it; slashes part the names.
std::string Resolved(const std::string& from, WText relative) {
    std::replace(relative.begin(), relative.end(), static_cast<WCHAR>('\\'),
                 static_cast<WCHAR>('/'));
    return (std::filesystem::path(from).parent_path() / wtext::ToUtf8(relative))
        .lexically_normal()
        .generic_string();
}

TEST_F(RelatedSearch, FindsWhatTheLibraryRecorded) {
    SampleLibrary library(80, 4);
    SampleDocument document;
    std::map<std::string, std::vector<std::string>> references;
    // Paths in narrow text mean other letters on other systems.
    const auto plain = [](WText& text) {
        std::replace_if(
            text.begin(), text.end(), [](WCHAR unit) { return unit > 0x7F; }, TEXT('x'));
    };
    while (library.MakeNext(document)) {
        plain(document.path);
        for (mddoc::DocumentReference& reference : document.references) {
            plain(reference.relativePath);
            plain(reference.fullPath);
        }
        std::string path = wtext::ToUtf8(document.path);
        std::replace(path.begin(), path.end(), '\\', '/');
        for (const mddoc::DocumentReference& reference : document.references)
            references[path].push_back(Resolved(path, reference.relativePath));
        references[path];
        WriteFile(path, document.IsCompound() ? BuildDocument(document) : document.contents);
    }
    std::size_t longest = 0;
    for (const auto& [start, own] : references) {
        if (own.empty()) continue;
        std::set<std::string> wanted;
        std::set<std::string> missing;
        std::vector<std::string> waiting = {start};
        while (!waiting.empty()) {
            const std::string next = waiting.back();
            waiting.pop_back();
            if (references.count(next) == 0) {
                missing.insert(next);
            } else if (wanted.insert(next).second) {
                waiting.insert(waiting.end(), references[next].begin(), references[next].end());
            }
        }
        SCOPED_TRACE(start);
        const std::vector<std::string> hits = RunRelated(start);
        EXPECT_EQ(std::vector<std::string>(wanted.begin(), wanted.end()), Sorted(hits));
        std::set<std::string> told;
        for (const std::string& each : missing_)
            told.insert(each.substr(each.find(" -> ") + 4));
        EXPECT_EQ(missing, told);
        longest = std::max(longest, hits.size());
    }
    EXPECT_LT(8u, longest);
}

TEST_F(RelatedSearch, Knots) {
    Refer("a.hsb", {"b.hsb", "a.hsb", "p.hpa", "gone.hpa", "sub"});
    Refer("b.hsb", {"a.hsb", "p.hpa", "sub\\c.hsb", "x.hpa|p.hpa"});
    Refer("sub/c.hsb", {"..\\p.hpa", "y.hpa|" + wtext::ToUtf8(Wide("sub/../a.hsb"))});
    Refer("p.hpa", {});
    std::filesystem::current_path(folder_);
    WriteFile("cut.hsb", {0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1, 0, 0});
    Refer("d.hsb", {"cut.hsb", "p.hpa"});
    EXPECT_EQ((std::vector<std::string>{"a.hsb", "b.hsb", "p.hpa", "sub/c.hsb"}),
              RunRelated("a.hsb"))
        << "each once, the references of a document right behind it";
    EXPECT_EQ(4u, files_);
    // A folder is no document, and a path from any current folder is no full one.
    const std::vector<std::string> missing = {"a.hsb -> gone.hpa", "a.hsb -> sub",
                                              "b.hsb -> x.hpa"};
    EXPECT_EQ(missing, missing_);
    // Another way to write the start is the same document; a folder is none to start with.
    for (const WText& start : {Wide("") + TEXT("\\sub\\..\\a.hsb"), Wide("") + TEXT("/a.hsb"),
                               WText(TEXT("sub\\..\\a.hsb"))}) {
        EXPECT_EQ((std::vector<std::string>{"a.hsb", "b.hsb", "p.hpa", "sub/c.hsb"}),
                  SearchTest::RunRelated(start))
            << wtext::ToUtf8(start);
    }
    EXPECT_EQ((std::vector<std::string>{}), RunRelated("sub"));
    EXPECT_EQ((std::vector<std::string>{"sub"}), failedReferences_);
    // One that can't be read ends only its own branch.
    EXPECT_EQ((std::vector<std::string>{"d.hsb", "cut.hsb", "p.hpa"}), RunRelated("d.hsb"));
    EXPECT_EQ((std::vector<std::string>{"cut.hsb"}), failedReferences_);
    // In the application the documents are not read, and here no application is running.
    query_.inApp = true;
    EXPECT_EQ((std::vector<std::string>{"a.hsb"}), RunRelated("a.hsb"));
    EXPECT_EQ((std::vector<std::string>{"a.hsb"}), failedReferences_);
    query_.inApp = false;
    Criterion("File name begins with p");
    EXPECT_EQ((std::vector<std::string>{"p.hpa"}), RunRelated("a.hsb"));
    // A stop between two documents ends the route at once.
    files_ = 0;
    onFile_ = [](SRxSearchRun& run) { run.stopRequested = true; };
    (void)RunRelated("a.hsb");
    EXPECT_EQ(1u, files_);
}

}  // namespace
