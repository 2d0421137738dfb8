// Criteria as a person types them: "Title contains bracket", "19140 21721 bracket".
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "criteria/criteria_node.h"
#include "platform/wtext.h"

class CriterionParser {
public:
    // The names come from the resource library, which stays loaded.
    explicit CriterionParser(HINSTANCE resources);

    // Null, with a message that names what is wrong, for a text that is no criterion.
    std::unique_ptr<SRxCriteriaNode> Parse(std::string_view text, LONG join,
                                           std::string& fault) const;

    // Each property with its conditions and kind of value, for a person to read.
    std::string Catalogue() const;

private:
    struct Name {
        LONG id;
        WText text;
    };
    struct Property {
        LONG stringId = 0;
        LONG number = 0;  // 0: the first row of the string id
        LONG category = 0;
        WText custom;  // not empty: a property of the user's own
        WText shown;
    };

    bool TakeProperty(std::string_view& text, Property& property, std::string& fault) const;
    bool TakeNumberedProperty(std::string_view& text, Property& property, std::string& fault) const;
    bool TakeCondition(std::string_view& text, const Property& property, LONG& condition,
                       std::string& fault) const;
    bool TakeValue(std::string_view text, const Property& property, LONG condition, WText& value,
                   LONG& valueId, std::string& fault) const;
    bool TakeListValue(const Property& property, const WText& typed, WText& value, LONG& valueId,
                       std::string& fault) const;
    std::vector<LONG> ConditionsFor(const Property& property) const;
    std::string NearestProperties(std::string_view text) const;
    WText TextOf(LONG id) const;
    std::string Shown(LONG id) const { return wtext::ToUtf8(TextOf(id)); }

    HINSTANCE resources_;
    std::vector<Name> properties_;
};

// Year, month and day of a typed date (2024-03-07) in the form in which criteria hold it; empty for
// what is no date of the calendar.
WText StoredDate(std::string_view typed);
