// The properties of one document, by the numbers and names that a search asks for.
#include "outside/md_properties.h"

#include <algorithm>

#include "companions/md/file_facts.h"
#include "outside/md_small_aids.h"
#include "platform/native_path.h"

using mddoc::DocumentProperties;
using mddoc::eSetKind;
using mddoc::PropertyValue;

namespace {

// The general properties that office documents carry have their place in the office sets; all
// others stand in the product's own set under their number.
struct OfficeRow {
    int number;
    eSetKind set;
    DWORD id;
};
constexpr OfficeRow kOfficeRows[] = {
    {22, eSetKind::Summary, 2},           // title
    {24, eSetKind::Summary, 3},           // subject
    {3, eSetKind::Summary, 4},            // author
    {6, eSetKind::Summary, 5},            // keywords
    {2, eSetKind::Summary, 6},            // comments
    {8, eSetKind::Summary, 9},            // revision number
    {27, eSetKind::DocumentSummary, 2},   // category
    {25, eSetKind::DocumentSummary, 14},  // manager
    {26, eSetKind::DocumentSummary, 15},  // company
};

struct Place {
    eSetKind set;
    DWORD id;
};

Place PlaceOf(int number) {
    const auto* row =
        std::find_if(std::begin(kOfficeRows), std::end(kOfficeRows),
                     [number](const OfficeRow& each) { return each.number == number; });
    if (row != std::end(kOfficeRows)) return {row->set, row->id};
    return {eSetKind::Product, static_cast<DWORD>(number)};
}

bool FindAt(DocumentProperties& document, const Place& place, PropertyValue& value) {
    return document.Find(place.set, place.id, value) == S_OK;
}

// In local time, by the rule that held at that moment. All zero and false for what is no date.
bool ToLocalDate(const PropertyValue& value, SYSTEMTIME* date) {
    *date = SYSTEMTIME{};
    if (value.type == VT_DATE) {
        SysTimeFromOleDate(value.real, date);
        return date->wMonth != 0;
    }
    if (value.type != VT_FILETIME || mddoc::Ticks(value.time) == 0) return false;
    SYSTEMTIME utc{};
    if (!FileTimeToSystemTime(&value.time, &utc) ||
        !SystemTimeToTzSpecificLocalTime(nullptr, &utc, date)) {
        *date = SYSTEMTIME{};
        return false;
    }
    return true;
}

}  // namespace

struct MDxProperties::State {
    DocumentProperties document;
    MDxGeneralProperties general{document};
    MDxControlProperties control{document};
    MDxCustomProperties custom{document};
};

namespace {

// The buffers of the object that went last, for the next: a search makes one for each file.
std::unique_ptr<MDxProperties::State>& SpareState() {
    static std::unique_ptr<MDxProperties::State> spare;
    return spare;
}

}  // namespace

MDxProperties::MDxProperties(bool, IMDxDv*) : state_(std::move(SpareState())) {
    if (state_ == nullptr) state_ = std::make_unique<State>();
}

MDxProperties::~MDxProperties() {
    state_->document.Close();
    SpareState() = std::move(state_);
}

HRESULT MDxProperties::Initialize(IMDxDv* callback, bool write) {
    return callback == nullptr && !write ? S_OK : E_NOTIMPL;
}

HRESULT MDxProperties::InitProps(MDxFileNameNode& node, int, void*) {
    state_->custom.Forget();
    DocumentProperties& document = state_->document;
    const HRESULT status = document.Open(NativePathFromWide(node.GetFileName()), node.isPlainFile);
    if (status < 0) return status;
    if (node.facts_ == nullptr) node.facts_ = std::make_unique<MDxFileNameNode::Facts>();
    node.facts_->rootClass = document.RootClass();
    return status == S_FALSE ? kNoPropertySets : S_OK;
}

HRESULT MDxProperties::SetsStatus() const {
    const HRESULT failure = state_->document.SetsFailure();
    return failure == STG_E_DOCFILECORRUPT ? kSetUnreadable : failure;
}

MDxGeneralProperties& MDxProperties::GenProp() {
    return state_->general;
}
MDxControlProperties& MDxProperties::ControlProp() {
    return state_->control;
}
MDxCustomProperties& MDxProperties::CustomProp() {
    return state_->custom;
}

struct MDxGeneralProperties::State {
    DocumentProperties& document;
    PropertyValue value;
};

