// The listing of real documents against their manifest.
#include <gtest/gtest.h>

#include <algorithm>

#include "host/srprops/property_lister.h"
#include "tests/unit/corpus.h"
#include "tests/unit/document_support.h"

namespace {

namespace fs = std::filesystem;

// A value of \? stands for any.
bool Agrees(const Row& wanted, const Row& got) {
    for (const eManifestColumn column : {kFile, kSet, kId, kType}) {
        if (wanted[column] != got[column]) return false;
    }
    return wanted[kValue] == "\\?" || wanted[kValue] == got[kValue];
}

bool HasSet(const std::vector<Row>& rows, const std::string& set) {
    return std::any_of(rows.begin(), rows.end(), [&](const Row& row) { return row[kSet] == set; });
}

class CorpusTest : public testing::Test {
protected:
    void SetUp() override {
        std::string reason;
        if (!corpus_.Load(reason)) GTEST_SKIP() << reason;
    }

    Corpus corpus_;
};

// Without any exception: every row of the manifest, in its order, and no row besides. Of a document
// with a damaged set the manifest knows the sets that can be read and has no row for "absent".
TEST_F(CorpusTest, ListingIsTheManifest) {
    PropertyLister lister;
    std::size_t compared = 0;
    for (const auto& file : fs::directory_iterator(corpus_.folder / "files")) {
        const std::string name = file.path().filename().string();
        SCOPED_TRACE(name);
        const auto damage = corpus_.damage.find(name);
        const bool isRead = lister.List(file.path().native(), name);
        EXPECT_EQ(isRead, lister.Faults().empty());
        if (damage != corpus_.damage.end() && damage->second == "container") continue;
        EXPECT_EQ(damage == corpus_.damage.end(), isRead) << lister.Faults();
        std::vector<Row> got = RowsOf(lister.Rows());
        const std::vector<Row>& wanted = corpus_.wanted[name];
        if (damage != corpus_.damage.end())
            std::erase_if(got, [&](const Row& row) { return !HasSet(wanted, row[kSet]); });
        ASSERT_EQ(wanted.size(), got.size()) << lister.Rows();
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            EXPECT_TRUE(Agrees(wanted[i], got[i])) << "wanted " << testing::PrintToString(wanted[i])
                                                   << "\ngot    " << testing::PrintToString(got[i]);
            ++compared;
        }
    }
    EXPECT_LT(1000u, compared);
}

}  // namespace
