// The listing of real documents against their manifest. The documents stand beside the checkout,
// or where the environment variable SR_CORPUS says; without them the test is skipped.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <map>

#include "host/srprops/property_lister.h"
#include "tests/unit/document_support.h"

namespace {

namespace fs = std::filesystem;

enum eColumn { kFile, kSet, kId, kType, kValue, kWitnesses, kColumns };
using Row = std::vector<std::string>;

std::vector<Row> RowsOf(const std::string& text) {
    std::vector<Row> rows;
    std::size_t begin = 0;
    for (std::size_t end = 0; (end = text.find('\n', begin)) != std::string::npos;
         begin = end + 1) {
        Row row(1);
        for (const char c : text.substr(begin, end - begin)) {
            if (c == '\t') {
                row.emplace_back();
            } else {
                row.back() += c;
            }
        }
        rows.push_back(row);
    }
    return rows;
}

std::vector<Row> ReadRows(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return RowsOf(std::string(std::istreambuf_iterator<char>(file), {}));
}

// A value of \? stands for any.
bool Agrees(const Row& wanted, const Row& got) {
    for (const eColumn column : {kFile, kSet, kId, kType}) {
        if (wanted[column] != got[column]) return false;
    }
    return wanted[kValue] == "\\?" || wanted[kValue] == got[kValue];
}

bool HasSet(const std::vector<Row>& rows, const std::string& set) {
    return std::any_of(rows.begin(), rows.end(), [&](const Row& row) { return row[kSet] == set; });
}

class Corpus : public testing::Test {
protected:
    void SetUp() override {
        const char* place = std::getenv("SR_CORPUS");
        folder_ =
            place != nullptr ? fs::path(place) : fs::path(SR_SOURCE_FOLDER "/../shared/corpus");
        if (!fs::exists(folder_ / "properties.tsv")) {
            GTEST_SKIP() << "The corpus is not at hand; SR_CORPUS may name its folder.";
        }
        for (const Row& row : ReadRows(folder_ / "damaged.txt"))
            damage_[row.at(0)] = row.at(1);
        for (const Row& row : ReadRows(folder_ / "properties.tsv")) {
            ASSERT_EQ(std::size_t{kColumns}, row.size()) << row[0];
            if (row[kFile] != "file") wanted_[row[kFile]].push_back(row);
        }
    }

    fs::path folder_;
    std::map<std::string, std::string> damage_;
    std::map<std::string, std::vector<Row>> wanted_;
};

// Without any exception: every row of the manifest, in its order, and no row besides. Of a document
// with a damaged set the manifest knows the sets that can be read and has no row for "absent".
TEST_F(Corpus, ListingIsTheManifest) {
    PropertyLister lister;
    std::size_t compared = 0;
    for (const auto& file : fs::directory_iterator(folder_ / "files")) {
        const std::string name = file.path().filename().string();
        SCOPED_TRACE(name);
        const auto damage = damage_.find(name);
        const bool isRead = lister.List(file.path().native(), name);
        EXPECT_EQ(isRead, lister.Faults().empty());
        if (damage != damage_.end() && damage->second == "container") continue;
        EXPECT_EQ(damage == damage_.end(), isRead) << lister.Faults();
        std::vector<Row> got = RowsOf(lister.Rows());
        const std::vector<Row>& wanted = wanted_[name];
        if (damage != damage_.end())
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
