// Criteria about things inside a document. The search only carries the question: whoever receives
// the hit applies its records to the document's contents.
#include "outside/md_property_rows.h"
#include "platform/wtext.h"
#include "search/property_criteria.h"

namespace {

// Numbers as scanf's " %i" reads them: blanks, a sign, then decimal, 0x or 0 for octal digits.
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
        if (unit >= 'a' && unit <= 'f') return unit - static_cast<unsigned>('a') + 10;
        if (unit >= 'A' && unit <= 'F') return unit - static_cast<unsigned>('A') + 10;
        return 99;
    };
    constexpr LONGLONG kMost = 0x7FFFFFFF;
    LONGLONG value = 0;
    bool any = false;
    for (; digitOf(*text) < base; ++text, any = true) {
        value = value * base + digitOf(*text);
        if (value > kMost + (negative ? 1 : 0)) value = kMost + (negative ? 1 : 0);
    }
    number = static_cast<LONG>(negative ? -value : value);
    return any;
}

// The arguments that the setters take, worked out from the criterion.
struct Question {
    const SRxCriteriaNode& c;
    MDxCritNode& record;
    bool matchCase;
    bool yesKnown;  // the word for yes could be loaded
    bool yes;

    LONG Condition() const { return c.conditionId; }
    const WCHAR* Value() const { return c.value; }
    bool Flag() const { return c.conditionId == COND_IS_YES; }
    MDxCritNode& WithCase() const {
        record.SetMatchCase(matchCase);
        return record;
    }
};

bool CarryComponent(const Question& q) {
    MDxCritNode& r = q.record;
    switch (q.c.propertyStringId) {
        case PROP_COMP_ADAPTIVE:
            return r.CritAdaptive(q.Flag()), true;
        case PROP_COMP_ENABLED:
            return r.CritEnabled(q.Flag()), true;
        case PROP_COMP_GROUNDED:
            return r.CritGrounded(q.Flag()), true;
        case PROP_COMP_VISIBLE:
            return r.CritVisible(q.Flag()), true;
        case PROP_COMP_TRANSPARENT:
            return r.CritTransparent(q.Flag()), true;
        case PROP_COMP_FULLY_CONSTRAINED:
            return r.CritFullyConstrained(q.Flag()), true;
        case PROP_COMP_DOF_COUNT: {
            LONG number = 0;
            if (!ReadInteger(q.Value(), number)) return false;
            return r.CritNoOfDOFs(q.Condition(), number), true;
        }
        case PROP_COMP_COLOR:
            return r.CritColor(q.Condition(), q.Value()), true;
        case PROP_COMP_KMATE_OWNER:
            return r.CritKMateOwner(q.Condition(), !q.matchCase, q.Value()), true;
        case PROP_COMP_KPART_TYPE:
            return r.CritKPartType(q.Condition(), q.c.valueId), true;
        case PROP_COMP_KASSY_TYPE:
            return r.CritKAssyType(q.Condition(), q.c.valueId), true;
        case PROP_COMP_BOM_STRUCTURE:
            return r.CritBOMStructure(q.Condition(), q.Value()), true;
        case PROP_NOTE_19252:
            return q.WithCase().CritComponentNote(q.Condition(), q.Value(), true), true;
        case PROP_NOTE_19253:
            return q.WithCase().CritComponentNote(q.Condition(), q.Value(), false), true;
        case PROP_COMP_SUPPRESSED:
            if (q.yesKnown) r.CritSuppressed(q.Condition(), q.yes);
            return q.yesKnown;
        case PROP_COMP_NAME:
            return q.WithCase().CritComponentName(q.Condition(), q.Value()), true;
        default:
            return true;
    }
}

