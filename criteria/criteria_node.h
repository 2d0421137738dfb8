// One criterion of a search: a property, a condition and a value, joined to what stands before it.
// The list is a conjunction of groups: a JOIN_AND node opens a group and the JOIN_OR nodes behind
// it belong to it.
#pragma once

#include <cstddef>

#include "outside/blx_string.h"
#include "outside/md_property_rows.h"
#include "resource/string_ids.h"

inline constexpr LONG JOIN_AND = 1;
inline constexpr LONG JOIN_OR = 2;

inline constexpr std::size_t kValueLength = 128;  // of `value`, the terminator included
inline constexpr LONG kNoId = -1;                 // a field that a criterion doesn't use

// The field order is part of the interface to the document library, which reads the record.
struct SRxCriteriaNode {
    // The triple comes from the document library. A look-up that fails leaves -1 in the property
    // fields and in `conditionId`, and an empty value. `text` may be null; one of 128 units or more
    // isn't taken: the value stays empty.
    SRxCriteriaNode(LONG number, LONG category, LONG condition, LONG join, const WCHAR* text);
    SRxCriteriaNode(LONG stringId, LONG condition, LONG join, const WCHAR* text);
    SRxCriteriaNode(LONG stringId, LONG condition, LONG join, const WCHAR* text, LONG valueId);
    // A custom property; `name` isn't null.
    SRxCriteriaNode(const WCHAR* name, LONG condition, LONG join, const WCHAR* text);
    // Destroys what follows as well; clear `nextCriterion` first to take a single node out.
    ~SRxCriteriaNode();
    SRxCriteriaNode(const SRxCriteriaNode&) = delete;
    SRxCriteriaNode& operator=(const SRxCriteriaNode&) = delete;

    bool IsFileTypeCriterion() const { return propertyStringId == PROP_FILE_TYPE; }
    // The document library is asked about things inside the document; no file is opened for it.
    bool IsOccurrenceCategory() const {
        return propertyCategory >= eCategoryComponent && propertyCategory <= eCategoryFasSketch;
    }
    // A file has to be opened to test it.
    bool NeedsDocumentProperties() const;

    SRxCriteriaNode* nextCriterion = nullptr;
    LONG propertyNumber = kNoId;    // -1 for a custom property
    LONG propertyCategory = kNoId;  // 3 for a custom property
    LONG propertyStringId = kNoId;  // -1 for a custom property
    BLxWString customName;          // empty but for a custom property
    LONG conditionId = kNoId;
    double numericValue = 0.0;  // the design state's number; 0 for other properties
    LONG joinType = JOIN_AND;
    WCHAR value[kValueLength] = {};  // null-terminated
    LONG valueId = kNoId;            // the entry of the value list

private:
    void SetTest(LONG condition, const WCHAR* text, bool found);
};

// Equal property numbers, whatever the category; of two custom properties equal names, exactly.
bool SameProperty(const SRxCriteriaNode& a, const SRxCriteriaNode& b);
