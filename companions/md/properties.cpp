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

// In local time, by the rule that held at that moment. All zero unless the result is S_OK; S_FALSE
// is how writers say that there is none.
HRESULT ToLocalDate(const PropertyValue& value, SYSTEMTIME* date) {
    *date = SYSTEMTIME{};
    if (value.type == VT_DATE) {
        SysTimeFromOleDate(value.real, date);
        return date->wMonth != 0 ? S_OK : DISP_E_TYPEMISMATCH;
    }
    if (value.type != VT_FILETIME) return DISP_E_TYPEMISMATCH;
    if (mddoc::Ticks(value.time) == 0) return S_FALSE;
    SYSTEMTIME utc{};
    if (FileTimeToSystemTime(&value.time, &utc) &&
        SystemTimeToTzSpecificLocalTime(nullptr, &utc, date)) {
        return S_OK;
    }
    *date = SYSTEMTIME{};
    return DISP_E_TYPEMISMATCH;
}

// A look at a value that has to be of a certain type, and what came of it.
struct Reading {
    HRESULT status = S_FALSE;
    PropertyValue value;

    void Find(DocumentProperties& document, const Place& place) {
        status = document.Find(place.set, place.id, value);
        // A place that is kept free holds no value.
        if (status == S_OK && (value.type == VT_EMPTY || value.type == VT_NULL)) status = S_FALSE;
    }
    bool Is(VARTYPE type) {
        if (status == S_OK && value.type != type) status = DISP_E_TYPEMISMATCH;
        return status == S_OK;
    }
    bool IsText() {
        if (status == S_OK && !value.IsText()) status = DISP_E_TYPEMISMATCH;
        return status == S_OK;
    }
    bool IsDate(SYSTEMTIME* date) {
        *date = SYSTEMTIME{};
        if (status == S_OK) status = ToLocalDate(value, date);
        return status == S_OK;
    }
};

// What the callers of the library are told of a value that is there and has no readable form.
HRESULT PublicStatus(HRESULT status) {
    const bool isForm = status == DISP_E_BADVARTYPE || status == DISP_E_OVERFLOW ||
                        status == HRESULT_FROM_WIN32(ERROR_NO_UNICODE_TRANSLATION);
    return isForm ? DISP_E_TYPEMISMATCH : status;
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
    mdfacts::openFacts = nullptr;
    state_->document.Close();
    SpareState() = std::move(state_);
}

HRESULT MDxProperties::Initialize(IMDxDv* callback, bool write) {
    return callback == nullptr && !write ? S_OK : E_NOTIMPL;
}

HRESULT MDxProperties::InitProps(MDxFileNameNode& node, int, void*) {
    state_->custom.Forget();
    mdfacts::openFacts = nullptr;
    DocumentProperties& document = state_->document;
    const HRESULT status = document.Open(NativePathFromWide(node.GetFileName()), node.isPlainFile);
    if (status < 0) return status;
    if (node.facts_ == nullptr) node.facts_ = std::make_unique<MDxFileNameNode::Facts>();
    *node.facts_ = {status, document.RootClass(), document.Stamp()};
    if (status == S_OK) {
        mdfacts::openFacts = node.facts_.get();
        return S_OK;
    }
    // What should be a document and isn't has no properties that anybody could know.
    if (!mdfacts::IsVerified(node.GetFileName())) return kNoPropertySets;
    document.Close();
    return STG_E_INVALIDHEADER;
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
    Reading last;

    Reading& Look(int id) {
        last.Find(document, PlaceOf(id));
        return last;
    }
};

MDxGeneralProperties::MDxGeneralProperties(DocumentProperties& document)
    : state_(new State{document, {}}) {}
MDxGeneralProperties::~MDxGeneralProperties() = default;

const WCHAR* MDxGeneralProperties::Property(int id) {
    return state_->Look(id).IsText() ? state_->last.value.text.c_str() : nullptr;
}

bool MDxGeneralProperties::GetDateValue(int id, SYSTEMTIME* date) {
    return state_->Look(id).IsDate(date);
}

