// The criterion record: how it is made, what it tells of itself, how its list ends.
#include "criteria/criteria_node.h"

#include <gtest/gtest.h>

#include <memory>

#include "platform/wtext.h"

namespace {

using NodePtr = std::unique_ptr<SRxCriteriaNode>;

std::string Fields(const SRxCriteriaNode& c) {
    std::string fields;
    for (const LONG field : {c.propertyStringId, c.propertyNumber, c.propertyCategory,
                             c.conditionId, c.joinType, c.valueId}) {
        fields += std::to_string(field) + " ";
    }
    EXPECT_EQ(nullptr, c.nextCriterion);
    EXPECT_EQ(0.0, c.numericValue);
    return fields + "'" + wtext::ToUtf8(c.customName.c_str()) + "' '" + wtext::ToUtf8(c.value) +
           "'";
}

TEST(CriteriaNode, Constructors) {
    struct Row {
        const char* fields;
        NodePtr node;
    };
    const auto make = [](auto... arguments) {
        return std::make_unique<SRxCriteriaNode>(arguments...);
    };
    const WCHAR* const text = TEXT("abc");
    const WCHAR* const none = nullptr;
    const Row rows[] = {
        {"19122 5 1 21725 1 -1 '' 'abc'", make(5, 1, COND_EQUALS, JOIN_AND, text)},
        {"19147 5 2 21725 2 -1 '' ''", make(5, 2, COND_EQUALS, JOIN_OR, none)},
        {"-1 -1 -1 -1 1 -1 '' ''", make(5, 9, COND_EQUALS, JOIN_AND, text)},
        {"19140 22 1 21721 2 -1 '' 'abc'", make(kTitle, COND_CONTAINS, JOIN_OR, text)},
        {"-1 -1 -1 -1 2 -1 '' ''", make(19999, COND_CONTAINS, JOIN_OR, text)},
        {"19242 123 12 21715 1 19244 '' 'abc'",
         make(PROP_CONSTR_TYPE, COND_NUM_EQUALS, JOIN_AND, text, VAL_CONSTR_ANGLE)},
        {"-1 -1 3 21729 1 -1 'abc' 'abc'", make(text, COND_DIFFERS, JOIN_AND, text)},
    };
    for (const Row& row : rows)
        EXPECT_EQ(row.fields, Fields(*row.node));
}

TEST(CriteriaNode, ValuesAreTakenWholeOrNotAtAll) {
    for (const std::size_t length : {0, 1, 126, 127, 128, 129, 5000}) {
        const WText text(length, 'v');
        const std::size_t kept = length <= 127 ? length : 0;
        for (const NodePtr& node :
             {std::make_unique<SRxCriteriaNode>(22, 1, COND_EQUALS, JOIN_AND, text.c_str()),
              std::make_unique<SRxCriteriaNode>(kTitle, COND_EQUALS, JOIN_AND, text.c_str()),
              std::make_unique<SRxCriteriaNode>(text.c_str(), COND_EQUALS, JOIN_AND,
                                                text.c_str())}) {
            EXPECT_EQ(kept, wtext::Length(node->value)) << length;
            EXPECT_EQ(COND_EQUALS, node->conditionId);
            EXPECT_EQ(node->propertyNumber == kNoId ? length : 0, node->customName.size());
        }
    }
}

TEST(CriteriaNode, SameProperty) {
    const SRxCriteriaNode number(5, 1, COND_EQUALS, JOIN_AND, nullptr);
    const SRxCriteriaNode numberOfControl(5, 2, COND_DIFFERS, JOIN_OR, TEXT("x"));
    const SRxCriteriaNode another(6, 1, COND_EQUALS, JOIN_AND, nullptr);
    const SRxCriteriaNode name(TEXT("Paint"), COND_EQUALS, JOIN_AND, nullptr);
    const SRxCriteriaNode sameName(TEXT("Paint"), COND_IS_YES, JOIN_OR, TEXT("x"));
    const SRxCriteriaNode nameInCapitals(TEXT("PAINT"), COND_EQUALS, JOIN_AND, nullptr);
    EXPECT_TRUE(SameProperty(number, numberOfControl));
    EXPECT_FALSE(SameProperty(number, another));
    EXPECT_TRUE(SameProperty(name, sameName));
    EXPECT_FALSE(SameProperty(name, nameInCapitals));
    EXPECT_FALSE(SameProperty(name, number));
}

TEST(CriteriaNode, DestroysWhatFollowsAndNoMore) {
    SRxCriteriaNode* rest = nullptr;
    for (int i = 0; i < 400000; ++i) {
        auto* node = new SRxCriteriaNode(TEXT("name"), COND_EQUALS, JOIN_AND, nullptr);
        node->nextCriterion = rest;
        rest = node;
    }
    SRxCriteriaNode* const first = rest;
    rest = std::exchange(first->nextCriterion, nullptr);
    delete first;
    EXPECT_EQ(BLxWString(TEXT("name")), rest->customName) << "taken out alone";
    delete rest;  // no recursion, and nothing is left to the leak checker
}

}  // namespace
