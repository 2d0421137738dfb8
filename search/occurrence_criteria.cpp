// Criteria about things inside a document. The search only carries the question: whoever receives
// the hit applies its records to the document's contents.
#include <algorithm>

#include "module/module_state.h"
#include "outside/md_property_rows.h"
#include "platform/resource_text.h"
#include "search/property_criteria.h"

namespace {

// The operations of a record by their arguments. The kinds of feature share theirs, whose rows
// stand under the first of the three categories.
struct FlagRow {  // set or not
    LONG category;
    LONG number;
    void (MDxCritNode::*set)(bool);
};
constexpr FlagRow kFlagRows[] = {
    {eCategoryComponent, 109, &MDxCritNode::CritAdaptive},
    {eCategoryComponent, 110, &MDxCritNode::CritEnabled},
    {eCategoryComponent, 111, &MDxCritNode::CritGrounded},
    {eCategoryComponent, 112, &MDxCritNode::CritVisible},
    {eCategoryComponent, 145, &MDxCritNode::CritTransparent},
    {eCategoryComponent, 146, &MDxCritNode::CritFullyConstrained},
};

struct YesRow {  // the word of a value list
    LONG category;
    LONG number;
    void (MDxCritNode::*set)(LONG condition, bool yes);
};
constexpr YesRow kYesRows[] = {
    {eCategoryComponent, 127, &MDxCritNode::CritSuppressed},
    {eCategoryConstraint, 121, &MDxCritNode::CritConstrSuppress},
    {eCategoryConstraint, 126, &MDxCritNode::CritConstrReference},
    {eCategoryWeld, 131, &MDxCritNode::CritWeldPartStatus},
    {eCategoryFasAssembly, 134, &MDxCritNode::CritFasSuppress},
    {eCategoryFasAssembly, 138, &MDxCritNode::CritFasParticipant},
};

struct IdRow {  // the number of a list entry
    LONG category;
    LONG number;
    void (MDxCritNode::*set)(LONG condition, LONG valueId);
};
constexpr IdRow kIdRows[] = {
    {eCategoryComponent, 116, &MDxCritNode::CritKPartType},
    {eCategoryComponent, 140, &MDxCritNode::CritKAssyType},
    {eCategoryFasAssembly, 135, &MDxCritNode::CritFasType},
};

struct TextRow {
    LONG category;
    LONG number;
    bool withCase;  // the search's match-case setting travels along
    void (MDxCritNode::*set)(LONG condition, const WCHAR* value);
};
constexpr TextRow kTextRows[] = {
    {eCategoryComponent, 114, false, &MDxCritNode::CritColor},
    {eCategoryComponent, 118, false, &MDxCritNode::CritBOMStructure},
    {eCategoryComponent, 141, true, &MDxCritNode::CritComponentName},
    {eCategoryConstraint, 120, true, &MDxCritNode::CritConstrName},
    {eCategoryConstraint, 122, false, &MDxCritNode::CritConstrValue},
    {eCategoryConstraint, 123, false, &MDxCritNode::CritConstrType},
    {eCategoryConstraint, 124, false, &MDxCritNode::CritConstrHealth},
    {eCategoryWeld, 128, true, &MDxCritNode::CritWeldName},
    {eCategoryWeld, 129, false, &MDxCritNode::CritWeldType},
    {eCategoryWeld, 132, false, &MDxCritNode::CritWeldReferences},
    {eCategoryFasAssembly, 133, true, &MDxCritNode::CritFasName},
    {eCategoryFasAssembly, 139, true, &MDxCritNode::CritFasSketchParamName},
};

struct NoteRow {  // two properties ask for a note, in two forms
    LONG category;
    LONG number;
    bool form;
    void (MDxCritNode::*set)(LONG condition, const WCHAR* value, bool form);
};
constexpr NoteRow kNoteRows[] = {
    {eCategoryComponent, 125, true, &MDxCritNode::CritComponentNote},
    {eCategoryComponent, 142, false, &MDxCritNode::CritComponentNote},
    {eCategoryConstraint, 125, true, &MDxCritNode::CritConstrNote},
    {eCategoryConstraint, 142, false, &MDxCritNode::CritConstrNote},
    {eCategoryWeld, 130, true, &MDxCritNode::CritWeldNote},
    {eCategoryWeld, 143, false, &MDxCritNode::CritWeldNote},
    {eCategoryFasAssembly, 137, true, &MDxCritNode::CritFasNote},
    {eCategoryFasAssembly, 144, false, &MDxCritNode::CritFasNote},
};

constexpr LONG kDegreesOfFreedom = 113;
constexpr LONG kMateOwner = 115;

template <typename Row, std::size_t N>
const Row* FindRow(const Row (&rows)[N], const SRxCriteriaNode& c) {
    const LONG category = std::min<LONG>(c.propertyCategory, eCategoryFasAssembly);
    const Row* found = std::find_if(rows, rows + N, [&](const Row& row) {
        return row.category == category && row.number == c.propertyNumber;
    });
    return found != rows + N ? found : nullptr;
}

// Numbers as scanf's " %i" reads them: blanks, a sign, then decimal, 0x or 0 for octal digits. Too
// large a number stops at the end of LONG.
bool ReadInteger(const WCHAR* text, LONG& number) {
    while (*text == ' ' || (*text >= '\t' && *text <= '\r'))
        ++text;
    const bool negative = *text == '-';
    if (*text == '-' || *text == '+') ++text;
    unsigned base = 10;
    if (text[0] == '0') base = text[1] == 'x' || text[1] == 'X' ? 16 : 8;
    if (base == 16) text += 2;
    const auto digitOf = [](WCHAR unit) -> unsigned {
        if (unit >= '0' && unit <= '9') return unit - static_cast<unsigned>('0');
        const unsigned letter = wtext::FoldAscii(unit);
        return letter >= 'a' && letter <= 'f' ? letter - static_cast<unsigned>('a') + 10 : 16;
    };
    const LONGLONG most = negative ? 0x80000000LL : 0x7FFFFFFFLL;
    LONGLONG value = 0;
    bool any = false;
    for (; digitOf(*text) < base; ++text, any = true) {
        value = std::min(value * base + digitOf(*text), most);
    }
    number = static_cast<LONG>(negative ? -value : value);
    return any;
}

bool CarryWord(const YesRow& row, const SRxCriteriaNode& c, MDxCritNode* record) {
    const WText yesWord = ResourceText(SrResReturnHandle(), VAL_FLAG_YES);
    if (yesWord.empty()) return false;
    if (record != nullptr) (record->*row.set)(c.conditionId, yesWord == c.value);
    return true;
}

bool CarryCount(const SRxCriteriaNode& c, MDxCritNode* record) {
    LONG number = 0;
    if (!ReadInteger(c.value, number)) return false;
    if (record != nullptr) record->CritNoOfDOFs(c.conditionId, number);
    return true;
}

}  // namespace

