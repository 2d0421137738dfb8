// The running application, as another process offers it: found by its ProgID, asked late-bound.
#pragma once

#include "outside/md_server.h"

// One reference for the caller in `*application`, null on failure.
[[nodiscard]] HRESULT FindRunningApplication(Application** application);

// The name of the context that the running application works in: a text for the caller to free, or
// null.
[[nodiscard]] HRESULT ReadApplicationContext(BSTR* name);

// A property's value of this type, left to the caller; another type is a failure.
[[nodiscard]] HRESULT ReadDispatchProperty(IDispatch& object, DISPID id, VARTYPE type,
                                           VARIANT& value);
