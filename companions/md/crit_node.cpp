#include "criteria/criteria_node.h"
#include "outside/md_crit_node.h"

void MDxCritNode::Set(eCritTest test, LONG condition) {
    test_ = test;
    condition_ = condition;
}

void MDxCritNode::SetFlag(eCritTest test, LONG condition, bool flag) {
    Set(test, condition);
    flag_ = flag;
}

void MDxCritNode::SetNumber(eCritTest test, LONG condition, LONG number) {
    Set(test, condition);
    number_ = number;
}

void MDxCritNode::SetText(eCritTest test, LONG condition, const WCHAR* value) {
    Set(test, condition);
    text_ = value;
}

void MDxCritNode::NoCrit(bool truth) {
    SetFlag(eCritTest::Fixed, 0, truth);
}

void MDxCritNode::CritProperties(const SRxCriteriaNode* criterion) {
    SetText(eCritTest::Properties, criterion->conditionId, criterion->value);
    propertyNumber_ = criterion->propertyNumber;
    propertyCategory_ = criterion->propertyCategory;
    customName_ = criterion->customName;
    number_ = criterion->valueId;
}

void MDxCritNode::CritAdaptive(bool flag) {
    SetFlag(eCritTest::Adaptive, 0, flag);
}
void MDxCritNode::CritEnabled(bool flag) {
    SetFlag(eCritTest::Enabled, 0, flag);
}
void MDxCritNode::CritGrounded(bool flag) {
    SetFlag(eCritTest::Grounded, 0, flag);
}
void MDxCritNode::CritVisible(bool flag) {
    SetFlag(eCritTest::Visible, 0, flag);
}
void MDxCritNode::CritTransparent(bool flag) {
    SetFlag(eCritTest::Transparent, 0, flag);
}
void MDxCritNode::CritFullyConstrained(bool flag) {
    SetFlag(eCritTest::FullyConstrained, 0, flag);
}

void MDxCritNode::CritNoOfDOFs(LONG condition, LONG number) {
    SetNumber(eCritTest::NoOfDOFs, condition, number);
}
void MDxCritNode::CritColor(LONG condition, const WCHAR* value) {
    SetText(eCritTest::Color, condition, value);
}
void MDxCritNode::CritKMateOwner(LONG condition, bool ignoreCase, const WCHAR* value) {
    SetText(eCritTest::KMateOwner, condition, value);
    matchCase_ = !ignoreCase;
}
void MDxCritNode::CritKPartType(LONG condition, LONG valueId) {
    SetNumber(eCritTest::KPartType, condition, valueId);
}
void MDxCritNode::CritKAssyType(LONG condition, LONG valueId) {
    SetNumber(eCritTest::KAssyType, condition, valueId);
}
void MDxCritNode::CritBOMStructure(LONG condition, const WCHAR* value) {
    SetText(eCritTest::BOMStructure, condition, value);
}
void MDxCritNode::CritComponentNote(LONG condition, const WCHAR* value, bool text) {
    SetText(eCritTest::ComponentNote, condition, value);
    flag_ = text;
}
void MDxCritNode::CritSuppressed(LONG condition, bool yes) {
    SetFlag(eCritTest::Suppressed, condition, yes);
}
void MDxCritNode::CritComponentName(LONG condition, const WCHAR* value) {
    SetText(eCritTest::ComponentName, condition, value);
}

void MDxCritNode::CritConstrName(LONG condition, const WCHAR* value) {
    SetText(eCritTest::ConstrName, condition, value);
}
void MDxCritNode::CritConstrSuppress(LONG condition, bool yes) {
    SetFlag(eCritTest::ConstrSuppress, condition, yes);
}
void MDxCritNode::CritConstrValue(LONG condition, const WCHAR* value) {
    SetText(eCritTest::ConstrValue, condition, value);
}
void MDxCritNode::CritConstrType(LONG condition, const WCHAR* value) {
    SetText(eCritTest::ConstrType, condition, value);
}
void MDxCritNode::CritConstrHealth(LONG condition, const WCHAR* value) {
    SetText(eCritTest::ConstrHealth, condition, value);
}
void MDxCritNode::CritConstrNote(LONG condition, const WCHAR* value, bool text) {
    SetText(eCritTest::ConstrNote, condition, value);
    flag_ = text;
}
void MDxCritNode::CritConstrReference(LONG condition, bool yes) {
    SetFlag(eCritTest::ConstrReference, condition, yes);
}

void MDxCritNode::CritWeldName(LONG condition, const WCHAR* value) {
    SetText(eCritTest::WeldName, condition, value);
}
void MDxCritNode::CritWeldType(LONG condition, const WCHAR* value) {
    SetText(eCritTest::WeldType, condition, value);
}
void MDxCritNode::CritWeldNote(LONG condition, const WCHAR* value, bool text) {
    SetText(eCritTest::WeldNote, condition, value);
    flag_ = text;
}
void MDxCritNode::CritWeldPartStatus(LONG condition, bool yes) {
    SetFlag(eCritTest::WeldPartStatus, condition, yes);
}
void MDxCritNode::CritWeldReferences(LONG condition, const WCHAR* value) {
    SetText(eCritTest::WeldReferences, condition, value);
}

void MDxCritNode::CritFasName(LONG condition, const WCHAR* value) {
    SetText(eCritTest::FasName, condition, value);
}
void MDxCritNode::CritFasSuppress(LONG condition, bool yes) {
    SetFlag(eCritTest::FasSuppress, condition, yes);
}
void MDxCritNode::CritFasType(LONG condition, LONG valueId) {
    SetNumber(eCritTest::FasType, condition, valueId);
}
void MDxCritNode::CritFasNote(LONG condition, const WCHAR* value, bool text) {
    SetText(eCritTest::FasNote, condition, value);
    flag_ = text;
}
void MDxCritNode::CritFasParticipant(LONG condition, bool yes) {
    SetFlag(eCritTest::FasParticipant, condition, yes);
}
void MDxCritNode::CritFasSketchParamName(LONG condition, const WCHAR* value) {
    SetText(eCritTest::FasSketchParamName, condition, value);
}