bool CarryOccurrenceCriterion(bool matchCase, const SRxCriteriaNode& c, MDxCritNode* record) {
    const bool ofComponent = c.propertyCategory == eCategoryComponent;
    if (ofComponent && c.propertyNumber == kDegreesOfFreedom) return CarryCount(c, record);
    if (const YesRow* row = FindRow(kYesRows, c)) return CarryWord(*row, c, record);
    // All others hold for every file.
    if (record == nullptr) return true;
    if (ofComponent && c.propertyNumber == kMateOwner) {
        record->CritKMateOwner(c.conditionId, !matchCase, c.value);
    } else if (const FlagRow* flag = FindRow(kFlagRows, c)) {
        (record->*flag->set)(c.conditionId == COND_IS_YES);
    } else if (const IdRow* id = FindRow(kIdRows, c)) {
        (record->*id->set)(c.conditionId, c.valueId);
    } else if (const TextRow* text = FindRow(kTextRows, c)) {
        if (text->withCase) record->SetMatchCase(matchCase);
        (record->*text->set)(c.conditionId, c.value);
    } else if (const NoteRow* note = FindRow(kNoteRows, c)) {
        record->SetMatchCase(matchCase);
        (record->*note->set)(c.conditionId, c.value, note->form);
    }
    return true;
}
