// Sr.dll in a program that knows the headers of its exported classes and its file: what it exports,
// how it comes and goes, files dropped by the shell, and the running application in a process of
// its own.
#include <gtest/gtest.h>

#include "tests/unit/module_fixture.h"
#include "tests/windows/application_proxy.h"
#include "tests/windows/module_entries_loaded.h"

namespace {

FARPROC Named(const char* name) {
    return GetProcAddress(LoadModule(), name);
}

TEST(Exports, OrdinalsAndNames) {
    const struct {
        WORD ordinal;
        const char* name;
    } kRows[] = {{4, "FindDlgProc"},       {5, "FoundDlgProc"},      {6, "FindFiles"},
                 {7, "SaveSearchDlgProc"}, {8, "OpenSearchDlgProc"}, {9, "SrResReturnHandle"}};
    for (const auto& row : kRows) {
        EXPECT_NE(nullptr, Named(row.name)) << row.name;
        EXPECT_EQ(Named(row.name), Named(MAKEINTRESOURCEA(row.ordinal))) << row.name;
    }
    // Of each class: a member of each access, one that stood in the class body, the virtual table.
    for (const char* name :
         {"_ZN13SRxFindDialog13InvokeCommandEP6HWND__", "_ZN13SRxFindDialog8SetModalEb",
          "_ZNK13SRxFindDialog13IsAssemblyEnvEv", "_ZN13SRxFindDialogD1Ev",
          "_ZN11SRxShellExt13InvokeCommandEP20_CMINVOKECOMMANDINFO", "_ZN11SRxShellExtC1Ev",
          "_ZTV11SRxShellExt", "_ZN23SRxShellExtClassFactory10LockServerEi",
          "_ZTV23SRxShellExtClassFactory", "_ZN21SRxShellExtParameters6CreateEv",
          "_ZNK21SRxShellExtParameters7IsValidEv", "_ZTV21SRxShellExtParameters"}) {
        EXPECT_NE(nullptr, Named(name)) << name;
    }
    EXPECT_EQ(nullptr, Named("objectCount"));
}

class LoadedModule : public ModuleTest {
protected:
    LoadedModule() { EXPECT_EQ(S_OK, CoInitialize(nullptr)); }
    ~LoadedModule() override { CoUninitialize(); }

    // Hands out messages until it is so.
    template <typename Condition>
    static bool Await(Condition condition) {
        const ULONGLONG end = GetTickCount64() + 30000;
        while (!condition() && GetTickCount64() < end) {
            MSG message;
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
                DispatchMessageW(&message);
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
        }
        return condition();
    }
};

TEST_F(LoadedModule, ResourceLibraryIsLoadedOnce) {
    EXPECT_NE(nullptr, Module().resources());
    EXPECT_EQ(Module().resources(), Module().resources());
}

TEST_F(LoadedModule, FilesDroppedByTheShell) {
    LPITEMIDLIST file = nullptr;
    ASSERT_EQ(S_OK,
              SHParseDisplayName(FullName(TEXT("one.hpa")).c_str(), nullptr, &file, 0, nullptr));
    IShellFolder* folder = nullptr;
    LPCITEMIDLIST child = nullptr;
    ASSERT_EQ(S_OK,
              SHBindToParent(file, IID_IShellFolder, reinterpret_cast<void**>(&folder), &child));
    void* data = nullptr;
    ASSERT_EQ(S_OK, folder->GetUIObjectOf(nullptr, 1, &child, IID_IDataObject, nullptr, &data));
    auto* const files = static_cast<IDataObject*>(data);
    SRxShellExt* const extension = MakeExtension();
    EXPECT_EQ(S_OK, extension->Initialize(file, files, nullptr));
    EXPECT_EQ(3u, files->AddRef()) << "ours, the extension's, and this one";
    EXPECT_EQ(0u, extension->Release());
    EXPECT_EQ(1u, files->Release());
    files->Release();
    folder->Release();
    CoTaskMemFree(file);
}

TEST_F(LoadedModule, TheRunningApplicationAnswers) {
    static ApplicationProxy proxy;
    ASSERT_TRUE(proxy.Register());
    const WText mark = wtext::FromNumber(GetCurrentProcessId());
    const WText ready = TEXT("ready") + mark;
    const WText end = TEXT("end") + mark;
    const HANDLE isReady = CreateEventW(nullptr, TRUE, FALSE, ready.c_str());
    const HANDLE isEnd = CreateEventW(nullptr, TRUE, FALSE, end.c_str());
    WText line = TEXT("running_application.exe ") + ready + TEXT(" ") + end;
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    ASSERT_TRUE(CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                               &start, &process));
    ASSERT_EQ(WAIT_OBJECT_0, WaitForSingleObject(isReady, 30000));

