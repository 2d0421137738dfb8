// The entries of the module, as the shell and other modules of the application use them.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

#include "tests/unit/module_fixture.h"

namespace {

TEST_F(ModuleTest, ClassObject) {
    void* const poison = this;
    const struct {
        const char* label;
        const CLSID& rclsid;
        const IID& riid;
        HRESULT status;
    } kRows[] = {{"factory", CLSID_SRxShellExt, IID_IClassFactory, S_OK},
                 {"unknown", CLSID_SRxShellExt, IID_IUnknown, S_OK},
                 {"wrong interface", CLSID_SRxShellExt, IID_IContextMenu, E_NOINTERFACE},
                 {"wrong class", IID_IUnknown, IID_IClassFactory, CLASS_E_CLASSNOTAVAILABLE}};
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.label);
        void* made = poison;
        EXPECT_EQ(row.status, Module().getClassObject(row.rclsid, row.riid, &made));
        EXPECT_EQ(row.status == S_OK ? S_FALSE : S_OK, Module().canUnloadNow());
        if (row.status == S_OK) {
            EXPECT_EQ(0u, static_cast<IUnknown*>(made)->Release());
        } else {
            EXPECT_EQ(nullptr, made);
        }
    }
}

TEST_F(ModuleTest, Factory) {
    void* made = nullptr;
    ASSERT_EQ(S_OK, Module().getClassObject(CLSID_SRxShellExt, IID_IClassFactory, &made));
    auto* const factory = static_cast<IClassFactory*>(made);
    const struct {
        const char* label;
        IUnknown* outer;
        const IID& riid;
        HRESULT status;
    } kRows[] = {{"aggregated", factory, IID_IUnknown, CLASS_E_NOAGGREGATION},
                 {"refused", nullptr, IID_IDataObject, E_NOINTERFACE},
                 {"unknown", nullptr, IID_IUnknown, S_OK},
                 {"start", nullptr, IID_IShellExtInit, S_OK},
                 {"menu", nullptr, IID_IContextMenu, S_OK}};
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.label);
        void* object = this;
        EXPECT_EQ(row.status, factory->CreateInstance(row.outer, row.riid, &object));
        if (row.status != S_OK) {
            EXPECT_EQ(nullptr, object);
        } else {
            EXPECT_EQ(0u, static_cast<IUnknown*>(object)->Release());
        }
    }
    EXPECT_EQ(E_NOTIMPL, factory->LockServer(TRUE));
    EXPECT_EQ(0u, factory->Release());
}

TEST_F(ModuleTest, InterfacesOfTheExtension) {
    SRxShellExt* const extension = MakeExtension();
    void* unknown = nullptr;
    void* start = nullptr;
    void* other = this;
    EXPECT_EQ(S_OK, extension->QueryInterface(IID_IUnknown, &unknown));
    EXPECT_EQ(S_OK, extension->QueryInterface(IID_IShellExtInit, &start));
    EXPECT_EQ(unknown, start);
    EXPECT_NE(static_cast<void*>(extension), start);
    EXPECT_EQ(E_NOINTERFACE, extension->QueryInterface(IID_IDataObject, &other));
    EXPECT_EQ(nullptr, other);
    EXPECT_EQ(0, extension->QueryContextMenu(nullptr, 0, 1, 100, 0)) << "nothing is added";
    EXPECT_EQ(2u, extension->Release());
    EXPECT_EQ(1u, static_cast<IUnknown*>(unknown)->Release());
    EXPECT_EQ(0u, static_cast<IUnknown*>(start)->Release());
}

TEST_F(ModuleTest, CommandStrings) {
    const struct {
        const char* label;
        UINT type;
        UINT maxChars;
        HRESULT status;
        const WCHAR* text;
    } kRows[] = {
        {"whole", GCS_HELPTEXTW, 45, S_OK, TEXT("Finds design documents by their properties.")},
        {"cut", GCS_HELPTEXTW, 6, S_OK, TEXT("Finds")},
        {"one unit", GCS_HELPTEXTW, 1, S_OK, TEXT("")},
        {"verb", GCS_VERBW, 45, S_OK, TEXT("")},
        {"valid", GCS_VALIDATEW, 45, S_OK, TEXT("")},
        {"bytes", GCS_HELPTEXTA, 45, E_INVALIDARG, TEXT("")},
        {"unknown", 99, 45, E_INVALIDARG, TEXT("")}};
    SRxShellExt* const extension = MakeExtension();
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.label);
        WText buffer(46, TEXT('?'));
        auto* const name = reinterpret_cast<char*>(buffer.data());
        EXPECT_EQ(row.status,
                  extension->GetCommandString(0, row.type, nullptr, name, row.maxChars));
        EXPECT_EQ(WText(row.text), buffer.c_str());
        EXPECT_EQ('?', buffer[row.maxChars]);
    }
    char byte[] = {'?', '?'};
    EXPECT_EQ(E_INVALIDARG, extension->GetCommandString(0, GCS_VERBA, nullptr, byte, 1));
    EXPECT_EQ(0, byte[0]);
    EXPECT_EQ('?', byte[1]) << "one byte of room";
    extension->Release();
}

