// Native build: the interfaces between a shell and its extensions, and dropped files.
#pragma once

#include "platform/com/com_api.h"
#include "platform/registry/registry_api.h"
#include "platform/windows/common_dialogs_api.h"

inline constexpr IID IID_IClassFactory = {
    0x00000001, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID IID_IDataObject = {0x0000010E, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID IID_IContextMenu = {
    0x000214E4, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID IID_IShellExtInit = {
    0x000214E8, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

#define STDAPI extern "C" __attribute__((visibility("default"))) HRESULT
// The entries that a module with classes has; the module defines them.
STDAPI DllGetClassObject(REFCLSID rclsid, REFIID riid, LPVOID* ppv);
STDAPI DllCanUnloadNow();

struct IClassFactory : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID riid, void** ppv) = 0;
    virtual HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) = 0;

protected:
    ~IClassFactory() = default;
};

using CLIPFORMAT = WORD;
inline constexpr CLIPFORMAT CF_HDROP = 15;
inline constexpr DWORD DVASPECT_CONTENT = 1;
inline constexpr DWORD TYMED_HGLOBAL = 1;
inline constexpr HRESULT DV_E_FORMATETC = SrHresult(0x80040064u);

struct DVTARGETDEVICE;
struct FORMATETC {
    CLIPFORMAT cfFormat;
    DVTARGETDEVICE* ptd;
    DWORD dwAspect;
    LONG lindex;
    DWORD tymed;
};
struct STGMEDIUM {
    DWORD tymed;
    HGLOBAL hGlobal;
    IUnknown* pUnkForRelease;
};

struct IEnumFORMATETC;
struct IEnumSTATDATA;
struct IAdviseSink;
struct IDataObject : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC* format, STGMEDIUM* medium) = 0;
    virtual HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC* in, FORMATETC* out) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetData(FORMATETC* format, STGMEDIUM* medium,
                                              BOOL release) = 0;
    virtual HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) = 0;
    virtual HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink,
                                              DWORD* connection) = 0;
    virtual HRESULT STDMETHODCALLTYPE DUnadvise(DWORD connection) = 0;
    virtual HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA** connections) = 0;

protected:
    ~IDataObject() = default;
};

inline constexpr UINT GCS_VERBA = 0;
inline constexpr UINT GCS_HELPTEXTA = 1;
inline constexpr UINT GCS_VERBW = 4;
inline constexpr UINT GCS_HELPTEXTW = 5;
inline constexpr UINT GCS_VALIDATEW = 6;

struct CMINVOKECOMMANDINFO {
    DWORD cbSize;
    DWORD fMask;
    HWND hwnd;
    const char* lpVerb;
    const char* lpParameters;
    const char* lpDirectory;
    int nShow;
    DWORD dwHotKey;
    HANDLE hIcon;
};

struct IContextMenu : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE QueryContextMenu(HMENU menu, UINT index, UINT firstId,
                                                       UINT lastId, UINT flags) = 0;
    virtual HRESULT STDMETHODCALLTYPE InvokeCommand(CMINVOKECOMMANDINFO* info) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetCommandString(UINT_PTR command, UINT type, UINT* reserved,
                                                       char* name, UINT maxChars) = 0;

protected:
    ~IContextMenu() = default;
};

struct IShellExtInit : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE Initialize(LPCITEMIDLIST folder, IDataObject* dataObject,
                                                 HKEY key) = 0;

protected:
    ~IShellExtInit() = default;
};

// Memory at a fixed place, all zero; other flags fail with ERROR_NOT_SUPPORTED.
inline constexpr UINT GPTR = 0x0040;
HGLOBAL GlobalAlloc(UINT flags, SIZE_T bytes);

// The head of a block of dropped files: their names follow at `pFiles`, each with its terminator,
// and one more at the end.
struct DROPFILES {
    DWORD pFiles;
    POINT pt;
    BOOL fNC;
    BOOL fWide;
};
using HDROP = HGLOBAL;
// The count of files for the index 0xFFFFFFFF. Else the units of a name without the terminator, or,
// where there is room in a buffer of `cch` units, as many as were copied; 0 past the last file.
// Names that are not wide give ERROR_NOT_SUPPORTED and 0.
UINT DragQueryFileW(HDROP drop, UINT index, LPWSTR buffer, UINT cch);
// Only TYMED_HGLOBAL; frees the memory, or leaves that to the owner that the medium names.
void ReleaseStgMedium(STGMEDIUM* medium);
