#include "search/property_criteria.h"

#include <algorithm>
#include <array>

#include "outside/md_property_rows.h"
#include "outside/md_small_aids.h"
#include "search/value_comparison.h"

namespace {

constexpr double kTenThousandths = 10000.0;
constexpr int kControlTextLength = 129;  // units, the terminator included
constexpr int kSubtypeProperty = 31;     // where the number 32 is kept

// How a general property is read.
enum class eRead { Text, Person, Date, Currency, DesignState, Subtype };
struct GeneralRow {
    LONG number;
    eRead read;
};
constexpr GeneralRow kGeneralRows[] = {
    {2, eRead::Text},    {5, eRead::Text},      {6, eRead::Text},     {7, eRead::Text},
    {8, eRead::Text},    {9, eRead::Text},      {16, eRead::Text},    {17, eRead::Text},
    {20, eRead::Text},   {22, eRead::Text},     {23, eRead::Text},    {24, eRead::Text},
    {26, eRead::Text},   {27, eRead::Text},     {29, eRead::Text},    {30, eRead::Text},
    {55, eRead::Text},   {3, eRead::Person},    {10, eRead::Person},  {12, eRead::Person},
    {25, eRead::Person}, {34, eRead::Person},   {41, eRead::Person},  {42, eRead::Person},
    {43, eRead::Person}, {4, eRead::Date},      {11, eRead::Date},    {13, eRead::Date},
    {35, eRead::Date},   {36, eRead::Currency}, {32, eRead::Subtype}, {40, eRead::DesignState},
};

// The numbers of the file facts.
constexpr LONG kFactFileType = 100;
constexpr LONG kFactFileName = 101;
constexpr LONG kFactDocStatus = 103;
constexpr LONG kFactLibrary = 108;
constexpr LONG kFactSkippedTest = 117;
constexpr LONG kFactFileSize = 119;

// Kinds of document that the library opens to see whether they are genuine.
constexpr int kVerifiedKinds[] = {0, 5, 10, 15, 20, 43};
constexpr int kLastKnownKind = 47;
constexpr int kUnknownKinds[] = {40, 41, 42};  // below the last known one

constexpr GUID kLibrarySubtype = {
    0x9C88D3AF, 0xC3EB, 0x11D3, {0xB7, 0x9E, 0x00, 0x60, 0xB0, 0xF1, 0x59, 0xEF}};

struct SubtypeRow {
    LONG conditionId;
    GUID subtype;
};
constexpr SubtypeRow kSubtypes[] = {
    {COND_SUBTYPE_21749,
     {0x9C464203, 0x9BAE, 0x11D3, {0x8B, 0xAD, 0x00, 0x60, 0xB0, 0xCE, 0x6B, 0xB4}}},
    {COND_SUBTYPE_21745,
     {0x9C464204, 0x9BAE, 0x11D3, {0x8B, 0xAD, 0x00, 0x60, 0xB0, 0xCE, 0x6B, 0xB4}}},
    {COND_SUBTYPE_21757,
     {0x28EC8354, 0x9024, 0x440F, {0xA8, 0xA2, 0x0E, 0x0E, 0x55, 0xD6, 0x35, 0xB0}}},
    {COND_SUBTYPE_21735,
     {0x4D29B490, 0x49B2, 0x11D0, {0x93, 0xC3, 0x7E, 0x07, 0x06, 0x00, 0x00, 0x00}}},
    {COND_SUBTYPE_21735,
     {0xE60F81E1, 0x49B3, 0x11D0, {0x93, 0xC3, 0x7E, 0x07, 0x06, 0x00, 0x00, 0x00}}},
    {COND_SUBTYPE_21735,
     {0xBBF9FDF1, 0x52DC, 0x11D0, {0x8C, 0x04, 0x08, 0x00, 0x09, 0x0B, 0xE8, 0xEC}}},
    {COND_SUBTYPE_21735,
     {0x62FBB030, 0x24C7, 0x11D3, {0xB7, 0x8D, 0x00, 0x60, 0xB0, 0xF1, 0x59, 0xEF}}},
    {COND_SUBTYPE_21735,
     {0x76283A80, 0x50DD, 0x11D3, {0xA7, 0xE3, 0x00, 0xC0, 0x4F, 0x79, 0xD7, 0xBC}}},
    {COND_SUBTYPE_21735,
     {0xA2B4C17D, 0xF0D2, 0x4C0F, {0x97, 0x99, 0xDD, 0x5F, 0x71, 0xDF, 0xB2, 0x91}}},
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

bool MatchGeneral(const SRxFoundList& list, MDxGeneralProperties& general,
                  const SRxCriteriaNode& c) {
    const auto* row =
        std::find_if(std::begin(kGeneralRows), std::end(kGeneralRows),
                     [&c](const GeneralRow& each) { return each.number == c.propertyNumber; });
    if (row == std::end(kGeneralRows)) return false;
    switch (row->read) {
        case eRead::Text: {
            // The empty value is settled by the comparison: it differs from every text.
            return CompareStringValue(list, general.Property(c.propertyNumber), c.value,
                                      Condition(c));
        }
        case eRead::Person:
            return CompareTextValue(list, general.Property(c.propertyNumber), c.value,
                                    Condition(c));
        case eRead::Date: {
            SYSTEMTIME date{};
            general.GetDateValue(c.propertyNumber, &date);
            return CompareDateValue(list, &date, c.value, c.conditionId);
        }
        case eRead::Currency: {
            LONGLONG value = 0;
            general.GetCurrencyValue(c.propertyNumber, &value);
            return CompareRealText(list, static_cast<double>(value) / kTenThousandths, c.value,
                                   Condition(c), kExactNumber);
        }
        case eRead::DesignState: {
            LONG state = 0;
            general.GetLongValue(c.propertyNumber, &state);
            return CompareRealValues(list, state, c.numericValue, Condition(c), kExactNumber);
        }
        case eRead::Subtype:
            return MatchSubtype(general, c.conditionId);
    }
    return false;
}

bool MatchControl(const SRxFoundList& list, MDxControlProperties& control,
                  const SRxCriteriaNode& c) {
    switch (c.propertyNumber) {
        case 5:
        case 7: {
            WCHAR text[kControlTextLength] = {};
            control.Property(c.propertyNumber, text, kControlTextLength);
            return CompareTextValue(list, text, c.value, Condition(c));
        }
        case 6:
        case 8: {
            SYSTEMTIME date{};
            control.GetDatePropertyValue(c.propertyNumber, &date);
            return CompareDateValue(list, &date, c.value, c.conditionId);
        }
        default:
            return false;
    }
}

CriterionOutcome MatchCustom(const SRxFoundList& list, const FileAtHand& file,
                             const SRxCriteriaNode& c) {
    constexpr CriterionOutcome kUndecided = {true, true};
    const WCHAR* name = c.customName.c_str();
    if (file.properties == nullptr || file.status < 0) return kUndecided;
    MDxCustomProperties& custom = file.properties->CustomProp();
    if (custom.Property(name, false) == nullptr) return kUndecided;
    switch (custom.GetType(name)) {
        case VT_BOOL:
            return {CompareBoolValue(list, custom.GetBoolValue(name), c.value, Condition(c))};
        case VT_DATE:
        case VT_FILETIME: {
            SYSTEMTIME date{};
            custom.GetDateValue(name, &date);
            return {CompareDateValue(list, &date, c.value, c.conditionId)};
        }
        default:
            return kUndecided;
    }
}

bool MatchFileType(const SRxFoundList& list, const FileAtHand& file, const SRxCriteriaNode& c) {
    if (!CompareFileType(list, file.node.GetFileName(), Condition(c))) return false;
    if (!IsVerifiedKind(file.node.GetFileType())) return true;
    if (file.needProperties && file.status < 0) return false;
    return file.node.IsMirelFile(nullptr, nullptr);
}

bool MatchFileName(const SRxFoundList& list, const FileAtHand& file, const SRxCriteriaNode& c) {
    const WCHAR* name = PathFindFileNameW(file.node.GetFileName());
    // A value without a point is compared with the name without its extension.
    const WCHAR* extension = PathFindExtensionW(name);
    if (*extension == 0 || *PathFindExtensionW(c.value) != 0) {
        return CompareStringValue(list, name, c.value, Condition(c));
    }
    WCHAR bare[kPathLength];
    const WTextView stem(name, static_cast<std::size_t>(extension - name));
    if (wtext::CopyWhole(bare, kPathLength, stem)) {
        return CompareStringValue(list, bare, c.value, Condition(c));
    }
    return CompareStringValue(list, WText(stem).c_str(), c.value, Condition(c));
}

bool MatchDocStatus(const SRxFoundList& list, const FileAtHand& file, const SRxCriteriaNode& c) {
    if (file.status < 0 || !IsKnownKind(file.node.GetFileType())) return false;
    if (file.node.docStatus == -1) {
        tagBUILDINFO info{};
        file.node.GetDocTypeProps(list.server, &info, nullptr);
    }
    return CompareBoolValue(list, file.node.docStatus == 1, c.value, Condition(c));
}

bool MatchLibrary(const FileAtHand& file, const SRxCriteriaNode& c) {
    if (file.status < 0 || !IsKnownKind(file.node.GetFileType())) return false;
    MDxGetFileSubtype(file.node);
    const bool isLibrary =
        file.node.SubType() == kLibrarySubtype || file.node.ContentLibType() >= 1;
    if (c.conditionId == COND_LIBRARY_YES) return isLibrary;
    return c.conditionId == COND_LIBRARY_NO && !isLibrary;
}

bool MatchFact(SRxFoundList& list, const FileAtHand& file, const SRxCriteriaNode& c) {
    switch (c.propertyNumber) {
        case kFactFileType:
            return MatchFileType(list, file, c);
        case kFactFileName:
            return MatchFileName(list, file, c);
        case kFactDocStatus:
            return MatchDocStatus(list, file, c);
        case kFactLibrary:
            return MatchLibrary(file, c);
        case kFactSkippedTest:
            // The caller tests it; nothing of the file is read.
            list.skippedCriterionSeen = true;
            return c.conditionId != COND_IS_YES;
        case kFactFileSize: {
            double size = 0;
            return file.node.GetFileSizeKB(size) &&
                   CompareRealText(list, size, c.value, Condition(c), kSizeTolerance);
        }
        default:
            return false;
    }
}

}  // namespace

CriterionOutcome EvaluateFileCriterion(SRxFoundList& list, const FileAtHand& file,
                                       const SRxCriteriaNode& c) {
    const bool readable = file.properties != nullptr && file.status >= 0;
    switch (c.propertyCategory) {
        case eCategoryGeneral:
        case eCategoryGeneral4:
        case eCategoryGeneral5:
        case eCategoryGeneral6: {
            if (!readable) return {};
            MDxGeneralProperties& general = file.properties->GenProp();
            // Nothing is known of a property whose set is damaged: not even that it is absent.
            const int id = c.propertyNumber == 32 ? kSubtypeProperty : c.propertyNumber;
            return {!general.IsUnreadable(id) && MatchGeneral(list, general, c)};
        }
        case eCategoryControl: {
            if (!readable) return {};
            MDxControlProperties& control = file.properties->ControlProp();
            return {!control.IsUnreadable() && MatchControl(list, control, c)};
        }
        case eCategoryCustom:
            return MatchCustom(list, file, c);
        case eCategoryFile:
            return {MatchFact(list, file, c)};
        default:
            // A criterion whose look-up failed is never true.
            return {};
    }
}
