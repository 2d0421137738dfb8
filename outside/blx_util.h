// BLx.dll: places and help ids.
#pragma once

#include "outside/blx_string.h"

class BLX_API BLxUtil {
public:
    // The path of the resource library `name`, which lies beside the libraries; empty on failure.
    static BLxWString GetLPResourceDLLPath(const WCHAR* name);
};

class BLX_API BLx {
public:
    // The present workspace folder, possibly empty.
    static BLxWString GetWorkspacePath();
    // The folder of the workspaces.
    static void GetWorkspacesDir(BLxWString& folder);
};

// Ties a help id to a template's name for the time that the object lives.
class BLX_API BLxContextHelpId {
public:
    BLxContextHelpId(DWORD id, const WCHAR* templateName);
    ~BLxContextHelpId();
    BLxContextHelpId(const BLxContextHelpId&) = delete;
    BLxContextHelpId& operator=(const BLxContextHelpId&) = delete;

    // The id of a template's name, 0 when no object ties one.
    static DWORD Find(const WCHAR* templateName);

private:
    DWORD id_;
};
