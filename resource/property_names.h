// The properties whose string ids have no name but a number, by their names in the dialogs.
#pragma once

#include "resource/string_ids.h"

inline constexpr int kComments = PROP_TEXT_19136;
inline constexpr int kPartNumber = PROP_TEXT_19122;
inline constexpr int kStockNumber = PROP_TEXT_19235;
inline constexpr int kRevisionNumber = PROP_TEXT_19125;
inline constexpr int kAuthor = PROP_PERSON_19133;
inline constexpr int kDateCreated = PROP_DATE_19126;
inline constexpr int kKeywords = PROP_TEXT_19134;
inline constexpr int kDescription = PROP_TEXT_19135;
inline constexpr int kProject = PROP_TEXT_19127;
inline constexpr int kCatalogueLink = PROP_TEXT_19166;
inline constexpr int kVendor = PROP_TEXT_19167;
inline constexpr int kMaterial = PROP_TEXT_19120;
inline constexpr int kCheckedBy = PROP_PERSON_19128;
inline constexpr int kDateChecked = PROP_DATE_19130;
inline constexpr int kEngineeringApprovalBy = PROP_PERSON_19129;
inline constexpr int kDateOfEngineeringApproval = PROP_DATE_19131;
inline constexpr int kManufacturingApprovalBy = PROP_PERSON_19178;
inline constexpr int kDateOfManufacturingApproval = PROP_DATE_19179;
inline constexpr int kCostCentre = PROP_TEXT_19132;
inline constexpr int kTitle = PROP_TEXT_19140;
inline constexpr int kSubject = PROP_TEXT_19144;
inline constexpr int kManager = PROP_PERSON_19145;
inline constexpr int kCompany = PROP_TEXT_19142;
inline constexpr int kCategory = PROP_TEXT_19143;
inline constexpr int kLastSavedBy = PROP_CONTROL_PERSON_19147;
inline constexpr int kDateLastSaved = PROP_CONTROL_DATE_19148;
inline constexpr int kDateLastPrinted = PROP_CONTROL_DATE_19149;
inline constexpr int kDesignStandard = PROP_TEXT_19141;
inline constexpr int kEstimatedCost = PROP_CURRENCY_19180;
inline constexpr int kEngineer = PROP_PERSON_19184;
inline constexpr int kDesigner = PROP_PERSON_19183;
inline constexpr int kApprovingAuthority = PROP_PERSON_19185;
inline constexpr int kNoteText = PROP_NOTE_19252;
inline constexpr int kNoteAuthor = PROP_NOTE_19253;
inline constexpr int kWeldNoteText = PROP_WELD_NOTE_19266;
inline constexpr int kWeldNoteAuthor = PROP_WELD_NOTE_19335;
inline constexpr int kFeatureNoteText = PROP_FAS_NOTE_19275;
inline constexpr int kFeatureNoteAuthor = PROP_FAS_NOTE_19336;
