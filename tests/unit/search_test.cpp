// The routes of a search: folder trees, chains of files, and what is passed over.
#include <algorithm>
#include <utility>

#include "criteria/skipped_criteria.h"
#include "module/text_lengths.h"
#include "outside/md_document_classes.h"
#include "platform/host/hold.h"
#include "tests/unit/search_fixture.h"

namespace {

using Names = std::vector<std::string>;

TEST_F(SearchTest, WalksDepthFirstAndSkipsNames) {
    Tree({"a/b/deep.hpa", "a/one.hpa", "c/two.hpa", "top.hpa", "Recycler/x.hpa",
          "oldVERSIONS/y.hpa", "a/RECYCLER/z.hpa", "Recycler2/kept.hpa", "empty/"});
    Criterion("File name contains .hpa");
    EXPECT_EQ((Names{"Recycler2/kept.hpa", "a/b/deep.hpa", "a/one.hpa", "c/two.hpa", "top.hpa"}),
              Sorted(RunFolders()));
    EXPECT_TRUE(routeResult_);
    // Right behind its parent comes a folder's subfolder, before any sibling.
    const auto parent = std::find(folders_.begin(), folders_.end(), "a");
    ASSERT_NE(folders_.end(), parent);
    EXPECT_EQ("a/b", *(parent + 1));
    EXPECT_EQ((Names{"top.hpa"}), RunFolders(false));
    // A skipped name that is looked in itself is walked.
    EXPECT_EQ((Names{"Recycler/x.hpa"}), RunFolders(true, "Recycler"));
}

TEST_F(SearchTest, RemembersFolderAndRestoresCurrentDirectory) {
    Tree({"a/b/x.hpa"});
    Criterion("File name contains x");
    RunFolders();
    const WText current = CurrentWideFolder();
    ASSERT_FALSE(current.empty());
    EXPECT_EQ(CSTR_EQUAL, CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE | NORM_IGNOREWIDTH,
                                         current.c_str(), -1, Wide("").c_str(),
                                         static_cast<int>(current.size())));
}

// The walk changes the current folder, so what is looked in from there is made whole first.
TEST_F(SearchTest, AFolderFromTheCurrentOne) {
    const auto named = [](PropertySectionWriter& section) { section.AddText(2, TEXT("bracket")); };
    Document("docs/one.hpa", nullptr, nullptr, named);
    Document("docs/sub/two.hpa", nullptr, nullptr, named);
    Criterion("Title contains bracket");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder_);
    EXPECT_EQ((Names{"docs/one.hpa", "docs/sub/two.hpa"}), Sorted(RunTyped(TEXT("docs"))));
    EXPECT_TRUE(std::filesystem::equivalent(folder_ / "docs", std::filesystem::current_path()));
    EXPECT_EQ((Names{"docs/sub/two.hpa"}), RunTyped(TEXT("sub")));
    std::filesystem::current_path(before);
}

// Nothing of a document stays open behind its test; natively nobody minds one that does.
TEST_F(SearchTest, ATestedDocumentIsFree) {
    const Names documents = {"one.hpa", "three.hpa", "two.hpa"};
    for (const std::string& file : documents)
        Document(file, nullptr);
    Criterion("Title differs from x");
    onFile_ = [&](SRxSearchRun&) {
        for (const std::string& file : documents)
            EXPECT_TRUE(HeldFile(NativePathFromWide(Wide(file))).IsHeld()) << file;
    };
    RunFolders();
    EXPECT_EQ(3u, files_);
}

TEST_F(SearchTest, StopTakesEffectAtTheEndOfTheFolder) {
    Tree({"one.hpa", "two.hpa", "three.hpa", "sub/four.hpa"});
    Criterion("File name contains .hpa");
    onFile_ = [](SRxSearchRun& run) { run.stopRequested = true; };
    EXPECT_EQ((Names{"one.hpa", "three.hpa", "two.hpa"}), Sorted(RunFolders()));
    EXPECT_EQ(3u, files_);
}