bool CarryConstraint(const Question& q) {
    MDxCritNode& r = q.record;
    switch (q.c.propertyStringId) {
        case PROP_CONSTR_NAME:
            return q.WithCase().CritConstrName(q.Condition(), q.Value()), true;
        case PROP_CONSTR_SUPPRESSED:
            if (q.yesKnown) r.CritConstrSuppress(q.Condition(), q.yes);
            return q.yesKnown;
        case PROP_CONSTR_VALUE:
            return r.CritConstrValue(q.Condition(), q.Value()), true;
        case PROP_CONSTR_TYPE:
            return r.CritConstrType(q.Condition(), q.Value()), true;
        case PROP_CONSTR_HEALTH:
            return r.CritConstrHealth(q.Condition(), q.Value()), true;
        case PROP_NOTE_19252:
            return q.WithCase().CritConstrNote(q.Condition(), q.Value(), true), true;
        case PROP_NOTE_19253:
            return q.WithCase().CritConstrNote(q.Condition(), q.Value(), false), true;
        case PROP_CONSTR_REFERENCE:
            if (q.yesKnown) r.CritConstrReference(q.Condition(), q.yes);
            return q.yesKnown;
        default:
            return true;
    }
}

bool CarryWeld(const Question& q) {
    MDxCritNode& r = q.record;
    switch (q.c.propertyStringId) {
        case PROP_WELD_NAME:
            return q.WithCase().CritWeldName(q.Condition(), q.Value()), true;
        case PROP_WELD_TYPE:
            return r.CritWeldType(q.Condition(), q.Value()), true;
        case PROP_WELD_NOTE_19266:
            return q.WithCase().CritWeldNote(q.Condition(), q.Value(), true), true;
        case PROP_WELD_NOTE_19335:
            return q.WithCase().CritWeldNote(q.Condition(), q.Value(), false), true;
        case PROP_WELD_PART_STATUS:
            if (q.yesKnown) r.CritWeldPartStatus(q.Condition(), q.yes);
            return q.yesKnown;
        case PROP_WELD_REFERENCES:
            return r.CritWeldReferences(q.Condition(), q.Value()), true;
        default:
            return true;
    }
}

bool CarryFas(const Question& q) {
    MDxCritNode& r = q.record;
    switch (q.c.propertyStringId) {
        case PROP_FAS_NAME:
            return q.WithCase().CritFasName(q.Condition(), q.Value()), true;
        case PROP_FAS_SUPPRESSED:
            if (q.yesKnown) r.CritFasSuppress(q.Condition(), q.yes);
            return q.yesKnown;
        case PROP_FAS_TYPE:
            return r.CritFasType(q.Condition(), q.c.valueId), true;
        case PROP_FAS_NOTE_19275:
            return q.WithCase().CritFasNote(q.Condition(), q.Value(), true), true;
        case PROP_FAS_NOTE_19336:
            return q.WithCase().CritFasNote(q.Condition(), q.Value(), false), true;
        case PROP_FAS_PARTICIPANT:
            if (q.yesKnown) r.CritFasParticipant(q.Condition(), q.yes);
            return q.yesKnown;
        case PROP_FAS_SKETCH_PARAM_NAME:
            return q.WithCase().CritFasSketchParamName(q.Condition(), q.Value()), true;
        default:
            return true;
    }
}

}  // namespace

bool CarryOccurrenceCriterion(const SRxFoundList& list, const SRxCriteriaNode& c,
                              MDxCritNode* record) {
    WCHAR yesWord[kLabelLength];
    const bool yesKnown = LoadStringW(list.dialog->resourceInstance, VAL_FLAG_YES, yesWord,
                                      static_cast<int>(kLabelLength)) >= 1;
    MDxCritNode unused;
    const Question question = {c, record != nullptr ? *record : unused, list.matchCase != 0,
                               yesKnown, yesKnown && wtext::Compare(c.value, yesWord) == 0};
    switch (c.propertyCategory) {
        case eCategoryComponent:
            return CarryComponent(question);
        case eCategoryConstraint:
            return CarryConstraint(question);
        case eCategoryWeld:
            return CarryWeld(question);
        case eCategoryFasAssembly:
        case eCategoryFasPart:
        case eCategoryFasSketch:
            return CarryFas(question);
        default:
            return true;
    }
}
