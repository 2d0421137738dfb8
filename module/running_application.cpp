#include "module/running_application.h"

#include "platform/owner.h"

namespace {

template <typename Interface>
void ReleaseInterface(Interface* object) {
    object->Release();
}
using UnknownOwner = Owner<IUnknown*, ReleaseInterface<IUnknown>>;
using ApplicationOwner = Owner<Application*, ReleaseInterface<Application>>;
using DispatchOwner = Owner<IDispatch*, ReleaseInterface<IDispatch>>;

}  // namespace

HRESULT ReadDispatchProperty(IDispatch& object, DISPID id, VARTYPE type, VARIANT& value) {
    DISPPARAMS none = {};
    VariantInit(&value);
    HRESULT status = object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                   &value, nullptr, nullptr);
    if (SUCCEEDED(status) && value.vt != type) status = DISP_E_TYPEMISMATCH;
    if (FAILED(status)) VariantClear(&value);
    return status;
}

HRESULT FindRunningApplication(Application** application) {
    *application = nullptr;
    CLSID id{};
    HRESULT status = CLSIDFromProgID(kApplicationProgId, &id);
    if (FAILED(status)) return status;
    UnknownOwner running;
    status = GetActiveObject(id, nullptr, running.out());
    if (FAILED(status) || !running) return FAILED(status) ? status : E_NOINTERFACE;
    void* found = nullptr;
    status = running.get()->QueryInterface(IID_Application, &found);
    *application = static_cast<Application*>(found);
    return status;
}

HRESULT ReadApplicationContext(BSTR* name) {
    *name = nullptr;
    ApplicationOwner application;
    HRESULT status = FindRunningApplication(application.out());
    if (!application) return FAILED(status) ? status : E_NOINTERFACE;
    VARIANT value;
    status = ReadDispatchProperty(*application.get(), kApplicationContextId, VT_DISPATCH, value);
    const DispatchOwner context(SUCCEEDED(status) ? value.pdispVal : nullptr);
    if (!context) return status;
    status = ReadDispatchProperty(*context.get(), kContextNameId, VT_BSTR, value);
    if (SUCCEEDED(status)) *name = value.bstrVal;
    return status;
}
