// Native build: late-bound objects, and the look-up of one that is running. Nothing is registered
// natively, so every look-up fails as on a machine where the class is unknown.
#pragma once

#include "platform/com/com_api.h"

inline constexpr IID IID_IDispatch = {0x00020400, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID IID_NULL = {};

using DISPID = LONG;
inline constexpr WORD DISPATCH_METHOD = 1;
inline constexpr WORD DISPATCH_PROPERTYGET = 2;

struct DISPPARAMS {
    VARIANTARG* rgvarg;  // the last argument first
    DISPID* rgdispidNamedArgs;
    UINT cArgs;
    UINT cNamedArgs;
};
struct EXCEPINFO;
struct ITypeInfo;

struct IDispatch : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID riid, LPWSTR* names, UINT count,
                                                    LCID locale, DISPID* ids) = 0;
    virtual HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID riid, LCID locale, WORD flags,
                                             DISPPARAMS* parameters, VARIANT* result,
                                             EXCEPINFO* exception, UINT* badArgument) = 0;

protected:
    ~IDispatch() = default;
};

// CO_E_CLASSSTRING, and the class id all zero.
HRESULT CLSIDFromProgID(LPCWSTR name, CLSID* id);
// MK_E_UNAVAILABLE, and null.
HRESULT GetActiveObject(REFCLSID id, void* reserved, IUnknown** object);
