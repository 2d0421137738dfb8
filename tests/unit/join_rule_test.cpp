// How the results of criteria are joined: random lists over random facts, judged a second time by a
// few lines of their own.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "criteria/list_rules.h"
#include "search/search.h"
#include "search/search_sink.h"

namespace {

// No search is run: files are judged one by one.
class Nowhere final : public SRxSearchSource, public SRxSearchSink {
public:
    SRxSearchQuery ReadQuery() override { return {}; }
    BLxWString LookIn() override { return {}; }
    std::vector<WText> ListedFiles() override { return {}; }
    IQxLecternServer* Server() override { return nullptr; }
    MDxFileNameNode* TakeSelection() override { return nullptr; }
    void Begin(SRxSearchRun&) override {}
    bool End(SRxSearchRun&, bool result) override { return result; }
    bool OnProgress(SRxSearchRun&, const WCHAR*) override { return false; }
    void OnHit(SRxSearchRun&, const WCHAR*, const WCHAR*, MDxFileNameNode&, int&) override {}
    void OnFolderFailed(const WCHAR*) override {}
    void OnFileInUse(const WCHAR*) override {}
    void OnFileFailed(SRxSearchRun&, const WCHAR*, HRESULT) override {}
} nowhere;

struct Member {
    bool isOr;
    bool truth;
    eCritTest test;  // of the record it leaves
};

// A list is a conjunction of groups, each of an And and the Ors behind it. A list that begins with
// Ors has nothing that opens their group: of these the first alone decides when there are two, and
// of more all but the last have to hold.
bool Judge(const std::vector<Member>& list) {
    std::size_t at = 0;
    while (at < list.size() && list[at].isOr)
        ++at;
    for (std::size_t i = 0; i < at; ++i) {
        if (!list[i].truth && (i + 1 < at || at == 1)) return false;
    }
    while (at < list.size()) {
        bool group = list[at++].truth;
        for (; at < list.size() && list[at].isOr; ++at)
            group = group || list[at].truth;
        if (!group) return false;
    }
    return true;
}

SRxCriteriaNode* MakeCriterion(const Member& member, WCHAR letter) {
    const LONG join = member.isOr ? JOIN_OR : JOIN_AND;
    const WCHAR text[] = {letter, 0};
    switch (member.test) {
        case eCritTest::Adaptive:
            return new SRxCriteriaNode(PROP_COMP_ADAPTIVE, COND_IS_YES, join, nullptr);
        case eCritTest::Properties:
            return new SRxCriteriaNode(TEXT("Supplier"), COND_EQUALS, join, text);
        default:
            return new SRxCriteriaNode(PROP_FILE_NAME, COND_CONTAINS, join, text);
    }
}

TEST(JoinRule, RandomListsOverRandomFacts) {
    constexpr int kRounds = 20000;
    constexpr WCHAR kInName = 'x';
    constexpr WCHAR kNotInName = 'q';
    std::mt19937 random(7);
    std::size_t hits = 0;
    std::size_t leadingOrs = 0;
    for (int round = 0; round < kRounds; ++round) {
        SRxCriteriaList criteria;
        std::vector<Member> members(random() % 13);
        SRxCriteriaNode** end = &criteria.head;
        const unsigned truths = 2 + random() % 4;  // how rare a false one is
        std::string shown;
        for (Member& member : members) {
            member = {random() % 2 == 0, random() % truths != 0, eCritTest::Fixed};
            // Questions that the file can't answer hold for it.
            if (random() % 16 == 0) {
                member.truth = true;
                member.test = random() % 2 == 0 ? eCritTest::Adaptive : eCritTest::Properties;
            }
            *end = MakeCriterion(member, member.truth ? kInName : kNotInName);
            end = &(*end)->nextCriterion;
            shown += std::string(member.isOr ? " or " : " and ") + (member.truth ? "T" : "F");
        }
        if (!members.empty() && members.front().isOr) ++leadingOrs;
        const bool wanted = Judge(members);
        hits += wanted ? 1 : 0;
        for (const bool keepsRecords : {false, true}) {
            SCOPED_TRACE(shown + (keepsRecords ? ", keeping records" : ""));
            SRxSearchRun run(nowhere, nowhere);
            run.query.criteria = criteria.head;
            run.keepsRecords = keepsRecords;
            MDxFileNameNode node(TEXT("C:\\f\\x"), -1, false);
            ASSERT_EQ(wanted, MatchFile(run, &node, false));
            const auto& records = node.GetOccCritList();
            ASSERT_EQ(wanted || keepsRecords ? members.size() : 0, records.size());
            for (std::size_t i = 0; i < records.size(); ++i) {
                ASSERT_EQ(members[i].isOr ? eJoinOr : eJoinAnd, records[i].Join()) << i;
                ASSERT_EQ(members[i].test, records[i].Test()) << i;
                if (members[i].test != eCritTest::Fixed) continue;
                ASSERT_EQ(members[i].truth, records[i].Flag()) << i;
            }
        }
    }
    EXPECT_LT(kRounds / 10u, hits);
    EXPECT_GT(kRounds * 9u / 10, hits);
    EXPECT_LT(kRounds / 10u, leadingOrs);
}

}  // namespace
