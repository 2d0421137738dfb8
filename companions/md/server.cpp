// The reading server of the machine. No server is registered with this stand-in: the look-up fails
// as on a machine without one, and a caller brings its own.
#include "outside/md_server.h"

HRESULT MDxGetLecternServer(IQxLecternServer** server, bool, WCHAR* name, DWORD cch) {
    *server = nullptr;
    if (name != nullptr && cch > 0) *name = 0;
    return REGDB_E_CLASSNOTREG;
}
