// Native build: BSTR and VARIANT. A BSTR is the length in bytes, the units and a terminator in one
// block; it points at the units.
#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/com/dispatch_api.h"
#include "platform/text/date_parse.h"

namespace {

constexpr std::size_t kPrefix = 16;  // keeps the units aligned as the block is
constexpr UINT kMostUnits = 0x3FFFFFF0u;

UINT* LengthOf(BSTR text) {
    return reinterpret_cast<UINT*>(reinterpret_cast<unsigned char*>(text) - sizeof(UINT));
}

bool IsTypeToClear(VARTYPE type) {
    switch (type) {
        case VT_EMPTY:
        case VT_NULL:
        case VT_I2:
        case VT_I4:
        case VT_R8:
        case VT_DATE:
        case VT_BSTR:
        case VT_DISPATCH:
        case VT_BOOL:
            return true;
        default:
            return false;
    }
}

}  // namespace

BSTR SysAllocString(const WCHAR* text) {
    if (text == nullptr) return nullptr;
    const std::size_t size = std::char_traits<WCHAR>::length(text);
    if (size > kMostUnits) return nullptr;
    const std::size_t cb = size * sizeof(WCHAR);
    auto* block = static_cast<unsigned char*>(std::calloc(1, kPrefix + cb + sizeof(WCHAR)));
    if (block == nullptr) return nullptr;
    BSTR result = reinterpret_cast<BSTR>(block + kPrefix);
    *LengthOf(result) = static_cast<UINT>(cb);
    std::memcpy(result, text, cb);
    return result;
}

void SysFreeString(BSTR text) {
    if (text != nullptr) std::free(reinterpret_cast<unsigned char*>(text) - kPrefix);
}

UINT SysStringLen(BSTR text) {
    return text == nullptr ? 0 : static_cast<UINT>(*LengthOf(text) / sizeof(WCHAR));
}

void VariantInit(VARIANTARG* value) {
    value->vt = VT_EMPTY;
}

HRESULT VariantClear(VARIANTARG* value) {
    if (!IsTypeToClear(value->vt)) return DISP_E_BADVARTYPE;
    if (value->vt == VT_BSTR) SysFreeString(value->bstrVal);
    if (value->vt == VT_DISPATCH && value->pdispVal != nullptr) value->pdispVal->Release();
    value->vt = VT_EMPTY;
    return S_OK;
}

HRESULT VariantChangeType(VARIANTARG* result, const VARIANTARG* source, USHORT flags,
                          VARTYPE type) {
    if (flags != 0 || source->vt != VT_BSTR || type != VT_DATE) return E_NOTIMPL;
    DATE date = 0;
    const UINT cch = SysStringLen(source->bstrVal);
    if (cch == 0 || !ParseDate({source->bstrVal, cch}, date)) return DISP_E_TYPEMISMATCH;
    const HRESULT cleared = VariantClear(result);
    if (FAILED(cleared)) return cleared;
    result->vt = VT_DATE;
    result->date = date;
    return S_OK;
}
