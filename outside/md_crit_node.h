// Md.dll: an occurrence record, the question that one criterion asks of the things inside a
// document. Records are stored and carried on file nodes; who receives the node evaluates them.
#pragma once

#include "outside/blx_string.h"

struct SRxCriteriaNode;

enum eJoinType { eJoinAnd = 0, eJoinOr = 1 };

// Which operation set the test of a record.
enum class eCritTest {
    None,
    Fixed,
    Properties,
    Adaptive,
    Enabled,
    Grounded,
    Visible,
    NoOfDOFs,
    Color,
    KMateOwner,
    KPartType,
    KAssyType,
    BOMStructure,
    ComponentNote,
    Suppressed,
    ComponentName,
    Transparent,
    FullyConstrained,
    ConstrName,
    ConstrSuppress,
    ConstrValue,
    ConstrType,
    ConstrHealth,
    ConstrNote,
    ConstrReference,
    WeldName,
    WeldType,
    WeldNote,
    WeldPartStatus,
    WeldReferences,
    FasName,
    FasSuppress,
    FasType,
    FasNote,
    FasParticipant,
    FasSketchParamName
};

class MD_API MDxCritNode {
public:
    void SetJoinType(eJoinType join) { join_ = join; }
    void SetMatchCase(bool matchCase) { matchCase_ = matchCase; }
    // Some operation of the family Crit... was called.
    bool HaveCrit() const { return test_ != eCritTest::None && test_ != eCritTest::Fixed; }
    // The record has no test and stands for `truth`.
    void NoCrit(bool truth);

    // The test is the criterion itself, of which the record keeps a copy.
    void CritProperties(const SRxCriteriaNode* criterion);

    void CritAdaptive(bool flag);
    void CritEnabled(bool flag);
    void CritGrounded(bool flag);
    void CritVisible(bool flag);
    void CritTransparent(bool flag);
    void CritFullyConstrained(bool flag);
    void CritNoOfDOFs(LONG condition, LONG number);
    void CritColor(LONG condition, const WCHAR* value);
    void CritKMateOwner(LONG condition, bool ignoreCase, const WCHAR* value);
    void CritKPartType(LONG condition, LONG valueId);
    void CritKAssyType(LONG condition, LONG valueId);
    void CritBOMStructure(LONG condition, const WCHAR* value);
    void CritComponentNote(LONG condition, const WCHAR* value, bool text);
    void CritSuppressed(LONG condition, bool yes);
    void CritComponentName(LONG condition, const WCHAR* value);
    void CritConstrName(LONG condition, const WCHAR* value);
    void CritConstrSuppress(LONG condition, bool yes);
    void CritConstrValue(LONG condition, const WCHAR* value);
    void CritConstrType(LONG condition, const WCHAR* value);
    void CritConstrHealth(LONG condition, const WCHAR* value);
    void CritConstrNote(LONG condition, const WCHAR* value, bool text);
    void CritConstrReference(LONG condition, bool yes);
    void CritWeldName(LONG condition, const WCHAR* value);
    void CritWeldType(LONG condition, const WCHAR* value);
    void CritWeldNote(LONG condition, const WCHAR* value, bool text);
    void CritWeldPartStatus(LONG condition, bool yes);
    void CritWeldReferences(LONG condition, const WCHAR* value);
    void CritFasName(LONG condition, const WCHAR* value);
    void CritFasSuppress(LONG condition, bool yes);
    void CritFasType(LONG condition, LONG valueId);
    void CritFasNote(LONG condition, const WCHAR* value, bool text);
    void CritFasParticipant(LONG condition, bool yes);
    void CritFasSketchParamName(LONG condition, const WCHAR* value);

    // What the receiver of a node reads.
    eJoinType Join() const { return join_; }
    bool MatchCase() const { return matchCase_; }
    eCritTest Test() const { return test_; }
    LONG Condition() const { return condition_; }
    // The truth value, the yes/no argument or the form of a note.
    bool Flag() const { return flag_; }
    // The count, or the id of a list entry.
    LONG Number() const { return number_; }
    const BLxWString& Text() const { return text_; }
    // Of a Properties record: the property and the custom name.
    LONG PropertyNumber() const { return propertyNumber_; }
    LONG PropertyCategory() const { return propertyCategory_; }
    const BLxWString& CustomName() const { return customName_; }

private:
    void Set(eCritTest test, LONG condition);
    void SetFlag(eCritTest test, LONG condition, bool flag);
    void SetNumber(eCritTest test, LONG condition, LONG number);
    void SetText(eCritTest test, LONG condition, const WCHAR* value);

    eJoinType join_ = eJoinAnd;
    eCritTest test_ = eCritTest::None;
    bool matchCase_ = false;
    bool flag_ = false;
    LONG condition_ = 0;
    LONG number_ = 0;
    LONG propertyNumber_ = 0;
    LONG propertyCategory_ = 0;
    BLxWString text_;
    BLxWString customName_;
};
