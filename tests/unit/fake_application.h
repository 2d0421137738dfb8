// A running application: it works in one context, and each document "one" refers to the "two"
// beside it.
#pragma once

#include "outside/md_server.h"
#include "platform/wtext.h"

class FakeApplication : public Application {
public:
    virtual ~FakeApplication() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override {
        const bool known = riid == IID_IUnknown || riid == IID_IDispatch || riid == IID_Application;
        *ppv = known ? static_cast<Application*>(this) : nullptr;
        if (known) AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPWSTR* names, UINT, LCID,
                                            DISPID* ids) override {
        *ids = kRelated;
        return WTextView(*names) == kRelatedDocumentsName ? S_OK : E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO*, UINT*) override {
        if (id == kApplicationContextId && flags == DISPATCH_PROPERTYGET) {
            AddRef();
            result->vt = VT_DISPATCH;
            result->pdispVal = this;
        } else if (id == kContextNameId && flags == DISPATCH_PROPERTYGET) {
            Tell(result, TEXT("Gear pump"));
        } else if (id == kRelated && parameters->cArgs == 2 && parameters->rgvarg[0].lVal == 15 &&
                   (flags & DISPATCH_METHOD) != 0) {
            WText name = parameters->rgvarg[1].bstrVal;
            const std::size_t at = name.rfind(TEXT("one"));
            Tell(result,
                 at == WText::npos ? WText() : name.replace(at, 3, TEXT("two")) + TEXT("\n\n"));
        } else {
            return E_FAIL;
        }
        return S_OK;
    }

    ULONG references = 1;

private:
    static constexpr DISPID kRelated = 1;
    static void Tell(VARIANT* result, const WText& text) {
        result->vt = VT_BSTR;
        result->bstrVal = SysAllocString(text.c_str());
    }
};
