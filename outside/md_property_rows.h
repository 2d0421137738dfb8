// Md.dll: the property rows, the one table from which a property's string id, number and category
// are translated into each other. The order of the rows is that of the property list.
#pragma once

#include <array>

#include "outside/library_api.h"
#include "platform/system.h"
#include "resource/property_names.h"

struct PropertyRow {
    LONG stringId;
    LONG number;
    LONG category;
};

// Kinds of property.
enum ePropertyCategory : LONG {
    eCategoryGeneral = 1,
    eCategoryControl = 2,
    eCategoryCustom = 3,  // by name, never in the table
    eCategoryGeneral4 = 4,
    eCategoryGeneral5 = 5,
    eCategoryGeneral6 = 6,
    eCategoryFile = 7,
    eCategoryComponent = 11,
    eCategoryConstraint = 12,
    eCategoryWeld = 13,
    eCategoryFasAssembly = 14,
    eCategoryFasPart = 15,
    eCategoryFasSketch = 16
};

// The numbers of facts about a file, in eCategoryFile.
inline constexpr LONG kFactFileType = 100;
inline constexpr LONG kFactFileName = 101;
inline constexpr LONG kFactDocStatus = 103;
inline constexpr LONG kFactLibrary = 108;
inline constexpr LONG kFactSkippedTest = 117;
inline constexpr LONG kFactFileSize = 119;

