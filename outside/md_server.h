// Md.dll: the reading server, and the running application as far as it is asked.
#pragma once

#include "outside/library_api.h"
#include "platform/win.h"

// What the server works in: a workspace of the user.
struct IQxWorkContext : public IUnknown {
    // A text for the caller to free, or null.
    virtual HRESULT STDMETHODCALLTYPE GetWorkContextName(BSTR* name) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetWorkContextFolder(BSTR* folder) = 0;

protected:
    ~IQxWorkContext() = default;
};

struct IQxLecternServer : public IUnknown {
    // One reference for the caller.
    virtual HRESULT STDMETHODCALLTYPE GetWorkContext(IQxWorkContext** context) = 0;

protected:
    ~IQxLecternServer() = default;
};

// The server's properties, by dispatch id.
struct IQxServerProperties : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetTextProperty(LONG dispatchId, BSTR* text) = 0;

protected:
    ~IQxServerProperties() = default;
};

inline constexpr IID IID_IQxServerProperties = {
    0xC343ED82, 0xA129, 0x11D3, {0xB7, 0x99, 0x00, 0x60, 0xB0, 0xF1, 0x59, 0xEF}};
inline constexpr LONG kServerUserNameId = 0x03002511;

// The reading server of this machine: one reference for the caller in `*server`, null on failure.
// `name` (`cch` units, may be null) gets the context's name, empty when it doesn't fit.
MD_API HRESULT MDxGetLecternServer(IQxLecternServer** server, bool create, WCHAR* name, DWORD cch);
