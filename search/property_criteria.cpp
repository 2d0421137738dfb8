#include "search/property_criteria.h"

#include <algorithm>
#include <array>

#include "criteria/file_types.h"
#include "module/text_lengths.h"
#include "outside/md_document_classes.h"
#include "outside/md_property_rows.h"
#include "outside/md_small_aids.h"
#include "platform/native_path.h"
#include "search/value_comparison.h"

namespace {

constexpr double kTenThousandths = 10000.0;
constexpr int kControlTextLength = 129;  // units, the terminator included
constexpr LONG kUnlistedPerson = 7;      // a control property that no list offers
constexpr int kSubtypeProperty = 31;     // where the subtype is kept

// How a general property is read.
enum class eRead { Text, Person, Date, Currency, DesignState, Subtype };
struct GeneralRow {
    LONG number;
    eRead read;
};
constexpr GeneralRow kGeneralRows[] = {
    {NumberOf(kComments), eRead::Text},
    {NumberOf(kPartNumber), eRead::Text},
    {NumberOf(kKeywords), eRead::Text},
    {NumberOf(kProject), eRead::Text},
    {NumberOf(kRevisionNumber), eRead::Text},
    {NumberOf(kDescription), eRead::Text},
    {16, eRead::Text},  // no list offers it
    {NumberOf(kMaterial), eRead::Text},
    {NumberOf(kCostCentre), eRead::Text},
    {NumberOf(kTitle), eRead::Text},
    {NumberOf(kDesignStandard), eRead::Text},
    {NumberOf(kSubject), eRead::Text},
    {NumberOf(kCompany), eRead::Text},
    {NumberOf(kCategory), eRead::Text},
    {NumberOf(kVendor), eRead::Text},
    {NumberOf(kCatalogueLink), eRead::Text},
    {NumberOf(kStockNumber), eRead::Text},
    {NumberOf(kAuthor), eRead::Person},
    {NumberOf(kCheckedBy), eRead::Person},
    {NumberOf(kEngineeringApprovalBy), eRead::Person},
    {NumberOf(kManager), eRead::Person},
    {NumberOf(kManufacturingApprovalBy), eRead::Person},
    {NumberOf(kDesigner), eRead::Person},
    {NumberOf(kEngineer), eRead::Person},
    {NumberOf(kApprovingAuthority), eRead::Person},
    {NumberOf(kDateCreated), eRead::Date},
    {NumberOf(kDateChecked), eRead::Date},
    {NumberOf(kDateOfEngineeringApproval), eRead::Date},
    {NumberOf(kDateOfManufacturingApproval), eRead::Date},
    {NumberOf(kEstimatedCost), eRead::Currency},
    {NumberOf(PROP_DOC_SUBTYPE), eRead::Subtype},
    {NumberOf(PROP_DESIGN_STATE), eRead::DesignState},
};

// Kinds of document that the library opens to see whether they are genuine.
constexpr int kVerifiedKinds[] = {0, 5, 10, 15, 20, 43};
constexpr int kLastKnownKind = 47;
constexpr int kUnknownKinds[] = {40, 41, 42};  // below the last known one

struct SubtypeRow {
    LONG conditionId;
    GUID subtype;
};
constexpr SubtypeRow kSubtypes[] = {
    {COND_SUBTYPE_21749, kSheetMetalSubtype},  {COND_SUBTYPE_21745, kFabricatedSubtype},
    {COND_SUBTYPE_21757, kWeldedSubtype},      {COND_SUBTYPE_21735, kPartClass},
    {COND_SUBTYPE_21735, kAssemblyClass},      {COND_SUBTYPE_21735, kDrawingClass},
    {COND_SUBTYPE_21735, kDesignElementClass}, {COND_SUBTYPE_21735, kPresentationClass},
    {COND_SUBTYPE_21735, kWireClass},
};

bool IsKnownKind(int kind) {
    return kind >= 0 && kind <= kLastKnownKind &&
           std::find(std::begin(kUnknownKinds), std::end(kUnknownKinds), kind) ==
               std::end(kUnknownKinds);
}

bool IsVerifiedKind(int kind) {
    return std::find(std::begin(kVerifiedKinds), std::end(kVerifiedKinds), kind) !=
           std::end(kVerifiedKinds);
}

unsigned Condition(const SRxCriteriaNode& c) {
    return static_cast<unsigned>(c.conditionId);
}

bool MatchSubtype(MDxGeneralProperties& general, LONG conditionId) {
    GUID subtype;
    ClearRevId(&subtype);
    if (!general.GetGuidValue(kSubtypeProperty, &subtype)) return false;
    return std::any_of(std::begin(kSubtypes), std::end(kSubtypes), [&](const SubtypeRow& row) {
        return row.conditionId == conditionId && row.subtype == subtype;
    });
}

bool MatchRead(const SRxSearchRun& run, MDxGeneralProperties& general, eRead read,
               const SRxCriteriaNode& c) {
    switch (read) {
        case eRead::Text: {
            // The empty value is settled by the comparison: it differs from every text.
            return CompareStringValue(general.Property(c.propertyNumber), c.value, Condition(c),
                                      run.query.matchCase);
        }
        case eRead::Person:
            return CompareTextValue(general.Property(c.propertyNumber), c.value, Condition(c),
                                    run.query.matchCase, run.query.users);
        case eRead::Date: {
            SYSTEMTIME date{};
            general.GetDateValue(c.propertyNumber, &date);
            return CompareDateValue(&date, c.value, c.conditionId);
        }
        case eRead::Currency: {
            LONGLONG value = 0;
            general.GetCurrencyValue(c.propertyNumber, &value);
            return CompareRealText(static_cast<double>(value) / kTenThousandths, c.value,
                                   Condition(c), kExactNumber);
        }
        case eRead::DesignState: {
            LONG state = 0;
            general.GetLongValue(c.propertyNumber, &state);
            return CompareRealValues(state, c.numericValue, Condition(c), kExactNumber);
        }
        case eRead::Subtype:
            return MatchSubtype(general, c.conditionId);
    }
    return false;
}

// Of a value that can't be read nothing is known, not even that it is absent: no condition holds.
CriterionOutcome Judged(bool matched, HRESULT status) {
    return status < 0 ? CriterionOutcome{false, false, status} : CriterionOutcome{matched};
}

CriterionOutcome MatchGeneral(const SRxSearchRun& run, MDxGeneralProperties& general,
                              const SRxCriteriaNode& c) {
    const auto* row =
        std::find_if(std::begin(kGeneralRows), std::end(kGeneralRows),
                     [&c](const GeneralRow& each) { return each.number == c.propertyNumber; });
    if (row == std::end(kGeneralRows)) return {};
    const bool matched = MatchRead(run, general, row->read, c);
    return Judged(matched, general.Status());
}

CriterionOutcome MatchControl(const SRxSearchRun& run, MDxControlProperties& control,
                              const SRxCriteriaNode& c) {
    switch (c.propertyNumber) {
        case NumberOf(kLastSavedBy):
        case kUnlistedPerson: {
            WCHAR text[kControlTextLength] = {};
            control.Property(c.propertyNumber, text, kControlTextLength);
            const bool matched =
                CompareTextValue(text, c.value, Condition(c), run.query.matchCase, run.query.users);
            return Judged(matched, control.Status());
        }
        case NumberOf(kDateLastPrinted):
        case NumberOf(kDateLastSaved): {
            SYSTEMTIME date{};
            control.GetDatePropertyValue(c.propertyNumber, &date);
            return Judged(CompareDateValue(&date, c.value, c.conditionId), control.Status());
        }
        default:
            return {};
    }
}

// The conditions that say something about a text.
bool IsTextCondition(LONG conditionId) {
    constexpr LONG kTextConditions[] = {
        COND_ANY_VALUE, COND_NOT_EMPTY, COND_IS_EMPTY, COND_BEGINS_WITH, COND_ENDS_WITH,
        COND_CONTAINS,  COND_EQUALS,    COND_DIFFERS,  COND_IS_APP_USER, COND_IS_LOGIN_USER};
    return std::find(std::begin(kTextConditions), std::end(kTextConditions), conditionId) !=
           std::end(kTextConditions);
}

// A custom property by the type that it has in this file: a condition of another type doesn't hold.
// Of a file without it only "is empty" does.
CriterionOutcome DecideCustom(const SRxSearchRun& run, const FileAtHand& file,
                              const SRxCriteriaNode& c) {
    if (file.properties == nullptr || file.status < 0) return {};
    MDxCustomProperties& custom = file.properties->CustomProp();
    const WCHAR* name = c.customName.c_str();
    const bool wantsNone = c.conditionId == COND_IS_EMPTY;
    if (custom.Property(name, false) == nullptr) return Judged(wantsNone, custom.Status());
    if (const WCHAR* text = custom.GetTextValue(name)) {
        return {
            IsTextCondition(c.conditionId) &&
            CompareTextValue(text, c.value, Condition(c), run.query.matchCase, run.query.users)};
    }
    const VARTYPE type = custom.GetType(name);
    SYSTEMTIME date{};
    const bool isDate = type == VT_DATE || type == VT_FILETIME;
    if (isDate && !custom.GetDateValue(name, &date)) return Judged(wantsNone, custom.Status());
    if (wantsNone) return {};
    if (c.conditionId == COND_NOT_EMPTY || c.conditionId == COND_ANY_VALUE) return {true};
    double number = 0;
    if (isDate) return {CompareDateValue(&date, c.value, c.conditionId)};
    if (type == VT_BOOL) {
        return {CompareBoolValue(custom.GetBoolValue(name), c.value, Condition(c))};
    }
    return {custom.GetNumberValue(name, &number) &&
            CompareRealText(number, c.value, Condition(c), kExactNumber)};
}

CriterionOutcome MatchCustom(const FileAtHand& file, const SRxCriteriaNode& c) {
    const auto undecided = [](HRESULT status) {
        return CriterionOutcome{true, true, status < 0 ? status : S_OK};
    };
    const WCHAR* name = c.customName.c_str();
    if (file.properties == nullptr || file.status < 0) return undecided(S_OK);
    MDxCustomProperties& custom = file.properties->CustomProp();
    // Of a value that can't be read nothing is known, as of a file that can't be opened: both are
    // left undecided.
    if (custom.Property(name, false) == nullptr) return undecided(custom.Status());
    switch (custom.GetType(name)) {
        case VT_BOOL:
            return {CompareBoolValue(custom.GetBoolValue(name), c.value, Condition(c))};
        case VT_DATE:
        case VT_FILETIME: {
            SYSTEMTIME date{};
            custom.GetDateValue(name, &date);
            if (custom.Status() < 0) return undecided(custom.Status());
            return {CompareDateValue(&date, c.value, c.conditionId)};
        }
        default:
            return undecided(S_OK);
    }
}

// A file of a kind that the library verifies has to be what its extension says. One that can't be
// looked at counts by its extension.
CriterionOutcome MatchFileType(const SRxSearchRun& run, const FileAtHand& file,
                               const SRxCriteriaNode& c) {
    const WCHAR* name = file.node.GetFileName();
    if (!CompareFileType(name, Condition(c))) return {};
    if (!IsVerifiedKind(file.node.KindByExtension())) return {true};
    if (file.needProperties && file.status < 0) {
        // One that was passed over for its properties may be a hit by its type.
        const bool mayBeHit = file.passedOver && FileTypesAllow(run.query.criteria, name);
        if (!mayBeHit) return {};
    }
    if (file.node.IsMirelFile(nullptr, nullptr)) return {true};
    const HRESULT status = file.node.LookStatus();
    return {status < 0, false, status < 0 ? status : S_OK};
}

bool MatchFileName(const SRxSearchRun& run, const FileAtHand& file, const SRxCriteriaNode& c) {
    const WTextView path(file.node.GetFileName(), file.node.GetFileNameLength());
    const WTextView name = FileNameIn(path);
    // A value without a point is compared with the name without its extension.
    const WTextView extension = ExtensionIn(name);
    if (extension.empty() || *PathFindExtensionW(c.value) != 0) {
        return CompareStringValue(name.data(), c.value, Condition(c), run.query.matchCase);
    }
    WCHAR bare[kPathLength];
    const WTextView stem = name.substr(0, name.size() - extension.size());
    if (wtext::CopyWhole(bare, kPathLength, stem)) {
        return CompareStringValue(bare, c.value, Condition(c), run.query.matchCase);
    }
    return CompareStringValue(WText(stem).c_str(), c.value, Condition(c), run.query.matchCase);
}

// Facts that the library keeps in the document are there to be read.
bool HasFacts(const FileAtHand& file) {
    return file.properties != nullptr && file.status >= 0 && IsKnownKind(file.node.GetFileType());
}

CriterionOutcome MatchDocStatus(const SRxSearchRun& run, const FileAtHand& file,
                                const SRxCriteriaNode& c) {
    if (!HasFacts(file)) return {};
    if (file.node.docStatus == -1) {
        tagBUILDINFO info{};
        const HRESULT status = file.node.GetDocTypeProps(run.server, &info, nullptr);
        if (status < 0) return {false, false, status};
    }
    return {CompareBoolValue(file.node.docStatus == 1, c.value, Condition(c))};
}

CriterionOutcome MatchLibrary(const FileAtHand& file, const SRxCriteriaNode& c) {
    if (!HasFacts(file)) return {};
    const HRESULT status = MDxGetFileSubtype(file.node);
    if (status < 0) return {false, false, status};
    const bool isLibrary =
        file.node.SubType() == kLibrarySubtype || file.node.ContentLibType() >= 1;
    if (c.conditionId == COND_LIBRARY_YES) return {isLibrary};
    return {c.conditionId == COND_LIBRARY_NO && !isLibrary};
}

CriterionOutcome MatchFact(SRxSearchRun& run, const FileAtHand& file, const SRxCriteriaNode& c) {
    switch (c.propertyNumber) {
        case kFactFileType:
            return MatchFileType(run, file, c);
        case kFactFileName:
            return {MatchFileName(run, file, c)};
        case kFactDocStatus:
            return MatchDocStatus(run, file, c);
        case kFactLibrary:
            return MatchLibrary(file, c);
        case kFactSkippedTest:
            // The caller tests it; nothing of the file is read.
            run.skippedCriterionSeen = true;
            return {c.conditionId != COND_IS_YES};
        case kFactFileSize: {
            double size = 0;
            return {file.node.GetFileSizeKB(size) &&
                    CompareRealText(size, c.value, Condition(c), kSizeTolerance)};
        }
        default:
            return {};
    }
}

}  // namespace

CriterionOutcome EvaluateFileCriterion(SRxSearchRun& run, const FileAtHand& file,
                                       const SRxCriteriaNode& c) {
    const bool readable = file.properties != nullptr && file.status >= 0;
    switch (c.propertyCategory) {
        case eCategoryGeneral:
        case eCategoryGeneral4:
        case eCategoryGeneral5:
        case eCategoryGeneral6:
            if (!readable) return {};
            return MatchGeneral(run, file.properties->GenProp(), c);
        case eCategoryControl:
            if (!readable) return {};
            return MatchControl(run, file.properties->ControlProp(), c);
        case eCategoryCustom:
            return run.query.decidesCustom ? DecideCustom(run, file, c) : MatchCustom(file, c);
        case eCategoryFile:
            return MatchFact(run, file, c);
        default:
            // A criterion whose look-up failed is never true.
            return {};
    }
}
