// Md.dll: the property rows, the one table from which a property's string id, number and category
// are translated into each other. The order of the rows is that of the property list.
#pragma once

#include <array>

#include "outside/library_api.h"
#include "platform/system.h"
#include "resource/string_ids.h"

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
    {PROP_TEXT_19136, 2, eCategoryGeneral},
    {PROP_TEXT_19122, 5, eCategoryGeneral},
    {PROP_TEXT_19235, 55, eCategoryGeneral},
    {PROP_TEXT_19125, 8, eCategoryGeneral},
    {PROP_PERSON_19133, 3, eCategoryGeneral},
    {PROP_DATE_19126, 4, eCategoryGeneral},
    {PROP_TEXT_19134, 6, eCategoryGeneral},
    {PROP_TEXT_19135, 9, eCategoryGeneral},
    {PROP_TEXT_19127, 7, eCategoryGeneral},
    {PROP_TEXT_19166, 30, eCategoryGeneral},
    {PROP_TEXT_19167, 29, eCategoryGeneral},
    {PROP_TEXT_19120, 17, eCategoryGeneral},
    {PROP_PERSON_19128, 10, eCategoryGeneral},
    {PROP_DATE_19130, 11, eCategoryGeneral},
    {PROP_PERSON_19129, 12, eCategoryGeneral},
    {PROP_DATE_19131, 13, eCategoryGeneral},
    {PROP_PERSON_19178, 34, eCategoryGeneral},
    {PROP_DATE_19179, 35, eCategoryGeneral},
    {PROP_TEXT_19132, 20, eCategoryGeneral6},
    {PROP_TEXT_19140, 22, eCategoryGeneral},
    {PROP_TEXT_19144, 24, eCategoryGeneral},
    {PROP_PERSON_19145, 25, eCategoryGeneral},
    {PROP_TEXT_19142, 26, eCategoryGeneral},
    {PROP_TEXT_19143, 27, eCategoryGeneral},
    {PROP_CONTROL_PERSON_19147, 5, eCategoryControl},
    {PROP_CONTROL_DATE_19148, 8, eCategoryControl},
    {PROP_CONTROL_DATE_19149, 6, eCategoryControl},
    {PROP_TEXT_19141, 23, eCategoryGeneral},
    {PROP_DOC_SUBTYPE, 32, eCategoryGeneral},
    {PROP_LIBRARY_DOCUMENT, kFactLibrary, eCategoryFile},
    {PROP_CURRENCY_19180, 36, eCategoryGeneral},
    {PROP_DESIGN_STATE, 40, eCategoryGeneral},
    {PROP_PERSON_19184, 42, eCategoryGeneral},
    {PROP_PERSON_19183, 41, eCategoryGeneral},
    {PROP_PERSON_19185, 43, eCategoryGeneral},
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
    {PROP_NOTE_19252, 125, eCategoryComponent},
    {PROP_NOTE_19253, 142, eCategoryComponent},
    {PROP_CONSTR_NAME, 120, eCategoryConstraint},
    {PROP_CONSTR_SUPPRESSED, 121, eCategoryConstraint},
    {PROP_CONSTR_VALUE, 122, eCategoryConstraint},
    {PROP_CONSTR_TYPE, 123, eCategoryConstraint},
    {PROP_CONSTR_HEALTH, 124, eCategoryConstraint},
    {PROP_NOTE_19252, 125, eCategoryConstraint},
    {PROP_NOTE_19253, 142, eCategoryConstraint},
    {PROP_CONSTR_REFERENCE, 126, eCategoryConstraint},
    {PROP_WELD_NAME, 128, eCategoryWeld},
    {PROP_WELD_TYPE, 129, eCategoryWeld},
    {PROP_WELD_NOTE_19266, 130, eCategoryWeld},
    {PROP_WELD_NOTE_19335, 143, eCategoryWeld},
    {PROP_WELD_PART_STATUS, 131, eCategoryWeld},
    {PROP_WELD_REFERENCES, 132, eCategoryWeld},
    {PROP_FAS_NAME, 133, eCategoryFasAssembly},
    {PROP_FAS_SUPPRESSED, 134, eCategoryFasAssembly},
    {PROP_FAS_TYPE, 135, eCategoryFasAssembly},
    {PROP_FAS_NOTE_19275, 137, eCategoryFasAssembly},
    {PROP_FAS_NOTE_19336, 144, eCategoryFasAssembly},
    {PROP_FAS_PARTICIPANT, 138, eCategoryFasAssembly},
    {PROP_FAS_SKETCH_PARAM_NAME, 139, eCategoryFasAssembly},
    {PROP_FAS_NAME, 133, eCategoryFasPart},
    {PROP_FAS_SUPPRESSED, 134, eCategoryFasPart},
    {PROP_FAS_TYPE, 135, eCategoryFasPart},
    {PROP_FAS_NOTE_19275, 137, eCategoryFasPart},
    {PROP_FAS_NOTE_19336, 144, eCategoryFasPart},
    {PROP_FAS_NAME, 133, eCategoryFasSketch},
    {PROP_FAS_NOTE_19275, 137, eCategoryFasSketch},
    {PROP_FAS_NOTE_19336, 144, eCategoryFasSketch},
    {PROP_FAS_SKETCH_PARAM_NAME, 139, eCategoryFasSketch},
    {PROP_COMP_TRANSPARENT, 145, eCategoryComponent},
    {PROP_COMP_FULLY_CONSTRAINED, 146, eCategoryComponent},
}};

// The row of a number and category; both have to fit. False leaves `*stringId` as it was. `flags`
// is 0 and `count` 1.
MD_API bool FindPropID(LONG number, LONG category, LONG* stringId, int flags, int count);
// The first row of a string id.
MD_API bool FindPropString(LONG stringId, LONG* number, LONG* category, int flags, int count);