// Carries the names of dropped files, or none.
class Drop : public IDataObject {
public:
    explicit Drop(WText names) : names_(std::move(names)) {}
    virtual ~Drop() { EXPECT_EQ(1u, references); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** ppv) override {
        return *ppv = nullptr, E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) override {
        EXPECT_EQ(CF_HDROP, format->cfFormat);
        EXPECT_EQ(nullptr, format->ptd);
        EXPECT_EQ(DVASPECT_CONTENT, format->dwAspect);
        EXPECT_EQ(-1, format->lindex);
        EXPECT_EQ(TYMED_HGLOBAL, format->tymed);
        if (names_.empty()) return DV_E_FORMATETC;
        const std::size_t cb = (names_.size() + 1) * sizeof(WCHAR);
        medium->tymed = TYMED_HGLOBAL;
        medium->hGlobal = GlobalAlloc(GPTR, sizeof(DROPFILES) + cb);
        DROPFILES head{};
        head.pFiles = sizeof head;
        head.fWide = TRUE;
        std::memcpy(medium->hGlobal, &head, sizeof head);
        std::memcpy(static_cast<char*>(medium->hGlobal) + sizeof head, names_.c_str(), cb);
        medium->pUnkForRelease = nullptr;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD, IEnumFORMATETC**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }

    ULONG references = 1;

private:
    WText names_;
};

TEST_F(ModuleTest, TakesDroppedFiles) {
    Drop two(WText(TEXT("Z:\\one.hpa\0Z:\\two.hpa\0"), 22));
    Drop longName(WText(300, TEXT('x')) + WCHAR{});
    Drop none({});
    SRxShellExt* const extension = MakeExtension();
    EXPECT_EQ(S_OK, extension->Initialize(nullptr, &two, nullptr));
    EXPECT_EQ(2u, two.references);
    EXPECT_EQ(S_OK, extension->Initialize(nullptr, nullptr, nullptr));
    EXPECT_EQ(2u, two.references) << "nothing changes";
    EXPECT_EQ(S_OK, extension->Initialize(nullptr, &longName, nullptr));
    EXPECT_EQ(1u, two.references);
    EXPECT_EQ(E_FAIL, extension->Initialize(nullptr, &none, nullptr));
    EXPECT_EQ(2u, none.references);
    EXPECT_EQ(0u, extension->Release());
}

