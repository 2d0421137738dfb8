// The dialog object without a window: its listener, its server.
#include "dialog/find_dialog.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "platform/wtext.h"

namespace {

class Listener : public SRxFindDlgNotify {
public:
    virtual ~Listener() = default;
    void Reserved() override { ADD_FAILURE(); }
    void OnOK(bool needsDocumentProperties) override { ok += needsDocumentProperties ? "1" : "0"; }
    void OnFindDone() override {}
    void OnCancel() override {}

    std::string ok;
};

TEST(FindDialog, TellsWhetherPropertiesAreNeeded) {
    Listener listener;
    SRxFindDialog dialog(nullptr, nullptr, nullptr, nullptr, &listener);
    dialog.NotifyOnOK();
    SRxCriteriaNode** end = &dialog.criteriaHead;
    for (const LONG property : {PROP_FILE_NAME, PROP_COMP_COLOR, PROP_FAS_NAME, kTitle}) {
        *end = new SRxCriteriaNode(property, COND_CONTAINS, JOIN_AND, TEXT("x"));
        if (property == PROP_FAS_NAME) (*end)->propertyCategory = eCategoryFasSketch;
        end = &(*end)->nextCriterion;
        dialog.NotifyOnOK();
    }
    EXPECT_EQ("00001", listener.ok);
}

// A server whose texts are as long as asked, and which counts its references.
class Server : public IQxLecternServer, public IQxServerProperties, public IQxWorkContext {
public:
    virtual ~Server() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override {
        *ppv = riid == IID_IQxServerProperties ? static_cast<IQxServerProperties*>(this) : nullptr;
        if (*ppv == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPWSTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*,
                                     VARIANT* result, EXCEPINFO*, UINT*) override {
        EXPECT_EQ(kServerUserNameId, id);
        EXPECT_EQ(DISPATCH_PROPERTYGET, flags);
        result->vt = VT_BSTR;
        result->bstrVal = SysAllocString(WText(userLength, 'u').c_str());
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetWorkContext(IQxWorkContext** context) override {
        AddRef();
        return *context = this, S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetWorkContextName(BSTR* name) override {
        *name = isNameless ? nullptr : SysAllocString(WText(nameLength, 'n').c_str());
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetWorkContextFolder(BSTR* folder) override {
        return *folder = nullptr, S_OK;
    }

    ULONG references = 1;
    std::size_t userLength = 0;
    std::size_t nameLength = 0;
    bool isNameless = false;
};

TEST(FindDialog, TextsOfTheServerAreWholeOrNotThere) {
    const struct {
        std::size_t sent;
        std::size_t user;     // of 128 units
        std::size_t context;  // of 261, and of the caller's 20
        std::size_t small;
    } kRows[] = {{0, 0, 0, 0},     {19, 19, 19, 19}, {20, 20, 20, 0}, {127, 127, 127, 0},
                 {128, 0, 128, 0}, {260, 0, 260, 0}, {261, 0, 0, 0}};
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.sent);
        Server server;
        server.userLength = server.nameLength = row.sent;
        {
            SRxFindDialog dialog(nullptr, nullptr, &server, nullptr, nullptr);
            EXPECT_EQ(2u, server.references);
            EXPECT_TRUE(dialog.Initialize());
            EXPECT_EQ(row.user, wtext::Length(dialog.appUserName));
            EXPECT_NE(0u, wtext::Length(dialog.loginUserName));
            WCHAR text[300];
            HRESULT status = E_FAIL;
            EXPECT_EQ(&server, dialog.GetServer(&status, text, 300));
            EXPECT_EQ(S_OK, status);
            EXPECT_EQ(row.context, wtext::Length(text));
            // Nothing is running that could be asked instead.
            server.isNameless = true;
            EXPECT_EQ(&server, dialog.GetServer(&status, text, 300));
            EXPECT_EQ(S_OK, status) << "the server's answer counts";
            EXPECT_EQ(0, text[0]);
            server.isNameless = false;
            (void)dialog.GetServer(nullptr, text, 20);
            EXPECT_EQ(row.small, wtext::Length(text));
        }
        EXPECT_EQ(1u, server.references) << "every reference was given back";
    }
}

TEST(FindDialog, InTheApplicationNoServerIsMade) {
    SRxFindDialog dialog(nullptr, nullptr, nullptr, nullptr, nullptr);
    HRESULT status = E_FAIL;
    dialog.SetInApp(true);
    EXPECT_EQ(nullptr, dialog.GetServer(&status, nullptr, 0));
    EXPECT_EQ(S_OK, status) << "nobody was asked";
    for (const bool inApp : {true, false}) {
        dialog.SetInApp(inApp);
        WCHAR text[5] = TEXT("old");
        EXPECT_EQ(nullptr, dialog.GetServer(&status, text, 5));
        EXPECT_GT(0, std::exchange(status, S_OK)) << "no server is there, nor an application";
        EXPECT_EQ(0, text[0]);
    }
}

}  // namespace