TEST_F(SearchTest, BadFoldersAreToldAndTheWalkGoesOn) {
    Tree({"a/x.hpa", "gone/y.hpa", "z.hpa"});
    Criterion("File name contains .hpa");
    // The folder vanishes between its listing and its own turn.
    onFile_ = [this](SRxSearchRun&) { std::filesystem::remove_all(folder_ / "gone"); };
    EXPECT_EQ((Names{"a/x.hpa", "z.hpa"}), Sorted(RunFolders()));
    ASSERT_EQ(1u, failedFolders_.size());
    EXPECT_EQ(Wide("gone") + TEXT("\\"), failedFolders_[0]);
}

// What goes wrong with a file is told with its name; where even that can't be, with its folder's.
TEST_F(SearchTest, AFileThatFailsEndsNoSearch) {
    Tree({"a/x.hpa", "b/y.hpa", "c/z.hpa"});
    Criterion("File name contains .hpa");
    int left = 0;
    onFile_ = [&](SRxSearchRun&) {
        if (--left == 0) throw std::bad_alloc();
        if (left < 0) throw std::runtime_error("odd");
    };
    const auto failAt = [&](int file) {
        left = file;
        failedFiles_.clear();
    };
    failAt(2);
    Names all = RunSelection({"a/x.hpa", "b/y.hpa", "c/z.hpa"});
    EXPECT_EQ((Names{"a/x.hpa"}), all);
    EXPECT_EQ((Names{"b/y.hpa", "c/z.hpa"}), failedFiles_);
    failAt(3);
    all = RunFolders();
    EXPECT_EQ(2u, all.size());
    all.insert(all.end(), failedFiles_.begin(), failedFiles_.end());
    EXPECT_EQ((Names{"a/x.hpa", "b/y.hpa", "c/z.hpa"}), Sorted(all));
    EXPECT_TRUE(failedFolders_.empty());
    cantTell_ = true;
    failAt(3);
    EXPECT_EQ(2u, RunFolders().size());
    ASSERT_EQ(1u, failedFolders_.size());
    EXPECT_EQ(Wide("").size() + 2, failedFolders_[0].size()) << "the folder of the last file";
}

TEST_F(SearchTest, LongPathsAreToldNeverCut) {
    // The pattern of a folder can have 260 units: the root, \f\, a long name, a backslash and a
    // star.
    const std::string name(260 - Wide("").size() - 5, 'n');
    Tree({"f/" + name + "/in.hpa"});
    Criterion("File name contains .hpa");
    EXPECT_EQ(1u, RunFolders().size());
    EXPECT_EQ(0u, failedFolders_.size());
    std::filesystem::rename(folder_ / "f", folder_ / "ff");
    EXPECT_EQ(Names{}, RunFolders());
    EXPECT_FALSE(routeResult_) << "the last folder failed";
    EXPECT_EQ(1u, failedFolders_.size());

    const std::string text(kPathLength, 'x');
    EXPECT_EQ(Names{}, RunFolders(true, text));
    EXPECT_FALSE(routeResult_);
    EXPECT_EQ(2u, failedFolders_.size());
}

TEST_F(SearchTest, SelectionKeepsRecordsForEveryCriterion) {
    Tree({"a.hpa", "b.hpa"});
    Criterion("File name contains a");
    Criterion("or: Component adaptive is set to yes");
    Criterion("\"Supplier\" equals Miller");
    // Twice the same file is one hit.
    EXPECT_EQ((Names{"a.hpa", "b.hpa"}), RunSelection({"a.hpa", "b.hpa", "a.hpa"}));
    auto& records = slot_->GetNextNode()->GetOccCritList();
    ASSERT_EQ(3u, records.size());
    EXPECT_EQ(eCritTest::Fixed, records[0].Test());
    EXPECT_FALSE(records[0].Flag());
    EXPECT_EQ(eJoinOr, records[1].Join());
    EXPECT_EQ(eCritTest::Adaptive, records[1].Test());
    EXPECT_TRUE(records[1].Flag());
    EXPECT_EQ(eCritTest::Properties, records[2].Test());
    EXPECT_EQ(BLxWString(TEXT("Supplier")), records[2].CustomName());
    EXPECT_EQ(BLxWString(TEXT("Miller")), records[2].Text());
}