TEST_F(ModuleTest, ShellEntry) {
    SRxShellExt* const extension = MakeExtension();
    CMINVOKECOMMANDINFO info{};
    info.lpDirectory = "not read";
    info.nShow = eAccessAssembly;
    ASSERT_EQ(0, extension->InvokeCommand(&info));
    const HWND window = Module().dialogWindow(extension);
    EXPECT_TRUE(IsWindowVisible(window));
    const auto change = [window] {
        SendMessageW(window, WM_COMMAND, MAKEWPARAM(IDC_LOOK_FOR, CBN_SELCHANGE), 0);
    };
    EXPECT_EQ(eLookForNone, Module().lookForType(extension));
    change();
    EXPECT_EQ(eLookForFiles, Module().lookForType(extension));
    Module().fillCmdInfo(extension, &info);
    EXPECT_STREQ("not read", info.lpDirectory) << "the record of a shell stays as it is";
    EXPECT_EQ(1u, extension->Release());
    change();  // the dialog still writes there
    EXPECT_EQ(S_FALSE, Module().canUnloadNow());
    Command(window, IDCANCEL);
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(ModuleTest, ApplicationEntry) {
    const struct {
        const char* label;
        const char* verb;
        int nShow;
        bool chain;
        LRESULT lookFor;  // rows of that box
    } kRows[] = {{"nothing to search, a number", reinterpret_cast<const char*>(1), eAccessAssembly,
                  false, 0},
                 {"a part, a text", "find", eAccessPart, true, 2},
                 {"an assembly", "", eAccessAssembly, true, 4}};
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.label);
        Listener listener;
        MDxFileNameNode* chain = nullptr;
        if (row.chain) {
            for (const WCHAR* name : {TEXT("one.hpa"), TEXT("two.hpa")}) {
                auto* node = new MDxFileNameNode(FullName(name).c_str(), -1, true);
                node->AddRef();
                node->AddFileNode(&chain);
            }
        }
        const std::unique_ptr<MDxFileNameNode> searched(chain);
        SRxShellExt* const extension = MakeExtension();
        Module().setFindDlgNotif(extension, &listener);
        CMINVOKECOMMANDINFO info{};
        info.lpVerb = row.verb;
        info.lpDirectory = reinterpret_cast<const char*>(chain);
        info.nShow = row.nShow;
        ASSERT_EQ(0, extension->InvokeCommand(&info));
        const HWND window = Module().dialogWindow(extension);
        EXPECT_EQ(row.lookFor, SendDlgItemMessageW(window, IDC_LOOK_FOR, CB_GETCOUNT, 0, 0));
        info.lpDirectory = nullptr;
        if (row.chain) Command(window, IDOK);
        Module().fillCmdInfo(extension, &info);
        EXPECT_EQ(row.chain ? "ok0 done " : "", listener.heard);
        Command(window, IDCANCEL);
        EXPECT_EQ(row.chain ? "ok0 done cancel " : "cancel ", listener.heard);
        EXPECT_EQ(0u, extension->Release());
        // What was found is a chain of its own, and the caller's too.
        const auto* hits = reinterpret_cast<const MDxFileNameNode*>(info.lpDirectory);
        ASSERT_EQ(row.chain, hits != nullptr);
        if (hits != nullptr) {
            EXPECT_NE(nullptr, hits->GetNextNode());
        }
        delete hits;
    }
}

TEST_F(ModuleTest, TheCallerClosesTheDialog) {
    for (const bool afterTheUser : {false, true}) {
        SCOPED_TRACE(afterTheUser);
        Listener listener;
        SRxShellExt* const extension = MakeExtension();
        Module().setFindDlgNotif(extension, &listener);
        CMINVOKECOMMANDINFO info{};
        info.lpVerb = "find";
        ASSERT_EQ(0, extension->InvokeCommand(&info));
        const HWND window = Module().dialogWindow(extension);
        if (afterTheUser) {
            Command(window, IDCANCEL);
            EXPECT_EQ(nullptr, Module().dialogWindow(extension));
        }
        for (int time = 0; time < 2; ++time)
            Module().closeDialog(extension);
        EXPECT_FALSE(IsWindow(window));
        EXPECT_EQ(nullptr, Module().dialogWindow(extension));
        EXPECT_EQ(afterTheUser ? "cancel " : "", listener.heard);
        EXPECT_EQ(0u, extension->Release());
    }
}

TEST_F(ModuleTest, WithoutAWindow) {
    for (const bool closes : {false, true}) {
        SRxShellExt* const extension = MakeExtension();
        CMINVOKECOMMANDINFO info{};
        info.hwnd = reinterpret_cast<HWND>(static_cast<INT_PTR>(0x7FFE));
        EXPECT_EQ(1, extension->InvokeCommand(&info));
        EXPECT_EQ(nullptr, Module().dialogWindow(extension));
        if (closes) Module().closeDialog(extension);
        EXPECT_EQ(0u, extension->Release());
        EXPECT_EQ(S_OK, Module().canUnloadNow());
    }
}

TEST_F(ModuleTest, ParametersLiveAsLongAsWhoHoldsThem) {
    for (const char* verb : {static_cast<const char*>(nullptr), "find"}) {
        Server server;
        alignas(SRxShellExtParameters) unsigned char place[sizeof(SRxShellExtParameters)];
        auto* const parameters = reinterpret_cast<SRxShellExtParameters*>(place);
        Module().makeParameters(place);
        EXPECT_TRUE(Module().setServer(parameters, &server));
        SRxShellExt* const extension = MakeExtension();
        CMINVOKECOMMANDINFO info{};
        info.lpVerb = verb;
        info.lpParameters = Module().textOfParameters(parameters);
        ASSERT_EQ(0, extension->InvokeCommand(&info));
        EXPECT_EQ(2u, server.references);
        // Of the block: the caller's, and inside the application the dialog's.
        const bool last = Module().destroyParameters(parameters);
        EXPECT_EQ(verb == nullptr, last);
        Module().closeDialog(extension);
        EXPECT_EQ(1u, server.references);
        extension->Release();
    }
}

