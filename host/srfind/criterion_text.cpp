#include "host/srfind/criterion_text.h"

#include <algorithm>
#include <charconv>

#include "criteria/catalogue.h"
#include "criteria/stored_date.h"
#include "outside/md_property_rows.h"
#include "outside/ps_property_specifics.h"
#include "platform/native_path.h"
#include "platform/number_text.h"
#include "platform/resource_text.h"

namespace {

constexpr std::size_t kNearest = 3;

char FoldAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

// The length of `name` when it stands at the front of `text` as whole words, case ignored; else 0.
std::size_t MatchFront(std::string_view text, std::string_view name) {
    if (text.size() < name.size()) return 0;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (FoldAscii(text[i]) != FoldAscii(name[i])) return 0;
    }
    return text.size() == name.size() || text[name.size()] == ' ' ? name.size() : 0;
}

void SkipBlanks(std::string_view& text) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
}

// A whole number of digits at the front that ends there or before `stop`.
bool TakeNumber(std::string_view& text, LONG& number) {
    const char* end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc{} || number < 0) return false;
    if (behind != end && *behind != ' ' && *behind != ':') return false;
    text.remove_prefix(static_cast<std::size_t>(behind - text.data()));
    return true;
}

std::size_t EditDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replace =
                diagonal + (FoldAscii(a[i - 1]) != FoldAscii(b[j - 1]) ? 1 : 0);
            diagonal = row[j];
            row[j] = std::min({replace, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row[b.size()];
}

std::string Quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

bool IsLeapYear(unsigned year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

unsigned DaysInMonth(unsigned year, unsigned month) {
    constexpr unsigned kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeapYear(year) ? 29 : kDays[month - 1];
}

}  // namespace

WText StoredDate(std::string_view typed) {
    constexpr unsigned kFirstYear = 1601;  // of a FILETIME
    unsigned year = 0;
    unsigned month = 0;
    unsigned day = 0;
    if (typed.size() != 10 || typed[4] != '-' || typed[7] != '-') return {};
    const auto read = [&typed](std::size_t at, std::size_t length, unsigned& number) {
        const char* end = typed.data() + at + length;
        return std::from_chars(typed.data() + at, end, number).ptr == end;
    };
    if (!read(0, 4, year) || !read(5, 2, month) || !read(8, 2, day)) return {};
    if (year < kFirstYear || month < 1 || month > 12 || day < 1) return {};
    if (day > DaysInMonth(year, month)) return {};
    SYSTEMTIME date{};
    date.wYear = static_cast<WORD>(year);
    date.wMonth = static_cast<WORD>(month);
    date.wDay = static_cast<WORD>(day);
    return StoredDateText(date);
}

CriterionParser::CriterionParser(HINSTANCE resources) : resources_(resources) {
    for (const PropertyRow& row : kPropertyRows) {
        const bool known =
            std::any_of(properties_.begin(), properties_.end(),
                        [&row](const Name& each) { return each.id == row.stringId; });
        if (!known) properties_.push_back({row.stringId, TextOf(row.stringId)});
    }
}

WText CriterionParser::TextOf(LONG id) const {
    return ResourceText(resources_, static_cast<UINT>(id));
}

std::unique_ptr<SRxCriteriaNode> CriterionParser::Parse(std::string_view text, LONG join,
                                                        std::string& fault) const {
    const std::string whole(text);
    Property property;
    LONG condition = 0;
    WText value;
    LONG valueId = kNoId;
    if (text.find('\0') != std::string_view::npos) {
        fault = "a criterion holds no null characters";
        return nullptr;
    }
    SkipBlanks(text);
    if (!TakeProperty(text, property, fault)) return nullptr;
    SkipBlanks(text);
    if (!TakeCondition(text, property, condition, fault)) return nullptr;
    // One blank parts the condition from the value; others belong to the value.
    if (!text.empty()) text.remove_prefix(1);
    if (!TakeValue(text, property, condition, value, valueId, fault)) return nullptr;
    std::unique_ptr<SRxCriteriaNode> node;
    if (!property.custom.empty()) {
        node = std::make_unique<SRxCriteriaNode>(property.custom.c_str(), condition, join,
                                                 value.c_str());
    } else if (property.category != 0) {
        node = std::make_unique<SRxCriteriaNode>(property.number, property.category, condition,
                                                 join, value.c_str());
        node->valueId = valueId;
    } else {
        node = std::make_unique<SRxCriteriaNode>(property.stringId, condition, join, value.c_str(),
                                                 valueId);
    }
    if (node->conditionId == kNoId) {
        fault = "the property of " + Quoted(whole) + " is not known to the document library";
        return nullptr;
    }
    return node;
}

bool CriterionParser::TakeProperty(std::string_view& text, Property& property,
                                   std::string& fault) const {
    if (!text.empty() && text.front() >= '0' && text.front() <= '9') {
        std::string_view rest = text;
        LONG number = 0;
        if (TakeNumber(rest, number)) return TakeNumberedProperty(text, property, fault);
    }
    const bool quoted = !text.empty() && text.front() == '"';
    const std::size_t end = quoted ? text.find('"', 1) : std::string_view::npos;
    if (quoted && end == std::string_view::npos) {
        fault = "the name in " + Quoted(text) + " has no closing quote";
        return false;
    }
    const std::string_view name = quoted ? text.substr(1, end - 1) : text;
    const Name* longest = nullptr;
    std::size_t matched = 0;
    for (const Name& each : properties_) {
        const std::size_t length = MatchFront(name, wtext::ToUtf8(each.text));
        if (length > matched && (!quoted || length == name.size())) {
            longest = &each;
            matched = length;
        }
    }
    if (longest != nullptr) {
        property.stringId = longest->id;
        property.shown = longest->text;
        text.remove_prefix(quoted ? end + 1 : matched);
        return true;
    }
    if (!quoted || name.empty()) {
        fault = "no property has a name that begins " + Quoted(text) + "; the nearest are " +
                NearestProperties(text) + " (a custom property stands in quotes)";
        return false;
    }
    property.custom = property.shown = wtext::FromUtf8(name);
    text.remove_prefix(end + 1);
    return true;
}

bool CriterionParser::TakeNumberedProperty(std::string_view& text, Property& property,
                                           std::string& fault) const {
    const std::string shown(text.substr(0, text.find(' ')));
    (void)TakeNumber(text, property.stringId);
    const bool exact = !text.empty() && text.front() == ':';
    if (exact) {
        text.remove_prefix(1);
        if (!TakeNumber(text, property.category)) property.category = kNoId;
    }
    for (const PropertyRow& row : kPropertyRows) {
        if (row.stringId != property.stringId) continue;
        if (exact && row.category != property.category) continue;
        property.number = row.number;
        property.shown = TextOf(row.stringId);
        return true;
    }
    fault = "there is no property " + shown;
    return false;
}

std::vector<LONG> CriterionParser::ConditionsFor(const Property& property) const {
    eConditionList list = eConditionList::All;
    if (property.custom.empty()) {
        const PropertyKind* kind = FindPropertyKind(property.stringId);
        if (kind == nullptr) return {};
        list = kind->conditions;
    } else if (wtext::EqualsAsciiFold(property.custom, TextOf(USER_PROP_YES_NO))) {
        list = eConditionList::YesNo;
    }
    const auto listed = ConditionsOf(list);
    std::vector<LONG> conditions(listed.begin(), listed.end());
    if (list == eConditionList::FileType) {
        const auto more = PickConditions();
        conditions.insert(conditions.end(), more.begin(), more.end());
        conditions.insert(conditions.end(),
                          {FILETYPE_DESIGN_DOCS, FILETYPE_ALL, FILETYPE_DRAWABLE});
    }
    return conditions;
}

bool CriterionParser::TakeCondition(std::string_view& text, const Property& property,
                                    LONG& condition, std::string& fault) const {
    const std::vector<LONG> conditions = ConditionsFor(property);
    std::string_view rest = text;
    LONG number = 0;
    if (TakeNumber(rest, number) &&
        std::find(conditions.begin(), conditions.end(), number) != conditions.end()) {
        condition = number;
        text = rest;
        return true;
    }
    std::size_t matched = 0;
    for (const LONG each : conditions) {
        const std::size_t length = MatchFront(text, Shown(each));
        if (length > matched) {
            condition = each;
            matched = length;
        }
    }
    text.remove_prefix(matched);
    if (matched != 0) return true;
    fault = Quoted(wtext::ToUtf8(property.shown)) + " has no condition " +
            (text.empty() ? "behind it" : "that begins " + Quoted(text)) + "; it can take ";
    for (std::size_t i = 0; i < conditions.size(); ++i) {
        fault += (i == 0 ? "" : ", ") + Quoted(Shown(conditions[i]));
    }
    return false;
}

bool CriterionParser::TakeValue(std::string_view text, const Property& property, LONG condition,
                                WText& value, LONG& valueId, std::string& fault) const {
    const std::string shown = Quoted(wtext::ToUtf8(property.shown) + " " + Shown(condition));
    const PropertyKind* kind =
        property.custom.empty() ? FindPropertyKind(property.stringId) : nullptr;
    const bool fromList = kind != nullptr && kind->source != eValueSource::Edit;
    const eValueControl control = ValueControlOf(condition);
    if (control == eValueControl::None && !fromList) {
        if (text.empty()) return true;
        fault = shown + " takes no value, but " + Quoted(text) + " stands behind it";
        return false;
    }
    if (control == eValueControl::Date) {
        value = StoredDate(text);
        if (!value.empty()) return true;
        fault = text.empty() ? shown + " needs a date like 2024-03-07"
                             : Quoted(text) + " is no date; write it like 2024-03-07";
        return false;
    }
    // A file name is typed in the system's own form.
    value = property.stringId == PROP_FILE_NAME ? WideNameFromTyped(text) : wtext::FromUtf8(text);
    if (value.size() >= kValueLength) {
        fault = "the value of " + shown + " has " + std::to_string(value.size()) +
                " characters; it can have up to " + std::to_string(kValueLength - 1);
        return false;
    }
    if (fromList) return TakeListValue(property, WText(value), value, valueId, fault);
    if (value.empty() && condition != COND_EQUALS && condition != COND_DIFFERS) {
        fault = shown + " needs a value behind it";
        return false;
    }
    const bool numeric = condition == COND_LESS_THAN || condition == COND_GREATER_THAN ||
                         condition == COND_NUM_EQUALS || condition == COND_NUM_DIFFERS;
    std::size_t consumed = 0;
    LONG integer = 0;
    double real = 0;
    if (InputTypeOf(property.stringId) == eInputType::Integer && property.custom.empty()) {
        (void)ParseInteger(value, integer, consumed);
    } else if (numeric) {
        (void)ParseReal(value, real, consumed);
    } else {
        return true;
    }
    if (consumed == value.size() && consumed != 0) return true;
    fault = Quoted(text) + " is no number for " + shown;
    return false;
}

bool CriterionParser::TakeListValue(const Property& property, const WText& typed, WText& value,
                                    LONG& valueId, std::string& fault) const {
    const PropertyKind* kind = FindPropertyKind(property.stringId);
    const std::vector<LONG> entries = ValueListOf(property.stringId);
    if (entries.empty()) {
        // Colours are the caller's own names.
        if (!typed.empty()) return true;
        fault = Quoted(wtext::ToUtf8(property.shown)) + " needs a value behind its condition";
        return false;
    }
    fault = Quoted(wtext::ToUtf8(typed)) + " is no value of " +
            Quoted(wtext::ToUtf8(property.shown)) + "; it can be ";
    for (const LONG entry : entries) {
        const WText text = TextOf(entry);
        if (wtext::EqualsAsciiFold(text, typed) || typed == wtext::FromNumber(entry)) {
            value = text;
            if (kind->source == eValueSource::ListId) valueId = entry;
            fault.clear();
            return true;
        }
        fault += (entry == entries.front() ? "" : ", ") + Quoted(wtext::ToUtf8(text));
    }
    return false;
}

std::string CriterionParser::NearestProperties(std::string_view text) const {
    std::vector<std::pair<std::size_t, std::string>> ranked;
    for (const Name& each : properties_) {
        const std::string name = wtext::ToUtf8(each.text);
        ranked.emplace_back(EditDistance(text.substr(0, name.size()), name), name);
    }
    std::sort(ranked.begin(), ranked.end());
    std::string list;
    for (std::size_t i = 0; i < kNearest && i < ranked.size(); ++i) {
        list += (i == 0 ? "" : ", ") + Quoted(ranked[i].second);
    }
    return list;
}

std::string CriterionParser::Catalogue() const {
    constexpr const char* kInputs[] = {"text", "whole number", "number", "date",
                                       "",     "choice",       "text"};
    std::string text;
    for (const PropertyRow& row : kPropertyRows) {
        const PropertyKind* kind = FindPropertyKind(row.stringId);
        text += std::to_string(row.stringId) + ":" + std::to_string(row.category) + "  " +
                Shown(row.stringId) + "\n";
        Property property;
        property.stringId = row.stringId;
        for (const LONG condition : ConditionsFor(property)) {
            text += "    " + std::to_string(condition) + "  " + Shown(condition);
            const eValueControl control = ValueControlOf(condition);
            if (kind->source != eValueSource::Edit) {
                text += "  <one of:";
                const std::vector<LONG> entries = ValueListOf(row.stringId);
                for (const LONG entry : entries) {
                    text += (entry == entries.front() ? " " : ", ") + Shown(entry);
                }
                text += entries.empty() ? " the caller's names>" : ">";
            } else if (control == eValueControl::Date) {
                text += "  <date>";
            } else if (control == eValueControl::Edit) {
                text += std::string("  <") + kInputs[static_cast<int>(kind->input)] + ">";
            }
            text += "\n";
        }
    }
    return text;
}