TEST_F(SearchTest, SkippedCriteriaReachTheCaller) {
    Tree({"a.hpa"});
    const auto reduced = [this] {
        return std::unique_ptr<SRxSkippedCritNode>(BuildSkippedCriteria(criteria_.head));
    };
    Criterion("Interference checked is set to no");
    Criterion("File type is Models (parts and assemblies)");
    Criterion("or: File type is Presentations");
    Criterion("or: File type is All files");
    const auto chain = reduced();
    const SRxSkippedCritNode* link = chain.get();
    ASSERT_NE(nullptr, link);
    EXPECT_EQ(eSkippedKind::YesNo, link->kind);
    EXPECT_FALSE(link->flag);
    ASSERT_NE(nullptr, link->next);
    EXPECT_EQ(eSkippedKind::FileType, link->next->kind);
    EXPECT_EQ(1u, link->next->fileTypeCode);
    link = link->next->next;
    ASSERT_NE(nullptr, link) << "presentations have no code and stood in the or-group";
    EXPECT_EQ(1u, link->fileTypeCode);
    EXPECT_EQ(nullptr, link->next);
    // The same type joined by And leaves nothing that could be told.
    Criterion("File type is Presentations");
    EXPECT_EQ(nullptr, reduced());
}

TEST_F(SearchTest, ReadsNoPropertiesWithoutNeed) {
    Tree({"a.hpa", "b.txt", "c.xyz"});
    Criterion("File name contains c");
    Criterion("or: File type is Plain text (.txt)");
    EXPECT_EQ((Names{"b.txt", "c.xyz"}), Sorted(RunFolders()));
    EXPECT_TRUE(statuses_.empty());
    Criterion("or: Title contains x");
    RunFolders();
    EXPECT_EQ(2u, statuses_.size()) << "a title stands in any model or office document";
    EXPECT_EQ(1u, passedOver_);
}

// Rows: a document with one property of each kind, and criteria that it meets or doesn't.
struct JudgedRow {
    const char* criterion;
    bool hit;
};

TEST_F(SearchTest, JudgesEachKindOfProperty) {
    constexpr std::uint64_t k2024March7Noon = 133542720000000000;
    Document(
        "full.hpa",
        [&](PropertySectionWriter& set) {
            set.AddText(17, TEXT("Stainless steel"));
            set.AddText(10, TEXT("Ada Miller"));
            set.AddTime(11, k2024March7Noon);
            set.AddCurrency(36, 125000);
            set.AddNumber(40, 3);
            set.AddId(31, kSheetMetalSubtype);
            set.AddText(1005, TEXT("Bo Lund"));
            set.AddTime(1008, k2024March7Noon);
            set.AddNumber(1103, 1);
            set.AddNumber(1108, 2);
        },
        [&](PropertySectionWriter& set) {
            set.AddYesNo(2, true);
            set.AddName(2, TEXT("Checked twice"));
            set.AddTime(3, k2024March7Noon);
            set.AddName(3, TEXT("Delivered"));
            set.AddText(4, TEXT("blue"));
            set.AddName(4, TEXT("Paint"));
        },
        [](PropertySectionWriter& set) { set.AddText(2, TEXT("Bracket, left")); });
    const JudgedRow rows[] = {
        {"Title begins with bracket", true},
        {"Title ends with LEFT", true},
        {"Title equals Bracket", false},
        {"Subject differs from anything", true},
        {"Subject contains a", false},
        {"Material contains less ST", true},
        {"Checked by is empty", false},
        {"Checked by has a value", true},
        {"Designer is empty", true},
        {"Designer has a value", false},
        {"Date checked falls on 2024-03-07", true},
        {"Date checked is on or after 2024-03-08", false},
        {"Date checked does not fall on 2024-03-06", true},
        {"Date created has any date", false},
        {"Date created does not fall on 2024-03-06", true},
        {"Estimated cost is equal to 12.5", true},
        {"Estimated cost is greater than 12.5", false},
        {"Design state is equal to Released", true},
        {"Design state is not equal to Released", false},
        {"Document subtype is a sheet metal part", true},
        {"Document subtype is a standard document", false},
        {"Last saved by begins with bo", true},
        {"Date last saved is on or before 2024-03-07", true},
        {"Date last printed is today", false},
        {"Needs update is set to yes", true},
        {"Document origin is a parts library", true},
        {"Document origin is not a parts library", false},
        {"Interference checked is set to no", true},
        {"Interference checked is set to yes", false},
        {"\"Checked twice\" is set to yes", true},
        {"\"checked TWICE\" is set to no", false},
        {"\"Delivered\" falls on 2024-03-07", true},
        {"\"Delivered\" is today", false},
        {"\"Paint\" equals red", true},  // a text can't exclude a file here
        {"\"Missing\" is set to yes", true},
        {"File type is Parts", true},
        {"File type is Assemblies", false},
        {"File name equals full", true},
        {"File name equals full.hpa", true},
        {"File name equals full.hsb", false},
        {"19132:6 differs from x", true},
    };
    for (const JudgedRow& row : rows) {
        SCOPED_TRACE(row.criterion);
        ClearCriteria();
        Criterion(row.criterion);
        EXPECT_EQ(row.hit ? 1u : 0u, RunFolders().size());
    }
}