// FindFiles with a person who works the modal dialogs.
class FindFilesTest : public ModuleTest {
protected:
    FindFilesTest() { current_ = this; }
    ~FindFilesTest() override { current_ = nullptr; }

    // Searches and picks the first hit, if `picks`, then closes the dialog.
    bool Find(bool picks, WCHAR* name, unsigned nameSize, bool multiSelect) {
        step_ = picks ? eStep::Search : eStep::Close;
        multiSelect_ = multiSelect;
        ticks_ = 0;
        const UINT_PTR timer = SetTimer(nullptr, 0, 10, Tick);
        const bool result = Module().findFiles(nullptr, name, nameSize, multiSelect);
        KillTimer(nullptr, timer);
        EXPECT_EQ(eStep::None, step_);
        return result;
    }
    static WText NameIn(HWND list, int row) {
        WCHAR buffer[100] = {};
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = row;
        item.pszText = buffer;
        item.cchTextMax = 100;
        SendMessageW(list, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        return item.pszText;
    }
    static LRESULT NextSelected(HWND list, LRESULT behind) {
        return SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(behind), LVNI_SELECTED);
    }
    static void Select(HWND list, int row) {
        LVITEMW item{};
        item.stateMask = item.state = LVIS_SELECTED;
        SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&item));
    }

    LRESULT selected_ = 0;  // rows, when both were to be
    WText first_;           // the first of them

private:
    enum class eStep { None, Search, Pick, Close };
    void Work(HWND find, HWND found) {
        const HWND list = GetDlgItem(found, IDC_FOUND_LIST);
        if (step_ == eStep::Search && find != nullptr) {
            SetDlgItemTextW(find, IDC_PATH_LIST, AbsoluteWidePath(folder_.native()).c_str());
            step_ = eStep::Pick;
            Command(find, IDOK);
        } else if (step_ == eStep::Pick && SendMessageW(list, LVM_GETITEMCOUNT, 0, 0) == 2) {
            Select(list, 0);
            Select(list, 1);
            first_ = NameIn(list, multiSelect_ ? 0 : 1);
            for (LRESULT row = -1; (row = NextSelected(list, row)) >= 0;)
                ++selected_;
            step_ = eStep::Close;
            SendMessageW(GetDlgItem(found, IDOK), BM_CLICK, 0, 0);
        } else if (step_ == eStep::Close && found == nullptr && IsWindowEnabled(find)) {
            step_ = eStep::None;
            Command(find, IDCANCEL);
        }
    }
    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
        constexpr int kMostTicks = 1000;
        const HWND find = ShownDialogWith(IDC_CRITERIA_LIST);
        const HWND found = ShownDialogWith(IDC_FOUND_LIST);
        if (++current_->ticks_ == kMostTicks) {
            ADD_FAILURE() << "the dialog doesn't end";
            std::abort();
        }
        current_->Work(find, found);
    }

    static inline FindFilesTest* current_ = nullptr;
    eStep step_ = eStep::None;
    int ticks_ = 0;
    bool multiSelect_ = false;
};

TEST_F(FindFilesTest, GivesTheFirstFilePicked) {
    const auto length = static_cast<unsigned>(FullName(TEXT("one.hpa")).size());
    const struct {
        const char* label;
        bool picks;
        unsigned nameSize;  // 0: no name
        bool multiSelect;
        bool result;
    } kRows[] = {{"fits", true, length + 1, true, true},
                 {"one row", true, length + 1, false, true},
                 {"one short", true, length, true, false},
                 {"no pick", false, length + 1, true, false},
                 {"no name", true, 0, true, true}};
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.label);
        WText name(length + 2, TEXT('?'));
        const bool result = Find(row.picks, row.nameSize > 0 ? name.data() : nullptr, row.nameSize,
                                 row.multiSelect);
        EXPECT_EQ(row.result, result);
        if (row.nameSize == 0) {
            EXPECT_EQ('?', name[0]);
        } else {
            EXPECT_EQ(row.result ? FullName(first_.c_str()) : WText(), name.c_str());
            EXPECT_EQ('?', name[row.nameSize]);
        }
        EXPECT_EQ(row.picks ? row.multiSelect + 1 : 0, std::exchange(selected_, 0));
    }
}

TEST_F(FindFilesTest, WithoutAWindow) {
    WCHAR name[] = TEXT("old");
    EXPECT_FALSE(
        Module().findFiles(reinterpret_cast<HWND>(static_cast<INT_PTR>(0x7FFE)), name, 4, true));
    EXPECT_EQ(0, name[0]);
}

}  // namespace