    // The caller's server knows no context.
    Server server;
    alignas(SRxShellExtParameters) unsigned char place[sizeof(SRxShellExtParameters)];
    auto* const parameters = reinterpret_cast<SRxShellExtParameters*>(place);
    Module().makeParameters(place);
    EXPECT_TRUE(Module().setServer(parameters, &server));
    SRxShellExt* const extension = MakeExtension();
    CMINVOKECOMMANDINFO info{};
    info.lpVerb = "find";
    info.lpParameters = Module().textOfParameters(parameters);
    ASSERT_EQ(0, extension->InvokeCommand(&info));
    const HWND find = Module().dialogWindow(extension);
    WCHAR context[50] = {};
    GetDlgItemTextW(find, IDC_CONTEXT_TEXT, context, 50);
    EXPECT_EQ(WText(TEXT("Gear pump")), context);

    SendMessageW(GetDlgItem(find, IDC_LOOK_RELATED), BM_CLICK, 0, 0);
    SetDlgItemTextW(find, IDC_PATH_LIST, FullName(TEXT("one.hpa")).c_str());
    Command(find, IDOK);
    HWND found = nullptr;
    EXPECT_TRUE(Await([&found] {
        found = ShownDialogWith(IDC_FOUND_LIST);
        return SendDlgItemMessageW(found, IDC_FOUND_LIST, LVM_GETITEMCOUNT, 0, 0) == 2;
    })) << "the document and the one that it refers to";
    Command(find, IDCANCEL);
    extension->Release();
    EXPECT_TRUE(Module().destroyParameters(parameters));

    SetEvent(isEnd);
    EXPECT_EQ(WAIT_OBJECT_0, WaitForSingleObject(process.hProcess, 30000));
    DWORD status = STILL_ACTIVE;
    EXPECT_TRUE(GetExitCodeProcess(process.hProcess, &status));
    EXPECT_EQ(0u, status) << "every reference came back";
    for (const HANDLE handle : {process.hProcess, process.hThread, isReady, isEnd})
        CloseHandle(handle);
}

// Behind all tests nothing keeps the module, and it takes its resource library along.
class Unloading : public ::testing::Environment {
public:
    void TearDown() override {
        const bool hasResources = Module().resources() != nullptr;
        EXPECT_EQ(hasResources, GetModuleHandleW(TEXT("SrRes.dll")) != nullptr);
        EXPECT_EQ(S_OK, Module().canUnloadNow());
        EXPECT_TRUE(FreeLibrary(LoadModule()));
        EXPECT_EQ(nullptr, GetModuleHandleW(TEXT("Sr.dll")));
        EXPECT_EQ(nullptr, GetModuleHandleW(TEXT("SrRes.dll")));
    }
};
const auto* const unloading = ::testing::AddGlobalTestEnvironment(new Unloading);

// Run in a folder that has all but the resource library.
class WithoutResources : public ModuleTest {};

TEST_F(WithoutResources, NoDialogOpens) {
    ASSERT_EQ(nullptr, Module().resources());
    WCHAR name[] = TEXT("old");
    EXPECT_FALSE(Module().findFiles(nullptr, name, 4, true));
    EXPECT_EQ(0, name[0]);
    EXPECT_TRUE(Module().findFiles(nullptr, nullptr, 0, true));
    SRxShellExt* const extension = MakeExtension();
    CMINVOKECOMMANDINFO info{};
    EXPECT_EQ(1, extension->InvokeCommand(&info));
    EXPECT_EQ(0u, extension->Release());
}

}  // namespace