MDxGeneralProperties::MDxGeneralProperties(DocumentProperties& document)
    : state_(new State{document, {}}) {}
MDxGeneralProperties::~MDxGeneralProperties() = default;

const WCHAR* MDxGeneralProperties::Property(int id) {
    if (!FindAt(state_->document, PlaceOf(id), state_->value) || !state_->value.IsText()) {
        return nullptr;
    }
    return state_->value.text.c_str();
}

bool MDxGeneralProperties::GetDateValue(int id, SYSTEMTIME* date) {
    *date = SYSTEMTIME{};
    return FindAt(state_->document, PlaceOf(id), state_->value) && ToLocalDate(state_->value, date);
}

bool MDxGeneralProperties::GetCurrencyValue(int id, LONGLONG* value) {
    *value = 0;
    if (!FindAt(state_->document, PlaceOf(id), state_->value) || state_->value.type != VT_CY) {
        return false;
    }
    *value = state_->value.number;
    return true;
}

bool MDxGeneralProperties::GetLongValue(int id, LONG* value) {
    *value = 0;
    if (!FindAt(state_->document, PlaceOf(id), state_->value) || state_->value.type != VT_I4) {
        return false;
    }
    *value = static_cast<LONG>(state_->value.number);
    return true;
}

bool MDxGeneralProperties::GetGuidValue(int id, GUID* value) {
    ClearRevId(value);
    if (!FindAt(state_->document, PlaceOf(id), state_->value) || state_->value.type != VT_CLSID) {
        return false;
    }
    *value = state_->value.guid;
    return true;
}

bool MDxGeneralProperties::IsUnreadable(int id) const {
    return state_->document.SetStatus(PlaceOf(id).set) < 0;
}

struct MDxControlProperties::State {
    DocumentProperties& document;
    PropertyValue value;

    bool Find(int id) {
        return FindAt(document, {eSetKind::Product, mdfacts::kControlBase + static_cast<DWORD>(id)},
                      value);
    }
};

MDxControlProperties::MDxControlProperties(DocumentProperties& document)
    : state_(new State{document, {}}) {}
MDxControlProperties::~MDxControlProperties() = default;

int MDxControlProperties::Property(int id, WCHAR* buffer, int cch) {
    if (cch <= 0) return 0;
    *buffer = 0;
    if (!state_->Find(id) || !state_->value.IsText()) return 0;
    const std::size_t length =
        std::min(state_->value.text.size(), static_cast<std::size_t>(cch) - 1);
    state_->value.text.copy(buffer, length);
    buffer[length] = 0;
    return static_cast<int>(length);
}

bool MDxControlProperties::GetDatePropertyValue(int id, SYSTEMTIME* date) {
    *date = SYSTEMTIME{};
    return state_->Find(id) && ToLocalDate(state_->value, date);
}

bool MDxControlProperties::IsUnreadable() const {
    return state_->document.SetStatus(eSetKind::Product) < 0;
}

struct MDxCustomProperty {
    WText name;
    PropertyValue value;
};

struct MDxCustomProperties::State {
    DocumentProperties& document;
    MDxCustomProperty last;  // the property asked for last, when `found`
    bool asked = false;
    bool found = false;
};

MDxCustomProperties::MDxCustomProperties(DocumentProperties& document)
    : state_(new State{document, {}}) {}
MDxCustomProperties::~MDxCustomProperties() = default;

void MDxCustomProperties::Forget() {
    state_->asked = false;
}

const MDxCustomProperty* MDxCustomProperties::Property(const WCHAR* name, bool create) {
    if (create) return nullptr;
    if (!state_->asked || state_->last.name != name) {
        state_->last.name = name;
        state_->asked = true;
        state_->found = state_->document.FindByName(name, state_->last.value) == S_OK;
    }
    return state_->found ? &state_->last : nullptr;
}

VARTYPE MDxCustomProperties::GetType(const WCHAR* name) {
    const MDxCustomProperty* property = Property(name, false);
    return property != nullptr ? property->value.type : static_cast<VARTYPE>(VT_EMPTY);
}

bool MDxCustomProperties::GetBoolValue(const WCHAR* name) {
    return GetType(name) == VT_BOOL && state_->last.value.number != 0;
}

bool MDxCustomProperties::GetDateValue(const WCHAR* name, SYSTEMTIME* date) {
    *date = SYSTEMTIME{};
    const MDxCustomProperty* property = Property(name, false);
    return property != nullptr && ToLocalDate(property->value, date);
}