bool MDxGeneralProperties::GetCurrencyValue(int id, LONGLONG* value) {
    const bool found = state_->Look(id).Is(VT_CY);
    *value = found ? state_->last.value.number : 0;
    return found;
}

bool MDxGeneralProperties::GetLongValue(int id, LONG* value) {
    const bool found = state_->Look(id).Is(VT_I4);
    *value = found ? static_cast<LONG>(state_->last.value.number) : 0;
    return found;
}

bool MDxGeneralProperties::GetGuidValue(int id, GUID* value) {
    ClearRevId(value);
    const bool found = state_->Look(id).Is(VT_CLSID);
    if (found) *value = state_->last.value.guid;
    return found;
}

HRESULT MDxGeneralProperties::Status() const {
    return PublicStatus(state_->last.status);
}

struct MDxControlProperties::State {
    DocumentProperties& document;
    Reading last;

    Reading& Look(int id) {
        last.Find(document, {eSetKind::Product, mdfacts::kControlBase + static_cast<DWORD>(id)});
        return last;
    }
};

MDxControlProperties::MDxControlProperties(DocumentProperties& document)
    : state_(new State{document, {}}) {}
MDxControlProperties::~MDxControlProperties() = default;

int MDxControlProperties::Property(int id, WCHAR* buffer, int cch) {
    if (cch <= 0) return 0;
    *buffer = 0;
    if (!state_->Look(id).IsText()) return 0;
    const WText& text = state_->last.value.text;
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(cch) - 1);
    text.copy(buffer, length);
    buffer[length] = 0;
    return static_cast<int>(length);
}

bool MDxControlProperties::GetDatePropertyValue(int id, SYSTEMTIME* date) {
    return state_->Look(id).IsDate(date);
}

HRESULT MDxControlProperties::Status() const {
    return PublicStatus(state_->last.status);
}

struct MDxCustomProperty {
    WText name;
    PropertyValue value;
};

struct MDxCustomProperties::State {
    DocumentProperties& document;
    MDxCustomProperty last;  // the property asked for last, when `found` is S_OK
    bool asked = false;
    HRESULT found = S_FALSE;
    HRESULT status = S_FALSE;  // of the last question
};

MDxCustomProperties::MDxCustomProperties(DocumentProperties& document)
    : state_(new State{document, {}}) {}
MDxCustomProperties::~MDxCustomProperties() = default;

void MDxCustomProperties::Forget() {
    state_->asked = false;
    state_->status = S_FALSE;
}

const MDxCustomProperty* MDxCustomProperties::Property(const WCHAR* name, bool create) {
    if (create) return nullptr;
    if (!state_->asked || state_->last.name != name) {
        state_->last.name = name;
        state_->asked = true;
        state_->found = state_->document.FindByName(name, state_->last.value);
    }
    state_->status = state_->found;
    return state_->found == S_OK ? &state_->last : nullptr;
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
    if (property != nullptr) state_->status = ToLocalDate(property->value, date);
    return state_->status == S_OK;
}

const WCHAR* MDxCustomProperties::GetTextValue(const WCHAR* name) {
    const MDxCustomProperty* property = Property(name, false);
    return property != nullptr && property->value.IsText() ? property->value.text.c_str() : nullptr;
}

bool MDxCustomProperties::GetNumberValue(const WCHAR* name, double* number) {
    constexpr double kTenThousandths = 10000.0;
    *number = 0;
    const VARTYPE type = GetType(name);
    const PropertyValue& value = state_->last.value;
    switch (type) {
        case VT_I1:
        case VT_UI1:
        case VT_I2:
        case VT_UI2:
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_I8:
            *number = static_cast<double>(value.number);
            return true;
        case VT_UI8:
            *number = static_cast<double>(static_cast<std::uint64_t>(value.number));
            return true;
        case VT_CY:
            *number = static_cast<double>(value.number) / kTenThousandths;
            return true;
        case VT_R4:
        case VT_R8:
            *number = value.real;
            return true;
        default:
            return false;
    }
}

HRESULT MDxCustomProperties::Status() const {
    return PublicStatus(state_->status);
}
