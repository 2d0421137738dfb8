// The module with two documents to search, and what other modules of the application bring along.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "host/srsample/sample_library.h"
#include "outside/md_file_name_node.h"
#include "platform/live_windows.h"
#include "platform/native_path.h"
#include "tests/scripted_desk.h"
#include "tests/unit/document_support.h"
#include "tests/unit/module_entries.h"

class ModuleTest : public ::testing::Test {
protected:
    ModuleTest() : windows_(CountLiveWindows()) {
        EXPECT_EQ(S_OK, Module().canUnloadNow()) << "nothing is alive yet";
        for (const char* name : {"one.hpa", "two.hpa"}) {
            SampleDocument document;
            document.kind = eSampleKind::Part;
            const std::vector<std::uint8_t> bytes = BuildDocument(document);
            std::ofstream(folder_ / name, std::ios::binary)
                .write(reinterpret_cast<const char*>(bytes.data()),
                       static_cast<std::streamsize>(bytes.size()));
        }
    }
    ~ModuleTest() override {
        EXPECT_EQ(S_OK, Module().canUnloadNow()) << "an object is left";
        EXPECT_EQ(windows_, CountLiveWindows());
    }

    // The extension with one reference, on the side that starts dialogs.
    static SRxShellExt* MakeExtension() {
        void* factory = nullptr;
        EXPECT_EQ(S_OK, Module().getClassObject(CLSID_SRxShellExt, IID_IClassFactory, &factory));
        void* made = nullptr;
        EXPECT_EQ(S_OK, static_cast<IClassFactory*>(factory)->CreateInstance(
                            nullptr, IID_IContextMenu, &made));
        static_cast<IClassFactory*>(factory)->Release();
        return static_cast<SRxShellExt*>(static_cast<IContextMenu*>(made));
    }
    static void Command(HWND dialog, int control) {
        SendMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(control), 0);
    }

    WText FullName(const WCHAR* name) const {
        return AbsoluteWidePath(folder_.native()) + TEXT("\\") + name;
    }

    const TempFolder place_;
    const std::filesystem::path folder_ = place_.Path();
    ScriptedDesk desk_;

private:
    DeskScope scope_{desk_};
    int windows_;
};

class Listener : public SRxFindDlgNotify {
public:
    virtual ~Listener() = default;
    void Reserved() override { heard += "?"; }
    void OnOK(bool needsDocumentProperties) override {
        heard += needsDocumentProperties ? "ok1 " : "ok0 ";
    }
    void OnFindDone() override { heard += "done "; }
    void OnCancel() override { heard += "cancel "; }

    std::string heard;
};

class Server : public IQxLecternServer {
public:
    virtual ~Server() { EXPECT_EQ(1u, references); }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** ppv) override {
        return *ppv = nullptr, E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    HRESULT STDMETHODCALLTYPE GetWorkContext(IQxWorkContext** context) override {
        return *context = nullptr, E_FAIL;
    }

    ULONG references = 1;
};