inline constexpr std::array<PropertyRow, 85> kPropertyRows = {{
    {PROP_FILE_TYPE, kFactFileType, eCategoryFile},
    {PROP_FILE_NAME, kFactFileName, eCategoryFile},
    {kComments, 2, eCategoryGeneral},
    {kPartNumber, 5, eCategoryGeneral},
    {kStockNumber, 55, eCategoryGeneral},
    {kRevisionNumber, 8, eCategoryGeneral},
    {kAuthor, 3, eCategoryGeneral},
    {kDateCreated, 4, eCategoryGeneral},
    {kKeywords, 6, eCategoryGeneral},
    {kDescription, 9, eCategoryGeneral},
    {kProject, 7, eCategoryGeneral},
    {kCatalogueLink, 30, eCategoryGeneral},
    {kVendor, 29, eCategoryGeneral},
    {kMaterial, 17, eCategoryGeneral},
    {kCheckedBy, 10, eCategoryGeneral},
    {kDateChecked, 11, eCategoryGeneral},
    {kEngineeringApprovalBy, 12, eCategoryGeneral},
    {kDateOfEngineeringApproval, 13, eCategoryGeneral},
    {kManufacturingApprovalBy, 34, eCategoryGeneral},
    {kDateOfManufacturingApproval, 35, eCategoryGeneral},
    {kCostCentre, 20, eCategoryGeneral6},
    {kTitle, 22, eCategoryGeneral},
    {kSubject, 24, eCategoryGeneral},
    {kManager, 25, eCategoryGeneral},
    {kCompany, 26, eCategoryGeneral},
    {kCategory, 27, eCategoryGeneral},
    {kLastSavedBy, 5, eCategoryControl},
    {kDateLastSaved, 8, eCategoryControl},
    {kDateLastPrinted, 6, eCategoryControl},
    {kDesignStandard, 23, eCategoryGeneral},
    {PROP_DOC_SUBTYPE, 32, eCategoryGeneral},
    {PROP_LIBRARY_DOCUMENT, kFactLibrary, eCategoryFile},
    {kEstimatedCost, 36, eCategoryGeneral},
    {PROP_DESIGN_STATE, 40, eCategoryGeneral},
    {kEngineer, 42, eCategoryGeneral},
    {kDesigner, 41, eCategoryGeneral},
    {kApprovingAuthority, 43, eCategoryGeneral},
    {PROP_DOC_STATUS, kFactDocStatus, eCategoryFile},
    {PROP_COMP_ADAPTIVE, 109, eCategoryComponent},
    {PROP_COMP_ENABLED, 110, eCategoryComponent},
    {PROP_COMP_GROUNDED, 111, eCategoryComponent},
    {PROP_COMP_VISIBLE, 112, eCategoryComponent},
    {PROP_COMP_DOF_COUNT, 113, eCategoryComponent},
    {PROP_COMP_COLOR, 114, eCategoryComponent},
    {PROP_COMP_KMATE_OWNER, 115, eCategoryComponent},
    {PROP_COMP_KPART_TYPE, 116, eCategoryComponent},
    {PROP_COMP_KASSY_TYPE, 140, eCategoryComponent},
    {PROP_SKIPPED_TEST, kFactSkippedTest, eCategoryFile},
    {PROP_COMP_BOM_STRUCTURE, 118, eCategoryComponent},
    {PROP_COMP_SUPPRESSED, 127, eCategoryComponent},
    {PROP_COMP_NAME, 141, eCategoryComponent},
    {kNoteText, 125, eCategoryComponent},
    {kNoteAuthor, 142, eCategoryComponent},
    {PROP_CONSTR_NAME, 120, eCategoryConstraint},
    {PROP_CONSTR_SUPPRESSED, 121, eCategoryConstraint},
    {PROP_CONSTR_VALUE, 122, eCategoryConstraint},
    {PROP_CONSTR_TYPE, 123, eCategoryConstraint},
    {PROP_CONSTR_HEALTH, 124, eCategoryConstraint},
    {kNoteText, 125, eCategoryConstraint},
    {kNoteAuthor, 142, eCategoryConstraint},
    {PROP_CONSTR_REFERENCE, 126, eCategoryConstraint},
    {PROP_WELD_NAME, 128, eCategoryWeld},
    {PROP_WELD_TYPE, 129, eCategoryWeld},
    {kWeldNoteText, 130, eCategoryWeld},
    {kWeldNoteAuthor, 143, eCategoryWeld},
    {PROP_WELD_PART_STATUS, 131, eCategoryWeld},
    {PROP_WELD_REFERENCES, 132, eCategoryWeld},
    {PROP_FAS_NAME, 133, eCategoryFasAssembly},
    {PROP_FAS_SUPPRESSED, 134, eCategoryFasAssembly},
    {PROP_FAS_TYPE, 135, eCategoryFasAssembly},
    {kFeatureNoteText, 137, eCategoryFasAssembly},
    {kFeatureNoteAuthor, 144, eCategoryFasAssembly},
    {PROP_FAS_PARTICIPANT, 138, eCategoryFasAssembly},
    {PROP_FAS_SKETCH_PARAM_NAME, 139, eCategoryFasAssembly},
    {PROP_FAS_NAME, 133, eCategoryFasPart},
    {PROP_FAS_SUPPRESSED, 134, eCategoryFasPart},
    {PROP_FAS_TYPE, 135, eCategoryFasPart},
    {kFeatureNoteText, 137, eCategoryFasPart},
    {kFeatureNoteAuthor, 144, eCategoryFasPart},
    {PROP_FAS_NAME, 133, eCategoryFasSketch},
    {kFeatureNoteText, 137, eCategoryFasSketch},
    {kFeatureNoteAuthor, 144, eCategoryFasSketch},
    {PROP_FAS_SKETCH_PARAM_NAME, 139, eCategoryFasSketch},
    {PROP_COMP_TRANSPARENT, 145, eCategoryComponent},
    {PROP_COMP_FULLY_CONSTRAINED, 146, eCategoryComponent},
}};

// The number of a property of the table, at compile time; one that the table lacks doesn't compile.
consteval LONG NumberOf(LONG stringId) {
    for (const PropertyRow& row : kPropertyRows) {
        if (row.stringId == stringId) return row.number;
    }
    throw "no such property";
}

// The row of a number and category; both have to fit. False leaves `*stringId` as it was. `flags`
// is 0 and `count` 1.
MD_API bool FindPropID(LONG number, LONG category, LONG* stringId, int flags, int count);
// The first row of a string id.
MD_API bool FindPropString(LONG stringId, LONG* number, LONG* category, int flags, int count);