TEST_F(SearchTest, WhatCannotBeReadIsNeverAHitByAProperty) {
    Document("good.hpa", nullptr, nullptr,
             [](PropertySectionWriter& set) { set.AddText(2, TEXT("x")); });
    WriteFile("cut.hpa", {0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1, 0, 0});
    Tree({"empty.hpa", "plain.txt", "other.cvd"});
    Document("word.hpa", nullptr);
    Document("word.hsb", nullptr);
    std::filesystem::rename(folder_ / "word.hsb", folder_ / "word.hpa");
    const HeldFile held(NativePathFromWide(Wide("good.hpa")));
    struct Row {
        const char* criterion;
        Names hits;
        std::map<std::string, HRESULT> told;
    };
    const std::map<std::string, HRESULT> failures = {{"cut.hpa", STG_E_DOCFILECORRUPT},
                                                     {"empty.hpa", STG_E_INVALIDHEADER},
                                                     {"good.hpa", STG_E_SHAREVIOLATION}};
    const Row rows[] = {
        // A text has no title, so its title differs; of a part that is none nothing is known.
        {"Title differs from y", {"plain.txt", "word.hpa"}, failures},
        {"Needs update is set to no", {"word.hpa"}, failures},
        // Its kind is that of its extension when it can't be looked at; else it has to be genuine.
        {"File type is Parts",
         {"cut.hpa", "good.hpa"},
         {{"cut.hpa", STG_E_DOCFILECORRUPT}, {"good.hpa", STG_E_SHAREVIOLATION}}},
        {"File type is Drawings", {"other.cvd"}, {}},
    };
    ASSERT_TRUE(held.IsHeld());
    for (const Row& row : rows) {
        SCOPED_TRACE(row.criterion);
        ClearCriteria();
        Criterion(row.criterion);
        EXPECT_EQ(row.hits, Sorted(RunFolders()));
        std::erase_if(statuses_, [](const auto& each) { return each.second >= 0; });
        EXPECT_EQ(row.told, statuses_);
    }
}

// A chain that the caller keeps is judged by its files as they are now.
TEST_F(SearchTest, AFileSavedAnewIsJudgedAnew) {
    const auto marked = [](PropertySectionWriter& set) {
        set.AddNumber(1103, 1);
        set.AddNumber(1108, 2);
        set.AddId(31, kSheetMetalSubtype);
    };
    MDxFileNameNode kept(Wide("a.hpa").c_str(), -1, false);
    for (const char* criterion :
         {"Needs update is set to yes", "Document origin is a parts library", "File type is Parts",
          "Document subtype is a sheet metal part"}) {
        SCOPED_TRACE(criterion);
        ClearCriteria();
        Criterion(criterion);
        Document("a.hpa", marked);
        EXPECT_EQ((Names{"a.hpa"}), RunChain(&kept));
        EXPECT_EQ(-1, slot_->docStatus) << "a copy has nothing that was read of the file";
        EXPECT_EQ(0, slot_->ContentLibType());
        Document("a.hsb", nullptr);
        std::filesystem::rename(folder_ / "a.hsb", folder_ / "a.hpa");
        EXPECT_EQ(Names{}, RunChain(&kept));
        EXPECT_EQ(Names{}, RunChain(&kept));
        // Nobody forgets it in between.
        Document("a.hpa", marked);
        EXPECT_TRUE(kept.IsMirelFile(nullptr, nullptr));
    }
    ClearCriteria();
    Criterion("Needs update is set to yes");
    Document("a.hpa", nullptr);
    kept.docStatus = 1;  // what a caller says stays, in the copy of a hit as well
    EXPECT_EQ((Names{"a.hpa"}), RunChain(&kept));
    EXPECT_EQ(1, slot_->docStatus);
}

