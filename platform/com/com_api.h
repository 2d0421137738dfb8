// Native build: the interface base, BSTR and VARIANT as far as the product uses them. No class is
// registered natively, so a look-up of one fails as on a machine without it.
#pragma once

#include "platform/base/types.h"

inline constexpr IID IID_IUnknown = {0x00000000, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

struct IUnknown {
    virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) = 0;
    virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
    virtual ULONG STDMETHODCALLTYPE Release() = 0;

protected:
    ~IUnknown() = default;
};

using BSTR = WCHAR*;
// A text with its length in bytes in front; released with SysFreeString. Null when out of memory.
BSTR SysAllocString(const WCHAR* text);
void SysFreeString(BSTR text);
UINT SysStringLen(BSTR text);

using VARTYPE = USHORT;
enum VARENUM : VARTYPE {
    VT_EMPTY = 0,
    VT_NULL = 1,
    VT_I2 = 2,
    VT_I4 = 3,
    VT_R4 = 4,
    VT_R8 = 5,
    VT_CY = 6,
    VT_DATE = 7,
    VT_BSTR = 8,
    VT_DISPATCH = 9,
    VT_ERROR = 10,
    VT_BOOL = 11,
    VT_VARIANT = 12,
    VT_DECIMAL = 14,
    VT_I1 = 16,
    VT_UI1 = 17,
    VT_UI2 = 18,
    VT_UI4 = 19,
    VT_I8 = 20,
    VT_UI8 = 21,
    VT_INT = 22,
    VT_UINT = 23,
    VT_LPSTR = 30,
    VT_LPWSTR = 31,
    VT_FILETIME = 64,
    VT_BLOB = 65,
    VT_STREAM = 66,
    VT_STORAGE = 67,
    VT_STREAMED_OBJECT = 68,
    VT_STORED_OBJECT = 69,
    VT_BLOB_OBJECT = 70,
    VT_CF = 71,
    VT_CLSID = 72,
    VT_VECTOR = 0x1000,
    VT_ARRAY = 0x2000,
};

struct IDispatch;
struct VARIANT {
    VARTYPE vt;
    WORD wReserved1;
    WORD wReserved2;
    WORD wReserved3;
    union {
        LONG lVal;
        SHORT iVal;
        double dblVal;
        DATE date;
        BSTR bstrVal;
        IUnknown* punkVal;
        IDispatch* pdispVal;
    };
};
using VARIANTARG = VARIANT;

void VariantInit(VARIANTARG* value);
HRESULT VariantClear(VARIANTARG* value);
// Only VT_BSTR to VT_DATE with flags 0 (E_NOTIMPL else); the result may be the source.
// DISP_E_TYPEMISMATCH for a text that is no date.
HRESULT VariantChangeType(VARIANTARG* result, const VARIANTARG* source, USHORT flags, VARTYPE type);
