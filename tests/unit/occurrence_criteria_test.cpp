// What a criterion about things inside a document leaves on a record.
#include <gtest/gtest.h>

#include "search/property_criteria.h"

namespace {

struct Row {
    LONG category;
    LONG number;
    const WCHAR* value;
    eCritTest test;
    bool flag;       // set by "is set to yes", by the word Yes, or the form of a note
    LONG carried;    // a count, or a list entry's number
    bool matchCase;  // of a search that respects case
};

constexpr LONG kEntry = VAL_TABLE_MEMBER;
const Row kRows[] = {
    {11, 109, TEXT(""), eCritTest::Adaptive, true, 0, false},
    {11, 110, TEXT(""), eCritTest::Enabled, true, 0, false},
    {11, 111, TEXT(""), eCritTest::Grounded, true, 0, false},
    {11, 112, TEXT(""), eCritTest::Visible, true, 0, false},
    {11, 113, TEXT(" \t0X1f and more"), eCritTest::NoOfDOFs, false, 31, false},
    {11, 113, TEXT("-017"), eCritTest::NoOfDOFs, false, -15, false},
    {11, 113, TEXT("99999999999"), eCritTest::NoOfDOFs, false, 0x7FFFFFFF, false},
    {11, 114, TEXT("red"), eCritTest::Color, false, 0, false},
    {11, 115, TEXT("red"), eCritTest::KMateOwner, false, 0, true},
    {11, 116, TEXT("x"), eCritTest::KPartType, false, kEntry, false},
    {11, 118, TEXT("x"), eCritTest::BOMStructure, false, 0, false},
    {11, 125, TEXT("x"), eCritTest::ComponentNote, true, 0, true},
    {11, 127, TEXT("Yes"), eCritTest::Suppressed, true, 0, false},
    {11, 127, TEXT("yes"), eCritTest::Suppressed, false, 0, false},
    {11, 140, TEXT("x"), eCritTest::KAssyType, false, kEntry, false},
    {11, 141, TEXT("x"), eCritTest::ComponentName, false, 0, true},
    {11, 142, TEXT("x"), eCritTest::ComponentNote, false, 0, true},
    {11, 145, TEXT(""), eCritTest::Transparent, true, 0, false},
    {11, 146, TEXT(""), eCritTest::FullyConstrained, true, 0, false},
    {12, 120, TEXT("x"), eCritTest::ConstrName, false, 0, true},
    {12, 121, TEXT("Yes"), eCritTest::ConstrSuppress, true, 0, false},
    {12, 122, TEXT("x"), eCritTest::ConstrValue, false, 0, false},
    {12, 123, TEXT("x"), eCritTest::ConstrType, false, 0, false},
    {12, 124, TEXT("x"), eCritTest::ConstrHealth, false, 0, false},
    {12, 125, TEXT("x"), eCritTest::ConstrNote, true, 0, true},
    {12, 126, TEXT("No"), eCritTest::ConstrReference, false, 0, false},
    {12, 142, TEXT("x"), eCritTest::ConstrNote, false, 0, true},
    {13, 128, TEXT("x"), eCritTest::WeldName, false, 0, true},
    {13, 129, TEXT("x"), eCritTest::WeldType, false, 0, false},
    {13, 130, TEXT("x"), eCritTest::WeldNote, true, 0, true},
    {13, 131, TEXT("Yes"), eCritTest::WeldPartStatus, true, 0, false},
    {13, 132, TEXT("x"), eCritTest::WeldReferences, false, 0, false},
    {13, 143, TEXT("x"), eCritTest::WeldNote, false, 0, true},
    {14, 133, TEXT("x"), eCritTest::FasName, false, 0, true},
    {15, 134, TEXT("Yes"), eCritTest::FasSuppress, true, 0, false},
    {15, 135, TEXT("x"), eCritTest::FasType, false, kEntry, false},
    {16, 137, TEXT("x"), eCritTest::FasNote, true, 0, true},
    {14, 138, TEXT("Yes"), eCritTest::FasParticipant, true, 0, false},
    {16, 139, TEXT("x"), eCritTest::FasSketchParamName, false, 0, true},
    {15, 144, TEXT("x"), eCritTest::FasNote, false, 0, true},
};

TEST(OccurrenceCriteria, EachLeavesItsTest) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(testing::Message() << row.category << ":" << row.number);
        SRxCriteriaNode c(row.number, row.category, COND_IS_YES, JOIN_AND, row.value);
        ASSERT_EQ(row.number, c.propertyNumber);
        c.valueId = kEntry;
        MDxCritNode record;
        EXPECT_TRUE(CarryOccurrenceCriterion(true, c, &record));
        EXPECT_TRUE(CarryOccurrenceCriterion(true, c, nullptr));
        EXPECT_EQ(row.test, record.Test());
        EXPECT_EQ(row.flag, record.Flag());
        EXPECT_EQ(row.carried, record.Number());
        EXPECT_EQ(row.matchCase, record.MatchCase());
    }
}

TEST(OccurrenceCriteria, FailOnlyByTheirOwnValue) {
    MDxCritNode record;
    const SRxCriteriaNode count(113, 11, COND_NUM_EQUALS, JOIN_AND, TEXT(" x1"));
    EXPECT_FALSE(CarryOccurrenceCriterion(true, count, &record));
    EXPECT_EQ(eCritTest::None, record.Test());
}

}  // namespace
