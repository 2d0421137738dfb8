// The class object of the shell extension, and with it the two entries that every module with
// classes has.
#pragma once

#include "module/module_api.h"
#include "platform/win.h"

// Counted, and made with one reference. Locks aren't counted: what keeps the module is its objects.
class SR_API SRxShellExtClassFactory : public IClassFactory {
public:
    SRxShellExtClassFactory();
    SRxShellExtClassFactory(const SRxShellExtClassFactory&) = delete;
    SRxShellExtClassFactory& operator=(const SRxShellExtClassFactory&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID riid, void** ppv) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;
    virtual ~SRxShellExtClassFactory();

private:
    ULONG refCount = 1;
};
