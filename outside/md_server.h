// Md.dll: the reading server, and the running application as far as it is asked.
#pragma once

#include "outside/library_api.h"
#include "platform/system.h"

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
struct IQxServerProperties : public IDispatch {
protected:
    ~IQxServerProperties() = default;
};

inline constexpr IID IID_IQxServerProperties = {
    0xC343ED82, 0xA129, 0x11D3, {0xB7, 0x99, 0x00, 0x60, 0xB0, 0xF1, 0x59, 0xEF}};
inline constexpr LONG kServerUserNameId = 0x03002511;

// The reading server of this machine: one reference for the caller in `*server`, null on failure.
// `name` (`cch` units, may be null) gets the context's name, empty when it doesn't fit.
MD_API HRESULT MDxGetLecternServer(IQxLecternServer** server, bool create, WCHAR* name, DWORD cch);

// The running application, found by its ProgID.
struct Application : public IDispatch {
protected:
    ~Application() = default;
};

inline constexpr const WCHAR* kApplicationProgId = TEXT("Halvrine.Application");
inline constexpr IID IID_Application = {
    0x70109AA0, 0x63C1, 0x11D2, {0xB7, 0x8B, 0x00, 0x60, 0xB0, 0xEC, 0x02, 0x0B}};
// The application's property that gives the context it works in, and that one's name.
inline constexpr LONG kApplicationContextId = 0x03000127;
inline constexpr LONG kContextNameId = 0x03001F0F;
// The application's method, known by its name, that gives the documents which a document refers to:
// from the full name and the flags of GetRelatedDocs to a text with a full name a line.
inline constexpr const WCHAR* kRelatedDocumentsName = TEXT("RelatedDocuments");
