// The vocabulary of criteria: which conditions a property offers, what input it takes, where its
// value comes from. Plain constant data; every text lies in the resource library under its number.
#pragma once

#include <span>
#include <vector>

#include "criteria/modes.h"
#include "platform/system.h"
#include "resource/string_ids.h"

enum class eConditionList {
    Text,
    Person,
    Date,
    Number,
    Equality,
    ListText,
    YesNo,
    Note,
    FileType,
    Subtype,
    Library,
    All  // of a custom property, whose type isn't known
};

enum class eInputType { Text = 0, Integer = 1, Real = 2, Date = 3, List = 5, Unclassified = 6 };

// Where a criterion's value comes from, unless the condition rules otherwise.
enum class eValueSource { Edit, ListText, ListId };

enum class eValueControl { None, Edit, Date };

struct PropertyKind {
    LONG stringId;
    eConditionList conditions;
    eInputType input;
    eValueSource source;
};

// The kind of a property of the table; null for a string id that the table lacks.
const PropertyKind* FindPropertyKind(LONG stringId);

// In list order. Of a person list the two items of the users stand behind COND_IS_EMPTY.
std::span<const LONG> ConditionsOf(eConditionList list);
// The conditions that the file-type list has only where a caller waits for a picked file.
std::span<const LONG> PickConditions();

// Which control a condition asks for.
eValueControl ValueControlOf(LONG conditionId);

// How typed input for a property is checked. A negative id: not classified.
eInputType InputTypeOf(LONG stringId);

// The names of custom properties that every property list offers.
std::span<const LONG> FixedCustomProperties();

// The entries of a property's value list, in list order; empty for a property without one, and for
// the colours, which are the caller's.
std::vector<LONG> ValueListOf(LONG stringId, eAccessPoint accessPoint);
// Those of all environments together.
std::vector<LONG> ValueListOf(LONG stringId);

// Whether the property list has the properties of a category.
bool IsCategoryOffered(eLookFor lookFor, bool onlyAssemblies, LONG category);
// The category in which a search for this kind means a property that stands in several; 0 where the
// kind doesn't decide.
LONG CategoryMeantBy(eLookFor lookFor);
