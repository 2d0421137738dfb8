#include "criteria/catalogue.h"

#include <algorithm>

#include "outside/md_property_rows.h"

namespace {

constexpr PropertyKind kPropertyKinds[] = {
    {PROP_FILE_TYPE, eConditionList::FileType, eInputType::List, eValueSource::Edit},
    {PROP_FILE_NAME, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {kComments, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {kPartNumber, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {kStockNumber, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {kRevisionNumber, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {kAuthor, eConditionList::Person, eInputType::Text, eValueSource::Edit},
    {kDateCreated, eConditionList::Date, eInputType::Date, eValueSource::Edit},
    {kKeywords, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {kDescription, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {kProject, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {kCatalogueLink, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {kVendor, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {kMaterial, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {kCheckedBy, eConditionList::Person, eInputType::Text, eValueSource::Edit},
    {kDateChecked, eConditionList::Date, eInputType::Date, eValueSource::Edit},
    {kEngineeringApprovalBy, eConditionList::Person, eInputType::Text, eValueSource::Edit},
    {kDateOfEngineeringApproval, eConditionList::Date, eInputType::Date, eValueSource::Edit},
    {kManufacturingApprovalBy, eConditionList::Person, eInputType::Text, eValueSource::Edit},
    {kDateOfManufacturingApproval, eConditionList::Date, eInputType::Date, eValueSource::Edit},
    {kCostCentre, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {kTitle, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {kSubject, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {kManager, eConditionList::Person, eInputType::Text, eValueSource::Edit},
    {kCompany, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {kCategory, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {kLastSavedBy, eConditionList::Person, eInputType::Text, eValueSource::Edit},
    {kDateLastSaved, eConditionList::Date, eInputType::Date, eValueSource::Edit},
    {kDateLastPrinted, eConditionList::Date, eInputType::Date, eValueSource::Edit},
    {kDesignStandard, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {PROP_DOC_SUBTYPE, eConditionList::Subtype, eInputType::List, eValueSource::Edit},
    {PROP_LIBRARY_DOCUMENT, eConditionList::Library, eInputType::Unclassified, eValueSource::Edit},
    {kEstimatedCost, eConditionList::Number, eInputType::Real, eValueSource::Edit},
    {PROP_DESIGN_STATE, eConditionList::Equality, eInputType::List, eValueSource::ListText},
    {kEngineer, eConditionList::Person, eInputType::Text, eValueSource::Edit},
    {kDesigner, eConditionList::Person, eInputType::Text, eValueSource::Edit},
    {kApprovingAuthority, eConditionList::Person, eInputType::Text, eValueSource::Edit},
    {PROP_DOC_STATUS, eConditionList::YesNo, eInputType::List, eValueSource::Edit},
    {PROP_COMP_ADAPTIVE, eConditionList::YesNo, eInputType::Unclassified, eValueSource::Edit},
    {PROP_COMP_ENABLED, eConditionList::YesNo, eInputType::Unclassified, eValueSource::Edit},
    {PROP_COMP_GROUNDED, eConditionList::YesNo, eInputType::Unclassified, eValueSource::Edit},
    {PROP_COMP_VISIBLE, eConditionList::YesNo, eInputType::Unclassified, eValueSource::Edit},
    {PROP_COMP_DOF_COUNT, eConditionList::Number, eInputType::Integer, eValueSource::Edit},
    {PROP_COMP_COLOR, eConditionList::ListText, eInputType::List, eValueSource::ListText},
    {PROP_COMP_KMATE_OWNER, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {PROP_COMP_KPART_TYPE, eConditionList::ListText, eInputType::List, eValueSource::ListId},
    {PROP_COMP_KASSY_TYPE, eConditionList::ListText, eInputType::List, eValueSource::ListId},
    {PROP_SKIPPED_TEST, eConditionList::YesNo, eInputType::Unclassified, eValueSource::Edit},
    {PROP_COMP_BOM_STRUCTURE, eConditionList::ListText, eInputType::Unclassified,
     eValueSource::ListText},
    {PROP_COMP_SUPPRESSED, eConditionList::Equality, eInputType::List, eValueSource::ListId},
    {PROP_COMP_NAME, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {kNoteText, eConditionList::Note, eInputType::Text, eValueSource::Edit},
    {kNoteAuthor, eConditionList::Note, eInputType::Text, eValueSource::Edit},
    {PROP_CONSTR_NAME, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {PROP_CONSTR_SUPPRESSED, eConditionList::Equality, eInputType::List, eValueSource::ListId},
    {PROP_CONSTR_VALUE, eConditionList::Number, eInputType::Unclassified, eValueSource::Edit},
    {PROP_CONSTR_TYPE, eConditionList::Equality, eInputType::List, eValueSource::ListId},
    {PROP_CONSTR_HEALTH, eConditionList::Equality, eInputType::List, eValueSource::ListId},
    {PROP_CONSTR_REFERENCE, eConditionList::Equality, eInputType::List, eValueSource::ListId},
    {PROP_WELD_NAME, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {PROP_WELD_TYPE, eConditionList::Equality, eInputType::List, eValueSource::ListId},
    {kWeldNoteText, eConditionList::Note, eInputType::Text, eValueSource::Edit},
    {kWeldNoteAuthor, eConditionList::Note, eInputType::Text, eValueSource::Edit},
    {PROP_WELD_PART_STATUS, eConditionList::Equality, eInputType::List, eValueSource::ListId},
    {PROP_WELD_REFERENCES, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {PROP_FAS_NAME, eConditionList::Text, eInputType::Text, eValueSource::Edit},
    {PROP_FAS_SUPPRESSED, eConditionList::Equality, eInputType::List, eValueSource::ListId},
    {PROP_FAS_TYPE, eConditionList::Equality, eInputType::List, eValueSource::ListId},
    {kFeatureNoteText, eConditionList::Note, eInputType::Text, eValueSource::Edit},
    {kFeatureNoteAuthor, eConditionList::Note, eInputType::Text, eValueSource::Edit},
    {PROP_FAS_PARTICIPANT, eConditionList::Equality, eInputType::List, eValueSource::ListId},
    {PROP_FAS_SKETCH_PARAM_NAME, eConditionList::Note, eInputType::Text, eValueSource::Edit},
    {PROP_COMP_TRANSPARENT, eConditionList::YesNo, eInputType::Unclassified, eValueSource::Edit},
    {PROP_COMP_FULLY_CONSTRAINED, eConditionList::YesNo, eInputType::Unclassified,
     eValueSource::Edit},
};

constexpr LONG kText[] = {COND_ANY_VALUE, COND_BEGINS_WITH, COND_ENDS_WITH,
                          COND_CONTAINS,  COND_EQUALS,      COND_DIFFERS};
constexpr LONG kPerson[] = {COND_ANY_VALUE,     COND_NOT_EMPTY,   COND_IS_EMPTY,  COND_IS_APP_USER,
                            COND_IS_LOGIN_USER, COND_BEGINS_WITH, COND_ENDS_WITH, COND_CONTAINS,
                            COND_EQUALS,        COND_DIFFERS};
constexpr LONG kDate[] = {COND_ANY_DATE,    COND_TODAY,       COND_YESTERDAY,    COND_ON_DATE,
                          COND_NOT_ON_DATE, COND_ON_OR_AFTER, COND_ON_OR_BEFORE, COND_THIS_WEEK,
                          COND_LAST_WEEK,   COND_THIS_MONTH,  COND_LAST_MONTH};
constexpr LONG kNumber[] = {COND_LESS_THAN, COND_GREATER_THAN, COND_NUM_EQUALS, COND_NUM_DIFFERS};
constexpr LONG kEquality[] = {COND_NUM_EQUALS, COND_NUM_DIFFERS};
constexpr LONG kListText[] = {COND_EQUALS, COND_DIFFERS};
constexpr LONG kYesNo[] = {COND_IS_YES, COND_IS_NO};
constexpr LONG kNote[] = {COND_NOTE_21710, COND_NOTE_21712};
constexpr LONG kFileType[] = {FILETYPE_MODELS, FILETYPE_ASSEMBLIES, FILETYPE_PRESENTATIONS,
                              FILETYPE_PARTS,  FILETYPE_DRAWINGS,   FILETYPE_DESIGN_ELEMENTS,
                              FILETYPE_WIRE,   FILETYPE_OFFICE,     FILETYPE_DOC,
                              FILETYPE_HTML,   FILETYPE_PPT,        FILETYPE_XLS,
                              FILETYPE_TXT};
constexpr LONG kSubtype[] = {COND_SUBTYPE_21745, COND_SUBTYPE_21749, COND_SUBTYPE_21757,
                             COND_SUBTYPE_21735};
constexpr LONG kLibrary[] = {COND_LIBRARY_YES, COND_LIBRARY_NO};
constexpr LONG kAll[] = {COND_ANY_VALUE,    COND_BEGINS_WITH,  COND_ENDS_WITH,   COND_CONTAINS,
                         COND_EQUALS,       COND_DIFFERS,      COND_NOTE_21710,  COND_NOTE_21712,
                         COND_NOT_EMPTY,    COND_IS_EMPTY,     COND_IS_APP_USER, COND_LESS_THAN,
                         COND_GREATER_THAN, COND_NUM_EQUALS,   COND_NUM_DIFFERS, COND_ANY_DATE,
                         COND_TODAY,        COND_YESTERDAY,    COND_ON_DATE,     COND_NOT_ON_DATE,
                         COND_ON_OR_AFTER,  COND_ON_OR_BEFORE, COND_THIS_WEEK,   COND_LAST_WEEK,
                         COND_THIS_MONTH,   COND_LAST_MONTH,   COND_IS_YES,      COND_IS_NO};
constexpr LONG kPick[] = {FILETYPE_IMPORT, FILETYPE_SAT, FILETYPE_STEP, FILETYPE_CVD};

constexpr LONG kFixedCustom[] = {USER_PROP_19190, USER_PROP_19191, USER_PROP_19192, USER_PROP_19193,
                                 USER_PROP_19194, USER_PROP_19195, USER_PROP_19196, USER_PROP_19197,
                                 USER_PROP_19198, USER_PROP_19199, USER_PROP_19200, USER_PROP_19201,
                                 USER_PROP_19202, USER_PROP_19203, USER_PROP_19204, USER_PROP_19205,
                                 USER_PROP_19206, USER_PROP_19207, USER_PROP_19208, USER_PROP_19209,
                                 USER_PROP_19211, USER_PROP_19212, USER_PROP_19213};

// Ids whose values are checked as well, though no list offers them as properties.
struct OtherInput {
    LONG first;
    LONG last;
    eInputType type;
};
constexpr OtherInput kOtherInputs[] = {
    {19137, 19139, eInputType::Text},
    {PROP_FILE_SIZE, PROP_FILE_SIZE, eInputType::Real},
    {VAL_FLAG_YES, VAL_FLAG_YES, eInputType::List},
};

struct ConditionRange {
    LONG first;
    LONG last;
};
constexpr ConditionRange kWithoutValue[] = {
    {21703, 21708}, {21711, 21711}, {21713, 21713}, {21716, 21716}, {21717, 21717}, {21719, 21719},
    {21720, 21720}, {21723, 21723}, {21724, 21724}, {21726, 21726}, {21727, 21727}, {21728, 21728},
    {21730, 21733}, {21735, 21735}, {21736, 21736}, {21737, 21737}, {21740, 21740}, {21744, 21749},
    {21751, 21759}, {21788, 21788}, {21789, 21789},
};
constexpr LONG kWithDate[] = {COND_NOT_ON_DATE, COND_ON_DATE, COND_ON_OR_AFTER, COND_ON_OR_BEFORE};

constexpr LONG kDesignStates[] = {VAL_STATE_WORK, VAL_STATE_PENDING, VAL_STATE_RELEASED};
constexpr LONG kTableTypes[] = {VAL_TABLE_FACTORY, VAL_TABLE_MEMBER};
constexpr LONG kBomStructures[] = {VAL_BOM_NORMAL, VAL_BOM_PHANTOM, VAL_BOM_REFERENCE,
                                   VAL_BOM_PURCHASED, VAL_BOM_INSEPARABLE};
constexpr LONG kFlags[] = {VAL_FLAG_YES, VAL_FLAG_NO};
constexpr LONG kConstraintTypes[] = {
    VAL_CONSTR_MATE,         VAL_CONSTR_FLUSH,  VAL_CONSTR_ANGLE,     VAL_CONSTR_TANGENT,
    VAL_CONSTR_SYMMETRY,     VAL_CONSTR_INSERT, VAL_CONSTR_MOTION,    VAL_CONSTR_RACK,
    VAL_CONSTR_TRANSITIONAL, VAL_JOINT_RIGID,   VAL_JOINT_ROTATIONAL, VAL_JOINT_SLIDER,
    VAL_JOINT_CYLINDRICAL,   VAL_JOINT_PLANAR,  VAL_JOINT_BALL};
constexpr LONG kConstraintHealth[] = {VAL_HEALTH_FAILED};
constexpr LONG kWeldTypes[] = {VAL_WELD_FILLET, VAL_WELD_GROOVE, VAL_WELD_COSMETIC};
constexpr LONG kFeatureTypes[] = {VAL_FEAT_EXTRUSION,  VAL_FEAT_REVOLUTION,   VAL_FEAT_HOLE,
                                  VAL_FEAT_FILLET,     VAL_FEAT_CHAMFER,      VAL_FEAT_SWEEP,
                                  VAL_FEAT_MOVE_FACE,  VAL_FEAT_RECT_PATTERN, VAL_FEAT_CIRC_PATTERN,
                                  VAL_FEAT_MIRROR,     VAL_FEAT_WORK_PLANE,   VAL_FEAT_WORK_AXIS,
                                  VAL_FEAT_WORK_POINT, VAL_FEAT_COORDINATES};
constexpr LONG kAssemblyFeatures[] = {VAL_FEAT_WELD_PREPARATION, VAL_FEAT_MACHINING,
                                      VAL_FEAT_BOLTED, VAL_FEAT_ASSEMBLY_CUT};
constexpr LONG kPartFeatures[] = {VAL_FEAT_LOFT,
                                  VAL_FEAT_COIL,
                                  VAL_FEAT_RIB,
                                  VAL_FEAT_SHELL,
                                  VAL_FEAT_FACE_DRAFT,
                                  VAL_FEAT_THREAD,
                                  VAL_FEAT_SPLIT,
                                  VAL_FEAT_COMBINE,
                                  VAL_FEAT_EMBOSS,
                                  VAL_FEAT_DECAL,
                                  VAL_FEAT_SCULPT,
                                  VAL_FEAT_THICKEN,
                                  VAL_FEAT_REPLACE_FACE,
                                  VAL_FEAT_DELETE_FACE,
                                  VAL_FEAT_BOUNDARY_PATCH,
                                  VAL_FEAT_TRIM_SURFACE,
                                  VAL_FEAT_EXTEND_SURFACE,
                                  VAL_FEAT_STITCH,
                                  VAL_FEAT_DERIVED_PART,
                                  VAL_FEAT_IMPORTED_BODY,
                                  VAL_FEAT_BEND_PART,
                                  VAL_FEAT_COPY_OBJECT,
                                  VAL_FEAT_BOSS,
                                  VAL_FEAT_GRILL,
                                  VAL_FEAT_SNAP_FIT,
                                  VAL_FEAT_LIP,
                                  VAL_FEAT_REST};
constexpr LONG kSheetFeatures[] = {
    VAL_SHEET_FACE,  VAL_SHEET_FLANGE, VAL_SHEET_CONTOUR_FLANGE, VAL_SHEET_HEM,
    VAL_SHEET_FOLD,  VAL_SHEET_BEND,   VAL_SHEET_CORNER_SEAM,    VAL_SHEET_CORNER_ROUND,
    VAL_SHEET_PUNCH, VAL_SHEET_CUT};

void Append(std::vector<LONG>& list, std::span<const LONG> entries) {
    list.insert(list.end(), entries.begin(), entries.end());
}

}  // namespace

const PropertyKind* FindPropertyKind(LONG stringId) {
    const auto* found =
        std::find_if(std::begin(kPropertyKinds), std::end(kPropertyKinds),
                     [stringId](const PropertyKind& row) { return row.stringId == stringId; });
    return found != std::end(kPropertyKinds) ? found : nullptr;
}

std::span<const LONG> ConditionsOf(eConditionList list) {
    switch (list) {
        case eConditionList::Text:
            return kText;
        case eConditionList::Person:
            return kPerson;
        case eConditionList::Date:
            return kDate;
        case eConditionList::Number:
            return kNumber;
        case eConditionList::Equality:
            return kEquality;
        case eConditionList::ListText:
            return kListText;
        case eConditionList::YesNo:
            return kYesNo;
        case eConditionList::Note:
            return kNote;
        case eConditionList::FileType:
            return kFileType;
        case eConditionList::Subtype:
            return kSubtype;
        case eConditionList::Library:
            return kLibrary;
        case eConditionList::All:
            return kAll;
    }
    return {};
}

std::span<const LONG> PickConditions() {
    return kPick;
}

eValueControl ValueControlOf(LONG conditionId) {
    if (std::find(std::begin(kWithDate), std::end(kWithDate), conditionId) != std::end(kWithDate)) {
        return eValueControl::Date;
    }
    const bool none =
        std::any_of(std::begin(kWithoutValue), std::end(kWithoutValue),
                    [conditionId](const ConditionRange& range) {
                        return conditionId >= range.first && conditionId <= range.last;
                    });
    // The default file type has no entry of its own in any list.
    return none || conditionId == FILETYPE_DESIGN_DOCS ? eValueControl::None : eValueControl::Edit;
}

eInputType InputTypeOf(LONG stringId) {
    if (const PropertyKind* kind = FindPropertyKind(stringId)) return kind->input;
    for (const OtherInput& range : kOtherInputs) {
        if (stringId >= range.first && stringId <= range.last) return range.type;
    }
    return eInputType::Unclassified;
}

std::span<const LONG> FixedCustomProperties() {
    return kFixedCustom;
}

std::vector<LONG> ValueListOf(LONG stringId, eAccessPoint accessPoint) {
    std::vector<LONG> list;
    const bool part = accessPoint == eAccessPart || accessPoint == eAccessPartAlt;
    switch (stringId) {
        case PROP_DESIGN_STATE:
            Append(list, kDesignStates);
            break;
        case PROP_COMP_KPART_TYPE:
        case PROP_COMP_KASSY_TYPE:
            Append(list, kTableTypes);
            break;
        case PROP_COMP_BOM_STRUCTURE:
            Append(list, kBomStructures);
            break;
        case PROP_CONSTR_SUPPRESSED:
        case PROP_CONSTR_REFERENCE:
        case PROP_WELD_PART_STATUS:
        case PROP_FAS_SUPPRESSED:
        case PROP_FAS_PARTICIPANT:
        case PROP_COMP_SUPPRESSED:
            Append(list, kFlags);
            break;
        case PROP_CONSTR_TYPE:
            Append(list, kConstraintTypes);
            break;
        case PROP_CONSTR_HEALTH:
            Append(list, kConstraintHealth);
            break;
        case PROP_WELD_TYPE:
            Append(list, kWeldTypes);
            break;
        case PROP_FAS_TYPE:
            Append(list, kFeatureTypes);
            if (part) {
                Append(list, kPartFeatures);
            } else {
                Append(list, kAssemblyFeatures);
            }
            if (accessPoint == eAccessPartAlt) Append(list, kSheetFeatures);
            break;
        default:
            break;
    }
    return list;
}

std::vector<LONG> ValueListOf(LONG stringId) {
    std::vector<LONG> list = ValueListOf(stringId, eAccessPartAlt);
    if (stringId == PROP_FAS_TYPE) Append(list, kAssemblyFeatures);
    return list;
}

LONG CategoryMeantBy(eLookFor lookFor) {
    switch (lookFor) {
        case eLookForConstraints:
            return eCategoryConstraint;
        case eLookForFasAssembly:
            return eCategoryFasAssembly;
        case eLookForWelds:
            return eCategoryWeld;
        case eLookForFasSketch:
            return eCategoryFasSketch;
        case eLookForFasPart:
            return eCategoryFasPart;
        case eLookForNone:
        case eLookForDocuments:
        case eLookForFiles:
            break;
    }
    return 0;
}

bool IsCategoryOffered(eLookFor lookFor, bool onlyAssemblies, LONG category) {
    switch (lookFor) {
        case eLookForNone:
        case eLookForDocuments:
            return category < eCategoryComponent ||
                   (category == eCategoryComponent && onlyAssemblies);
        case eLookForConstraints:
        case eLookForFasAssembly:
        case eLookForWelds:
            return onlyAssemblies && category == CategoryMeantBy(lookFor);
        case eLookForFasSketch:
        case eLookForFasPart:
            return category == CategoryMeantBy(lookFor);
        case eLookForFiles:
            break;
    }
    return false;
}
