// Native build: the look-up of running objects, of which there are none.
#include "platform/com/dispatch_api.h"

HRESULT CLSIDFromProgID(LPCWSTR, CLSID* id) {
    *id = IID_NULL;
    return CO_E_CLASSSTRING;
}

HRESULT GetActiveObject(REFCLSID, void*, IUnknown** object) {
    *object = nullptr;
    return MK_E_UNAVAILABLE;
}
