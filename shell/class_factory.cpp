#include "shell/class_factory.h"

#include "module/module_state.h"
#include "platform/new_or_null.h"
#include "shell/shell_ext.h"

SRxShellExtClassFactory::SRxShellExtClassFactory() {
    ++objectCount;
}

SRxShellExtClassFactory::~SRxShellExtClassFactory() {
    --objectCount;
}

HRESULT STDMETHODCALLTYPE SRxShellExtClassFactory::QueryInterface(REFIID riid, void** ppv) {
    *ppv = nullptr;
    if (riid != IID_IUnknown && riid != IID_IClassFactory) return E_NOINTERFACE;
    AddRef();
    *ppv = static_cast<IClassFactory*>(this);
    return S_OK;
}

ULONG STDMETHODCALLTYPE SRxShellExtClassFactory::AddRef() {
    return ++refCount;
}

ULONG STDMETHODCALLTYPE SRxShellExtClassFactory::Release() {
    const ULONG left = --refCount;
    if (left == 0) delete this;
    return left;
}

HRESULT STDMETHODCALLTYPE SRxShellExtClassFactory::CreateInstance(IUnknown* outer, REFIID riid,
                                                                  void** ppv) {
    *ppv = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    auto extension = NewOrNull<SRxShellExt>();
    if (extension == nullptr) return E_OUTOFMEMORY;
    const HRESULT status = extension->QueryInterface(riid, ppv);
    // With the first reference it is the caller's; refused, it goes.
    if (SUCCEEDED(status)) (void)extension.release();
    return status;
}

HRESULT STDMETHODCALLTYPE SRxShellExtClassFactory::LockServer(BOOL) {
    return E_NOTIMPL;
}

STDAPI DllGetClassObject(REFCLSID rclsid, REFIID riid, LPVOID* ppv) {
    *ppv = nullptr;
    if (rclsid != CLSID_SRxShellExt) return CLASS_E_CLASSNOTAVAILABLE;
    auto made = NewOrNull<SRxShellExtClassFactory>();
    if (made == nullptr) return E_OUTOFMEMORY;
    SRxShellExtClassFactory* const factory = made.release();
    const HRESULT status = factory->QueryInterface(riid, ppv);
    factory->Release();
    return status;
}

STDAPI DllCanUnloadNow() {
    return objectCount == 0 ? S_OK : S_FALSE;
}