// A document is judged by what can be read of it, and told of when something that was asked for
// can't be.
TEST_F(SearchTest, OnlyWhatIsAskedForCanBeUnreadable) {
    // Which of two values under one id is meant can't be told.
    const FillSection damaged = [](PropertySectionWriter& set) {
        set.AddText(17, TEXT("Steel"));
        set.AddText(17, TEXT("Brass"));
    };
    const FillSection summary = [](PropertySectionWriter& set) { set.AddText(2, TEXT("x")); };
    const auto array = [](std::vector<std::uint32_t> ids) {
        return [ids](PropertySectionWriter& set) {
            for (const std::uint32_t id : ids)
                set.AddTexts(id, {TEXT("Steel"), TEXT("Brass")});
            set.AddName(17, TEXT("Checked"));
        };
    };
    Document("array.hpa", array({4, 17, 1005, 1103, 1108}), array({17}), summary);
    // A text in a code page that nobody knows, beside one that is the same in all.
    Document("page.hpa", nullptr, nullptr, [](PropertySectionWriter& set) {
        set.AddText(2, TEXT("x"));
        set.AddText(3, TEXT("\u00E4"));
    });
    Replace("page.hpa", std::string("\2\0\0\0\xE9\xFD", 6), std::string("\2\0\0\0\x39\x30", 6));
    Document("product.hpa", damaged, nullptr, summary);
    Document("user.hpa", nullptr, damaged, summary);
    Document("none.hpa", nullptr);
    const Names all = {"array.hpa", "none.hpa", "page.hpa", "product.hpa", "user.hpa"};
    struct Row {
        std::vector<const char*> criteria;
        Names misses;
        std::map<std::string, HRESULT> told;
    };
    const Row inProduct = {
        {},
        {"array.hpa", "product.hpa"},
        {{"array.hpa", DISP_E_TYPEMISMATCH}, {"product.hpa", STG_E_DOCFILECORRUPT}}};
    const Row inPage = {{}, {"page.hpa"}, {{"page.hpa", DISP_E_TYPEMISMATCH}}};
    const Row rows[] = {
        {{"Title differs from y"}, {}, {}},
        {{"Company differs from y"}, {}, {{"user.hpa", S_OK}}},
        {{"Subject differs from y"}, inPage.misses, inPage.told},
        {{"Material differs from y"}, inProduct.misses, inProduct.told},
        {{"Last saved by differs from y"}, inProduct.misses, inProduct.told},
        {{"Needs update is set to no"}, inProduct.misses, inProduct.told},
        {{"Date created does not fall on 2024-03-07"}, inProduct.misses, inProduct.told},
        {{"Document origin is not a parts library"}, inProduct.misses, inProduct.told},
        // Left to whoever gets the hit's record, as that of a file that could not be opened.
        {{"\"Checked\" is set to yes"}, {}, {{"user.hpa", STG_E_DOCFILECORRUPT}}},
        {{"Title equals x", "or: Material equals y"}, {"none.hpa"}, inProduct.told},
        {{"File type is Parts", "Title equals x"}, {"none.hpa"}, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.criteria.front());
        ClearCriteria();
        for (const char* criterion : row.criteria)
            Criterion(criterion);
        Names hits = all;
        std::erase_if(hits, [&row](const std::string& file) {
            return std::count(row.misses.begin(), row.misses.end(), file) != 0;
        });
        EXPECT_EQ(hits, Sorted(RunFolders()));
        std::map<std::string, HRESULT> told = row.told;
        for (const std::string& file : all)
            told.emplace(file, S_OK);
        EXPECT_EQ(told, statuses_);
    }
}

}  // namespace
