// Carries calls of the application's interface from process to process, as the application's own
// registration would: it is called late-bound, so the proxy of IDispatch serves. Wine's gives that
// one by its own name alone.
#pragma once

#include "outside/md_server.h"

class ApplicationProxy : public IPSFactoryBuffer {
public:
    // For this process, until it ends.
    bool Register() {
        constexpr CLSID kLateBound = {
            0x00020420, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
        constexpr CLSID kOwn = {
            0x5E0A91C4, 0x22D7, 0x4F5B, {0x8C, 0x36, 0x0B, 0xD4, 0x19, 0xA7, 0x6E, 0x02}};
        void* found = nullptr;
        DWORD cookie = 0;
        if (FAILED(CoGetClassObject(kLateBound, CLSCTX_INPROC_SERVER, nullptr, IID_IPSFactoryBuffer,
                                    &found))) {
            return false;
        }
        inner_ = static_cast<IPSFactoryBuffer*>(found);
        return SUCCEEDED(CoRegisterClassObject(kOwn, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                               &cookie)) &&
               SUCCEEDED(CoRegisterPSClsid(IID_Application, kOwn));
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override {
        const bool known = riid == IID_IUnknown || riid == IID_IPSFactoryBuffer;
        *ppv = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    // It lives as long as its process.
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateProxy(IUnknown* outer, REFIID, IRpcProxyBuffer** proxy,
                                          void** ppv) override {
        return inner_->CreateProxy(outer, IID_IDispatch, proxy, ppv);
    }
    HRESULT STDMETHODCALLTYPE CreateStub(REFIID, IUnknown* server, IRpcStubBuffer** stub) override {
        return inner_->CreateStub(IID_IDispatch, server, stub);
    }

private:
    IPSFactoryBuffer* inner_ = nullptr;
};
