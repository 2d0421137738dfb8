// Md.dll: the property rows, the one table from which a property's string id, number and category
// are translated into each other. The order of the rows is that of the property list.
#pragma once

#include <array>

#include "outside/library_api.h"
#include "platform/win.h"
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

inline constexpr std::array<PropertyRow, 85> kPropertyRows = {{
    {PROP_FILE_TYPE, 100, 7},
    {PROP_FILE_NAME, 101, 7},
    {PROP_TEXT_19136, 2, 1},
    {PROP_TEXT_19122, 5, 1},
    {PROP_TEXT_19235, 55, 1},
    {PROP_TEXT_19125, 8, 1},
    {PROP_PERSON_19133, 3, 1},
    {PROP_DATE_19126, 4, 1},
    {PROP_TEXT_19134, 6, 1},
    {PROP_TEXT_19135, 9, 1},
    {PROP_TEXT_19127, 7, 1},
    {PROP_TEXT_19166, 30, 1},
    {PROP_TEXT_19167, 29, 1},
    {PROP_TEXT_19120, 17, 1},
    {PROP_PERSON_19128, 10, 1},
    {PROP_DATE_19130, 11, 1},
    {PROP_PERSON_19129, 12, 1},
    {PROP_DATE_19131, 13, 1},
    {PROP_PERSON_19178, 34, 1},
    {PROP_DATE_19179, 35, 1},
    {PROP_TEXT_19132, 20, 6},
    {PROP_TEXT_19140, 22, 1},
    {PROP_TEXT_19144, 24, 1},
    {PROP_PERSON_19145, 25, 1},
    {PROP_TEXT_19142, 26, 1},
    {PROP_TEXT_19143, 27, 1},
    {PROP_CONTROL_PERSON_19147, 5, 2},
    {PROP_CONTROL_DATE_19148, 8, 2},
    {PROP_CONTROL_DATE_19149, 6, 2},
    {PROP_TEXT_19141, 23, 1},
    {PROP_DOC_SUBTYPE, 32, 1},
    {PROP_LIBRARY_DOCUMENT, 108, 7},
    {PROP_CURRENCY_19180, 36, 1},
    {PROP_DESIGN_STATE, 40, 1},
    {PROP_PERSON_19184, 42, 1},
    {PROP_PERSON_19183, 41, 1},
    {PROP_PERSON_19185, 43, 1},
    {PROP_DOC_STATUS, 103, 7},
    {PROP_COMP_ADAPTIVE, 109, 11},
    {PROP_COMP_ENABLED, 110, 11},
    {PROP_COMP_GROUNDED, 111, 11},
    {PROP_COMP_VISIBLE, 112, 11},
    {PROP_COMP_DOF_COUNT, 113, 11},
    {PROP_COMP_COLOR, 114, 11},
    {PROP_COMP_KMATE_OWNER, 115, 11},
    {PROP_COMP_KPART_TYPE, 116, 11},
    {PROP_COMP_KASSY_TYPE, 140, 11},
    {PROP_SKIPPED_TEST, 117, 7},
    {PROP_COMP_BOM_STRUCTURE, 118, 11},
    {PROP_COMP_SUPPRESSED, 127, 11},
    {PROP_COMP_NAME, 141, 11},
    {PROP_NOTE_19252, 125, 11},
    {PROP_NOTE_19253, 142, 11},
    {PROP_CONSTR_NAME, 120, 12},
    {PROP_CONSTR_SUPPRESSED, 121, 12},
    {PROP_CONSTR_VALUE, 122, 12},
    {PROP_CONSTR_TYPE, 123, 12},
    {PROP_CONSTR_HEALTH, 124, 12},
    {PROP_NOTE_19252, 125, 12},
    {PROP_NOTE_19253, 142, 12},
    {PROP_CONSTR_REFERENCE, 126, 12},
    {PROP_WELD_NAME, 128, 13},
    {PROP_WELD_TYPE, 129, 13},
    {PROP_WELD_NOTE_19266, 130, 13},
    {PROP_WELD_NOTE_19335, 143, 13},
    {PROP_WELD_PART_STATUS, 131, 13},
    {PROP_WELD_REFERENCES, 132, 13},
    {PROP_FAS_NAME, 133, 14},
    {PROP_FAS_SUPPRESSED, 134, 14},
    {PROP_FAS_TYPE, 135, 14},
    {PROP_FAS_NOTE_19275, 137, 14},
    {PROP_FAS_NOTE_19336, 144, 14},
    {PROP_FAS_PARTICIPANT, 138, 14},
    {PROP_FAS_SKETCH_PARAM_NAME, 139, 14},
    {PROP_FAS_NAME, 133, 15},
    {PROP_FAS_SUPPRESSED, 134, 15},
    {PROP_FAS_TYPE, 135, 15},
    {PROP_FAS_NOTE_19275, 137, 15},
    {PROP_FAS_NOTE_19336, 144, 15},
    {PROP_FAS_NAME, 133, 16},
    {PROP_FAS_NOTE_19275, 137, 16},
    {PROP_FAS_NOTE_19336, 144, 16},
    {PROP_FAS_SKETCH_PARAM_NAME, 139, 16},
    {PROP_COMP_TRANSPARENT, 145, 11},
    {PROP_COMP_FULLY_CONSTRAINED, 146, 11},
}};

// The row of a number and category; both have to fit. False leaves `*stringId` as it was. `flags`
// is 0 and `count` 1.
MD_API bool FindPropID(LONG number, LONG category, LONG* stringId, int flags, int count);
// The first row of a string id.
MD_API bool FindPropString(LONG stringId, LONG* number, LONG* category, int flags, int count);
