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
    {eCategoryComponent, NumberOf(PROP_COMP_ADAPTIVE), &MDxCritNode::CritAdaptive},
    {eCategoryComponent, NumberOf(PROP_COMP_ENABLED), &MDxCritNode::CritEnabled},
    {eCategoryComponent, NumberOf(PROP_COMP_GROUNDED), &MDxCritNode::CritGrounded},
    {eCategoryComponent, NumberOf(PROP_COMP_VISIBLE), &MDxCritNode::CritVisible},
    {eCategoryComponent, NumberOf(PROP_COMP_TRANSPARENT), &MDxCritNode::CritTransparent},
    {eCategoryComponent, NumberOf(PROP_COMP_FULLY_CONSTRAINED), &MDxCritNode::CritFullyConstrained},
};

struct YesRow {  // the word of a value list
    LONG category;
    LONG number;
    void (MDxCritNode::*set)(LONG condition, bool yes);
};
constexpr YesRow kYesRows[] = {
    {eCategoryComponent, NumberOf(PROP_COMP_SUPPRESSED), &MDxCritNode::CritSuppressed},
    {eCategoryConstraint, NumberOf(PROP_CONSTR_SUPPRESSED), &MDxCritNode::CritConstrSuppress},
    {eCategoryConstraint, NumberOf(PROP_CONSTR_REFERENCE), &MDxCritNode::CritConstrReference},
    {eCategoryWeld, NumberOf(PROP_WELD_PART_STATUS), &MDxCritNode::CritWeldPartStatus},
    {eCategoryFasAssembly, NumberOf(PROP_FAS_SUPPRESSED), &MDxCritNode::CritFasSuppress},
    {eCategoryFasAssembly, NumberOf(PROP_FAS_PARTICIPANT), &MDxCritNode::CritFasParticipant},
};

struct IdRow {  // the number of a list entry
    LONG category;
    LONG number;
    void (MDxCritNode::*set)(LONG condition, LONG valueId);
};
constexpr IdRow kIdRows[] = {
    {eCategoryComponent, NumberOf(PROP_COMP_KPART_TYPE), &MDxCritNode::CritKPartType},
    {eCategoryComponent, NumberOf(PROP_COMP_KASSY_TYPE), &MDxCritNode::CritKAssyType},
    {eCategoryFasAssembly, NumberOf(PROP_FAS_TYPE), &MDxCritNode::CritFasType},
};

struct TextRow {
    LONG category;
    LONG number;
    bool withCase;  // the search's match-case setting travels along
    void (MDxCritNode::*set)(LONG condition, const WCHAR* value);
};
constexpr TextRow kTextRows[] = {
    {eCategoryComponent, NumberOf(PROP_COMP_COLOR), false, &MDxCritNode::CritColor},
    {eCategoryComponent, NumberOf(PROP_COMP_BOM_STRUCTURE), false, &MDxCritNode::CritBOMStructure},
    {eCategoryComponent, NumberOf(PROP_COMP_NAME), true, &MDxCritNode::CritComponentName},
    {eCategoryConstraint, NumberOf(PROP_CONSTR_NAME), true, &MDxCritNode::CritConstrName},
    {eCategoryConstraint, NumberOf(PROP_CONSTR_VALUE), false, &MDxCritNode::CritConstrValue},
    {eCategoryConstraint, NumberOf(PROP_CONSTR_TYPE), false, &MDxCritNode::CritConstrType},
    {eCategoryConstraint, NumberOf(PROP_CONSTR_HEALTH), false, &MDxCritNode::CritConstrHealth},
    {eCategoryWeld, NumberOf(PROP_WELD_NAME), true, &MDxCritNode::CritWeldName},
    {eCategoryWeld, NumberOf(PROP_WELD_TYPE), false, &MDxCritNode::CritWeldType},
    {eCategoryWeld, NumberOf(PROP_WELD_REFERENCES), false, &MDxCritNode::CritWeldReferences},
    {eCategoryFasAssembly, NumberOf(PROP_FAS_NAME), true, &MDxCritNode::CritFasName},
    {eCategoryFasAssembly, NumberOf(PROP_FAS_SKETCH_PARAM_NAME), true,
     &MDxCritNode::CritFasSketchParamName},
};

struct NoteRow {  // two properties ask for a note, in two forms
    LONG category;
    LONG number;
    bool form;
    void (MDxCritNode::*set)(LONG condition, const WCHAR* value, bool form);
};
constexpr NoteRow kNoteRows[] = {
    {eCategoryComponent, NumberOf(kNoteText), true, &MDxCritNode::CritComponentNote},
    {eCategoryComponent, NumberOf(kNoteAuthor), false, &MDxCritNode::CritComponentNote},
    {eCategoryConstraint, NumberOf(kNoteText), true, &MDxCritNode::CritConstrNote},
    {eCategoryConstraint, NumberOf(kNoteAuthor), false, &MDxCritNode::CritConstrNote},
    {eCategoryWeld, NumberOf(kWeldNoteText), true, &MDxCritNode::CritWeldNote},
    {eCategoryWeld, NumberOf(kWeldNoteAuthor), false, &MDxCritNode::CritWeldNote},
    {eCategoryFasAssembly, NumberOf(kFeatureNoteText), true, &MDxCritNode::CritFasNote},
    {eCategoryFasAssembly, NumberOf(kFeatureNoteAuthor), false, &MDxCritNode::CritFasNote},
};

constexpr LONG kDegreesOfFreedom = NumberOf(PROP_COMP_DOF_COUNT);
constexpr LONG kMateOwner = NumberOf(PROP_COMP_KMATE_OWNER);

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
